// Monitors: the monitors of the desktop, and the one place that centres a window on one of them.
// The program keeps one of it; it knows the desktop by its interface and forms by the names of
// their members.
#pragma once

#include <QObject>
#include <vector>

#include "controls/Monitor.h"
#include "platform/desktop/Desktop.h"

namespace quarv {

class Monitors {
  public:
    // The desktop outlives it. Looks for the monitors at once; raises as Refresh.
    explicit Monitors(const desktop::Desktop& desktop);

    // Of the virtual desktop, in pixels; of the one screen where the desktop tells of no monitors.
    qint32 DesktopLeft() const;
    qint32 DesktopTop() const;
    qint32 DesktopWidth() const;
    qint32 DesktopHeight() const;

    // 0 where there is none.
    desktop::MonitorHandle GetMonitorFromWindow(desktop::WindowHandle hwnd, quint32 dwFlags) const;
    // The monitor of one pixel: 0 where there is none, -1 where the desktop does not answer.
    desktop::MonitorHandle GetMonitorFromXYPoint(qint32 x, qint32 y, quint32 dwFlags) const;

    // Moves the form, in twips, to the middle of the work area of the monitor that holds most of
    // the owner; without an owner, of the one at the desktop's corner or else the primary one.
    // False where that monitor tells nothing of itself; then nothing is moved. Raises NoSuchMember
    // where a form lacks Left, Top, Width, Height or an owner its hwnd.
    bool CenterFormOnMonitor(QObject& Form, QObject* OwnerForm = nullptr) const;

    // Looks for the monitors anew. The grid of points that is looked at deliberately ends at the
    // desktop's width and height, not at its right and bottom. Raises SubscriptOutOfRange for a
    // 101st monitor.
    void Refresh();

    // In the order in which they were found.
    int Count() const { return static_cast<int>(items_.size()); }
    // 1-based; raises SubscriptOutOfRange outside.
    const MonitorRef& Items(int position) const;
    // By the handle as decimal text; nothing where there is none.
    MonitorRef Find(const QString& key) const;

    // There is no such dialog: shows nothing and gives 0.
    qint32 ShowMonitorDialog(const QString& Prompt, const QString& Caption,
                             QObject* OwnerForm = nullptr) const;

  private:
    bool HasMonitors() const;
    qint32 ScreenWidthInPixels() const;
    qint32 ScreenHeightInPixels() const;
    void LookAt(qint32 x, qint32 y);
    void AddWholeScreen();

    const desktop::Desktop& desktop_;
    std::vector<MonitorRef> items_;
};

}  // namespace quarv
