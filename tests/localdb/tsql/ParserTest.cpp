#include <gtest/gtest.h>

#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/CreateProcedure.h"
#include "localdb/tsql/CreateTable.h"
#include "localdb/tsql/Execute.h"
#include "localdb/tsql/Insert.h"
#include "localdb/tsql/Jumps.h"
#include "localdb/tsql/Select.h"
#include "localdb/tsql/SyntaxError.h"
#include "support/Raised.h"

namespace quarv::localdb::tsql {

namespace {

struct BadRow {
    const char16_t* text;
    int number;
    int line;
    const char16_t* insert;  // the first
};

}  // namespace

class ParserError : public testing::TestWithParam<BadRow> {};

TEST_P(ParserError, HasNumberLineAndWord) {
    const BadRow& row = GetParam();
    try {
        ParseBatch(QString::fromUtf16(row.text));
        FAIL() << "no error";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.Number(), row.number);
        EXPECT_EQ(error.Line(), row.line);
        EXPECT_EQ(error.Inserts().value(0), QString::fromUtf16(row.insert));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Errors, ParserError,
    testing::Values(
        BadRow{u"select", 102, 1, u"select"}, BadRow{u"select *\nfrom", 102, 2, u"from"},
        BadRow{u"select a from from t", 156, 1, u"from"}, BadRow{u"select a b c", 102, 1, u"c"},
        BadRow{u"select 1 +", 102, 1, u"+"}, BadRow{u"select (1", 102, 1, u"1"},
        BadRow{u"select 1)", 102, 1, u")"}, BadRow{u"select (a = 1)", 102, 1, u"="},
        BadRow{u"select a from t where b", 4145, 1, u"b"},
        BadRow{u"select a from t where (b) and c = 1", 4145, 1, u"and"},
        BadRow{u"select a from t where not (b)", 4145, 1, u")"},
        BadRow{u"\n\ninsert t values (1,)", 102, 3, u")"},
        BadRow{u"create table t(a int", 102, 1, u"int"}, BadRow{u"create table t()", 102, 1, u")"},
        BadRow{u"select 1 create view v as select 1 a", 111, 1, u"CREATE VIEW"},
        BadRow{u"select 1\ncreate proc p as select 1", 111, 2, u"CREATE/ALTER PROCEDURE"},
        BadRow{u"create proc p as", 102, 1, u"as"}, BadRow{u"begin select 1", 102, 1, u"1"},
        BadRow{u"begin end", 156, 1, u"end"},
        BadRow{u"sp_help 'x' select 1; sp_who", 102, 1, u"sp_who"},
        BadRow{u"select 1 union", 102, 1, u"union"},
        BadRow{u"\nupdate top (1) percent t set a = 1", 40517, 2, u"UPDATE TOP ... PERCENT"},
        BadRow{u"merge t", 40517, 1, u"MERGE"}, BadRow{u"alter login x", 40517, 1, u"ALTER LOGIN"},
        BadRow{u"alter", 102, 1, u"alter"}, BadRow{u"create or replace view v", 156, 1, u"or"},
        BadRow{u"select 1\nwith x as (select 1 a) select * from x", 319, 2, u"with"},
        BadRow{u"create function f() returns int", 40517, 1, u"CREATE FUNCTION"},
        BadRow{u"create table t(a int check (a > ))", 102, 1, u")"},
        BadRow{u"create table t(a int,\n b as )", 102, 2, u")"},
        BadRow{u"select count(*) over (partition a) from t", 102, 1, u"a"},
        BadRow{u"select a into from t", 156, 1, u"from"},
        BadRow{u"begin try select 1 end try", 102, 1, u"try"},
        BadRow{u"begin try select 1 end\nend", 156, 2, u"end"}, BadRow{u"goto", 102, 1, u"goto"},
        BadRow{u"select:", 102, 1, u":"}, BadRow{u"raiserror('a', 16, 1, )", 102, 1, u")"},
        BadRow{u"throw 50001, 'a'", 102, 1, u"a"}, BadRow{u"waitfor delay 5", 102, 1, u"5"},
        BadRow{u"set nocount", 102, 1, u"nocount"}, BadRow{u"declare @t table", 102, 1, u"table"},
        BadRow{u"select 'a' collate", 102, 1, u"collate"},
        BadRow{u"select a\nat time zone 'x'", 40517, 2, u"AT TIME ZONE"},
        BadRow{u"select * from openjson('x')", 40517, 1, u"OPENJSON"},
        BadRow{u"select * from string_split('a', )", 102, 1, u")"}));

TEST(Parser, AnEmptyBatchHasNoStatements) {
    EXPECT_TRUE(ParseBatch(QString()).empty());
    EXPECT_TRUE(ParseBatch(QStringLiteral(" ; -- nothing\n;")).empty());
}

TEST(Parser, SemicolonsMayDivideStatements) {
    EXPECT_EQ(ParseBatch(QStringLiteral("select 1;;select 2; select 3 select 4")).size(), 4u);
}

TEST(Parser, OnlyTheFirstStatementCallsWithoutExecute) {
    const StatementList statements = ParseBatch(QStringLiteral("sp_helpindex 'Order Details'"));
    ASSERT_EQ(statements.size(), 1u);
    const auto& call = static_cast<const Execute&>(*statements[0]);
    EXPECT_EQ(call.procedure.name, u"sp_helpindex");
    ASSERT_EQ(call.arguments.size(), 1u);
    EXPECT_EQ(static_cast<const Literal&>(*call.arguments[0].value).text, u"Order Details");
}

TEST(Parser, LabelBelongsToNoStatementBeforeIt) {
    const StatementList statements = ParseBatch(
        QStringLiteral("select 1\na: select 1 from t\nb: exec p\nc: commit tran\nd: return\ne:"));
    ASSERT_EQ(statements.size(), 10u);
    EXPECT_EQ(statements[9]->type, StatementType::Label);
    EXPECT_EQ(statements[9]->line, 6);
}

TEST(Parser, GotoKnowsItsLabelAndTheLabelTheWayToIt) {
    const StatementList statements =
        ParseBatch(QStringLiteral("goto x if 1 = 1 begin X: print 'a' end"));
    ASSERT_EQ(statements.size(), 2u);
    const Label* label = static_cast<const Goto&>(*statements[0]).target;
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->name, u"X");
    ASSERT_EQ(label->path.size(), 3u);
    EXPECT_EQ(label->path[0], statements[1].get());
    EXPECT_EQ(label->path[2], label);
}

