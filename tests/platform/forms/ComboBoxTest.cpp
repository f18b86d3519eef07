#include "platform/forms/ComboBox.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class Combo : public testing::Test {
  protected:
    Form form{u"F"_qs};
    ComboBox box{&form, u"C"_qs};

    void SetUp() override {
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
    }
};

TEST_F(Combo, FillingTheListLeavesTheText) {
    box.AddItem(u"one"_qs);
    EXPECT_EQ(box.Text(), u""_qs);
    EXPECT_EQ(box.ListIndex(), -1);
    box.SetText(u"mine"_qs);
    box.Clear();
    box.SetText(u"mine"_qs);
    box.AddItem(u"one"_qs);
    box.AddItem(u"two"_qs);
    EXPECT_EQ(box.Text(), u"mine"_qs);
    EXPECT_EQ(box.ListCount(), 2);
    EXPECT_EQ(box.List(1), u"two"_qs);
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST_F(Combo, TheListsRowsHaveAir) {
    box.AddItem(u"one"_qs);
    EXPECT_GE(box.view()->sizeHintForRow(0), box.fontMetrics().height() + 6);
}

TEST_F(Combo, ClearEmptiesListAndText) {
    box.AddItem(u"one"_qs);
    box.SetText(u"mine"_qs);
    box.Clear();
    EXPECT_EQ(box.ListCount(), 0);
    EXPECT_EQ(box.Text(), u""_qs);
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST_F(Combo, SettingListIndexTakesTheEntryAndRaisesClick) {
    box.AddItem(u"one"_qs);
    box.AddItem(u"two"_qs);
    QSignalSpy clicked(&box, &ComboBox::Click);
    box.SetListIndex(1);
    EXPECT_EQ(box.Text(), u"two"_qs);
    EXPECT_EQ(box.ListIndex(), 1);
    EXPECT_EQ(clicked.count(), 1);
    box.SetListIndex(-1);
    EXPECT_EQ(box.Text(), u""_qs);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_THROW(box.SetListIndex(2), RuntimeError);
    EXPECT_THROW(box.SetListIndex(-2), RuntimeError);
}

TEST_F(Combo, ChoosingFromTheListByKeyRaisesClick) {
    box.AddItem(u"one"_qs);
    box.AddItem(u"two"_qs);
    QSignalSpy clicked(&box, &ComboBox::Click);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.Text(), u"one"_qs);
    EXPECT_EQ(box.ListIndex(), 0);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Combo, ItemsCanBePutInBetween) {
    box.AddItem(u"b"_qs);
    box.SetListIndex(0);
    box.AddItem(u"a"_qs, 0);
    EXPECT_EQ(box.List(0), u"a"_qs);
    EXPECT_EQ(box.ListIndex(), 1);
    EXPECT_EQ(box.Text(), u"b"_qs);
    EXPECT_THROW(box.AddItem(u"x"_qs, 3), RuntimeError);
    EXPECT_THROW(box.AddItem(u"x"_qs, -1), RuntimeError);
    EXPECT_THROW(box.List(2), RuntimeError);
    EXPECT_THROW(box.List(-1), RuntimeError);
}

TEST_F(Combo, NothingCompletesWhatIsTyped) {
    box.AddItem(u"Server01"_qs);
    QTest::keyClicks(&box, u"ser"_qs);
    EXPECT_EQ(box.Text(), u"ser"_qs);
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(box.Text(), u"ser"_qs);
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST_F(Combo, EnterPutsNothingIntoTheList) {
    box.AddItem(u"one"_qs);
    QTest::keyClicks(&box, u"new"_qs);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.ListCount(), 1);
    EXPECT_EQ(box.Text(), u"new"_qs);
}

TEST_F(Combo, TypingUnchoosesAndAnnouncesTheChange) {
    box.AddItem(u"one"_qs);
    box.SetListIndex(0);
    QSignalSpy changed(&box, &ComboBox::Change);
    QTest::keyClicks(&box, u"x"_qs);
    EXPECT_EQ(box.ListIndex(), -1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(Combo, EnterIsDeliveredAsThirteenOnce) {
    std::vector<int> seen;
    QObject::connect(&box, &ComboBox::KeyPress, &form, [&seen](int& key) { seen.push_back(key); });
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Enter);
    QTest::keyClick(&box, Qt::Key_Left);
    EXPECT_EQ(seen, (std::vector<int>{13, 13}));
}

TEST_F(Combo, ASwallowedCharacterDoesNotArrive) {
    QObject::connect(&box, &ComboBox::KeyPress, &form, [](int& key) {
        if (key == 'x') key = 0;
    });
    QTest::keyClicks(&box, u"axb"_qs);
    EXPECT_EQ(box.Text(), u"ab"_qs);
}

TEST_F(Combo, TextOfAnyCharactersAndLengthComesBack) {
    const QString text =
        u"l1\r\nl2\u00a0\U0001F600"_qs + QChar(0) + QString(40'000, u'w') + u"end"_qs;
    box.SetText(text);
    EXPECT_EQ(box.Text(), text);
    box.AddItem(text);
    EXPECT_EQ(box.List(0), text);
}

TEST_F(Combo, LeavingTheBoxKeepsTheLetterCaseTyped) {
    box.AddItem(u"Master"_qs);
    QTest::keyClicks(&box, u"master"_qs);
    QTest::keyClick(&box, Qt::Key_Return);
    box.clearFocus();
    EXPECT_EQ(box.Text(), u"master"_qs);
}

TEST_F(Combo, TheWheelOverAnUnusedBoxChangesNothing) {
    box.AddItem(u"one"_qs);
    box.AddItem(u"two"_qs);
    box.SetListIndex(0);
    box.clearFocus();
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&box, &wheel);
    EXPECT_EQ(box.ListIndex(), 0);
}

TEST_F(Combo, KeyDownSeesEveryKeyOnceBeforeTheBox) {
    using Keys = std::vector<std::pair<int, int>>;
    Keys seen;
    QObject::connect(&box, &ComboBox::KeyDown, &form,
                     [&seen](int& key, int shift) { seen.emplace_back(key, shift); });
    QTest::keyClick(&box, Qt::Key_A);
    QTest::keyClick(&box, Qt::Key_PageDown, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Return);
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(seen, (Keys{{Qt::Key_A, 0},
                          {Qt::Key_Control, 2},
                          {Qt::Key_PageDown, 2},
                          {Qt::Key_Return, 0},
                          {Qt::Key_Tab, 0}}));
    EXPECT_EQ(box.Text(), u"a"_qs);
}

TEST_F(Combo, ASwallowedTabLeavesTheFocusAnotherMovesIt) {
    ComboBox after(&form, u"After"_qs);
    after.show();
    bool swallow = true;
    QObject::connect(&box, &ComboBox::KeyDown, &form, [&swallow](int& key, int) {
        if (swallow) key = 0;
    });
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &box);
    QTest::keyClick(&box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &box);
    swallow = false;
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after);
    box.SetFocus();
    QTest::keyClick(&box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &after);
}

