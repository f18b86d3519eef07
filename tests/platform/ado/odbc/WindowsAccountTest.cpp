// Logins of the Windows account against a realm and a server that read what the driver sends.
#include <QDeadlineTimer>
#include <QDir>
#include <QThread>

#include "platform/ado/odbc/KerberosRealm.h"
#include "platform/ado/odbc/Open.h"
#include "platform/ado/odbc/TicketVerifier.h"

namespace quarv::test {

namespace {

using Manners = FakeServer::Manners;

constexpr int Unspecified = -2147467259;
constexpr int AuthenticationFailed = -2147217843;

const QString Encrypted =
    QStringLiteral("Use Encryption for Data=yes;Trust Server Certificate=yes");

// A server that lets in who holds a ticket of the realm. The realm does not know it by itself.
class RealmServer : public FakeServer {
  public:
    explicit RealmServer(const KerberosRealm& realm, Settings settings = {})
        : FakeServer(WithVerifier(realm, std::move(settings))) {}

    QString ConnectionString(const QString& more = {}) const {
        return QStringLiteral(
                   "Provider=sqloledb;Data Source=127.0.0.1,%1;Integrated Security=SSPI;")
                   .arg(Port()) +
               more;
    }

  private:
    static Settings WithVerifier(const KerberosRealm& realm, Settings settings) {
        settings.verifier = TicketVerifier(realm.Keytab());
        return settings;
    }
};

DataError OpenError(const RealmServer& server, const QString& more = {}) {
    return test::OpenError(server.ConnectionString(more));
}

qsizetype ThreadCount() {
    return QDir(QStringLiteral("/proc/self/task"))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
        .size();
}

// A password as a login carries it.
QByteArray Disguised(const QString& password) {
    QByteArray bytes = Utf16(password);
    for (char& byte : bytes) {
        const auto plain = static_cast<quint8>(byte);
        byte = static_cast<char>((plain >> 4 | plain << 4) ^ 0xA5);
    }
    return bytes;
}

struct NoTicketCase {
    const char* name;
    void (*arrange)(KerberosRealm& realm, int port);
};

const NoTicketCase NoTicketCases[] = {
    {"NoTicket", [](KerberosRealm& realm, int port) { realm.AddService(port); }},
    {"TicketExpired",
     [](KerberosRealm& realm, int port) {
         realm.AddService(port);
         realm.GiveTicket(1);
         realm.AwaitExpiry();
     }},
    {"ServiceUnknown", [](KerberosRealm& realm, int) { realm.GiveTicket(); }},
    {"ServerOfAnotherRealm",
     [](KerberosRealm& realm, int port) {
         realm.AddService(port);
         realm.GiveTicket();
         realm.MoveServersAway();
     }},
    {"KeyServerGone",
     [](KerberosRealm& realm, int port) {
         realm.AddService(port);
         realm.GiveTicket();
         realm.StopKeyServer();
     }},
};

class WindowsAccount : public testing::Test {
  protected:
    // A ticket with which the user gets one for `server`.
    void GiveTicketFor(const FakeServer& server) {
        realm_.AddService(server.Port());
        realm_.GiveTicket();
    }

