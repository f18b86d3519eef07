#include "platform/ado/odbc/Loopback.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quarv::test {

namespace {

// A socket bound to a loopback address; -1 where that cannot be.
int BindTo(const QString& address, int port) {
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
    if (bind(fd, place, isV4 ? sizeof v4 : sizeof v6) == 0) return fd;
    close(fd);
    return -1;
}

}  // namespace

int ListenOnLoopback(int& port, const QString& address) {
    const int listener = BindTo(address, port);
    if (listener < 0 || listen(listener, 8) != 0) qFatal("no loopback port for a fake server");
    sockaddr_in6 place{};
    socklen_t length = sizeof place;
    getsockname(listener, reinterpret_cast<sockaddr*>(&place), &length);
    port = ntohs(place.sin6_port);  // where an IPv4 address has it too
    return listener;
}

bool HasIpv6() {
    const int fd = BindTo(QStringLiteral("::1"), 0);
    if (fd >= 0) close(fd);
    return fd >= 0;
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
