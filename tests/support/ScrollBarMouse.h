// ScrollBarMouse: what a person does to a scroll bar with the mouse, by real events at the places
// where the style draws its parts.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>

namespace quarv::test {

inline QRect PartOf(const QScrollBar& bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.sliderPosition = bar.sliderPosition();
    option.sliderValue = bar.value();
    option.singleStep = bar.singleStep();
    option.pageStep = bar.pageStep();
    if (bar.orientation() == Qt::Horizontal) option.state |= QStyle::State_Horizontal;
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar);
}

inline void ClickOn(QScrollBar& bar, QStyle::SubControl part) {
    QTest::mouseClick(&bar, Qt::LeftButton, {}, PartOf(bar, part).center());
}

// How many pixels the thumb of a horizontal bar can travel.
inline int TravelOf(const QScrollBar& bar) {
    return PartOf(bar, QStyle::SC_ScrollBarGroove).width() -
           PartOf(bar, QStyle::SC_ScrollBarSlider).width();
}

// A thumb held by the left button, to be moved by pixels; released at the end of its life.
class HeldThumb {
  public:
    explicit HeldThumb(QScrollBar& bar)
        : bar_(bar), at_(PartOf(bar, QStyle::SC_ScrollBarSlider).center()) {
        QTest::mousePress(&bar_, Qt::LeftButton, {}, at_);
    }
    ~HeldThumb() { QTest::mouseRelease(&bar_, Qt::LeftButton, {}, at_); }
    HeldThumb(const HeldThumb&) = delete;
    HeldThumb& operator=(const HeldThumb&) = delete;

    void MoveBy(int pixels) {
        at_ += bar_.orientation() == Qt::Horizontal ? QPoint(pixels, 0) : QPoint(0, pixels);
        QMouseEvent move(QEvent::MouseMove, at_, bar_.mapToGlobal(at_), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&bar_, &move);
    }

  private:
    QScrollBar& bar_;
    QPoint at_;
};

}  // namespace quarv::test
