// Connections whose time runs out, at each stage that takes time. Nothing here measures time: that
// a test ends is what shows the limit.
#include "platform/ado/odbc/Connector.h"

#include "platform/ado/odbc/FakeResolver.h"
#include "platform/ado/odbc/FullListener.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

constexpr const char* TimedOut =
    "\"%1\", port %2, did not answer as a SQL Server within 1 second. Check that it is the "
    "server's port, that the server is well, and that no firewall stands between.";

QString Source(const QString& host, int port, const QString& account) {
    return QStringLiteral("Provider=sqloledb;Data Source=%1,%2;Connect Timeout=1;%3")
        .arg(host)
        .arg(port)
        .arg(account);
}

}  // namespace

TEST(Connector, ConnectionThatIsNeitherTakenNorRefusedTimesOut) {
    const FullListener listener;
    for (const char* account : {"User Id=a;Password=b", "Integrated Security=SSPI"}) {
        const DataError error =
            OpenError(Source(QStringLiteral("127.0.0.1"), listener.Port(), account));
        EXPECT_EQ(error.Description(), QString(TimedOut).arg("127.0.0.1").arg(listener.Port()))
            << account;
    }
}

TEST(Connector, LookUpThatDoesNotEndTimesOut) {
    const FakeResolver resolver;
    EXPECT_EQ(OpenError(Source(FakeResolver::Silent, 1433, QStringLiteral("User Id=a;Password=b")))
                  .Description(),
              QString(TimedOut).arg("silent.quarv.test").arg(1433));
}

TEST(Connector, FailureThatComesInTimeIsNoTimeout) {
    const FakeServer server(FakeServer::Manners::ClosesUnanswered);
    const ado::odbc::ConnectAttempt attempt = ado::odbc::Connect(
        QStringLiteral("Driver={FreeTDS};Server={127.0.0.1};Port={%1};TDS_Version={7.4};UID={a};")
            .arg(server.Port()),
        20000, server.Port());
    EXPECT_TRUE(attempt.failure);
    EXPECT_FALSE(attempt.timedOut);
}

}  // namespace quarv::test
