#include "platform/forms/Frame.h"

#include <gtest/gtest.h>

#include <QScreen>
#include <QTest>

#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "support/PaintCounter.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

// FramePlus keeps the same promises.
template <typename T>
class Frames : public testing::Test {};
using FrameTypes = testing::Types<Frame, FramePlus>;
TYPED_TEST_SUITE(Frames, FrameTypes);

TYPED_TEST(Frames, WithoutABorderNothingIsPainted) {
    Form form(u"F"_qs);
    form.Move(0, 0, 3000, 3000);
    TypeParam frame(&form, u"Page"_qs);
    frame.Move(150, 150, 2400, 2400);
    frame.SetCaption(u"Page"_qs);
    form.Show();
    const QImage bordered = form.grab().toImage();
    frame.SetBorderStyle(0);
    const QImage plain = form.grab().toImage();
    frame.SetVisible(false);
    EXPECT_EQ(plain, form.grab().toImage());
    EXPECT_NE(plain, bordered);
}

TYPED_TEST(Frames, RefusesUnknownBorders) {
    Form form(u"F"_qs);
    TypeParam frame(&form, u"Page"_qs);
    EXPECT_EQ(frame.BorderStyle(), 1);
    EXPECT_THROW(frame.SetBorderStyle(2), RuntimeError);
    EXPECT_THROW(frame.SetBorderStyle(-1), RuntimeError);
}

TYPED_TEST(Frames, CaptionsAreLiteralAndSpoken) {
    Form form(u"F"_qs);
    TypeParam frame(&form, u"Page"_qs);
    frame.SetCaption(u"Fields: A&B"_qs);
    EXPECT_EQ(frame.Caption(), u"Fields: A&B"_qs);
    EXPECT_EQ(frame.accessibleName(), u"Fields: A&B"_qs);
}

TEST(FramePlusTest, ANewCaptionPaintsNothingThatTheFrameHolds) {
    Form form(u"F"_qs);
    form.Move(0, 0, 6000, 6000);
    FramePlus frame(&form, u"Page"_qs);
    frame.Move(150, 150, 4500, 4500);
    QWidget inside(&frame);
    inside.setGeometry(0, 16, 300, 100);  // right under the band
    form.Show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    test::PaintCounter framePaints(frame);
    test::PaintCounter insidePaints(inside);
    EXPECT_EQ(framePaints.Taken() + insidePaints.Taken(), 0);
    frame.SetCaption(u"Records:Orders"_qs);
    EXPECT_EQ(framePaints.Taken(), 1);
    EXPECT_EQ(insidePaints.Taken(), 0);
}

TEST(FramePlusTest, ANewCaptionIsPaintedWhole) {
    Form form(u"F"_qs);
    form.Move(0, 0, 6000, 6000);
    FramePlus frame(&form, u"Page"_qs);
    frame.Move(150, 150, 4500, 4500);
    form.Show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    const auto onScreen = [&form] { return form.screen()->grabWindow(form.winId()).toImage(); };
    for (const QString& caption : {u"Records:Orders"_qs, u"Records:"_qs, QString()}) {
        frame.SetCaption(caption);
        QCoreApplication::processEvents();
        const QImage shown = onScreen();
        EXPECT_EQ(shown.pixelColor(200, 14) == shown.pixelColor(200, 40), caption.isEmpty());
        form.repaint();
        EXPECT_EQ(shown, onScreen()) << caption.toStdString();
    }
}

}  // namespace
}  // namespace quarv::forms