    KerberosRealm realm_;
};

class NoTicketTest : public WindowsAccount, public testing::WithParamInterface<NoTicketCase> {};

}  // namespace

TEST_F(WindowsAccount, TicketLogsIn) {
    const RealmServer server(realm_);
    GiveTicketFor(server);
    const auto connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(server.ConnectionString(QStringLiteral("Initial Catalog=Sales")));
    EXPECT_EQ(connection->State(), ado::adStateOpen);
    EXPECT_EQ(server.WindowsAccount(), QStringLiteral("alice@QUARV.TEST"));
    EXPECT_EQ(server.Login(), QStringList({"", "", "Quarv", "Sales"}));
    connection->Execute(QStringLiteral("print 1"));
    EXPECT_EQ(server.Statements(), QStringList({"print 1"}));
}

TEST_F(WindowsAccount, WinsOverUserAndPasswordWhichAreNotSent) {
    const RealmServer server(realm_);
    GiveTicketFor(server);
    const auto connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(server.ConnectionString(QStringLiteral("User Id=bob;Password=builder")),
                     QStringLiteral("carol"), QStringLiteral("builder"));
    EXPECT_EQ(server.WindowsAccount(), QStringLiteral("alice@QUARV.TEST"));
    EXPECT_EQ(server.Login(), QStringList({"", "", "Quarv", ""}));
    for (const char* word : {"bob", "carol", "builder"}) {
        EXPECT_FALSE(server.LoginBytes().contains(Utf16(word))) << word;
        EXPECT_FALSE(server.LoginBytes().contains(Disguised(word))) << word;
    }
}

TEST_P(NoTicketTest, SaysWhatToRun) {
    const RealmServer server(realm_);
    GetParam().arrange(realm_, server.Port());
    const DataError error = OpenError(server);
    EXPECT_EQ(error.Number(), Unspecified);
    EXPECT_EQ(error.Description(),
              QStringLiteral("The server \"127.0.0.1\", port %1, could not be shown a Kerberos "
                             "ticket of the Windows account. Run klist to see whether you hold a "
                             "ticket that is still valid, and kinit to get one. If you hold one, "
                             "name the server in full, and check that Kerberos knows its service "
                             "MSSQLSvc/127.0.0.1:%1 and that it is a SQL Server.")
                  .arg(server.Port()));
    EXPECT_TRUE(server.LoginBytes().isEmpty()) << "a login was sent without a ticket";
}

INSTANTIATE_TEST_SUITE_P(Causes, NoTicketTest, testing::ValuesIn(NoTicketCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(WindowsAccount, SilentKeyServerIsNotWaitedForBeyondTheTimeout) {
    const RealmServer server(realm_);
    GiveTicketFor(server);
    realm_.SilenceKeyServer();
    const qsizetype threads = ThreadCount();
    const DataError error = OpenError(server, QStringLiteral("Connect Timeout=1"));
    EXPECT_EQ(error.Number(), Unspecified);
    EXPECT_EQ(error.Description(),
              QStringLiteral("\"127.0.0.1\", port %1, did not let the Windows account in within 1 "
                             "second. Check that it is the server's port, that the server and the "
                             "Kerberos server (KDC) are well, and that no firewall stands between.")
                  .arg(server.Port()));
    // The attempt that was given up reads the environment until its own look-up ends.
    realm_.StopKeyServer();
    const QDeadlineTimer deadline(30000);
    while (ThreadCount() > threads && !deadline.hasExpired()) QThread::msleep(10);
    EXPECT_LE(ThreadCount(), threads);
}

TEST_F(WindowsAccount, ServerThatEndsTheConversationIsNotBlamedOnTheTicket) {
    const RealmServer server(realm_, {.manners = Manners::ClosesAfterPreLogin});
    GiveTicketFor(server);
    const DataError error = OpenError(server);
    EXPECT_EQ(
        error.Description(),
        QStringLiteral("What answers at \"127.0.0.1\", port %1, ended the conversation before "
                       "the login was done or does not speak as a SQL Server does. Check the "
                       "port, what the server's own log says, and whether it demands strict "
                       "encryption, which this computer does not take.")
            .arg(server.Port()));
}

TEST_F(WindowsAccount, RefusedLoginNamesTheAccount) {
    const RealmServer server(realm_, {.refusal = FakeTds::LoginFailed("QUARV\\alice")});
    GiveTicketFor(server);
    const DataError error = OpenError(server);
    EXPECT_EQ(error.Number(), AuthenticationFailed);
    EXPECT_EQ(error.NativeError(), 18456);
    EXPECT_EQ(
        error.Description(),
        QStringLiteral("Login failed for user 'QUARV\\alice'. The server was shown a Kerberos "
                       "ticket, but does not let its account in. Run klist to see whose "
                       "ticket it is, and check that the server has a login for this "
                       "account."));
}

// The service's key was changed, and the server was not told.
TEST_F(WindowsAccount, TicketThatTheServerCannotReadIsToldInItsWordsAndOurs) {
    const RealmServer server(realm_);
    GiveTicketFor(server);
    realm_.ChangeServiceKey(server.Port());
    const DataError error = OpenError(server);
    EXPECT_EQ(error.Number(), AuthenticationFailed);
    EXPECT_EQ(error.NativeError(), 18452);
    EXPECT_EQ(error.Description(),
              QStringLiteral("Login failed. The login is from an untrusted domain and cannot be "
                             "used with Integrated authentication. Run klist to see whose ticket "
                             "was shown. Check that the server trusts this realm and that it holds "
                             "the present key of its service."));
    EXPECT_EQ(server.WindowsAccount(), QString());
}

TEST_F(WindowsAccount, TicketIsShownBehindEncryptionToo) {
    const RealmServer server(realm_, {.encryption = FakeServer::Encryption::Demanded});
    GiveTicketFor(server);
    const auto connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(server.ConnectionString(Encrypted));
    EXPECT_EQ(connection->State(), ado::adStateOpen);
    EXPECT_EQ(server.WindowsAccount(), QStringLiteral("alice@QUARV.TEST"));
}

// The driver does not say which of the two it was.
TEST_F(WindowsAccount, EncryptionThatIsRefusedAndNoTicketAreToldTogether) {
    const auto words = [](const RealmServer& server) {
        return QStringLiteral(
                   "The server \"127.0.0.1\", port %1, could not be shown a Kerberos ticket of the "
                   "Windows account, or the connection could not be encrypted as Use Encryption "
                   "for Data asks. Run klist to see whether you hold a ticket that is still valid, "
                   "and kinit to get one. If you hold one, check that the server offers encryption "
                   "and that Kerberos knows its service MSSQLSvc/127.0.0.1:%1.")
            .arg(server.Port());
    };
    const RealmServer clear(realm_);
    GiveTicketFor(clear);
    EXPECT_EQ(OpenError(clear, Encrypted).Description(), words(clear));
    const RealmServer unknown(realm_, {.encryption = FakeServer::Encryption::Demanded});
    EXPECT_EQ(OpenError(unknown, Encrypted).Description(), words(unknown));
}

}  // namespace quarv::test
