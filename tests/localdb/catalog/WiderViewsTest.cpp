// The views beside the ones that every tool reads: what all objects are, who there is, and the
// catalogue as older programs know it.
#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class WiderViewsTest : public CatalogServer {
  protected:
    WiderViewsTest() {
        Prepare(
            {"create table t(id int identity constraint PK_t primary key, name nvarchar(40) "
             "not null, p decimal(9,3))",
             "create unique index ux on t(name, p)", "create table heap(a bit)",
             "create view v as select id from t",
             "create procedure pr @a int, @b varchar(5) output as select @a"});
    }
};

TEST_F(WiderViewsTest, TablesTellWhatTheyAreNot) {
    EXPECT_EQ(Rows("select name, max_column_id_used, uses_ansi_nulls, lock_escalation_desc, "
                   "is_memory_optimized, temporal_type_desc, history_table_id, is_external, "
                   "ledger_type_desc from sys.tables order by name"),
              Texts({"heap|1|1|TABLE|0|NON_TEMPORAL_TABLE|NULL|0|NON_LEDGER_TABLE",
                     "t|3|1|TABLE|0|NON_TEMPORAL_TABLE|NULL|0|NON_LEDGER_TABLE"}));
    EXPECT_EQ(Rows("select name, with_check_option, is_replicated from sys.views"),
              Texts({"v|0|0"}));
    EXPECT_EQ(Rows("select name, is_auto_executed from sys.procedures"), Texts({"pr|0"}));
}

TEST_F(WiderViewsTest, ViewsTellOfTheirCheckOption) {
    Prepare({"create view w as select id from t where id > 0 with check option",
             "create view x as select id, 'with check option' as a from t"});
    EXPECT_EQ(Rows("select name, with_check_option from sys.views order by name"),
              Texts({"v|0", "w|1", "x|0"}));
    EXPECT_EQ(Rows("select table_name, check_option from information_schema.views "
                   "order by table_name"),
              Texts({"v|NONE", "w|CASCADE", "x|NONE"}));
}

TEST_F(WiderViewsTest, AllObjectsAreTheUsersAndTheSystems) {
    EXPECT_EQ(Rows("select name, schema_id, is_ms_shipped from sys.all_objects "
                   "where name in ('t', 'v', 'columns', 'objects') order by name, schema_id"),
              Texts({"COLUMNS|3|1", "columns|4|1", "objects|4|1", "t|1|0", "v|1|0"}));
    EXPECT_EQ(Rows("select name from sys.all_views where is_ms_shipped = 0"), Texts({"v"}));
    EXPECT_EQ(Rows("select count(*) from sys.system_objects where object_id >= 0"), Texts({"0"}));
    EXPECT_EQ(Rows("select name from sys.system_views where name = 'sysobjects'"),
              Texts({"sysobjects"}));
}

TEST_F(WiderViewsTest, PrincipalsAreTheFixedOnes) {
    EXPECT_EQ(Rows("select name, principal_id, type, default_schema_name, is_fixed_role from "
                   "sys.database_principals where principal_id in (0, 1, 16384) "
                   "order by principal_id"),
              Texts({"public|0|R|NULL|0", "dbo|1|S|dbo|0", "db_owner|16384|R|NULL|1"}));
    EXPECT_EQ(Rows("select uid, name, hasdbaccess, issqlrole from sysusers where uid < 2 "
                   "order by uid"),
              Texts({"0|public|0|1", "1|dbo|1|0"}));
}

TEST_F(WiderViewsTest, OlderProgramsFindColumnsAndParameters) {
    EXPECT_EQ(Rows("select c.name, c.xtype, c.length, c.prec, c.scale, c.isnullable, c.status "
                   "from syscolumns c join sysobjects o on o.id = c.id where o.name = 't' "
                   "order by c.colid"),
              Texts({"id|56|4|10|0|0|128", "name|231|80|40|NULL|0|0", "p|106|5|9|3|1|8"}));
    EXPECT_EQ(Rows("select name, isoutparam, colid from dbo.syscolumns where id = object_id('pr') "
                   "order by colid"),
              Texts({"@a|0|1", "@b|1|2"}));
}

