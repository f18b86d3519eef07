#include "controls/Monitors.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <map>
#include <set>

#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using desktop::MonitorHandle;
using desktop::MonitorInfo;
using desktop::Rect;

// A desktop that has what a test gives it, and remembers where it was asked.
class ScriptedDesktop : public desktop::Desktop {
  public:
    qint32 GetSystemMetrics(int metric) const override {
        const auto found = metrics.find(metric);
        return found == metrics.end() ? 0 : found->second;
    }
    MonitorHandle MonitorFromRect(const Rect& rect, quint32 flags) const override {
        asked.push_back(rect);
        lastFlags = flags;
        if (failing) throw RuntimeError(RuntimeError::InvalidProcedureCall);
        for (const auto& [handle, info] : monitors)
            if (rect.left >= info.monitor.left && rect.left < info.monitor.right &&
                rect.top >= info.monitor.top && rect.top < info.monitor.bottom)
                return handle;
        return flags == 1 ? primary : 0;
    }
    MonitorHandle MonitorFromWindow(desktop::WindowHandle window, quint32 flags) const override {
        lastWindow = window;
        lastFlags = flags;
        return windowMonitor;
    }
    std::optional<MonitorInfo> GetMonitorInfo(MonitorHandle monitor) const override {
        const auto found = monitors.find(monitor);
        if (found == monitors.end()) return std::nullopt;
        return found->second;
    }
    double ScreenWidth() const override { return screenWidth; }
    double ScreenHeight() const override { return screenHeight; }
    qint16 TwipsPerPixelX() const override { return 15; }
    qint16 TwipsPerPixelY() const override { return 15; }

    void SetVirtual(qint32 left, qint32 top, qint32 width, qint32 height, qint32 count) {
        metrics = {{76, left}, {77, top}, {78, width}, {79, height}, {80, count}};
    }

    std::map<int, qint32> metrics;
    std::map<MonitorHandle, MonitorInfo> monitors;
    MonitorHandle primary = 0;
    MonitorHandle windowMonitor = 0;
    bool failing = false;
    double screenWidth = 19200;
    double screenHeight = 15360;
    mutable std::vector<Rect> asked;
    mutable desktop::WindowHandle lastWindow = 0;
    mutable quint32 lastFlags = 0;
};

class MonitorsTest : public testing::Test {
  protected:
    void TwoScreens() {
        desktop.SetVirtual(0, 0, 3840, 1080, 2);
        desktop.monitors[11] = {{0, 0, 1920, 1080}, {0, 0, 1920, 1040}};
        desktop.monitors[12] = {{1920, 0, 3840, 1080}, {1920, 0, 3840, 1080}};
    }

    ScriptedDesktop desktop;
    forms::Form form{QStringLiteral("Form")};
};

TEST_F(MonitorsTest, TwoMonitorsAreEachFoundOnce) {
    TwoScreens();
    const Monitors monitors(desktop);
    ASSERT_EQ(monitors.Count(), 2);
    const Monitor& first = *monitors.Items(1);
    EXPECT_EQ(first.Handle, 11);
    EXPECT_EQ(first.Left, 0);
    EXPECT_EQ(first.Top, 0);
    EXPECT_EQ(first.Right, 1920);
    EXPECT_EQ(first.Bottom, 1080);
    EXPECT_EQ(first.Width, 1920);
    EXPECT_EQ(first.Height, 1080);
    EXPECT_EQ(first.WorkBottom, 1040);
    EXPECT_EQ(first.WorkRight, 1920);
    EXPECT_EQ(monitors.Items(2)->Left, 1920);
    EXPECT_EQ(monitors.Items(2)->WorkLeft, 1920);
    EXPECT_EQ(monitors.Find(QStringLiteral("12")), monitors.Items(2));
    EXPECT_EQ(monitors.Find(QStringLiteral("13")), nullptr);
    EXPECT_EQ(Raised([&] { monitors.Items(0); }), 9);
    EXPECT_EQ(Raised([&] { monitors.Items(3); }), 9);
}

TEST_F(MonitorsTest, TheGridIsLookedAtUpToTheDesktopsSize) {
    TwoScreens();
    const Monitors monitors(desktop);
    std::set<qint32> xs, ys;
    for (const Rect& rect : desktop.asked) {
        xs.insert(rect.left - 320);
        ys.insert(rect.top - 240);
        EXPECT_EQ(rect.right, rect.left + 1);
        EXPECT_EQ(rect.bottom, rect.top + 1);
    }
    EXPECT_EQ(xs, (std::set<qint32>{0, 640, 1280, 1920, 2560, 3200, 3840}));
    EXPECT_EQ(ys, (std::set<qint32>{0, 480, 960}));
    EXPECT_EQ(desktop.asked.size(), 21U);
    EXPECT_EQ(desktop.lastFlags, 0U);
}

TEST_F(MonitorsTest, AMonitorFarToTheRightMayGoUnseen) {
    desktop.SetVirtual(-1920, 0, 3840, 1080, 2);
    desktop.monitors[11] = {{-1920, 0, 0, 1080}, {}};
    desktop.monitors[12] = {{0, 0, 1920, 1080}, {}};
    const Monitors monitors(desktop);
    EXPECT_EQ(desktop.asked.front().left, -1600);
    EXPECT_EQ(desktop.asked[9].left, 4160);
    EXPECT_EQ(monitors.Count(), 2);
}

