// What is said of a connection that cannot be opened, letter for letter, each cause against a
// server that behaves so.
#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>
#include <iostream>

#include "platform/ado/odbc/FakeResolver.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using Manners = FakeServer::Manners;
using Encryption = FakeServer::Encryption;

constexpr int Unspecified = -2147467259;
constexpr int AuthenticationFailed = -2147217843;

constexpr const char* Encrypted = "Use Encryption for Data=yes;Trust Server Certificate=yes";

constexpr const char* NotSqlServer =
    "What answers at \"127.0.0.1\", port %1, ended the conversation before the login was done or "
    "does not speak as a SQL Server does. Check the port, what the server's own log says, and "
    "whether it demands strict encryption, which this computer does not take.";
constexpr const char* NoCommonEncryption =
    "What answers at \"127.0.0.1\", port %1, does not speak as a SQL Server does, or protects the "
    "login in a way that this computer does not take. Check the port, and on the server its "
    "certificate and its versions of TLS.";
constexpr const char* EncryptionRefused =
    "The connection to \"127.0.0.1\", port %1, could not be encrypted as Use Encryption for Data "
    "asks: what answers there offers no encryption, or only in a way that this computer does not "
    "take. Check the port, and on the server its certificate and its versions of TLS.";
constexpr const char* TimedOut =
    "\"127.0.0.1\", port %1, did not answer as a SQL Server within 1 second. Check that it is the "
    "server's port, that the server is well, and that no firewall stands between.";

struct WayCase {
    const char* name;
    Manners manners;
    const char* more;  // of the connection string
    const char* words;
};

const WayCase Ways[] = {
    {"ClosesUnanswered", Manners::ClosesUnanswered, "", NotSqlServer},
    {"ClosesUnansweredEncrypted", Manners::ClosesUnanswered, Encrypted, NotSqlServer},
    {"Silent", Manners::Silent, "Connect Timeout=1", TimedOut},
    {"Trickles", Manners::Trickles, "Connect Timeout=1", TimedOut},
    {"GarbageTls", Manners::GarbageTls, "", NoCommonEncryption},
    {"TlsAlert", Manners::TlsAlert, "", NoCommonEncryption},
    {"GarbageTlsEncrypted", Manners::GarbageTls, Encrypted, EncryptionRefused},
    {"TlsAlertEncrypted", Manners::TlsAlert, Encrypted, EncryptionRefused},
    {"OffersNoEncryption", Manners::Good, Encrypted, EncryptionRefused},
    {"SilentTls", Manners::SilentTls, "Connect Timeout=1", TimedOut},
    {"ClosesAfterPreLogin", Manners::ClosesAfterPreLogin, "", NotSqlServer},
    {"SilentAfterPreLogin", Manners::SilentAfterPreLogin, "Connect Timeout=1", TimedOut},
};

class WayTest : public testing::TestWithParam<WayCase> {};

struct RefusalCase {
    const char* name;
    QByteArray tokens;
    int number;
    int native;
    const char* words;
};

constexpr const char* CannotOpen =
    "Cannot open database \"nosuch\" requested by the login. The login failed.";
constexpr const char* DoesNotExist =
    "Database 'nosuch' does not exist. Make sure that the name is entered correctly.";
constexpr const char* CannotOpenSaid =
    "Cannot open database \"nosuch\" requested by the login. The login failed. Check the "
    "database's name and that this account may open it.";
constexpr const char* DoesNotExistSaid =
    "Database 'nosuch' does not exist. Make sure that the name is entered correctly. Check the "
    "database's name and that this account may open it.";