TEST(Parser, StatementsKnowTheirLines) {
    const StatementList statements = ParseBatch(QStringLiteral("select 1\n\nselect\n2\nprint 'x'"));
    ASSERT_EQ(statements.size(), 3u);
    EXPECT_EQ(statements[1]->line, 3);
    EXPECT_EQ(statements[2]->line, 5);
}

TEST(Parser, ProcedureKeepsItsSourceLetterForLetter) {
    const QString source = QStringLiteral(
        "\n-- first\r\ncreate  PROC p @a int=1 , @b nvarchar(5) out"
        "\nas select @a -- ünd\n\n");
    const StatementList statements = ParseBatch(source);
    const auto& procedure = static_cast<const CreateProcedure&>(*statements.at(0));
    EXPECT_EQ(procedure.source, source);
    ASSERT_EQ(procedure.parameters.size(), 2u);
    EXPECT_EQ(procedure.parameters[0].name, u"@a");
    EXPECT_TRUE(procedure.parameters[0].defaultValue);
    EXPECT_TRUE(procedure.parameters[1].output);
    EXPECT_EQ(procedure.body.size(), 1u);
}

TEST(Parser, MultiplicationBindsTighterThanAddition) {
    const ExpressionPtr sum = ParseExpressionText(QStringLiteral("1 + 2 * 3 - 4"));
    const auto& minus = static_cast<const Arithmetic&>(*sum);
    EXPECT_EQ(minus.sign, u'-');
    const auto& plus = static_cast<const Arithmetic&>(*minus.left);
    EXPECT_EQ(plus.sign, u'+');
    EXPECT_EQ(static_cast<const Arithmetic&>(*plus.right).sign, u'*');
}

TEST(Parser, AndBindsTighterThanOrAndChainsAreFlat) {
    const StatementList statements =
        ParseBatch(QStringLiteral("select 1 where a = 1 or b = 2 and c = 3 or ((d) = 4)"));
    const auto& query = *static_cast<const Select&>(*statements.at(0)).query;
    const auto& disjunction = static_cast<const Junction&>(*query.where);
    EXPECT_FALSE(disjunction.isAnd);
    ASSERT_EQ(disjunction.terms.size(), 3u);
    EXPECT_EQ(disjunction.terms[1]->kind, ExpressionKind::Junction);
    EXPECT_EQ(disjunction.terms[2]->kind, ExpressionKind::Comparison);
}

TEST(Parser, ReadsColumnOptionsInAnyOrder) {
    const StatementList statements =
        ParseBatch(QStringLiteral("create table dbo.t(id int identity(5,-2) primary key, "
                                  "n nvarchar(max) constraint DF_n default N'x' not null, "
                                  "constraint UQ_n unique nonclustered (id desc, n))"));
    const auto& table = static_cast<const CreateTable&>(*statements.at(0));
    ASSERT_EQ(table.columns.size(), 2u);
    EXPECT_TRUE(table.columns[0].identity);
    EXPECT_EQ(table.columns[0].increment, u"-2");
    EXPECT_TRUE(table.columns[1].type.max);
    EXPECT_EQ(table.columns[1].defaultName, u"DF_n");
    EXPECT_EQ(table.columns[1].nullability, Nullability::NotNull);
    ASSERT_EQ(table.keys.size(), 2u);
    EXPECT_TRUE(table.keys[0].primary);
    EXPECT_EQ(table.keys[1].name, u"UQ_n");
    EXPECT_TRUE(table.keys[1].keys[0].descending);
}