TEST_F(MonitorsTest, ADesktopWithoutMonitorsIsOneScreen) {
    desktop.screenWidth = 19207;
    const Monitors monitors(desktop);
    ASSERT_EQ(monitors.Count(), 1);
    const Monitor& only = *monitors.Items(1);
    EXPECT_EQ(only.Handle, 0);
    EXPECT_EQ(only.Right, 1280);
    EXPECT_EQ(only.Bottom, 1024);
    EXPECT_EQ(only.WorkRight, 1280);
    EXPECT_EQ(only.WorkBottom, 1024);
    EXPECT_EQ(only.Width, 1280);
    EXPECT_EQ(only.Height, 1024);
    EXPECT_EQ(monitors.DesktopLeft(), 0);
    EXPECT_EQ(monitors.DesktopTop(), 0);
    EXPECT_EQ(monitors.DesktopWidth(), 1280);
    EXPECT_EQ(monitors.DesktopHeight(), 1024);
    EXPECT_TRUE(desktop.asked.empty());
}

TEST_F(MonitorsTest, TheDesktopIsThatOfItsMetrics) {
    desktop.SetVirtual(-10, -20, 30, 40, 1);
    const Monitors monitors(desktop);
    EXPECT_EQ(monitors.DesktopLeft(), -10);
    EXPECT_EQ(monitors.DesktopTop(), -20);
    EXPECT_EQ(monitors.DesktopWidth(), 30);
    EXPECT_EQ(monitors.DesktopHeight(), 40);
}

TEST_F(MonitorsTest, RefreshForgetsWhatIsGone) {
    TwoScreens();
    Monitors monitors(desktop);
    desktop.monitors.erase(12);
    monitors.Refresh();
    EXPECT_EQ(monitors.Count(), 1);
}

TEST_F(MonitorsTest, AHundredMonitorsAreTheMost) {
    for (int i = 0; i < 100; ++i) desktop.monitors[i + 1] = {{640 * i, 0, 640 * i + 640, 480}, {}};
    desktop.SetVirtual(0, 0, 64000, 400, 100);
    EXPECT_EQ(Monitors(desktop).Count(), 100);
    desktop.monitors[101] = {{64000, 0, 64640, 480}, {}};
    EXPECT_EQ(Raised([this] { Monitors{desktop}; }), 9);
}

TEST_F(MonitorsTest, ADesktopThatDoesNotAnswerGivesMinusOne) {
    TwoScreens();
    Monitors monitors(desktop);
    EXPECT_EQ(monitors.GetMonitorFromXYPoint(5, 5, 0), 11);
    EXPECT_EQ(monitors.GetMonitorFromXYPoint(-5, 5, 0), 0);
    desktop.failing = true;
    EXPECT_EQ(monitors.GetMonitorFromXYPoint(5, 5, 0), -1);
    monitors.Refresh();
    EXPECT_EQ(monitors.Count(), 0);
    form.Move(1, 2, 6000, 4000);
    EXPECT_FALSE(monitors.CenterFormOnMonitor(form));
    EXPECT_EQ(form.Left(), 1);
}

TEST_F(MonitorsTest, AFormIsCentredOnTheWorkArea) {
    desktop.SetVirtual(0, 0, 1280, 1024, 1);
    desktop.monitors[5] = {{0, 0, 1280, 1100}, {0, 0, 1280, 1024}};
    const Monitors monitors(desktop);
    form.Move(0, 0, 6000, 4000);
    EXPECT_TRUE(monitors.CenterFormOnMonitor(form));
    EXPECT_EQ(form.Left(), 6600);
    EXPECT_EQ(form.Top(), 5680);
    EXPECT_EQ(desktop.lastFlags, 1U);
    EXPECT_EQ(desktop.asked.back(), (Rect{1, 1, 2, 2}));
}

TEST_F(MonitorsTest, AFormIsCentredOnTheMonitorOfItsOwner) {
    TwoScreens();
    const Monitors monitors(desktop);
    forms::Form owner(QStringLiteral("Owner"));
    desktop.windowMonitor = 12;
    form.Move(0, 0, 6001, 4000);
    EXPECT_TRUE(monitors.CenterFormOnMonitor(form, &owner));
    EXPECT_EQ(desktop.lastWindow, owner.hwnd());
    EXPECT_EQ(desktop.lastFlags, 1U);
    EXPECT_EQ(form.Left(), 28800 + 11399);  // half of 22799, cut
    EXPECT_EQ(form.Top(), 6100);
}

TEST_F(MonitorsTest, AFormWiderThanTheMonitorSticksOutOnBothSides) {
    TwoScreens();
    const Monitors monitors(desktop);
    form.Move(0, 0, 30001, 4000);
    EXPECT_TRUE(monitors.CenterFormOnMonitor(form));
    EXPECT_EQ(form.Left(), -600);  // half of -1201, cut
}

TEST_F(MonitorsTest, WithoutAMonitorAFormIsCentredOnTheScreen) {
    const Monitors monitors(desktop);
    form.Move(0, 0, 6000, 4000);
    EXPECT_TRUE(monitors.CenterFormOnMonitor(form));
    EXPECT_EQ(form.Left(), 6600);
    EXPECT_EQ(form.Top(), 5680);
}

TEST_F(MonitorsTest, ThereIsNoDialogOfMonitors) {
    const Monitors monitors(desktop);
    EXPECT_EQ(monitors.ShowMonitorDialog(QStringLiteral("Which?"), QStringLiteral("Monitors")), 0);
    for (const QWidget* window : QApplication::topLevelWidgets()) EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace quarv
