#include "platform/ado/odbc/Connector.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <QDir>
#include <QElapsedTimer>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

namespace quarv::ado::odbc {

namespace {

// The driver's limit comes first, so that its own report arrives where it can.
constexpr std::chrono::milliseconds Grace(300);
// How long a connection that was cut off may take to notice. Both together stay below the second
// that a failure may come late.
constexpr std::chrono::milliseconds CutOff(500);

// One attempt, shared by the caller and its thread: whoever is last frees it.
struct Attempt {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    ConnectAttempt result;
};

void Run(const QString& odbcString, int timeout, ConnectAttempt& result) {
    result.environment = EnvironmentHandle(nullptr);
    SQLSetEnvAttr(result.environment.get(), SQL_ATTR_ODBC_VERSION,
                  reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), SQL_IS_INTEGER);
    result.connection = ConnectionHandle(result.environment.get());
    if (!result.connection) {
        result.failure = Diagnostics(SQL_HANDLE_ENV, result.environment.get());
        return;
    }
    const SQLHDBC handle = result.connection.get();
    if (timeout > 0)
        SQLSetConnectAttr(
            handle, SQL_ATTR_LOGIN_TIMEOUT,
            reinterpret_cast<SQLPOINTER>(static_cast<quintptr>((timeout + 999) / 1000)),
            SQL_IS_UINTEGER);
    auto* text = reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(odbcString.utf16()));
    const SQLRETURN rc =
        SQLDriverConnectW(handle, nullptr, text, static_cast<SQLSMALLINT>(odbcString.size()),
                          nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(rc)) result.failure = Diagnostics(SQL_HANDLE_DBC, handle);
}

// The open TCP sockets of this process whose other side is `port`.
std::set<int> SocketsTo(int port) {
    std::set<int> sockets;
    const QStringList entries =
        QDir(QStringLiteral("/proc/self/fd"))
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& entry : entries) {
        const int fd = entry.toInt();
        sockaddr_storage peer{};
        socklen_t length = sizeof peer;
        if (getpeername(fd, reinterpret_cast<sockaddr*>(&peer), &length) != 0) continue;
        in_port_t peerPort = 0;
        if (peer.ss_family == AF_INET) peerPort = reinterpret_cast<sockaddr_in*>(&peer)->sin_port;
        if (peer.ss_family == AF_INET6)
            peerPort = reinterpret_cast<sockaddr_in6*>(&peer)->sin6_port;
        if (ntohs(peerPort) == port) sockets.insert(fd);
    }
    return sockets;
}

void CutSocketsOff(int port, const std::set<int>& except) {
    for (const int fd : SocketsTo(port))
        if (!except.contains(fd)) shutdown(fd, SHUT_RDWR);
}

}  // namespace

ConnectAttempt Connect(const QString& odbcString, int timeout, int port) {
    const auto attempt = std::make_shared<Attempt>();
    if (timeout <= 0) {
        Run(odbcString, 0, attempt->result);
        return std::move(attempt->result);
    }
    QElapsedTimer clock;
    clock.start();
    const std::set<int> before = port > 0 ? SocketsTo(port) : std::set<int>();
    std::thread([attempt, odbcString, timeout] {
        Run(odbcString, timeout, attempt->result);
        const std::lock_guard lock(attempt->mutex);
        attempt->done = true;
        attempt->finished.notify_one();
    }).detach();

    std::unique_lock lock(attempt->mutex);
    const auto isDone = [&attempt] { return attempt->done; };
    const bool inTime =
        attempt->finished.wait_for(lock, std::chrono::milliseconds(timeout) + Grace, isDone);
    if (!inTime && port > 0) {
        CutSocketsOff(port, before);
        attempt->finished.wait_for(lock, CutOff, isDone);
    }
    ConnectAttempt result;
    if (attempt->done) result = std::move(attempt->result);
    // A thread that still hangs (in a name's look-up) keeps the attempt and frees it when it ends.
    if (!inTime && !result.failure) result.failure = Diagnostics({});
    // The driver says of a connection that nobody took in time just that it was not taken.
    result.timedOut = !inTime || clock.hasExpired(timeout);
    return result;
}

}  // namespace quarv::ado::odbc
