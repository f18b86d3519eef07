#include "platform/forms/TextBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

const QString Nasty =
    u"a\nb\rc\r\nd\u00a0e\U0001F600f\u2028g\u2029h\t"_qs + QChar(0) + u"<b>i</b>"_qs;

class TextBoxes : public testing::TestWithParam<bool> {
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
    void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
};

INSTANTIATE_TEST_SUITE_P(LinesAndMemos, TextBoxes, testing::Bool());

TEST_P(TextBoxes, GivesBackWhatWasPutInUnchanged) {
    box.SetText(Nasty);
    EXPECT_EQ(box.Text(), Nasty);
}

TEST_P(TextBoxes, GivesBackLongTextWhole) {
    const QString text = QString(40'000, u'x') + u"end"_qs;
    box.SetText(text);
    EXPECT_EQ(box.Text(), text);
}

TEST_P(TextBoxes, LosesNothingWhenTheKindChanges) {
    box.SetText(Nasty);
    box.SetMultiLine(!GetParam());
    EXPECT_EQ(box.Text(), Nasty);
}

TEST_P(TextBoxes, UndoneEditsLeaveWhatWasPutIn) {
    box.SetText(Nasty);
    Type(u"x"_qs);
    EXPECT_NE(box.Text(), Nasty);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), Nasty);
}

TEST_P(TextBoxes, EditsKeepNoBreakBlanksAndPairs) {
    box.SetText(u"\u00a0\U0001F600"_qs);
    Press(Qt::Key_End);
    Type(u"z"_qs);
    EXPECT_EQ(box.Text(), u"\u00a0\U0001F600z"_qs);
}

TEST_P(TextBoxes, AnnouncesEveryChangeOnce) {
    QSignalSpy changed(&box, &TextBox::Change);
    box.SetText(u"one"_qs);
    box.SetText(u"one"_qs);
    EXPECT_EQ(changed.count(), 1);
    Type(u"x"_qs);
    EXPECT_EQ(changed.count(), 2);
}

TEST_P(TextBoxes, ALockedBoxIsNotEdited) {
    box.SetText(u"keep"_qs);
    box.SetLocked(true);
    Type(u"x"_qs);
    EXPECT_EQ(box.Text(), u"keep"_qs);
    EXPECT_TRUE(box.Enabled());
}

TEST_P(TextBoxes, KeyPressSeesAndChangesCharacters) {
    std::vector<int> seen;
    QObject::connect(&box, &TextBox::KeyPress, &form, [&seen](int& key) {
        seen.push_back(key);
        if (key == 'a') key = 'A';
        if (key == 'b') key = 0;
    });
    Type(u"abc"_qs);
    EXPECT_EQ(seen, (std::vector<int>{'a', 'b', 'c'}));
    EXPECT_EQ(box.Text(), u"Ac"_qs);
}

TEST_P(TextBoxes, MaxLengthCutsTypingAndSetting) {
    box.SetMaxLength(3);
    box.SetText(u"abcdef"_qs);
    EXPECT_EQ(box.Text(), u"abc"_qs);
    Press(Qt::Key_End);
    Type(u"d"_qs);
    EXPECT_EQ(box.Text(), u"abc"_qs);
    box.SelectAll();
    Type(u"z"_qs);
    EXPECT_EQ(box.Text(), u"z"_qs);
}

TEST_P(TextBoxes, MaxLengthZeroMeansNoLimit) {
    box.SetText(u"kept"_qs);
    box.SetMaxLength(0);
    EXPECT_EQ(box.Text(), u"kept"_qs);
    Press(Qt::Key_End);
    Type(u"!"_qs);
    EXPECT_EQ(box.Text(), u"kept!"_qs);
}

TEST_P(TextBoxes, PasteIsCutToMaxLength) {
    box.SetMaxLength(4);
    QApplication::clipboard()->setText(u"abcdef"_qs);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), u"abcd"_qs);
}

