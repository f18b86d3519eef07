#include "platform/ado/odbc/ConnectFailure.h"

#include <dlfcn.h>

#include <QFile>
#include <QFileInfo>
#include <array>

#include "platform/ado/ConnectProblems.h"

namespace quarv::ado::odbc {

namespace {

// The driver's own message numbers (its library's reference, "Client-side errors").
constexpr int ConnectionFailed = 20002;
constexpr int HostUnreached = 20009;
constexpr int HostUnknown = 20013;
constexpr int UnexpectedEnd = 20017;

// What a server says of a login that it does not take, by its number ("Database Engine events and
// errors"), beside DatabaseRefusals. A login refused for its database is reported with the refused
// login first, so those come before these, and the order of the rows decides.
struct Refusal {
    int number;
    ConnectProblem byName;          // the login of a user and a password
    ConnectProblem windowsAccount;  // the login that a ticket proves
};
constexpr std::array Refusals{
    Refusal{4064, ConnectProblem::OwnDatabaseRefused, ConnectProblem::OwnDatabaseRefused},
    Refusal{18452, ConnectProblem::NameLoginsRefused, ConnectProblem::WindowsAccountUntrusted},
    Refusal{18456, ConnectProblem::LoginRefused, ConnectProblem::WindowsLoginRefused},
};

DriverReport ReportOf(const DiagnosticRecord* record) {
    if (!record) return {};
    return {record->sqlState, record->IsFromDriver() ? 0 : record->nativeError};
}

// How the driver manager begins to speak of a library that it could not open; the path follows.
constexpr QLatin1String Unopened("Can't open lib '");

bool IsDriverManagersOwn(const DiagnosticRecord& record) {
    return record.message.startsWith(Unopened) || record.sqlState == QLatin1String("IM002") ||
           record.sqlState == QLatin1String("IM003") || record.sqlState == QLatin1String("IM004");
}

// Why the library that `record` says was not opened cannot be loaded; empty where there is none.
// The driver manager calls every such file "not found".
QString LoadError(const DiagnosticRecord& record) {
    const qsizetype start = Unopened.size();
    const QString path = record.message.mid(start, record.message.lastIndexOf(u'\'') - start);
    if (!path.startsWith(u'/') || !QFileInfo::exists(path)) return {};
    void* const library = dlopen(QFile::encodeName(path).constData(), RTLD_LAZY | RTLD_LOCAL);
    if (!library) return QString::fromLocal8Bit(dlerror());
    dlclose(library);
    return record.message;
}

// A library that exists but cannot be used is told apart from one that is not there.
DataError DriverFailure(const DiagnosticRecord& record, const QString& driver) {
    const bool unopened = record.message.startsWith(Unopened);
    const QString reason = unopened ? LoadError(record) : record.message;
    const bool missing = reason.isEmpty() || record.sqlState == QLatin1String("IM002");
    return missing ? MakeConnectError(ConnectProblem::DriverMissing, {driver}, ReportOf(&record))
                   : MakeConnectError(ConnectProblem::DriverBroken, {driver, reason},
                                      ReportOf(&record));
}

// The driver gives up before the login by itself, and does not say why: what it was answered is no
// pre-login message, no encryption was agreed on, or there is no ticket to show.
ConnectProblem UnsaidProblem(const ConnectionSettings& settings) {
    if (settings.integrated)
        return settings.encrypt ? ConnectProblem::WindowsAccountUnencrypted
                                : ConnectProblem::WindowsAccountFailed;
    return settings.encrypt ? ConnectProblem::EncryptionRefused
                            : ConnectProblem::NoCommonEncryption;
}

ConnectProblem WayProblem(const ConnectAttempt& attempt, const ConnectionSettings& settings) {
    const Diagnostics& said = *attempt.failure;
    const bool unreached = said.FindNative({HostUnreached});
    if (said.FindNative({HostUnknown})) return ConnectProblem::UnknownHost;
    if (attempt.timedOut || said.HasState("HYT00"))
        return settings.integrated && !unreached ? ConnectProblem::WindowsAccountTimedOut
                                                 : ConnectProblem::TimedOut;
    if (unreached) return ConnectProblem::NothingListens;
    // Where it met the conversation's end, it was for nothing of its own.
    const bool ended = said.FindNative({UnexpectedEnd});
    return said.FindNative({ConnectionFailed}) && !ended ? UnsaidProblem(settings)
                                                         : ConnectProblem::NotSqlServer;
}

}  // namespace

DataError ConnectFailure(const ConnectAttempt& attempt, const ConnectionSettings& settings,
                         int timeout) {
    const Diagnostics& said = *attempt.failure;
    for (const DiagnosticRecord& record : said.Records())
        if (IsDriverManagersOwn(record)) return DriverFailure(record, settings.driver);
    for (const int number : DatabaseRefusals)
        if (const auto* record = said.FindNative({number}))
            return MakeConnectError(ConnectProblem::DatabaseRefused, {record->message},
                                    ReportOf(record));
    for (const Refusal& refusal : Refusals)
        if (const auto* record = said.FindNative({refusal.number}))
            return MakeConnectError(settings.integrated ? refusal.windowsAccount : refusal.byName,
                                    {record->message}, ReportOf(record));
    const DiagnosticRecord* cause = said.Cause();
    const bool serverSpoke = cause && cause->nativeError != 0 && !cause->IsFromDriver();
    if (serverSpoke || (settings.forDriver && cause)) return said.StatementError(false);
    return MakeConnectError(
        WayProblem(attempt, settings),
        {settings.server.host, QString::number(settings.server.port), InSeconds(timeout)},
        ReportOf(cause));
}

bool IsUnreached(const ConnectAttempt& attempt) {
    return attempt.failure && attempt.failure->FindNative({HostUnreached}) != nullptr;
}

}  // namespace quarv::ado::odbc
