// Queries that differ in their literals alone: what of them is the same, and what must not be.
#include "localdb/engine/RepeatedSelects.h"

#include <gtest/gtest.h>

#include "TestServer.h"

namespace quarv::localdb::engine {

namespace {

using tsql::LiteralKind;

class RepeatedSelectsTest : public testing::Test {
  protected:
    RepeatedSelectsTest() : session_(server_.NewDatabase(QStringLiteral("d"))) {
        Run(u"create table t(id int not null primary key, n nvarchar(10), v varchar(5), b bigint,"
            u" c char(3), d date, m decimal(9,2))");
        Run(u"insert t values (1, N'one', 'v1', 10, 'x', '2024-02-29', 1.5),"
            u" (2, N'zwei', 'v2', 5000000000, 'y', '2024-03-01', 2),"
            u" (3, N'o''z', 'v?', 30, 'z', null, 3.25)");
    }

    QString Run(const char16_t* batch) {
        return Lines(*session_, QString::fromUtf16(batch)).join(QStringLiteral("; "));
    }
    int ErrorOf(const char16_t* batch) {
        RecordingSink sink;
        session_->RunBatch(QString::fromUtf16(batch), sink);
        return sink.FirstError();
    }

    // The first row, or what stands in its place.
    QString Id(const char16_t* batch) {
        return Lines(*session_, QString::fromUtf16(batch)).value(1);
    }

    TestServer server_;
    std::unique_ptr<Session> session_;
};

QString KeyOf(const char16_t* batch) {
    const std::optional<SelectShape> shape = SelectShape::Of(QString::fromUtf16(batch));
    return shape ? shape->key : QStringLiteral("none");
}

}  // namespace

TEST(SelectShape, TakesLiteralsOut) {
    const auto shape =
        SelectShape::Of(QStringLiteral("select a1, t.* from t\nwhere x = 12 and"
                                       " y='it''s' and z = N'жук'"));
    ASSERT_TRUE(shape);
    EXPECT_EQ(shape->key,
              QStringLiteral("select a1, t.* from t\nwhere x = \1 and y=\2 and z = \3"));
    ASSERT_EQ(shape->literals.size(), 3U);
    EXPECT_EQ(shape->literals[0].literal, LiteralKind::Integer);
    EXPECT_EQ(shape->literals[0].text, u"12");
    EXPECT_EQ(shape->literals[1].literal, LiteralKind::String);
    EXPECT_EQ(shape->literals[1].text, u"it's");
    EXPECT_EQ(shape->literals[2].literal, LiteralKind::NationalString);
    EXPECT_EQ(shape->literals[2].text, u"жук");
}

TEST(SelectShape, TellsKindsAndWordsApart) {
    EXPECT_NE(KeyOf(u"select a where b = 1"), KeyOf(u"select a where b = '1'"));
    EXPECT_NE(KeyOf(u"select a where b = '1'"), KeyOf(u"select a where b = N'1'"));
    EXPECT_NE(KeyOf(u"select a where b = 1"), KeyOf(u"select a where b=1"));
    EXPECT_NE(KeyOf(u"select a1"), KeyOf(u"select a2"));
    EXPECT_EQ(KeyOf(u"select a where b = 1"), KeyOf(u"select a where b = 45"));
    EXPECT_EQ(KeyOf(u"select n'x'"), KeyOf(u"select N'yy'"));
}

TEST(SelectShape, LeavesWhatIsNotPlain) {
    for (const char16_t* batch :
         {u"insert t values (1)", u"select 1.5",    u"select .5",      u"select 1e3",
          u"select 0x1F",         u"select $1",     u"select -1",      u"select @a",
          u"select [a]",          u"select \"a\"",  u"select a -- b",  u"select a /* b */",
          u"select 'a\nb'",       u"select 'open",  u"select 'open''", u"select 1a",
          u"select #t",           u"select a#",     u"select é",       u"select aé",
          u"select 'a\u0001'",    u"select \u0001", u" select 1",      u""}) {
        EXPECT_EQ(KeyOf(batch), u"none") << QString::fromUtf16(batch).toStdString();
    }
    const QString longest =
        QStringLiteral("select '%1'").arg(QString(SelectShape::LongestBatch - 9, u'x'));
    EXPECT_TRUE(SelectShape::Of(longest));
    EXPECT_FALSE(SelectShape::Of(longest + u' '));
}

TEST_F(RepeatedSelectsTest, EachBatchHasItsOwnLiterals) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Run(u"select id, n from t where id = 1"),
                  u"columns id int not null, n nvarchar(10); 1 | one; (1 row)");
        EXPECT_EQ(Run(u"select id, n from t where id = 2"),
                  u"columns id int not null, n nvarchar(10); 2 | zwei; (1 row)");
        EXPECT_EQ(Run(u"select id, n from t where id = 9"),
                  u"columns id int not null, n nvarchar(10); (0 rows)");
        EXPECT_EQ(Run(u"select id x from t where n = N'O''Z'"),
                  u"columns x int not null; 3; (1 row)");
        EXPECT_EQ(Run(u"select id x from t where n = N'one '"),
                  u"columns x int not null; 1; (1 row)");
        EXPECT_EQ(Run(u"select id from t where id >= 2 and v <> 'v2'"),
                  u"columns id int not null; 3; (1 row)");
        EXPECT_EQ(Run(u"select id from t where id >= 1 and v <> 'v1'"),
                  u"columns id int not null; 2; 3; (2 rows)");
    }
}

