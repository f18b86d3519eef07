// KeyDown of TextBox: which keys it sees, and what swallowing one does.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

using Keys = std::vector<std::pair<int, int>>;

// QTest presses them by themselves, too.
bool IsModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt;
}

class TextBoxKeyDown : public testing::TestWithParam<bool> {
  protected:
    Form form{u"F"_qs};
    TextBox before{&form, u"Before"_qs};
    TextBox box{&form, u"T"_qs};
    TextBox after{&form, u"After"_qs};
    Keys seen;
    int swallowed = 0;

    void SetUp() override {
        box.SetMultiLine(GetParam());
        for (TextBox* each : {&before, &box, &after}) each->Move(0, 0, 3000, 500);
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
        QObject::connect(&box, &TextBox::KeyDown, &form, [this](int& key, int shift) {
            if (!IsModifier(key)) seen.emplace_back(key, shift);
            if (key == swallowed) key = 0;
        });
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static bool IsIn(const TextBox& wanted) {
        return QApplication::focusWidget() == wanted.focusProxy();
    }
};

INSTANTIATE_TEST_SUITE_P(LinesAndMemos, TextBoxKeyDown, testing::Bool());

TEST_P(TextBoxKeyDown, SeesEveryKeyOnceWithItsModifiers) {
    Press(Qt::Key_A);
    Press(Qt::Key_Up, Qt::ShiftModifier);
    Press(Qt::Key_Down, Qt::ControlModifier);
    Press(Qt::Key_PageUp, Qt::AltModifier);
    Press(Qt::Key_PageDown, Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    Press(Qt::Key_F4);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Return);
    Press(Qt::Key_Delete);
    EXPECT_EQ(seen, (Keys{{Qt::Key_A, 0},
                          {Qt::Key_Up, 1},
                          {Qt::Key_Down, 2},
                          {Qt::Key_PageUp, 4},
                          {Qt::Key_PageDown, 7},
                          {Qt::Key_F4, 0},
                          {Qt::Key_Escape, 0},
                          {Qt::Key_Return, 0},
                          {Qt::Key_Delete, 0}}));
}

TEST_P(TextBoxKeyDown, ComesBeforeTheBoxHandlesTheKey) {
    QString text;
    QObject::connect(&box, &TextBox::KeyDown, &form, [&] { text += box.Text() + u'|'; });
    QObject::connect(&box, &TextBox::KeyPress, &form, [&] { text += u"pressed|"_qs; });
    QTest::keyClicks(QApplication::focusWidget(), u"ab"_qs);
    EXPECT_EQ(text, u"|pressed|a|pressed|"_qs);
}

TEST_P(TextBoxKeyDown, ASwallowedKeyIsNoKeyPressAndTypesNothing) {
    swallowed = Qt::Key_B;
    QString pressed;
    QObject::connect(&box, &TextBox::KeyPress, &form, [&](int& key) { pressed += QChar(key); });
    QTest::keyClicks(QApplication::focusWidget(), u"abc"_qs);
    EXPECT_EQ(box.Text(), u"ac"_qs);
    EXPECT_EQ(pressed, u"ac"_qs);
}

TEST_P(TextBoxKeyDown, TabAndBacktabStillMoveTheFocus) {
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsIn(after));
    box.SetFocus();
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(IsIn(before));
    EXPECT_EQ(seen, (Keys{{Qt::Key_Tab, 0}, {Qt::Key_Backtab, 1}}));
}

TEST_P(TextBoxKeyDown, ASwallowedTabLeavesTheFocus) {
    swallowed = Qt::Key_Tab;
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsIn(box));
    swallowed = Qt::Key_Backtab;
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(IsIn(box));
    EXPECT_EQ(box.Text(), u""_qs);
}

TEST_P(TextBoxKeyDown, IsRaisedAfterTheKindChangedToo) {
    box.SetMultiLine(!GetParam());
    box.SetFocus();
    Press(Qt::Key_Tab);
    EXPECT_EQ(seen, (Keys{{Qt::Key_Tab, 0}}));
    EXPECT_TRUE(IsIn(after));
}

TEST_P(TextBoxKeyDown, IsRaisedInALockedBox) {
    box.SetLocked(true);
    Press(Qt::Key_Down);
    EXPECT_EQ(seen, (Keys{{Qt::Key_Down, 0}}));
}

TEST_P(TextBoxKeyDown, AFailingHandlerLosesNoKey) {
    QObject::connect(&box, &TextBox::KeyDown, &form,
                     [] { throw RuntimeError(RuntimeError::Overflow); });
    testing::internal::CaptureStderr();
    QTest::keyClicks(QApplication::focusWidget(), u"a"_qs);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "6: Overflow\n");
    EXPECT_EQ(box.Text(), u"a"_qs);
}

}  // namespace
}  // namespace quarv::forms
