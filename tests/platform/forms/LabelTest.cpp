#include "platform/forms/Label.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "base/RuntimeError.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Form.h"
#include "platform/forms/TextBox.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(Label, ShowsItsCaptionLiterally) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    label.SetCaption(u"<b>a</b> & b && c"_qs);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_EQ(label.text(), u"<b>a</b> & b && c"_qs);
    EXPECT_EQ(label.Caption(), u"<b>a</b> & b && c"_qs);
}

TEST(Label, NamesItsBuddyWithoutTheColon) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    ComboBox box(&form, u"Servername"_qs);
    label.SetCaption(u"Server:"_qs);
    label.SetBuddy(box);
    EXPECT_EQ(box.accessibleName(), u"Server"_qs);
    label.SetCaption(u"Host & port:"_qs);
    EXPECT_EQ(box.accessibleName(), u"Host & port"_qs);
    EXPECT_EQ(label.text(), u"Host && port:"_qs);
}

TEST(Label, ItsLetterLeadsToTheBuddy) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    TextBox box(&form, u"Username"_qs);
    ComboBox other(&form, u"Other"_qs);
    label.SetCaption(u"Username"_qs);
    label.SetBuddy(box);
    form.Show();
    QApplication::setActiveWindow(&form);
    other.SetFocus();
    QTest::keyClick(&form, Qt::Key_U, Qt::AltModifier);
    EXPECT_TRUE(box.isAncestorOf(QApplication::focusWidget()));
    EXPECT_EQ(label.Caption(), u"Username"_qs);
}

TEST(Label, AlignsAsAsked) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    label.SetAlignment(1);
    EXPECT_EQ(label.alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
    label.SetAlignment(2);
    EXPECT_EQ(label.alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
    EXPECT_THROW(label.SetAlignment(3), RuntimeError);
}

}  // namespace
}  // namespace quarv::forms
