// Scripts on real connections: what the server did, and in what state it leaves the connection that
// other windows share.
#include <gtest/gtest.h>

#include "platform/ado/odbc/EmbeddedServer.h"
#include "platform/ado/odbc/Open.h"
#include "query/ScriptFile.h"
#include "query/ScriptRunner.h"

namespace quarv {

namespace {

using test::EmbeddedServer;
using test::ErrorOf;
using test::FakeColumn;
using test::FakeServer;
using test::FakeTds;
using test::ScriptFile;

class ScriptRunnerServerTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { server = std::make_unique<EmbeddedServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    ScriptRunnerServerTest() { connection->Open(server->ConnectionString()); }
    void SetUp() override {
        Run("if db_id('one') is not null drop database one\nGO\ncreate database one\nGO\n"
            "use one\nGO\ncreate table t (a int not null primary key)");
    }
    void TearDown() override { Run("use master"); }

    void Run(const QByteArray& script) { ScriptRunner(connection).Run(ScriptFile(script).Path()); }
    QString Answer(const QString& query) {
        return connection->Execute(query)->Fields()[0].Value().ToText();
    }
    QString Rows() {
        QString all;
        const auto rows = connection->Execute("select a from t order by a");
        for (; !rows->EOF(); rows->MoveNext()) all += (*rows)["a"].ToText() + u' ';
        return all;
    }

