#include "platform/forms/MsgBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>

#include "platform/forms/WaitCursor.h"
#include "support/BoxWatcher.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(MsgBox, SaysItsTextUnderItsTitle) {
    test::BoxWatcher boxes;
    EXPECT_EQ(MsgBox(u"Test successful."_qs, u"Test"_qs, BoxIcon::Information), BoxAnswer::Ok);
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen()[0].text, u"Test successful."_qs);
    EXPECT_EQ(boxes.Seen()[0].title, u"Test"_qs);
    EXPECT_EQ(boxes.Seen()[0].icon, BoxIcon::Information);
}

TEST(MsgBox, WithoutATitleItHasTheApplications) {
    test::BoxWatcher boxes;
    MsgBox(u"Complete"_qs);
    EXPECT_EQ(boxes.Seen()[0].title, u"Quarv"_qs);
}

TEST(MsgBox, AnswersYesAndNo) {
    {
        test::BoxWatcher boxes(BoxAnswer::Yes);
        EXPECT_EQ(MsgBox(u"?"_qs, {}, BoxIcon::Question, BoxButtons::YesNo), BoxAnswer::Yes);
    }
    test::BoxWatcher boxes(BoxAnswer::No);
    EXPECT_EQ(MsgBox(u"?"_qs, {}, BoxIcon::Question, BoxButtons::YesNo), BoxAnswer::No);
}

TEST(MsgBox, AClosedQuestionIsANo) {
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(MsgBox(u"?"_qs, {}, BoxIcon::Question, BoxButtons::YesNo), BoxAnswer::No);
}

TEST(MsgBox, ShowsThePlainPointerWhileTheProgramIsBusy) {
    const auto shape = [] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        return cursor ? cursor->shape() : Qt::BlankCursor;
    };
    Qt::CursorShape inBox = Qt::BlankCursor;
    const auto close = [&] {
        inBox = shape();
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return);
    };
    {
        const WaitCursor wait;
        QTimer::singleShot(0, close);
        MsgBox(u"!"_qs);
        EXPECT_EQ(inBox, Qt::ArrowCursor);
        EXPECT_EQ(shape(), Qt::WaitCursor);
    }
    QTimer::singleShot(0, close);
    MsgBox(u"!"_qs);
    EXPECT_EQ(inBox, Qt::BlankCursor) << "no pointer of its own without need";
    EXPECT_EQ(shape(), Qt::BlankCursor);
}

TEST(MsgBox, EnterAnswersTheDefaultButton) {
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    EXPECT_EQ(MsgBox(u"?"_qs, {}, BoxIcon::Question, BoxButtons::YesNo), BoxAnswer::Yes);
}

}  // namespace
}  // namespace quarv::forms
