#include "platform/ado/MemoryConnection.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

using ado::MemoryConnection;
using ado::MemoryResult;
using ado::MemoryScript;

TEST(MemoryConnection, ScriptSeesEveryConnectionOfItsFactory) {
    const auto script = std::make_shared<MemoryScript>();
    script->Answer("select 1", MemoryResult::Rows({"n"}, {{1}}));
    const ado::ConnectionFactory factory = script->Factory();
    auto first = factory();
    const auto second = factory();
    first->Open("Provider=a");
    second->SetConnectionString("Provider=b");
    second->Open();
    EXPECT_EQ((*first->Execute("select 1"))["n"].ToInteger(), 1);
    second->Execute("select 1");
    second->Execute(QString());
    EXPECT_EQ(script->Opened(), QStringList({"Provider=a", "Provider=b"}));
    EXPECT_EQ(script->Statements(), QStringList({"select 1", "select 1"}));
    EXPECT_EQ(script->OpenConnections(), 2);
    first.reset();
    EXPECT_EQ(script->OpenConnections(), 1);
    second->Close();
    EXPECT_EQ(script->OpenConnections(), 0);
}

TEST(MemoryConnection, UnscriptedStatementFailsAndIsQuoted) {
    MemoryConnection connection;
    connection.Open();
    EXPECT_TRUE(
        ErrorOf([&] { connection.Execute("select 2"); }).Description().contains("select 2"));
}

TEST(MemoryConnection, OthersAreAnsweredByTheAnswerer) {
    MemoryConnection connection;
    connection.Script().AnswerOthers([](const QString& sql) {
        return ado::MemoryResults{MemoryResult::Rows({"sql"}, {{sql}})};
    });
    connection.Open();
    EXPECT_EQ((*connection.Execute("abc"))["sql"].Text(), QStringLiteral("abc"));
}

TEST(MemoryConnection, OpenFailsAsScripted) {
    MemoryConnection connection;
    connection.Script().FailOpen(DataError(-1, "no way"));
    EXPECT_EQ(ErrorOf([&] { connection.Open(); }).Description(), QStringLiteral("no way"));
    EXPECT_EQ(connection.State(), ado::adStateClosed);
    connection.Script().FailOpen({});
    connection.Open();
    EXPECT_EQ(connection.State(), ado::adStateOpen);
    EXPECT_EQ(ErrorOf([&] { connection.SetConnectionString("x"); }).Number(), -2146824583);
}

TEST(MemoryConnection, OpenFailsForOneStringAsScripted) {
    MemoryConnection connection;
    connection.Script().FailOpenOf("Provider=a", DataError(-1, "not a"));
    EXPECT_EQ(ErrorOf([&] { connection.Open("Provider=a"); }).Description(),
              QStringLiteral("not a"));
    connection.Open("Provider=b");
    EXPECT_EQ(connection.Script().Opened(), QStringList({"Provider=a", "Provider=b"}));
    EXPECT_EQ(connection.State(), ado::adStateOpen);
}

TEST(MemoryConnection, ErrorBehindRowsIsRaisedOnce) {
    MemoryConnection connection;
    connection.Script().Answer("q", MemoryResult::Rows({"n"}, {{1}}).ThenFails("gone"));
    connection.Open();
    const auto rows = connection.Execute("q");
    EXPECT_EQ((*rows)["n"].ToInteger(), 1);
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows->EOF(); }).Description(), QStringLiteral("gone"));
    EXPECT_TRUE(rows->EOF());
}

TEST(MemoryConnection, RecordSetOutlivesItsConnectionObject) {
    auto connection = std::make_shared<MemoryConnection>();
    connection->Script().Answer("q", MemoryResult::Rows({"n"}, {{1}}));
    connection->Open();
    const auto rows = connection->Execute("q");
    connection.reset();
    EXPECT_EQ((*rows)["n"].ToInteger(), 1);
}

}  // namespace quarv::test
