// The data control over real connections: what a memory connection cannot lose or cut off.
#include <gtest/gtest.h>

#include "platform/ado/DataControl.h"
#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using C = FakeColumn;

constexpr qint64 Everything = 0x7FFFFFFFFFFFFFFF;

FakeTds& Rows(FakeTds& answer, int count) {
    answer.Columns({C::Int("n")});
    for (int i = 0; i < count; ++i) answer.Row({Le(static_cast<quint64>(i), 4)});
    return answer;
}

FakeTds& Numbers(FakeTds& answer, int count, bool more = false) {
    return Rows(answer, count).Done(count, more);
}

// What a server says when somebody ends the session; its SQLSTATE speaks of no loss.
FakeTds& LastWords(FakeTds& answer) {
    return answer.Error(596, "The session was ended.", 1, 21).DoneError(true);
}

QByteArray Answer(const QString& sql) {
    FakeTds answer;
    if (sql == QLatin1String("numbers")) return Numbers(answer, 2000);
    if (sql == QLatin1String("dies")) return Numbers(answer, 3, true).Raw(FakeServer::ThenClose);
    if (sql == QLatin1String("later"))
        return Numbers(answer, 2, true).Error(8134, "Divide by zero.").DoneError();
    if (sql == QLatin1String("killed"))
        return LastWords(Rows(answer, 3)).Raw(FakeServer::ThenClose);
    if (sql == QLatin1String("killed at once")) return LastWords(answer).Raw(FakeServer::ThenClose);
    if (sql == QLatin1String("fails and dies"))
        return Numbers(answer, 3, true)
            .Error(8134, "Divide by zero.")
            .DoneError(true)
            .Raw(FakeServer::ThenClose);
    if (sql == QLatin1String("divide"))
        return answer.Columns({C::Int("n")}).Error(8134, "Divide by zero.").DoneError();
    return answer.Error(208, "Invalid object name.").DoneError();
}

class OdbcDataControlTest : public ::testing::Test {
  protected:
    OdbcDataControlTest() { control.SetConnectionString(server.ConnectionString()); }

    void Run(const QString& sql) {
        control.SetRecordSource(sql);
        control.Refresh();
    }

    FakeServer server{Answer};
    ado::DataControl control{ado::odbc::OdbcConnectionFactory()};
};

}  // namespace

TEST_F(OdbcDataControlTest, UnreadResultOutlivesFailingQueries) {
    Run("numbers");
    control.ReadTo(9);
    EXPECT_EQ(ErrorOf([&] { Run("bad"); }).NativeError(), 208);
    EXPECT_EQ(ErrorOf([&] { Run("divide"); }).NativeError(), 8134);
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 2000);
    EXPECT_EQ(control.ValueAt(1999, 0).ToInteger(), 1999);
}

TEST_F(OdbcDataControlTest, UnreadResultIsDroppedForTheNextOne) {
    Run("numbers");
    control.ReadTo(9);
    Run("numbers");
    EXPECT_EQ(control.RowCount(), 0);
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 2000);
    EXPECT_TRUE(control.AtEnd());
}

TEST_F(OdbcDataControlTest, ErrorOfALaterStatementIsRaisedAtTheEnd) {
    Run("later");
    control.ReadTo(1);
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(2); }).NativeError(), 8134);
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_TRUE(control.AtEnd());
}

TEST_F(OdbcDataControlTest, LossBehindTheRowsIsRaisedOnceAndTheConnectionReplaced) {
    Run("dies");
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(Everything); }).SqlState(), QStringLiteral("08S01"));
    EXPECT_TRUE(control.AtEnd());
    EXPECT_EQ(control.RowCount(), 3);
    Run("numbers");
    control.ReadTo(0);
    EXPECT_EQ(control.RowCount(), 1);
}

TEST_F(OdbcDataControlTest, LastWordsAmongTheRowsAreTheOnlyErrorOfALoss) {
    Run("killed");
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(Everything); }).NativeError(), 596);
    EXPECT_EQ(control.RowCount(), 3);
    EXPECT_TRUE(control.AtEnd());
    Run("numbers");
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 2000);
}

TEST_F(OdbcDataControlTest, LastWordsInPlaceOfAResultAreTheOnlyErrorOfALoss) {
    Run("numbers");
    control.ReadTo(Everything);
    EXPECT_EQ(ErrorOf([&] { Run("killed at once"); }).NativeError(), 596);
    EXPECT_EQ(control.RowCount(), 2000);
    Run("later");
    control.ReadTo(1);
    EXPECT_EQ(control.RowCount(), 2);
}

TEST_F(OdbcDataControlTest, LossBehindAnotherErrorIsRaisedToo) {
    Run("fails and dies");
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(Everything); }).NativeError(), 8134);
    EXPECT_EQ(ErrorOf([&] { control.ReadTo(Everything); }).SqlState(), QStringLiteral("08S01"));
    EXPECT_TRUE(control.AtEnd());
}

TEST_F(OdbcDataControlTest, IdleConnectionCutOffFailsOnceAndIsReplaced) {
    Run("numbers");
    control.ReadTo(Everything);
    server.CutOff();
    EXPECT_EQ(ErrorOf([&] { Run("numbers"); }).SqlState(), QStringLiteral("08S01"));
    EXPECT_EQ(control.RowCount(), 2000);
    Run("numbers");
    control.ReadTo(4);
    EXPECT_EQ(control.RowCount(), 5);
}

}  // namespace quarv::test
