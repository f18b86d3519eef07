#include "platform/ado/Catalog.h"

#include <algorithm>
#include <tuple>

#include "base/RUtils.h"
#include "platform/ado/DataErrors.h"

namespace quarv::ado {

namespace {

const QString IndexNameField = QStringLiteral("INDEX_NAME");
const QString ColumnField = QStringLiteral("COLUMN_NAME");
const QString KeyNameField = QStringLiteral("PK_NAME");
const QString SchemaField = QStringLiteral("TABLE_SCHEMA");
const QString NameField = QStringLiteral("TABLE_NAME");

// Null as the empty text: drivers leave out what they do not know.
QString TextOf(const Recordset& row, const QString& field) {
    const Value value = row[field];
    return value.IsNull() ? QString() : value.ToText();
}

// No name and no columns where the table has no primary key.
Index KeyOf(Connection& connection, const TableName& table) {
    Index key{.Name = {}, .PrimaryKey = true, .Columns = {}};
    const RecordsetPtr rows = connection.OpenSchema(Schema::PrimaryKeys, table);
    for (; !rows->EOF(); rows->MoveNext()) {
        key.Name = TextOf(*rows, KeyNameField);
        key.Columns.append(TextOf(*rows, ColumnField));
    }
    return key;
}

// The rows of one index stand together. One without an index tells of the table itself.
std::vector<Index> IndexesOf(Connection& connection, const TableName& table) {
    std::vector<Index> indexes;
    const RecordsetPtr rows = connection.OpenSchema(Schema::Indexes, table);
    for (; !rows->EOF(); rows->MoveNext()) {
        const QString name = TextOf(*rows, IndexNameField);
        if (name.isEmpty()) continue;
        if (indexes.empty() || indexes.back().Name != name)
            indexes.push_back({.Name = name, .PrimaryKey = false, .Columns = {}});
        indexes.back().Columns.append(TextOf(*rows, ColumnField));
    }
    return indexes;
}

}  // namespace

const std::vector<Index>& Table::Indexes() {
    if (indexes_) return *indexes_;
    Index key = KeyOf(*connection_, name_);
    std::vector<Index> indexes = IndexesOf(*connection_, name_);
    if (!key.Columns.isEmpty()) {
        const auto found =
            std::ranges::find_if(indexes, [&](const Index& each) { return each.Name == key.Name; });
        // A server may name no index for the key, or may not name the key.
        if (found == indexes.end())
            indexes.insert(indexes.begin(), std::move(key));
        else
            *found = std::move(key);
    }
    return indexes_.emplace(std::move(indexes));
}

Table Catalog::Tables(const QString& name) const {
    if (connection_ == nullptr) throw MakeDataError(DataErrorCode::InvalidConnection);
    std::optional<TableName> best;
    // The same letters count for more than the schema: names may differ in case alone.
    std::tuple<bool, bool> bestRank;
    const RecordsetPtr rows = connection_->OpenSchema(Schema::Tables, {.schema = {}, .name = name});
    for (; !rows->EOF(); rows->MoveNext()) {
        TableName found{.schema = TextOf(*rows, SchemaField), .name = TextOf(*rows, NameField)};
        if (found.name.isEmpty() || !SameText(found.name, name)) continue;
        const std::tuple rank{found.name == name, SameText(found.schema, u"dbo")};
        if (best && rank <= bestRank) continue;
        best = std::move(found);
        bestRank = rank;
    }
    if (!best) throw MakeDataError(DataErrorCode::ItemNotFound);
    return {connection_, *std::move(best)};
}

}  // namespace quarv::ado
