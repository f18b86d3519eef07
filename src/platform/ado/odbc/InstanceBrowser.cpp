#include "platform/ado/odbc/InstanceBrowser.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QStringList>
#include <algorithm>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "base/UniqueFd.h"

namespace quarv::ado::odbc {

namespace {

constexpr const char* BrowserPort = "1434";
constexpr char AskForInstance = 0x04;  // CLNT_UCAST_INST
constexpr char AnswerMark = 0x05;      // SVR_RESP
constexpr int AskAgainAfter = 1000;    // milliseconds; a datagram may be lost
// The mark, the length and what may follow them in answer to one instance's name.
constexpr qsizetype LongestAnswer = 1 + 2 + 1024;

using Addresses = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

Addresses Resolve(const QByteArray& host) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.constData(), BrowserPort, &hints, &found) != 0) found = nullptr;
    return {found, freeaddrinfo};
}

// Nothing where the look-up, which knows no time limit itself, is not done by `deadline`. Its
// thread then frees what it finds.
std::optional<Addresses> ResolveInTime(const QString& host, const QDeadlineTimer& deadline) {
    std::packaged_task<Addresses()> lookUp([name = host.toUtf8()] { return Resolve(name); });
    std::future<Addresses> found = lookUp.get_future();
    std::thread(std::move(lookUp)).detach();
    if (found.wait_for(std::chrono::milliseconds(deadline.remainingTime())) !=
        std::future_status::ready)
        return std::nullopt;
    return found.get();
}

// A socket for each address, connected, so that only this host's answers arrive.
std::vector<UniqueFd> SocketsTo(const Addresses& addresses) {
    std::vector<UniqueFd> sockets;
    for (const addrinfo* at = addresses.get(); at; at = at->ai_next) {
        UniqueFd fd(socket(at->ai_family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (fd && connect(fd.Get(), at->ai_addr, at->ai_addrlen) == 0)
            sockets.push_back(std::move(fd));
    }
    return sockets;
}

bool IsForNow() {
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

// Waits for answers until `deadline`. Sockets where nobody listens are closed.
std::optional<int> Listen(std::vector<UniqueFd>& sockets, const QString& instance,
                          const QDeadlineTimer& deadline) {
    std::vector<pollfd> waiting;
    for (const UniqueFd& fd : sockets) waiting.push_back({fd.Get(), POLLIN, 0});
    if (poll(waiting.data(), waiting.size(), static_cast<int>(deadline.remainingTime())) < 1)
        return std::nullopt;
    for (std::size_t i = sockets.size(); i-- > 0;) {
        if (waiting[i].revents == 0) continue;
        QByteArray answer(LongestAnswer + 1, 0);  // what is longer shows
        const ssize_t got = recv(sockets[i].Get(), answer.data(), answer.size(), 0);
        answer.resize(std::max<ssize_t>(got, 0));
        if (const auto port = PortInAnswer(answer, instance)) return port;
        if (got < 0 && !IsForNow()) sockets.erase(sockets.begin() + static_cast<std::ptrdiff_t>(i));
    }
    return std::nullopt;
}

}  // namespace

std::optional<int> PortInAnswer(const QByteArray& answer, const QString& instance) {
    if (answer.size() < 3 || answer.size() > LongestAnswer || answer[0] != AnswerMark)
        return std::nullopt;
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

BrowserAnswer BrowseForPort(const QString& host, const QString& instance, int timeout) {
    const QDeadlineTimer deadline(timeout);
    const auto addresses = ResolveInTime(host, deadline);
    if (!addresses || !*addresses) return {.hostUnknown = true, .port = {}};
    const QByteArray question = QByteArray(1, AskForInstance) + instance.toLatin1() + '\0';
    std::vector<UniqueFd> sockets = SocketsTo(*addresses);
    while (!sockets.empty() && !deadline.hasExpired()) {
        for (const UniqueFd& fd : sockets)
            send(fd.Get(), question.constData(), question.size(), MSG_NOSIGNAL);
        const QDeadlineTimer again(std::min<qint64>(deadline.remainingTime(), AskAgainAfter));
        while (!sockets.empty() && !again.hasExpired())
            if (const auto port = Listen(sockets, instance, again)) return {.port = port};
    }
    return {};
}

}  // namespace quarv::ado::odbc
