// 16-bit signed arithmetic as the system counts: counts and positions that are stated as 16-bit
// stay 16-bit, and a sum that does not fit raises Overflow instead of wrapping.
#pragma once

#include <QtGlobal>

namespace quarv {

// Each raises RuntimeError::Overflow where the result lies outside -32768..32767.
qint16 Add16(qint16 a, qint16 b);
qint16 Multiply16(qint16 a, qint16 b);
qint16 Narrow16(qint64 value);

}  // namespace quarv
