#include "localdb/engine/VariableTable.h"

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

size_t VariableTable::Declare(const QString& name, const SqlType& type) {
    if (Find(name)) throw SqlError(134, {name});
    variables_.push_back({name, type, OwnedValue()});
    return variables_.size() - 1;
}

std::optional<size_t> VariableTable::Find(const QString& name) const {
    for (size_t i = 0; i < variables_.size(); ++i) {
        if (SameName(variables_[i].name, name)) return i;
    }
    return std::nullopt;
}

}  // namespace quarv::localdb::engine
