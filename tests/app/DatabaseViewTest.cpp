#include "app/DatabaseView.h"

#include "app/DatabaseViewFixture.h"
#include "base/DataError.h"

namespace quarv {
namespace {

class DatabaseViewTest : public DatabaseViewFixture {
  protected:
    // The nodes as they stand under one another, indented.
    QStringList Lines(const forms::Node& from, int depth = 0) {
        QStringList lines{QString(depth, u' ') + from.Text()};
        for (const forms::Node* child : from.Children()) lines += Lines(*child, depth + 1);
        return lines;
    }
};

TEST_F(DatabaseViewTest, ShowsTheDatabaseAsATree) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_FALSE(window_.isModal());
    EXPECT_EQ(window_.Caption(), "SQL Server srv Sales");
    EXPECT_EQ(database_.script->Opened(), QStringList{FakeDatabase::ConnStr});
    EXPECT_EQ(Lines(Nodes().Item(1)),
              (QStringList{"SQL Server srv Sales Server 9.1", " Tables", "  Orders", "  Customers",
                           "  AllOrders", " Routines", "  usp_Report", "  Plain", "  a"}));
}

TEST_F(DatabaseViewTest, NodesHaveTheirKeysAndPictures) {
    window_.DoView(FakeDatabase::ConnStr);
    const struct {
        const char* key;
        int image;
    } expected[] = {{"_db_", 2},        {"Tables", 4},         {"Routines", 6},
                    {"_tbl_Orders", 1}, {"_tbl_AllOrders", 1}, {"_sp_usp_Report", 5}};
    for (const auto& [key, image] : expected)
        EXPECT_EQ(Nodes().Item(QLatin1String(key)).Image(), image) << key;
    EXPECT_EQ(Nodes().Count(), 9);
}

TEST_F(DatabaseViewTest, OnlyTheRootIsExpanded) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(Nodes().Item("_db_").Expanded());
    EXPECT_FALSE(Nodes().Item("Tables").Expanded());
    EXPECT_FALSE(Nodes().Item("Routines").Expanded());
}

TEST_F(DatabaseViewTest, FailingConnectionLeavesTheWindowHidden) {
    database_.script->FailOpen(DataError(-2147467259, "no server"));
    EXPECT_EQ(Raised([this] { window_.DoView(FakeDatabase::ConnStr); }), -2147467259);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(DatabaseViewTest, FailingCatalogueLeavesTheWindowHidden) {
    database_.script->AnswerSchema(ado::Schema::Procedures,
                                   ado::MemoryResult::Fails("no procedures for you"));
    EXPECT_THROW(window_.DoView(FakeDatabase::ConnStr), DataError);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(DatabaseViewTest, TwoTablesOfOneNameRaise) {
    database_.SetTables({{u"Orders", u"TABLE"}, {u"ORDERS", u"TABLE"}});
    EXPECT_EQ(Raised([this] { window_.DoView(FakeDatabase::ConnStr); }), 35602);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(DatabaseViewTest, TwoProceduresThatDifferInTheirVersionRaise) {
    database_.SetProcedures({{u"p;1"}, {u"p;2"}});
    EXPECT_EQ(Raised([this] { window_.DoView(FakeDatabase::ConnStr); }), 35602);
}

TEST_F(DatabaseViewTest, QueryOpensTheQueryWindowEmptyAndScriptWithTheTablesScript) {
    window_.DoView(FakeDatabase::ConnStr);
    Press("LaunchScript");
    EXPECT_EQ(QueryText(), "");
    ClickNode("_tbl_Orders");
    Press("LaunchScript");
    EXPECT_EQ(QueryText(),
              "CREATE TABLE Orders (\r\n   id int,\r\n   note nvarchar(80) NULL\r\n)\r\n");
    Press("LaunchQuery");
    EXPECT_EQ(QueryText(), "");
}

TEST_F(DatabaseViewTest, ThereIsOneQueryWindowOnTheWindowsConnection) {
    window_.DoView(FakeDatabase::ConnStr);
    Press("LaunchQuery");
    QueryView* first = QueryWindow();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->Caption(), "Query: SQL Server srv Sales");
    first->Close();
    Press("LaunchQuery");
    EXPECT_EQ(QueryWindow(), first);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(database_.script->Opened().size(), 1);
}

}  // namespace
}  // namespace quarv
