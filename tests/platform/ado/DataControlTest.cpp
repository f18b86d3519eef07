#include "platform/ado/DataControl.h"

#include "platform/ado/ErrorOf.h"
#include "platform/ado/MemoryConnection.h"

namespace quarv::test {

using ado::DataControl;
using ado::MemoryConnection;
using ado::MemoryResult;
using ado::MemoryScript;

namespace {

constexpr qint64 Everything = 0x7FFFFFFFFFFFFFFF;

// What the loss of a connection looks like to whoever uses it.
MemoryResult Loss() {
    return {{}, {}, DataError(-2147467259, "lost", "08S01")};
}

MemoryResult Numbers(int count) {
    std::vector<MemoryResult::Row> rows;
    for (int i = 0; i < count; ++i) rows.push_back({i});
    return MemoryResult::Rows({"n"}, std::move(rows));
}

class DataControlTest : public ::testing::Test {
  protected:
    DataControlTest() {
        control.SetConnectionString("Provider=a");
        script->Answer("five", Numbers(5));
        script->Answer("two", Numbers(2));
        script->Answer("bad", MemoryResult::Fails("no such table"));
    }

    void Run(const QString& sql) {
        control.SetRecordSource(sql);
        control.Refresh();
    }

    QString ErrorOfRun(const QString& sql) {
        return ErrorOf([&] { Run(sql); }).Description();
    }

    QString ErrorOfReading(qint64 row) {
        return ErrorOf([&] { control.ReadTo(row); }).Description();
    }

    std::shared_ptr<MemoryScript> script = std::make_shared<MemoryScript>();
    // Every connection made stays alive, so that only Close ends one.
    std::vector<std::shared_ptr<MemoryConnection>> made;
    DataControl control{[this] {
        made.push_back(std::make_shared<MemoryConnection>(script));
        return made.back();
    }};
};

}  // namespace

TEST_F(DataControlTest, IsEmptyBeforeTheFirstRefresh) {
    EXPECT_EQ(control.ColumnCount(), 0);
    EXPECT_EQ(control.RowCount(), 0);
    EXPECT_TRUE(control.AtEnd());
    control.ReadTo(10);
    EXPECT_TRUE(made.empty());
}

TEST_F(DataControlTest, ReadsOnlyAsFarAsAsked) {
    Run("five");
    EXPECT_EQ(control.RowCount(), 0);
    control.ReadTo(1);
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_FALSE(control.AtEnd());
    control.ReadTo(0);
    EXPECT_EQ(control.RowCount(), 2);
    control.ReadTo(4);
    EXPECT_EQ(control.RowCount(), 5);
    EXPECT_FALSE(control.AtEnd());
    control.ReadTo(5);
    EXPECT_TRUE(control.AtEnd());
    EXPECT_EQ(control.RowCount(), 5);
    EXPECT_EQ(control.ValueAt(4, 0).ToInteger(), 4);
}

TEST_F(DataControlTest, WaitsForEverOnAConnectionOfItsOwn) {
    Run("two");
    EXPECT_EQ(script->Opened(), QStringList({"Provider=a"}));
    EXPECT_EQ(made.at(0)->CommandTimeout(), 0);
}

TEST_F(DataControlTest, ReusesTheConnectionOfAResultReadToItsEnd) {
    Run("five");
    control.ReadTo(Everything);
    Run("two");
    control.ReadTo(Everything);
    EXPECT_EQ(made.size(), 1U);
    EXPECT_EQ(control.RowCount(), 2);
}

TEST_F(DataControlTest, ConnectsAnewForAnotherConnectionString) {
    Run("two");
    control.ReadTo(Everything);
    control.SetConnectionString("Provider=b");
    Run("five");
    EXPECT_EQ(script->Opened(), QStringList({"Provider=a", "Provider=b"}));
    EXPECT_EQ(script->OpenConnections(), 1);
}

TEST_F(DataControlTest, ClosesTheConnectionOfAnUnreadResultForTheNextOne) {
    Run("five");
    control.ReadTo(0);
    Run("two");
    EXPECT_EQ(made.size(), 2U);
    EXPECT_EQ(made.at(0)->State(), ado::adStateClosed);
    EXPECT_EQ(script->OpenConnections(), 1);
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 2);
}

