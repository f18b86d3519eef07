#include "localdb/catalog/CatalogServer.h"
#include "localdb/catalog/HelpText.h"

namespace quarv::localdb::catalog {
namespace {

using HelpProceduresTest = CatalogServer;

TEST_F(HelpProceduresTest, IndexesAreDescribedByName) {
    Prepare(
        {"create table t(a int not null, b int not null, c int, constraint PK_t primary key "
         "(a, b desc), constraint UQ_c unique (c))",
         "create index ix_b on t(b)", "create unique index AX on t(c, a)"});
    const RecordedSet set = Query("sp_helpindex 't'");
    EXPECT_EQ(set.columns, Texts({"index_name nvarchar(128)", "index_description varchar(210)",
                                  "index_keys nvarchar(2078)"}));
    EXPECT_EQ(set.rows, Texts({"AX|nonclustered, unique located on PRIMARY|c, a",
                               "ix_b|nonclustered located on PRIMARY|b",
                               "PK_t|clustered, unique, primary key located on PRIMARY|a, b(-)",
                               "UQ_c|nonclustered, unique, unique key located on PRIMARY|c"}));
}

TEST_F(HelpProceduresTest, TableWithoutIndexGivesAMessageAndNoResult) {
    Prepare({"create table t(a int)"});
    const Recording recording = Run("exec sp_helpindex 'dbo.t'");
    EXPECT_EQ(recording.sets.size(), 0u);
    EXPECT_EQ(recording.messages,
              Texts({"15472 10 The object 'dbo.t' does not have any indexes, or you do not have "
                     "permissions."}));
    EXPECT_EQ(recording.status, 0);
}

TEST_F(HelpProceduresTest, UnknownObjectsAreNamed) {
    for (const std::string name : {"nothing", "sys.t", "a.b.c.d.e", "[t"}) {
        const Recording recording = Run("exec sp_helpindex '" + name + "'");
        EXPECT_EQ(recording.sets.size(), 0u);
        EXPECT_EQ(recording.messages,
                  Texts({"15009 16 The object '" + name +
                         "' does not exist in database 'shop' or is invalid for this "
                         "operation."}));
    }
    EXPECT_EQ(Run("exec sp_help 'master.dbo.t'").messages,
              Texts({"15250 16 The database name component of the object qualifier must be the "
                     "name of the current database."}));
}

TEST_F(HelpProceduresTest, QuotedNamesAreFound) {
    Prepare({"create table [odd ]] name](a int primary key)"});
    EXPECT_EQ(Rows("exec sp_helpindex 'shop.dbo.[odd ]] name]'").size(), 1u);
}

TEST_F(HelpProceduresTest, ProcedureShowsItselfAndItsParameters) {
    Prepare(
        {"create procedure p @i int, @v varchar(50), @n nvarchar(10) = null, @d "
         "decimal(9,2) output, @t datetime, @f float, @m nvarchar(max) as select 1"});
    const Recording recording = Run("sp_help 'p'");
    ASSERT_EQ(recording.sets.size(), 2u);
    EXPECT_EQ(recording.sets[0].columns, Texts({"Name nvarchar(128)", "Owner nvarchar(128)",
                                                "Type nvarchar(31)", "Created_datetime datetime"}));
    ASSERT_EQ(recording.sets[0].rows.size(), 1u);
    EXPECT_EQ(recording.sets[0].rows[0].substr(0, 23), "p|dbo|stored procedure|");
    EXPECT_EQ(recording.sets[1].columns,
              Texts({"Parameter_name nvarchar(128)", "Type nvarchar(128)", "Length smallint",
                     "Prec int", "Scale int", "Param_order int", "Collation nvarchar(128)"}));
    const std::string collation = "|SQL_Latin1_General_CP1_CI_AS";
    EXPECT_EQ(recording.sets[1].rows,
              Texts({"@i|int|4|10|0|1|NULL", "@v|varchar|50|50|NULL|2" + collation,
                     "@n|nvarchar|20|10|NULL|3" + collation, "@d|decimal|5|9|2|4|NULL",
                     "@t|datetime|8|23|3|5|NULL", "@f|float|8|53|NULL|6|NULL",
                     "@m|nvarchar|-1|-1|NULL|7" + collation}));
}

TEST_F(HelpProceduresTest, ProcedureWithoutParametersHasOneResultOnly) {
    Prepare({"create procedure p as select 1"});
    EXPECT_EQ(Run("sp_help 'p'").sets.size(), 1u);
}

TEST_F(HelpProceduresTest, TableShowsSevenResults) {
    Prepare(
        {"create table t(id int identity(5,2) primary key nonclustered, name varchar(20) not "
         "null constraint DF_name default 'x', price decimal(8,2), s nvarchar(max))"});
    const Recording recording = Run("exec sp_help t");
    ASSERT_EQ(recording.sets.size(), 7u);
    EXPECT_EQ(recording.sets[0].rows[0].substr(0, 17), "t|dbo|user table|");
    const std::string collation = "SQL_Latin1_General_CP1_CI_AS";
    EXPECT_EQ(recording.sets[1].rows,
              Texts({"id|int|no|4|10   |0    |no|(n/a)|(n/a)|NULL",
                     "name|varchar|no|20|     |     |no|no|no|" + collation,
                     "price|decimal|no|5|8    |2    |yes|(n/a)|(n/a)|NULL",
                     "s|nvarchar|no|-1|     |     |yes|(n/a)|(n/a)|" + collation}));
    EXPECT_EQ(recording.sets[2].columns,
              Texts({"Identity nvarchar(128)", "Seed numeric(38,0)", "Increment numeric(38,0)",
                     "Not For Replication int"}));
    EXPECT_EQ(recording.sets[2].rows, Texts({"id|5|2|0"}));
    EXPECT_EQ(recording.sets[3].rows, Texts({"No rowguidcol column defined."}));
    EXPECT_EQ(recording.sets[4].rows, Texts({"PRIMARY"}));
    EXPECT_EQ(recording.sets[5].rows.size(), 1u);
    ASSERT_EQ(recording.sets[6].rows.size(), 2u);
    EXPECT_EQ(recording.sets[6].rows[0],
              "DEFAULT on column name|DF_name|(n/a)|(n/a)|(n/a)|(n/a)|('x')");
    EXPECT_EQ(recording.sets[6].rows[1].substr(0, 32), "PRIMARY KEY (non-clustered)|PK__");
    EXPECT_EQ(recording.messages,
              Texts({"15470 10 No foreign keys reference table 't', or you do not have "
                     "permissions on referencing tables.",
                     "15647 10 No views with schema binding reference table 't'."}));
}

TEST_F(HelpProceduresTest, BareTableSaysWhatItLacks) {
    Prepare({"create table t(a float)"});
    const Recording recording = Run("exec sp_help 't'");
    ASSERT_EQ(recording.sets.size(), 5u);
    EXPECT_EQ(recording.sets[1].rows, Texts({"a|float|no|8|53   |NULL|yes|(n/a)|(n/a)|NULL"}));
    EXPECT_EQ(recording.sets[2].rows, Texts({"No identity column defined.|NULL|NULL|NULL"}));
    ASSERT_EQ(recording.messages.size(), 4u);
    EXPECT_EQ(recording.messages[0].substr(0, 5), "15472");
    EXPECT_EQ(recording.messages[1].substr(0, 5), "15469");
    EXPECT_EQ(recording.messages[2].substr(0, 5), "15470");
    EXPECT_EQ(recording.messages[3].substr(0, 5), "15647");
}

TEST_F(HelpProceduresTest, ViewShowsItsColumnsButNoFilegroup) {
    Prepare({"create table t(a int)", "create view v as select a from t"});
    const Recording recording = Run("exec sp_help 'v'");
    ASSERT_EQ(recording.sets.size(), 4u);
    EXPECT_EQ(recording.sets[0].rows[0].substr(0, 11), "v|dbo|view|");
    EXPECT_EQ(recording.sets[1].rows.size(), 1u);
}

TEST_F(HelpProceduresTest, WithoutANameAllObjectsAndTypesAreListed) {
    Prepare({"create table t(a int)", "create procedure p as select 1",
             "create type Price from decimal(9, 2) not null", "create type Code from char(3)"});
    const Recording recording = Run("exec sp_help");
    ASSERT_EQ(recording.sets.size(), 2u);
    EXPECT_EQ(recording.sets[0].rows, Texts({"t|dbo|user table", "p|dbo|stored procedure"}));
    EXPECT_EQ(recording.sets[1].columns,
              Texts({"User_type nvarchar(128)", "Storage_type nvarchar(128)", "Length smallint",
                     "Prec int", "Scale int", "Nullable varchar(35)", "Default_name nvarchar(128)",
                     "Rule_name nvarchar(128)", "Collation nvarchar(128)"}));
    EXPECT_EQ(recording.sets[1].rows,
              Texts({"Code|char|3|3|NULL|yes|none|none|SQL_Latin1_General_CP1_CI_AS",
                     "Price|decimal|5|9|2|no|none|none|NULL"}));
}

TEST_F(HelpProceduresTest, TypesAreDescribed) {
    Prepare({"create type dbo.Name from nvarchar(50) not null", "create table goods(n Name, f int)",
             "create procedure p @n Name as select @n"});
    const RecordedSet set = Query("exec sp_help 'dbo.name'");
    EXPECT_EQ(set.columns[0], "Type_name nvarchar(128)");
    EXPECT_EQ(set.rows,
              Texts({"Name|nvarchar|100|50|NULL|no|none|none|SQL_Latin1_General_CP1_CI_AS"}));
    EXPECT_EQ(Rows("exec sp_help 'int'"), Texts({"int|int|4|10|0|yes|none|none|NULL"}));
    EXPECT_EQ(Rows("exec sp_help 'sys.money'"), Texts({"money|money|8|19|4|yes|none|none|NULL"}));
    EXPECT_EQ(Run("exec sp_help 'none'").messages[0].substr(0, 5), "15009");
    EXPECT_EQ(Run("exec sp_help goods").sets[1].rows[0].substr(0, 10), "n|Name|no|");
    EXPECT_EQ(Run("exec sp_help p").sets[1].rows[0].substr(0, 8), "@n|Name|");
}

TEST_F(HelpProceduresTest, TextComesLineByLine) {
    Prepare({"create procedure p as\r\nselect 1\nselect 2"});
    EXPECT_EQ(Rows("exec sp_helptext 'p'"),
              Texts({"create procedure p as\r\n", "select 1\n", "select 2"}));
    Prepare({"create table t(a int)"});
    EXPECT_EQ(Run("exec sp_helptext 't'").messages,
              Texts({"15197 16 There is no text for object 't'."}));
}

TEST_F(HelpProceduresTest, ExpressionsHaveATextToo) {
    Prepare(
        {"create table t(a int constraint CK_a check (a > 0) constraint DF_a default 5, "
         "b as a + 1)"});
    EXPECT_EQ(Rows("exec sp_helptext 'CK_a'"), Texts({"([a]>(0))"}));
    EXPECT_EQ(Rows("exec sp_helptext 'DF_a'"), Texts({"((5))"}));
    EXPECT_EQ(Rows("exec sp_helptext 't', 'b'"), Texts({"([a]+(1))"}));
    EXPECT_EQ(Run("exec sp_helptext 't', 'a'").messages,
              Texts({"15646 16 Column 'a' is not a computed column."}));
    EXPECT_EQ(Run("exec sp_helptext 't', 'c'").messages,
              Texts({"15645 16 Column 'c' does not exist."}));
    EXPECT_EQ(Run("exec sp_helptext 'CK_a', 'b'").messages,
              Texts({"15218 16 Object 'CK_a' is not a table."}));
}

TEST(HelpTextTest, LongLinesAreCutBetweenCharacters) {
    const QString line = QString(254, u'a') + QStringLiteral("\U0001F600b");
    EXPECT_EQ(HelpTextLines(line),
              QStringList({QString(254, u'a'), QStringLiteral("\U0001F600b")}));
    EXPECT_EQ(HelpTextLines(QString(255, u'a') + u'\n'),
              QStringList({QString(255, u'a'), QStringLiteral("\n")}));
    EXPECT_EQ(HelpTextLines(QString()), QStringList());
}

}  // namespace
}  // namespace quarv::localdb::catalog
