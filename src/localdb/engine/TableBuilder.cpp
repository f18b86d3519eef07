#include "localdb/engine/TableBuilder.h"

#include <algorithm>

#include "localdb/engine/AliasTypes.h"
#include "localdb/engine/CollationNames.h"
#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/ForeignKeyBuilder.h"
#include "localdb/engine/RowExpression.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/ExpressionText.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

constexpr size_t MaxColumns = 1024;

QString Hex(quint64 number, int digits) {
    return QString::number(number, 16).toUpper().rightJustified(digits, u'0').right(digits);
}

void CheckVersion(const TableInfo& table, const tsql::ColumnDefinition& definition) {
    const QString& name = table.object.name;
    for (const ColumnInfo& column : table.columns) {
        if (column.type.kind != TypeKind::RowVersion) continue;
        throw SqlError(2738, {name, definition.name}, definition.line);
    }
    if (definition.defaultValue) {
        throw SqlError(1755, {QStringLiteral("timestamp"), name, definition.name}, definition.line);
    }
}

}  // namespace

QString TextOf(const tsql::Expression& tree, const QString& source, bool isCondition) {
    try {
        return isCondition ? tsql::ConditionText(tree) : tsql::DefaultText(tree);
    } catch (const tsql::SyntaxError&) {
        return u'(' + source + u')';
    }
}

TableInfo TableBuilder::Build(int64_t objectId, const ObjectInfo& object) {
    TableInfo table;
    table.object = object;
    table.object.id = objectId;
    AddParts(table);
    const bool ordinary = std::any_of(table.columns.begin(), table.columns.end(),
                                      [](const ColumnInfo& c) { return !c.IsComputed(); });
    if (!ordinary) throw SqlError(40517, {QStringLiteral("table of computed columns alone")});
    return table;
}

void TableBuilder::Extend(TableInfo& table) {
    isNew_ = false;
    oldColumns_ = table.columns.size();
    AddParts(table);
}

void TableBuilder::AddParts(TableInfo& table) {
    for (const tsql::ColumnDefinition& column : definition_.columns) {
        if (!column.computed) AddColumn(table, column);
    }
    for (const tsql::ColumnDefinition& column : definition_.columns) {
        if (column.computed) AddComputed(table, column);
    }
    // Computed ones were bound last; all stand in the order that they were written in.
    std::sort(table.columns.begin(), table.columns.end(),
              [](const ColumnInfo& a, const ColumnInfo& b) { return a.id < b.id; });
    AddDefaults(table);
    AddKeys(table);
    AddIndexes(table);
    AddChecks(table);
    for (size_t i = 0; i < definition_.foreignKeys.size(); ++i) {
        const tsql::ForeignKey& key = definition_.foreignKeys[i];
        const QString name =
            key.name.isEmpty() ? NameFor("FK", table, key.columns.front(), i) : key.name;
        ForeignKeyBuilder(metadata_, table).Add(key, name, key.name.isEmpty());
    }
}

QString TableBuilder::NameFor(const char* kind, const TableInfo& table, const QString& column,
                              size_t number) {
    const auto start = static_cast<quint64>(isNew_ ? table.object.id : metadata_.NextObjectId());
    const QString name = table.object.name;
    const QString prefix = QString::fromLatin1(kind) + QStringLiteral("__");
    if (prefix == u"PK__" || prefix == u"UQ__") {
        return prefix + name.left(8) + QStringLiteral("__") + Hex(start * 4096 + number, 16);
    }
    QString text = prefix + name.left(9) + QStringLiteral("__");
    if (!column.isEmpty()) text += column.left(5) + QStringLiteral("__");
    return text + Hex(start * 1024 + number, 8);
}

namespace {

ColumnInfo NewColumn(const TableInfo& table, const tsql::ColumnDefinition& definition,
                     const tsql::TableElements& elements) {
    if (table.columns.size() == MaxColumns) {
        throw SqlError(1702, {definition.name, table.object.name}, definition.line);
    }
    if (table.FindColumn(definition.name)) {
        throw SqlError(2705, {definition.name, table.object.name}, definition.line);
    }
    ColumnInfo column;
    const auto place = &definition - elements.columns.data();
    column.id = table.object.maxColumn + static_cast<int>(place) + 1;
    column.name = definition.name;
    column.rowGuid = definition.rowGuid;
    return column;
}

}  // namespace