TEST_F(Combo, ASwallowedKeyChoosesNothing) {
    box.AddItem(u"one"_qs);
    QObject::connect(&box, &ComboBox::KeyDown, &form, [](int& key, int) { key = 0; });
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.ListIndex(), -1);
}

class LockedCombo : public Combo {
  protected:
    void SetUp() override {
        Combo::SetUp();
        for (const char16_t* entry : {u"alpha", u"beta", u"gamma", u"Grey"})
            box.AddItem(QString::fromUtf16(entry));
        box.SetLocked(true);
    }
};

TEST_F(LockedCombo, TakesNoTextOfItsUser) {
    box.SetText(u"keep"_qs);
    QApplication::clipboard()->setText(u"pasted"_qs);
    QTest::keyClicks(&box, u"xyz 1"_qs);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box.Text(), u"keep"_qs);
    EXPECT_TRUE(box.Enabled());
}

TEST_F(LockedCombo, ChoosesByUpAndDown) {
    QSignalSpy clicked(&box, &ComboBox::Click);
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.Text(), u"beta"_qs);
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(box.Text(), u"alpha"_qs);
    EXPECT_EQ(box.ListIndex(), 0);
    EXPECT_EQ(clicked.count(), 3);
}

TEST_F(LockedCombo, ChoosesTheNextEntryThatBeginsWithTheLetterTyped) {
    QSignalSpy clicked(&box, &ComboBox::Click);
    QTest::keyClicks(&box, u"g"_qs);
    EXPECT_EQ(box.Text(), u"gamma"_qs);
    EXPECT_EQ(box.ListIndex(), 2);
    QTest::keyClicks(&box, u"g"_qs);
    EXPECT_EQ(box.Text(), u"Grey"_qs);
    EXPECT_EQ(box.ListIndex(), 3);
    QTest::keyClicks(&box, u"G"_qs);
    EXPECT_EQ(box.Text(), u"gamma"_qs);
    QTest::keyClicks(&box, u"b"_qs);
    EXPECT_EQ(box.Text(), u"beta"_qs);
    EXPECT_EQ(clicked.count(), 4);
}

TEST_F(LockedCombo, ALetterOfTheChosenEntryAloneOrOfNoneChoosesNothing) {
    box.SetListIndex(1);
    QSignalSpy clicked(&box, &ComboBox::Click);
    QTest::keyClicks(&box, u"bz"_qs);
    box.Clear();
    QTest::keyClicks(&box, u"b"_qs);
    EXPECT_EQ(clicked.count(), 0);
}

TEST_F(LockedCombo, UnlockedItIsTypedIntoAgain) {
    SetByName(&box, u"Locked"_qs, Value(false));
    QTest::keyClicks(&box, u"x"_qs);
    EXPECT_EQ(box.Text(), u"x"_qs);
    EXPECT_FALSE(GetByName(&box, u"Locked"_qs).ToBoolean());
}

TEST_F(Combo, MembersAreReachedByName) {
    CallByName(&box, u"AddItem"_qs, {Value(u"one"_qs)});
    CallByName(&box, u"AddItem"_qs, {Value(u"two"_qs)});
    EXPECT_EQ(GetByName(&box, u"ListCount"_qs).ToInteger(), 2);
    EXPECT_EQ(CallByName(&box, u"List"_qs, {Value(1)}).ToText(), u"two"_qs);
    SetByName(&box, u"ListIndex"_qs, Value(1));
    EXPECT_EQ(GetByName(&box, u"Text"_qs).ToText(), u"two"_qs);
    CallByName(&box, u"Clear"_qs);
    EXPECT_EQ(box.ListCount(), 0);
}

}  // namespace
}  // namespace quarv::forms
