// ScrollBar: the platform's standard bar, with 16-bit positions. It announces a drag of its thumb
// as Scroll while it lasts and as one Change at its end, and every other move as a Change.
#pragma once

#include <QScrollBar>

#include "platform/forms/Control.h"

namespace quarv::forms {

class ScrollBar : public QScrollBar, public Control {
    Q_OBJECT
    QUARV_CONTROL_PROPERTIES
    Q_PROPERTY(qint16 Min READ Min WRITE SetMin)
    Q_PROPERTY(qint16 Max READ Max WRITE SetMax)
    Q_PROPERTY(qint16 Value READ Value WRITE SetValue)
    Q_PROPERTY(qint16 SmallChange READ SmallChange WRITE SetSmallChange)
    Q_PROPERTY(qint16 LargeChange READ LargeChange WRITE SetLargeChange)

  public:
    ScrollBar(QWidget* container, const QString& name, Qt::Orientation orientation);

    // The ends of the range, 0 and 32767 at first: Min is the left or upper one, even where it is
    // the greater of the two. A value outside a new range moves to its nearer end.
    qint16 Min() const { return min_; }
    qint16 Max() const { return max_; }
    void SetMin(qint16 min) { SetEnds(min, max_); }
    void SetMax(qint16 max) { SetEnds(min_, max); }

    // Where the thumb is, while it is dragged too. Outside the range raises InvalidPropertyValue.
    qint16 Value() const;
    void SetValue(qint16 value);

    // What an arrow and a click beside the thumb move, 1 at first. Below 1 raises
    // InvalidPropertyValue.
    qint16 SmallChange() const { return static_cast<qint16>(singleStep()); }
    qint16 LargeChange() const { return static_cast<qint16>(pageStep()); }
    void SetSmallChange(qint16 positions);
    void SetLargeChange(qint16 positions);

    // How thick a bar is on this desktop, in twips: the width of a vertical one.
    double Extent() const;

  Q_SIGNALS:
    // The value is another one now, by the user or a program; of a drag, once at its end.
    void Change();
    // The thumb was moved and is still held.
    void Scroll();
    void GotFocus();
    void LostFocus();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void SetEnds(qint16 min, qint16 max);
    // Between values and Qt's positions, which always grow to the right and downward.
    int Mirrored(int value) const { return min_ <= max_ ? value : min_ + max_ - value; }
    void Settle();
    void RaiseChange(qint16 value);

    qint16 min_ = 0;
    qint16 max_ = 32767;
    // What the last Change told, or nothing has moved yet.
    qint16 announced_ = 0;
};

}  // namespace quarv::forms