TEST_F(DataControlTest, FailingQueryLeavesAnUnreadResultReadable) {
    Run("five");
    control.ReadTo(1);
    EXPECT_EQ(ErrorOfRun("bad"), QStringLiteral("no such table"));
    EXPECT_EQ(control.Fields(), QStringList({"n"}));
    EXPECT_EQ(control.RowCount(), 2);
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 5);
    EXPECT_EQ(control.ValueAt(4, 0).ToInteger(), 4);
    made.clear();
    EXPECT_EQ(script->OpenConnections(), 1) << "the failed query's connection is let go";
}

TEST_F(DataControlTest, FailingQueryLeavesAReadResultAndItsConnection) {
    Run("five");
    control.ReadTo(Everything);
    EXPECT_EQ(ErrorOfRun("bad"), QStringLiteral("no such table"));
    EXPECT_EQ(control.RowCount(), 5);
    EXPECT_TRUE(control.AtEnd());
    Run("two");
    EXPECT_EQ(made.size(), 1U);
}

TEST_F(DataControlTest, FailingToConnectKeepsTheEarlierResult) {
    Run("five");
    script->FailOpen(DataError(-1, "no way"));
    EXPECT_EQ(ErrorOfRun("two"), QStringLiteral("no way"));
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 5);
}

TEST_F(DataControlTest, FailingFirstRowIsAFailingQuery) {
    script->Answer("divide", MemoryResult::Rows({"x"}).ThenFails("by zero"));
    Run("five");
    EXPECT_EQ(ErrorOfRun("divide"), QStringLiteral("by zero"));
    EXPECT_EQ(control.Fields(), QStringList({"n"}));
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 5);
}

TEST_F(DataControlTest, PassesResultsWithoutColumns) {
    script->Answer("batch", {MemoryResult::Closed(), MemoryResult::Closed(), Numbers(3)});
    Run("batch");
    EXPECT_EQ(control.ColumnCount(), 1);
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 3);
}

TEST_F(DataControlTest, RaisesTheErrorOfAStatementBeforeTheResult) {
    script->Answer("batch", {MemoryResult::Closed(), MemoryResult::Fails("second"), Numbers(3)});
    Run("two");
    EXPECT_EQ(ErrorOfRun("batch"), QStringLiteral("second"));
    control.ReadTo(Everything);
    EXPECT_EQ(control.RowCount(), 2);
}

TEST_F(DataControlTest, BatchWithoutColumnsGivesAnEmptyResult) {
    script->Answer("update", {MemoryResult::Closed(), MemoryResult::Closed()});
    Run("five");
    Run("update");
    EXPECT_EQ(control.ColumnCount(), 0);
    EXPECT_TRUE(control.Fields().isEmpty());
    EXPECT_TRUE(control.AtEnd());
    Run("two");
    EXPECT_EQ(made.size(), 2U);
}

TEST_F(DataControlTest, EmptyTextSucceedsAndSendsNothing) {
    Run("five");
    Run(QString());
    EXPECT_EQ(control.ColumnCount(), 0);
    EXPECT_EQ(control.RowCount(), 0);
    EXPECT_TRUE(control.AtEnd());
    EXPECT_EQ(script->Statements(), QStringList({"five"}));
    EXPECT_EQ(script->OpenConnections(), 0);
}

TEST_F(DataControlTest, EmptyTextKeepsAnIdleConnection) {
    Run("five");
    control.ReadTo(Everything);
    Run(QString());
    Run("two");
    EXPECT_EQ(made.size(), 1U);
}

