#include "platform/forms/Form.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "base/RuntimeError.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

class CountingForm : public Form {
  public:
    using Form::Form;
    int loads = 0;
    int resizes = 0;
    bool failing = false;

  protected:
    void Form_Load() override {
        ++loads;
        if (failing) throw RuntimeError(RuntimeError::ObjectNotSet);
    }
    void Form_Resize() override { ++resizes; }
};

TEST(Form, LoadsOnceBeforeItIsFirstShown) {
    CountingForm form(u"F"_qs);
    EXPECT_EQ(form.loads, 0);
    form.Show();
    EXPECT_EQ(form.loads, 1);
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(form.isModal());
    form.Close();
    form.Show();
    EXPECT_EQ(form.loads, 1);
}

TEST(Form, LoadingBeforeShowingIsTheOneLoad) {
    CountingForm form(u"F"_qs);
    form.Load();
    EXPECT_EQ(form.loads, 1);
    EXPECT_FALSE(form.isVisible());
    form.show();
    EXPECT_EQ(form.loads, 1);
}

TEST(Form, AnErrorWhileLoadingEndsTheEventAndTheFormIsShown) {
    CountingForm form(u"F"_qs);
    form.failing = true;
    testing::internal::CaptureStderr();
    form.Show();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "91: Object not set\n");
    EXPECT_TRUE(form.isVisible());
}

TEST(Form, ClosingHidesItAndIsAnnounced) {
    Form form(u"F"_qs);
    QSignalSpy closed(&form, &Form::Closed);
    form.Show();
    EXPECT_TRUE(form.Visible());
    form.Close();
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(form.Visible());
    EXPECT_FALSE(form.isVisible());
}

TEST(Form, KeepsItsDesignedSizeWhereItIsFixed) {
    Form form(u"F"_qs);
    form.SetBorderStyle(Form::FixedSingle);
    form.Move(0, 0, 9000.5, 6000);
    form.Show();
    EXPECT_EQ(form.minimumSize(), QSize(600, 400));
    EXPECT_EQ(form.maximumSize(), QSize(600, 400));
    EXPECT_EQ(form.ScaleWidth(), 9000.5);
}

TEST(Form, ASizableFormFollowsTheWindowManagerAndRaisesResize) {
    CountingForm form(u"F"_qs);
    form.Move(0, 0, 9000.5, 6000);
    form.Show();
    QSignalSpy resized(&form, &Form::Resize);
    const int before = form.resizes;
    form.resize(700, 400);
    EXPECT_EQ(form.Width(), 10500);
    EXPECT_EQ(form.Height(), 6000);
    EXPECT_EQ(resized.count(), 1);
    EXPECT_EQ(form.resizes, before + 1);
}

TEST(Form, ASizeFromOutsideThatRoundsToTheSameChangesNothing) {
    Form form(u"F"_qs);
    form.SetWidth(9002);
    form.Show();
    QSignalSpy resized(&form, &Form::Resize);
    form.resize(600, form.height() + 1);
    EXPECT_EQ(form.Width(), 9002);
    EXPECT_EQ(resized.count(), 1);
}

TEST(Form, RaisesResizeOnceAtItsFirstShowing) {
    CountingForm form(u"F"_qs);
    form.SetWidth(5000);
    EXPECT_EQ(form.resizes, 0);
    form.Show();
    EXPECT_EQ(form.resizes, 1);
}

TEST(Form, ResizeFromCodeIsRaisedOnce) {
    CountingForm form(u"F"_qs);
    form.Show();
    const int before = form.resizes;
    form.SetWidth(form.Width() + 1500);
    QCoreApplication::processEvents();
    EXPECT_EQ(form.resizes, before + 1);
}

TEST(Form, RefusesAnUnknownBorderStyle) {
    Form form(u"F"_qs);
    EXPECT_EQ(Raised([&] { form.SetBorderStyle(9); }), 380);
}

class FormKeys : public testing::Test {
  protected:
    Form form{u"F"_qs};
    ButtonPlus okay{&form, u"Okay"_qs};
    ButtonPlus cancel{&form, u"Cancel"_qs};
    TextBox line{&form, u"Line"_qs};
    TextBox memo{&form, u"Memo"_qs};
    ComboBox combo{&form, u"Combo"_qs};
    QSignalSpy confirmed{&okay, &ButtonPlus::Click};
    QSignalSpy cancelled{&cancel, &ButtonPlus::Click};

    void SetUp() override {
        okay.SetDefault(true);
        cancel.SetCancel(true);
        memo.SetMultiLine(true);
        form.Show();
        QApplication::setActiveWindow(&form);
    }

    void Press(Control& control, Qt::Key key) {
        control.SetFocus();
        QTest::keyClick(QApplication::focusWidget(), key);
    }
};

TEST_F(FormKeys, EnterInALinePressesTheDefaultButton) {
    Press(line, Qt::Key_Return);
    EXPECT_EQ(confirmed.count(), 1);
}

TEST_F(FormKeys, EnterInADropDownPressesTheDefaultButton) {
    Press(combo, Qt::Key_Enter);
    EXPECT_EQ(confirmed.count(), 1);
}

