#include "platform/ado/odbc/ConnectFailure.h"

#include "platform/ado/ConnectProblems.h"

namespace quarv::ado::odbc {

namespace {

// The driver's own message numbers (its library's reference, "Client-side errors").
constexpr int HostUnreached = 20009;
constexpr int HostUnknown = 20013;
constexpr int UnexpectedEnd = 20017;

// The server's: database missing or closed to this account, login refused.
constexpr int DatabaseMissing = 911;
constexpr int DatabaseNotOpened = 4060;
constexpr int LoginFailed = 18456;

DriverReport ReportOf(const DiagnosticRecord* record) {
    if (!record) return {};
    return {record->sqlState, record->IsFromDriver() ? 0 : record->nativeError};
}

bool IsDriverManagersOwn(const DiagnosticRecord& record) {
    return record.message.startsWith(QLatin1String("Can't open lib")) ||
           record.sqlState == QLatin1String("IM002") || record.sqlState == QLatin1String("IM003") ||
           record.sqlState == QLatin1String("IM004");
}

// A library that exists but cannot be loaded is told apart from one that is not there.
DataError DriverFailure(const DiagnosticRecord& record, const QString& driver) {
    const bool missing = record.message.contains(QLatin1String("file not found")) ||
                         record.sqlState == QLatin1String("IM002");
    return missing ? MakeConnectError(ConnectProblem::DriverMissing, {driver}, ReportOf(&record))
                   : MakeConnectError(ConnectProblem::DriverBroken, {driver, record.message},
                                      ReportOf(&record));
}

ConnectProblem WayProblem(const ConnectAttempt& attempt, bool integrated) {
    const Diagnostics& said = *attempt.failure;
    if (said.FindNative({HostUnknown})) return ConnectProblem::UnknownHost;
    if (attempt.timedOut || said.HasState("HYT00"))
        return integrated ? ConnectProblem::WindowsAccountTimedOut : ConnectProblem::TimedOut;
    if (said.FindNative({HostUnreached})) return ConnectProblem::NothingListens;
    // A ticket is asked for before the login is sent; where there is none, the driver gives up by
    // itself and does not say why. Where it met the conversation's end, it was not for a ticket.
    if (integrated && !said.FindNative({UnexpectedEnd}))
        return ConnectProblem::WindowsAccountFailed;
    return ConnectProblem::NotSqlServer;
}

}  // namespace

DataError ConnectFailure(const ConnectAttempt& attempt, const ConnectionSettings& settings,
                         int timeout) {
    const Diagnostics& said = *attempt.failure;
    for (const DiagnosticRecord& record : said.Records())
        if (IsDriverManagersOwn(record)) return DriverFailure(record, settings.driver);
    // A login refused for its database is reported with the refused login first.
    if (const auto* record = said.FindNative({DatabaseNotOpened, DatabaseMissing}))
        return MakeConnectError(ConnectProblem::DatabaseRefused, {record->message},
                                ReportOf(record));
    if (const auto* record = said.FindNative({LoginFailed}))
        return MakeConnectError(ConnectProblem::LoginRefused, {record->message}, ReportOf(record));
    const DiagnosticRecord* cause = said.Cause();
    const bool serverSpoke = cause && cause->nativeError != 0 && !cause->IsFromDriver();
    if (serverSpoke || (settings.forDriver && cause)) return said.StatementError(false);
    return MakeConnectError(
        WayProblem(attempt, settings.integrated),
        {settings.server.host, QString::number(settings.server.port), QString::number(timeout)},
        ReportOf(cause));
}

bool IsUnreached(const ConnectAttempt& attempt) {
    return attempt.failure && attempt.failure->FindNative({HostUnreached}) != nullptr;
}

}  // namespace quarv::ado::odbc
