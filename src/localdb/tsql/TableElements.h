// TableElements: the columns, constraints and indexes that CREATE TABLE defines and ALTER TABLE
// adds.
#pragma once

#include "localdb/tsql/CreateIndex.h"
#include "localdb/tsql/Expression.h"

namespace quarv::localdb::tsql {

enum class Nullability : uint8_t { Unsaid, Null, NotNull };

// What happens to the rows that refer to a key which goes or changes.
enum class ReferenceAction : uint8_t { NoAction, Cascade, SetNull, SetDefault };

struct ColumnDefinition {
    QString name;
    TypeName type;  // of a computed column: nothing
    Nullability nullability = Nullability::Unsaid;
    bool identity = false;
    QString seed = QStringLiteral("1");       // as written, with its sign
    QString increment = QStringLiteral("1");  // likewise
    ExpressionPtr defaultValue;               // or nothing
    QString defaultName;                      // empty: the server names it
    bool withValues = false;                  // existing rows take the default
    ExpressionPtr computed;                   // of a computed column, else nothing
    QString computedSource;                   // as written
    bool persisted = false;
    bool rowGuid = false;
    QString collation;  // as written; empty: none
    int line = 0;
};

struct KeyConstraint {
    QString name;  // empty: the server names it
    bool primary = false;
    bool clusteredSaid = false;  // CLUSTERED or NONCLUSTERED was written
    bool clustered = false;
    std::vector<KeyColumn> keys;
    int line = 0;
};

struct CheckConstraint {
    QString name;    // empty: the server names it
    QString column;  // whose constraint it is; empty: the table's
    ExpressionPtr condition;
    QString source;  // of the condition, as written
    int line = 0;
};

struct ForeignKey {
    QString name;                  // empty: the server names it
    std::vector<QString> columns;  // of this table
    ObjectName referenced;
    std::vector<QString> referencedColumns;  // empty: its primary key
    ReferenceAction onDelete = ReferenceAction::NoAction;
    ReferenceAction onUpdate = ReferenceAction::NoAction;
    bool ofColumn = false;  // written behind a column
    int line = 0;
};

// ALTER TABLE's DEFAULT value FOR column.
struct DefaultConstraint {
    QString name;  // empty: the server names it
    QString column;
    ExpressionPtr value;
    bool withValues = false;
    int line = 0;
};

struct TableElements {
    std::vector<ColumnDefinition> columns;
    std::vector<KeyConstraint> keys;
    std::vector<CheckConstraint> checks;
    std::vector<ForeignKey> foreignKeys;
    std::vector<DefaultConstraint> defaults;  // of ALTER TABLE alone
    std::vector<IndexDefinition> indexes;
};

// One column, or one constraint or index of the table. Raises SyntaxError.
void ParseTableElement(TokenReader& reader, TableElements& elements);
// The same behind ALTER TABLE ... ADD, where defaults may name their column.
void ParseAddedElement(TokenReader& reader, TableElements& elements);
// NULL, NOT NULL or nothing.
bool TryNullability(TokenReader& reader, Nullability& nullability);
// COLLATE and its name, or nothing.
bool TryCollation(TokenReader& reader, QString& collation);

// In TableConstraints.cpp. PRIMARY KEY, UNIQUE, CHECK or FOREIGN KEY, named or not; with `column`,
// what stands behind that column, else the table's own. False where none follows.
bool TryConstraint(TokenReader& reader, TableElements& elements, const QString& name,
                   const QString& column);

}  // namespace quarv::localdb::tsql
