#include "controls/RaisedPanel.h"

#include <gtest/gtest.h>

#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "support/FilledPicture.h"
#include "support/PaintCounter.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using test::DarkShadow;
using test::Highlight;
using test::LightEdge;
using test::Shadow;

const QColor Ground(Qt::magenta);

// The panel takes 40 x 30 pixels, (10, 20) to (49, 49), of a magenta form.
class RaisedPanelPaint : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RaisedPanel panel{&form, u"Panel"_qs};

    void SetUp() override {
        QPalette palette = test::ClassicPalette();
        palette.setColor(QPalette::Window, Ground);
        form.setPalette(palette);
        panel.Move(150, 300, 600, 450);
        form.Show();
    }

    QColor Pixel(int x, int y) { return form.grab().toImage().pixelColor(x, y); }
    bool HasLeft() { return Pixel(10, 35) != Ground; }
    bool HasTop() { return Pixel(30, 20) != Ground; }
    bool HasRight() { return Pixel(49, 35) != Ground; }
    bool HasBottom() { return Pixel(30, 49) != Ground; }
};

struct Kind {
    const char* name;
    int style;
    QColor outerLeftTop, innerLeftTop, innerRightBottom, outerRightBottom;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class RaisedPanelStyle : public RaisedPanelPaint, public testing::WithParamInterface<Kind> {};

INSTANTIATE_TEST_SUITE_P(
    , RaisedPanelStyle,
    testing::Values(Kind{"Raised", 0, LightEdge, Highlight, Shadow, DarkShadow},
                    Kind{"Sunken", 1, Shadow, DarkShadow, LightEdge, Highlight},
                    Kind{"Etched", 2, Shadow, Highlight, Shadow, Highlight},
                    Kind{"Bump", 3, LightEdge, DarkShadow, LightEdge, DarkShadow}),
    [](const auto& row) { return row.param.name; });

TEST_P(RaisedPanelStyle, DrawsTwoLinesOnEachSideAndNothingWithin) {
    panel.SetStyle(GetParam().style);
    EXPECT_EQ(Pixel(10, 35), GetParam().outerLeftTop);
    EXPECT_EQ(Pixel(11, 35), GetParam().innerLeftTop);
    EXPECT_EQ(Pixel(30, 20), GetParam().outerLeftTop);
    EXPECT_EQ(Pixel(30, 21), GetParam().innerLeftTop);
    EXPECT_EQ(Pixel(48, 35), GetParam().innerRightBottom);
    EXPECT_EQ(Pixel(49, 35), GetParam().outerRightBottom);
    EXPECT_EQ(Pixel(30, 48), GetParam().innerRightBottom);
    EXPECT_EQ(Pixel(30, 49), GetParam().outerRightBottom);
    for (const QPoint free : {QPoint(9, 35), QPoint(50, 35), QPoint(30, 19), QPoint(30, 50),
                              QPoint(12, 22), QPoint(47, 47), QPoint(30, 35)})
        EXPECT_EQ(Pixel(free.x(), free.y()), Ground);
}

TEST_P(RaisedPanelStyle, DrawsOnlyTheSidesChosen) {
    panel.SetStyle(GetParam().style);
    struct Row {
        int edges;
        bool left, top, right, bottom;
    };
    constexpr Row Rows[] = {
        {1, true, false, false, false}, {2, false, true, false, false},
        {4, false, false, true, false}, {8, false, false, false, true},
        {5, true, false, true, false},  {10, false, true, false, true},
        {13, true, false, true, true},  {0, false, false, false, false},
    };
    for (const Row& row : Rows) {
        panel.SetEdges(row.edges);
        EXPECT_EQ(HasLeft(), row.left) << row.edges;
        EXPECT_EQ(HasTop(), row.top) << row.edges;
        EXPECT_EQ(HasRight(), row.right) << row.edges;
        EXPECT_EQ(HasBottom(), row.bottom) << row.edges;
    }
}

TEST_F(RaisedPanelPaint, ASideLeftOutGivesItsRoomToTheOthers) {
    panel.SetTopEdge(false);
    EXPECT_EQ(Pixel(30, 20), Ground);
    EXPECT_EQ(Pixel(10, 20), LightEdge);
    EXPECT_EQ(Pixel(11, 20), Highlight);
    EXPECT_EQ(Pixel(48, 20), Shadow);
    EXPECT_EQ(Pixel(49, 20), DarkShadow);
}

TEST_F(RaisedPanelPaint, LoadedAgainItIsDrawnAsItWasSaved) {
    panel.SetEdges(5);
    panel.SetStyle(2);
    forms::PropertyBag bag;
    panel.WriteProperties(bag);
    panel.SetEdges(15);
    panel.SetStyle(0);
    panel.ReadProperties(bag);
    EXPECT_EQ(Pixel(10, 35), Shadow);
    EXPECT_EQ(Pixel(11, 35), Highlight);
    EXPECT_EQ(Pixel(48, 35), Shadow);
    EXPECT_EQ(Pixel(49, 35), Highlight);
    EXPECT_EQ(Pixel(30, 20), Ground);
    EXPECT_EQ(Pixel(30, 49), Ground);
}

TEST_F(RaisedPanelPaint, AStyleWithoutAKindDrawsNothing) {
    for (const int style : {-1, 4, 2147483647, -2147483647 - 1}) {
        panel.SetStyle(style);
        EXPECT_FALSE(HasLeft() || HasTop() || HasRight() || HasBottom()) << style;
    }
}

TEST_F(RaisedPanelPaint, BitsThatNameNoSideAreNotDrawn) {
    panel.SetEdges(-15);  // all but 2, 4 and 8
    EXPECT_TRUE(HasLeft());
    EXPECT_FALSE(HasTop() || HasRight() || HasBottom());
}

TEST_F(RaisedPanelPaint, TheEdgeFollowsTheSize) {
    panel.Move(150, 300, 750, 600);
    EXPECT_EQ(Pixel(59, 40), DarkShadow);
    EXPECT_EQ(Pixel(30, 59), DarkShadow);
    EXPECT_EQ(Pixel(49, 40), Ground);
    panel.Move(150, 300, 0, 0);
    EXPECT_EQ(Pixel(10, 20), Ground);
}

TEST_F(RaisedPanelPaint, EachChangeIsPainted) {
    test::PaintCounter paints(panel);
    paints.Taken();
    panel.SetStyle(1);
    EXPECT_EQ(paints.Taken(), 1);
    panel.SetEdges(3);
    EXPECT_EQ(paints.Taken(), 1);
    panel.Setrightedge(true);
    EXPECT_EQ(paints.Taken(), 1);
    panel.SetWidth(900);
    EXPECT_GE(paints.Taken(), 1);
    panel.ReadProperties(forms::PropertyBag());
    EXPECT_EQ(paints.Taken(), 1);
}

TEST_F(RaisedPanelPaint, RefreshPaintsAtOnce) {
    test::PaintCounter paints(panel);
    paints.Taken();
    panel.Refresh();
    EXPECT_EQ(paints.TakenAtOnce(), 1);
}

TEST_F(RaisedPanelPaint, AControlOnItStandsOverTheEdge) {
    forms::Form other(u"G"_qs);
    other.setPalette(form.palette());
    RaisedPanel under(&other, u"P"_qs);
    under.Move(0, 0, 600, 450);
    forms::ButtonPlus child(&under, u"B"_qs);
    child.Move(0, 0, 600, 450);
    other.Show();
    const QImage seen = other.grab().toImage();
    EXPECT_NE(seen.pixelColor(39, 15), DarkShadow);
}

}  // namespace
}  // namespace quarv
