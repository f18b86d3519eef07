#include <gtest/gtest.h>

#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using C = FakeColumn;

const QString Sql = QStringLiteral("select n from t");

FakeTds& Numbers(FakeTds& answer, int first, int last, bool more = false) {
    answer.Columns({C::Int("n"), C::NVarChar("Name", 20)});
    for (int i = first; i <= last; ++i)
        answer.Row({Le(static_cast<quint64>(i), 4), Utf16(QStringLiteral("row %1").arg(i))});
    return answer.Done(last - first + 1, more);
}

FakeTds Numbers(int first, int last) {
    FakeTds answer;
    return Numbers(answer, first, last);
}

qint64 N(const ado::RecordsetPtr& rows) {
    return (*rows)["n"].ToInteger();
}

}  // namespace

TEST(OdbcRecordset, FirstRowIsCurrentAfterExecute) {
    const FakeServer server(Numbers(7, 9));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    EXPECT_EQ(rows->State(), ado::adStateOpen);
    EXPECT_EQ(N(rows), 7);
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_EQ(N(rows), 9);
    EXPECT_FALSE(rows->EOF());
    rows->MoveNext();
    EXPECT_TRUE(rows->EOF());
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }).Number(), -2146825267);
    EXPECT_EQ(ErrorOf([&] { N(rows); }).Number(), -2146825267);
}

TEST(OdbcRecordset, FieldsAreFoundInAnyLetterCase) {
    const FakeServer server(Numbers(1, 1));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    EXPECT_EQ(rows->Fields().Count(), 2);
    EXPECT_EQ(rows->Fields()["NAME"].Name(), QStringLiteral("Name"));
    EXPECT_EQ(rows->Fields()[1].Value().Text(), QStringLiteral("row 1"));
    EXPECT_EQ(ErrorOf([&] { rows->Fields()["nam"]; }).Number(), -2146825023);
    EXPECT_EQ(ErrorOf([&] { rows->Fields()[2]; }).Number(), -2146825023);
    EXPECT_EQ(ErrorOf([&] { rows->Fields()[-1]; }).Number(), -2146825023);
}

TEST(OdbcRecordset, RowsOnlyStepOverAreNotMissed) {
    const FakeServer server(Numbers(1, 5));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    for (int i = 0; i < 4; ++i) rows->MoveNext();
    EXPECT_EQ((*rows)["name"].Text(), QStringLiteral("row 5"));
}

TEST(OdbcRecordset, ColumnFirstReadInALaterRowIsRight) {
    const FakeServer server(Numbers(1, 4));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    EXPECT_EQ(N(rows), 1);
    rows->MoveNext();
    EXPECT_EQ(N(rows), 2);
    EXPECT_EQ((*rows)["name"].Text(), QStringLiteral("row 2"));
    rows->MoveNext();
    EXPECT_EQ((*rows)["name"].Text(), QStringLiteral("row 3"));
    EXPECT_EQ(N(rows), 3);
}

TEST(OdbcRecordset, NoRowsGiveAnOpenRecordSetAtItsEnd) {
    const FakeServer server(FakeTds().Columns({C::Int("n")}).Done(0));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    EXPECT_EQ(rows->State(), ado::adStateOpen);
    EXPECT_TRUE(rows->EOF());
    EXPECT_EQ(rows->NextRecordset(), nullptr);
}

TEST(OdbcRecordset, StatementWithoutRowsGivesAClosedRecordSet) {
    for (const FakeTds& answer :
         {FakeTds().Done(), FakeTds().Done(3), FakeTds().Info(0, "hello").Done()}) {
        const FakeServer server(answer);
        const auto connection = Open(server);
        const auto closed = connection->Execute(QStringLiteral("create table t (n int)"));
        EXPECT_EQ(closed->State(), ado::adStateClosed);
        EXPECT_EQ(closed->Fields().Count(), 0);
        EXPECT_EQ(ErrorOf([&] { closed->EOF(); }).Number(), -2146824584);
        EXPECT_EQ(ErrorOf([&] { closed->MoveNext(); }).Number(), -2146824584);
        EXPECT_EQ(ErrorOf([&] { closed->Close(); }).Number(), -2146824584);
        EXPECT_EQ(closed->NextRecordset(), nullptr);
    }
}

