// Why a connection cannot be opened, and the words for it: one table of causes, each saying in
// plain words what failed and what to check. Knows no driver; passwords never enter a message.
#pragma once

#include <QStringList>

#include "base/DataError.h"

namespace quarv::ado {

enum class ConnectProblem {
    // The connection string
    MalformedString,       // %1 what is wrong
    BadServerName,         // %1 the data source
    BadPort,               // %1 the data source
    UnsupportedProtocol,   // %1 the data source
    BadInstanceName,       // %1 the instance's name
    ValueNotCarried,       // %1 the keyword
    ValueTooLong,          // %1 the keyword
    BadSetting,            // %1 the keyword, %2 what it takes
    NoAccount,             // -
    CertificateUnchecked,  // -
    // The way to the server: %1 host, %2 port
    UnknownHost,
    NothingListens,
    TimedOut,  // %3 seconds
    NotSqlServer,
    WindowsAccountFailed,    // no ticket, or none for this server
    WindowsAccountTimedOut,  // %3 seconds; the server or the key server is silent
    InstanceNotFound,        // %2 the instance's name
    // What the server said: %1 its message
    LoginRefused,
    DatabaseRefused,
    // This machine
    DriverMissing,         // %1 the driver's name
    DriverBroken,          // %1 the driver's name, %2 the driver manager's message
    LocalServerMissing,    // %1 the program's path
    LocalServerFailed,     // %1 the instance's name, %2 the reason, %3 the log's path
    LocalServerUnreadable  // %1 the instance's name, %2 the file's path
};

// What a driver reported, where one did.
struct DriverReport {
    QString sqlState;
    int nativeError = 0;
};

// The error for `problem`, its words filled from `details`. Its number follows the cause, not the
// driver's report, which is kept for the curious.
DataError MakeConnectError(ConnectProblem problem, const QStringList& details = {},
                           const DriverReport& report = {});

}  // namespace quarv::ado
