#include "grid/BigScrollerMapping.h"

#include <algorithm>
#include <cstdlib>

#include "base/Checked16.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"
#include "grid/Checked32.h"

namespace quarv {

namespace {

constexpr qint32 DirectLow = -32700;
constexpr qint32 DirectHigh = 32700;
constexpr double ScaleLength = BigScrollerMapping::Scale;

}  // namespace

void BigScrollerMapping::SetRange(qint32 lMin, qint32 lMax) {
    minimum_ = lMin;
    maximum_ = lMax;
    direct_ = lMin > DirectLow && lMax < DirectHigh;
}

qint16 BigScrollerMapping::InnerMaximum() const {
    return direct_ ? Narrow16(maximum_) : Scale;
}

qint16 BigScrollerMapping::InnerMinimum() const {
    return direct_ ? Narrow16(minimum_) : qint16{0};
}

qint16 BigScrollerMapping::ToLowEnd(qint16 innerMinimum) {
    lastPosition_ = innerMinimum;
    // A scaled range starts at 0 too, wherever its own low end is, until the next move.
    value_ = innerMinimum;
    return lastPosition_;
}

double BigScrollerMapping::Span() const {
    return Narrow32(qint64{maximum_} - minimum_);
}

qint16 BigScrollerMapping::ScaledPosition() const {
    const double distance = Narrow32(qint64{value_} - minimum_);
    const double span = Span();
    if (span == 0) throw RuntimeError(RuntimeError::DivisionByZero);
    return Narrow16(RoundToInteger(distance / span * ScaleLength));
}

qint16 BigScrollerMapping::SetValue(qint32 value, Ends inner) {
    value_ = value;
    if (!direct_) {
        lastPosition_ = ScaledPosition();
        return lastPosition_;
    }
    // Not limited: a bar that stops at its end has moved to another position than the one set.
    lastPosition_ = Narrow16(value);
    const auto [low, high] = std::minmax(inner.min, inner.max);
    return std::clamp(lastPosition_, low, high);
}

bool BigScrollerMapping::MovedTo(qint16 position, Steps steps) {
    if (position == lastPosition_) return false;
    if (direct_) {
        lastPosition_ = position;
        value_ = position;
        return true;
    }
    const qint16 moved = Narrow16(qint64{position} - lastPosition_);
    const int distance = std::abs(int{moved});
    if (distance == steps.small || distance == steps.large) {
        // A click moves by so many of the range's own units, past its ends too. The thumb, which
        // moved by as many of the scale's, agrees again after a drag or a SetValue.
        value_ = Narrow32(qint64{value_} + moved);
        lastPosition_ = position;
        return true;
    }
    lastPosition_ = position;
    value_ = Narrow32(RoundToInteger(position / ScaleLength * Span() + minimum_));
    return true;
}

}  // namespace quarv