void TableBuilder::AddColumn(TableInfo& table, const tsql::ColumnDefinition& definition) {
    ColumnInfo column = NewColumn(table, definition, definition_);
    const DeclaredType declared = BindDeclaredType(metadata_, definition.type, column.id);
    column.type = declared.type;
    column.isSysname = declared.isSysname;
    column.userType = declared.userType;
    column.userTypeName = declared.name;
    CheckColumnCollation(definition.collation, column.type, definition.line);
    const bool version = column.type.kind == TypeKind::RowVersion;
    if (version) CheckVersion(table, definition);
    const bool notNullBySelf = definition.identity || !declared.nullable || version;
    column.nullable = definition.nullability == tsql::Nullability::Unsaid
                          ? !notNullBySelf
                          : definition.nullability == tsql::Nullability::Null;
    if (column.rowGuid && column.type.kind != TypeKind::UniqueIdentifier) {
        throw SqlError(2761, {}, definition.line);
    }
    if (definition.defaultValue) {
        if (definition.identity) {
            throw SqlError(1754, {table.object.name, column.name}, definition.line);
        }
        AddDefault(table, column, *definition.defaultValue, definition.defaultName,
                   definition.line);
    }
    table.columns.push_back(column);
    if (definition.identity) AddIdentity(table, definition);
}

void TableBuilder::AddComputed(TableInfo& table, const tsql::ColumnDefinition& definition) {
    ColumnInfo column = NewColumn(table, definition, definition_);
    RowExpression value(frame_, table, *definition.computed, RowExpression::Kind::Value);
    column.type = value.Type();
    if (ClassOf(column.type) == TypeClass::Text) RequireServerCollation(value.Collation());
    column.computedText = TextOf(*definition.computed, definition.computedSource, false);
    column.nullable = value.IsNullable() && definition.nullability != tsql::Nullability::NotNull;
    column.persisted = definition.persisted;
    column.stored = definition.persisted;
    if (column.persisted && !value.IsDeterministic()) {
        throw SqlError(4936, {column.name, table.object.name}, definition.line);
    }
    table.columns.push_back(column);
}

void TableBuilder::AddIdentity(TableInfo& table, const tsql::ColumnDefinition& definition) {
    ColumnInfo& column = table.columns.back();
    if (table.identity) throw SqlError(2744, {table.object.name}, definition.line);
    const bool whole = ClassOf(column.type) == TypeClass::Integer ||
                       (ClassOf(column.type) == TypeClass::Decimal && column.type.scale == 0);
    if (!whole || column.type.kind == TypeKind::Bit || column.nullable) {
        throw SqlError(2749, {column.name}, definition.line);
    }
    bool seedFits = false, incrementFits = false;
    IdentityInfo identity;
    identity.columnId = column.id;
    identity.seed = definition.seed.toLongLong(&seedFits);
    identity.increment = definition.increment.toLongLong(&incrementFits);
    if (!seedFits || !incrementFits || identity.increment == 0) {
        throw SqlError(2749, {column.name}, definition.line);
    }
    column.identity = true;
    table.identity = identity;
}

void TableBuilder::AddDefault(TableInfo& table, ColumnInfo& column, const tsql::Expression& tree,
                              const QString& name, int line) {
    const Scope none;
    ExpressionBinder binder(context_, none);
    BoundPtr value;
    try {
        value = binder.Value(tree);
    } catch (const SqlError& error) {
        // A column's name has nothing to mean here.
        if (error.Number() != 207 && error.Number() != 4104) throw;
        throw SqlError(128, {error.What().text.section(u'\'', 1, 1)}, line);
    }
    if (!value->untypedNull) TypeRules::CheckConversion(value->type, column.type, false);
    column.defaultText = tsql::DefaultText(tree);
    column.defaultSystemNamed = name.isEmpty();
    column.defaultName = name.isEmpty()
                             ? NameFor("DF", table, column.name, static_cast<size_t>(column.id) - 1)
                             : name;
}

void TableBuilder::AddDefaults(TableInfo& table) {
    for (const tsql::DefaultConstraint& constraint : definition_.defaults) {
        const ColumnInfo* found = table.FindColumn(constraint.column);
        if (!found) throw SqlError(1752, {constraint.column, table.object.name}, constraint.line);
        ColumnInfo& column = table.columns[table.PlaceOf(found->id)];
        if (column.identity) {
            throw SqlError(1754, {table.object.name, column.name}, constraint.line);
        }
        if (!column.defaultText.isEmpty()) throw SqlError(1781, {}, constraint.line);
        AddDefault(table, column, *constraint.value, constraint.name, constraint.line);
    }
}

