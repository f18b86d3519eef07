// Monitor: one monitor of the desktop: its handle and its rectangles, as they were when Monitors
// found it. Shared by whoever refers to it.
#pragma once

#include <QtGlobal>
#include <memory>

#include "base/Object.h"

namespace quarv {

// Pixels of the virtual desktop; right and bottom lie just outside.
class Monitor : public Object {
  public:
    qint32 Handle = 0;  // 0 for the one screen of a desktop that tells of no monitors
    qint32 Height = 0;
    qint32 Width = 0;
    qint32 Left = 0;
    qint32 Right = 0;
    qint32 Top = 0;
    qint32 Bottom = 0;
    qint32 WorkLeft = 0;  // the work area, without task bars
    qint32 WorkRight = 0;
    qint32 WorkTop = 0;
    qint32 WorkBottom = 0;
};

using MonitorRef = std::shared_ptr<Monitor>;

}  // namespace quarv
