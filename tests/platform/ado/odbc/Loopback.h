// Loopback: the few socket calls that fake servers share.
#pragma once

#include <QByteArray>
#include <QString>

namespace quarv::test {

// A socket that listens at a loopback address, on `port`, which 0 sets to a free one; ends the
// program where that cannot be.
int ListenOnLoopback(int& port, const QString& address = QStringLiteral("127.0.0.1"));

// This computer has the loopback address ::1.
bool HasIpv6();

// A socket connected to a loopback port; below 0 where nothing listens there.
int ConnectToLoopback(int port);

// What has come, at least one byte; nothing where the other side is gone.
QByteArray ReceiveSome(int fd);

// False where the other side is gone.
bool SendAll(int fd, const QByteArray& bytes);

}  // namespace quarv::test