TEST(OdbcRecordset, EmptyTextSendsNothing) {
    FakeServer server(FakeTds().Done());
    const auto connection = Open(server);
    const auto closed = connection->Execute(QString());
    EXPECT_EQ(closed->State(), ado::adStateClosed);
    EXPECT_EQ(closed->NextRecordset(), nullptr);
    EXPECT_EQ(server.Statements(), QStringList());
}

TEST(OdbcRecordset, StatementsAreSentLetterForLetter) {
    FakeServer server(FakeTds().Done());
    const auto connection = Open(server);
    const QStringList texts{QStringLiteral("select N'é😀', 'it''s'"), QStringLiteral(" "),
                            QStringLiteral("-- a question?\nselect '?', [a?]"),
                            QStringLiteral("exec p 'x'\r\n"), QStringLiteral("sp_help 'a'")};
    for (const QString& text : texts) connection->Execute(text);
    EXPECT_EQ(server.Statements(), texts);
}

TEST(OdbcRecordset, QuestionMarkOutsideQuotesIsASyntaxError) {
    FakeServer server(FakeTds().Done());
    const auto connection = Open(server);
    const DataError error = ErrorOf([&] { connection->Execute(QStringLiteral("select ?")); });
    EXPECT_EQ(error.Number(), -2147217900);
    EXPECT_EQ(error.Description(), QStringLiteral("Incorrect syntax near '?'."));
}

TEST(OdbcRecordset, NextRecordsetWalksRowsCountsAndRows) {
    FakeTds answer;
    Numbers(answer, 1, 2, true).Done(5, true);
    Numbers(answer, 10, 10);
    const FakeServer server(answer);
    const auto connection = Open(server);
    const auto first = connection->Execute(Sql);
    EXPECT_EQ(N(first), 1);
    const auto count = first->NextRecordset();
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->State(), ado::adStateClosed);
    EXPECT_EQ(first->State(), ado::adStateClosed);
    EXPECT_EQ(ErrorOf([&] { first->NextRecordset(); }).Number(), -2146824584);
    const auto second = count->NextRecordset();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(N(second), 10);
    EXPECT_EQ(second->NextRecordset(), nullptr);
    EXPECT_EQ(second->NextRecordset(), nullptr);
}

TEST(OdbcRecordset, ErrorOfTheFirstStatementIsRaisedWithItsNumberAndLine) {
    const FakeServer server(
        FakeTds().Error(208, QStringLiteral("Invalid object name 'nosuch'."), 3).DoneError());
    const auto connection = Open(server);
    const DataError error = ErrorOf([&] { connection->Execute(Sql); });
    EXPECT_EQ(error.Number(), -2147217865);
    EXPECT_EQ(error.Description(), QStringLiteral("Invalid object name 'nosuch'."));
    EXPECT_EQ(error.NativeError(), 208);
    EXPECT_EQ(error.SqlState(), QStringLiteral("42S02"));
    EXPECT_EQ(error.Line(), 3);
}

TEST(OdbcRecordset, MessageThatBeginsWithABracketKeepsIt) {
    const FakeServer server(FakeTds().Error(50000, QStringLiteral("[a][b] is wrong")).DoneError());
    const auto connection = Open(server);
    EXPECT_EQ(ErrorOf([&] { connection->Execute(Sql); }).Description(),
              QStringLiteral("[a][b] is wrong"));
}

TEST(OdbcRecordset, NotesBesideAnErrorDoNotHideIt) {
    const FakeServer server(FakeTds()
                                .Error(2627, QStringLiteral("Violation of key."), 1, 14)
                                .Info(3621, QStringLiteral("The statement has been terminated."))
                                .DoneError());
    const auto connection = Open(server);
    const DataError error = ErrorOf([&] { connection->Execute(Sql); });
    EXPECT_EQ(error.Number(), -2147217873);
    EXPECT_EQ(error.Description(), QStringLiteral("Violation of key."));
}

