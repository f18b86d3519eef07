#include "inspect/TableFieldView.h"

#include <gtest/gtest.h>

#include "inspect/ColumnRows.h"
#include "inspect/PaneTest.h"
#include "support/Raised.h"

namespace quarv {
namespace {

class TableFieldViewTest : public PaneTest<TableFieldView, forms::ListView> {
  protected:
    void Answer(const char* table, ado::MemoryResult result) {
        script_->Answer(
            QStringLiteral("select * from information_schema.columns where table_name='%1' order "
                           "by ordinal_position")
                .arg(QLatin1String(table)),
            std::move(result));
    }
};

TEST_F(TableFieldViewTest, HasItsFourColumns) {
    EXPECT_EQ(ShownColumns(Detail()),
              (std::vector<ShownColumn>{{"Name", 1440, forms::ColumnAlignment::Left},
                                        {"Type", 2440, forms::ColumnAlignment::Left},
                                        {"Nullable", 1000, forms::ColumnAlignment::Centre},
                                        {"Default", 1440, forms::ColumnAlignment::Left}}));
}

TEST_F(TableFieldViewTest, ListsTheColumnsAndKeepsTheScript) {
    EXPECT_EQ(view_.ScriptText(), "");
    Answer(
        "T",
        ColumnRows(
            {{.name = "a", .dataType = "varchar", .length = 50, .nullable = u"YES"},
             {.name = "b", .dataType = "money", .domain = u"money2", .defaultValue = u"((1))"}}));
    view_.Investigate(QStringLiteral("T"), db_);
    EXPECT_EQ(BorderFrame().Caption(), "Fields: T");
    auto& items = Detail().ListItems();
    ASSERT_EQ(items.Count(), 2);
    EXPECT_EQ(items.Item(1).Text(), "a");
    EXPECT_EQ(items.Item(1).Key(), "a");
    EXPECT_EQ(items.Item(1).SubItem(1), "varchar(50)");
    EXPECT_EQ(items.Item(1).SubItem(2), "Yes");
    EXPECT_EQ(items.Item(1).SubItem(3), "");
    EXPECT_EQ(items.Item(2).SubItem(1), "money2 [money]");
    EXPECT_EQ(items.Item(2).SubItem(2), "");
    EXPECT_EQ(items.Item(2).SubItem(3), "((1))");
    EXPECT_EQ(view_.ScriptText(),
              "CREATE TABLE T (\r\n   a varchar(50) NULL,\r\n   b money2 \r\n)\r\n");
}

TEST_F(TableFieldViewTest, UnknownTableEmptiesTheList) {
    Answer("T", ColumnRows({{.name = "a", .dataType = "int"}}));
    Answer("Nowhere", ColumnRows({}));
    view_.Investigate(QStringLiteral("T"), db_);
    view_.Investigate(QStringLiteral("Nowhere"), db_);
    EXPECT_EQ(Detail().ListItems().Count(), 0);
    EXPECT_EQ(BorderFrame().Caption(), "Fields: Nowhere");
    EXPECT_EQ(view_.ScriptText(), "CREATE TABLE Nowhere (\r\n)\r\n");
}

TEST_F(TableFieldViewTest, FailingQueryLeavesThePaneAsItWas) {
    Answer("T", ColumnRows({{.name = "a", .dataType = "int"}}));
    Answer("Bad", ado::MemoryResult::Fails("no such view"));
    view_.Investigate(QStringLiteral("T"), db_);
    EXPECT_THROW(view_.Investigate(QStringLiteral("Bad"), db_), DataError);
    EXPECT_EQ(BorderFrame().Caption(), "Fields: T");
    EXPECT_EQ(Detail().ListItems().Count(), 1);
    EXPECT_EQ(view_.ScriptText(), "CREATE TABLE T (\r\n   a int\r\n)\r\n");
}

TEST_F(TableFieldViewTest, FailingReadLeavesWhatCameBefore) {
    Answer("T", ColumnRows({{.name = "a", .dataType = "int"}, {.name = "b", .dataType = "int"}})
                    .ThenFails("connection lost"));
    EXPECT_THROW(view_.Investigate(QStringLiteral("T"), db_), DataError);
    EXPECT_EQ(BorderFrame().Caption(), "Fields: T");
    EXPECT_EQ(Detail().ListItems().Count(), 2);
    EXPECT_EQ(view_.ScriptText(), "CREATE TABLE T (\r\n   a int,\r\n");
}

TEST_F(TableFieldViewTest, ColumnsOfTwoTablesOfOneNameAreRefused) {
    Answer("T", ColumnRows({{.name = "id", .dataType = "int"}, {.name = "ID", .dataType = "int"}}));
    EXPECT_EQ(Raised([this] { view_.Investigate(QStringLiteral("T"), db_); }), 35602);
    EXPECT_EQ(Detail().ListItems().Count(), 1);
}

}  // namespace
}  // namespace quarv
