// ViewBuilder: makes a system view from its columns, each with the storage expression that gives
// it, and the tables behind them.
#pragma once

#include <string>
#include <vector>

#include "localdb/engine/SystemObjects.h"

namespace quarv::localdb::catalog {

class ViewBuilder {
  public:
    ViewBuilder(const char* schema, const char* name);

    ViewBuilder& Add(engine::Column column, const std::string& expression);
    // Several columns that are always null.
    ViewBuilder& AddNulls(const std::vector<engine::Column>& columns);
    // `from` is everything behind the list of expressions.
    engine::SystemView From(const std::string& from);

  private:
    engine::SystemView view_;
};

}  // namespace quarv::localdb::catalog
