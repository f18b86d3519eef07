// CustomNumberFormat: numbers by pictures such as "#,##0.00;(#,##0.00)".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "localdb/engine/NumberFormat.h"

namespace quarv::localdb::engine {

// Nothing where the picture is not closed.
std::optional<std::string> FormatCustom(const FormattedNumber& number, std::string_view format);

}  // namespace quarv::localdb::engine