TEST(Parser, BoundsNesting) {
    const QString deep = QString(90, u'(') + u'1' + QString(90, u')');
    EXPECT_EQ(ParseBatch(QStringLiteral("select ") + deep).size(), 1u);
    const QString tooDeep = QString(1000, u'(') + u'1' + QString(1000, u')');
    EXPECT_EQ(Raised([&] { ParseBatch(QStringLiteral("select ") + tooDeep); }), 191);
    EXPECT_EQ(Raised([&] {
                  ParseBatch(QStringLiteral("select 1 where ") + tooDeep + QStringLiteral(" = 1"));
              }),
              191);
    EXPECT_EQ(
        Raised([] {
            ParseBatch(QStringLiteral("select ") +
                       QString(5000, u'-').replace(QStringLiteral("-"), QStringLiteral("- ")) +
                       u'1');
        }),
        191);
    QString sum = QStringLiteral("select 1");
    for (int i = 0; i < 10000; ++i) sum += QStringLiteral("+1");
    EXPECT_EQ(Raised([&] { ParseBatch(sum); }), 191);
    QString blocks;
    for (int i = 0; i < 1000; ++i) blocks += QStringLiteral("begin ");
    EXPECT_EQ(Raised([&] { ParseBatch(blocks); }), 191);
}

TEST(Parser, LongConditionsAreNotDeep) {
    QString batch = QStringLiteral("select 1 where a = 0");
    for (int i = 0; i < 10000; ++i) batch += QStringLiteral(" or a = %1").arg(i);
    EXPECT_EQ(ParseBatch(batch).size(), 1u);
}

TEST(Parser, BoundsRowsOfValues) {
    QString batch = QStringLiteral("insert t values (1)");
    for (int i = 1; i < 1000; ++i) batch += QStringLiteral(",(1)");
    EXPECT_EQ(static_cast<const Insert&>(*ParseBatch(batch).at(0)).rows.size(), 1000u);
    EXPECT_EQ(Raised([&] { ParseBatch(batch + QStringLiteral(",(1)")); }), 10738);
}

TEST(Parser, BoundsTheSelectList) {
    QString batch = QStringLiteral("select 1");
    for (int i = 1; i < 4096; ++i) batch += QStringLiteral(",1");
    EXPECT_EQ(ParseBatch(batch).size(), 1u);
    EXPECT_EQ(Raised([&] { ParseBatch(batch + QStringLiteral(",1")); }), 1056);
}

TEST(Parser, BoundsTheNumberOfTokens) {
    const QString batch = QStringLiteral("select 1;").repeated(400'000);
    EXPECT_EQ(Raised([&] { ParseBatch(batch); }), 8623);
}

TEST(Parser, BoundsTheBatch) {
    EXPECT_EQ(Raised([] { ParseBatch(QString(17 * 1024 * 1024, u' ')); }), 8623);
}

// Every front part of a batch that uses most of the grammar gives a tree or an error, never more.
TEST(Parser, SurvivesEveryTruncation) {
    const QString batch = QStringLiteral(
        "create procedure p @a int = 1, @b decimal(10,2) output as begin declare @x nvarchar(max) "
        "= "
        "N'y'; if @a between 1 and 2 or not @x like '%[a-c]' escape '!' select distinct top (3) "
        "t.[a b] as x, 'q' + \"z\" y, count(*) from db..t t join (select 1 a) u on t.a = u.a where "
        "a "
        "in (1,2) group by t.a having max(a) > 1.5e3 order by 1 desc offset 2 rows fetch next 3 "
        "rows "
        "only else exec @a = p @b = @x out, 5; while 1 = 1 break; commit tran; return (case @a "
        "when 1 "
        "then cast($1 as int) else -0x1F end) end begin try raiserror('a', 16, -1, @a, null) with "
        "log, nowait; throw end try begin catch again: throw; goto again end catch waitfor delay "
        "'0:0:1' set nocount, xact_abort on set transaction isolation level read committed throw "
        "1, "
        "@a, 1");
    for (qsizetype length = 0; length <= batch.size(); ++length) {
        try {
            ParseBatch(batch.left(length));
        } catch (const SyntaxError&) {
        }
    }
    SUCCEED();
}

}  // namespace quarv::localdb::tsql
