#include "platform/forms/ButtonPlus.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "platform/forms/Form.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(ButtonPlus, ClicksByMouseSpaceAndEnter) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    button.Move(0, 0, 1500, 375);
    QSignalSpy clicked(&button, &ButtonPlus::Click);
    form.Show();
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseClick(&button, Qt::RightButton);
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 3);
}

TEST(ButtonPlus, ADisabledButtonDoesNotClick) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    QSignalSpy clicked(&button, &ButtonPlus::Click);
    form.Show();
    button.SetEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 0);
}

TEST(ButtonPlus, AltAndItsLetterPressItWithoutChangingItsCaption) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    button.SetCaption(u"Okay"_qs);
    QSignalSpy clicked(&button, &ButtonPlus::Click);
    form.Show();
    QApplication::setActiveWindow(&form);
    QTest::keyClick(&form, Qt::Key_O, Qt::AltModifier);
    // Qt shows the button go down before it comes up.
    EXPECT_TRUE(clicked.count() == 1 || clicked.wait());
    EXPECT_EQ(button.Caption(), u"Okay"_qs);
    EXPECT_EQ(button.accessibleName(), u"Okay"_qs);
}

}  // namespace
}  // namespace quarv::forms
