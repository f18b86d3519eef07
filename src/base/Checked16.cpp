#include "base/Checked16.h"

#include <limits>

#include "base/RuntimeError.h"

namespace quarv {

qint16 Narrow16(qint64 value) {
    using Limits = std::numeric_limits<qint16>;
    if (value < Limits::min() || value > Limits::max()) throw RuntimeError(RuntimeError::Overflow);
    return static_cast<qint16>(value);
}

qint16 Add16(qint16 a, qint16 b) {
    return Narrow16(qint64{a} + b);
}

qint16 Multiply16(qint16 a, qint16 b) {
    return Narrow16(qint64{a} * b);
}

}  // namespace quarv
