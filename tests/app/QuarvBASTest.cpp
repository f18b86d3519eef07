#include "app/QuarvBAS.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>

#include "app/DatabaseView.h"
#include "app/FakeDatabase.h"
#include "base/DataError.h"
#include "base/UTIL.h"
#include "db/SQLServerConnectionDetails.h"
#include "platform/forms/Form.h"
#include "support/BoxWatcher.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

class QuarvBASTest : public testing::Test {
  protected:
    QuarvBASTest() { QApplication::setQuitOnLastWindowClosed(true); }
    ~QuarvBASTest() override { QApplication::setQuitOnLastWindowClosed(false); }

    template <typename Window>
    static Window* Visible() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* window = qobject_cast<Window*>(widget);
            if (window != nullptr && window->isVisible()) return window;
        }
        return nullptr;
    }

    static void Press(const char* name) {
        Visible<SQLServerConnectionDetails>()
            ->findChild<QPushButton*>(QLatin1String(name))
            ->click();
    }

    // Runs the program; `user` acts as soon as the dialog is there.
    int Run(const std::function<void()>& user) {
        QTimer::singleShot(0, qApp, user);
        return program_.Run();
    }

    QTemporaryDir folder_;
    const QByteArray root_ = folder_.path().toUtf8();
    registry::Hives hives_{{.user = root_ + "/user.hive",
                            .machine = root_ + "/machine.hive",
                            .overlay = root_ + "/overlay.hive"}};
    Registry registry_{hives_};
    FakeDatabase database_;
    QuarvBAS program_{database_.script->Factory(), registry_};
    test::BoxWatcher watch_;
};

TEST_F(QuarvBASTest, CancelEndsTheProgram) {
    EXPECT_EQ(Run([] { Press("Cancel"); }), 0);
    EXPECT_TRUE(database_.script->Opened().isEmpty());
    EXPECT_TRUE(watch_.Seen().empty());
}

TEST_F(QuarvBASTest, OkayLeavesTheMainWindowUntilItIsClosed) {
    EXPECT_EQ(Run([] {
                  Press("Okay");
                  EXPECT_EQ(Visible<SQLServerConnectionDetails>(), nullptr);
                  ASSERT_NE(Visible<DatabaseView>(), nullptr);
                  Visible<DatabaseView>()->close();
              }),
              0);
}

TEST_F(QuarvBASTest, FailingConnectionIsShownAndEndsTheProgram) {
    database_.script->FailOpen(DataError(-2147467259, "Cannot reach the server."));
    testing::internal::CaptureStderr();
    EXPECT_EQ(Run([] { Press("Okay"); }), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "-2147467259: Cannot reach the server.\n");
    ASSERT_EQ(watch_.Seen().size(), 1U);
    EXPECT_EQ(watch_.Seen()[0],
              (test::SeenBox{"Cannot reach the server.", "Quarv", forms::BoxIcon::Critical}));
    EXPECT_EQ(Visible<QWidget>(), nullptr);
}

TEST_F(QuarvBASTest, DuplicateNodeKeyIsShownAndEndsTheProgram) {
    database_.SetTables({{u"Orders", u"TABLE"}, {u"Orders", u"TABLE"}});
    testing::internal::CaptureStderr();
    EXPECT_EQ(Run([] { Press("Okay"); }), 1);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("35602: "));
    ASSERT_EQ(watch_.Seen().size(), 1U);
    EXPECT_EQ(watch_.Seen()[0].title, "Quarv");
    EXPECT_EQ(watch_.Seen()[0].icon, forms::BoxIcon::Critical);
    EXPECT_EQ(Visible<QWidget>(), nullptr);
}

TEST_F(QuarvBASTest, WindowsAreCentredOnAMonitor) {
    forms::Form form(QStringLiteral("Form"));
    form.Move(0, 0, 3000, 1500);
    CentreOnMainMonitor(form);
    const QRect work = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(form.Left(), work.left() * 15 + (work.width() * 15 - 3000) / 2);
    EXPECT_EQ(form.Top(), work.top() * 15 + (work.height() * 15 - 1500) / 2);
}

}  // namespace
}  // namespace quarv
