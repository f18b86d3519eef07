#include "platform/ado/Conformance.h"

#include "platform/ado/ErrorOf.h"
#include "platform/ado/WrittenRow.h"

namespace quarv::test {

namespace conformance {

const QString DropTable = QStringLiteral("drop table if exists quarv_conformance");
const QString CreateTable = QStringLiteral(
    "create table quarv_conformance (id int not null primary key, name nvarchar(50) null)");
const QString Insert = QStringLiteral(
    "insert into quarv_conformance (id, name) values (1, N'one'), (2, null), (3, N'drei 😀')");
const QString AllRows = QStringLiteral("select id, name from quarv_conformance order by id");
const QString NoRows = QStringLiteral("select id, name from quarv_conformance where id = 0");
const QString Several = QStringLiteral(
    "select id from quarv_conformance order by id; "
    "insert into quarv_conformance (id, name) values (4, N'four'); "
    "select name from quarv_conformance where id = 4");
const QString MissingTable = QStringLiteral("select * from quarv_no_such_table");
const QString FailsLater = QStringLiteral(
    "select id from quarv_conformance where id = 1; "
    "insert into quarv_conformance (id, name) values (1, N'again'); "
    "select id from quarv_conformance where id = 3");

}  // namespace conformance

using namespace conformance;

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ConformanceTest);

class ConformanceTest : public testing::TestWithParam<Backend> {
  protected:
    void SetUp() override {
        connection_ = GetParam().open();
        connection_->Execute(DropTable);
        connection_->Execute(CreateTable);
        connection_->Execute(Insert);
    }

    ado::ConnectionPtr connection_;
};

TEST_P(ConformanceTest, RowsArriveInOrderWithNullsAndText) {
    const auto rows = connection_->Execute(AllRows);
    EXPECT_EQ(rows->State(), ado::adStateOpen);
    EXPECT_EQ(rows->Fields().Count(), 2);
    EXPECT_EQ((*rows)["id"].ToInteger(), 1);
    EXPECT_EQ((*rows)["NAME"].Text(), QStringLiteral("one"));
    EXPECT_EQ((*rows)["NAME"].Text(), QStringLiteral("one"));
    rows->MoveNext();
    EXPECT_EQ((*rows)["ID"].ToInteger(), 2);
    EXPECT_TRUE((*rows)["name"].IsNull());
    rows->MoveNext();
    EXPECT_EQ((*rows)["name"].Text(), QStringLiteral("drei 😀"));
    EXPECT_FALSE(rows->EOF());
    rows->MoveNext();
    EXPECT_TRUE(rows->EOF());
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }).Number(), -2146825267);
    EXPECT_EQ(ErrorOf([&] { (*rows)["id"]; }).Number(), -2146825267);
    EXPECT_EQ(rows->NextRecordset(), nullptr);
}

TEST_P(ConformanceTest, RowsAreWrittenWhole) {
    const auto rows = connection_->Execute(AllRows);
    for (int again = 0; again < 2; ++again) {
        const std::vector<Value> row = WrittenRow(*rows);
        EXPECT_EQ(row.at(0).ToInteger(), 1);
        EXPECT_EQ(row.at(1).Text(), QStringLiteral("one"));
    }
    EXPECT_EQ((*rows)["name"].Text(), QStringLiteral("one"));
    rows->MoveNext();
    EXPECT_TRUE(WrittenRow(*rows).at(1).IsNull());
    rows->MoveNext();
    EXPECT_EQ((*rows)["name"].Text(), QStringLiteral("drei 😀"));
    EXPECT_EQ(WrittenRow(*rows).at(0).ToInteger(), 3);
    EXPECT_EQ(WrittenRow(*rows).at(1).Text(), QStringLiteral("drei 😀"));
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { WrittenRow(*rows); }).Number(), -2146825267);
}

TEST_P(ConformanceTest, UnknownFieldIsRefused) {
    const auto rows = connection_->Execute(AllRows);
    EXPECT_EQ(ErrorOf([&] { (*rows)["nosuch"]; }).Number(), -2146825023);
    EXPECT_EQ(ErrorOf([&] { rows->Fields()[2]; }).Number(), -2146825023);
}

