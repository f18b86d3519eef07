// The forms of a data source, each opening a real connection.
#include "platform/ado/odbc/FakeBrowser.h"
#include "platform/ado/odbc/FakeResolver.h"
#include "platform/ado/odbc/Loopback.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

constexpr int DefaultPort = 1433;

const QString Account = QStringLiteral(";User Id=sa;Password=secret");

QString Source(const QString& source) {
    return QStringLiteral("Provider=sqloledb;Data Source=") + source + Account;
}

// `source` holds "%1" where the server's port stands.
void ExpectReaches(const FakeServer& server, const QString& source) {
    const auto connection =
        Open(Source(source.contains(u'%') ? source.arg(server.Port()) : source));
    connection->Execute(QStringLiteral("-- ") + source);
    EXPECT_EQ(server.Statements().last(), QStringLiteral("-- ") + source);
}

FakeServer::Settings At(const QString& address, int port = 0) {
    return {.address = address, .port = port};
}

}  // namespace

TEST(OdbcAddress, HostAndPort) {
    const FakeServer server(FakeServer::Manners::Good);
    const FakeResolver resolver(
        FakeResolver::Names{{"localhost", {"127.0.0.1"}}, {"db.quarv.test", {"127.0.0.1"}}});
    for (const char* source :
         {"127.0.0.1,%1", "127.0.0.1, %1", "tcp:127.0.0.1,%1", "TCP: 127.0.0.1,%1",
          "db.quarv.test,%1", "tcp:db.quarv.test,%1", "localhost,%1", ".,%1", "tcp:.,%1",
          "(local),%1", "(LOCAL),%1", ".\\NAMED,%1"})
        ExpectReaches(server, source);
}

TEST(OdbcAddress, WithoutAPortIsTheDefaultOne) {
    const FakeBrowser alone;  // whose address nobody else uses
    const FakeServer server(At(alone.Address(), DefaultPort));
    const FakeResolver resolver(FakeResolver::Names{{"localhost", {alone.Address().toLatin1()}},
                                                    {"db", {alone.Address().toLatin1()}}});
    for (const char* source : {"localhost", ".", "(local)", "", "tcp:localhost", "db", "tcp:db",
                               ".\\MSSQLSERVER", "db\\mssqlserver"})
        ExpectReaches(server, source);
    EXPECT_TRUE(alone.Questions().isEmpty());
}

TEST(OdbcAddress, Ipv6) {
    if (!HasIpv6()) GTEST_SKIP() << "this computer has no ::1";
    const FakeServer server(At(QStringLiteral("::1")));
    for (const char* source :
         {"::1,%1", "[::1],%1", "tcp:::1,%1", "tcp:[::1],%1", "0:0:0:0:0:0:0:1,%1"})
        ExpectReaches(server, source);
}

TEST(OdbcAddress, NameOfTwoAddressesReachesTheOneThatListens) {
    if (!HasIpv6()) GTEST_SKIP() << "this computer has no ::1";
    const FakeResolver resolver(FakeResolver::Names{{"localhost", {"::1", "127.0.0.1"}},
                                                    {"both.quarv.test", {"127.0.0.1", "::1"}},
                                                    {"six.quarv.test", {"::1"}}});
    const FakeServer six(At(QStringLiteral("::1")));
    for (const char* source :
         {"localhost,%1", ".,%1", "(local),%1", "both.quarv.test,%1", "six.quarv.test,%1"})
        ExpectReaches(six, source);
    const FakeServer four(FakeServer::Manners::Good);
    for (const char* source : {"localhost,%1", ".,%1", "(local),%1", "both.quarv.test,%1"})
        ExpectReaches(four, source);
}

TEST(OdbcAddress, InstanceIsAskedFor) {
    FakeBrowser browser;
    const FakeServer server(At(browser.Address()));
    browser.AnswerWithPort(server.Port());
    const FakeResolver resolver(
        FakeResolver::Names{{"localhost", {browser.Address().toLatin1()}},
                            {"db.quarv.test", {browser.Address().toLatin1()}}});
    for (const char* source : {".\\EXPRESS", "(local)\\EXPRESS", "localhost\\express",
                               "db.quarv.test\\EXPRESS", "tcp:db.quarv.test\\EXPRESS"})
        ExpectReaches(server, source);
    ExpectReaches(server, browser.Address() + QStringLiteral("\\EXPRESS"));
    EXPECT_EQ(browser.Questions().size(), 6);
    EXPECT_EQ(browser.Questions().first(), QByteArray("\4EXPRESS\0", 9));
}

TEST(OdbcAddress, PortWinsOverTheInstance) {
    FakeBrowser browser;
    browser.AnswerWithPort(1);
    const FakeServer server(At(browser.Address()));
    ExpectReaches(server, browser.Address() + QStringLiteral("\\EXPRESS,%1"));
    EXPECT_TRUE(browser.Questions().isEmpty());
}

TEST(OdbcAddress, InstanceWhoseHostIsNotReachedByOneOfItsAddresses) {
    if (!HasIpv6()) GTEST_SKIP() << "this computer has no ::1";
    FakeBrowser browser;
    const FakeServer server(At(browser.Address()));
    browser.AnswerWithPort(server.Port());
    // Nobody answers at ::1; the question there is refused.
    const FakeResolver resolver(
        FakeResolver::Names{{"db.quarv.test", {"::1", browser.Address().toLatin1()}}});
    ExpectReaches(server, QStringLiteral("db.quarv.test\\EXPRESS"));
}

TEST(OdbcAddress, EncryptionThatTheServerDemandsIsSpokenUnasked) {
    using Encryption = FakeServer::Encryption;
    for (const Encryption encryption : {Encryption::LoginOnly, Encryption::Demanded})
        for (const char* more : {"", "Use Encryption for Data=no",
                                 "Use Encryption for Data=yes;Trust Server Certificate=yes"}) {
            const FakeServer server(FakeServer::Settings{.encryption = encryption});
            const auto connection = Open(server, more);
            connection->Execute(QStringLiteral("print 1"));
            EXPECT_EQ(server.Statements(), QStringList({"print 1"})) << more;
            EXPECT_EQ(server.Login().mid(0, 2), QStringList({"sa", "secret"})) << more;
        }
}

}  // namespace quarv::test
