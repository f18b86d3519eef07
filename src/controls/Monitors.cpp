#include "controls/Monitors.h"

#include <algorithm>

#include "base/LateBinding.h"
#include "base/NumberText.h"
#include "base/RuntimeError.h"

namespace quarv {

namespace {

using desktop::MonitorHandle;
using desktop::MonitorInfo;

constexpr size_t MostMonitors = 100;
// No monitor is smaller than a cell of this grid.
constexpr qint64 CellWidth = 640;
constexpr qint64 CellHeight = 480;

// Half of what is left of `room`, in whole twips.
qint64 HalfGap(double room, QObject& form, const QString& extent) {
    return RoundToInteger(room - GetByName(&form, extent).ToDouble()) / 2;
}

void MoveTo(QObject& form, double left, double top) {
    SetByName(&form, QStringLiteral("Left"), Value(left));
    SetByName(&form, QStringLiteral("Top"), Value(top));
}

MonitorRef MakeMonitor(MonitorHandle handle, const MonitorInfo& info) {
    auto monitor = std::make_shared<Monitor>();
    monitor->Handle = handle;
    monitor->Left = info.monitor.left;
    monitor->Top = info.monitor.top;
    monitor->Right = info.monitor.right;
    monitor->Bottom = info.monitor.bottom;
    monitor->WorkLeft = info.work.left;
    monitor->WorkTop = info.work.top;
    monitor->WorkRight = info.work.right;
    monitor->WorkBottom = info.work.bottom;
    monitor->Height = monitor->Bottom - monitor->Top;
    monitor->Width = monitor->Right - monitor->Left;
    return monitor;
}

}  // namespace

Monitors::Monitors(const desktop::Desktop& desktop) : desktop_(desktop) {
    Refresh();
}

bool Monitors::HasMonitors() const {
    return desktop_.GetSystemMetrics(desktop::SM_CMONITORS) != 0;
}

qint32 Monitors::ScreenWidthInPixels() const {
    return static_cast<qint32>(RoundToInteger(desktop_.ScreenWidth()) / desktop_.TwipsPerPixelX());
}

qint32 Monitors::ScreenHeightInPixels() const {
    return static_cast<qint32>(RoundToInteger(desktop_.ScreenHeight()) / desktop_.TwipsPerPixelY());
}

qint32 Monitors::DesktopLeft() const {
    return HasMonitors() ? desktop_.GetSystemMetrics(desktop::SM_XVIRTUALSCREEN) : 0;
}

qint32 Monitors::DesktopTop() const {
    return HasMonitors() ? desktop_.GetSystemMetrics(desktop::SM_YVIRTUALSCREEN) : 0;
}

qint32 Monitors::DesktopWidth() const {
    return HasMonitors() ? desktop_.GetSystemMetrics(desktop::SM_CXVIRTUALSCREEN)
                         : ScreenWidthInPixels();
}

qint32 Monitors::DesktopHeight() const {
    return HasMonitors() ? desktop_.GetSystemMetrics(desktop::SM_CYVIRTUALSCREEN)
                         : ScreenHeightInPixels();
}

MonitorHandle Monitors::GetMonitorFromWindow(desktop::WindowHandle hwnd, quint32 dwFlags) const {
    return desktop_.MonitorFromWindow(hwnd, dwFlags);
}

MonitorHandle Monitors::GetMonitorFromXYPoint(qint32 x, qint32 y, quint32 dwFlags) const {
    try {
        return desktop_.MonitorFromRect({x, y, x + 1, y + 1}, dwFlags);
    } catch (const Error&) {
        return -1;
    }
}

bool Monitors::CenterFormOnMonitor(QObject& Form, QObject* OwnerForm) const {
    constexpr quint32 Primary = desktop::MONITOR_DEFAULTTOPRIMARY;
    const MonitorHandle monitor =
        OwnerForm == nullptr
            ? GetMonitorFromXYPoint(1, 1, Primary)
            : GetMonitorFromWindow(GetByName(OwnerForm, QStringLiteral("hwnd")).ToInteger(),
                                   Primary);
    const QString width = QStringLiteral("Width");
    const QString height = QStringLiteral("Height");
    if (monitor == 0) {
        MoveTo(Form, static_cast<double>(HalfGap(desktop_.ScreenWidth(), Form, width)),
               static_cast<double>(HalfGap(desktop_.ScreenHeight(), Form, height)));
        return true;
    }
    const std::optional<MonitorInfo> info = desktop_.GetMonitorInfo(monitor);
    if (!info) return false;
    const double x = desktop_.TwipsPerPixelX();
    const double y = desktop_.TwipsPerPixelY();
    const desktop::Rect& work = info->work;
    MoveTo(Form, work.left * x + HalfGap((double(work.right) - work.left) * x, Form, width),
           work.top * y + HalfGap((double(work.bottom) - work.top) * y, Form, height));
    return true;
}

void Monitors::Refresh() {
    items_.clear();
    if (!HasMonitors()) return AddWholeScreen();
    const qint64 right = DesktopWidth();
    const qint64 bottom = DesktopHeight();
    for (qint64 y = DesktopTop(); y <= bottom; y += CellHeight)
        for (qint64 x = DesktopLeft(); x <= right; x += CellWidth)
            LookAt(static_cast<qint32>(x), static_cast<qint32>(y));
}

// At the middle of the cell with that corner.
void Monitors::LookAt(qint32 x, qint32 y) {
    const MonitorHandle handle = GetMonitorFromXYPoint(static_cast<qint32>(x + CellWidth / 2),
                                                       static_cast<qint32>(y + CellHeight / 2),
                                                       desktop::MONITOR_DEFAULTTONULL);
    if (handle == 0 || Find(QString::number(handle))) return;
    const std::optional<MonitorInfo> info = desktop_.GetMonitorInfo(handle);
    if (!info) return;
    if (items_.size() >= MostMonitors) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    items_.push_back(MakeMonitor(handle, *info));
}

void Monitors::AddWholeScreen() {
    const desktop::Rect screen{0, 0, ScreenWidthInPixels(), ScreenHeightInPixels()};
    items_.push_back(MakeMonitor(0, {screen, screen}));
}

const MonitorRef& Monitors::Items(int position) const {
    if (position < 1 || position > Count()) throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return items_[static_cast<size_t>(position) - 1];
}

MonitorRef Monitors::Find(const QString& key) const {
    const auto found = std::find_if(
        items_.begin(), items_.end(),
        [&key](const MonitorRef& monitor) { return QString::number(monitor->Handle) == key; });
    return found != items_.end() ? *found : nullptr;
}

qint32 Monitors::ShowMonitorDialog(const QString&, const QString&, QObject*) const {
    return 0;
}

}  // namespace quarv
