#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

using InformationSchemaTest = CatalogServer;

const std::string Collation = "SQL_Latin1_General_CP1_CI_AS";

TEST_F(InformationSchemaTest, ColumnsHaveTheirDocumentedOrder) {
    EXPECT_EQ(Query("select * from information_schema.columns").columns,
              Texts({"TABLE_CATALOG nvarchar(128)",
                     "TABLE_SCHEMA nvarchar(128)",
                     "TABLE_NAME nvarchar(128)",
                     "COLUMN_NAME nvarchar(128)",
                     "ORDINAL_POSITION int",
                     "COLUMN_DEFAULT nvarchar(4000)",
                     "IS_NULLABLE varchar(3)",
                     "DATA_TYPE nvarchar(128)",
                     "CHARACTER_MAXIMUM_LENGTH int",
                     "CHARACTER_OCTET_LENGTH int",
                     "NUMERIC_PRECISION tinyint",
                     "NUMERIC_PRECISION_RADIX smallint",
                     "NUMERIC_SCALE int",
                     "DATETIME_PRECISION smallint",
                     "CHARACTER_SET_CATALOG nvarchar(128)",
                     "CHARACTER_SET_SCHEMA nvarchar(128)",
                     "CHARACTER_SET_NAME nvarchar(128)",
                     "COLLATION_CATALOG nvarchar(128)",
                     "COLLATION_SCHEMA nvarchar(128)",
                     "COLLATION_NAME nvarchar(128)",
                     "DOMAIN_CATALOG nvarchar(128)",
                     "DOMAIN_SCHEMA nvarchar(128)",
                     "DOMAIN_NAME nvarchar(128)"}));
}

TEST_F(InformationSchemaTest, EachTypeIsDescribedInItsOwnColumns) {
    Prepare({"create table other(id int)",
             "create table goods(id int not null, name nvarchar(40) not null default N'new', note "
             "varchar(max), price money, weight decimal(9,3), ratio float, small real, born date, "
             "made datetime, at smalldatetime, flag bit, code char(3))"});
    const std::string front = "shop|dbo|goods|";
    const std::string none = "NULL|NULL|NULL";
    const std::string noText = "|" + none + "|" + none + "|" + none;
    const auto text = [&](const std::string& set) {
        return "|NULL|NULL|NULL|NULL|NULL|NULL|" + set + "|NULL|NULL|" + Collation + "|" + none;
    };
    EXPECT_EQ(Rows("select * from information_schema.columns where table_name='GOODS' order by "
                   "ordinal_position"),
              Texts({front + "id|1|NULL|NO|int|NULL|NULL|10|10|0|NULL" + noText,
                     front + "name|2|(N'new')|NO|nvarchar|40|80" + text("UNICODE"),
                     front + "note|3|NULL|YES|varchar|-1|-1" + text("iso_1"),
                     front + "price|4|NULL|YES|money|NULL|NULL|19|10|4|NULL" + noText,
                     front + "weight|5|NULL|YES|decimal|NULL|NULL|9|10|3|NULL" + noText,
                     front + "ratio|6|NULL|YES|float|NULL|NULL|53|2|NULL|NULL" + noText,
                     front + "small|7|NULL|YES|real|NULL|NULL|24|2|NULL|NULL" + noText,
                     front + "born|8|NULL|YES|date|NULL|NULL|NULL|NULL|NULL|0" + noText,
                     front + "made|9|NULL|YES|datetime|NULL|NULL|NULL|NULL|NULL|3" + noText,
                     front + "at|10|NULL|YES|smalldatetime|NULL|NULL|NULL|NULL|NULL|0" + noText,
                     front + "flag|11|NULL|YES|bit|NULL|NULL|NULL|NULL|NULL|NULL" + noText,
                     front + "code|12|NULL|YES|char|3|3" + text("iso_1")}));
}

TEST_F(InformationSchemaTest, TablesAndViewsAreToldApart) {
    Prepare({"create table t(a int)", "create view v as select a from t"});
    const RecordedSet set = Query("select * from INFORMATION_SCHEMA.TABLES order by table_name");
    EXPECT_EQ(set.columns, Texts({"TABLE_CATALOG nvarchar(128)", "TABLE_SCHEMA nvarchar(128)",
                                  "TABLE_NAME nvarchar(128)", "TABLE_TYPE varchar(10)"}));
    EXPECT_EQ(set.rows, Texts({"shop|dbo|t|BASE TABLE", "shop|dbo|v|VIEW"}));
    EXPECT_EQ(Rows("select * from shop.information_schema.views"),
              Texts({"shop|dbo|v|create view v as select a from t|NONE|NO"}));
    EXPECT_EQ(Rows("select column_name from information_schema.columns where table_name='v'"),
              Texts({"a"}));
}

TEST_F(InformationSchemaTest, SchemataListTheSchemas) {
    EXPECT_EQ(Rows("select * from information_schema.schemata order by schema_name"),
              Texts({"shop|dbo|dbo|NULL|NULL|iso_1", "shop|guest|guest|NULL|NULL|iso_1",
                     "shop|INFORMATION_SCHEMA|INFORMATION_SCHEMA|NULL|NULL|iso_1",
                     "shop|sys|sys|NULL|NULL|iso_1"}));
}

