#include "query/ScriptRunner.h"

#include <gtest/gtest.h>

#include "base/RuntimeError.h"
#include "platform/ado/ErrorOf.h"
#include "platform/ado/MemoryConnection.h"
#include "query/ScriptFile.h"
#include "support/Raised.h"

namespace quarv {

namespace {

using ado::MemoryConnection;
using ado::MemoryResult;
using ado::MemoryResults;
using test::ErrorOf;
using test::ScriptFile;

class ScriptRunnerTest : public testing::Test {
  protected:
    ScriptRunnerTest() {
        connection->Open("memory");
        connection->SetCommandTimeout(17);
        connection->Script().AnswerOthers([this](const QString& sql) {
            timeouts += connection->CommandTimeout();
            return sql.startsWith("fails") ? MemoryResults{MemoryResult::Fails(sql.trimmed())}
                                           : MemoryResults{MemoryResult::Closed()};
        });
    }

    void Run(const QByteArray& script) {
        ScriptRunner(connection).Run(ScriptFile(script).Path(), Noting());
    }
    ScriptRunner::Progress Noting() {
        return [this](int done, int total) {
            progress += QStringLiteral("%1/%2 ").arg(done).arg(total);
        };
    }
    QString Sent() const {
        return connection->Script().Statements().join(u'|').replace("\r\n", "$");
    }

    std::shared_ptr<MemoryConnection> connection = std::make_shared<MemoryConnection>();
    QString progress;
    QList<int> timeouts;
};

}  // namespace

TEST_F(ScriptRunnerTest, SendsBatchAfterBatchAndTellsOfEach) {
    Run("create table t (a int)\ngo\n\ninsert t values (1)\nGO -- done\nselect a\nfrom t");
    EXPECT_EQ(Sent(), "create table t (a int)$|$insert t values (1)$|select a$from t$");
    EXPECT_EQ(progress, "0/3 1/3 2/3 3/3 ");
}

TEST_F(ScriptRunnerTest, EmptyBatchesAreRunAndSendNothing) {
    Run("GO\nGO\na\nGO\n");
    EXPECT_EQ(Sent(), "a$");
    EXPECT_EQ(progress, "0/4 1/4 2/4 3/4 4/4 ");
}

TEST_F(ScriptRunnerTest, EmptyFileIsOneEmptyBatch) {
    Run("");
    EXPECT_EQ(Sent(), "");
    EXPECT_EQ(progress, "0/1 1/1 ");
}

TEST_F(ScriptRunnerTest, ReadsMarkedUtf16) {
    Run(QByteArray::fromHex("fffe 6100 0a00 6700 6f00 0a00 ac20"));
    EXPECT_EQ(Sent(), "a$|\u20ac$");
}

TEST_F(ScriptRunnerTest, RunsWithoutAnyoneToTell) {
    ScriptRunner(connection).Run(ScriptFile("a\nGO\nb").Path());
    EXPECT_EQ(Sent(), "a$|b$");
}

TEST_F(ScriptRunnerTest, FailingBatchIsTheLastOneSent) {
    EXPECT_EQ(ErrorOf([&] { Run("a\nGO\nfails here\nGO\nb\nGO\nfails again"); }).Description(),
              "fails here");
    EXPECT_EQ(Sent(), "a$|fails here$");
    EXPECT_EQ(progress, "0/4 1/4 ");
}

TEST_F(ScriptRunnerTest, LaterResultsAreWalkedToTheEndAndTheFirstErrorRaised) {
    connection->Script().Answer("several\r\n",
                                {MemoryResult::Rows({"a"}, {{1}, {2}}), MemoryResult::Closed(),
                                 MemoryResult::Fails("first"), MemoryResult::Rows({"b"}, {{3}}),
                                 MemoryResult::Fails("second")});
    EXPECT_EQ(ErrorOf([&] { Run("several\nGO\nb"); }).Description(), "first\r\nsecond");
    EXPECT_EQ(Sent(), "several$");
    EXPECT_EQ(progress, "0/2 ");
}

TEST_F(ScriptRunnerTest, ErrorBehindRowsThatNobodyReadsIsRaised) {
    connection->Script().Answer("rows\r\n",
                                MemoryResult::Rows({"a"}, {{1}, {2}}).ThenFails("divide by zero"));
    EXPECT_EQ(ErrorOf([&] { Run("rows\nGO\nb"); }).Description(), "divide by zero");
    EXPECT_EQ(Sent(), "rows$");
}

TEST_F(ScriptRunnerTest, BatchesHaveNoTimeLimitAndTheConnectionsOwnComesBack) {
    Run("a\nGO\nb");
    EXPECT_EQ(timeouts, QList<int>({0, 0}));
    EXPECT_EQ(connection->CommandTimeout(), 17);
    EXPECT_NE(Raised([&] { Run("fails"); }), 0);
    EXPECT_EQ(timeouts, QList<int>({0, 0, 0}));
    EXPECT_EQ(connection->CommandTimeout(), 17);
}

TEST_F(ScriptRunnerTest, WhatProgressRaisesStopsTheScript) {
    const ScriptFile script("a\nGO\nb\nGO\nc");
    const auto stop = [](int done, int) {
        if (done == 2) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    };
    EXPECT_EQ(Raised([&] { ScriptRunner(connection).Run(script.Path(), stop); }), 5);
    EXPECT_EQ(Sent(), "a$|b$");
    EXPECT_EQ(connection->CommandTimeout(), 17);
}

TEST_F(ScriptRunnerTest, ConnectionClosedMeanwhileEndsTheScript) {
    const ScriptFile script("a\nGO\nb");
    const auto close = [this](int done, int) {
        if (done == 1) connection->Close();
    };
    EXPECT_EQ(ErrorOf([&] { ScriptRunner(connection).Run(script.Path(), close); }).Number(),
              -2146824584);
    EXPECT_EQ(Sent(), "a$");
}

TEST_F(ScriptRunnerTest, ClosedConnectionRefusesEvenAnEmptyScript) {
    connection->Close();
    EXPECT_EQ(ErrorOf([&] { Run(""); }).Number(), -2146824584);
    EXPECT_EQ(progress, "0/1 ");
    EXPECT_EQ(connection->CommandTimeout(), 17);
}

TEST_F(ScriptRunnerTest, SendsNothingOfAFileThatCannotBeReadWhole) {
    EXPECT_EQ(Raised([&] { Run("a\nGO\nb \xff"); }), 75);
    EXPECT_EQ(Raised([&] { Run(QByteArray("a\nGO\nb\0c", 8)); }), 75);
    EXPECT_EQ(Raised([&] { Run("a\nGO\n" + QByteArray("b\n").repeated(32756)); }), 6);
    EXPECT_EQ(Raised([&] { ScriptRunner(connection).Run("/no such file"); }), 53);
    EXPECT_EQ(Raised([&] { ScriptRunner(connection).Run("/"); }), 53);
    EXPECT_EQ(Sent(), "");
    EXPECT_EQ(progress, "");
}

TEST_F(ScriptRunnerTest, TheLastSeparatorTakesALineOfTheList) {
    const ScriptFile full(QByteArray("b\n").repeated(32757));
    try {
        ScriptRunner(connection).Run(full.Path());
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Description(), "Overflow: " + full.Path() + ": more than 32756 lines");
    }
    EXPECT_EQ(Sent(), "");
    Run("GO\n" + QByteArray("b\n").repeated(32755));
    EXPECT_EQ(Sent().size(), 32755 * 2);
}

}  // namespace quarv
