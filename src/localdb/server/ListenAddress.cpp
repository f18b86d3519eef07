#include "localdb/server/ListenAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t length = 0;

    sockaddr* Get() { return reinterpret_cast<sockaddr*>(&storage); }
};

SocketAddress ToSocketAddress(const ListenAddress& where) {
    SocketAddress result;
    if (where.address.protocol() == QAbstractSocket::IPv6Protocol) {
        sockaddr_in6 v6{};
        v6.sin6_family = AF_INET6;
        v6.sin6_port = htons(where.port);
        const Q_IPV6ADDR bytes = where.address.toIPv6Address();
        std::memcpy(&v6.sin6_addr, &bytes, sizeof v6.sin6_addr);
        std::memcpy(&result.storage, &v6, sizeof v6);
        result.length = sizeof v6;
        return result;
    }
    sockaddr_in v4{};
    v4.sin_family = AF_INET;
    v4.sin_port = htons(where.port);
    v4.sin_addr.s_addr = htonl(where.address.toIPv4Address());
    std::memcpy(&result.storage, &v4, sizeof v4);
    result.length = sizeof v4;
    return result;
}

uint16_t PortOf(int descriptor) {
    SocketAddress bound;
    bound.length = sizeof bound.storage;
    ::getsockname(descriptor, bound.Get(), &bound.length);
    // The port stands at the same place in both families.
    sockaddr_in v4;
    std::memcpy(&v4, &bound.storage, sizeof v4);
    return ntohs(v4.sin_port);
}

}  // namespace

ListenAddress ListenAddress::Parse(const QString& text) {
    const qsizetype colon = text.lastIndexOf(u':');
    QString host = text.left(std::max<qsizetype>(colon, 0));
    bool isPort = false;
    ListenAddress result;
    result.port = text.mid(colon + 1).toUShort(&isPort);
    const bool bracketed = host.startsWith(u'[') && host.endsWith(u']');
    if (bracketed) host = host.mid(1, host.size() - 2);
    const bool isAddress = result.address.setAddress(host) && result.address.scopeId().isEmpty();
    const bool isV6 = isAddress && result.address.protocol() == QAbstractSocket::IPv6Protocol;
    if (colon < 0 || !isPort || !isAddress || isV6 != bracketed) {
        throw ServerError(ServerError::BadAddress, text);
    }
    return result;
}

QString ListenAddress::ToText() const {
    const bool isV6 = address.protocol() == QAbstractSocket::IPv6Protocol;
    return (isV6 ? QStringLiteral("[%1]:%2") : QStringLiteral("%1:%2"))
        .arg(address.toString())
        .arg(port);
}

UniqueFd ListenAddress::Listen() {
    SocketAddress where = ToSocketAddress(*this);
    const auto fail = [this] {
        throw ServerError(ServerError::CannotListen, ToText(), SystemText(errno));
    };
    UniqueFd socket(
        ::socket(where.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket) fail();
    const int yes = 1;
    (void)::setsockopt(socket.Get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (::bind(socket.Get(), where.Get(), where.length) != 0) fail();
    if (::listen(socket.Get(), SOMAXCONN) != 0) fail();
    port = PortOf(socket.Get());
    return socket;
}

}  // namespace quarv::localdb::server
