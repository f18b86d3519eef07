// InstanceState: what a client must know to reach a running instance, as its state file holds it:
// UTF-8 lines "key=value". It carries the secret that proves the user: the file is for the user
// alone.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace quarv::localdb::server {

struct InstanceState {
    qint64 pid = 0;
    QString address;
    uint16_t port = 0;
    QString user;
    QString secret;

    QByteArray ToBytes() const;
    // Nothing for another version of the file or one that is damaged.
    static std::optional<InstanceState> Parse(const QByteArray& bytes);

    friend bool operator==(const InstanceState&, const InstanceState&) = default;
};

// 256 random bits as hexadecimal digits.
QString NewSecret();

}  // namespace quarv::localdb::server
