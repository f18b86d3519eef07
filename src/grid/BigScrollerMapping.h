// BigScrollerMapping: the arithmetic of HBigScroller, which owns it: how a position in a range of
// 32-bit numbers and the position of a bar of 16-bit ones follow each other. It knows no widget:
// it is told where the bar is and answers where to put it.
#pragma once

#include <QtGlobal>

namespace quarv {

class BigScrollerMapping {
  public:
    // The bar runs from 0 to this where the range is not used directly.
    static constexpr qint16 Scale = 30000;

    // The ends of the inner bar; the greater may come first.
    struct Ends {
        qint16 min;
        qint16 max;
    };
    // What an arrow and a page click move the inner bar by.
    struct Steps {
        qint16 small;
        qint16 large;
    };

    qint32 Minimum() const { return minimum_; }
    qint32 Maximum() const { return maximum_; }
    // The current position in the range; it may lie outside after arrow and page clicks.
    qint32 Value() const { return value_; }
    // The inner bar's position when the value was last computed or set.
    qint16 LastPosition() const { return lastPosition_; }
    // The inner bar has the range's own ends and positions.
    bool Direct() const { return direct_; }

    // Takes the range, not yet a position: put the ends on the bar, then call ToLowEnd.
    void SetRange(qint32 lMin, qint32 lMax);
    // What the bar's ends are to be. Each raises Overflow where the range's end does not fit.
    qint16 InnerMaximum() const;
    qint16 InnerMinimum() const;
    // Gives where the bar is to be put.
    qint16 ToLowEnd(qint16 innerMinimum);

    // Gives where the bar is to be put, which may be outside its scale. The value is taken even
    // where this raises: Overflow for a difference that does not fit 32 bits or a position that
    // does not fit 16, DivisionByZero for a scaled range whose ends are equal.
    qint16 SetValue(qint32 value, Ends inner);

    // The bar is at `position`: recomputes the value. False where it had been put there. Raises
    // Overflow where a number does not fit its size; the value stays then.
    bool MovedTo(qint16 position, Steps steps);

  private:
    double Span() const;
    qint16 ScaledPosition() const;

    qint32 minimum_ = 0;
    qint32 maximum_ = 0;
    qint32 value_ = 0;
    qint16 lastPosition_ = 0;
    bool direct_ = true;
};

}  // namespace quarv
