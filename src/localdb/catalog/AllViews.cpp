// sys.all_objects, sys.all_views and the system_ views: the system's own views beside the user's.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

using engine::SystemView;

namespace {

constexpr int InformationSchemaId = 3, SysId = 4;

std::string Created() {
    engine::Moment moment;
    moment.year = 2022;
    moment.month = 11;
    return std::to_string(moment.Store(engine::TypeKind::DateTime).value_or(0));
}

// Rows of the form of $q_objects; the numbers are below zero, as the system's are.
std::string SystemRows(const std::vector<SystemView>& views) {
    const std::string created = Created();
    std::string rows;
    int number = 0;
    for (const SystemView& view : views) {
        const bool sys = view.schema == u"sys";
        rows += rows.empty() ? "VALUES (" : ", (";
        rows += std::to_string(--number) + ", " +
                std::to_string(sys ? SysId : InformationSchemaId) + ", 0, 'V', '" +
                engine::ToUtf8(view.name) + "', " + created + ", " + created + ", 1)";
    }
    return rows;
}

SystemView Over(const char* name, const std::string& system, bool withUsers, bool onlyViews) {
    ViewBuilder view("sys", name);
    AddObjectColumns(view, "o.shipped");
    std::string from =
        "FROM (SELECT column1 AS object_id, column2 AS schema_id, column3 AS parent_id,"
        " column4 AS type, column5 AS name, column6 AS created, column7 AS modified,"
        " column8 AS shipped FROM (" +
        system + ')';
    if (withUsers) {
        from +=
            " UNION ALL SELECT object_id, schema_id, parent_id, type, name, created, modified, 0"
            " FROM $q_objects";
        if (onlyViews) from += " WHERE type = 'V'";
    }
    return view.From(from + ") o");
}

// Rows of the form of $q_columns, as far as sys.columns reads them.
std::string SystemColumnRows(const std::vector<SystemView>& views) {
    std::string rows;
    int number = 0;
    for (const SystemView& view : views) {
        --number;
        int columnNumber = 0;
        for (const engine::Column& column : view.columns) {
            const bool sysname = column.type == engine::SysnameType();
            rows += rows.empty() ? "VALUES (" : ", (";
            rows += std::to_string(number) + ", " + std::to_string(++columnNumber) + ", '" +
                    engine::ToUtf8(column.name) + "', " +
                    std::to_string(engine::PackType(column.type)) + ", " +
                    std::to_string(column.nullable) + ", " + std::to_string(sysname) + ')';
        }
    }
    return rows;
}

constexpr const char* ColumnForm =
    "(SELECT column1 AS object_id, column2 AS column_id, column3 AS name, column4 AS type,"
    " column5 AS nullable, column6 AS is_sysname, 0 AS default_id, 0 AS user_type,"
    " 0 AS is_rowguid, NULL AS computed FROM (";
constexpr const char* UserColumns =
    " UNION ALL SELECT object_id, column_id, name, type, nullable, is_sysname, default_id,"
    " user_type, is_rowguid, computed FROM $q_columns)";

}  // namespace

std::vector<SystemView> AllViews(const std::vector<SystemView>& known) {
    const std::string rows = SystemRows(known);
    const std::string system = ColumnForm + SystemColumnRows(known) + ')';
    return {Over("all_objects", rows, true, false),
            Over("all_views", rows, true, true),
            Over("system_objects", rows, false, false),
            Over("system_views", rows, false, true),
            ColumnsOver("all_columns", system + UserColumns),
            ColumnsOver("system_columns", system + ')')};
}

}  // namespace quarv::localdb::catalog
