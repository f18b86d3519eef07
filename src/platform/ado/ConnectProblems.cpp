#include "platform/ado/ConnectProblems.h"

#include <algorithm>
#include <array>

#include "platform/ado/DataErrors.h"

namespace quarv::ado {

namespace {

constexpr int AuthenticationFailed = -2147217843;

struct Words {
    ConnectProblem problem;
    int number;
    const char16_t* text;
};

using enum ConnectProblem;

constexpr std::array Table{
    Words{MalformedString, UnspecifiedDataError, u"The connection string is not well formed: %1"},
    Words{BadServerName, UnspecifiedDataError,
          u"\"%1\" is not a server's name. Write host, host,port, host\\instance or "
          u"(localdb)\\name."},
    Words{BadPort, UnspecifiedDataError, u"The port in \"%1\" is not a number from 1 to 65535."},
    Words{UnsupportedProtocol, UnspecifiedDataError,
          u"\"%1\" asks for a protocol that is not available here. Servers are reached by TCP/IP: "
          u"leave the prefix out or write \"tcp:\"."},
    Words{BadInstanceName, UnspecifiedDataError,
          u"\"%1\" is not the name of a local instance. Its name has 1 to 64 of the characters a "
          u"to z, 0 to 9, \"_\" and \"-\"."},
    Words{ValueNotCarried, UnspecifiedDataError,
          u"The value of \"%1\" holds characters that the ODBC driver cannot be given: \"};\", a "
          u"null character or half of a surrogate pair."},
    Words{ValueTooLong, UnspecifiedDataError,
          u"The value of \"%1\" is longer than the 128 characters that a server takes."},
    Words{BadSetting, UnspecifiedDataError, u"The value of \"%1\" must be %2."},
    Words{NoAccount, AuthenticationFailed,
          u"The connection string names no account: give User Id and Password, or Integrated "
          u"Security=SSPI for the Windows account."},
    Words{CertificateUnchecked, UnspecifiedDataError,
          u"The connection can be encrypted, but the driver cannot check the server's certificate. "
          u"Add Trust Server Certificate=yes to accept the certificate that the server shows."},
    Words{UnknownHost, UnspecifiedDataError,
          u"The server \"%1\" could not be found. Check how its name is written and that this "
          u"computer's network knows it."},
    Words{NothingListens, UnspecifiedDataError,
          u"Nothing answers at \"%1\", port %2. Check that SQL Server runs there, that it takes "
          u"TCP/IP connections on this port, and that no firewall stands between."},
    Words{TimedOut, UnspecifiedDataError,
          u"\"%1\", port %2, did not answer as a SQL Server within %3. Check that it is the "
          u"server's port, that the server is well, and that no firewall stands between."},
    Words{NotSqlServer, UnspecifiedDataError,
          u"What answers at \"%1\", port %2, ended the conversation before the login was done or "
          u"does not speak as a SQL Server does. Check the port, what the server's own log says, "
          u"and whether it demands strict encryption, which this computer does not take."},
    Words{NoCommonEncryption, UnspecifiedDataError,
          u"What answers at \"%1\", port %2, does not speak as a SQL Server does, or protects the "
          u"login in a way that this computer does not take. Check the port, and on the server its "
          u"certificate and its versions of TLS."},
    Words{EncryptionRefused, UnspecifiedDataError,
          u"The connection to \"%1\", port %2, could not be encrypted as Use Encryption for Data "
          u"asks: what answers there offers no encryption, or only in a way that this computer "
          u"does not take. Check the port, and on the server its certificate and its versions of "
          u"TLS."},
    Words{WindowsAccountFailed, UnspecifiedDataError,
          u"The server \"%1\", port %2, could not be shown a Kerberos ticket of the Windows "
          u"account. Run klist to see whether you hold a ticket that is still valid, and kinit to "
          u"get one. If you hold one, name the server in full, and check that Kerberos knows its "
          u"service MSSQLSvc/%1:%2 and that it is a SQL Server."},
    Words{WindowsAccountUnencrypted, UnspecifiedDataError,
          u"The server \"%1\", port %2, could not be shown a Kerberos ticket of the Windows "
          u"account, or the connection could not be encrypted as Use Encryption for Data asks. Run "
          u"klist to see whether you hold a ticket that is still valid, and kinit to get one. If "
          u"you hold one, check that the server offers encryption and that Kerberos knows its "
          u"service MSSQLSvc/%1:%2."},
    Words{WindowsAccountTimedOut, UnspecifiedDataError,
          u"\"%1\", port %2, did not let the Windows account in within %3. Check that it is the "
          u"server's port, that the server and the Kerberos server (KDC) are well, and that no "
          u"firewall stands between."},
    Words{InstanceNotFound, UnspecifiedDataError,
          u"The server \"%1\" did not say where its instance \"%2\" listens. Check the instance's "
          u"name, that SQL Server Browser runs there and that the instance takes TCP/IP "
          u"connections, or write host,port."},
    Words{LoginRefused, AuthenticationFailed, u"%1 Check the user name and the password."},
    Words{NameLoginsRefused, AuthenticationFailed,
          u"%1 The server may let Windows accounts in only. Integrated Security=SSPI shows it "
          u"yours."},
    Words{WindowsLoginRefused, AuthenticationFailed,
          u"%1 The server was shown a Kerberos ticket, but does not let its account in. Run klist "
          u"to see whose ticket it is, and check that the server has a login for this account."},
    Words{WindowsAccountUntrusted, AuthenticationFailed,
          u"%1 Run klist to see whose ticket was shown. Check that the server trusts this realm "
          u"and that it holds the present key of its service."},
    Words{DatabaseRefused, UnspecifiedDataError,
          u"%1 Check the database's name and that this account may open it."},
    Words{OwnDatabaseRefused, UnspecifiedDataError,
          u"%1 The database that the account begins in is missing or closed to it. Name another "
          u"one as Initial Catalog."},
    Words{DriverMissing, UnspecifiedDataError,
          u"The ODBC driver \"%1\" is not installed on this computer. For SQL Server, install the "
          u"package tdsodbc. Where it is installed, run \"odbcinst -q -d\" to see whether the "
          u"driver is registered."},
    Words{DriverBroken, UnspecifiedDataError,
          u"The ODBC driver \"%1\" is installed and cannot be used (%2). For SQL Server, install "
          u"the package tdsodbc anew."},
    Words{LocalServerMissing, UnspecifiedDataError,
          u"The local server's program was not found at \"%1\". Check that Quarv is installed "
          u"whole."},
    Words{LocalServerFailed, UnspecifiedDataError,
          u"The local instance \"%1\" could not be started: %2 Its log is \"%3\"."},
    Words{LocalServerUnreadable, UnspecifiedDataError,
          u"The local instance \"%1\" runs, but \"%2\", which says how to reach it, cannot be "
          u"used. End the instance and connect again."},
};

// UTF-16 units.
constexpr int LongestName = 260;

// What stands at `mark` in the words is a name that somebody typed, which may be endless, and no
// message: a quote or a slash is before it.
bool IsName(const char16_t* words, const char16_t* mark) {
    return mark != words && (mark[-1] == u'"' || mark[-1] == u'/');
}

QString Shortened(const QString& name) {
    if (name.size() <= LongestName) return name;
    // A pair of surrogates is one character.
    return name.left(LongestName - (name[LongestName].isLowSurrogate() ? 1 : 0)) + u'\u2026';
}

}  // namespace

QString InSeconds(int seconds) {
    return seconds == 1 ? QStringLiteral("1 second") : QStringLiteral("%1 seconds").arg(seconds);
}

DataError MakeConnectError(ConnectProblem problem, const QStringList& details,
                           const DriverReport& report) {
    const auto found = std::find_if(Table.begin(), Table.end(), [problem](const Words& candidate) {
        return candidate.problem == problem;
    });
    // Details may hold "%1" themselves, so the marks are filled in one walk over the table's text.
    QString text;
    for (const char16_t* at = found->text; *at; ++at) {
        const int index = *at == u'%' ? at[1] - u'1' : -1;
        if (index >= 0 && index < 9) {
            const QString detail = details.value(index);
            text += IsName(found->text, at) ? Shortened(detail) : detail;
            ++at;
        } else {
            text += QChar(*at);
        }
    }
    return DataError(found->number, text, report.sqlState, report.nativeError);
}

}  // namespace quarv::ado
