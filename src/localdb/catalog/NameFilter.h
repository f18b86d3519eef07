// NameFilter: the names that a catalogue procedure is asked for, as conditions of storage SQL and
// as a test in memory. An empty or missing name asks for everything.
#pragma once

#include <string>
#include <vector>

#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

class NameFilter {
  public:
    // Without patterns "%", "_" and "[" mean themselves.
    explicit NameFilter(bool patterns = true) : patterns_(patterns) {}

    void Add(const char* column, const QString& name);
    void AddExact(const char* column, const QString& name);
    // " AND ..." for each name.
    const std::string& Conditions() const { return conditions_; }
    const std::vector<engine::SystemCall::Parameter>& Parameters() const { return parameters_; }

    // Whether `name` is among those that `pattern` asks for.
    static bool Matches(const QString& name, const QString& pattern);

  private:
    void AddCondition(const char* column, const QString& name, bool pattern);

    bool patterns_;
    std::string conditions_;
    std::vector<engine::SystemCall::Parameter> parameters_;
};

}  // namespace quarv::localdb::catalog
