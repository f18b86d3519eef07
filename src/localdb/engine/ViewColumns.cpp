#include "localdb/engine/ViewColumns.h"

#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

std::vector<ColumnInfo> ViewColumns(BindContext& context, const tsql::CreateView& view) {
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> query = binder.BindSub(*view.query);
    const QString& name = view.name.name;
    if (!view.columns.empty() && view.columns.size() != query->columns.size()) {
        const bool more = view.columns.size() > query->columns.size();
        throw SqlError(more ? 4502 : 8158, {name});
    }
    std::vector<ColumnInfo> columns;
    for (size_t i = 0; i < query->columns.size(); ++i) {
        ColumnInfo column;
        column.id = static_cast<int>(i) + 1;
        column.name = view.columns.empty() ? query->columns[i].name : view.columns[i];
        column.type = query->columns[i].type;
        column.nullable = query->columns[i].nullable;
        if (column.name.isEmpty()) throw SqlError(4511, {QString::number(column.id)});
        for (const ColumnInfo& other : columns) {
            if (SameName(other.name, column.name)) throw SqlError(4506, {column.name, name});
        }
        columns.push_back(column);
    }
    return columns;
}

}  // namespace quarv::localdb::engine
