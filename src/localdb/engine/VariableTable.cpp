#include "localdb/engine/VariableTable.h"

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

size_t VariableTable::Declare(const QString& name, const SqlType& type) {
    if (Find(name) || FindTable(name)) throw SqlError(134, {name});
    variables_.push_back({name, type, OwnedValue()});
    return variables_.size() - 1;
}

void VariableTable::DeclareTable(const QString& name, std::shared_ptr<TableInfo> table) {
    if (Find(name) || FindTable(name)) throw SqlError(134, {name});
    tables_.emplace_back(name, std::move(table));
}

const std::shared_ptr<TableInfo>* VariableTable::FindTable(const QString& name) const {
    for (const auto& [known, table] : tables_) {
        if (SameName(known, name)) return &table;
    }
    return nullptr;
}

std::optional<size_t> VariableTable::Find(const QString& name) const {
    for (size_t i = 0; i < variables_.size(); ++i) {
        if (SameName(variables_[i].name, name)) return i;
    }
    return std::nullopt;
}

}  // namespace quarv::localdb::engine