TEST_P(ConformanceTest, NoRowsAreAnOpenRecordSet) {
    const auto rows = connection_->Execute(NoRows);
    EXPECT_EQ(rows->State(), ado::adStateOpen);
    EXPECT_TRUE(rows->EOF());
    rows->Close();
    EXPECT_EQ(rows->State(), ado::adStateClosed);
    EXPECT_EQ(ErrorOf([&] { rows->Close(); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { rows->EOF(); }).Number(), -2146824584);
}

TEST_P(ConformanceTest, StatementWithoutRowsIsClosed) {
    const auto rows = connection_->Execute(DropTable);
    EXPECT_EQ(rows->State(), ado::adStateClosed);
    EXPECT_EQ(rows->Fields().Count(), 0);
    EXPECT_EQ(rows->NextRecordset(), nullptr);
}

TEST_P(ConformanceTest, EmptyTextIsAClosedRecordSet) {
    EXPECT_EQ(connection_->Execute(QString())->State(), ado::adStateClosed);
}

TEST_P(ConformanceTest, ResultsFollowOneAnother) {
    const auto first = connection_->Execute(Several);
    EXPECT_EQ((*first)["id"].ToInteger(), 1);
    const auto count = first->NextRecordset();
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->State(), ado::adStateClosed);
    const auto last = count->NextRecordset();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ((*last)["name"].Text(), QStringLiteral("four"));
    EXPECT_EQ(last->NextRecordset(), nullptr);
}

TEST_P(ConformanceTest, SecondCommandLosesNothingOfTheFirst) {
    const auto first = connection_->Execute(Several);
    const auto second = connection_->Execute(AllRows);
    EXPECT_EQ((*first)["id"].ToInteger(), 1);
    first->MoveNext();
    EXPECT_EQ((*second)["id"].ToInteger(), 1);
    EXPECT_EQ((*first)["id"].ToInteger(), 2);
    const auto last = first->NextRecordset()->NextRecordset();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ((*last)["name"].Text(), QStringLiteral("four"));
}

TEST_P(ConformanceTest, MissingTableIsRaisedByExecute) {
    const DataError error = ErrorOf([&] { connection_->Execute(MissingTable); });
    EXPECT_EQ(error.Number(), -2147217865);
    EXPECT_EQ(error.Description(), QStringLiteral("Invalid object name 'quarv_no_such_table'."));
}

TEST_P(ConformanceTest, LaterErrorIsRaisedOnceInItsPlace) {
    const auto first = connection_->Execute(FailsLater);
    EXPECT_EQ((*first)["id"].ToInteger(), 1);
    EXPECT_EQ(ErrorOf([&] { first->NextRecordset(); }).Number(), -2147217873);
    const auto last = first->NextRecordset();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ((*last)["id"].ToInteger(), 3);
    EXPECT_EQ(last->NextRecordset(), nullptr);
}

TEST_P(ConformanceTest, TablesOfTheDatabaseAreListed) {
    const auto tables = connection_->OpenSchema(ado::Schema::Tables);
    bool found = false;
    for (; !tables->EOF(); tables->MoveNext())
        if ((*tables)["TABLE_NAME"].Text() == QStringLiteral("quarv_conformance"))
            found = (*tables)["TABLE_TYPE"].Text() == QStringLiteral("TABLE");
    EXPECT_TRUE(found);
}

TEST_P(ConformanceTest, ClosingEndsRecordSets) {
    const auto rows = connection_->Execute(AllRows);
    connection_->Close();
    EXPECT_EQ(connection_->State(), ado::adStateClosed);
    EXPECT_EQ(rows->State(), ado::adStateClosed);
    EXPECT_EQ(ErrorOf([&] { rows->EOF(); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { connection_->Execute(AllRows); }).Number(), -2146824584);
    EXPECT_EQ(ErrorOf([&] { connection_->Close(); }).Number(), -2146824584);
}

INSTANTIATE_TEST_SUITE_P(Backends, ConformanceTest, testing::ValuesIn(Backends()),
                         [](const auto& test) { return test.param.name; });

}  // namespace quarv::test