TEST_F(RepeatedSelectsTest, ALiteralOfAnotherTypeIsNotTakenForAnInt) {
    EXPECT_EQ(Run(u"select id from t where b = 10"), u"columns id int not null; 1; (1 row)");
    EXPECT_EQ(Run(u"select id from t where b = 5000000000"),
              u"columns id int not null; 2; (1 row)");
    EXPECT_EQ(Run(u"select id from t where b = 99999999999999999999999"),
              u"columns id int not null; (0 rows)");
    EXPECT_EQ(Run(u"select id from t where b = 30"), u"columns id int not null; 3; (1 row)");
}

TEST_F(RepeatedSelectsTest, ALiteralThatIsConvertedIsConvertedEachTime) {
    EXPECT_EQ(Run(u"select id from t where d = '2024-02-29'"),
              u"columns id int not null; 1; (1 row)");
    EXPECT_EQ(Run(u"select id from t where d = '2024-03-01'"),
              u"columns id int not null; 2; (1 row)");
    EXPECT_EQ(ErrorOf(u"select id from t where d = '2024-02-30'"), 241);
    EXPECT_EQ(Run(u"select id from t where m = 2"), u"columns id int not null; 2; (1 row)");
    EXPECT_EQ(Run(u"select id from t where m = 3"), u"columns id int not null; (0 rows)");
    EXPECT_EQ(Run(u"select id from t where id = '2'"), u"columns id int not null; 2; (1 row)");
    EXPECT_EQ(ErrorOf(u"select id from t where id = 'x'"), 245);
}

TEST_F(RepeatedSelectsTest, ACharacterOutsideTheCodePageIsAQuestionMarkEachTime) {
    EXPECT_EQ(Run(u"select id from t where v = 'v1'"), u"columns id int not null; 1; (1 row)");
    EXPECT_EQ(Run(u"select id from t where v = 'vж'"), u"columns id int not null; 3; (1 row)");
    EXPECT_EQ(Run(u"select id from t where v = N'vж'"), u"columns id int not null; (0 rows)");
}

TEST_F(RepeatedSelectsTest, ALiteralThatIsMoreThanAValueCounts) {
    EXPECT_EQ(Run(u"select top 1 id from t where id > 0"), u"columns id int not null; 1; (1 row)");
    EXPECT_EQ(Run(u"select top 2 id from t where id > 0"),
              u"columns id int not null; 1; 2; (2 rows)");
    EXPECT_EQ(Run(u"select id, v from t where id > 0 order by 2"),
              u"columns id int not null, v varchar(5); 3 | v?; 1 | v1; 2 | v2; (3 rows)");
    EXPECT_EQ(Run(u"select id, v from t where id > 0 order by 1"),
              u"columns id int not null, v varchar(5); 1 | v1; 2 | v2; 3 | v?; (3 rows)");
    EXPECT_EQ(Run(u"select 'a' x from t where id = 1"),
              u"columns x varchar(1) not null; a; (1 row)");
    EXPECT_EQ(Run(u"select 'abc' x from t where id = 1"),
              u"columns x varchar(3) not null; abc; (1 row)");
}

