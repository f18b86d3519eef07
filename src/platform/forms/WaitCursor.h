// WaitCursor: while it lives the pointer tells that the program is busy. It nests.
#pragma once

#include <QGuiApplication>

namespace quarv::forms {

class WaitCursor {
  public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace quarv::forms