TEST_F(WiderViewsTest, OlderProgramsFindIndexesAndDatabases) {
    EXPECT_EQ(Rows("select name, indid, status, keycnt from sysindexes "
                   "where id in (object_id('t'), object_id('heap')) order by id, indid"),
              Texts({"PK_t|1|2066|1", "ux|2|2|2", "NULL|0|0|0"}));
    EXPECT_EQ(Rows("select name, cmptlevel from sysdatabases where dbid = 1"),
              Texts({"master|160"}));
}

TEST_F(WiderViewsTest, RowsAreCountedForEachIndex) {
    Prepare({"insert into t(name, p) values (N'a', 1), (N'b', 2), (N'c', 3)",
             "insert into heap values (1)"});
    EXPECT_EQ(Rows("select object_name(id), indid, rows, rowcnt from sysindexes "
                   "where id in (object_id('t'), object_id('heap')) order by id, indid"),
              Texts({"t|1|3|3", "t|2|3|3", "heap|0|1|1"}));
    EXPECT_EQ(Rows("select object_name(object_id), index_id, partition_number, rows, "
                   "data_compression_desc from sys.partitions order by object_id, index_id"),
              Texts({"t|1|1|3|NONE", "t|2|1|3|NONE", "heap|0|1|1|NONE"}));
    Prepare({"delete from t where name = N'a'"});
    EXPECT_EQ(Rows("select rows from sysindexes where name = 'PK_t'"), Texts({"2"}));
}

TEST_F(WiderViewsTest, OlderViewsHaveTheirDocumentedColumns) {
    const auto names = [this](const std::string& view) {
        std::string list;
        for (const std::string& column : Query("select * from " + view).columns) {
            list += column.substr(0, column.find(' ')) + ' ';
        }
        return list;
    };
    EXPECT_EQ(names("sysindexes"),
              "id status first indid root minlen keycnt groupid dpages reserved used rowcnt "
              "rowmodctr reserved3 reserved4 xmaxlen maxirow OrigFillFactor StatVersion reserved2 "
              "FirstIAM impid lockflags pgmodctr keys name statblob maxlen rows ");
    EXPECT_EQ(names("syscolumns"),
              "name id xtype typestat xusertype length xprec xscale colid xoffset bitpos reserved "
              "colstat cdefault domain number colorder autoval offset collationid language status "
              "type usertype printfmt prec scale iscomputed isoutparam isnullable collation "
              "tdscollation ");
    EXPECT_EQ(names("sysobjects"),
              "name id xtype uid info status base_schema_ver replinfo parent_obj crdate ftcatid "
              "schema_ver stats_schema_ver type userstat sysstat indexdel refdate version deltrig "
              "instrig updtrig seltrig category cache ");
    EXPECT_EQ(names("sysdatabases"),
              "name dbid sid mode status status2 crdate reserved category cmptlevel filename "
              "version ");
}

TEST_F(WiderViewsTest, DatabasesTellTheirOptions) {
    EXPECT_EQ(Rows("select page_verify_option_desc, is_auto_create_stats_on, is_broker_enabled, "
                   "log_reuse_wait_desc, containment_desc, is_encrypted, default_language_name "
                   "from sys.databases where name = 'master'"),
              Texts({"CHECKSUM|1|0|NOTHING|NONE|0|NULL"}));
}

TEST_F(WiderViewsTest, WhatIsNotThereIsNoObject) {
    EXPECT_EQ(Run("select * from sys.configurations").messages,
              Texts({"208 16 Invalid object name 'sys.configurations'."}));
    EXPECT_EQ(Run("select * from sys.dm_exec_sessions").messages,
              Texts({"40517 16 Keyword or statement option 'sys.dm_exec_sessions' is not "
                     "supported in this version of SQL Server."}));
    EXPECT_EQ(Run("exec sp_describe_first_result_set N'select 1'").messages,
              Texts({"40517 16 Keyword or statement option 'procedure "
                     "sp_describe_first_result_set' is not supported in this version of SQL "
                     "Server."}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
