// VariableTable: the declared variables of a batch or procedure: names, types and values.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"

namespace quarv::localdb::engine {

class VariableTable {
  public:
    struct Variable {
        QString name;  // with its "@"
        SqlType type;
        OwnedValue value;
    };

    // A new table variable. Raises SqlError 134.
    void DeclareTable(const QString& name, std::shared_ptr<TableInfo> table);
    // Nothing where there is none.
    const std::shared_ptr<TableInfo>* FindTable(const QString& name) const;
    const std::vector<std::pair<QString, std::shared_ptr<TableInfo>>>& Tables() const {
        return tables_;
    }
    // A new variable, null. Raises SqlError 134 where the name is taken.
    size_t Declare(const QString& name, const SqlType& type);
    std::optional<size_t> Find(const QString& name) const;
    const Variable& At(size_t index) const { return variables_[index]; }
    // `value` is of the variable's type.
    void Set(size_t index, const SqlValue& value) { variables_[index].value = value; }

  private:
    std::vector<Variable> variables_;
    std::vector<std::pair<QString, std::shared_ptr<TableInfo>>> tables_;
};

}  // namespace quarv::localdb::engine
