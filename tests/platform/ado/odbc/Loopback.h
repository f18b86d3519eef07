// Loopback: the few socket calls that fake servers share.
#pragma once

#include <QByteArray>

namespace quarv::test {

// A socket that listens on a free loopback port; ends the program where there is none.
int ListenOnLoopback(int& port);

// A socket connected to a loopback port; below 0 where nothing listens there.
int ConnectToLoopback(int port);

// False where the other side is gone.
bool SendAll(int fd, const QByteArray& bytes);

}  // namespace quarv::test
