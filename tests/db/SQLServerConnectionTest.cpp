#include "db/SQLServerConnection.h"

#include "platform/ado/MemoryScript.h"
#include "support/Raised.h"

namespace quarv {

namespace {

constexpr int NotOpen = -2146824584;  // 3704 as an HRESULT
const char Sample[] =
    "Provider=SQLOLEDB.1;Data Source=localhost;Initial Catalog=mirel;Integrated Security=SSPI";

class SQLServerConnections : public testing::Test {
  protected:
    SQLServerConnections() {
        script_->AnswerOthers([](const QString&) -> ado::MemoryResults {
            return {ado::MemoryResult::Rows({"id"}, {{1}})};
        });
    }

    // The only statement that `ask` sends.
    template <typename Ask>
    QString Sent(Ask ask) {
        const qsizetype before = script_->Statements().size();
        ask();
        EXPECT_EQ(script_->Statements().size(), before + 1);
        return script_->Statements().last();
    }

    std::shared_ptr<ado::MemoryScript> script_ = std::make_shared<ado::MemoryScript>();
    SQLServerConnection connection_{script_->Factory()};
};

}  // namespace

TEST_F(SQLServerConnections, InitOpenPassesTheStringUnchanged) {
    EXPECT_TRUE(connection_.InitOpen(Sample));
    EXPECT_EQ(script_->Opened(), QStringList{Sample});
    EXPECT_EQ(connection_.ADOConn()->State(), ado::adStateOpen);
    EXPECT_EQ(connection_.ADOConn()->ConnectionString(), Sample);
    EXPECT_EQ(connection_.Description(), "SQL Server localhost mirel");
    EXPECT_EQ(connection_.GetConnectionString(),
              "Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;"
              "Integrated Security=SSPI;");
}

TEST_F(SQLServerConnections, WorksEmptyBeforeInitOpen) {
    EXPECT_EQ(connection_.Description(), "");
    EXPECT_EQ(connection_.GetConnectionString(), "");
    const ado::ConnectionPtr first = connection_.ADOConn();
    EXPECT_EQ(first->State(), ado::adStateClosed);
    EXPECT_EQ(connection_.ADOConn(), first);
}

TEST_F(SQLServerConnections, QueriesBeforeInitOpenRaiseTheDataLayersError) {
    EXPECT_EQ(Raised([&] { connection_.OpenQuery("select 1"); }), NotOpen);
    EXPECT_EQ(Raised([&] { connection_.GetTableList(); }), NotOpen);
    EXPECT_EQ(Raised([&] { connection_.GetSprocList(); }), NotOpen);
    EXPECT_EQ(Raised([&] { connection_.GetCatalog()->Tables("t"); }), NotOpen);
}

TEST_F(SQLServerConnections, SecondInitOpenReplacesTheConnection) {
    connection_.InitOpen(Sample);
    const ado::ConnectionPtr first = connection_.ADOConn();
    const ado::RecordsetPtr rows = connection_.OpenQuery("select 1");
    connection_.InitOpen(Sample);
    EXPECT_NE(connection_.ADOConn(), first);
    EXPECT_EQ(first->State(), ado::adStateOpen);  // not closed, only let go
    EXPECT_EQ((*rows)["id"].ToInteger(), 1);
    EXPECT_EQ(script_->OpenConnections(), 2);
}

TEST_F(SQLServerConnections, ReleasedConnectionCloses) {
    connection_.InitOpen(Sample);
    connection_.InitOpen(Sample);
    EXPECT_EQ(script_->OpenConnections(), 1);
}

TEST_F(SQLServerConnections, FailedInitOpenKeepsTheNewStringAndAClosedConnection) {
    connection_.InitOpen(Sample);
    const ado::ConnectionPtr first = connection_.ADOConn();
    script_->FailOpen(DataError(-2147467259, "refused"));
    EXPECT_EQ(Raised([&] { connection_.InitOpen("Data Source=elsewhere;"); }), -2147467259);
    EXPECT_NE(connection_.ADOConn(), first);
    EXPECT_EQ(connection_.ADOConn()->State(), ado::adStateClosed);
    EXPECT_EQ(connection_.Description(), "SQL Server elsewhere mirel");
}

TEST_F(SQLServerConnections, CatalogueQueriesAreExact) {
    connection_.InitOpen(Sample);
    EXPECT_EQ(Sent([&] { connection_.GetTableInfo("O'Brien"); }),
              "select * from information_schema.columns where table_name='O''Brien' "
              "order by ordinal_position");
    EXPECT_EQ(Sent([&] { connection_.GetIndexInfo("O'Brien"); }), "sp_helpindex 'O''Brien'");
    EXPECT_EQ(Sent([&] { connection_.GetSprocInfo(""); }),
              "select * from information_schema.routines where routine_name= ''");
    EXPECT_EQ(Sent([&] { connection_.GetObjectInfo("p"); }), "sp_help 'p'");
    EXPECT_EQ(Sent([&] { connection_.OpenQuery("select 'x'"); }), "select 'x'");
}

TEST_F(SQLServerConnections, QueriesGiveTheRecordset) {
    connection_.InitOpen(Sample);
    const ado::RecordsetPtr rows = connection_.GetTableInfo("t");
    ASSERT_FALSE(rows->EOF());
    EXPECT_EQ((*rows)["id"].ToInteger(), 1);
}

TEST_F(SQLServerConnections, ListsComeFromTheSchemaRowsets) {
    script_->AnswerSchema(ado::Schema::Tables,
                          ado::MemoryResult::Rows({"TABLE_NAME"}, {{Value(u"t")}}));
    script_->AnswerSchema(ado::Schema::Procedures,
                          ado::MemoryResult::Rows({"PROCEDURE_NAME"}, {{Value(u"p;1")}}));
    connection_.InitOpen(Sample);
    EXPECT_EQ((*connection_.GetTableList())["table_name"].Text(), "t");
    EXPECT_EQ((*connection_.GetSprocList())["procedure_name"].Text(), "p;1");
    EXPECT_TRUE(script_->Statements().isEmpty());
}

TEST_F(SQLServerConnections, EachCatalogueIsANewOneOverTheConnectionItself) {
    script_->AnswerSchema(
        ado::Schema::Tables,
        ado::MemoryResult::Rows({"TABLE_SCHEMA", "TABLE_NAME"}, {{u"dbo", u"t"}}));
    connection_.InitOpen(Sample);
    const ado::CatalogPtr catalog = connection_.GetCatalog();
    EXPECT_EQ(catalog->ActiveConnection(), connection_.ADOConn());
    EXPECT_NE(connection_.GetCatalog(), catalog);
    EXPECT_TRUE(script_->Schemas().isEmpty());
    EXPECT_EQ(catalog->Tables("t").Name(), "t");
}

TEST_F(SQLServerConnections, ErrorsPassThroughUnchanged) {
    connection_.InitOpen(Sample);
    script_->Answer("sp_help 'p'", ado::MemoryResult::Fails("no such object", -2147217900, 15009));
    EXPECT_EQ(Raised([&] { connection_.GetObjectInfo("p"); }), -2147217900);
}

TEST(SQLServerConnection, NamesGoIntoBracketsUnchanged) {
    EXPECT_EQ(SQLServerConnection::o("Order Details"), "[Order Details]");
    EXPECT_EQ(SQLServerConnection::o("a]b"), "[a]b]");
    EXPECT_EQ(SQLServerConnection::o(""), "[]");
}

TEST(SQLServerConnection, QuotesDoubleInLiterals) {
    EXPECT_EQ(SQLServerConnection::SQLString(""), "''");
    EXPECT_EQ(SQLServerConnection::SQLString("O'Brien"), "'O''Brien'");
    EXPECT_EQ(SQLServerConnection::SQLString("''"), "''''''");
    EXPECT_EQ(SQLServerConnection::SQLString("a\"b\\c"), "'a\"b\\c'");
}

}  // namespace quarv
