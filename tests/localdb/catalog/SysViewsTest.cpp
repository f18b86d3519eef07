#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class SysViewsTest : public CatalogServer {
  protected:
    SysViewsTest() {
        Prepare(
            {"create table t(id int identity not null constraint PK_t primary key, name "
             "nvarchar(40) constraint DF_n default N'x', p decimal(9,3))",
             "create table heap(a bit)", "create index ix on heap(a desc)",
             "create view v as select id from t", "create procedure pr @a int as select @a"});
    }
};

TEST_F(SysViewsTest, ObjectsTellTheirTypes) {
    EXPECT_EQ(
        Rows("select name, type, type_desc from sys.objects order by name"),
        Texts({"DF_n|D |DEFAULT_CONSTRAINT", "heap|U |USER_TABLE", "PK_t|PK|PRIMARY_KEY_CONSTRAINT",
               "pr|P |SQL_STORED_PROCEDURE", "t|U |USER_TABLE", "v|V |VIEW"}));
    EXPECT_EQ(Rows("select name from sys.objects where type = 'U' and name = 'T'"), Texts({"t"}));
}

TEST_F(SysViewsTest, TypedViewsShowTheirTypeOnly) {
    EXPECT_EQ(Rows("select name from sys.tables order by name"), Texts({"heap", "t"}));
    EXPECT_EQ(Rows("select name from sys.views"), Texts({"v"}));
    EXPECT_EQ(Rows("select name from sys.procedures"), Texts({"pr"}));
}

TEST_F(SysViewsTest, OldListIsFoundWithoutItsSchema) {
    for (const std::string name : {"sysobjects", "dbo.sysobjects", "sys.sysobjects"}) {
        EXPECT_EQ(Rows("select name, xtype, type from " + name + " where name = 'PK_t'"),
                  Texts({"PK_t|PK|K "}));
    }
    EXPECT_EQ(Run("select name from tables").messages,
              Texts({"208 16 Invalid object name 'tables'."}));
}

TEST_F(SysViewsTest, ColumnsTellTheirSizes) {
    EXPECT_EQ(Rows("select c.name, column_id, system_type_id, user_type_id, max_length, precision, "
                   "scale, collation_name, is_nullable, is_identity from sys.columns c join "
                   "sys.tables t on t.object_id = c.object_id order by t.name, column_id"),
              Texts({"a|1|104|104|1|1|0|NULL|1|0", "id|1|56|56|4|10|0|NULL|0|1",
                     "name|2|231|231|80|0|0|SQL_Latin1_General_CP1_CI_AS|1|0",
                     "p|3|106|106|5|9|3|NULL|1|0"}));
}

TEST_F(SysViewsTest, IndexesAndHeapsAreListed) {
    EXPECT_EQ(Rows("select i.name, index_id, i.type_desc, is_unique, is_primary_key from "
                   "sys.indexes i join sys.tables t on t.object_id = i.object_id order by t.name, "
                   "index_id"),
              Texts({"NULL|0|HEAP|0|0", "ix|2|NONCLUSTERED|0|0", "PK_t|1|CLUSTERED|1|1"}));
    EXPECT_EQ(Rows("select index_id, column_id, key_ordinal, is_descending_key from "
                   "sys.index_columns order by is_descending_key"),
              Texts({"1|1|1|0", "2|1|1|1"}));
}

TEST_F(SysViewsTest, TypesListEveryTypeOnce) {
    EXPECT_EQ(Rows("select name, system_type_id, user_type_id, max_length, precision, scale from "
                   "sys.types where name in ('int', 'sysname', 'decimal', 'nvarchar', 'date') "
                   "order by name"),
              Texts({"date|40|40|3|10|0", "decimal|106|106|17|38|38", "int|56|56|4|10|0",
                     "nvarchar|231|231|8000|0|0", "sysname|231|256|256|0|0"}));
}

TEST_F(SysViewsTest, DatabasesAreTheSameFromEachOfThem) {
    Prepare({"create database [o'dd $ :db]"});
    const Texts rows = {"master|1|160|SQL_Latin1_General_CP1_CI_AS|ONLINE",
                        "o'dd $ :db|6|160|SQL_Latin1_General_CP1_CI_AS|ONLINE",
                        "shop|5|160|SQL_Latin1_General_CP1_CI_AS|ONLINE",
                        "tempdb|2|160|SQL_Latin1_General_CP1_CI_AS|ONLINE"};
    for (const std::string place : {"", "master."}) {
        EXPECT_EQ(Rows("select name, database_id, compatibility_level, collation_name, state_desc "
                       "from " +
                       place + "sys.databases order by name"),
                  rows);
    }
    Prepare({"drop database [o'dd $ :db]"});
    EXPECT_EQ(Rows("select name from sys.databases where database_id = db_id()"), Texts({"shop"}));
    EXPECT_EQ(Rows("select name from sys.databases where create_date between getdate() - 1 and "
                   "getdate() + 1"),
              Texts({"master", "shop", "tempdb"}));
    EXPECT_EQ(Rows("select count(*) from sys.databases where owner_sid = 0x01"), Texts({"3"}));
}

TEST_F(SysViewsTest, ModulesAndParametersAndSchemas) {
    EXPECT_EQ(Rows("select definition from sys.sql_modules m join sys.views v on v.object_id = "
                   "m.object_id"),
              Texts({"create view v as select id from t"}));
    EXPECT_EQ(Rows("select name, parameter_id, system_type_id, is_output from sys.parameters"),
              Texts({"@a|1|56|0"}));
    EXPECT_EQ(Rows("select name, schema_id from sys.schemas where schema_id = 1"),
              Texts({"dbo|1"}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
