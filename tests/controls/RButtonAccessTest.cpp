#include "controls/RButtonAccess.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "controls/RButton.h"
#include "platform/forms/Form.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

class RButtonAccessTest : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RButton button{&form, u"RunQuery"_qs};
    QSignalSpy clicked{&button, &RButton::Click};

    void SetUp() override { form.Show(); }

    QAccessibleInterface& Seen() { return *QAccessible::queryAccessibleInterface(&button); }
};

TEST_F(RButtonAccessTest, IsAButtonByItsSpokenName) {
    EXPECT_EQ(Seen().role(), QAccessible::Button);
    EXPECT_EQ(Seen().text(QAccessible::Name), u"RunQuery"_qs);
    button.SetSpokenName(u"Run Query"_qs);
    EXPECT_EQ(Seen().text(QAccessible::Name), u"Run Query"_qs);
    EXPECT_TRUE(Seen().state().focusable);
}

TEST_F(RButtonAccessTest, PressClicks) {
    QAccessibleActionInterface* actions = Seen().actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(RButtonAccessTest, ADisabledButtonOffersNothing) {
    button.SetEnabled(false);
    EXPECT_TRUE(Seen().state().disabled);
    EXPECT_EQ(Seen().actionInterface()->actionNames(), QStringList());
    Seen().actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(RButtonAccessTest, PressedAndLatchedAreSeen) {
    EXPECT_FALSE(Seen().state().pressed);
    QTest::keyPress(&button, Qt::Key_Space);
    EXPECT_TRUE(Seen().state().pressed);
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_FALSE(Seen().state().pressed);
    button.SetDown(true);
    EXPECT_TRUE(Seen().state().pressed);
}

TEST_F(RButtonAccessTest, TheKeyboardIsPassedOn) {
    Seen().actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(form.focusWidget(), &button);
}

}  // namespace
}  // namespace quarv