TEST_F(InformationSchemaTest, RoutinesShowTheirSource) {
    Prepare({"create procedure p as select 1"});
    const RecordedSet set =
        Query("select * from information_schema.routines where routine_name= 'P'");
    ASSERT_EQ(set.columns.size(), 51u);
    EXPECT_EQ(set.columns[0], "SPECIFIC_CATALOG nvarchar(128)");
    EXPECT_EQ(set.columns[6], "ROUTINE_TYPE nvarchar(20)");
    EXPECT_EQ(set.columns[37], "ROUTINE_DEFINITION nvarchar(4000)");
    EXPECT_EQ(set.columns[50], "LAST_ALTERED datetime");
    EXPECT_EQ(Rows("select specific_name, routine_schema, routine_type, data_type, routine_body, "
                   "routine_definition, is_deterministic, sql_data_access, max_dynamic_result_sets "
                   "from information_schema.routines"),
              Texts({"p|dbo|PROCEDURE|NULL|SQL|create procedure p as select 1|NO|MODIFIES|-1"}));
}

TEST_F(InformationSchemaTest, LongSourceIsCutAtFourThousandUnits) {
    Prepare({"create procedure p as select '" + std::string(5000, 'x') + "'"});
    const Texts rows = Rows("select routine_definition from information_schema.routines");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].size(), 4000u);
}

TEST_F(InformationSchemaTest, ParametersAreListedInOrder) {
    Prepare({"create procedure p @a int, @b nvarchar(20) output as select 1"});
    const RecordedSet set = Query("select * from information_schema.parameters");
    ASSERT_EQ(set.columns.size(), 29u);
    EXPECT_EQ(set.columns[7], "PARAMETER_NAME nvarchar(128)");
    EXPECT_EQ(set.columns[13], "COLLATION_NAME nvarchar(128)");
    EXPECT_EQ(set.columns[28], "SCOPE_NAME nvarchar(128)");
    EXPECT_EQ(set.rows,
              Texts({"shop|dbo|p|1|IN|NO|NO|@a|int|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|10|10|0|"
                     "NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL",
                     "shop|dbo|p|2|INOUT|NO|NO|@b|nvarchar|20|40|NULL|NULL|" + Collation +
                         "|NULL|NULL|UNICODE|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|"
                         "NULL|NULL"}));
}

TEST_F(InformationSchemaTest, ViewsTellTheTablesThatTheyName) {
    Prepare({"create schema s", "create table a(x int)", "create table b(x int)",
             "create table s.c(x int)", "create table unused(x int)",
             "create view v as with q as (select x from b) select q.x, (select max(x) from s.c) m "
             "from q join A on a.x = q.x where exists (select 1 from a as other where other.x > 1)",
             "create view s.w as select x from v where x in (select x from shop.dbo.b)"});
    const RecordedSet set =
        Query("select * from information_schema.view_table_usage order by view_name, table_name");
    EXPECT_EQ(set.columns, Texts({"VIEW_CATALOG nvarchar(128)", "VIEW_SCHEMA nvarchar(128)",
                                  "VIEW_NAME nvarchar(128)", "TABLE_CATALOG nvarchar(128)",
                                  "TABLE_SCHEMA nvarchar(128)", "TABLE_NAME nvarchar(128)"}));
    EXPECT_EQ(set.rows,
              Texts({"shop|dbo|v|shop|dbo|a", "shop|dbo|v|shop|dbo|b", "shop|dbo|v|shop|s|c",
                     "shop|s|w|shop|dbo|b", "shop|s|w|shop|dbo|v"}));
}

TEST_F(InformationSchemaTest, ViewsTellTheColumnsThatTheyName) {
    Prepare({"create table a(x int, y int, z int)", "create table b(x int, w int)",
             "create view plain as select y, count(*) n from a where 'z' <> '' group by y",
             "create view every as select b.* from a join b on b.x = a.x",
             "create view nested as select a.z from a where exists (select 1 from b where w = y)",
             "create view given as with q as (select w as x from b) select q.x from q"});
    const RecordedSet set = Query("select * from information_schema.view_column_usage");
    EXPECT_EQ(set.columns, Texts({"VIEW_CATALOG nvarchar(128)", "VIEW_SCHEMA nvarchar(128)",
                                  "VIEW_NAME nvarchar(128)", "TABLE_CATALOG nvarchar(128)",
                                  "TABLE_SCHEMA nvarchar(128)", "TABLE_NAME nvarchar(128)",
                                  "COLUMN_NAME nvarchar(128)"}));
    EXPECT_EQ(Rows("select view_name, table_name, column_name from "
                   "information_schema.view_column_usage order by 1, 2, 3"),
              Texts({"every|a|x", "every|b|w", "every|b|x", "given|b|w", "nested|a|y", "nested|a|z",
                     "nested|b|w", "plain|a|y"}));
}

TEST_F(InformationSchemaTest, NamesThatSqlQuotesAreFound) {
    Prepare({"create table [it's](a int)"});
    EXPECT_EQ(Rows("select column_name from information_schema.columns where table_name='it''s'"),
              Texts({"a"}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
