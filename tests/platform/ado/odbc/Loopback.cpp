#include "platform/ado/odbc/Loopback.h"

#include <arpa/inet.h>
#include <sys/socket.h>

namespace quarv::test {

int ListenOnLoopback(int& port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
        listen(listener, 8) != 0)
        qFatal("no loopback port for a fake server");
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
    port = ntohs(address.sin_port);
    return listener;
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
