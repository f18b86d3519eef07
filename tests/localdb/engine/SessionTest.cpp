#include "localdb/engine/Session.h"

#include <gtest/gtest.h>

#include <thread>

#include "TestServer.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"
#include "support/Raised.h"

namespace quarv::localdb::engine {

namespace {

Argument TextArgument(const char* name, const char16_t* text) {
    Argument argument;
    argument.name = QString::fromLatin1(name);
    argument.type = MakeType(TypeKind::NVarChar, 4000);
    argument.text = QString::fromUtf16(text);
    return argument;
}

}  // namespace

TEST(Session, BeginsInMasterAndChangesItsDatabase) {
    TestServer server;
    const auto session = server.NewSession();
    EXPECT_EQ(session->Database(), u"master");
    Lines(*session, QStringLiteral("create database Täst"));
    EXPECT_TRUE(server.server->HasDatabase(QStringLiteral("TÄST")));
    session->UseDatabase(QStringLiteral("täst"));
    EXPECT_EQ(session->Database(), u"Täst");
    EXPECT_EQ(Raised([&] { session->UseDatabase(QStringLiteral("nosuch")); }), 911);
    EXPECT_EQ(session->Database(), u"Täst");
}

TEST(Session, NumbersAreUnique) {
    TestServer server;
    const auto a = server.NewSession(), b = server.NewSession();
    EXPECT_GE(a->Id(), 51);
    EXPECT_NE(a->Id(), b->Id());
}

TEST(Session, ProcedureByNameTakesArgumentsAndGivesOutputs) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session,
          QStringLiteral("create procedure p @a int, @b nvarchar(10) = N'x', @c int output as "
                         "select @a a, @b b set @c = @a + 1 return 3"));
    Argument a = TextArgument("", u"41");
    a.type = MakeType(TypeKind::Int);
    Argument c = TextArgument("@c", u"");
    c.type = MakeType(TypeKind::BigInt);
    c.null = true;
    c.output = true;
    RecordingSink sink;
    session->RunProcedure(QStringLiteral("d..p;1"), {a, c}, sink);
    EXPECT_EQ(sink.lines,
              QStringList({QStringLiteral("columns a int, b nvarchar(10)"),
                           QStringLiteral("41 | x"), QStringLiteral("(1 row)"),
                           QStringLiteral("status 3"), QStringLiteral("value @c bigint: 42")}));
    EXPECT_EQ(sink.procedures, 1);
}

TEST(Session, ProcedureByNameReportsWhatIsWrong) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    for (const auto& [name, number] : {std::pair{u"nosuch", 2812},
                                       {u"nosuch..p", 2812},
                                       {u"a b", 102},
                                       {u"", 102},
                                       {u"a.b.c.d.e", 102}}) {
        RecordingSink sink;
        session->RunProcedure(QString::fromUtf16(name), {}, sink);
        EXPECT_EQ(sink.FirstError(), number) << QString::fromUtf16(name).toStdString();
        EXPECT_EQ(sink.lines.last(), u"(failed)");
    }
}

TEST(Session, SpExecutesqlRunsAsAProcedure) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Argument number = TextArgument("", u"5");
    number.type = MakeType(TypeKind::Int);
    RecordingSink sink;
    session->RunProcedure(
        QStringLiteral("sp_executesql"),
        {TextArgument("", u"select @P1 + 1 a, @P2 b"),
         TextArgument("", u"@P1 int, @P2 nvarchar(4000)"), number, TextArgument("", u"ж😀")},
        sink);
    EXPECT_EQ(sink.lines, QStringList({QStringLiteral("columns a int, b nvarchar(4000)"),
                                       QStringLiteral("6 | ж😀"), QStringLiteral("(1 row)"),
                                       QStringLiteral("status 0")}));
}

TEST(Session, LongArgumentsAreNotCut) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    const QString text = QString(100'000, u'x');
    Argument value = TextArgument("", u"");
    value.type = MakeType(TypeKind::NVarChar, SqlType::Max);
    value.text = text;
    RecordingSink sink;
    session->RunProcedure(
        QStringLiteral("sp_executesql"),
        {TextArgument("", u"select len(@a) n"), TextArgument("", u"@a nvarchar(max)"), value},
        sink);
    EXPECT_EQ(sink.lines.value(1), u"100000");
}