const RefusalCase Refusals[] = {
    {"Login", FakeTds::LoginFailed("sa"), AuthenticationFailed, 18456,
     "Login failed for user 'sa'. Check the user name and the password."},
    {"LoginByName",
     FakeTds()
         .Error(18452,
                "Login failed for user 'sa'. The user is not associated with a trusted SQL Server "
                "connection.")
         .DoneError(),
     AuthenticationFailed, 18452,
     "Login failed for user 'sa'. The user is not associated with a trusted SQL Server connection. "
     "The server may let Windows accounts in only. Integrated Security=SSPI shows it yours."},
    {"Database", FakeTds().Error(4060, CannotOpen).DoneError(), Unspecified, 4060, CannotOpenSaid},
    {"DatabaseBeforeLogin", FakeTds().Error(4060, CannotOpen).Raw(FakeTds::LoginFailed("sa")),
     Unspecified, 4060, CannotOpenSaid},
    {"DatabaseBehindLogin",
     FakeTds().Error(18456, "Login failed for user 'sa'.").Error(4060, CannotOpen).DoneError(),
     Unspecified, 4060, CannotOpenSaid},
    {"NoDatabase", FakeTds().Error(911, DoesNotExist).DoneError(), Unspecified, 911,
     DoesNotExistSaid},
    {"NoDatabaseBeforeLogin", FakeTds().Error(911, DoesNotExist).Raw(FakeTds::LoginFailed("sa")),
     Unspecified, 911, DoesNotExistSaid},
    {"NoDatabaseBehindLogin",
     FakeTds().Error(18456, "Login failed for user 'sa'.").Error(911, DoesNotExist).DoneError(),
     Unspecified, 911, DoesNotExistSaid},
    {"ClosedDatabase",
     FakeTds()
         .Error(916,
                "The server principal \"sa\" is not able to access the database \"nosuch\" under "
                "the current security context.")
         .DoneError(),
     Unspecified, 916,
     "The server principal \"sa\" is not able to access the database \"nosuch\" under the current "
     "security context. Check the database's name and that this account may open it."},
    {"OwnDatabase",
     FakeTds()
         .Error(4064, "Cannot open user default database. Login failed.")
         .Raw(FakeTds::LoginFailed("sa")),
     Unspecified, 4064,
     "Cannot open user default database. Login failed. The database that the account begins in is "
     "missing or closed to it. Name another one as Initial Catalog."},
    // What has no row of its own is said in the server's words.
    {"Disabled",
     FakeTds()
         .Error(18470, "Login failed for user 'sa'. Reason: The account is disabled.")
         .DoneError(),
     -2147217900, 18470, "Login failed for user 'sa'. Reason: The account is disabled."},
};

class RefusalTest : public testing::TestWithParam<RefusalCase> {};

std::string NameOfCase(const auto& test) {
    return test.param.name;
}

// Ends the program with the words for a connection for which the driver FreeTDS is listed with
// `library`, so that a driver which this process has loaded does not count.
[[noreturn]] void SayHowDriverFails(const QString& library) {
    const QTemporaryDir folder;
    QFile list(folder.filePath(QStringLiteral("odbcinst.ini")));
    if (!list.open(QFile::WriteOnly)) std::exit(1);
    if (!library.isEmpty()) list.write("[FreeTDS]\nDriver=" + library.toUtf8() + "\n");
    list.close();
    qputenv("ODBCSYSINI", folder.path().toUtf8());
    qputenv("ODBCINSTINI", "odbcinst.ini");
    std::cerr << qPrintable(
        OpenError(QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1;User Id=a;Password=b"))
            .Description());
    std::exit(0);
}

void ExpectDriverWords(const QString& library, const QString& words) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(SayHowDriverFails(library), testing::ExitedWithCode(0),
                testing::EndsWith(words.toStdString()));
}

constexpr const char* DriverMissing =
    "The ODBC driver \"FreeTDS\" is not installed on this computer. For SQL Server, install the "
    "package tdsodbc. Where it is installed, run \"odbcinst -q -d\" to see whether the driver is "
    "registered.";

}  // namespace

TEST_P(WayTest, IsToldInWords) {
    const FakeServer server(GetParam().manners);
    const DataError error = OpenError(server.ConnectionString(GetParam().more));
    EXPECT_EQ(error.Number(), Unspecified);
    EXPECT_EQ(error.Description(), QString(GetParam().words).arg(server.Port()));
}