TEST_F(FormKeys, ASwallowedEnterPressesNothing) {
    QObject::connect(&combo, &ComboBox::KeyPress, &form, [](int& key) {
        if (key == 13) key = 0;
    });
    Press(combo, Qt::Key_Return);
    EXPECT_EQ(confirmed.count(), 0);
}

TEST_F(FormKeys, EnterInAMemoIsALineEnd) {
    Press(memo, Qt::Key_Return);
    EXPECT_EQ(confirmed.count(), 0);
    EXPECT_EQ(memo.Text(), u"\r\n"_qs);
}

TEST_F(FormKeys, EscapePressesTheCancelButtonFromEverywhere) {
    Press(line, Qt::Key_Escape);
    Press(memo, Qt::Key_Escape);
    Press(combo, Qt::Key_Escape);
    Press(okay, Qt::Key_Escape);
    EXPECT_EQ(cancelled.count(), 4);
}

TEST_F(FormKeys, EnterPressesTheButtonWithTheFocus) {
    Press(cancel, Qt::Key_Return);
    EXPECT_EQ(cancelled.count(), 1);
    EXPECT_EQ(confirmed.count(), 0);
}

TEST_F(FormKeys, ADisabledDefaultButtonIsNotPressed) {
    okay.SetEnabled(false);
    Press(line, Qt::Key_Return);
    EXPECT_EQ(confirmed.count(), 0);
}

TEST_F(FormKeys, ADefaultButtonOnAHiddenFrameIsNotPressed) {
    okay.SetDefault(false);
    FramePlus page(&form, u"Page"_qs);
    ButtonPlus inner(&page, u"Inner"_qs);
    inner.SetDefault(true);
    page.SetVisible(false);
    QSignalSpy pressed(&inner, &ButtonPlus::Click);
    Press(line, Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 0);
}

TEST_F(FormKeys, TabWalksTheControlsInCreationOrder) {
    okay.SetFocus();
    QStringList names;
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget* focused = QApplication::focusWidget();
        names.append(focused->objectName().isEmpty() ? focused->parentWidget()->objectName()
                                                     : focused->objectName());
    }
    EXPECT_EQ(names, (QStringList{u"Cancel"_qs, u"Line"_qs, u"Memo"_qs, u"Combo"_qs, u"Okay"_qs}));
}

class FormKeyPreview : public testing::Test {
  protected:
    FormKeyPreview() {
        form.SetKeyPreview(true);
        QObject::connect(&form, &Form::KeyUp, &form, [this](int& keyCode, int shift) {
            seen.append({keyCode, shift});
            if (swallowing) keyCode = 0;
        });
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
    }

    Form form{u"F"_qs};
    FramePlus frame{&form, u"Frame"_qs};
    TextBox box{&frame, u"Box"_qs};
    QList<QPair<int, int>> seen;
    bool swallowing = false;
};

TEST_F(FormKeyPreview, SeesEachKeyOnceWhereverTheFocusIs) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    EXPECT_EQ(seen, (QList<QPair<int, int>>{{Qt::Key_F5, 0}}));
    QTest::keyClick(&form, Qt::Key_F6);
    EXPECT_EQ(seen.last(), (QPair<int, int>{Qt::Key_F6, 0}));
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(FormKeyPreview, TellsWhichModifiersAreHeld) {
    const auto shiftAtF5 = [this](Qt::KeyboardModifiers held) {
        seen.clear();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5, held);
        return seen.value(0);  // the modifier is let go after it
    };
    EXPECT_EQ(shiftAtF5(Qt::ShiftModifier), (QPair<int, int>{Qt::Key_F5, 1}));
    EXPECT_EQ(shiftAtF5(Qt::ControlModifier), (QPair<int, int>{Qt::Key_F5, 2}));
    EXPECT_EQ(shiftAtF5(Qt::AltModifier), (QPair<int, int>{Qt::Key_F5, 4}));
}

TEST_F(FormKeyPreview, KeysThatRepeatWhileHeldAreNotLetGo) {
    QKeyEvent repeated(QEvent::KeyRelease, Qt::Key_F5, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &repeated);
    EXPECT_TRUE(seen.isEmpty());
}

TEST_F(FormKeyPreview, AHandlerMaySwallowTheKey) {
    struct KeyUps : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::KeyRelease ? 1 : 0;
            return false;
        }
        int count = 0;
    } reached;
    QWidget* const editor = QApplication::focusWidget();
    editor->installEventFilter(&reached);
    QTest::keyClick(editor, Qt::Key_A);
    EXPECT_EQ(reached.count, 1);
    swallowing = true;
    QTest::keyClick(editor, Qt::Key_B);
    EXPECT_EQ(reached.count, 1);
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(FormKeyPreview, OffTheFormSeesNoKeys) {
    form.SetKeyPreview(false);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    EXPECT_TRUE(seen.isEmpty());
}

TEST(Form, GivesItsDesignMarkToItsUser) {
    Form form(u"F"_qs);
    EXPECT_TRUE(form.UserMode());
    form.SetUserMode(false);
    EXPECT_FALSE(form.UserMode());
}

}  // namespace
}  // namespace quarv::forms
