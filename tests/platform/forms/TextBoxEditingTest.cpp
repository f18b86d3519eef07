// Editing in a TextBox of many lines: what keys, the clipboard and a drag do to its text.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>
#include <QUrl>

#include "base/LateBinding.h"
#include "platform/forms/Form.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

class TextBoxEditing : public testing::Test {
  protected:
    Form form{u"F"_qs};
    TextBox before{&form, u"Before"_qs};
    TextBox box{&form, u"T"_qs};
    TextBox after{&form, u"After"_qs};

    void SetUp() override {
        box.SetMultiLine(true);
        for (TextBox* each : {&before, &box, &after}) each->Move(0, 0, 3000, 1500);
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void Paste() { Press(Qt::Key_V, Qt::ControlModifier); }
    static bool IsIn(const TextBox& wanted) {
        return QApplication::focusWidget() == wanted.focusProxy();
    }
    // Drags and drops at the start of the text; true where the box takes it.
    bool Drop(const QMimeData& data) {
        QWidget* viewport = box.findChild<QPlainTextEdit*>()->viewport();
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &enter);
        QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &drop);
        return enter.isAccepted();
    }
};

class AcceptedTab : public TextBoxEditing {
  protected:
    void SetUp() override {
        TextBoxEditing::SetUp();
        box.SetAcceptsTab(true);
    }
};

TEST_F(TextBoxEditing, TabMovesOnAtFirst) {
    EXPECT_FALSE(box.AcceptsTab());
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsIn(after));
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_F(AcceptedTab, IsText) {
    Type(u"ab"_qs);
    Press(Qt::Key_Left);
    Press(Qt::Key_Tab);
    EXPECT_EQ(box.Text(), u"a\tb"_qs);
    EXPECT_TRUE(IsIn(box));
}

TEST_F(AcceptedTab, WithShiftMovesBack) {
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(IsIn(before));
    box.SetFocus();
    Press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(IsIn(before));
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_F(AcceptedTab, WithCtrlMovesOnAndWithBothBack) {
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(IsIn(after));
    box.SetFocus();
    Press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(IsIn(before));
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_F(AcceptedTab, MovesOnFromALockedBox) {
    box.SetLocked(true);
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsIn(after));
}

TEST_F(AcceptedTab, MovesOnFromABoxOfOneLine) {
    box.SetMultiLine(false);
    box.SetFocus();
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsIn(after));
    box.SetMultiLine(true);
    box.SetFocus();
    Press(Qt::Key_Tab);
    EXPECT_EQ(box.Text(), u"\t"_qs);
}

TEST_F(AcceptedTab, IsSeenByTheHandlersAsOtherKeysAre) {
    std::vector<int> pressed;
    QObject::connect(&box, &TextBox::KeyPress, &form, [&](int& key) {
        pressed.push_back(key);
        key = u'-';
    });
    Press(Qt::Key_Tab);
    EXPECT_EQ(pressed, std::vector<int>{9});
    EXPECT_EQ(box.Text(), u"-"_qs);
    QObject::connect(&box, &TextBox::KeyDown, &form, [](int& key, int) { key = 0; });
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), u"-"_qs);
    EXPECT_TRUE(IsIn(box));
}

TEST_F(AcceptedTab, CountsForMaxLength) {
    box.SetMaxLength(1);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab);
    EXPECT_EQ(box.Text(), u"\t"_qs);
}

TEST_F(TextBoxEditing, AcceptsTabIsReachedByName) {
    SetByName(&box, u"AcceptsTab"_qs, Value(true));
    EXPECT_TRUE(box.AcceptsTab());
    EXPECT_EQ(GetByName(&box, u"AcceptsTab"_qs).ToText(), u"True"_qs);
}

// Every UTF-16 unit in turn, so every lone surrogate but the one pair in the middle too, and pairs
// from the first to the last.
QString EveryCodePoint() {
    QString all;
    for (int unit = 0; unit <= 0xFFFF; ++unit) all += QChar(unit);
    for (char32_t code = 0x10000; code <= 0x10FFFF; code += 0x3F)
        all += QString::fromUcs4(&code, 1);
    return all + QChar(0xDC00) + QChar(0xD800);
}

TEST(TextBoxTexts, EveryCodePointComesBack) {
    Form form(u"F"_qs);
    TextBox box(&form, u"T"_qs);
    box.SetMultiLine(true);
    const QString all = EveryCodePoint();
    box.SetText(all);
    EXPECT_TRUE(box.Text() == all);
}

