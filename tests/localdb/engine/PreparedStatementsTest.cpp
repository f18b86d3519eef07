// sp_prepare, sp_execute, sp_prepexec and sp_unprepare, as a client of the wire calls them and as a
// batch does.
#include <gtest/gtest.h>

#include "TestServer.h"
#include "localdb/engine/PreparedTexts.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

Argument Text(const char16_t* text) {
    Argument argument;
    argument.type = MakeType(TypeKind::NText);
    argument.text = QString::fromUtf16(text);
    return argument;
}

Argument Int(const char16_t* text) {
    Argument argument = Text(text);
    argument.type = IntType();
    return argument;
}

Argument NewHandle() {
    Argument handle = Int(u"");
    handle.null = true;
    handle.output = true;
    return handle;
}

class PreparedStatementsTest : public testing::Test {
  protected:
    PreparedStatementsTest() : session_(server_.NewDatabase(QStringLiteral("d"))) {
        Lines(*session_, QStringLiteral("create table t(a int not null, b nvarchar(5))"));
    }

    QStringList Call(const char16_t* procedure, const std::vector<Argument>& arguments) {
        RecordingSink sink;
        session_->RunProcedure(QString::fromUtf16(procedure), arguments, sink);
        error_ = sink.FirstError();
        return sink.lines;
    }
    int ErrorOf(const char16_t* procedure, const std::vector<Argument>& arguments) {
        Call(procedure, arguments);
        return error_;
    }

    TestServer server_;
    std::unique_ptr<Session> session_;

  private:
    int error_ = 0;
};

const QStringList Doubled = {QStringLiteral("columns a int"), QStringLiteral("42"),
                             QStringLiteral("(1 row)"), QStringLiteral("status 0")};

}  // namespace

TEST_F(PreparedStatementsTest, LiveUntilTheyAreLetGo) {
    EXPECT_EQ(Call(u"sp_prepexec",
                   {NewHandle(), Text(u"@P1 int"), Text(u"select @P1 * 2 a"), Int(u"21")}),
              Doubled + QStringList(QStringLiteral("value  int: 1")));
    EXPECT_EQ(Call(u"sp_execute", {Int(u"1"), Int(u"21")}), Doubled);
    EXPECT_EQ(Call(u"SP_EXECUTE", {Int(u"1"), Int(u"21")}), Doubled);
    EXPECT_EQ(Call(u"sp_unprepare", {Int(u"1")}), QStringList(QStringLiteral("status 0")));
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"1"), Int(u"21")}), 8179);
    EXPECT_EQ(ErrorOf(u"sp_unprepare", {Int(u"1")}), 8179);
}

TEST_F(PreparedStatementsTest, HandleIsNotGivenTwice) {
    const auto prepare = [this] {
        return Call(u"sp_prepare", {NewHandle(), Text(u""), Text(u"select 1 a")}).back();
    };
    EXPECT_EQ(prepare(), u"value  int: 1");
    EXPECT_EQ(prepare(), u"value  int: 2");
    Call(u"sp_unprepare", {Int(u"1")});
    EXPECT_EQ(prepare(), u"value  int: 3");
    EXPECT_EQ(Call(u"sp_execute", {Int(u"2")}).value(1), u"1");
}

TEST_F(PreparedStatementsTest, PreparingRunsNothing) {
    EXPECT_EQ(
        Call(u"sp_prepare", {NewHandle(), Text(u"@P1 int"), Text(u"insert t(a) values (@P1)")}),
        QStringList({QStringLiteral("status 0"), QStringLiteral("value  int: 1")}));
    Call(u"sp_execute", {Int(u"1"), Int(u"7")});
    Call(u"sp_execute", {Int(u"1"), Int(u"8")});
    EXPECT_EQ(Lines(*session_, QStringLiteral("select sum(a) s from t")).value(1), u"15");
}

TEST_F(PreparedStatementsTest, OptionOneAsksForTheColumns) {
    EXPECT_EQ(Call(u"sp_prepare", {NewHandle(), Text(u"@P1 int"),
                                   Text(u"select a, b from t where a = @P1"), Int(u"1")}),
              QStringList({QStringLiteral("columns a int not null, b nvarchar(5)"),
                           QStringLiteral("(done)"), QStringLiteral("status 0"),
                           QStringLiteral("value  int: 1")}));
    EXPECT_EQ(
        ErrorOf(u"sp_prepare", {NewHandle(), Text(u""), Text(u"select nosuch from t"), Int(u"1")}),
        207);
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"2")}), 8179);
}

