#include "localdb/server/InstanceState.h"

#include <QHash>
#include <QRandomGenerator>
#include <array>

namespace quarv::localdb::server {

QByteArray InstanceState::ToBytes() const {
    return QStringLiteral("version=1\npid=%1\naddress=%2\nport=%3\nuser=%4\nsecret=%5\n")
        .arg(QString::number(pid), address, QString::number(port), user, secret)
        .toUtf8();
}

std::optional<InstanceState> InstanceState::Parse(const QByteArray& bytes) {
    QHash<QString, QString> values;
    for (const QString& line : QString::fromUtf8(bytes).split(u'\n')) {
        const qsizetype sign = line.indexOf(u'=');
        if (sign > 0) values.insert(line.left(sign), line.mid(sign + 1));
    }
    InstanceState state;
    bool pidIsNumber = false;
    bool portIsNumber = false;
    state.pid = values.value(QStringLiteral("pid")).toLongLong(&pidIsNumber);
    state.port = values.value(QStringLiteral("port")).toUShort(&portIsNumber);
    state.address = values.value(QStringLiteral("address"));
    state.user = values.value(QStringLiteral("user"));
    state.secret = values.value(QStringLiteral("secret"));
    const bool whole = values.value(QStringLiteral("version")) == u'1' && pidIsNumber &&
                       state.pid > 0 && portIsNumber && state.port > 0 &&
                       !state.address.isEmpty() && !state.user.isEmpty() && !state.secret.isEmpty();
    if (!whole) return std::nullopt;
    return state;
}

QString NewSecret() {
    std::array<quint32, 8> random;
    QRandomGenerator::system()->fillRange(random.data(), random.size());
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char*>(random.data()), sizeof random).toHex());
}

}  // namespace quarv::localdb::server
