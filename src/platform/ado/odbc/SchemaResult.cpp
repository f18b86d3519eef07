#include "platform/ado/odbc/SchemaResult.h"

#include <sqlext.h>

#include <array>
#include <cstring>

namespace quarv::ado::odbc {

namespace {

// The columns of a schema rowset and the position each has in the ODBC call's result, by the OLE DB
// programmer's reference ("Schema Rowsets") and the ODBC programmer's reference ("SQLTables",
// "SQLProcedures", "SQLPrimaryKeys", "SQLStatistics"). Driver managers and servers name them
// differently, so positions count.
struct Source {
    const char* name;
    int position;
};

constexpr std::array CatalogColumns{Source{"CATALOG_NAME", 0}, Source{"DESCRIPTION", 4}};

constexpr std::array TableColumns{
    Source{"TABLE_CATALOG", 0}, Source{"TABLE_SCHEMA", 1},  Source{"TABLE_NAME", 2},
    Source{"TABLE_TYPE", 3},    Source{"TABLE_GUID", -1},   Source{"DESCRIPTION", 4},
    Source{"TABLE_PROPID", -1}, Source{"DATE_CREATED", -1}, Source{"DATE_MODIFIED", -1},
};

constexpr std::array ProcedureColumns{
    Source{"PROCEDURE_CATALOG", 0}, Source{"PROCEDURE_SCHEMA", 1},      Source{"PROCEDURE_NAME", 2},
    Source{"PROCEDURE_TYPE", 7},    Source{"PROCEDURE_DEFINITION", -1}, Source{"DESCRIPTION", 6},
    Source{"DATE_CREATED", -1},     Source{"DATE_MODIFIED", -1},
};

constexpr std::array PrimaryKeyColumns{
    Source{"TABLE_CATALOG", 0}, Source{"TABLE_SCHEMA", 1}, Source{"TABLE_NAME", 2},
    Source{"COLUMN_NAME", 3},   Source{"COLUMN_GUID", -1}, Source{"COLUMN_PROPID", -1},
    Source{"ORDINAL", 4},       Source{"PK_NAME", 5},
};

// Without what the call tells in other terms or not at all.
constexpr std::array IndexColumns{
    Source{"TABLE_CATALOG", 0},     Source{"TABLE_SCHEMA", 1}, Source{"TABLE_NAME", 2},
    Source{"INDEX_NAME", 5},        Source{"TYPE", 6},         Source{"ORDINAL_POSITION", 7},
    Source{"COLUMN_NAME", 8},       Source{"CARDINALITY", 10}, Source{"PAGES", 11},
    Source{"FILTER_CONDITION", 12},
};

constexpr std::size_t TypeColumn = 3;  // TABLE_TYPE and PROCEDURE_TYPE
constexpr char16_t SystemTable[] = u"SYSTEM TABLE";

struct Layout {
    const Source* columns;
    std::size_t count;
    int schemaPosition;
};

Layout LayoutOf(Schema schema) {
    switch (schema) {
        case Schema::Catalogs:
            return {CatalogColumns.data(), CatalogColumns.size(), -1};
        case Schema::Tables:
            return {TableColumns.data(), TableColumns.size(), 1};
        case Schema::Procedures:
            return {ProcedureColumns.data(), ProcedureColumns.size(), 1};
        case Schema::Indexes:
            return {IndexColumns.data(), IndexColumns.size(), -1};
        case Schema::PrimaryKeys:
            return {PrimaryKeyColumns.data(), PrimaryKeyColumns.size(), -1};
    }
    return {nullptr, 0, -1};
}

bool IsText(const Cell& cell, QStringView word) {
    if (cell.length != word.size() * 2) return false;
    const QStringView text(reinterpret_cast<const char16_t*>(cell.data), word.size());
    return text == word || text.compare(word, Qt::CaseInsensitive) == 0;
}

}  // namespace

SchemaResult::SchemaResult(Schema schema, std::unique_ptr<Result> source)
    : schema_(schema), source_(std::move(source)) {
    const Layout layout = LayoutOf(schema);
    const std::vector<Column>& given = source_->Columns();
    for (std::size_t i = 0; i < layout.count; ++i) {
        const int position = layout.columns[i].position;
        const bool delivered = position >= 0 && position < static_cast<int>(given.size());
        Column column = delivered ? given[static_cast<std::size_t>(position)] : Column();
        column.name = QLatin1String(layout.columns[i].name);
        columns_.push_back(column);
        from_.push_back(delivered ? position : NoColumn);
    }
    if (layout.schemaPosition < static_cast<int>(given.size()))
        schemaColumn_ = layout.schemaPosition;
}

bool SchemaResult::Fetch() {
    while (source_->Fetch())
        if (schema_ != Schema::Procedures || !IsSystemRow()) return true;
    return false;
}

Cell SchemaResult::Read(std::size_t column) {
    if (column == TypeColumn && schema_ == Schema::Tables) return TableType();
    if (column == TypeColumn && schema_ == Schema::Procedures) return ProcedureType();
    const int from = from_[column];
    return from == NoColumn ? Cell() : source_->Read(static_cast<std::size_t>(from));
}

bool SchemaResult::IsSystemRow() const {
    if (schemaColumn_ == NoColumn) return false;
    const Cell schema = source_->Read(static_cast<std::size_t>(schemaColumn_));
    return IsText(schema, u"sys") || IsText(schema, u"INFORMATION_SCHEMA");
}

// Nobody makes a table of their own in one of the server's schemas, so a "TABLE" is one for sure
// and its schema need not be fetched.
Cell SchemaResult::TableType() {
    const int from = from_[TypeColumn];
    const Cell type = from == NoColumn ? Cell() : source_->Read(static_cast<std::size_t>(from));
    if (IsText(type, u"TABLE") || !IsSystemRow()) return type;
    return {reinterpret_cast<const char*>(SystemTable), sizeof SystemTable - 2};
}

// ODBC counts 0 unknown, 1 procedure, 2 function; OLE DB counts the same from 1.
Cell SchemaResult::ProcedureType() {
    const int from = from_[TypeColumn];
    if (from == NoColumn) return {};
    const Cell given = source_->Read(static_cast<std::size_t>(from));
    if (columns_[TypeColumn].kind != CellKind::Integer || given.length < 8) return given;
    std::memcpy(&number_, given.data, sizeof number_);
    ++number_;
    return {reinterpret_cast<const char*>(&number_), sizeof number_};
}

}  // namespace quarv::ado::odbc
