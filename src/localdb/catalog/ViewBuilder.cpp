#include "localdb/catalog/ViewBuilder.h"

namespace quarv::localdb::catalog {

ViewBuilder::ViewBuilder(const char* schema, const char* name) {
    view_.schema = QString::fromLatin1(schema);
    view_.name = QString::fromLatin1(name);
    view_.sql = "SELECT ";
}

// The engine finds the columns as v1, v2 and so on.
ViewBuilder& ViewBuilder::Add(engine::Column column, const std::string& expression) {
    if (!view_.columns.empty()) view_.sql += ", ";
    view_.columns.push_back(std::move(column));
    view_.sql += expression + " AS v" + std::to_string(view_.columns.size());
    return *this;
}

ViewBuilder& ViewBuilder::AddNulls(const std::vector<engine::Column>& columns) {
    for (const engine::Column& column : columns) Add(column, "NULL");
    return *this;
}

engine::SystemView ViewBuilder::From(const std::string& from) {
    view_.sql += ' ' + from;
    return std::move(view_);
}

}  // namespace quarv::localdb::catalog
