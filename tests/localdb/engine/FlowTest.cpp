// What a batch's statements do over time and between sessions; the rest of it is in the cases.
#include <gtest/gtest.h>

#include <chrono>

#include "TestServer.h"

namespace quarv::localdb::engine {

namespace {

using Clock = std::chrono::steady_clock;

// Its client wants to stop a while after the batch has begun.
class ImpatientSink final : public RecordingSink {
  public:
    bool Cancelled() override { return ++asked_ > 3; }

  private:
    int asked_ = 0;
};

// Counts what was hurried to the client.
class HurriedSink final : public RecordingSink {
  public:
    void SendNow() override { hurried += lines.size(); }
    qsizetype hurried = 0;
};

}  // namespace

TEST(Flow, WaitEndsWhenTheClientWantsToStop) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    const Clock::time_point begin = Clock::now();
    ImpatientSink sink;
    session->RunBatch(QStringLiteral("begin tran waitfor delay '01:00' print 'never'"), sink);
    EXPECT_LT(Clock::now() - begin, std::chrono::minutes(1));
    EXPECT_FALSE(sink.lines.contains(QStringLiteral("print: never")));
    EXPECT_EQ(Lines(*session, QStringLiteral("print @@trancount")).front(), u"print: 1");
}

TEST(Flow, ErrorWithLogSaysSo) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    RecordingSink sink;
    session->RunBatch(QStringLiteral("raiserror('a', 5, 1) raiserror('b', 19, 1) with log"), sink);
    ASSERT_EQ(sink.messages.size(), 2u);
    EXPECT_FALSE(sink.messages[0].logged);
    EXPECT_TRUE(sink.messages[1].logged);
}

TEST(Flow, InformationWithNoWaitIsHurried) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    HurriedSink sink;
    session->RunBatch(QStringLiteral("raiserror('a', 0, 1)"), sink);
    EXPECT_EQ(sink.hurried, 0);
    session->RunBatch(QStringLiteral("raiserror('b', 0, 1) with nowait"), sink);
    EXPECT_EQ(sink.hurried, 4);
}

TEST(Flow, InformationOfSeverity10ReachesTheClientAs0) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    RecordingSink sink;
    session->RunBatch(QStringLiteral("raiserror('a', 10, 3) raiserror('b', 9, 1)"), sink);
    ASSERT_EQ(sink.messages.size(), 2u);
    EXPECT_EQ(sink.messages[0].severity, 0);
    EXPECT_EQ(sink.messages[0].state, 3);
    EXPECT_EQ(sink.messages[1].severity, 9);
}

class Isolation : public testing::Test {
  protected:
    Isolation() : a_(server_.NewDatabase(QStringLiteral("d"))), b_(server_.NewSession()) {
        b_->UseDatabase(QStringLiteral("d"));
        Lines(*a_, QStringLiteral("create table t(a int)"));
    }

    TestServer server_;
    std::unique_ptr<Session> a_, b_;
};

TEST_F(Isolation, ReadCommittedSeesWhatOthersCommit) {
    Lines(*a_, QStringLiteral("begin tran select a from t"));
    Lines(*b_, QStringLiteral("insert t values (1)"));
    EXPECT_TRUE(Lines(*a_, QStringLiteral("select a from t")).contains(QStringLiteral("(1 row)")));
    EXPECT_TRUE(
        Lines(*a_, QStringLiteral("insert t values (2)")).contains(QStringLiteral("(1 row)")));
}

TEST_F(Isolation, SerializableSeesOneState) {
    Lines(*a_, QStringLiteral("set transaction isolation level serializable"));
    Lines(*a_, QStringLiteral("begin tran select a from t"));
    Lines(*b_, QStringLiteral("insert t values (1)"));
    EXPECT_TRUE(Lines(*a_, QStringLiteral("select a from t")).contains(QStringLiteral("(0 rows)")));
    EXPECT_TRUE(
        Lines(*a_, QStringLiteral("commit select a from t")).contains(QStringLiteral("(1 row)")));
}

TEST_F(Isolation, SerializableThatWouldWriteOverAnothersChangeIsTheVictim) {
    Lines(*a_, QStringLiteral("set transaction isolation level serializable"));
    Lines(*a_, QStringLiteral("begin tran select a from t"));
    Lines(*b_, QStringLiteral("insert t values (1)"));
    const QStringList lines = Lines(*a_, QStringLiteral("insert t values (2)"));
    EXPECT_TRUE(lines.front().startsWith(QStringLiteral("error 1205 13 51 line 1: Transaction ("
                                                        "Process ID %1) was deadlocked")
                                             .arg(a_->Id())));
    EXPECT_EQ(lines.last(), u"transaction rolls back");
    EXPECT_EQ(Lines(*a_, QStringLiteral("print @@trancount")).front(), u"print: 0");
}

TEST_F(Isolation, LockTimeoutOfZeroDoesNotWait) {
    Lines(*b_, QStringLiteral("begin tran insert t values (1)"));
    const Clock::time_point begin = Clock::now();
    const QStringList lines = Lines(*a_, QStringLiteral("set lock_timeout 0 insert t values (2)"));
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
    EXPECT_EQ(lines.at(1), u"error 1222 16 51 line 1: Lock request time out period exceeded.");
}

}  // namespace quarv::localdb::engine
