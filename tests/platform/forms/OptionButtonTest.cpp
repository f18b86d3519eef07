#include "platform/forms/OptionButton.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "base/LateBinding.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class Options : public testing::Test {
  protected:
    Form form{u"F"_qs};
    FramePlus frame{&form, u"Frame"_qs};
    OptionButton first{&frame, u"First"_qs};
    OptionButton second{&frame, u"Second"_qs};
    OptionButton elsewhere{&form, u"Elsewhere"_qs};

    void SetUp() override {
        frame.Move(0, 0, 4000, 2000);
        first.Move(0, 300, 3000, 300);
        second.Move(0, 600, 3000, 300);
        first.SetCaption(u"One"_qs);
        second.SetCaption(u"Two"_qs);
        form.Show();
        QApplication::setActiveWindow(&form);
    }
};

TEST_F(Options, ChoosingOneUnchoosesTheOthersOfItsContainer) {
    elsewhere.SetValue(true);
    first.SetValue(true);
    second.SetValue(true);
    EXPECT_FALSE(first.Value());
    EXPECT_TRUE(second.Value());
    EXPECT_TRUE(elsewhere.Value());
}

TEST_F(Options, AllMayBeUnchosenFromCode) {
    first.SetValue(true);
    first.SetValue(false);
    EXPECT_FALSE(first.Value());
    EXPECT_FALSE(second.Value());
}

TEST_F(Options, TheUserCannotUnchoose) {
    first.SetValue(true);
    QTest::mouseClick(&first, Qt::LeftButton, {}, QPoint(8, 10));
    EXPECT_TRUE(first.Value());
    QTest::keyClick(&first, Qt::Key_Space);
    EXPECT_TRUE(first.Value());
}

TEST_F(Options, ClickFollowsTheChoice) {
    bool chosenDuringClick = false;
    QSignalSpy clicked(&second, &OptionButton::Click);
    QObject::connect(&second, &OptionButton::Click, &form,
                     [&] { chosenDuringClick = second.Value() && !first.Value(); });
    first.SetValue(true);
    QTest::mouseClick(&second, Qt::LeftButton, {}, QPoint(8, 10));
    EXPECT_TRUE(chosenDuringClick);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Options, ChoosingFromCodeRaisesClickOnce) {
    QSignalSpy clicked(&first, &OptionButton::Click);
    first.SetValue(true);
    first.SetValue(true);
    first.SetValue(false);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Options, ArrowsMoveAndChoose) {
    first.SetValue(true);
    first.SetFocus();
    QTest::keyClick(&first, Qt::Key_Down);
    EXPECT_TRUE(second.Value());
    EXPECT_EQ(QApplication::focusWidget(), &second);
    QTest::keyClick(&second, Qt::Key_Down);
    EXPECT_TRUE(first.Value());
    QTest::keyClick(&first, Qt::Key_Up);
    EXPECT_TRUE(second.Value());
}

TEST_F(Options, ArrowsPassOverDisabledChoices) {
    first.SetValue(true);
    second.SetEnabled(false);
    first.SetFocus();
    QTest::keyClick(&first, Qt::Key_Down);
    EXPECT_TRUE(first.Value());
    EXPECT_FALSE(second.Value());
}

TEST_F(Options, ValueIsReachedByName) {
    SetByName(&first, u"Value"_qs, Value(true));
    EXPECT_TRUE(GetByName(&first, u"Value"_qs).ToBoolean());
}

}  // namespace
}  // namespace quarv::forms
