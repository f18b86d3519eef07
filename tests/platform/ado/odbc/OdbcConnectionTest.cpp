#include <gtest/gtest.h>

#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using Manners = FakeServer::Manners;

constexpr int Unspecified = -2147467259;

struct HostileCase {
    const char* name;
    Manners manners;
};

// What the driver makes of these is chance, as the bytes or the moment are.
const HostileCase HostileServers[] = {
    {"ClosesAtOnce", Manners::ClosesAtOnce},
    {"Garbage", Manners::Garbage},
    {"GarbageTls", Manners::GarbageTls},
    {"Floods", Manners::Floods},
    {"GarbageAfterLogin", Manners::GarbageAfterLogin},
};

class HostileTest : public testing::TestWithParam<HostileCase> {};

ado::ConnectionPtr NewConnection() {
    return ado::odbc::OdbcConnectionFactory()();
}

}  // namespace

TEST_P(HostileTest, OpenEndsWithAPlainError) {
    const FakeServer server(GetParam().manners);
    const auto connection = NewConnection();
    const DataError error = ErrorOf(
        [&] { connection->Open(server.ConnectionString(QStringLiteral("Connect Timeout=1"))); });
    EXPECT_EQ(error.Number(), Unspecified);
    EXPECT_TRUE(error.Description().contains(QLatin1String("SQL Server")))
        << qPrintable(error.Description());
    EXPECT_TRUE(
        error.Description().contains(QStringLiteral("\"127.0.0.1\", port %1").arg(server.Port())));
    EXPECT_FALSE(error.Description().contains(u'['));
    EXPECT_EQ(connection->State(), ado::adStateClosed);
}

INSTANTIATE_TEST_SUITE_P(Servers, HostileTest, testing::ValuesIn(HostileServers),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(OdbcConnection, UnknownProvider) {
    const DataError error = OpenError(QStringLiteral("Provider=MSDAORA.1;Data Source=x"));
    EXPECT_EQ(error.Number(), -2146824582);
    EXPECT_EQ(error.Description(),
              QStringLiteral("Provider cannot be found. It may not be properly installed."));
}

TEST(OdbcConnection, LoginCarriesTheStringsValues) {
    const FakeServer server(Manners::Good);
    const auto connection =
        Open(server, QStringLiteral("Initial Catalog=Größe;Application Name=my app"));
    EXPECT_EQ(server.Login(), QStringList({"sa", "secret", "my app", "Größe"}));
    EXPECT_EQ(connection->State(), ado::adStateOpen);
}

TEST(OdbcConnection, ArgumentsStandInForTheStringsAccount) {
    const FakeServer server(Manners::Good);
    NewConnection()->Open(server.ConnectionString(), QStringLiteral("other"),
                          QStringLiteral("pass"));
    EXPECT_EQ(server.Login().mid(0, 2), QStringList({"other", "pass"}));
}

TEST(OdbcConnection, DriverInTheStringReachesTheServer) {
    const FakeServer server(Manners::Good);
    NewConnection()->Open(
        QStringLiteral("Driver={FreeTDS};Data Source=127.0.0.1;Port=%1;User=u;Password=p;")
            .arg(server.Port()));
    EXPECT_EQ(server.Login().mid(0, 2), QStringList({"u", "p"}));
}

// Every value arrives as written, or is refused before anything is sent.
TEST(OdbcConnection, ValuesArriveWhole) {
    const QStringList passwords{QStringLiteral("a;b"),
                                QStringLiteral("x;Database=evil"),
                                QStringLiteral("a}b"),
                                QStringLiteral("a}}b"),
                                QStringLiteral("}"),
                                QStringLiteral("{"),
                                QStringLiteral("{a}"),
                                QStringLiteral(" a "),
                                QStringLiteral("a=b"),
                                QStringLiteral("it's"),
                                QStringLiteral("é😀"),
                                QStringLiteral("a;"),
                                QStringLiteral("a\nb"),
                                QStringLiteral("x;Driver={NoSuch}y"),
                                QStringLiteral("\\};x").left(2),
                                QStringLiteral("a;DSN=b"),
                                QStringLiteral("a\tb")};
    for (const QString& password : passwords) {
        const FakeServer server(Manners::Good);
        NewConnection()->Open(QStringLiteral("Provider=sqloledb;Data Source=127.0.0.1,%1;User "
                                             "Id=u;Initial Catalog=db;Password=\"")
                                  .arg(server.Port()) +
                              password + u'"');
        EXPECT_EQ(server.Login(), QStringList({"u", password, "Quarv", "db"}));
    }
}

TEST(OdbcConnection, ConnectionStringIsFixedWhileOpen) {
    const FakeServer server(Manners::Good);
    const auto connection = Open(server);
    EXPECT_EQ(ErrorOf([&] { connection->SetConnectionString({}); }).Number(), -2146824583);
    EXPECT_EQ(ErrorOf([&] { connection->Open(); }).Number(), -2146824583);
    connection->Close();
    EXPECT_EQ(connection->State(), ado::adStateClosed);
    connection->Open();
    EXPECT_EQ(connection->State(), ado::adStateOpen);
}

TEST(OdbcConnection, LostConnectionIsClosedAndMayBeOpenedAgain) {
    FakeServer server(FakeTds().Columns({FakeColumn::Int("n")}).Row({Le(7, 4)}).Done(1));
    const auto connection = Open(server);
    server.CutOff();
    EXPECT_EQ(connection->State(), ado::adStateOpen) << "nothing was asked since";
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(ErrorOf([&] { connection->Execute(QStringLiteral("select n")); }).SqlState(),
                  QStringLiteral("08S01"));
    EXPECT_EQ(connection->State(), ado::adStateClosed);
    connection->SetConnectionString(server.ConnectionString());
    connection->Open();
    EXPECT_EQ(connection->State(), ado::adStateOpen);
    EXPECT_EQ((*connection->Execute(QStringLiteral("select n")))["n"].ToInteger(), 7);
    server.CutOff();
    ErrorOf([&] { connection->Execute(QStringLiteral("select n")); });
    connection->Close();
    EXPECT_EQ(ErrorOf([&] { connection->Close(); }).Number(), -2146824584);
}

TEST(OdbcConnection, ClosedConnectionRefusesCommands) {
    const auto connection = NewConnection();
    EXPECT_EQ(ErrorOf([&] { connection->Execute("select 1"); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { connection->OpenSchema(ado::Schema::Tables); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { connection->Close(); }).Number(), -2146824584);
    EXPECT_EQ(connection->ConnectionTimeout(), 15);
    EXPECT_EQ(connection->CommandTimeout(), 30);
}

}  // namespace quarv::test
