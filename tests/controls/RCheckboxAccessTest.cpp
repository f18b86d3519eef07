#include "controls/RCheckboxAccess.h"

#include <gtest/gtest.h>

#include "controls/RCheckbox.h"
#include "platform/forms/Form.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

class RCheckboxAccessTest : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RCheckbox box{&form, u"Check"_qs};

    void SetUp() override { form.Show(); }

    QAccessibleInterface& Seen() { return *QAccessible::queryAccessibleInterface(&box); }
};

TEST_F(RCheckboxAccessTest, IsACheckBoxByItsCaptionElseItsName) {
    EXPECT_EQ(Seen().role(), QAccessible::CheckBox);
    EXPECT_EQ(Seen().text(QAccessible::Name), u"Check"_qs);
    box.SetCaption(u"Wrap"_qs);
    EXPECT_EQ(Seen().text(QAccessible::Name), u"Wrap"_qs);
    EXPECT_TRUE(Seen().state().focusable);
}

TEST_F(RCheckboxAccessTest, StateFollowsTheMark) {
    EXPECT_TRUE(Seen().state().checkable);
    EXPECT_FALSE(Seen().state().checked);
    box.SetChecked(true);
    EXPECT_TRUE(Seen().state().checked);
}

TEST_F(RCheckboxAccessTest, ToggleAndPressDoWhatAClickDoes) {
    QAccessibleActionInterface* actions = Seen().actionInterface();
    for (const QString& action :
         {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
        box.SetChecked(false);
        ASSERT_TRUE(actions->actionNames().contains(action));
        actions->doAction(action);
        EXPECT_TRUE(box.Checked());
    }
}

TEST_F(RCheckboxAccessTest, ADisabledOneOffersNothing) {
    box.SetEnabled(false);
    EXPECT_TRUE(Seen().state().disabled);
    EXPECT_EQ(Seen().actionInterface()->actionNames(), QStringList());
    Seen().actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxAccessTest, TheKeyboardIsPassedOn) {
    Seen().actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(form.focusWidget(), &box);
}

}  // namespace
}  // namespace quarv
