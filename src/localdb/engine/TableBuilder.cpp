#include "localdb/engine/TableBuilder.h"

#include <algorithm>

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeRules.h"
#include "localdb/tsql/ExpressionText.h"

namespace quarv::localdb::engine {

namespace {

constexpr size_t MaxColumns = 1024;

// As the server names constraints that have no name: the kind, the table, a number.
QString UnnamedKey(const QString& kind, const TableInfo& table, size_t number) {
    const auto suffix = static_cast<quint64>(table.object.id) * 4096 + number;
    return QStringLiteral("%1__%2__%3")
        .arg(kind, table.object.name.left(8),
             QString::number(suffix, 16).toUpper().rightJustified(16, u'0'));
}

}  // namespace

const ColumnInfo& FindKeyColumn(const TableInfo& table, const QString& name) {
    const ColumnInfo* column = table.FindColumn(name);
    if (!column) throw SqlError(1911, {name});
    if (ClassOf(column->type) == TypeClass::Text && column->type.length == SqlType::Max) {
        throw SqlError(1919, {name, table.object.name});
    }
    return *column;
}

TableInfo TableBuilder::Build(int64_t objectId, const ObjectInfo& object) {
    TableInfo table;
    table.object = object;
    table.object.id = objectId;
    for (const tsql::ColumnDefinition& column : definition_.columns) AddColumn(table, column);
    AddKeys(table);
    return table;
}

void TableBuilder::AddColumn(TableInfo& table, const tsql::ColumnDefinition& definition) {
    if (table.columns.size() == MaxColumns) {
        throw SqlError(1702, {definition.name, table.object.name}, definition.line);
    }
    if (table.FindColumn(definition.name)) {
        throw SqlError(2705, {definition.name, table.object.name}, definition.line);
    }
    ColumnInfo column;
    column.id = static_cast<int>(table.columns.size()) + 1;
    column.name = definition.name;
    column.type = BindType(definition.type, column.id);
    column.isSysname = definition.type.name.compare(u"sysname", Qt::CaseInsensitive) == 0;
    const bool notNullBySelf = definition.identity || column.isSysname;
    column.nullable = definition.nullability == tsql::Nullability::Unsaid
                          ? !notNullBySelf
                          : definition.nullability == tsql::Nullability::Null;
    if (definition.defaultValue) AddDefault(column, definition);
    table.columns.push_back(column);
    if (definition.identity) AddIdentity(table, definition);
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

void TableBuilder::AddDefault(ColumnInfo& column, const tsql::ColumnDefinition& definition) {
    if (definition.identity)
        throw SqlError(1754, {definition_.name.name, column.name}, definition.line);
    const Scope none;
    ExpressionBinder binder(context_, none);
    BoundPtr value;
    try {
        value = binder.Value(*definition.defaultValue);
    } catch (const SqlError& error) {
        // A column's name has nothing to mean here.
        if (error.Number() != 207 && error.Number() != 4104) throw;
        throw SqlError(128, {error.What().text.section(u'\'', 1, 1)}, definition.line);
    }
    if (!value->untypedNull) TypeRules::CheckConversion(value->type, column.type, false);
    column.defaultText = tsql::DefaultText(*definition.defaultValue);
}

QString TableBuilder::DefaultName(const TableInfo& table, size_t index) const {
    const QString& given = definition_.columns[index].defaultName;
    if (!given.isEmpty()) return given;
    const auto suffix = static_cast<quint64>(table.object.id) * 1024 + index;
    return QStringLiteral("DF__%1__%2__%3")
        .arg(table.object.name.left(9), table.columns[index].name.left(5),
             QString::number(suffix, 16).toUpper().rightJustified(8, u'0'));
}

// A primary key is clustered unless it says otherwise or another key took that place.
bool TableBuilder::IsClustered(const tsql::KeyConstraint& key) const {
    if (key.clusteredSaid || !key.primary) return key.clustered;
    return std::none_of(definition_.keys.begin(), definition_.keys.end(),
                        [](const tsql::KeyConstraint& other) { return other.clustered; });
}

void TableBuilder::AddKeys(TableInfo& table) {
    int primaries = 0, clustered = 0;
    for (const tsql::KeyConstraint& key : definition_.keys) {
        primaries += key.primary ? 1 : 0;
        clustered += IsClustered(key) ? 1 : 0;
        if (primaries > 1) throw SqlError(8110, {table.object.name}, key.line);
        if (clustered > 1) throw SqlError(8112, {table.object.name}, key.line);
        AddKey(table, key, IsClustered(key));
    }
}

void TableBuilder::AddKey(TableInfo& table, const tsql::KeyConstraint& key, bool clustered) {
    IndexInfo index;
    index.unique = true;
    index.primary = key.primary;
    index.clustered = clustered;
    index.id = 1;
    for (const IndexInfo& other : table.indexes) index.id = std::max(index.id, other.id);
    index.id = clustered ? 1 : index.id + 1;
    for (const tsql::KeyColumn& part : key.keys) {
        const ColumnInfo& column = FindKeyColumn(table, part.name);
        for (const IndexInfo::Key& other : index.keys) {
            if (other.columnId == column.id) throw SqlError(1909, {part.name}, key.line);
        }
        index.keys.push_back({column.id, part.descending});
        if (!key.primary || !column.nullable) continue;
        const auto place = static_cast<size_t>(&column - table.columns.data());
        if (definition_.columns[place].nullability == tsql::Nullability::Null) {
            throw SqlError(8111, {table.object.name}, key.line);
        }
        table.columns[place].nullable = false;
    }
    const QString kind = key.primary ? QStringLiteral("PK") : QStringLiteral("UQ");
    index.name = key.name.isEmpty() ? UnnamedKey(kind, table, table.indexes.size()) : key.name;
    table.indexes.push_back(std::move(index));
}

}  // namespace quarv::localdb::engine
