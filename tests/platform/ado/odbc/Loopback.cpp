#include "platform/ado/odbc/Loopback.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace quarv::test {

namespace {

constexpr int PieceSize = 64 * 1024;

using SocketCall = int (*)(int, const sockaddr*, socklen_t);

// A socket bound or connected to a loopback address; -1 where that cannot be.
int SocketFor(SocketCall call, const QString& address, int port) {
    const QByteArray text = address.toLatin1();
    sockaddr_in v4{};
    v4.sin_family = AF_INET;
    v4.sin_port = htons(static_cast<in_port_t>(port));
    sockaddr_in6 v6{};
    v6.sin6_family = AF_INET6;
    v6.sin6_port = v4.sin_port;
    const bool isV4 = inet_pton(AF_INET, text.constData(), &v4.sin_addr) == 1;
    if (!isV4 && inet_pton(AF_INET6, text.constData(), &v6.sin6_addr) != 1) return -1;
    const int fd = socket(isV4 ? AF_INET : AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto* place = isV4 ? reinterpret_cast<sockaddr*>(&v4) : reinterpret_cast<sockaddr*>(&v6);
    if (call(fd, place, isV4 ? sizeof v4 : sizeof v6) == 0) return fd;
    close(fd);
    return -1;
}

}  // namespace

int ListenOnLoopback(int& port, const QString& address) {
    const int listener = SocketFor(bind, address, port);
    if (listener < 0 || listen(listener, 8) != 0) qFatal("no loopback port for a fake server");
    sockaddr_in6 place{};
    socklen_t length = sizeof place;
    getsockname(listener, reinterpret_cast<sockaddr*>(&place), &length);
    port = ntohs(place.sin6_port);  // where an IPv4 address has it too
    return listener;
}

int ConnectToLoopback(int port) {
    return SocketFor(connect, QStringLiteral("127.0.0.1"), port);
}

bool HasIpv6() {
    const int fd = SocketFor(bind, QStringLiteral("::1"), 0);
    if (fd >= 0) close(fd);
    return fd >= 0;
}

QByteArray ReceiveSome(int fd) {
    QByteArray bytes(PieceSize, 0);
    const ssize_t n = recv(fd, bytes.data(), static_cast<std::size_t>(bytes.size()), 0);
    bytes.truncate(std::max<ssize_t>(n, 0));
    return bytes;
}

bool SendAll(int fd, const QByteArray& bytes) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t n = send(fd, bytes.constData() + sent,
                               static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (n <= 0) return false;
        sent += n;
    }
    return true;
}

}  // namespace quarv::test
