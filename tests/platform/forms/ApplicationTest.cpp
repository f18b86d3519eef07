#include "platform/forms/Application.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "base/DataError.h"
#include "base/RuntimeError.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"

namespace quarv::forms {
namespace {

std::string LoggedBy(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

TEST(Application, AnErrorOutOfAnEventHandlerEndsTheEventAndIsLogged) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    bool reached = false;
    int clicks = 0;
    QObject::connect(&button, &ButtonPlus::Click, &form, [&] {
        if (++clicks > 1) return;
        throw DataError(-2147217865, u"Invalid object name 'x'."_qs);
        reached = true;
    });
    form.Show();
    const std::string log = LoggedBy([&] { QTest::mouseClick(&button, Qt::LeftButton); });
    EXPECT_EQ(log, "-2147217865: Invalid object name 'x'.\n");
    EXPECT_FALSE(reached);
    EXPECT_EQ(LoggedBy([&] { QTest::mouseClick(&button, Qt::LeftButton); }), "");
    EXPECT_EQ(clicks, 2);
}

TEST(Application, ALogEntryIsOneLineWithoutControlCharacters) {
    const std::string log = LoggedBy(
        [] { Application::RunEvent([] { throw DataError(7, u"a\r\nb\x1b[31m\u00e9"_qs); }); });
    EXPECT_EQ(log, "7: a  b [31m\xC3\xA9\n");
}

TEST(Application, DescriptionsThatLookLikePlaceholdersStayWhole) {
    const std::string log =
        LoggedBy([] { Application::RunEvent([] { throw DataError(7, u"%1 like %2"_qs); }); });
    EXPECT_EQ(log, "7: %1 like %2\n");
}

TEST(Application, OtherExceptionsAreLoggedToo) {
    EXPECT_EQ(LoggedBy([] { Application::RunEvent([] { throw std::runtime_error("broken"); }); }),
              "broken\n");
    EXPECT_EQ(LoggedBy([] { Application::RunEvent([] { throw 1; }); }), "unknown exception\n");
}

TEST(Application, AnErrorOutOfAQueuedCallDoesNotEndTheProgram) {
    const std::string log = LoggedBy([] {
        QObject receiver;
        QMetaObject::invokeMethod(
            &receiver, [] { throw RuntimeError(RuntimeError::DivisionByZero); },
            Qt::QueuedConnection);
        QCoreApplication::sendPostedEvents(&receiver);
    });
    EXPECT_EQ(log, "11: Division by zero\n");
}

TEST(Application, PendingEventsRunOnDemand) {
    bool ran = false;
    QTimer::singleShot(0, [&ran] { ran = true; });
    Application::DoEvents();
    EXPECT_TRUE(ran);
}

class PaintCounter : public QWidget {
  public:
    using QWidget::QWidget;
    int paints = 0;

  protected:
    void paintEvent(QPaintEvent*) override { ++paints; }
};

TEST(Application, WhatWasJustShownIsPaintedOnDemand) {
    Form form(u"F"_qs);
    PaintCounter child(&form);
    child.setGeometry(0, 0, 50, 50);
    child.hide();
    form.Show();
    Application::DoEvents();
    EXPECT_EQ(child.paints, 0);
    child.show();
    Application::DoEvents();
    EXPECT_GT(child.paints, 0);
}

}  // namespace
}  // namespace quarv::forms
