// Query: the tree of a SELECT: what, from where, under which condition, in which order. Used by the
// SELECT statement, by views and by whatever takes its rows from a query.
#pragma once

#include "localdb/tsql/Expression.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct SelectItem {
    ExpressionPtr expression;  // nothing for "*"
    QString alias;             // empty: the expression's own name, if it has one
    ObjectName qualifier;      // of "t.*"; its name is empty for "*"
    QString variable;          // "@x" of "@x = expression", else empty
    int line = 0;
};

enum class TableSourceKind : uint8_t { Table, Derived, Join };

struct TableSource {
    const TableSourceKind kind;
    int line = 0;

    virtual ~TableSource();

  protected:
    explicit TableSource(TableSourceKind k) : kind(k) {}
};

using TableSourcePtr = std::unique_ptr<TableSource>;

struct NamedTable : TableSource {
    NamedTable() : TableSource(TableSourceKind::Table) {}
    ObjectName name;
    QString alias;  // empty: none
};

struct DerivedTable : TableSource {
    DerivedTable() : TableSource(TableSourceKind::Derived) {}
    std::unique_ptr<Query> query;      // or
    std::vector<ExpressionList> rows;  // VALUES (...), (...); or
    std::unique_ptr<Function> function;
    QString alias;                 // a function may have none
    std::vector<QString> columns;  // empty: the query's own names
};

// Whether the function's rows can be a source of a query.
bool IsTableFunction(const ObjectName& name);

// The right side of an apply may name the columns of its left side.
enum class JoinKind : uint8_t { Inner, Left, Right, Full, Cross, CrossApply, OuterApply };

struct Join : TableSource {
    Join() : TableSource(TableSourceKind::Join) {}
    JoinKind join = JoinKind::Inner;
    TableSourcePtr left, right;
    ExpressionPtr on;  // nothing for a cross join and for an apply
};

enum class SetOperator : uint8_t { Union, UnionAll, Except, Intersect };

// One of the tables that WITH defines.
struct CommonTable {
    QString name;
    std::vector<QString> columns;  // empty: the query's own names
    std::unique_ptr<Query> query;
    int line = 0;
};

using WithClause = std::vector<CommonTable>;

struct Query {
    static constexpr size_t MaxItems = 4096;
    static constexpr int DefaultRecursion = 100;

    WithClause with;  // only in front of the outermost query
    // Several arms make a set operation, from left to right; it has no items, no sources and no
    // groups of its own. operators[i] stands between arms[i] and arms[i + 1].
    std::vector<std::unique_ptr<Query>> arms;
    std::vector<SetOperator> operators;

    bool distinct = false;
    ExpressionPtr top;  // or nothing
    bool topPercent = false, topTies = false;
    std::vector<SelectItem> items;
    std::unique_ptr<ObjectName> into;  // the new table of SELECT INTO, or nothing
    std::vector<TableSourcePtr> from;  // several: a cross join
    ExpressionPtr where;
    ExpressionList groupBy;
    // By number, the members of groupBy that make each set; empty: all of them make one.
    std::vector<std::vector<size_t>> groupingSets;
    ExpressionPtr having;
    std::vector<OrderItem> orderBy;
    ExpressionPtr offset, fetch;          // or nothing
    int maxRecursion = DefaultRecursion;  // OPTION (MAXRECURSION n); 0: no limit
    int line = 0;
};

// Reads a query up to its end, ORDER BY included.
std::unique_ptr<Query> ParseQuery(TokenReader& reader);
// The same with the OPTION clause that the query of a statement may have.
std::unique_ptr<Query> ParseStatementQuery(TokenReader& reader);
// The same as ParseQuery with WITH in front, as a view may have it.
std::unique_ptr<Query> ParseViewQuery(TokenReader& reader);
// WITH and its tables, up to the statement that they belong to.
WithClause ParseWithClause(TokenReader& reader);
// True where a query begins here: SELECT, or parentheses around one.
bool AtQuery(TokenReader& reader);

}  // namespace quarv::localdb::tsql
