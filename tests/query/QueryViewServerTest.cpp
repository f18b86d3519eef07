// The window over the real driver: a real server, and one that answers whatever a test wants.
#include <gtest/gtest.h>

#include <QTest>

#include "db/SQLServerConnection.h"
#include "platform/ado/odbc/EmbeddedServer.h"
#include "platform/ado/odbc/FakeServer.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"
#include "query/QueryControls.h"

namespace quarv::test {
namespace {

const auto Note = forms::BoxIcon::Information;

// A query window on the server that a connection string names.
class OpenWindow : public QueryControls {
  public:
    explicit OpenWindow(const QString& connectionString)
        : QueryControls(ado::odbc::OdbcConnectionFactory()) {
        db->InitOpen(connectionString);
        window.DoModeless(db, {});
    }

    void Run(const QString& sql) {
        Query().SetText(sql);
        window.RunIt();
    }
    // The texts of the boxes shown so far, each titled "Run".
    QStringList Told() const {
        QStringList texts;
        for (const SeenBox& box : boxes.Seen()) {
            EXPECT_EQ(box, (SeenBox{box.text, "Run", Note}));
            texts << box.text;
        }
        return texts;
    }
    QString Ask(const QString& sql) {
        return db->ADOConn()->Execute(sql)->Fields()[0].Value().ToText();
    }

    std::shared_ptr<SQLServerConnection> db =
        std::make_shared<SQLServerConnection>(ado::odbc::OdbcConnectionFactory());
    BoxWatcher boxes;
};

FakeTds Numbers(int count) {
    FakeTds answer;
    answer.Columns({FakeColumn::Int(QStringLiteral("n"))});
    for (int i = 1; i <= count; ++i) answer.Row({Le(static_cast<quint64>(i), 4)});
    return answer;
}

TEST(QueryViewServer, EverySeverityOfAnErrorIsToldOnceAndTheRowsStay) {
    for (int severity = 11; severity <= 25; ++severity) {
        FakeServer server([severity](const QString& sql) -> QByteArray {
            if (sql == "good") return Numbers(1).Done(1);
            const FakeTds bad = FakeTds().Error(50000, "It is bad.", 1, severity).DoneError();
            return severity < 20 ? bad.Bytes() : bad.Bytes() + FakeServer::ThenClose;
        });
        OpenWindow open(server.ConnectionString());
        open.Run("good");
        open.Run("bad");
        EXPECT_EQ(open.Told(), QStringList{"It is bad."}) << severity;
        EXPECT_EQ(open.Rows(), (QStringList{"n", "1"})) << severity;
        open.Run("good");
        EXPECT_EQ(open.Told().size(), 1) << severity;
    }
}

TEST(QueryViewServer, ASessionThatIsKilledWhileRowsAreReadIsToldAndTheNextQueryRuns) {
    FakeServer server([](const QString& sql) -> QByteArray {
        return sql == "dies" ? Numbers(5).Bytes() + FakeServer::ThenClose : Numbers(1).Done(1);
    });
    OpenWindow open(server.ConnectionString());
    open.Run("dies");
    EXPECT_EQ(open.Rows(), (QStringList{"n", "1", "2", "3", "4", "5"}));
    EXPECT_EQ(
        open.Told(),
        QStringList{"The connection to the server was lost. Check that the server still runs, "
                    "then open the database again."});
    open.Run("lives");
    EXPECT_EQ(open.Rows(), (QStringList{"n", "1"}));
    EXPECT_EQ(open.Told().size(), 1);
}

TEST(QueryViewServer, ShowsAsManyColumnsAsAResultMayHave) {
    std::vector<FakeColumn> columns;
    QByteArray row("\xD1");
    for (int i = 1; i <= 4096; ++i) {
        columns.push_back(FakeColumn::Int(QStringLiteral("c%1").arg(i)));
        row += '\4' + Le(static_cast<quint64>(i), 4);
    }
    FakeServer server(FakeTds().Columns(std::move(columns)).Raw(row).Done(1));
    OpenWindow open(server.ConnectionString());
    open.Run("select everything");
    EXPECT_EQ(open.Told(), QStringList());
    ASSERT_EQ(open.Results().model()->columnCount(), 4096);
    EXPECT_EQ(open.Results().model()->headerData(4095, Qt::Horizontal).toString(), "c4096");
    EXPECT_EQ(open.Results().model()->index(0, 4095).data().toString(), "4096");
}

class QueryViewOnServer : public testing::Test {
  protected:
    static void SetUpTestSuite() { server = std::make_unique<EmbeddedServer>(); }
    static void TearDownTestSuite() { server.reset(); }

