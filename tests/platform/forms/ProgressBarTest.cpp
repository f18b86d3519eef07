#include "platform/forms/ProgressBar.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QSignalSpy>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "support/PaintCounter.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

using test::PaintCounter;

class ProgressBars : public testing::Test {
  protected:
    qint64 now = 1000;
    Form form{u"F"_qs};
    ProgressBar bar{&form, u"Progress"_qs, [this] { return now; }};

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        bar.Move(0, 0, 7500, 300);
        form.Show();
        QCoreApplication::processEvents();
    }
};

// Notes which events reach a widget.
class Arrivals : public QObject {
  public:
    explicit Arrivals(QWidget& watched) { watched.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::User) ++count;
        return false;
    }

    int count = 0;
};

TEST(ProgressBar, StartsEmptyWithAHundredSteps) {
    const ProgressBar bar(nullptr, u"P"_qs);
    EXPECT_EQ(bar.Min(), 0);
    EXPECT_EQ(bar.Max(), 100);
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_EQ(bar.value(), 0);
    EXPECT_FALSE(bar.isTextVisible());
    EXPECT_EQ(bar.TypeName(), u"ProgressBar"_qs);
}

TEST_F(ProgressBars, SpeaksItsName) {
    EXPECT_EQ(bar.accessibleName(), u"Progress"_qs);
    bar.SetSpokenName(u"Batches run"_qs);
    EXPECT_EQ(bar.accessibleName(), u"Batches run"_qs);
}

TEST_F(ProgressBars, AValueOutsideTheRangeIsRefused) {
    bar.SetMin(-10);
    bar.SetValue(-10);
    bar.SetValue(100);
    EXPECT_EQ(Raised([&] { bar.SetValue(101); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { bar.SetValue(-11); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(bar.Value(), 100);
    EXPECT_EQ(bar.value(), 100);
}

TEST_F(ProgressBars, ARangeOfNoStepsIsRefused) {
    EXPECT_EQ(Raised([&] { bar.SetMax(0); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { bar.SetMax(-1); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { bar.SetMin(100); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(bar.Min(), 0);
    EXPECT_EQ(bar.Max(), 100);
    bar.SetMin(99);
    bar.SetMax(2147483647);
    EXPECT_EQ(bar.maximum(), 2147483647);
}

TEST_F(ProgressBars, ANewRangeMovesTheValueIntoIt) {
    bar.SetValue(50);
    bar.SetMax(40);
    EXPECT_EQ(bar.Value(), 40);
    EXPECT_EQ(bar.value(), 40);
    bar.SetMax(1000);
    bar.SetMin(60);
    EXPECT_EQ(bar.Value(), 60);
    EXPECT_EQ(bar.value(), 60);
}

TEST_F(ProgressBars, PaintsANewValueBeforeItReturns) {
    PaintCounter paints(bar);
    bar.SetValue(50);
    EXPECT_EQ(paints.TakenAtOnce(), 1);
    const QImage half = bar.grab().toImage();
    paints.TakenAtOnce();
    now += 50;
    bar.SetValue(80);
    EXPECT_EQ(paints.TakenAtOnce(), 1);
    EXPECT_NE(half, bar.grab().toImage());
}

TEST_F(ProgressBars, PaintsNothingButItself) {
    ProgressBar beside(&form, u"Beside"_qs);
    beside.Move(0, 600, 7500, 300);
    QCoreApplication::processEvents();
    PaintCounter besidePaints(beside);
    PaintCounter paints(bar);
    bar.SetValue(50);
    EXPECT_EQ(paints.TakenAtOnce(), 1);
    EXPECT_EQ(besidePaints.TakenAtOnce(), 0);
}

TEST_F(ProgressBars, PaintsTwentyTimesASecondAtMost) {
    bar.SetMax(100000);
    PaintCounter paints(bar);
    QSignalSpy shown(&bar, &QProgressBar::valueChanged);
    // Ten seconds of a thousand values, each a tenth of a pixel or more.
    for (int i = 1; i <= 9999; ++i) {
        ++now;
        bar.SetValue(10 * i);
    }
    EXPECT_EQ(shown.count(), 200);
    EXPECT_LE(paints.TakenAtOnce(), 200);
    EXPECT_EQ(bar.Value(), 99990);
}

TEST_F(ProgressBars, ShowsTheFirstValueAndThenOneAfterFiftyMilliseconds) {
    bar.SetValue(10);
    EXPECT_EQ(bar.value(), 10);
    now += 49;
    bar.SetValue(20);
    EXPECT_EQ(bar.value(), 10);
    EXPECT_EQ(bar.Value(), 20);
    now += 1;
    bar.SetValue(30);
    EXPECT_EQ(bar.value(), 30);
}

TEST_F(ProgressBars, AlwaysPaintsItsEnd) {
    bar.SetValue(99);
    PaintCounter paints(bar);
    bar.SetValue(100);
    EXPECT_EQ(bar.value(), 100);
    EXPECT_EQ(paints.TakenAtOnce(), 1);
}

TEST_F(ProgressBars, ShowsAHeldBackValueOnceTheEventLoopRuns) {
    bar.SetValue(10);
    bar.SetValue(37);
    QSignalSpy shown(&bar, &QProgressBar::valueChanged);
    EXPECT_EQ(bar.value(), 10);
    EXPECT_TRUE(shown.wait());
    EXPECT_EQ(bar.value(), 37);
    EXPECT_EQ(shown.count(), 1);
}

TEST_F(ProgressBars, AValueSetBackToTheShownOneWaitsForNothing) {
    bar.SetValue(10);
    bar.SetValue(20);
    bar.SetValue(10);
    now += 50;
    QSignalSpy shown(&bar, &QProgressBar::valueChanged);
    bar.SetValue(10);
    EXPECT_EQ(shown.count(), 0);
    bar.SetValue(20);
    EXPECT_EQ(bar.value(), 20);
}

TEST_F(ProgressBars, LetsNoEventIn) {
    Arrivals arrivals(form);
    QCoreApplication::postEvent(&form, new QEvent(QEvent::User));
    QCoreApplication::postEvent(
        &form, new QMouseEvent(QEvent::MouseButtonPress, QPointF(5, 300), QPointF(5, 300),
                               Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    bar.SetValue(50);
    now += 50;
    bar.SetValue(100);
    EXPECT_EQ(arrivals.count, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(arrivals.count, 2);
}

TEST_F(ProgressBars, AHiddenBarTakesValuesAndShowsThemLater) {
    bar.SetVisible(false);
    bar.SetValue(50);
    EXPECT_EQ(bar.value(), 50);
    bar.SetVisible(true);
    PaintCounter paints(bar);
    now += 50;
    bar.SetValue(80);
    EXPECT_EQ(paints.TakenAtOnce(), 1);
}

TEST_F(ProgressBars, MembersAreReachedByName) {
    SetByName(&bar, u"Max"_qs, Value(5000000));
    SetByName(&bar, u"Min"_qs, Value(-5));
    SetByName(&bar, u"Value"_qs, Value(4999999));
    EXPECT_EQ(GetByName(&bar, u"Value"_qs).ToInteger(), 4999999);
    EXPECT_EQ(Raised([&] { SetByName(&bar, u"Value"_qs, Value(-6)); }),
              RuntimeError::InvalidPropertyValue);
}

}  // namespace
}  // namespace quarv::forms