TEST_F(TextBoxEditing, UndoneEditsOfEveryKindLeaveWhatWasSet) {
    const QString text =
        u"a\u00a0\rb\u2028c\u2029d\n\U0001F600"_qs + QChar(0xD800) + QChar(0) + u"z"_qs;
    box.SetText(text);
    Type(u"x"_qs);
    Press(Qt::Key_Return);
    QApplication::clipboard()->setText(u"1\n2"_qs);
    Paste();
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_Delete);
    EXPECT_EQ(box.Text(), u""_qs);
    for (int i = 0; i < 6; ++i) Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), text);
}

TEST_F(TextBoxEditing, AnEditElsewhereHarmsNothing) {
    const QString text =
        u"\u00a0\u00a0\U0001F600\U00020000\u202f\ufeff"_qs + QChar(0) + QChar(0xDE00);
    box.SetText(text + u"\n"_qs);
    Press(Qt::Key_End, Qt::ControlModifier);
    Type(u"x"_qs);
    EXPECT_EQ(box.Text(), text + u"\r\nx"_qs);
}

TEST_F(TextBoxEditing, RedoHasBothItsKeys) {
    Type(u"x"_qs);
    for (const auto& [key, held] :
         {std::pair(Qt::Key_Y, Qt::KeyboardModifiers(Qt::ControlModifier)),
          std::pair(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier)}) {
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(box.Text(), u""_qs);
        Press(key, held);
        EXPECT_EQ(box.Text(), u"x"_qs);
    }
    Press(Qt::Key_Z, Qt::ControlModifier);
    box.SetLocked(true);
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_F(TextBoxEditing, TypedPairsCountTwoForMaxLength) {
    box.SetMaxLength(3);
    for (int i = 0; i < 2; ++i)
        QTest::simulateEvent(QApplication::focusWidget(), true, 0, Qt::NoModifier, u"\U0001F600"_qs,
                             false);
    EXPECT_EQ(box.Text(), u"\U0001F600"_qs);
}

TEST_F(TextBoxEditing, PasteIsPlainText) {
    auto data = std::make_unique<QMimeData>();
    data->setHtml(u"<b>bold</b>"_qs);
    data->setText(u"<i>\u00a0x"_qs);
    QApplication::clipboard()->setMimeData(data.release());
    Paste();
    EXPECT_EQ(box.Text(), u"<i>\u00a0x"_qs);
}

TEST_F(TextBoxEditing, PasteReplacesTheSelectionAndGoesOnBehindIt) {
    box.SetText(u"abcd"_qs);
    box.SetSelStart(1);
    box.SetSelLength(2);
    QApplication::clipboard()->setText(u"1\r\n2"_qs);
    Paste();
    Type(u"x"_qs);
    EXPECT_EQ(box.Text(), u"a1\r\n2xd"_qs);
    Press(Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), u"abcd"_qs);
}

TEST_F(TextBoxEditing, PicturesAndFilesArePastedAsNothing) {
    QApplication::clipboard()->setImage(QImage(4, 4, QImage::Format_RGB32));
    Paste();
    auto file = std::make_unique<QMimeData>();
    file->setUrls({QUrl::fromLocalFile(u"/tmp/a.sql"_qs)});
    file->setText(u"/tmp/a.sql"_qs);
    QApplication::clipboard()->setMimeData(file.release());
    Paste();
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_F(TextBoxEditing, ADroppedFileIsNotTaken) {
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(u"/tmp/a.sql"_qs)});
    file.setText(u"/tmp/a.sql"_qs);
    EXPECT_FALSE(Drop(file));
    EXPECT_EQ(box.Text(), u""_qs);
    QMimeData text;
    text.setText(u"dropped"_qs);
    EXPECT_TRUE(Drop(text));
    EXPECT_EQ(box.Text(), u"dropped"_qs);
}

TEST_F(TextBoxEditing, ALockedBoxTakesNoPaste) {
    box.SetLocked(true);
    QApplication::clipboard()->setText(u"x"_qs);
    Paste();
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_F(TextBoxEditing, CopyAndCutGivePlainTextAndNothingElse) {
    const QString text = u"a\u00a0b\n\U0001F600"_qs;
    box.SetText(text);
    box.SelectAll();
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), text);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList{u"text/plain"_qs});
    QApplication::clipboard()->clear();
    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), text);
    EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList{u"text/plain"_qs});
    EXPECT_EQ(box.Text(), u""_qs);
}

}  // namespace
}  // namespace quarv::forms