TEST(Session, TransactionRequestsAreWhatBatchesDo) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int)"));
    RecordingSink sink;
    session->BeginTransaction(sink);
    session->RunBatch(QStringLiteral("insert t values (1)"), sink);
    session->RollbackTransaction(sink);
    session->BeginTransaction(sink);
    session->RunBatch(QStringLiteral("insert t values (2)"), sink);
    session->CommitTransaction(sink);
    session->CommitTransaction(sink);
    EXPECT_EQ(
        sink.lines,
        QStringList({QStringLiteral("transaction begins"), QStringLiteral("(1 row)"),
                     QStringLiteral("transaction rolls back"), QStringLiteral("transaction begins"),
                     QStringLiteral("(1 row)"), QStringLiteral("transaction commits"),
                     QStringLiteral("error 3902 16 1 line 1: The COMMIT TRANSACTION request "
                                    "has no corresponding BEGIN TRANSACTION."),
                     QStringLiteral("(failed)")}));
    EXPECT_EQ(Lines(*session, QStringLiteral("select a from t")).value(1), u"2");
}

TEST(Session, ResetForgetsOptionsAndTransactions) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session,
          QStringLiteral("create table t(a int) set nocount on begin tran insert t values (1)"));
    session->Reset(QStringLiteral("master"));
    EXPECT_EQ(session->Database(), u"master");
    EXPECT_EQ(Lines(*session, QStringLiteral("select @@trancount a")),
              QStringList({QStringLiteral("columns a int not null"), QStringLiteral("0"),
                           QStringLiteral("(1 row)")}));
    EXPECT_EQ(Lines(*session, QStringLiteral("select a from d..t")).last(), u"(0 rows)");
}

TEST(Session, ACancelledStatementStopsAndTheSessionGoesOn) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int)"));
    for (int i = 0; i < 7; ++i) {
        Lines(*session, i == 0 ? QStringLiteral("insert t values (1),(2),(3),(4),(5),(6),(7),(8)")
                               : QStringLiteral("insert t select a from t"));
    }
    RecordingSink sink;
    sink.keepRows = false;
    sink.cancelAfterRows = 10;
    session->RunBatch(QStringLiteral("select x.a from t x, t y select 2"), sink);
    EXPECT_EQ(sink.rows, 10);
    EXPECT_EQ(sink.lines, QStringList({QStringLiteral("columns a int")}));
    EXPECT_EQ(Lines(*session, QStringLiteral("select count(*) n from t")).value(1), u"512");
}

TEST(Session, AStatementWithoutRowsCanBeCancelledToo) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int)"));
    for (int i = 0; i < 8; ++i) {
        Lines(*session, i == 0 ? QStringLiteral("insert t values (1),(2),(3),(4),(5),(6),(7),(8)")
                               : QStringLiteral("insert t select a from t"));
    }
    RecordingSink sink;
    sink.cancelAfterRows = 0;  // at once
    session->RunBatch(
        QStringLiteral("select count(*) from t a, t b, t c, t d where a.a + b.a = -1"), sink);
    EXPECT_EQ(sink.lines, QStringList());
    RecordingSink loop;
    loop.cancelAfterRows = 0;
    session->RunBatch(QStringLiteral("while 1 = 1 set nocount on"), loop);
    EXPECT_EQ(loop.rows, 0);
}

TEST(Session, ReadersSeeWhatIsCommittedAndBlockNobody) {
    TestServer server;
    const auto writer = server.NewDatabase(QStringLiteral("d"));
    Lines(*writer, QStringLiteral("create table t(a int) insert t values (1)"));
    const auto reader = server.NewSession();
    reader->UseDatabase(QStringLiteral("d"));
    Lines(*writer, QStringLiteral("begin tran insert t values (2)"));
    const QString count = QStringLiteral("select count(*) n from t");
    EXPECT_EQ(Lines(*reader, count).value(1), u"1");
    Lines(*reader, QStringLiteral("begin tran"));
    EXPECT_EQ(Lines(*reader, count).value(1), u"1");
    Lines(*writer, QStringLiteral("commit"));
    // Read committed: the same transaction sees what was committed meanwhile.
    EXPECT_EQ(Lines(*reader, count).value(1), u"2");
    Lines(*reader, QStringLiteral("insert t values (3) commit"));
    EXPECT_EQ(Lines(*writer, count).value(1), u"3");
}