TEST(OdbcRecordset, ErrorBehindRowsComesAfterTheRows) {
    FakeTds answer;
    answer.Columns({C::Int("n")}).Row({Le(1, 4)});
    answer.Error(8134, QStringLiteral("Divide by zero error encountered.")).DoneError();
    const FakeServer server(answer);
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    EXPECT_EQ(N(rows), 1);
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows->EOF(); }).Description(),
              QStringLiteral("Divide by zero error encountered."));
    EXPECT_TRUE(rows->EOF());
    EXPECT_EQ(rows->NextRecordset(), nullptr);
}

TEST(OdbcRecordset, ErrorOfALaterStatementIsRaisedOnceAndPassed) {
    FakeTds answer;
    Numbers(answer, 1, 1, true)
        .Error(8134, QStringLiteral("Divide by zero error encountered."))
        .DoneError(true);
    Numbers(answer, 2, 2);
    const FakeServer server(answer);
    const auto connection = Open(server);
    const auto first = connection->Execute(Sql);
    EXPECT_EQ(ErrorOf([&] { first->NextRecordset(); }).NativeError(), 8134);
    const auto second = first->NextRecordset();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(N(second), 2);
    EXPECT_EQ(second->NextRecordset(), nullptr);
}

TEST(OdbcRecordset, LostConnectionEndsTheWalk) {
    FakeTds answer;
    Numbers(answer, 1, 2, true).Raw(FakeServer::ThenClose);
    const FakeServer server(answer);
    const auto connection = Open(server);
    auto rows = connection->Execute(Sql);
    EXPECT_EQ(N(rows), 1);
    int raised = 0;
    int steps = 0;
    for (; rows && steps < 100; ++steps) {
        try {
            rows = rows->NextRecordset();
        } catch (const DataError& error) {
            ++raised;
            EXPECT_EQ(error.SqlState(), QStringLiteral("08S01"));
            EXPECT_TRUE(error.Description().startsWith("The connection to the server was lost."));
        }
    }
    EXPECT_EQ(raised, 1);
    EXPECT_LT(steps, 5);
    EXPECT_EQ(ErrorOf([&] { connection->Execute(Sql); }).Number(), -2147467259);
}

TEST(OdbcRecordset, ServerThatDiesBeforeItAnswersIsAnError) {
    const FakeServer server(FakeTds().Raw(FakeServer::ThenClose));
    const auto connection = Open(server);
    EXPECT_EQ(ErrorOf([&] { connection->Execute(Sql); }).SqlState(), QStringLiteral("08S01"));
}

TEST(OdbcRecordset, LastWordsOfAServerThatEndsTheSessionAreShown) {
    const FakeServer server(FakeTds()
                                .Error(596, QStringLiteral("The session was ended."), 1, 21)
                                .DoneError(true)
                                .Raw(FakeServer::ThenClose));
    const auto connection = Open(server);
    EXPECT_EQ(ErrorOf([&] { connection->Execute(Sql); }).Description(),
              QStringLiteral("The session was ended."));
}

TEST(OdbcRecordset, SilentServerRunsIntoTheCommandTimeout) {
    const FakeServer server(FakeTds().Raw(FakeServer::ThenSilence));
    const auto connection = Open(server);
    connection->SetCommandTimeout(1);
    const DataError error = ErrorOf([&] { connection->Execute(Sql); });
    EXPECT_EQ(error.Number(), -2147217871);
    EXPECT_EQ(error.SqlState(), QStringLiteral("HYT00"));
}

TEST(OdbcRecordset, RecordSetOutlivesItsConnectionObject) {
    const FakeServer server(Numbers(1, 3));
    auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    connection.reset();
    EXPECT_EQ(N(rows), 1);
    rows->MoveNext();
    EXPECT_EQ(N(rows), 2);
}

TEST(OdbcRecordset, ClosingTheConnectionEndsItsRecordSets) {
    const FakeServer server(Numbers(1, 3));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    EXPECT_EQ(N(rows), 1);
    connection->Close();
    EXPECT_EQ(rows->State(), ado::adStateClosed);
    EXPECT_EQ(ErrorOf([&] { rows->EOF(); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { rows->NextRecordset(); }).Number(), -2146824579);
    EXPECT_EQ(ErrorOf([&] { connection->Execute(Sql); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { connection->Close(); }).Number(), -2146824584);
}

}  // namespace quarv::test
