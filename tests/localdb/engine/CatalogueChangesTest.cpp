// What a session has met once it may keep; here is what must not be kept: definitions that were
// changed since, by the session itself, by another one or by a rollback.
#include <gtest/gtest.h>

#include "TestServer.h"

namespace quarv::localdb::engine {

namespace {

class CatalogueChangesTest : public testing::Test {
  protected:
    CatalogueChangesTest() : one_(server_.NewDatabase(QStringLiteral("d"))) {
        two_ = server_.NewSession();
        two_->UseDatabase(QStringLiteral("d"));
    }

    // What the batch shows, on one line.
    static QString Run(Session& session, const char16_t* batch) {
        return Lines(session, QString::fromUtf16(batch)).join(QStringLiteral("; "));
    }
    static int ErrorOf(Session& session, const char16_t* batch) {
        RecordingSink sink;
        session.RunBatch(QString::fromUtf16(batch), sink);
        return sink.FirstError();
    }
    QString One(const char16_t* batch) { return Run(*one_, batch); }
    QString Two(const char16_t* batch) { return Run(*two_, batch); }

    TestServer server_;
    std::unique_ptr<Session> one_, two_;
};

}  // namespace

TEST_F(CatalogueChangesTest, AnotherSessionsNewTableOfTheSameName) {
    One(u"create table t(a int)");
    EXPECT_EQ(Two(u"insert t values (1) select * from t"), u"(1 row); columns a int; 1; (1 row)");
    One(u"drop table t create table t(b nvarchar(3) not null, a int)");
    EXPECT_EQ(Two(u"select * from t"), u"columns b nvarchar(3) not null, a int; (0 rows)");
    EXPECT_EQ(Two(u"insert t values (N'x', 1) select * from t"),
              u"(1 row); columns b nvarchar(3) not null, a int; x | 1; (1 row)");
    One(u"drop table t");
    EXPECT_EQ(ErrorOf(*two_, u"select * from t"), 208);
    EXPECT_EQ(ErrorOf(*two_, u"insert t values (N'x', 1)"), 208);
}

TEST_F(CatalogueChangesTest, ARollbackBringsTheOldTableBack) {
    One(u"create table t(a int) insert t values (1)");
    EXPECT_EQ(One(u"select * from t"), u"columns a int; 1; (1 row)");
    EXPECT_EQ(One(u"begin tran drop table t create table t(b bigint) select * from t"),
              u"transaction begins; (done); (done); (done); columns b bigint; (0 rows)");
    EXPECT_EQ(One(u"rollback select * from t"),
              u"transaction rolls back; (done); columns a int; 1; (1 row)");
    // The same number of changes as before the rollback, but others.
    One(u"begin tran drop table t create table t(c bit)");
    EXPECT_EQ(One(u"select * from t"), u"columns c bit; (0 rows)");
    EXPECT_EQ(One(u"rollback insert t values (2) select a from t"),
              u"transaction rolls back; (done); (1 row); columns a int; 1; 2; (2 rows)");
}

TEST_F(CatalogueChangesTest, ARollbackToASavepointToo) {
    One(u"create table t(a int) insert t values (1)");
    One(u"begin tran insert t values (2) save tran s drop table t create table t(b bigint)");
    EXPECT_EQ(One(u"select * from t"), u"columns b bigint; (0 rows)");
    One(u"rollback tran s");
    EXPECT_EQ(One(u"select * from t"), u"columns a int; 1; 2; (2 rows)");
    One(u"rollback");
    EXPECT_EQ(One(u"select * from t"), u"columns a int; 1; (1 row)");
}

TEST_F(CatalogueChangesTest, AStatementThatFailsHalfwayLeavesTheOldOne) {
    One(u"create table t(a int)");
    One(u"select * from t");
    EXPECT_EQ(ErrorOf(*one_, u"create table t(b int)"), 2714);
    EXPECT_EQ(One(u"select * from t"), u"columns a int; (0 rows)");
    EXPECT_EQ(ErrorOf(*one_, u"create table u(a int primary key, b int check (nosuch > 1))"), 207);
    EXPECT_EQ(ErrorOf(*one_, u"select * from u"), 208);
}

TEST_F(CatalogueChangesTest, AnotherSessionsTransactionIsNotSeenBeforeItCommits) {
    One(u"create table t(a int)");
    EXPECT_EQ(Two(u"select * from t"), u"columns a int; (0 rows)");
    One(u"begin tran drop table t create table t(b bigint)");
    EXPECT_EQ(Two(u"select * from t"), u"columns a int; (0 rows)");
    EXPECT_EQ(One(u"select * from t"), u"columns b bigint; (0 rows)");
    One(u"commit");
    EXPECT_EQ(Two(u"select * from t"), u"columns b bigint; (0 rows)");
}

TEST_F(CatalogueChangesTest, ATransactionGoesOnWithWhatItHasReadAndThenSeesTheNew) {
    One(u"create table t(a int)");
    // No lock and no snapshot before its first change: each statement sees what is committed.
    EXPECT_EQ(Two(u"begin tran select * from t"),
              u"transaction begins; (done); columns a int; (0 rows)");
    One(u"drop table t create table t(b bigint)");
    EXPECT_EQ(Two(u"select * from t"), u"columns b bigint; (0 rows)");
    EXPECT_EQ(Two(u"insert t values (5) commit select * from t"),
              u"(1 row); transaction commits; (done); columns b bigint; 5; (1 row)");
}

TEST_F(CatalogueChangesTest, AnIdentityCountsOnWhoeverInserts) {
    One(u"create table t(i int identity(1,1), a int)");
    One(u"insert t(a) values (1)");
    Two(u"insert t(a) values (2)");
    One(u"insert t(a) values (3)");
    Two(u"begin tran insert t(a) values (4) rollback");
    EXPECT_EQ(One(u"insert t(a) values (5) select i, a from t order by i"),
              u"(1 row); columns i int not null identity, a int; 1 | 1; 2 | 2; 3 | 3; 4 | 5; "
              u"(4 rows)");
    One(u"truncate table t");
    EXPECT_EQ(Two(u"insert t(a) values (6) select i from t"),
              u"(1 row); columns i int not null identity; 1; (1 row)");
}

TEST_F(CatalogueChangesTest, AConstraintThatAnotherSessionMade) {
    One(u"create table p(id int primary key) create table c(id int)");
    EXPECT_EQ(Two(u"insert c values (1) delete c"), u"(1 row); (1 row)");
    EXPECT_EQ(Two(u"insert p values (1) delete p"), u"(1 row); (1 row)");
    One(u"drop table c create table c(id int references p(id), n int check (n > 0) default 7)");
    EXPECT_EQ(ErrorOf(*two_, u"insert c values (1, 1)"), 547);
    EXPECT_EQ(Two(u"insert p values (1) insert c(id) values (1) select n from c"),
              u"(1 row); (1 row); columns n int; 7; (1 row)");
    EXPECT_EQ(ErrorOf(*two_, u"insert c values (1, 0)"), 547);
    // The table that is referred to is told of it, too.
    EXPECT_EQ(ErrorOf(*two_, u"delete p"), 547);
    One(u"drop table c");
    EXPECT_EQ(Two(u"delete p"), u"(1 row)");
}

TEST_F(CatalogueChangesTest, AnIndexThatAnotherSessionMade) {
    One(u"create table t(a int)");
    Two(u"insert t values (1)");
    One(u"create unique index i on t(a)");
    EXPECT_EQ(ErrorOf(*two_, u"insert t values (1)"), 2601);
    One(u"drop index i on t");
    EXPECT_EQ(Two(u"insert t values (1)"), u"(1 row)");
}

TEST_F(CatalogueChangesTest, ViewsAndProceduresOfTheSameName) {
    One(u"create table t(a int) insert t values (1)");
    One(u"create view v as select a from t");
    One(u"create procedure p as select a from v");
    EXPECT_EQ(Two(u"select * from v"), u"columns a int; 1; (1 row)");
    EXPECT_EQ(Two(u"exec p"), u"columns a int; 1; (1 row); status 0; (executed)");
    One(u"drop view v");
    EXPECT_EQ(ErrorOf(*two_, u"select * from v"), 208);
    EXPECT_EQ(ErrorOf(*two_, u"exec p"), 208);
    One(u"create view v as select a + 1 as a, 'x' as b from t");
    EXPECT_EQ(Two(u"select * from v"), u"columns a int, b varchar(1) not null; 2 | x; (1 row)");
    EXPECT_EQ(Two(u"exec p"), u"columns a int; 2; (1 row); status 0; (executed)");
    One(u"drop procedure p");
    EXPECT_EQ(ErrorOf(*two_, u"exec p"), 2812);
    One(u"create procedure p @n int = 4 as select @n n");
    EXPECT_EQ(Two(u"exec p"), u"columns n int; 4; (1 row); status 0; (executed)");
    EXPECT_EQ(Two(u"exec p 5"), u"columns n int; 5; (1 row); status 0; (executed)");
}

TEST_F(CatalogueChangesTest, TheSameNameInAnotherDatabase) {
    const auto other = server_.NewDatabase(QStringLiteral("e"));
    One(u"create table t(a int) insert t values (1)");
    Run(*other, u"create table t(b bit) insert t values (0)");
    EXPECT_EQ(One(u"select * from t"), u"columns a int; 1; (1 row)");
    one_->UseDatabase(QStringLiteral("e"));
    EXPECT_EQ(One(u"select * from t"), u"columns b bit; 0; (1 row)");
    EXPECT_EQ(One(u"select * from d..t"), u"columns a int; 1; (1 row)");
    EXPECT_EQ(One(u"insert t values (1)"), u"(1 row)");
    EXPECT_EQ(One(u"use d insert t values (5) select * from t"),
              u"database e -> d; (done); (1 row); columns a int; 1; 5; (2 rows)");
}

TEST_F(CatalogueChangesTest, ATemporaryTableOfTheSameNameWithOtherColumns) {
    EXPECT_EQ(One(u"create table #t(a int) insert #t values (1) select * from #t drop table #t"),
              u"(done); (1 row); columns a int; 1; (1 row); (done)");
    EXPECT_EQ(One(u"create table #t(b bit, a int) insert #t values (1, 2) select * from #t"),
              u"(done); (1 row); columns b bit, a int; 1 | 2; (1 row)");
    One(u"create procedure p as create table #t(c bigint) insert #t values (3) select * from #t");
    EXPECT_EQ(One(u"exec p select * from #t"),
              u"(done); (1 row); columns c bigint; 3; (1 row); status 0; (executed); "
              u"columns b bit, a int; 1 | 2; (1 row)");
    EXPECT_EQ(ErrorOf(*two_, u"select * from #t"), 208);
}

TEST_F(CatalogueChangesTest, ANameIsTheSameInAnyLetterCase) {
    One(u"create table Tea(a int)");
    EXPECT_EQ(Two(u"select * from TEA"), u"columns a int; (0 rows)");
    EXPECT_EQ(Two(u"select * from dbo.tea"), u"columns a int; (0 rows)");
    One(u"drop table tea");
    EXPECT_EQ(ErrorOf(*two_, u"select * from TEA"), 208);
    EXPECT_EQ(ErrorOf(*two_, u"select * from dbo.tea"), 208);
}

TEST_F(CatalogueChangesTest, WhatAnotherSessionAlters) {
    One(u"create table t(a int) insert t values (1)");
    One(u"create view v as select a from t");
    One(u"create procedure p as select * from v");
    EXPECT_EQ(Two(u"exec p"), u"columns a int; 1; (1 row); status 0; (executed)");
    EXPECT_EQ(Two(u"select * from t where a = 1"), u"columns a int; 1; (1 row)");
    One(u"alter table t add b nvarchar(3) not null default N'x'");
    EXPECT_EQ(Two(u"select * from t where a = 1"),
              u"columns a int, b nvarchar(3) not null; 1 | x; (1 row)");
    EXPECT_EQ(Two(u"insert t(a) values (2) select b from t where a = 2"),
              u"(1 row); columns b nvarchar(3) not null; x; (1 row)");
    One(u"alter view v as select b, a from t where a = 2");
    EXPECT_EQ(Two(u"exec p"),
              u"columns b nvarchar(3) not null, a int; x | 2; (1 row); status 0; (executed)");
    One(u"alter procedure p as select 7 n");
    EXPECT_EQ(Two(u"exec p"), u"columns n int not null; 7; (1 row); status 0; (executed)");
    One(u"alter table t alter column a bigint");
    EXPECT_EQ(Two(u"select a from t where a = 2"), u"columns a bigint; 2; (1 row)");
    One(u"drop view v alter table t drop column a");
    EXPECT_EQ(ErrorOf(*two_, u"select a from t where a = 2"), 207);
}

TEST_F(CatalogueChangesTest, AConstraintThatAnotherSessionAddsAndTurnsOff) {
    One(u"create table t(a int)");
    EXPECT_EQ(Two(u"insert t values (1)"), u"(1 row)");
    One(u"alter table t add constraint c check (a > 0)");
    EXPECT_EQ(ErrorOf(*two_, u"insert t values (0)"), 547);
    One(u"alter table t nocheck constraint c");
    EXPECT_EQ(Two(u"insert t values (0)"), u"(1 row)");
    One(u"alter table t check constraint c");
    EXPECT_EQ(ErrorOf(*two_, u"insert t values (0)"), 547);
    One(u"alter table t drop constraint c");
    EXPECT_EQ(Two(u"insert t values (0)"), u"(1 row)");
}

TEST_F(CatalogueChangesTest, ANameThatAnotherSessionGives) {
    One(u"create table t(a int) insert t values (1)");
    EXPECT_EQ(Two(u"select a from t where a = 1"), u"columns a int; 1; (1 row)");
    One(u"exec sp_rename 't', 'u'");
    EXPECT_EQ(ErrorOf(*two_, u"select a from t where a = 1"), 208);
    EXPECT_EQ(Two(u"select a from u where a = 1"), u"columns a int; 1; (1 row)");
    One(u"exec sp_rename 'u.a', 'b', 'COLUMN'");
    EXPECT_EQ(ErrorOf(*two_, u"select a from u where a = 1"), 207);
    EXPECT_EQ(Two(u"select * from u where b = 1"), u"columns b int; 1; (1 row)");
}

}  // namespace quarv::localdb::engine
