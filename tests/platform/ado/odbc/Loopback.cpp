#include "platform/ado/odbc/Loopback.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace quarv::test {

namespace {

sockaddr_in LoopbackAddress(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<quint16>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

}  // namespace

int ListenOnLoopback(int& port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = LoopbackAddress(0);
    socklen_t length = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
        listen(listener, 8) != 0)
        qFatal("no loopback port for a fake server");
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    port = ntohs(address.sin_port);
    return listener;
}

int ConnectToLoopback(int port) {
    const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = LoopbackAddress(port);
    if (connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return fd;
    close(fd);
    return -1;
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
