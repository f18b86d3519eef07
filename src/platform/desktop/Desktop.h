// Desktop: what a program asks of the desktop about monitors and sizes, in the platform's own
// terms: metrics and flags by their documented numbers ("GetSystemMetrics function",
// "MonitorFromRect function"), monitors by handle. Interface only: QtDesktop implements it over the
// real screens, tests by a script. All coordinates are device-independent pixels of the virtual
// desktop, on which the primary monitor's corner is 0, 0, unless twips are named.
#pragma once

#include <QtGlobal>
#include <optional>

namespace quarv::desktop {

// 0 is no monitor.
using MonitorHandle = qint32;
// Of a top-level window.
using WindowHandle = qint64;

// Right and bottom lie just outside.
struct Rect {
    qint32 left = 0;
    qint32 top = 0;
    qint32 right = 0;
    qint32 bottom = 0;

    bool operator==(const Rect&) const = default;
};

struct MonitorInfo {
    Rect monitor;
    Rect work;  // without task bars
};

enum Metric : int {
    SM_XVIRTUALSCREEN = 76,   // left of the virtual desktop
    SM_YVIRTUALSCREEN = 77,   // its top
    SM_CXVIRTUALSCREEN = 78,  // its width
    SM_CYVIRTUALSCREEN = 79,  // its height
    SM_CMONITORS = 80,        // how many monitors there are; 0 where the platform tells of none
};

// Which monitor stands in where none is met.
enum MonitorDefault : quint32 {
    MONITOR_DEFAULTTONULL = 0,
    MONITOR_DEFAULTTOPRIMARY = 1,
    MONITOR_DEFAULTTONEAREST = 2,
};

class Desktop {
  public:
    virtual ~Desktop() = default;

    // 0 for a metric that is not known.
    virtual qint32 GetSystemMetrics(int metric) const = 0;
    // The monitor with most of the rectangle, or of the window. Raise an Error where the platform
    // refuses to answer.
    virtual MonitorHandle MonitorFromRect(const Rect& rect, quint32 flags) const = 0;
    virtual MonitorHandle MonitorFromWindow(WindowHandle window, quint32 flags) const = 0;
    // Nothing for a handle that is no monitor.
    virtual std::optional<MonitorInfo> GetMonitorInfo(MonitorHandle monitor) const = 0;

    // Of the primary screen, in twips.
    virtual double ScreenWidth() const = 0;
    virtual double ScreenHeight() const = 0;
    // Above 0.
    virtual qint16 TwipsPerPixelX() const = 0;
    virtual qint16 TwipsPerPixelY() const = 0;

  protected:
    Desktop() = default;
    Desktop(const Desktop&) = default;
    Desktop& operator=(const Desktop&) = default;
};

}  // namespace quarv::desktop
