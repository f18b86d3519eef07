#include <gtest/gtest.h>

#include "controls/RaisedPanel.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "support/Raised.h"

namespace quarv {
namespace {

class RaisedPanelCentring : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RaisedPanel panel{&form, u"Panel"_qs};
    forms::ButtonPlus child{&panel, u"B"_qs};

    // The panel stands anywhere; places on it count from its own corner.
    void SetSizes(double panelWidth, double panelHeight, double width, double height) {
        panel.Move(700, 900, panelWidth, panelHeight);
        child.Move(15, 45, width, height);
    }
};

TEST_F(RaisedPanelCentring, VerticallyOnlyTheTopIsSet) {
    SetSizes(3000, 1500, 600, 300);
    panel.CentreContainedVertically();
    EXPECT_EQ(child.Top(), 600);
    EXPECT_EQ(child.Left(), 15);
    EXPECT_EQ(child.Width(), 600);
    EXPECT_EQ(child.Height(), 300);
}

TEST_F(RaisedPanelCentring, HorizontallyOnlyTheLeftIsSet) {
    SetSizes(3000, 1500, 600, 300);
    panel.CentreContainedHorizontally();
    EXPECT_EQ(child.Left(), 1200);
    EXPECT_EQ(child.Top(), 45);
    EXPECT_EQ(child.Width(), 600);
    EXPECT_EQ(child.Height(), 300);
}

TEST_F(RaisedPanelCentring, HalvesAreNotRounded) {
    SetSizes(3000, 1500, 601, 301);
    panel.CentreContainedVertically();
    panel.CentreContainedHorizontally();
    EXPECT_EQ(child.Top(), 599.5);
    EXPECT_EQ(child.Left(), 1199.5);
}

// A panel of 100.5 x 100.5 pixels counts as 100 wide and as 100.5 high.
TEST_F(RaisedPanelCentring, TheWidthIsRoundedToPixelsFirstAndTheHeightIsNot) {
    SetSizes(1507.5, 1507.5, 300, 300);
    panel.CentreContainedVertically();
    panel.CentreContainedHorizontally();
    EXPECT_EQ(child.Top(), 603.75);
    EXPECT_EQ(child.Left(), 600);
}

TEST_F(RaisedPanelCentring, ALargerControlGetsANegativePlace) {
    SetSizes(900, 300, 1500, 1500);
    panel.CentreContainedVertically();
    panel.CentreContainedHorizontally();
    EXPECT_EQ(child.Top(), -600);
    EXPECT_EQ(child.Left(), -300);
}

TEST_F(RaisedPanelCentring, EachControlIsCentredByItselfAndNestedOnesStay) {
    SetSizes(3000, 1500, 600, 300);
    forms::FramePlus frame(&panel, u"Frame"_qs);
    frame.Move(0, 0, 1200, 900);
    forms::ButtonPlus nested(&frame, u"Nested"_qs);
    nested.Move(30, 60, 150, 150);
    forms::ButtonPlus hidden(&panel, u"Hidden"_qs);
    hidden.Move(0, 0, 300, 150);
    hidden.SetVisible(false);
    panel.CentreContainedVertically();
    panel.CentreContainedHorizontally();
    EXPECT_EQ(child.Top(), 600);
    EXPECT_EQ(frame.Top(), 300);
    EXPECT_EQ(frame.Left(), 900);
    EXPECT_EQ(nested.Top(), 60);
    EXPECT_EQ(nested.Left(), 30);
    EXPECT_EQ(hidden.Top(), 675);
    EXPECT_EQ(hidden.Left(), 1350);
}

}  // namespace
}  // namespace quarv
