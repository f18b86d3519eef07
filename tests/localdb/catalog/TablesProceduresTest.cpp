#include <algorithm>

#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class TablesProceduresTest : public CatalogServer {
  protected:
    TablesProceduresTest() {
        Prepare({"create table orders(id int)", "create table Customers(id int)",
                 "create table a_b(id int)", "create table axb(id int)",
                 "create view latest as select id from orders"});
    }
};

TEST_F(TablesProceduresTest, TablesComeBeforeViewsAndByName) {
    const RecordedSet set = Query("exec sp_tables @table_owner = 'dbo'");
    EXPECT_EQ(set.columns, Texts({"TABLE_QUALIFIER nvarchar(128)", "TABLE_OWNER nvarchar(128)",
                                  "TABLE_NAME nvarchar(128)", "TABLE_TYPE varchar(32)",
                                  "REMARKS varchar(254)"}));
    EXPECT_EQ(set.rows, Texts({"shop|dbo|a_b|TABLE|NULL", "shop|dbo|axb|TABLE|NULL",
                               "shop|dbo|Customers|TABLE|NULL", "shop|dbo|orders|TABLE|NULL",
                               "shop|dbo|latest|VIEW|NULL"}));
}

TEST_F(TablesProceduresTest, SystemViewsComeBehindUserViews) {
    const Texts rows = Rows("exec sp_tables @table_type = \"'VIEW'\"");
    ASSERT_GT(rows.size(), 10u);
    EXPECT_EQ(rows[0], "shop|dbo|latest|VIEW|NULL");
    EXPECT_EQ(rows[1], "shop|INFORMATION_SCHEMA|CHECK_CONSTRAINTS|VIEW|NULL");
    EXPECT_EQ(rows[22].substr(0, 8), "shop|sys");
    EXPECT_NE(std::find(rows.begin(), rows.end(), "shop|sys|sysobjects|VIEW|NULL"), rows.end());
}

TEST_F(TablesProceduresTest, NamesAndOwnersArePatterns) {
    EXPECT_EQ(Rows("exec sp_tables 'A_B', 'DB%'"),
              Texts({"shop|dbo|a_b|TABLE|NULL", "shop|dbo|axb|TABLE|NULL"}));
    EXPECT_EQ(Rows("exec sp_tables 'a[_]b'"), Texts({"shop|dbo|a_b|TABLE|NULL"}));
    EXPECT_EQ(Rows("exec sp_tables 'ORDERS'"), Texts({"shop|dbo|orders|TABLE|NULL"}));
    EXPECT_EQ(Rows("exec sp_tables 'a_b', @fUsePattern = 0"), Texts({"shop|dbo|a_b|TABLE|NULL"}));
    EXPECT_EQ(Rows("exec sp_tables 'nothing'"), Texts());
}

TEST_F(TablesProceduresTest, TypesAreAQuotedList) {
    EXPECT_EQ(Rows("exec sp_tables 'l%', 'dbo', null, \"'TABLE','VIEW'\""),
              Texts({"shop|dbo|latest|VIEW|NULL"}));
    EXPECT_EQ(Rows("exec sp_tables 'l%', 'dbo', 'shop', '''TABLE'''"), Texts());
    EXPECT_EQ(Rows("exec sp_tables @table_type = '''SYSTEM TABLE'''"), Texts());
}

TEST_F(TablesProceduresTest, EmptyArgumentsAskForEverything) {
    EXPECT_EQ(Rows("exec sp_tables").size(), Rows("exec sp_tables '', '', '', ''").size());
    EXPECT_GT(Rows("exec sp_tables").size(), 5u);
}

TEST_F(TablesProceduresTest, PercentQualifierListsTheDatabases) {
    EXPECT_EQ(Rows("exec sp_tables @table_name='', @table_owner='', @table_qualifier='%'"),
              Texts({"master|NULL|NULL|NULL|NULL", "shop|NULL|NULL|NULL|NULL"}));
}

TEST_F(TablesProceduresTest, PercentOwnerListsTheOwners) {
    EXPECT_EQ(Rows("exec sp_tables '', '%', ''"),
              Texts({"NULL|dbo|NULL|NULL|NULL", "NULL|guest|NULL|NULL|NULL",
                     "NULL|INFORMATION_SCHEMA|NULL|NULL|NULL", "NULL|sys|NULL|NULL|NULL"}));
}

TEST_F(TablesProceduresTest, PercentTypeListsTheTypes) {
    EXPECT_EQ(Rows("exec sp_tables '', '', '', '%'"),
              Texts({"NULL|NULL|NULL|SYSTEM TABLE|NULL", "NULL|NULL|NULL|TABLE|NULL",
                     "NULL|NULL|NULL|VIEW|NULL"}));
}

TEST_F(TablesProceduresTest, AnotherDatabaseIsReachedThroughItsOwnProcedure) {
    EXPECT_EQ(Run("exec sp_tables @table_qualifier = 'master'").messages,
              Texts({"15250 16 The database name component of the object qualifier must be the "
                     "name of the current database."}));
    EXPECT_EQ(Rows("exec [master]..sp_tables @table_name = 'orders'"), Texts());
    EXPECT_EQ(Rows("use master exec shop..sp_tables 'orders', null, 'SHOP'"),
              Texts({"shop|dbo|orders|TABLE|NULL"}));
}

TEST_F(TablesProceduresTest, WildcardVariantGoesThroughDatabasesTypeByType) {
    Prepare({"create database shop2", "use shop2 create table t(id int)",
             "use shop2 create table z(id int)"});
    Prepare({"use shop"});
    EXPECT_EQ(
        Rows("exec sp_tableswc '[alotz]%', 'dbo', 'shop%'"),
        Texts({"shop|dbo|a_b|TABLE|NULL", "shop|dbo|axb|TABLE|NULL", "shop|dbo|orders|TABLE|NULL",
               "shop2|dbo|t|TABLE|NULL", "shop2|dbo|z|TABLE|NULL", "shop|dbo|latest|VIEW|NULL"}));
}

TEST_F(TablesProceduresTest, ThousandsOfTablesComeInTheOrderOfTheirNames) {
    Prepare({"begin transaction"});
    // Made backwards, so that the order of making is not the order asked for.
    for (int i = 1999; i >= 0; --i) {
        const std::string number = std::to_string(10000 + i);
        Prepare({"create table many" + number + "(id int)"});
    }
    Prepare({"commit"});
    const Texts rows = Rows("exec sp_tables 'many%'");
    ASSERT_EQ(rows.size(), 2000u);
    EXPECT_EQ(rows.front(), "shop|dbo|many10000|TABLE|NULL");
    EXPECT_EQ(rows[1000], "shop|dbo|many11000|TABLE|NULL");
    EXPECT_EQ(rows.back(), "shop|dbo|many11999|TABLE|NULL");
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
}

}  // namespace
}  // namespace quarv::localdb::catalog
