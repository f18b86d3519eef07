// The selection of TextBox, and texts that a selection or an edit must not harm.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

// Every control character but NUL, those of Latin-1 too.
QString ControlCharacters() {
    QString all;
    for (char16_t c = 1; c < 0xA0; ++c)
        if (c < 0x20 || c >= 0x7F) all += QChar(c);
    return all;
}

class TextBoxSelection : public testing::TestWithParam<bool> {
  protected:
    Form form{u"F"_qs};
    TextBox box{&form, u"T"_qs};

    void SetUp() override {
        box.SetMultiLine(GetParam());
        box.Move(0, 0, 3000, 1500);
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
};

INSTANTIATE_TEST_SUITE_P(LinesAndMemos, TextBoxSelection, testing::Bool());

TEST_P(TextBoxSelection, FollowsTheCaretAndTheUser) {
    box.SetText(u"abcdef"_qs);
    EXPECT_EQ(box.SelStart(), 0);
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_EQ(box.SelStart(), 2);
    EXPECT_EQ(box.SelLength(), 0);
    EXPECT_EQ(box.SelText(), u""_qs);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(box.SelStart(), 2);
    EXPECT_EQ(box.SelLength(), 2);
    EXPECT_EQ(box.SelText(), u"cd"_qs);
}

TEST_P(TextBoxSelection, IsWhatTheUserTypesOver) {
    box.SetText(u"abcdef"_qs);
    box.SetSelStart(1);
    box.SetSelLength(4);
    EXPECT_EQ(box.SelText(), u"bcde"_qs);
    QTest::keyClicks(QApplication::focusWidget(), u"x"_qs);
    EXPECT_EQ(box.Text(), u"axf"_qs);
    EXPECT_EQ(box.SelStart(), 2);
}

TEST_P(TextBoxSelection, AStartPlacesTheCaretAndSelectsNothing) {
    box.SetText(u"abcdef"_qs);
    box.SelectAll();
    box.SetSelStart(3);
    EXPECT_EQ(box.SelStart(), 3);
    EXPECT_EQ(box.SelLength(), 0);
}

TEST_P(TextBoxSelection, ALengthOfZeroKeepsTheStart) {
    box.SetText(u"abcdef"_qs);
    box.SetSelStart(2);
    box.SetSelLength(3);
    box.SetSelLength(0);
    EXPECT_EQ(box.SelStart(), 2);
    EXPECT_EQ(box.SelLength(), 0);
}

TEST_P(TextBoxSelection, BeyondTheTextIsItsEnd) {
    box.SetText(u"abc"_qs);
    box.SetSelStart(3);
    EXPECT_EQ(box.SelStart(), 3);
    box.SetSelStart(4);
    EXPECT_EQ(box.SelStart(), 3);
    box.SetSelLength(1);
    EXPECT_EQ(box.SelLength(), 0);
    box.SetSelStart(1);
    box.SetSelLength(2'147'483'647);
    EXPECT_EQ(box.SelText(), u"bc"_qs);
}

TEST_P(TextBoxSelection, BelowZeroIsRefused) {
    box.SetText(u"abc"_qs);
    box.SetSelStart(1);
    EXPECT_EQ(Raised([&] { box.SetSelStart(-1); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(Raised([&] { box.SetSelLength(-1); }), RuntimeError::InvalidPropertyValue);
    EXPECT_EQ(box.SelStart(), 1);
}

TEST_P(TextBoxSelection, CountsUtf16UnitsOfTheText) {
    box.SetText(u"\U0001F600a\r\nb\nc\rd"_qs);
    box.SetSelStart(3);
    EXPECT_EQ(box.SelStart(), 3);
    box.SetSelLength(3);
    EXPECT_EQ(box.SelLength(), 3);
    EXPECT_EQ(box.SelText(), u"\r\nb"_qs);
    box.SetSelStart(6);
    box.SetSelLength(3);
    EXPECT_EQ(box.SelText(), u"\nc\r"_qs);
    box.SelectAll();
    EXPECT_EQ(box.SelLength(), 10);
}

TEST_P(TextBoxSelection, IsReachedByName) {
    box.SetText(u"abc"_qs);
    SetByName(&box, u"SelStart"_qs, Value(1));
    SetByName(&box, u"SelLength"_qs, Value(2));
    EXPECT_EQ(GetByName(&box, u"SelText"_qs).ToText(), u"bc"_qs);
}

class MemoSelection : public TextBoxSelection {};

INSTANTIATE_TEST_SUITE_P(Memos, MemoSelection, testing::Values(true));

TEST_P(MemoSelection, CountsLineEndsOfAnEditedTextToo) {
    box.SetText(u"a\nb"_qs);
    Press(Qt::Key_End, Qt::ControlModifier);
    Press(Qt::Key_Return);
    EXPECT_EQ(box.Text(), u"a\r\nb\r\n"_qs);
    EXPECT_EQ(box.SelStart(), 6);
    // Between the two units of a line end there is no place.
    box.SetSelStart(2);
    EXPECT_EQ(box.SelStart(), 1);
    box.SetSelStart(3);
    box.SetSelLength(1);
    EXPECT_EQ(box.SelText(), u"b"_qs);
}

class Kept : public testing::TestWithParam<QString> {};

INSTANTIATE_TEST_SUITE_P(Texts, Kept,
                         testing::Values(u"one\r\ntwo\nthree\rfour\u2028five\u2029six"_qs,
                                         u"\t\ta\tb\t"_qs, ControlCharacters(),
                                         u"\u00a0\U0001F600\U00020000e\u0301\u202e\u200b\ufeff"_qs,
                                         QString(QChar(0xD83D)) + u"lone"_qs + QChar(0xDE00),
                                         QString(50'000, u'x') + u"\r\n"_qs +
                                             QString(49'998, u'y')));

TEST_P(Kept, ALineBoxKeepsWhatAnEditElsewhereDoesNotTouch) {
    Form form(u"F"_qs);
    TextBox box(&form, u"T"_qs);
    box.Move(0, 0, 3000, 300);
    form.Show();
    QApplication::setActiveWindow(&form);
    box.SetFocus();
    const QString text = GetParam();
    box.SetText(text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClicks(QApplication::focusWidget(), u"Z"_qs);
    EXPECT_TRUE(box.Text() == text + u"Z"_qs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    QTest::keyClicks(QApplication::focusWidget(), u"A"_qs);
    EXPECT_TRUE(box.Text() == u"A"_qs + text + u"Z"_qs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
    EXPECT_TRUE(box.Text() == u"A"_qs + text);
}

}  // namespace
}  // namespace quarv::forms
