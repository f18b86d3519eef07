// Why a connection cannot be opened, and the words for it: one table of causes, each saying in
// plain words what failed and what to check. Knows no driver; passwords never enter a message.
#pragma once

#include <QStringList>
#include <array>

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
    TimedOut,  // %3 the time limit, as InSeconds() says it
    NotSqlServer,
    NoCommonEncryption,         // before the login: not understood, or no TLS agreed on
    EncryptionRefused,          // likewise, where the string asks for encryption
    WindowsAccountFailed,       // no ticket, or none for this server
    WindowsAccountUnencrypted,  // likewise, or no TLS agreed on where the string asks for it
    WindowsAccountTimedOut,     // %3 as above; the server or the key server is silent
    InstanceNotFound,           // %2 the instance's name
    // What the server said: %1 its message
    LoginRefused,
    NameLoginsRefused,        // a user and a password, where the server trusts none
    WindowsLoginRefused,      // the ticket was good, its account is not
    WindowsAccountUntrusted,  // the ticket proved nothing
    DatabaseRefused,
    OwnDatabaseRefused,  // the one that the account begins in, where the string names none
    // This machine
    DriverMissing,         // %1 the driver's name
    DriverBroken,          // %1 the driver's name, %2 the reason, no full stop
    LocalServerMissing,    // %1 the program's path
    LocalServerFailed,     // %1 the instance's name, %2 the reason, %3 the log's path
    LocalServerUnreadable  // %1 the instance's name, %2 the file's path
};

// The server's numbers for a database that it does not have, or not for this account.
inline constexpr std::array DatabaseRefusals{4060, 911, 916};

// What a driver reported, where one did.
struct DriverReport {
    QString sqlState;
    int nativeError = 0;
};

// "1 second", "15 seconds".
QString InSeconds(int seconds);

// The error for `problem`, its words filled from `details`. Its number follows the cause, not the
// driver's report, which is kept for the curious.
DataError MakeConnectError(ConnectProblem problem, const QStringList& details = {},
                           const DriverReport& report = {});

}  // namespace quarv::ado