    static std::unique_ptr<EmbeddedServer> server;
    ado::ConnectionPtr connection = ado::odbc::OdbcConnectionFactory()();
};

std::unique_ptr<EmbeddedServer> ScriptRunnerServerTest::server;

// Ten thousand whole numbers, which the driver cannot take in at one look.
FakeTds& Numbers(FakeTds& answer) {
    answer.Columns({FakeColumn::Int("n")});
    for (quint64 i = 0; i < 10000; ++i) answer.Row({test::Le(i, 4)});
    return answer.Done(10000, true);
}

}  // namespace

TEST_F(ScriptRunnerServerTest, DefinitionsAndRowsOfAScriptArrive) {
    Run("create view v as\n  select a from t\nGO\ninsert t values (1)\ninsert t values (2)\n"
        "go\ncreate procedure p as\nbegin\n  insert t values (3)\nend\nGO\nexec p\n");
    EXPECT_EQ(Rows(), "1 2 3 ");
    EXPECT_EQ(Answer("select count(*) from v"), "3");
}

TEST_F(ScriptRunnerServerTest, FailingBatchStopsTheScriptAndWhatRanStays) {
    EXPECT_EQ(ErrorOf([&] {
                  Run("insert t values (1)\nGO\nselect * from missing\nGO\ninsert t values (2)");
              }).NativeError(),
              208);
    EXPECT_EQ(Rows(), "1 ");
}

TEST_F(ScriptRunnerServerTest, ErrorOfALaterStatementStopsTheScriptBehindItsBatch) {
    EXPECT_EQ(ErrorOf([&] {
                  Run("insert t values (1)\nselect 1\ninsert t values (1)\n"
                      "insert t values (2)\nGO\ninsert t values (3)");
              }).NativeError(),
              2627);
    EXPECT_EQ(Rows(), "1 2 ");
}

// Whoever gives the results up at the error cancels what the server has not yet sent.
TEST_F(ScriptRunnerServerTest, RowsBehindAnErrorDoNotKeepTheBatchFromItsEnd) {
    Run("create table wide (filler char(2000) not null)\ninsert wide values ('')\n" +
        QByteArray("insert wide select filler from wide\n").repeated(13));
    EXPECT_EQ(ErrorOf([&] {
                  Run("insert t values (1)\ninsert t values (1)\nselect filler from wide\n"
                      "insert t values (2)\nGO\ninsert t values (3)");
              }).NativeError(),
              2627);
    EXPECT_EQ(Rows(), "1 2 ");
}

TEST_F(ScriptRunnerServerTest, ErrorOfTheFirstStatementLetsItsBatchRunOn) {
    EXPECT_EQ(ErrorOf([&] {
                  Run("insert t values (null)\ninsert t values (2)\nGO\ninsert t values (3)");
              }).NativeError(),
              515);
    EXPECT_EQ(Rows(), "2 ");
}

TEST_F(ScriptRunnerServerTest, TransactionMaySpanBatchesAndStaysOpen) {
    Run("begin transaction\ninsert t values (1)\nGO\ninsert t values (2)");
    EXPECT_EQ(Answer("select @@trancount"), "1");
    Run("rollback");
    EXPECT_EQ(Rows(), "");
}

TEST_F(ScriptRunnerServerTest, UseHoldsForTheNextBatches) {
    Run("use master\nGO\nuse one\nGO\ninsert t values (1)");
    EXPECT_EQ(Answer("select db_name()"), "one");
    EXPECT_EQ(Rows(), "1 ");
}

TEST_F(ScriptRunnerServerTest, RowsAreDiscarded) {
    Run("insert t values (1)\nselect * from t\nselect name from sys.objects\nGO\nselect * from t");
    EXPECT_EQ(Answer("select 5"), "5");
}

TEST_F(ScriptRunnerServerTest, EveryOneOfTenResultsIsPassed) {
    QByteArray script;
    for (int i = 1; i <= 10; ++i) {
        script += "select " + QByteArray::number(i) + "\ninsert t values (" +
                  QByteArray::number(i) + ")\n";
    }
    Run(script + "GO\ninsert t values (11)");
    EXPECT_EQ(Rows(), "1 2 3 4 5 6 7 8 9 10 11 ");
}

TEST_F(ScriptRunnerServerTest, MessagesAreNoErrors) {
    Run("print 'one'\nGO\nprint 'two'\nprint 'three'\ninsert t values (1)\nGO\n"
        "raiserror('four', 10, 1)\nGO\ninsert t values (2)");
    EXPECT_EQ(Rows(), "1 2 ");
}

TEST_F(ScriptRunnerServerTest, BlankLinesAndCommentsAreABatchOfNothing) {
    Run("\n\nGO\n-- nothing\nGO\n/* nor\nhere */\nGO\n");
    EXPECT_EQ(Answer("select 5"), "5");
}

TEST_F(ScriptRunnerServerTest, RowsOpenElsewhereOnTheConnectionAreKept) {
    Run("insert t values (1)\ninsert t values (2)");
    const auto open = connection->Execute("select a from t order by a");
    EXPECT_FALSE(open->EOF());
    Run("delete t");
    open->MoveNext();
    EXPECT_EQ((*open)["a"].ToText(), "2");
}

TEST(ScriptRunnerFakeServerTest, ErrorAmongRowsLeavesNothingPending) {
    const FakeServer server([](const QString& sql) -> QByteArray {
        FakeTds answer;
        if (sql == QLatin1String("ok\r\n")) return answer.Done(1);
        Numbers(answer);
        answer.Columns({FakeColumn::Int("n")}).Row({test::Le(1, 4)});
        answer.Error(8134, "Divide by zero.").DoneError(true);
        return Numbers(answer).Error(208, "Later.").DoneError();
    });
    const auto connection = test::Open(server);
    ScriptRunner runner(connection);
    EXPECT_EQ(ErrorOf([&] { runner.Run(ScriptFile("bad\nGO\nok").Path()); }).NativeError(), 8134);
    runner.Run(ScriptFile("ok").Path());
    EXPECT_EQ(server.Statements(), QStringList({"bad\r\n", "ok\r\n"}));
    EXPECT_EQ(connection->CommandTimeout(), 30);
}

TEST(ScriptRunnerFakeServerTest, LossOfTheConnectionEndsTheScript) {
    const FakeServer server([](const QString&) -> QByteArray {
        FakeTds answer;
        return Numbers(answer).Raw(FakeServer::ThenClose);
    });
    const auto connection = test::Open(server);
    ScriptRunner runner(connection);
    EXPECT_EQ(ErrorOf([&] { runner.Run(ScriptFile("a\nGO\nb").Path()); }).SqlState(), "08S01");
    EXPECT_EQ(server.Statements(), QStringList({"a\r\n"}));
}

}  // namespace quarv