TEST_F(DataControlTest, OnlyTheFirstResultIsShown) {
    script->Answer("batch", {Numbers(1), MemoryResult::Closed(), MemoryResult::Rows({"a", "b"})});
    Run("batch");
    control.ReadTo(Everything);
    EXPECT_EQ(control.Fields(), QStringList({"n"}));
    EXPECT_EQ(control.RowCount(), 1);
    EXPECT_TRUE(control.AtEnd());
}

TEST_F(DataControlTest, ErrorsOfTheRestAreRaisedOneACall) {
    script->Answer("batch", {Numbers(2), MemoryResult::Fails("first"), MemoryResult::Closed(),
                             MemoryResult::Fails("second")});
    Run("batch");
    control.ReadTo(1);
    EXPECT_EQ(ErrorOfReading(2), QStringLiteral("first"));
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_FALSE(control.AtEnd());
    control.ReadTo(1);
    EXPECT_EQ(ErrorOfReading(2), QStringLiteral("second"));
    EXPECT_TRUE(control.AtEnd());
    control.ReadTo(Everything);
    EXPECT_EQ(control.ValueAt(1, 0).ToInteger(), 1);
    Run("two");
    EXPECT_EQ(made.size(), 1U);
}

TEST_F(DataControlTest, ErrorBehindRowsKeepsThemAndRunsTheRest) {
    script->Answer("batch", {Numbers(3).ThenFails("row four"), MemoryResult::Fails("later")});
    Run("batch");
    EXPECT_EQ(ErrorOfReading(Everything), QStringLiteral("row four"));
    EXPECT_EQ(control.RowCount(), 3);
    EXPECT_EQ(ErrorOfReading(Everything), QStringLiteral("later"));
    EXPECT_TRUE(control.AtEnd());
}

TEST_F(DataControlTest, ErrorsLeftAreDroppedWithTheirResult) {
    script->Answer("batch", {Numbers(1), MemoryResult::Fails("1"), MemoryResult::Fails("2")});
    Run("batch");
    EXPECT_EQ(ErrorOfReading(1), QStringLiteral("1"));
    Run("two");
    control.ReadTo(Everything);
    EXPECT_TRUE(control.AtEnd());
}

TEST_F(DataControlTest, ConnectionLostAmongRowsIsReplaced) {
    MemoryResult result = Numbers(2);
    result.error = Loss().error;
    script->Answer("batch", {result, MemoryResult::Fails("never asked for")});
    Run("batch");
    EXPECT_EQ(ErrorOfReading(Everything), QStringLiteral("lost"));
    EXPECT_TRUE(control.AtEnd());
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_EQ(script->OpenConnections(), 0);
    Run("five");
    EXPECT_EQ(made.size(), 2U);
}

TEST_F(DataControlTest, ConnectionLostWhileIdleIsReplaced) {
    script->Answer("select", Loss());
    Run("two");
    control.ReadTo(Everything);
    EXPECT_EQ(ErrorOfRun("select"), QStringLiteral("lost"));
    EXPECT_EQ(control.RowCount(), 2);
    EXPECT_EQ(script->Statements(), QStringList({"two", "select"})) << "it is not sent again";
    Run("five");
    EXPECT_EQ(made.size(), 2U);
}

TEST_F(DataControlTest, NamesStayAsTheyAreInTheWidestResult) {
    QStringList names{"", "a", "A", "a", ""};
    while (names.size() < 4096) names.append(QString());
    MemoryResult::Row row;
    for (int i = 0; i < 4096; ++i) row.push_back(i);
    script->Answer("wide", MemoryResult::Rows(names, {row}));
    Run("wide");
    control.ReadTo(0);
    EXPECT_EQ(control.Fields(), names);
    EXPECT_EQ(control.ColumnCount(), 4096);
    EXPECT_EQ(control.ValueAt(0, 1).ToInteger(), 1);
    EXPECT_EQ(control.ValueAt(0, 3).ToInteger(), 3);
    EXPECT_EQ(control.ValueAt(0, 4095).ToInteger(), 4095);
}

}  // namespace quarv::test