TEST_F(RepeatedSelectsTest, ErrorsKeepTheirLines) {
    EXPECT_EQ(Run(u"select id\nfrom t\nwhere nosuch = 1"),
              u"error 207 16 1 line 3: Invalid column name 'nosuch'.; (failed)");
    EXPECT_EQ(Run(u"select id\nfrom t\nwhere nosuch = 2"),
              u"error 207 16 1 line 3: Invalid column name 'nosuch'.; (failed)");
    EXPECT_EQ(ErrorOf(u"select id from t where id = 1 1"), 102);
    EXPECT_EQ(ErrorOf(u"select id from t where id = 2 2"), 102);
}

TEST_F(RepeatedSelectsTest, ADefinitionThatChangesChangesTheColumns) {
    const auto other = server_.NewSession();
    other->UseDatabase(QStringLiteral("d"));
    Run(u"create table u(a int, b int) insert u values (1, 2)");
    EXPECT_EQ(Run(u"select * from u where a = 1"), u"columns a int, b int; 1 | 2; (1 row)");
    EXPECT_EQ(Run(u"select * from u where a = 2"), u"columns a int, b int; (0 rows)");
    Lines(*other, QStringLiteral("drop table u create table u(a bigint, c bit, b int)"
                                 " insert u values (2, 1, 0)"));
    EXPECT_EQ(Run(u"select * from u where a = 2"),
              u"columns a bigint, c bit, b int; 2 | 1 | 0; (1 row)");
    Lines(*other, QStringLiteral("drop table u create table u(a nvarchar(3))"
                                 " insert u values ('2')"));
    EXPECT_EQ(Run(u"select * from u where a = 2"), u"columns a nvarchar(3); 2; (1 row)");
    Lines(*other, QStringLiteral("drop table u"));
    EXPECT_EQ(ErrorOf(u"select * from u where a = 2"), 208);
    Lines(*other, QStringLiteral("create view u as select id a from t"));
    EXPECT_EQ(Run(u"select * from u where a = 2"), u"columns a int not null; 2; (1 row)");
}

TEST_F(RepeatedSelectsTest, ARollbackBringsTheOldColumnsBack) {
    Run(u"create table u(a int) insert u values (1)");
    EXPECT_EQ(Run(u"select * from u where a = 1"), u"columns a int; 1; (1 row)");
    Run(u"begin tran drop table u create table u(x bit, a int) insert u values (1, 1)");
    EXPECT_EQ(Run(u"select * from u where a = 1"), u"columns x bit, a int; 1 | 1; (1 row)");
    Run(u"rollback");
    EXPECT_EQ(Run(u"select * from u where a = 1"), u"columns a int; 1; (1 row)");
}

TEST_F(RepeatedSelectsTest, TheSameTextInAnotherDatabase) {
    EXPECT_EQ(Run(u"select id from t where id = 1"), u"columns id int not null; 1; (1 row)");
    const auto other = server_.NewDatabase(QStringLiteral("e"));
    Lines(*other, QStringLiteral("create table t(id bigint) insert t values (1), (1)"));
    session_->UseDatabase(QStringLiteral("e"));
    EXPECT_EQ(Run(u"select id from t where id = 1"), u"columns id bigint; 1; 1; (2 rows)");
    session_->UseDatabase(QStringLiteral("d"));
    EXPECT_EQ(Run(u"select id from t where id = 1"), u"columns id int not null; 1; (1 row)");
    session_->UseDatabase(QStringLiteral("tempdb"));
    EXPECT_EQ(ErrorOf(u"select id from t where id = 1"), 208);
    Run(u"create table t(x int, id int) insert t values (7, 1)");
    EXPECT_EQ(Run(u"select x from t where id = 1"), u"columns x int; 7; (1 row)");
    EXPECT_EQ(Run(u"select x from t where id = 2"), u"columns x int; (0 rows)");
}

