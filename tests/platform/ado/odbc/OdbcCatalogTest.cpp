#include <gtest/gtest.h>

#include "platform/ado/Catalog.h"
#include "platform/ado/odbc/EmbeddedServer.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

// The catalogue of a local server's database.
class OdbcCatalog : public testing::Test {
  protected:
    OdbcCatalog() {
        connection_->Open(server_.ConnectionString());
        catalog_.SetActiveConnection(connection_);
    }

    void Run(const char* sql) { connection_->Execute(QString::fromUtf8(sql)); }

    QStringList IndexesOf(const char* table) {
        ado::Table found = catalog_.Tables(QString::fromUtf8(table));
        QStringList texts;
        for (const ado::Index& index : found.Indexes())
            texts.append((index.PrimaryKey ? "*" : "") + index.Name + ": " +
                         index.Columns.join(", "));
        return texts;
    }

    QStringList TablesLike(const QString& name) {
        const ado::RecordsetPtr rows =
            connection_->OpenSchema(ado::Schema::Tables, {.schema = {}, .name = name});
        QStringList names;
        for (; !rows->EOF(); rows->MoveNext()) names.append((*rows)["TABLE_NAME"].Text());
        return names;
    }

    EmbeddedServer server_;
    ado::ConnectionPtr connection_ = ado::odbc::OdbcConnectionFactory()();
    ado::Catalog catalog_;
};

}  // namespace

TEST_F(OdbcCatalog, KeyColumnsStandInTheOrderOfTheKey) {
    Run("create table [Größe] (id int not null, name nvarchar(20) not null, sub int not null,"
        " constraint PK_g primary key (sub, id))");
    Run("create index IX_name on [Größe] (name, id)");
    EXPECT_EQ(IndexesOf("Größe"), (QStringList{"*PK_g: sub, id", "IX_name: name, id"}));
}

TEST_F(OdbcCatalog, ATableWithoutAnyIndexAndAViewHaveNone) {
    Run("create table plain (id int)");
    Run("create view shown as select id from plain");
    EXPECT_EQ(IndexesOf("plain"), QStringList());
    EXPECT_EQ(IndexesOf("shown"), QStringList());
}

TEST_F(OdbcCatalog, NamesAreNoPatterns) {
    Run("create table [a1b] (x int not null constraint PK_1 primary key)");
    Run("create table [a_b] (y int not null constraint PK_2 primary key)");
    Run("create table [a%[b]]\\c'd] (z int not null constraint PK_3 primary key)");
    Run("create table [x[y]]z] (v int not null constraint PK_4 primary key)");
    Run("create table xyz (w int not null constraint PK_5 primary key)");
    EXPECT_EQ(IndexesOf("x[y]z"), QStringList{"*PK_4: v"});
    EXPECT_EQ(IndexesOf("a_b"), QStringList{"*PK_2: y"});
    EXPECT_EQ(IndexesOf("a%[b]\\c'd"), QStringList{"*PK_3: z"});
    EXPECT_EQ(ErrorOf([&] { catalog_.Tables("a%"); }).Number(), -2146825023);
    EXPECT_EQ(ErrorOf([&] { catalog_.Tables(QString(100000, u'a')); }).Number(), -2146825023);
}

// What only looks like the name may come, everything else stays with the server.
TEST_F(OdbcCatalog, ARestrictedListHoldsNamesThatAreLikeIt) {
    Run("create table [a1b] (x int)");
    Run("create table [a[b] (x int)");
    Run("create table [ab] (x int)");
    Run("create table [xa1b] (x int)");
    EXPECT_EQ(TablesLike("a1b"), QStringList{"a1b"});
    EXPECT_EQ(TablesLike("a[b"), (QStringList{"a[b", "a1b"}));
    EXPECT_EQ(TablesLike("a%b"), (QStringList{"a[b", "a1b"}));
    EXPECT_EQ(TablesLike("a]b"), (QStringList{"a[b", "a1b"}));
    EXPECT_EQ(TablesLike("a\\b"), (QStringList{"a[b", "a1b"}));
}

TEST_F(OdbcCatalog, OfTwoSchemasTheOneOfABareNameIsTaken) {
    Run("create schema archive");
    Run("create table archive.t (a int not null constraint PK_a primary key)");
    Run("create table dbo.t (d int not null constraint PK_d primary key)");
    Run("create table archive.u (b int not null constraint PK_b primary key)");
    EXPECT_EQ(IndexesOf("t"), QStringList{"*PK_d: d"});
    EXPECT_EQ(IndexesOf("u"), QStringList{"*PK_b: b"});
}

TEST_F(OdbcCatalog, RowsPendingOnTheConnectionStay) {
    Run("create table t (id int not null constraint PK_t primary key)");
    Run("insert into t values (1), (2)");
    const ado::RecordsetPtr rows = connection_->Execute("select id from t order by id");
    EXPECT_EQ(IndexesOf("t"), QStringList{"*PK_t: id"});
    rows->MoveNext();
    EXPECT_EQ((*rows)["id"].ToInteger(), 2);
}

TEST(OdbcCatalogCalls, TheServerIsAskedForOneTableOnly) {
    using C = FakeColumn;
    const FakeServer server([](const QString& name) {
        FakeTds answer;
        if (name != QStringLiteral("sp_tables"))
            return answer.Columns({C::Int("nothing")}).Done(0).Bytes();
        answer.Columns({C::NVarChar("TABLE_QUALIFIER", 128), C::NVarChar("TABLE_OWNER", 128),
                        C::NVarChar("TABLE_NAME", 128), C::VarChar("TABLE_TYPE", 32),
                        C::VarChar("REMARKS", 254)});
        answer.Row({Utf16("db"), Utf16("dbo"), Utf16("t"), QByteArray("TABLE"), {}});
        return answer.Done(1).Bytes();
    });
    ado::Catalog catalog;
    catalog.SetActiveConnection(Open(server));
    EXPECT_EQ(server.Statements(), QStringList());
    ado::Table table = catalog.Tables("t");
    EXPECT_EQ(server.Statements(), QStringList{"sp_tables"});
    EXPECT_TRUE(table.Indexes().empty());
    EXPECT_EQ(server.Statements(), (QStringList{"sp_tables", "sp_pkeys", "sp_statistics"}));
}

}  // namespace quarv::test