    static std::unique_ptr<EmbeddedServer> server;
    OpenWindow open{server->ConnectionString()};
};

std::unique_ptr<EmbeddedServer> QueryViewOnServer::server;

TEST_F(QueryViewOnServer, ShowsEqualAndEmptyColumnNames) {
    open.Run("select 1 as a, 2 as a, 3, N'\u0434' as \"\u0434\"");
    EXPECT_EQ(open.Rows(), (QStringList{"a|a|(No column name)|\u0434", "1|2|3|\u0434"}));
}

TEST_F(QueryViewOnServer, ShowsEveryTypeWhole) {
    open.Run(
        "select cast(1 as bit), cast(12345678901234567890123456789012345.678 as decimal(38,3)),"
        " cast('2024-02-29 23:59:59.1234567' as datetime2(7)), cast('00:00:00.0000001' as "
        "time(7)), cast('2024-01-02 03:04:05.5 +05:30' as datetimeoffset(1)), "
        "cast(0.1 as real), null, 0x00FF, N'\U0001F375', cast(9223372036854775807 as bigint)");
    EXPECT_EQ(open.Rows().value(1),
              "1|12345678901234567890123456789012345.678|2024-02-29 23:59:59.1234567|"
              "00:00:00.0000001|2024-01-02 03:04:05.5 +05:30|0.1|NULL|0x00FF|\U0001F375|"
              "9223372036854775807");
}

TEST_F(QueryViewOnServer, AMessageAloneGivesAnEmptyGridAndNoBox) {
    open.Run("select 1 as a");
    open.Run("print 'hello'");
    EXPECT_EQ(open.Rows(), QStringList{""});
    EXPECT_TRUE(open.Told().isEmpty());
}

TEST_F(QueryViewOnServer, TheFirstResultWithColumnsIsShownAndTheRestOfTheBatchRuns) {
    open.Run("if object_id('dbo.Ran') is not null drop table Ran; create table Ran (a int)");
    open.Run(
        "insert Ran values (1); select 2 as b; insert Ran values (3); select 4 as c, 1/0;"
        " insert Ran values (5)");
    EXPECT_EQ(open.Rows(), (QStringList{"b", "2"}));
    EXPECT_EQ(open.Told(), QStringList{"Divide by zero error encountered."});
    EXPECT_EQ(open.Ask("select count(*) from Ran"), "3");
}

TEST_F(QueryViewOnServer, EveryErrorOfABatchIsTold) {
    open.Run("print 'a'; raiserror('One.', 16, 1); select 1 as a; raiserror('Two.', 16, 1)");
    EXPECT_EQ(open.Told(), QStringList{"One.\r\nTwo."});
    open.Run("select 1 as a; raiserror('Three.', 16, 1); raiserror('Four.', 16, 1)");
    EXPECT_EQ(open.Told().mid(1), (QStringList{"Three.", "Four."}));
}

TEST_F(QueryViewOnServer, AnOpenTransactionAndAnotherDatabaseAreTheQuerysOwn) {
    const QString before = open.Ask("select db_name()");
    open.Run("if db_id('elsewhere') is null create database elsewhere");
    open.Run("use elsewhere; begin transaction; select db_name() as d, @@trancount as t");
    EXPECT_EQ(open.Rows(), (QStringList{"d|t", "elsewhere|1"}));
    EXPECT_EQ(open.Ask("select db_name()"), before);
    EXPECT_EQ(open.Ask("select @@trancount"), "0");
    // The query's connection is kept, and what it was told with it.
    open.Run("select db_name() as d, @@trancount as t; rollback");
    EXPECT_EQ(open.Rows(), (QStringList{"d|t", "elsewhere|1"}));
    EXPECT_TRUE(open.Told().isEmpty());
}

TEST_F(QueryViewOnServer, AResultThatIsNotReadToItsEndStaysWholeWhereTheNextQueryFails) {
    open.Run(
        "create table #n (n int); declare @i int = 0; while @i < 2000 begin insert #n values "
        "(@i); set @i = @i + 1 end; select n from #n order by n");
    const int read = open.Results().model()->rowCount();
    EXPECT_LT(read, 200);
    open.Run("select * from NoSuchTable");
    EXPECT_EQ(open.Told(), QStringList{"Invalid object name 'NoSuchTable'."});
    open.Results().setFocus();
    QTest::keyClick(&open.Results(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(open.Results().model()->rowCount(), 2000);
    EXPECT_EQ(open.Results().model()->index(1999, 0).data().toString(), "1999");
}

}  // namespace
}  // namespace quarv::test
