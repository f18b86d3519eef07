#include "platform/forms/OptionButtonAccess.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "platform/forms/Form.h"
#include "platform/forms/OptionButton.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class OptionButtonAccessTest : public testing::Test {
  protected:
    Form form{u"F"_qs};
    OptionButton first{&form, u"First"_qs};
    OptionButton second{&form, u"Second"_qs};

    void SetUp() override {
        first.SetCaption(u"One"_qs);
        second.SetCaption(u"Two"_qs);
        form.Show();
    }

    static QAccessibleInterface& SeenOf(OptionButton& choice) {
        return *QAccessible::queryAccessibleInterface(&choice);
    }
};

TEST_F(OptionButtonAccessTest, AChoiceIsARadioButtonByItsCaption) {
    EXPECT_EQ(SeenOf(first).role(), QAccessible::RadioButton);
    EXPECT_EQ(SeenOf(first).text(QAccessible::Name), u"One"_qs);
}

TEST_F(OptionButtonAccessTest, StateFollowsTheChoice) {
    EXPECT_TRUE(SeenOf(first).state().checkable);
    EXPECT_FALSE(SeenOf(first).state().checked);
    first.SetValue(true);
    EXPECT_TRUE(SeenOf(first).state().checked);
    second.SetValue(true);
    EXPECT_FALSE(SeenOf(first).state().checked);
}

TEST_F(OptionButtonAccessTest, ToggleChoosesAndNeverUnchooses) {
    QSignalSpy clicked(&second, &OptionButton::Click);
    first.SetValue(true);
    QAccessibleActionInterface* actions = SeenOf(second).actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(second.Value());
    EXPECT_FALSE(first.Value());
    EXPECT_EQ(clicked.count(), 1);
    actions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(second.Value());
}

TEST_F(OptionButtonAccessTest, ADisabledChoiceOffersNothing) {
    first.SetEnabled(false);
    EXPECT_TRUE(SeenOf(first).state().disabled);
    EXPECT_EQ(SeenOf(first).actionInterface()->actionNames(), QStringList());
}

TEST_F(OptionButtonAccessTest, TheKeyboardIsPassedOn) {
    SeenOf(first).actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(form.focusWidget(), &first);
}

}  // namespace
}  // namespace quarv::forms