TEST_F(RepeatedSelectsTest, RowsThatArePutInAreSeen) {
    EXPECT_EQ(Run(u"select id from t where id = 4"), u"columns id int not null; (0 rows)");
    Run(u"insert t(id) values (4)");
    EXPECT_EQ(Run(u"select id from t where id = 4"), u"columns id int not null; 4; (1 row)");
    Run(u"set rowcount 1");
    EXPECT_EQ(Run(u"select id from t where id > 4"), u"columns id int not null; (0 rows)");
    EXPECT_EQ(Run(u"select id from t where id > 1"), u"columns id int not null; 2; (1 row)");
    Run(u"set rowcount 0 set nocount on");
    EXPECT_EQ(Run(u"select id from t where id = 4"), u"columns id int not null; 4; (done)");
}

TEST_F(RepeatedSelectsTest, ParametersHaveTheirOwnValues) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id = @i', N'@i int', 1"), u"1");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id = @i', N'@i int', 3"), u"3");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id = @i', N'@i int', null"),
                  u"(0 rows)");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where n = @n and id > 1',"
                     u" N'@n nvarchar(9)', N'ZWEI'"),
                  u"2");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where n = @n and id > 1',"
                     u" N'@n nvarchar(9)', N'one'"),
                  u"(0 rows)");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id > @a and id < @b',"
                     u" N'@b int, @a int', 4, 2"),
                  u"3");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id > @a and id < @b',"
                     u" N'@a int, @b int', 0, 2"),
                  u"1");
    }
}

TEST_F(RepeatedSelectsTest, ParametersOfAnotherTypeAreConvertedEachTime) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id = @i', N'@i int', 2"), u"2");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where id = @i', N'@i varchar(5)', "
                     u"'3'"),
                  u"3");
        EXPECT_EQ(ErrorOf(u"exec sp_executesql N'select id from t where id = @i',"
                          u" N'@i varchar(5)', 'x'"),
                  245);
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where d = @d', N'@d datetime',"
                     u" '2024-03-01'"),
                  u"2");
        EXPECT_EQ(Id(u"exec sp_executesql N'select id from t where d = @d', N'@d datetime',"
                     u" '2024-02-29'"),
                  u"1");
    }
}

TEST_F(RepeatedSelectsTest, WithParametersADefinitionMayChange) {
    const char16_t* const call =
        u"exec sp_executesql N'select * from u where a = @i', N'@i int', 1";
    Run(u"create table u(a int) insert u values (1)");
    EXPECT_EQ(Run(call), u"columns a int; 1; (1 row); status 0; (executed)");
    EXPECT_EQ(Run(call), u"columns a int; 1; (1 row); status 0; (executed)");
    Run(u"drop table u create table u(b bit, a int) insert u values (0, 1)");
    EXPECT_EQ(Run(call), u"columns b bit, a int; 0 | 1; (1 row); status 0; (executed)");
    Run(u"begin tran drop table u create table u(a bigint)");
    EXPECT_EQ(Run(call), u"columns a bigint; (0 rows); status 0; (executed)");
    Run(u"rollback");
    EXPECT_EQ(Run(call), u"columns b bit, a int; 0 | 1; (1 row); status 0; (executed)");
    Run(u"drop table u");
    EXPECT_EQ(ErrorOf(call), 208);
}

TEST_F(RepeatedSelectsTest, AQueryInsideAnotherTextIsThatText) {
    const char16_t* const batch =
        u"exec sp_executesql N'select id from t where id = @i', N'@i int', 2"
        u" select id from t where id = 1";
    EXPECT_EQ(Run(batch), Run(batch));
    EXPECT_EQ(Run(batch),
              u"columns id int not null; 2; (1 row); status 0; (executed); "
              u"columns id int not null; 1; (1 row)");
}

}  // namespace quarv::localdb::engine
