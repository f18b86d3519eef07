// What the catalogue shows of alias types, and of schemas beside dbo.
#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class AliasTypeViewsTest : public CatalogServer {
  protected:
    AliasTypeViewsTest() {
        Prepare({"create schema sales", "create type Name from nvarchar(50) not null",
                 "create type sales.Price from decimal(9, 2)",
                 "create table sales.goods(id int, n Name, p sales.Price)",
                 "create procedure sales.find @n Name, @p sales.Price output as select @n"});
    }
};

TEST_F(AliasTypeViewsTest, DomainsAreTheAliasTypes) {
    const RecordedSet set = Query("select * from information_schema.domains order by domain_name");
    EXPECT_EQ(set.columns,
              Texts({"DOMAIN_CATALOG nvarchar(128)", "DOMAIN_SCHEMA nvarchar(128)",
                     "DOMAIN_NAME nvarchar(128)", "DATA_TYPE nvarchar(128)",
                     "CHARACTER_MAXIMUM_LENGTH int", "CHARACTER_OCTET_LENGTH int",
                     "COLLATION_CATALOG varchar(6)", "COLLATION_SCHEMA varchar(3)",
                     "COLLATION_NAME nvarchar(128)", "CHARACTER_SET_CATALOG varchar(6)",
                     "CHARACTER_SET_SCHEMA varchar(3)", "CHARACTER_SET_NAME nvarchar(128)",
                     "NUMERIC_PRECISION tinyint", "NUMERIC_PRECISION_RADIX smallint",
                     "NUMERIC_SCALE tinyint", "DATETIME_PRECISION smallint",
                     "DOMAIN_DEFAULT nvarchar(4000)"}));
    EXPECT_EQ(set.rows,
              Texts({"shop|dbo|Name|nvarchar|50|100|NULL|NULL|SQL_Latin1_General_CP1_CI_AS|NULL|"
                     "NULL|UNICODE|NULL|NULL|NULL|NULL|NULL",
                     "shop|sales|Price|decimal|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|9|10|2|NULL|"
                     "NULL"}));
}

TEST_F(AliasTypeViewsTest, ColumnsAndParametersNameTheirDomain) {
    EXPECT_EQ(Rows("select * from information_schema.column_domain_usage order by domain_name"),
              Texts({"shop|dbo|Name|shop|sales|goods|n", "shop|sales|Price|shop|sales|goods|p"}));
    EXPECT_EQ(
        Rows("select column_name, data_type, domain_catalog, domain_schema, domain_name from "
             "information_schema.columns order by ordinal_position"),
        Texts({"id|int|NULL|NULL|NULL", "n|nvarchar|shop|dbo|Name", "p|decimal|shop|sales|Price"}));
    EXPECT_EQ(Rows("select parameter_name, data_type, user_defined_type_catalog, "
                   "user_defined_type_schema, user_defined_type_name from "
                   "information_schema.parameters order by ordinal_position"),
              Texts({"@n|nvarchar|shop|dbo|Name", "@p|decimal|shop|sales|Price"}));
}

TEST_F(AliasTypeViewsTest, OlderViewsNumberThem) {
    EXPECT_EQ(Rows("select name, xtype, xusertype, uid from systypes where xusertype > 256 "
                   "order by xusertype"),
              Texts({"Name|231|257|1", "Price|106|258|5"}));
    EXPECT_EQ(Rows("select c.name, c.xusertype, t.name from syscolumns c join systypes t on "
                   "t.xusertype = c.xusertype where c.id = object_id('sales.goods') "
                   "order by c.colid"),
              Texts({"id|56|int", "n|257|Name", "p|258|Price"}));
    EXPECT_EQ(Rows("select name, user_type_id from sys.parameters order by parameter_id"),
              Texts({"@n|257", "@p|258"}));
}

