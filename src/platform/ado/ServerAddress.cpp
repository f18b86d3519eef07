#include "platform/ado/ServerAddress.h"

#include <arpa/inet.h>

#include <QStringList>
#include <QUrl>
#include <algorithm>

#include "platform/ado/ConnectProblems.h"

namespace quarv::ado {

namespace {

bool IsAsciiLetterOrDigit(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

bool IsMadeOf(QStringView text, QStringView extra) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [extra](QChar c) {
        return IsAsciiLetterOrDigit(c) || extra.contains(c);
    });
}

// An IPv6 address, a link-local one perhaps with its "%interface".
bool IsIpv6(const QString& text) {
    const qsizetype scope = text.indexOf(u'%');
    if (scope >= 0 && !IsMadeOf(QStringView(text).mid(scope + 1), u"_.-")) return false;
    in6_addr address{};
    return inet_pton(AF_INET6, text.left(scope).toLatin1().constData(), &address) == 1;
}

// Empty where `text` cannot be a host's name. Names beyond ASCII take their registered form.
QString HostName(const QString& text) {
    const bool ascii =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    const QString name = ascii ? text : QString::fromLatin1(QUrl::toAce(text));
    if (name.size() > 253 || !IsMadeOf(name, u"._-")) return {};
    if (name.startsWith(u'-') || name.startsWith(u'.') || name.contains(QStringLiteral("..")))
        return {};
    return name;
}

int Port(const QString& text, const QString& dataSource) {
    const QString digits = text.trimmed();
    const bool plain =
        !digits.isEmpty() && digits.size() <= 5 &&
        std::all_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    const int port = plain ? digits.toInt() : 0;
    if (port < 1 || port > 65535) throw MakeConnectError(ConnectProblem::BadPort, {dataSource});
    return port;
}

QString Host(const QString& text, const QString& dataSource) {
    const QString host = text.trimmed();
    if (host == QStringLiteral(".") ||
        host.compare(QStringLiteral("(local)"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("localhost");
    if (host.startsWith(u'[') && host.endsWith(u']') && IsIpv6(host.mid(1, host.size() - 2)))
        return host.mid(1, host.size() - 2);
    if (IsIpv6(host)) return host;
    const QString name = HostName(host);
    if (name.isEmpty()) throw MakeConnectError(ConnectProblem::BadServerName, {dataSource});
    return name;
}

QString LocalInstanceName(const QString& text) {
    const QString name = text.trimmed().toLower();
    if (name.size() > 64 || !IsMadeOf(name, u"_-"))
        throw MakeConnectError(ConnectProblem::BadInstanceName, {text.trimmed()});
    return name;
}

// The rest behind "tcp:"; every other known prefix is a protocol that is not spoken here.
QString WithoutProtocol(const QString& dataSource) {
    const QString text = dataSource.trimmed();
    if (text.startsWith(QStringLiteral("tcp:"), Qt::CaseInsensitive)) return text.mid(4).trimmed();
    for (const char* prefix : {"np:", "lpc:", "via:", "admin:"})
        if (text.startsWith(QLatin1String(prefix), Qt::CaseInsensitive))
            throw MakeConnectError(ConnectProblem::UnsupportedProtocol, {dataSource});
    if (text.startsWith(QStringLiteral("\\\\")))
        throw MakeConnectError(ConnectProblem::UnsupportedProtocol, {dataSource});
    return text;
}

}  // namespace

ServerAddress ServerAddress::Parse(const QString& dataSource) {
    static const QString localPrefix = QStringLiteral("(localdb)\\");
    const QString text = WithoutProtocol(dataSource);
    ServerAddress address;
    if (text.startsWith(localPrefix, Qt::CaseInsensitive)) {
        address.localInstance = LocalInstanceName(text.mid(localPrefix.size()));
        return address;
    }
    if (text.isEmpty()) {
        address.host = QStringLiteral("localhost");
        address.port = DefaultPort;
        return address;
    }
    const qsizetype comma = text.lastIndexOf(u',');
    const QString place = text.left(comma);  // all of it where there is no comma
    const qsizetype backslash = place.indexOf(u'\\');
    address.host = Host(place.left(backslash), dataSource);
    if (backslash >= 0) {
        address.instance = place.mid(backslash + 1).trimmed();
        if (address.instance.size() > 64 || !IsMadeOf(address.instance, u"_$#-"))
            throw MakeConnectError(ConnectProblem::BadServerName, {dataSource});
    }
    if (comma >= 0) {
        address.port = Port(text.mid(comma + 1), dataSource);
        address.instance.clear();  // a port says all; the instance's name is only for finding it
    } else if (address.instance.compare(QStringLiteral("MSSQLSERVER"), Qt::CaseInsensitive) == 0) {
        address.port = DefaultPort;
        address.instance.clear();
    } else if (backslash < 0) {
        address.port = DefaultPort;
    }
    return address;
}

}  // namespace quarv::ado
