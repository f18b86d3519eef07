#include "platform/desktop/QtDesktop.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QWidget>
#include <limits>

#include "platform/drawing/TwipsPerPixel.h"

namespace quarv::desktop {

namespace {

Rect FromQt(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

QRect ToQt(const Rect& rect) {
    return {QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)};
}

// Qt lists the primary screen first.
QList<QRect> Places() {
    QList<QRect> places;
    for (const QScreen* screen : QGuiApplication::screens()) places.append(screen->geometry());
    return places;
}

qint64 Area(const QRect& rect) {
    return rect.isEmpty() ? 0 : qint64{rect.width()} * rect.height();
}

// From the middle of one to the nearest point of the other, squared.
qint64 Distance(const QRect& monitor, const QPoint& point) {
    const auto gap = [](qint64 low, qint64 high, qint64 at) {
        return at < low ? low - at : at > high ? at - high : 0;
    };
    const qint64 x = gap(monitor.left(), monitor.right(), point.x());
    const qint64 y = gap(monitor.top(), monitor.bottom(), point.y());
    return x * x + y * y;
}

MonitorHandle Nearest(const QList<QRect>& monitors, const QPoint& point) {
    MonitorHandle nearest = 0;
    qint64 least = std::numeric_limits<qint64>::max();
    for (int i = 0; i < monitors.size(); ++i) {
        const qint64 distance = Distance(monitors[i], point);
        if (distance >= least) continue;
        least = distance;
        nearest = i + 1;
    }
    return nearest;
}

}  // namespace

MonitorHandle FindMonitor(const QList<QRect>& monitors, const QRect& rect, quint32 flags) {
    MonitorHandle found = 0;
    qint64 most = 0;
    for (int i = 0; i < monitors.size(); ++i) {
        const qint64 shared = Area(monitors[i] & rect);
        if (shared <= most) continue;
        most = shared;
        found = i + 1;
    }
    if (found != 0 || monitors.isEmpty() || flags == MONITOR_DEFAULTTONULL) return found;
    return flags == MONITOR_DEFAULTTOPRIMARY ? 1 : Nearest(monitors, rect.center());
}

qint32 QtDesktop::GetSystemMetrics(int metric) const {
    const QScreen* primary = QGuiApplication::primaryScreen();
    const QRect all = primary ? primary->virtualGeometry() : QRect();
    switch (metric) {
        case SM_XVIRTUALSCREEN:
            return all.left();
        case SM_YVIRTUALSCREEN:
            return all.top();
        case SM_CXVIRTUALSCREEN:
            return all.width();
        case SM_CYVIRTUALSCREEN:
            return all.height();
        case SM_CMONITORS:
            return static_cast<qint32>(QGuiApplication::screens().size());
        default:
            return 0;
    }
}

MonitorHandle QtDesktop::MonitorFromRect(const Rect& rect, quint32 flags) const {
    return FindMonitor(Places(), ToQt(rect), flags);
}

MonitorHandle QtDesktop::MonitorFromWindow(WindowHandle window, quint32 flags) const {
    const QWidget* widget = QWidget::find(static_cast<WId>(window));
    return FindMonitor(Places(), widget ? widget->window()->frameGeometry() : QRect(), flags);
}

std::optional<MonitorInfo> QtDesktop::GetMonitorInfo(MonitorHandle monitor) const {
    const QList<QScreen*> screens = QGuiApplication::screens();
    if (monitor < 1 || monitor > screens.size()) return std::nullopt;
    const QScreen& screen = *screens[monitor - 1];
    return MonitorInfo{FromQt(screen.geometry()), FromQt(screen.availableGeometry())};
}

double QtDesktop::ScreenWidth() const {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().width() * drawing::TwipsPerPixel : 0;
}

double QtDesktop::ScreenHeight() const {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().height() * drawing::TwipsPerPixel : 0;
}

qint16 QtDesktop::TwipsPerPixelX() const {
    return static_cast<qint16>(drawing::TwipsPerPixel);
}

qint16 QtDesktop::TwipsPerPixelY() const {
    return static_cast<qint16>(drawing::TwipsPerPixel);
}

}  // namespace quarv::desktop
