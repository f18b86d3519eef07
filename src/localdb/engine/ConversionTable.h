// ConversionTable: which type converts to which, by itself or where it is asked for ("CAST and
// CONVERT (Transact-SQL)", Implicit conversions).
#pragma once

#include <cstdint>

#include "localdb/engine/SqlType.h"

namespace quarv::localdb::engine {

enum class ConversionKind : uint8_t { Implicit, Explicit, None };

ConversionKind ConversionOf(TypeKind from, TypeKind to);

}  // namespace quarv::localdb::engine
