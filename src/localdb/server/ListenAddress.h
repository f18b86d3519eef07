// ListenAddress: where a server listens: an IPv4 or IPv6 address and a port, no names.
#pragma once

#include <QHostAddress>
#include <QString>

#include "base/UniqueFd.h"

namespace quarv::localdb::server {

struct ListenAddress {
    QHostAddress address = QHostAddress(QHostAddress::LocalHost);
    uint16_t port = 0;  // 0: one that is free

    // "127.0.0.1:1433", "[::1]:1433". Raises ServerError BadAddress.
    static ListenAddress Parse(const QString& text);
    QString ToText() const;

    // A socket that listens there; `port` becomes the one that it got. Raises ServerError
    // CannotListen.
    UniqueFd Listen();
};

}  // namespace quarv::localdb::server