TEST(Session, TwoWritersTakeTurns) {
    TestServer server;
    const auto first = server.NewDatabase(QStringLiteral("d"));
    Lines(*first, QStringLiteral("create table t(a int identity primary key, who int)"));
    const auto work = [&server](int who) {
        const auto session = server.NewSession();
        session->UseDatabase(QStringLiteral("d"));
        for (int i = 0; i < 40; ++i) {
            const QStringList lines =
                Lines(*session,
                      QStringLiteral("begin tran insert t values (%1) insert t values (%1) commit")
                          .arg(who));
            ASSERT_FALSE(lines.contains(QStringLiteral("(failed)")))
                << lines.join(u'\n').toStdString();
        }
    };
    std::thread other(work, 2);
    work(1);
    other.join();
    EXPECT_EQ(
        Lines(*first, QStringLiteral("select count(*) n, max(a) m from t where who in (1, 2)"))
            .value(1),
        u"160 | 160");
}

TEST(Session, AnotherSessionsTablesAppearAtOnce) {
    TestServer server;
    const auto a = server.NewDatabase(QStringLiteral("d"));
    const auto b = server.NewSession();
    b->UseDatabase(QStringLiteral("d"));
    Lines(*a, QStringLiteral("create table t(a int) insert t values (7)"));
    EXPECT_EQ(Lines(*b, QStringLiteral("select a from t")).value(1), u"7");
    Lines(*b, QStringLiteral("drop table t"));
    RecordingSink sink;
    a->RunBatch(QStringLiteral("select a from t"), sink);
    EXPECT_EQ(sink.FirstError(), 208);
}

TEST(Session, ADatabaseInUseIsNotDropped) {
    TestServer server;
    const auto a = server.NewDatabase(QStringLiteral("d"));
    const auto b = server.NewSession();
    RecordingSink sink;
    b->RunBatch(QStringLiteral("drop database d"), sink);
    EXPECT_EQ(sink.FirstError(), 3702);
    a->UseDatabase(QStringLiteral("master"));
    EXPECT_EQ(Lines(*b, QStringLiteral("drop database d")),
              QStringList({QStringLiteral("(done)")}));
    EXPECT_FALSE(server.server->HasDatabase(QStringLiteral("d")));
    // A database of the same name is another one.
    Lines(*b, QStringLiteral("create database d"));
    RecordingSink again;
    a->RunBatch(QStringLiteral("select * from d..t"), again);
    EXPECT_EQ(again.FirstError(), 208);
}

TEST(Session, ManyTermsAndManyValuesAreNoTrouble) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int) insert t values (77)"));
    QString terms = QStringLiteral("a = -1");
    QString values = QStringLiteral("-1");
    for (int i = 0; i < 3000; ++i) {
        terms += QStringLiteral(" or a = %1").arg(i);
        values += QStringLiteral(",%1").arg(i);
    }
    EXPECT_EQ(Lines(*session, QStringLiteral("select a from t where ") + terms).last(), u"(1 row)");
    EXPECT_EQ(
        Lines(*session, QStringLiteral("select a from t where a in (") + values + u')').last(),
        u"(1 row)");
    QString sum = QStringLiteral("a");
    for (int i = 0; i < 200; ++i) sum += QStringLiteral("+1");
    EXPECT_EQ(
        Lines(*session, QStringLiteral("select ") + sum + QStringLiteral(" s from t")).value(1),
        u"277");
    const QString nested = QString(40, u'(') + u'a' + QString(40, u')');
    EXPECT_EQ(Lines(*session, QStringLiteral("select a from t where not (not (not (not (") +
                                  nested + QStringLiteral(" = 77))))"))
                  .last(),
              u"(1 row)");
}

}  // namespace quarv::localdb::engine