// A primary key is clustered unless it says otherwise or another key took that place.
bool TableBuilder::IsClustered(const TableInfo& table, const tsql::KeyConstraint& key) const {
    if (key.clusteredSaid || !key.primary) return key.clustered;
    if (!isNew_ && table.Clustered()) return false;
    const auto clustered = [](const auto& other) { return other.clustered; };
    return std::none_of(definition_.keys.begin(), definition_.keys.end(), clustered) &&
           std::none_of(definition_.indexes.begin(), definition_.indexes.end(), clustered);
}

void TableBuilder::AddKeys(TableInfo& table) {
    for (const tsql::KeyConstraint& key : definition_.keys) {
        const bool clustered = IsClustered(table, key);
        const auto primary = [](const IndexInfo& index) { return index.primary; };
        if (key.primary && std::any_of(table.indexes.begin(), table.indexes.end(), primary)) {
            throw SqlError(isNew_ ? 8110 : 1779, {table.object.name}, key.line);
        }
        if (clustered && table.Clustered()) {
            if (isNew_) throw SqlError(8112, {table.object.name}, key.line);
            throw SqlError(1902, {table.object.name, table.Clustered()->name}, key.line);
        }
        AddKey(table, key, clustered);
    }
}

// A column that said nothing about nulls and is only now being made.
bool TableBuilder::MayTurnNotNull(const TableInfo& table, size_t place) const {
    if (place < oldColumns_) return false;
    for (const tsql::ColumnDefinition& column : definition_.columns) {
        if (!SameName(column.name, table.columns[place].name)) continue;
        return column.nullability == tsql::Nullability::Unsaid && !column.computed;
    }
    return false;
}

void TableBuilder::AddKey(TableInfo& table, const tsql::KeyConstraint& key, bool clustered) {
    IndexInfo index;
    index.unique = true;
    index.primary = key.primary;
    index.clustered = clustered;
    index.constraintId = IndexInfo::NewConstraint;
    index.id = NextIndexId(table, clustered);
    for (const tsql::KeyColumn& part : key.keys) {
        const size_t place = FindKeyColumn(frame_, table, part.name);
        ColumnInfo& column = table.columns[place];
        for (const IndexInfo::Key& other : index.keys) {
            if (other.columnId == column.id) throw SqlError(1909, {part.name}, key.line);
        }
        index.keys.push_back({column.id, part.descending});
        if (!key.primary || !column.nullable) continue;
        if (column.IsComputed()) throw SqlError(1711, {column.name, table.object.name}, key.line);
        if (!MayTurnNotNull(table, place)) throw SqlError(8111, {table.object.name}, key.line);
        column.nullable = false;
    }
    index.systemNamed = key.name.isEmpty();
    index.name = key.name.isEmpty()
                     ? NameFor(key.primary ? "PK" : "UQ", table, {}, table.indexes.size())
                     : key.name;
    table.indexes.push_back(std::move(index));
}

void TableBuilder::AddIndexes(TableInfo& table) {
    for (const tsql::IndexDefinition& definition : definition_.indexes) {
        table.indexes.push_back(BuildIndex(frame_, table, definition, table.object.name));
    }
}

void TableBuilder::AddChecks(TableInfo& table) {
    size_t number = 0;
    for (const tsql::CheckConstraint& definition : definition_.checks) {
        const RowExpression condition(frame_, table, *definition.condition,
                                      RowExpression::Kind::Condition);
        CheckInfo check;
        check.text = TextOf(*definition.condition, definition.source, true);
        check.systemNamed = definition.name.isEmpty();
        check.name =
            check.systemNamed ? NameFor("CK", table, definition.column, number) : definition.name;
        ++number;
        // A table's check of one column alone is that column's.
        if (condition.Columns().size() == 1) {
            check.columnId = table.columns[*condition.Columns().begin()].id;
        }
        const ColumnInfo* own =
            definition.column.isEmpty() ? nullptr : table.FindColumn(definition.column);
        if (own) {
            for (const size_t place : condition.Columns()) {
                if (table.columns[place].id == own->id) continue;
                throw SqlError(8141, {own->name, table.object.name}, definition.line);
            }
            check.columnId = own->id;
        }
        table.checks.push_back(std::move(check));
    }
}

}  // namespace quarv::localdb::engine
