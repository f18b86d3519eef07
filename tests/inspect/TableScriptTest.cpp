#include "inspect/TableScript.h"

#include <gtest/gtest.h>

#include "inspect/ColumnRows.h"
#include "platform/ado/MemoryConnection.h"

namespace quarv {
namespace {

struct ListedItem {
    QString name;
    QString subItems[4];
};

class ListedItems : public TableColumnSink {
  public:
    void AddItem(const QString& name) override { items.push_back({name, {}}); }
    void SetSubItem(int index, const QString& text) override {
        items.back().subItems[index] = text;
    }

    std::vector<ListedItem> items;
};

class TableScriptTest : public testing::Test {
  protected:
    ado::RecordsetPtr Rows(ado::MemoryResult result) {
        connection_.Open();
        connection_.Script().Answer(QStringLiteral("columns"), std::move(result));
        return connection_.Execute(QStringLiteral("columns"));
    }

    void Read(const std::vector<ColumnRow>& columns, const QString& table = QStringLiteral("T")) {
        const ado::RecordsetPtr rows = Rows(ColumnRows(columns));
        script_.Begin(table);
        script_.ReadColumns(*rows, list_);
        script_.Finish();
        connection_.Close();
    }

    ado::MemoryConnection connection_;
    TableScript script_;
    ListedItems list_;
};

TEST_F(TableScriptTest, IsEmptyBeforeTheFirstTable) {
    EXPECT_EQ(script_.Text(), QString());
}

TEST_F(TableScriptTest, NullableLengthAndDomainColumnsMakeTheScript) {
    Read({{.name = "a", .dataType = "varchar", .length = 50, .nullable = u"YES"},
          {.name = "b", .dataType = "money", .domain = u"money2"}});
    EXPECT_EQ(script_.Text(),
              "CREATE TABLE T (\r\n   a varchar(50) NULL,\r\n   b money2 \r\n)\r\n");
    ASSERT_EQ(list_.items.size(), 2U);
    EXPECT_EQ(list_.items[0].name, "a");
    EXPECT_EQ(list_.items[0].subItems[1], "varchar(50)");
    EXPECT_EQ(list_.items[0].subItems[2], "Yes");
    EXPECT_EQ(list_.items[0].subItems[3], "");
    EXPECT_EQ(list_.items[1].name, "b");
    EXPECT_EQ(list_.items[1].subItems[1], "money2 [money]");
    EXPECT_EQ(list_.items[1].subItems[2], "");
    EXPECT_EQ(list_.items[1].subItems[3], "");
}

TEST_F(TableScriptTest, NullableDomainColumnKeepsTwoBlanks) {
    Read({{.name = "b", .dataType = "money", .domain = u"money2", .nullable = u"YES"}});
    EXPECT_EQ(script_.Text(), "CREATE TABLE T (\r\n   b money2  NULL\r\n)\r\n");
}

TEST_F(TableScriptTest, DomainWithALengthKeepsTheLengthInTheListOnly) {
    Read({{.name = "p", .dataType = "nvarchar", .length = 20, .domain = u"phone"}});
    EXPECT_EQ(list_.items[0].subItems[1], "phone [nvarchar(20)]");
    EXPECT_EQ(script_.Text(), "CREATE TABLE T (\r\n   p phone \r\n)\r\n");
}

TEST_F(TableScriptTest, DomainNameWithABlankIsCutAtItsFirstBlank) {
    Read({{.name = "p", .dataType = "int", .domain = u"my number"}});
    EXPECT_EQ(list_.items[0].subItems[1], "my number [int]");
    EXPECT_EQ(script_.Text(), "CREATE TABLE T (\r\n   p my \r\n)\r\n");
}

TEST_F(TableScriptTest, UnknownTableGivesAnEmptyScript) {
    Read({}, QStringLiteral("Nowhere"));
    EXPECT_EQ(script_.Text(), "CREATE TABLE Nowhere (\r\n)\r\n");
    EXPECT_TRUE(list_.items.empty());
}

TEST_F(TableScriptTest, OnlyTheLastColumnHasNoComma) {
    Read({{.name = "a", .dataType = "int"},
          {.name = "b", .dataType = "int", .nullable = u"YES"},
          {.name = "c", .dataType = "int", .nullable = u"YES"}});
    EXPECT_EQ(script_.Text(),
              "CREATE TABLE T (\r\n   a int,\r\n   b int NULL,\r\n   c int NULL\r\n)\r\n");
}

TEST_F(TableScriptTest, DefaultIsListedAndNotScripted) {
    Read({{.name = "a", .dataType = "int", .defaultValue = u"((0))"}});
    EXPECT_EQ(list_.items[0].subItems[3], "((0))");
    EXPECT_EQ(script_.Text(), "CREATE TABLE T (\r\n   a int\r\n)\r\n");
}

TEST_F(TableScriptTest, TableNameIsWrittenBare) {
    Read({}, QStringLiteral("Order Details]"));
    EXPECT_EQ(script_.Text(), "CREATE TABLE Order Details] (\r\n)\r\n");
}

TEST_F(TableScriptTest, NextTableStartsOver) {
    Read({{.name = "a", .dataType = "int"}}, QStringLiteral("First"));
    Read({{.name = "z", .dataType = "int"}}, QStringLiteral("Second"));
    EXPECT_EQ(script_.Text(), "CREATE TABLE Second (\r\n   z int\r\n)\r\n");
}

TEST_F(TableScriptTest, FailingRowLeavesItsItemAndEndsTheScriptBeforeItsLine) {
    // The second row's type is null and cannot be read as text.
    ado::MemoryResult broken = ColumnRows({{.name = "a", .dataType = "int"}});
    broken.rows.push_back(
        {u"b", Value::Null(), u"YES", Value::Null(), Value::Null(), Value::Null()});
    const ado::RecordsetPtr failing = Rows(broken);
    script_.Begin(QStringLiteral("T"));
    EXPECT_THROW(script_.ReadColumns(*failing, list_), Error);
    EXPECT_EQ(script_.Text(), "CREATE TABLE T (\r\n   a int,\r\n");
    ASSERT_EQ(list_.items.size(), 2U);
    EXPECT_EQ(list_.items[1].name, "b");
    EXPECT_EQ(list_.items[1].subItems[1], "");
}

struct LengthCase {
    const char* dataType;
    Value length;
    const char* shown;
};

class TableScriptLength : public TableScriptTest, public testing::WithParamInterface<LengthCase> {};

TEST_P(TableScriptLength, IsShownForAllButTheOldLongTypes) {
    const LengthCase& c = GetParam();
    Read({{.name = "a", .dataType = c.dataType, .length = c.length}});
    EXPECT_EQ(list_.items[0].subItems[1], c.shown);
    EXPECT_EQ(script_.Text(),
              QStringLiteral("CREATE TABLE T (\r\n   a %1\r\n)\r\n").arg(QLatin1String(c.shown)));
}

INSTANTIATE_TEST_SUITE_P(Types, TableScriptLength,
                         testing::Values(LengthCase{"ntext", 1073741823, "ntext"},
                                         LengthCase{"text", 2147483647, "text"},
                                         LengthCase{"image", 2147483647, "image"},
                                         LengthCase{"TEXT", 2147483647, "TEXT(2147483647)"},
                                         LengthCase{"nvarchar", -1, "nvarchar(-1)"},
                                         LengthCase{"xml", -1, "xml(-1)"},
                                         LengthCase{"varbinary", 16, "varbinary(16)"},
                                         LengthCase{"char", 0, "char(0)"},
                                         LengthCase{"int", Value::Null(), "int"}));

class TableScriptNullable : public TableScriptTest, public testing::WithParamInterface<Value> {};

TEST_P(TableScriptNullable, OnlyTheExactWordCounts) {
    Read({{.name = "a", .dataType = "int", .nullable = GetParam()}});
    EXPECT_EQ(list_.items[0].subItems[2], "");
    EXPECT_EQ(script_.Text(), "CREATE TABLE T (\r\n   a int\r\n)\r\n");
}

INSTANTIATE_TEST_SUITE_P(Others, TableScriptNullable,
                         testing::Values(Value(u"yes"), Value(u"Yes"), Value(u"NO"), Value(u"YES "),
                                         Value(u""), Value::Null()));

}  // namespace
}  // namespace quarv
