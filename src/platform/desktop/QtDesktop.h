// QtDesktop: the desktop that Qt sees. A monitor's handle is its 1-based position among the screens
// and lasts until one comes or goes. Needs a QGuiApplication.
#pragma once

#include "platform/desktop/Desktop.h"

class QRect;

namespace quarv::desktop {

class QtDesktop : public Desktop {
  public:
    qint32 GetSystemMetrics(int metric) const override;
    MonitorHandle MonitorFromRect(const Rect& rect, quint32 flags) const override;
    // A handle of no window counts as one that lies on no monitor.
    MonitorHandle MonitorFromWindow(WindowHandle window, quint32 flags) const override;
    std::optional<MonitorInfo> GetMonitorInfo(MonitorHandle monitor) const override;
    double ScreenWidth() const override;
    double ScreenHeight() const override;
    qint16 TwipsPerPixelX() const override;
    qint16 TwipsPerPixelY() const override;
};

// Of monitors at these places, the first being the primary one: the position, from 1, of the one
// that holds most of `rect`; where none does, what the flags say: 0, the primary one, the nearest.
MonitorHandle FindMonitor(const QList<QRect>& monitors, const QRect& rect, quint32 flags);

}  // namespace quarv::desktop
