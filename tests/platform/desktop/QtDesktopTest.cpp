#include "platform/desktop/QtDesktop.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace quarv::desktop {
namespace {

const QList<QRect> TwoBesideEachOther{QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};

TEST(FindMonitor, TakesTheOneWithMostOfTheRectangle) {
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, QRect(1919, 0, 1, 1), 0), 1);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, QRect(1920, 0, 1, 1), 0), 2);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, QRect(1900, 0, 50, 50), 0), 2);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, QRect(1890, 0, 50, 50), 0), 1);
}

TEST(FindMonitor, OutsideAllOfThemTheFlagsDecide) {
    const QRect below(2500, 1200, 10, 10);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, below, MONITOR_DEFAULTTONULL), 0);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, below, MONITOR_DEFAULTTOPRIMARY), 1);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, below, MONITOR_DEFAULTTONEAREST), 2);
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, QRect(-90, 5, 9, 9), MONITOR_DEFAULTTONEAREST), 1);
}

TEST(FindMonitor, WithoutMonitorsThereIsNone) {
    EXPECT_EQ(FindMonitor({}, QRect(0, 0, 1, 1), MONITOR_DEFAULTTOPRIMARY), 0);
    EXPECT_EQ(FindMonitor({}, QRect(0, 0, 1, 1), MONITOR_DEFAULTTONEAREST), 0);
}

TEST(FindMonitor, AnEmptyRectangleLiesOnNone) {
    EXPECT_EQ(FindMonitor(TwoBesideEachOther, QRect(), MONITOR_DEFAULTTONULL), 0);
}

class QtDesktopTest : public testing::Test {
  protected:
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QtDesktop desktop;
};

TEST_F(QtDesktopTest, TellsTheMetricsOfTheScreens) {
    const QRect all = QGuiApplication::primaryScreen()->virtualGeometry();
    EXPECT_EQ(desktop.GetSystemMetrics(76), all.left());
    EXPECT_EQ(desktop.GetSystemMetrics(77), all.top());
    EXPECT_EQ(desktop.GetSystemMetrics(78), all.width());
    EXPECT_EQ(desktop.GetSystemMetrics(79), all.height());
    EXPECT_EQ(desktop.GetSystemMetrics(80), QGuiApplication::screens().size());
    EXPECT_EQ(desktop.GetSystemMetrics(81), 0);
}

TEST_F(QtDesktopTest, MeasuresTheScreenInTwips) {
    EXPECT_EQ(desktop.ScreenWidth(), screen.width() * 15);
    EXPECT_EQ(desktop.ScreenHeight(), screen.height() * 15);
    EXPECT_EQ(desktop.TwipsPerPixelX(), 15);
    EXPECT_EQ(desktop.TwipsPerPixelY(), 15);
}

TEST_F(QtDesktopTest, TellsOfAMonitorByItsHandle) {
    const MonitorHandle handle = desktop.MonitorFromRect({1, 1, 2, 2}, MONITOR_DEFAULTTONULL);
    ASSERT_EQ(handle, 1);
    const std::optional<MonitorInfo> info = desktop.GetMonitorInfo(handle);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->monitor, (Rect{screen.left(), screen.top(), screen.left() + screen.width(),
                                   screen.top() + screen.height()}));
    EXPECT_LE(info->work.right, info->monitor.right);
    EXPECT_FALSE(desktop.GetMonitorInfo(0));
    EXPECT_FALSE(desktop.GetMonitorInfo(-1));
    EXPECT_FALSE(desktop.GetMonitorInfo(99));
}

TEST_F(QtDesktopTest, FindsTheMonitorOfAWindow) {
    QWidget window;
    window.setGeometry(10, 10, 100, 100);
    window.show();
    EXPECT_EQ(
        desktop.MonitorFromWindow(static_cast<WindowHandle>(window.winId()), MONITOR_DEFAULTTONULL),
        1);
    EXPECT_EQ(desktop.MonitorFromWindow(0, MONITOR_DEFAULTTONULL), 0);
    EXPECT_EQ(desktop.MonitorFromWindow(0, MONITOR_DEFAULTTOPRIMARY), 1);
}

}  // namespace
}  // namespace quarv::desktop
