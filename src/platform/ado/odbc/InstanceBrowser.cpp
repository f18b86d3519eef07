#include "platform/ado/odbc/InstanceBrowser.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <QStringList>
#include <algorithm>
#include <memory>

#include "base/UniqueFd.h"

namespace quarv::ado::odbc {

namespace {

constexpr const char* BrowserPort = "1434";
constexpr char AskForInstance = 0x04;  // CLNT_UCAST_INST
constexpr char AnswerMark = 0x05;      // SVR_RESP
constexpr int AskAgainAfter = 1000;    // milliseconds; a datagram may be lost

using Addresses = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

Addresses Resolve(const QString& host) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.toUtf8().constData(), BrowserPort, &hints, &found) != 0) found = nullptr;
    return {found, freeaddrinfo};
}

// What the browser at `address` answers within `wait` milliseconds; empty where it does not.
QByteArray Ask(const addrinfo& address, const QByteArray& question, int wait) {
    const UniqueFd fd(socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, 0));
    // Connected, so that only this host's answers arrive.
    if (!fd || connect(fd.Get(), address.ai_addr, address.ai_addrlen) != 0) return {};
    if (send(fd.Get(), question.constData(), question.size(), MSG_NOSIGNAL) < 0) return {};
    pollfd waiting{fd.Get(), POLLIN, 0};
    if (poll(&waiting, 1, wait) != 1) return {};
    QByteArray answer(65536, 0);
    const ssize_t got = recv(fd.Get(), answer.data(), answer.size(), 0);
    answer.resize(std::max<ssize_t>(got, 0));
    return answer;
}

}  // namespace

std::optional<int> PortInAnswer(const QByteArray& answer, const QString& instance) {
    if (answer.size() < 3 || answer[0] != AnswerMark) return std::nullopt;
    // name;value;name;value;...;; where the length in the header may be wrong in old servers
    const QStringList parts = QString::fromLatin1(answer.mid(3)).split(u';');
    bool ours = false;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        if (parts[i].compare(QLatin1String("InstanceName"), Qt::CaseInsensitive) == 0)
            ours = parts[i + 1].compare(instance, Qt::CaseInsensitive) == 0;
        if (ours && parts[i].compare(QLatin1String("tcp"), Qt::CaseInsensitive) == 0) {
            bool ok = false;
            const int port = parts[i + 1].toInt(&ok);
            if (ok && port > 0 && port <= 65535) return port;
        }
    }
    return std::nullopt;
}

std::optional<int> BrowseForPort(const QString& host, const QString& instance, int timeout) {
    QElapsedTimer clock;
    clock.start();
    const Addresses addresses = Resolve(host);
    const QByteArray question = QByteArray(1, AskForInstance) + instance.toLatin1() + '\0';
    while (clock.elapsed() < timeout) {
        for (const addrinfo* at = addresses.get(); at; at = at->ai_next) {
            const int wait =
                std::clamp<int>(timeout - static_cast<int>(clock.elapsed()), 0, AskAgainAfter);
            const auto port = PortInAnswer(Ask(*at, question, wait), instance);
            if (port) return port;
        }
        if (!addresses) return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace quarv::ado::odbc
