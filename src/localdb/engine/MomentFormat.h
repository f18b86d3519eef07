// MomentFormat: dates and times by the format strings of FORMAT, as the culture en-US shows them.
// Knows no expression.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "localdb/engine/Moment.h"

namespace quarv::localdb::engine {

class MomentFormat {
  public:
    // Nothing where the format says nothing about such a value. Raises SqlError 40517 for what
    // would show the time zone of a value that has none.
    static std::optional<std::string> Format(const Moment& moment, const SqlType& type,
                                             std::string_view format);
};

}  // namespace quarv::localdb::engine