INSTANTIATE_TEST_SUITE_P(Servers, WayTest, testing::ValuesIn(Ways),
                         [](const auto& test) { return NameOfCase(test); });

TEST_P(RefusalTest, IsToldInTheServersWordsAndOurs) {
    const FakeServer server(FakeServer::Settings{.refusal = GetParam().tokens});
    const DataError error = OpenError(server.ConnectionString("Initial Catalog=nosuch"));
    EXPECT_EQ(error.Number(), GetParam().number);
    EXPECT_EQ(error.NativeError(), GetParam().native);
    EXPECT_EQ(error.Description(), QString(GetParam().words));
}

INSTANTIATE_TEST_SUITE_P(Servers, RefusalTest, testing::ValuesIn(Refusals),
                         [](const auto& test) { return NameOfCase(test); });

TEST(ConnectFailure, RefusedLoginIsToldBehindEncryptionToo) {
    for (const Encryption encryption : {Encryption::LoginOnly, Encryption::Demanded}) {
        const FakeServer server(
            FakeServer::Settings{.encryption = encryption, .refusal = FakeTds::LoginFailed("sa")});
        EXPECT_EQ(OpenError(server.ConnectionString(Encrypted)).Description(),
                  QStringLiteral("Login failed for user 'sa'. Check the user name and the "
                                 "password."));
    }
}

TEST(ConnectFailure, NothingListening) {
    int port = 0;
    { port = FakeServer(Manners::Good).Port(); }
    const DataError error =
        OpenError(QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User Id=a;Password=b")
                      .arg(port));
    EXPECT_EQ(error.Number(), Unspecified);
    EXPECT_EQ(error.Description(),
              QStringLiteral("Nothing answers at \"127.0.0.1\", port %1. Check that SQL Server "
                             "runs there, that it takes TCP/IP connections on this port, and that "
                             "no firewall stands between.")
                  .arg(port));
}

TEST(ConnectFailure, UnknownHost) {
    const FakeResolver resolver(FakeResolver::Names{{"nosuch.quarv.test", {}}});
    for (const char* source : {"nosuch.quarv.test", "nosuch.quarv.test\\EXPRESS"}) {
        const DataError error = OpenError(
            QStringLiteral("Provider=sqloledb;Data Source=%1;User Id=a;Password=b").arg(source));
        EXPECT_EQ(error.Number(), Unspecified);
        EXPECT_EQ(error.Description(),
                  QStringLiteral("The server \"nosuch.quarv.test\" could not be found. Check how "
                                 "its name is written and that this computer's network knows it."))
            << source;
    }
}

TEST(ConnectFailure, DriverThatTheStringNamesIsNotInstalled) {
    const DataError error = OpenError(QStringLiteral("Driver={No Such Driver};Server=h;"));
    EXPECT_EQ(
        error.Description(),
        QStringLiteral("The ODBC driver \"No Such Driver\" is not installed on this computer. "
                       "For SQL Server, install the package tdsodbc. Where it is installed, "
                       "run \"odbcinst -q -d\" to see whether the driver is registered."));
}

TEST(ConnectFailureDeathTest, DriverIsNotListed) {
    ExpectDriverWords({}, DriverMissing);
}

TEST(ConnectFailureDeathTest, DriversLibraryIsNotThere) {
    ExpectDriverWords(QStringLiteral("/nonexistent/libtdsodbc.so"), DriverMissing);
}

TEST(ConnectFailureDeathTest, DriversLibraryIsNone) {
    ExpectDriverWords(QStringLiteral("/proc/self/status"),
                      QStringLiteral("The ODBC driver \"FreeTDS\" is installed and cannot be used "
                                     "(/proc/self/status: invalid ELF header). For SQL Server, "
                                     "install the package tdsodbc anew."));
}

}  // namespace quarv::test