TEST_F(PreparedStatementsTest, TextThatCannotBeReadGetsNoHandle) {
    EXPECT_EQ(ErrorOf(u"sp_prepare", {NewHandle(), Text(u""), Text(u"select 1 from")}), 102);
    EXPECT_EQ(ErrorOf(u"sp_prepexec", {NewHandle(), Text(u""), Text(u"select (")}), 102);
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"1")}), 8179);
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"2")}), 8179);
}

TEST_F(PreparedStatementsTest, MissingArgumentsAreNamed) {
    EXPECT_EQ(ErrorOf(u"sp_prepare", {NewHandle(), Text(u"")}), 201);
    EXPECT_EQ(ErrorOf(u"sp_prepexec", {NewHandle()}), 201);
    EXPECT_EQ(ErrorOf(u"sp_execute", {}), 201);
    EXPECT_EQ(ErrorOf(u"sp_unprepare", {}), 201);
    Call(u"sp_prepare", {NewHandle(), Text(u"@P1 int"), Text(u"select @P1")});
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"1")}), 201);
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"1"), Int(u"1"), Int(u"2")}), 8144);
}

TEST_F(PreparedStatementsTest, HandleThatIsNoneIsRefused) {
    Call(u"sp_prepare", {NewHandle(), Text(u""), Text(u"select 1 a")});
    Argument null = Int(u"");
    null.null = true;
    EXPECT_EQ(ErrorOf(u"sp_execute", {null}), 8179);
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"-1")}), 8179);
    EXPECT_EQ(ErrorOf(u"sp_execute", {Text(u"one")}), 8114);
    EXPECT_EQ(ErrorOf(u"sp_unprepare", {Text(u"one")}), 8114);
    // A handle is an int, however it was sent.
    EXPECT_EQ(Call(u"sp_execute", {Text(u"1")}).value(1), u"1");
}

TEST_F(PreparedStatementsTest, ResetForgetsThem) {
    Call(u"sp_prepare", {NewHandle(), Text(u""), Text(u"select 1 a")});
    session_->Reset(QStringLiteral("d"));
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"1")}), 8179);
}

TEST_F(PreparedStatementsTest, BelongToTheirSession) {
    Call(u"sp_prepare", {NewHandle(), Text(u""), Text(u"select 1 a")});
    session_ = server_.NewSession();
    EXPECT_EQ(ErrorOf(u"sp_execute", {Int(u"1")}), 8179);
}

TEST_F(PreparedStatementsTest, BatchGetsItsHandleWhereItAsksForIt) {
    EXPECT_EQ(Lines(*session_, QStringLiteral("declare @h int, @none int\n"
                                              "exec sp_prepare @none, N'', N'select 1 a'\n"
                                              "exec sp_prepare @h output, N'', N'select 1 a'\n"
                                              "select @none n, @h h"))
                  .mid(4, 2),
              QStringList({QStringLiteral("columns n int, h int"), QStringLiteral("NULL | 2")}));
}

TEST_F(PreparedStatementsTest, WhatIsKeptIsBounded) {
    PreparedTexts texts;
    const QString half(PreparedTexts::MostUnits / 2, u'x');
    const int64_t first = texts.Keep({{}, half});
    texts.Keep({half, {}});
    EXPECT_THROW(texts.Keep({{}, QStringLiteral("x")}), SqlError);
    texts.Forget(first);
    texts.Forget(first);
    const int64_t third = texts.Keep({{}, half});
    EXPECT_EQ(texts.Find(third)->text.size(), half.size());
    EXPECT_THROW(texts.Keep({{}, QStringLiteral("x")}), SqlError);
    texts.Clear();
    EXPECT_EQ(texts.Find(third), nullptr);
    EXPECT_GT(texts.Keep({{}, half}), third);
}

TEST_F(PreparedStatementsTest, CursorsOfTheServerAreRefusedByName) {
    for (const char16_t* name : {u"sp_cursoropen", u"sp_cursorfetch", u"SP_PREPEXECRPC"}) {
        EXPECT_EQ(ErrorOf(name, {}), 40517);
    }
}

}  // namespace quarv::localdb::engine
