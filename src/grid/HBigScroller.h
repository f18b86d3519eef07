// HBigScroller: a horizontal scroll bar whose positions are 32-bit numbers, around the platform's
// bar of 16-bit ones. Its container owns it; what the positions stand for it does not know.
#pragma once

#include "grid/BigScrollerMapping.h"
#include "platform/forms/UserControl.h"

namespace quarv {

namespace forms {
class ScrollBar;
class TextBox;
}  // namespace forms

class HBigScroller : public forms::UserControl {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(qint32 Min READ Min WRITE SetMin)
    Q_PROPERTY(qint32 Max READ Max WRITE SetMax)
    Q_PROPERTY(qint32 Value READ Value WRITE SetValue)
    Q_PROPERTY(qint16 SmallChange READ SmallChange WRITE SetSmallChange)
    Q_PROPERTY(qint16 LargeChange READ LargeChange WRITE SetLargeChange)

  public:
    // Starts with the range 0 to 100.
    HBigScroller(QWidget* container, const QString& name);

    // Puts the bar at the low end, raising no Change. The value is then lMin, or 0 where the range
    // reaches -32700 or 32700 and so is scaled. Raises Overflow where an end of a range that is
    // not scaled does not fit 16 bits.
    Q_INVOKABLE void SetRange(qint32 lMin, qint32 lMax);
    // The ends as given. Another end sets the range anew; the same one does nothing.
    qint32 Min() const { return mapping_.Minimum(); }
    qint32 Max() const { return mapping_.Maximum(); }
    void SetMin(qint32 min);
    void SetMax(qint32 max);

    // In positions of the inner bar, 1 at first: an arrow or page click moves the value by the
    // same number. Below 1 raises InvalidPropertyValue.
    qint16 SmallChange() const;
    qint16 LargeChange() const;
    void SetSmallChange(qint16 positions);
    void SetLargeChange(qint16 positions);

    // Raises no Change, unless a value outside the range moves the bar to its end. In a scaled
    // range a value outside raises InvalidPropertyValue or Overflow, and is kept all the same.
    qint32 Value() const { return mapping_.Value(); }
    void SetValue(qint32 value);

    // The control's own state. Writing announces "Enabled"; both draw the inner bar anew.
    bool Enabled() const;
    void SetEnabled(bool enabled);

    // The inner bar has the keyboard focus.
    bool HasFocus() const { return hasFocus_; }

  Q_SIGNALS:
    // The user moved the bar, the thumb being dragged included.
    void Change();
    // Never raised: a drag of the thumb raises Change.
    void Scroll();

  protected:
    void UserControl_Resize() override;
    QWidget* InnerWidget() const override;

  private:
    void FollowScroller();
    void FollowFocusGrabber();
    void ScrollerChange();
    void ScrollerScroll();

    forms::ScrollBar* scroller_;
    forms::TextBox* focusGrabber_;
    BigScrollerMapping mapping_;
    bool hasFocus_ = false;
};

}  // namespace quarv
