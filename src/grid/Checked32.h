// 32-bit signed arithmetic as the grid measures: a length that does not fit raises Overflow instead
// of wrapping.
#pragma once

#include <QtGlobal>
#include <limits>

#include "base/RuntimeError.h"

namespace quarv {

// Raises Overflow where `value` does not fit 32 bits.
inline qint32 Narrow32(qint64 value) {
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        throw RuntimeError(RuntimeError::Overflow);
    return static_cast<qint32>(value);
}

}  // namespace quarv