TEST_F(AliasTypeViewsTest, ProceduresNameTheTypeAsDeclared) {
    const RecordedSet columns = Query("exec sp_columns 'goods', 'sales'");
    ASSERT_EQ(columns.rows.size(), 3u);
    EXPECT_EQ(columns.rows[0].substr(0, 29), "shop|sales|goods|id|4|int|10|");
    EXPECT_EQ(columns.rows[1].substr(0, 32), "shop|sales|goods|n|-9|Name|50|10");
    EXPECT_EQ(columns.rows[2].substr(0, 30), "shop|sales|goods|p|3|Price|9|1");
    const RecordedSet parameters = Query("exec sp_sproc_columns 'find'");
    ASSERT_EQ(parameters.rows.size(), 3u);
    EXPECT_EQ(parameters.rows[1].substr(0, 34), "shop|sales|find;1|@n|1|-9|Name|50|");
}

TEST_F(AliasTypeViewsTest, TypesAndSchemasAreListed) {
    EXPECT_EQ(Rows("select name, system_type_id, user_type_id, schema_id, max_length, precision, "
                   "scale, is_nullable from sys.types where is_user_defined = 1 order by name"),
              Texts({"Name|231|257|1|100|0|0|0", "Price|106|258|5|5|9|2|1"}));
    EXPECT_EQ(Rows("select name, schema_id, principal_id from sys.schemas where schema_id > 4"),
              Texts({"sales|5|1"}));
    EXPECT_EQ(Rows("select schema_name, schema_owner from information_schema.schemata "
                   "where schema_name = 'sales'"),
              Texts({"sales|dbo"}));
    EXPECT_EQ(Rows("select name, type_name(user_type_id), is_nullable from sys.columns where "
                   "object_id = object_id('sales.goods') order by column_id"),
              Texts({"id|int|1", "n|Name|0", "p|Price|1"}));
}

TEST_F(AliasTypeViewsTest, ConstraintsHaveTheirTablesSchema) {
    Prepare({"create table sales.keyed(id int constraint PK_keyed primary key)",
             "create table lines(id int constraint FK_lines references sales.keyed(id))"});
    EXPECT_EQ(Rows("select constraint_schema, constraint_name, table_schema from "
                   "information_schema.table_constraints order by constraint_name"),
              Texts({"dbo|FK_lines|dbo", "sales|PK_keyed|sales"}));
    EXPECT_EQ(Rows("select constraint_schema, unique_constraint_schema from "
                   "information_schema.referential_constraints"),
              Texts({"dbo|sales"}));
}

// Every list of the system's own finds what is not dbo's.
TEST_F(AliasTypeViewsTest, ListsShowOtherSchemas) {
    EXPECT_EQ(Rows("exec sp_tables @table_type = \"'TABLE'\""),
              Texts({"shop|sales|goods|TABLE|NULL"}));
    EXPECT_EQ(Rows("exec sp_tables @table_owner = 'dbo', @table_type = \"'TABLE'\""), Texts());
    EXPECT_EQ(Rows("exec sp_stored_procedures"), Texts({"shop|sales|find;1|-1|-1|-1|NULL|2"}));
    Prepare({"create schema early", "create table early.z(a int)", "create table a(a int)",
             "create procedure early.q as select 1", "create procedure r as select 1"});
    EXPECT_EQ(
        Rows("exec sp_tables @table_type = \"'TABLE'\""),
        Texts({"shop|dbo|a|TABLE|NULL", "shop|early|z|TABLE|NULL", "shop|sales|goods|TABLE|NULL"}));
    EXPECT_EQ(Rows("exec sp_stored_procedures @sp_owner = 'e%'"),
              Texts({"shop|early|q;1|-1|-1|-1|NULL|2"}));
    EXPECT_EQ(Rows("exec sp_stored_procedures").size(), 3u);
    Prepare({"create view sales.tables as select id from sales.goods"});
    EXPECT_EQ(Rows("exec sp_tables 'tables', @table_type = 'VIEW'"),
              Texts({"shop|INFORMATION_SCHEMA|TABLES|VIEW|NULL", "shop|sales|tables|VIEW|NULL",
                     "shop|sys|tables|VIEW|NULL"}));
    EXPECT_EQ(Run("exec sp_help 'sales.goods'").sets[0].rows[0].substr(0, 23),
              "goods|sales|user table|");
    EXPECT_EQ(Run("exec sp_help 'goods'").messages[0].substr(0, 5), "15009");
}

}  // namespace
}  // namespace quarv::localdb::catalog
