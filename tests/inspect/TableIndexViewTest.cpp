#include "inspect/TableIndexView.h"

#include "inspect/PaneTest.h"
#include "support/Raised.h"

namespace quarv {
namespace {

constexpr int NullAsText = 94;

// What the server's list of indexes looks like: the description stands before the keys.
ado::MemoryResult IndexRows(std::vector<ado::MemoryResult::Row> rows) {
    return ado::MemoryResult::Rows({"index_name", "index_description", "index_keys"},
                                   std::move(rows));
}

class TableIndexViewTest : public PaneTest<TableIndexView, forms::ListView> {
  protected:
    // Answers the exact statement for the table and shows it.
    void Show(const QString& table, const QString& statement, ado::MemoryResult result) {
        script_->Answer(statement, std::move(result));
        view_.Investigate(table, db_);
    }
    void ShowOrders(ado::MemoryResult result) {
        Show(QStringLiteral("Orders"), QStringLiteral("sp_helpindex 'Orders'"), std::move(result));
    }

    // Key, text and the two sub-items of every row.
    std::vector<QStringList> Listed() {
        std::vector<QStringList> rows;
        auto& items = Detail().ListItems();
        for (int i = 1; i <= items.Count(); ++i) {
            const forms::ListItem& item = items.Item(i);
            rows.push_back({item.Key(), item.Text(), item.SubItem(1), item.SubItem(2)});
        }
        return rows;
    }
};

TEST_F(TableIndexViewTest, HasItsThreeColumns) {
    EXPECT_EQ(ShownColumns(Detail()),
              (std::vector<ShownColumn>{{"Name", 1440, forms::ColumnAlignment::Left},
                                        {"Fields", 2440, forms::ColumnAlignment::Left},
                                        {"Additional", 1000, forms::ColumnAlignment::Centre}}));
}

TEST_F(TableIndexViewTest, ListsEachIndexWithItsFieldsAndDescription) {
    ShowOrders(IndexRows({{u"PK_Orders", u"clustered, unique, primary key on PRIMARY", u"id"},
                          {u"IX_Date", u"nonclustered on PRIMARY", u"shipped(-), customer"}}));
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Orders");
    EXPECT_EQ(Listed(),
              (std::vector<QStringList>{
                  {"PK_Orders", "PK_Orders", "id", "clustered, unique, primary key on PRIMARY"},
                  {"IX_Date", "IX_Date", "shipped(-), customer", "nonclustered on PRIMARY"}}));
    EXPECT_EQ(script_->Statements(), QStringList{"sp_helpindex 'Orders'"});
}

TEST_F(TableIndexViewTest, ValuesThatAreNoTextBecomeText) {
    ShowOrders(IndexRows({{7, true, 12}}));
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"7", "7", "12", "True"}}));
}

TEST_F(TableIndexViewTest, TableWithoutIndexesLeavesTheListEmpty) {
    ShowOrders(ado::MemoryResult::Closed());
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Orders");
    EXPECT_EQ(Listed(), std::vector<QStringList>{});
}

TEST_F(TableIndexViewTest, OpenResultWithoutRowsLeavesTheListEmpty) {
    ShowOrders(IndexRows({}));
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Orders");
    EXPECT_EQ(Listed(), std::vector<QStringList>{});
}

TEST_F(TableIndexViewTest, NextTableReplacesAllRows) {
    ShowOrders(IndexRows({{u"PK", u"clustered", u"id"}, {u"IX", u"nonclustered", u"day"}}));
    Show(QStringLiteral("Books"), QStringLiteral("sp_helpindex 'Books'"),
         IndexRows({{u"PK", u"unique", u"isbn"}}));
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Books");
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"PK", "PK", "isbn", "unique"}}));
}

TEST_F(TableIndexViewTest, NextTableWithoutIndexesEmptiesTheList) {
    ShowOrders(IndexRows({{u"PK", u"clustered", u"id"}}));
    Show(QStringLiteral("Heap"), QStringLiteral("sp_helpindex 'Heap'"),
         ado::MemoryResult::Closed());
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Heap");
    EXPECT_EQ(Listed(), std::vector<QStringList>{});
}

TEST_F(TableIndexViewTest, NamesOfAnyLettersComeBackExactly) {
    Show(QStringLiteral(" O'Brien] & \u05E9\u05DC\u05D5\u05DD "),
         QStringLiteral("sp_helpindex ' O''Brien] & \u05E9\u05DC\u05D5\u05DD '"),
         IndexRows({{u" i]x'1 ", u"<b>on</b> \u05D0", u"a]b, 'c', \u05D1(-)"}}));
    EXPECT_EQ(BorderFrame().Caption(),
              QStringLiteral("Indexes:  O'Brien] & \u05E9\u05DC\u05D5\u05DD "));
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{" i]x'1 ", " i]x'1 ",
                                                   QStringLiteral("a]b, 'c', \u05D1(-)"),
                                                   QStringLiteral("<b>on</b> \u05D0")}}));
}

TEST_F(TableIndexViewTest, FailingQueryLeavesThePaneAsItWas) {
    ShowOrders(IndexRows({{u"PK", u"clustered", u"id"}}));
    EXPECT_EQ(Raised([this] {
                  Show(QStringLiteral("Gone"), QStringLiteral("sp_helpindex 'Gone'"),
                       ado::MemoryResult::Fails("no such object", -2147217900, 15009));
              }),
              -2147217900);
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Orders");
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"PK", "PK", "id", "clustered"}}));
}

TEST_F(TableIndexViewTest, FailingReadLeavesTheRowsBeforeIt) {
    EXPECT_EQ(
        Raised([this] {
            ShowOrders(IndexRows({{u"PK", u"clustered", u"id"}}).ThenFails("connection lost"));
        }),
        -2147467259);
    EXPECT_EQ(BorderFrame().Caption(), "Indexes: Orders");
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"PK", "PK", "id", "clustered"}}));
}

TEST_F(TableIndexViewTest, NullFieldsFailBehindTheNameThatWasAdded) {
    EXPECT_EQ(Raised([this] {
                  ShowOrders(IndexRows({{u"PK", u"clustered", Value::Null()}}));
              }),
              NullAsText);
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"PK", "PK", "", ""}}));
}

TEST_F(TableIndexViewTest, NullDescriptionFailsBehindTheFields) {
    EXPECT_EQ(Raised([this] {
                  ShowOrders(IndexRows({{u"PK", Value::Null(), u"id"}}));
              }),
              NullAsText);
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"PK", "PK", "id", ""}}));
}

TEST_F(TableIndexViewTest, IndexesOfOneNameInTwoLetterCasesAreRefused) {
    EXPECT_EQ(Raised([this] {
                  ShowOrders(IndexRows({{u"ix", u"one", u"a"}, {u"IX", u"two", u"b"}}));
              }),
              35602);
    EXPECT_EQ(Listed(), (std::vector<QStringList>{{"ix", "ix", "a", "one"}}));
}

}  // namespace
}  // namespace quarv
