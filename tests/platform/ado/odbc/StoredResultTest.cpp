#include <gtest/gtest.h>

#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using C = FakeColumn;

const QString Many = QStringLiteral("many");
const QString Other = QStringLiteral("other");
const QString Long = QString(40000, QChar(0xE9)) + QStringLiteral("😀");

FakeValue Name(int i) {
    if (i % 5 == 0) return std::nullopt;
    return Utf16(i % 7 == 0 ? Long : QStringLiteral("row %1").arg(i));
}

void AddRows(FakeTds& answer, int first, int last, bool more) {
    answer.Columns({C::Int("n"), C::NVarCharMax("name"), C::DateTime2("d", 7)});
    for (int i = first; i <= last; ++i)
        answer.Row(
            {Le(static_cast<quint64>(i), 4), Name(i), QByteArray::fromHex("ffbf692ac9dab937")});
    answer.Done(last - first + 1, more);
}

// Rows 1..200, a count, a failed statement, rows 300..302.
QByteArray ManyResults() {
    FakeTds answer;
    AddRows(answer, 1, 200, true);
    answer.Done(4, true);
    answer.Error(8134, QStringLiteral("Divide by zero error encountered.")).DoneError(true);
    AddRows(answer, 300, 302, false);
    return answer;
}

QByteArray Answer(const QString& sql) {
    if (sql == Many) return ManyResults();
    return FakeTds().Columns({C::Int("o")}).Row({Le(5, 4)}).Done(1);
}

void ExpectRow(const ado::RecordsetPtr& rows, int i) {
    EXPECT_EQ((*rows)["n"].ToInteger(), i);
    if (i % 5 == 0)
        EXPECT_TRUE((*rows)["name"].IsNull());
    else
        EXPECT_TRUE((*rows)["name"].Text() ==
                    (i % 7 == 0 ? Long : QStringLiteral("row %1").arg(i)));
    EXPECT_EQ((*rows)["d"].AsDateTime().ToIsoText(), QStringLiteral("9999-12-31 23:59:59.9999999"));
}

void ExpectRows(const ado::RecordsetPtr& rows, int first, int last) {
    for (int i = first; i <= last; ++i) {
        ASSERT_FALSE(rows->EOF());
        ExpectRow(rows, i);
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF());
}

void ExpectRestOfMany(const ado::RecordsetPtr& rows) {
    const auto count = rows->NextRecordset();
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->State(), ado::adStateClosed);
    EXPECT_EQ(ErrorOf([&] { count->NextRecordset(); }).NativeError(), 8134);
    const auto last = count->NextRecordset();
    ASSERT_NE(last, nullptr);
    ExpectRows(last, 300, 302);
    EXPECT_EQ(last->NextRecordset(), nullptr);
}

}  // namespace

TEST(StoredResult, NothingIsLostFromTheFirstRow) {
    const FakeServer server(Answer);
    const auto connection = Open(server);
    const auto rows = connection->Execute(Many);
    const auto other = connection->Execute(Other);
    EXPECT_EQ((*other)["o"].ToInteger(), 5);
    ExpectRows(rows, 1, 200);
    ExpectRestOfMany(rows);
    EXPECT_EQ((*other)["o"].ToInteger(), 5);
}

TEST(StoredResult, RowBeingReadStaysCurrent) {
    const FakeServer server(Answer);
    const auto connection = Open(server);
    const auto rows = connection->Execute(Many);
    for (int i = 1; i < 14; ++i) rows->MoveNext();
    EXPECT_EQ((*rows)["n"].ToInteger(), 14);
    connection->Execute(Other);
    ExpectRow(rows, 14);
    ExpectRow(rows, 14);
    ExpectRows(rows, 14, 200);
    ExpectRestOfMany(rows);
}

TEST(StoredResult, StepBeforeTheNextRowIsAskedForIsKept) {
    const FakeServer server(Answer);
    const auto connection = Open(server);
    const auto rows = connection->Execute(Many);
    EXPECT_EQ((*rows)["n"].ToInteger(), 1);
    rows->MoveNext();
    connection->Execute(Other);
    ExpectRows(rows, 2, 200);
}

TEST(StoredResult, EndThatWasReachedStaysReached) {
    const FakeServer server(Answer);
    const auto connection = Open(server);
    const auto rows = connection->Execute(Other);
    rows->MoveNext();
    EXPECT_TRUE(rows->EOF());
    connection->Execute(Other);
    EXPECT_TRUE(rows->EOF());
    EXPECT_EQ(rows->NextRecordset(), nullptr);
}

TEST(StoredResult, LaterResultsOfAClosedFirstOneAreKept) {
    const FakeServer server([](const QString& sql) {
        if (sql == Other) return Answer(sql);
        FakeTds answer;
        answer.Done(3, true);
        AddRows(answer, 1, 2, false);
        return answer.Bytes();
    });
    const auto connection = Open(server);
    const auto count = connection->Execute(Many);
    connection->Execute(Other);
    const auto rows = count->NextRecordset();
    ASSERT_NE(rows, nullptr);
    ExpectRows(rows, 1, 2);
}

TEST(StoredResult, ThreeCommandsKeepTheirOwnRows) {
    const FakeServer server(Answer);
    const auto connection = Open(server);
    const auto first = connection->Execute(Many);
    const auto second = connection->Execute(Many);
    const auto third = connection->Execute(Many);
    ExpectRows(second, 1, 200);
    ExpectRows(first, 1, 200);
    ExpectRows(third, 1, 200);
}

TEST(StoredResult, ErrorBehindTheRowsIsKeptInItsPlace) {
    const FakeServer server([](const QString& sql) {
        if (sql == Other) return Answer(sql);
        FakeTds answer;
        answer.Columns({C::Int("n")}).Row({Le(1, 4)}).Row({Le(2, 4)});
        return answer.Error(8134, QStringLiteral("Divide by zero error encountered."))
            .DoneError()
            .Bytes();
    });
    const auto connection = Open(server);
    const auto rows = connection->Execute(Many);
    connection->Execute(Other);
    EXPECT_EQ((*rows)["n"].ToInteger(), 1);
    rows->MoveNext();
    EXPECT_EQ((*rows)["n"].ToInteger(), 2);
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows->EOF(); }).NativeError(), 8134);
    EXPECT_TRUE(rows->EOF());
}

TEST(StoredResult, DroppedRecordSetLeavesTheConnectionFree) {
    const FakeServer server(Answer);
    const auto connection = Open(server);
    for (int i = 0; i < 20; ++i) {
        connection->Execute(Many)->MoveNext();
        EXPECT_EQ((*connection->Execute(Other))["o"].ToInteger(), 5);
    }
}

TEST(StoredResult, ErrorOfAnotherCommandLeavesTheRows) {
    const FakeServer server([](const QString& sql) {
        if (sql == Many) return Answer(sql);
        return FakeTds().Error(208, QStringLiteral("Invalid object name 'x'.")).DoneError().Bytes();
    });
    const auto connection = Open(server);
    const auto rows = connection->Execute(Many);
    EXPECT_EQ(ErrorOf([&] { connection->Execute(Other); }).NativeError(), 208);
    ExpectRows(rows, 1, 200);
}

}  // namespace quarv::test