TEST_P(TextBoxes, TheEditorInsideSpeaksTheName) {
    Label label(&form, u"L"_qs);
    label.SetCaption(u"User name:"_qs);
    label.SetBuddy(box);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"User name"_qs);
    box.SetMultiLine(!GetParam());
    box.SetFocus();
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), u"User name"_qs);
}

TEST_P(TextBoxes, IsReachedByName) {
    SetByName(&box, u"Text"_qs, Value(u"by name"_qs));
    EXPECT_EQ(GetByName(&box, u"Text"_qs).ToText(), u"by name"_qs);
}

class Line : public testing::Test {
  protected:
    Form form{u"F"_qs};
    TextBox box{&form, u"T"_qs};
    void SetUp() override {
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
    }
};

TEST_F(Line, PastedLongTextWithLineBreaksIsNeitherCutNorChanged) {
    const QString text = QString(20'000, u'y') + u"\nnext\n"_qs + QString(20'000, u'z');
    QApplication::clipboard()->setText(text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), text);
}

TEST_F(Line, PasswordsAreHidden) {
    box.SetPasswordChar(u"*"_qs);
    box.SetText(u"secret"_qs);
    auto* editor = box.findChild<QLineEdit*>();
    EXPECT_EQ(editor->echoMode(), QLineEdit::Password);
    EXPECT_FALSE(editor->displayText().contains(u"secret"_qs));
    EXPECT_EQ(box.Text(), u"secret"_qs);
    box.SetPasswordChar({});
    EXPECT_EQ(editor->displayText(), u"secret"_qs);
}

TEST_F(Line, RefusesANegativeMaxLength) {
    EXPECT_THROW(box.SetMaxLength(-1), RuntimeError);
}

class Memo : public Line {
  protected:
    void SetUp() override {
        box.SetMultiLine(true);
        Line::SetUp();
    }
};

TEST_F(Memo, TypedTextHasCrLfLineEnds) {
    QWidget* editor = QApplication::focusWidget();
    QTest::keyClicks(editor, u"a"_qs);
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClicks(editor, u"b"_qs);
    QTest::keyClick(editor, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(editor, u"c"_qs);
    EXPECT_EQ(box.Text(), u"a\r\nb\r\nc"_qs);
}

TEST_F(Memo, PastedTextHasCrLfLineEnds) {
    QApplication::clipboard()->setText(u"x\ny\r\nz"_qs);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), u"x\r\ny\r\nz"_qs);
}

TEST_F(Memo, MaxLengthCountsALineEndAsTwo) {
    box.SetMaxLength(4);
    box.SetText(u"a\r\nb"_qs);
    QWidget* editor = QApplication::focusWidget();
    QTest::keyClick(editor, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(editor, u"c"_qs);
    EXPECT_EQ(box.Text(), u"a\r\nb"_qs);
    QTest::keyClick(editor, Qt::Key_Backspace);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(box.Text(), u"a\r\n"_qs);
}

TEST_F(Memo, ScrollBarsDecideAboutWrapping) {
    auto* editor = box.findChild<QPlainTextEdit*>();
    box.SetScrollBars(TextBox::Both);
    EXPECT_EQ(editor->lineWrapMode(), QPlainTextEdit::NoWrap);
    box.SetScrollBars(TextBox::Vertical);
    EXPECT_EQ(editor->lineWrapMode(), QPlainTextEdit::WidgetWidth);
    EXPECT_EQ(editor->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    EXPECT_THROW(box.SetScrollBars(4), RuntimeError);
}

TEST_P(TextBoxes, DoesWithoutItsBorder) {
    const auto framed = [this] {
        if (auto* memo = box.findChild<QPlainTextEdit*>()) return memo->frameShape() != 0;
        return box.findChild<QLineEdit*>()->hasFrame();
    };
    EXPECT_EQ(box.BorderStyle(), 1);
    EXPECT_TRUE(framed());
    SetByName(&box, u"BorderStyle"_qs, 0);
    EXPECT_FALSE(framed());
    box.SetMultiLine(!GetParam());
    EXPECT_FALSE(framed());
    EXPECT_THROW(box.SetBorderStyle(2), RuntimeError);
}

}  // namespace
}  // namespace quarv::forms
