#include "app/DatabaseView.h"

#include <gtest/gtest.h>

#include <QTest>

#include "app/FakeDatabase.h"
#include "base/DataError.h"
#include "inspect/TableFieldView.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ListView.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/TreeView.h"
#include "query/QueryView.h"
#include "support/Raised.h"

namespace quarv {
namespace {

class DatabaseViewTest : public testing::Test {
  protected:
    forms::Nodes& Nodes() { return Tree().Nodes(); }
    forms::TreeView& Tree() {
        return *window_.findChild<forms::TreeView*>(QStringLiteral("DBObjectList"));
    }
    forms::FramePlus& TableFrame() {
        return *window_.findChild<forms::FramePlus*>(QStringLiteral("TableFrame"));
    }
    TableFieldView& Fields() {
        return *window_.findChild<TableFieldView*>(QStringLiteral("TableFieldViewer"));
    }

    // The nodes as they stand under one another, indented.
    QStringList Lines(const forms::Node& from, int depth = 0) {
        QStringList lines{QString(depth, u' ') + from.Text()};
        for (const forms::Node* child : from.Children()) lines += Lines(*child, depth + 1);
        return lines;
    }

    void ClickNode(const char* key) {
        const forms::Node& node = Nodes().Item(QLatin1String(key));
        Nodes().Item(1).SetExpanded(true);
        node.Parent()->SetExpanded(true);
        QCoreApplication::processEvents();
        const QModelIndexList found =
            Tree().model()->match(Tree().model()->index(0, 0), Qt::DisplayRole, node.Text(), 1,
                                  Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive);
        ASSERT_EQ(found.size(), 1);
        Tree().scrollTo(found[0]);
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                          Tree().visualRect(found[0]).center());
    }

    void Press(const char* name) {
        QTest::mouseClick(window_.findChild<forms::ButtonPlus*>(QLatin1String(name)),
                          Qt::LeftButton);
    }
    static QueryView* QueryWindow() {
        QueryView* found = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* query = qobject_cast<QueryView*>(window)) found = query;
        return found;
    }
    static QString QueryText() {
        return QueryWindow()->findChild<forms::TextBox*>(QStringLiteral("Query"))->Text();
    }

    FakeDatabase database_;
    DatabaseView window_{database_.script->Factory()};
};

TEST_F(DatabaseViewTest, FitsASmallScreenAndHoldsItsControls) {
    EXPECT_LE(window_.width(), 1280);
    EXPECT_LE(window_.height(), 720 - 60);
    EXPECT_TRUE(window_.rect().contains(Tree().geometry()));
    EXPECT_TRUE(window_.rect().contains(TableFrame().geometry()));
    EXPECT_EQ(Fields().geometry(), TableFrame().rect());
    EXPECT_FALSE(Tree().geometry().intersects(TableFrame().geometry()));
}

TEST_F(DatabaseViewTest, ShowsTheDatabaseAsATree) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(window_.isVisible());
    EXPECT_FALSE(window_.isModal());
    EXPECT_EQ(window_.Caption(), "SQL Server srv Sales");
    EXPECT_EQ(database_.script->Opened(), QStringList{FakeDatabase::ConnStr});
    EXPECT_EQ(Lines(Nodes().Item(1)),
              (QStringList{"SQL Server srv Sales Server 9.1", " Tables", "  Orders", "  Customers",
                           "  AllOrders", " Routines", "  usp_Report", "  Plain", "  a"}));
}

TEST_F(DatabaseViewTest, NodesHaveTheirKeysAndPictures) {
    window_.DoView(FakeDatabase::ConnStr);
    const struct {
        const char* key;
        int image;
    } expected[] = {{"_db_", 2},        {"Tables", 4},         {"Routines", 6},
                    {"_tbl_Orders", 1}, {"_tbl_AllOrders", 1}, {"_sp_usp_Report", 5}};
    for (const auto& [key, image] : expected)
        EXPECT_EQ(Nodes().Item(QLatin1String(key)).Image(), image) << key;
    EXPECT_EQ(Nodes().Count(), 9);
}

TEST_F(DatabaseViewTest, OnlyTheRootIsExpanded) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(Nodes().Item("_db_").Expanded());
    EXPECT_FALSE(Nodes().Item("Tables").Expanded());
    EXPECT_FALSE(Nodes().Item("Routines").Expanded());
}

TEST_F(DatabaseViewTest, FailingConnectionLeavesTheWindowHidden) {
    database_.script->FailOpen(DataError(-2147467259, "no server"));
    EXPECT_EQ(Raised([this] { window_.DoView(FakeDatabase::ConnStr); }), -2147467259);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(DatabaseViewTest, FailingCatalogueLeavesTheWindowHidden) {
    database_.script->AnswerSchema(ado::Schema::Procedures,
                                   ado::MemoryResult::Fails("no procedures for you"));
    EXPECT_THROW(window_.DoView(FakeDatabase::ConnStr), DataError);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(DatabaseViewTest, TwoTablesOfOneNameRaise) {
    database_.SetTables({{u"Orders", u"TABLE"}, {u"ORDERS", u"TABLE"}});
    EXPECT_EQ(Raised([this] { window_.DoView(FakeDatabase::ConnStr); }), 35602);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(DatabaseViewTest, TwoProceduresThatDifferInTheirVersionRaise) {
    database_.SetProcedures({{u"p;1"}, {u"p;2"}});
    EXPECT_EQ(Raised([this] { window_.DoView(FakeDatabase::ConnStr); }), 35602);
}

TEST_F(DatabaseViewTest, ClickOnATableShowsItsColumns) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(TableFrame().Visible());
    ClickNode("_tbl_Orders");
    EXPECT_TRUE(TableFrame().Visible());
    auto* list = Fields().findChild<forms::ListView*>(QStringLiteral("Detail"));
    ASSERT_EQ(list->ListItems().Count(), 2);
    EXPECT_EQ(list->ListItems().Item(2).Text(), "note");
    EXPECT_EQ(Fields().ScriptText(),
              "CREATE TABLE Orders (\r\n   id int,\r\n   note nvarchar(80) NULL\r\n)\r\n");
    EXPECT_EQ(database_.script->Statements().last(), FakeDatabase::ColumnsOfOrders);
}

TEST_F(DatabaseViewTest, ClickOnAProcedureHidesTheTable) {
    window_.DoView(FakeDatabase::ConnStr);
    ClickNode("_tbl_Orders");
    ClickNode("_sp_Plain");
    EXPECT_FALSE(TableFrame().Visible());
    ClickNode("_tbl_Orders");
    EXPECT_TRUE(TableFrame().Visible());
}

TEST_F(DatabaseViewTest, ClicksOnRootAndGroupsDoNothing) {
    window_.DoView(FakeDatabase::ConnStr);
    const qsizetype sent = database_.script->Statements().size();
    ClickNode("Tables");
    ClickNode("Routines");
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                      Tree().visualRect(Tree().model()->index(0, 0)).center());
    EXPECT_EQ(database_.script->Statements().size(), sent);
    EXPECT_TRUE(TableFrame().Visible());
}

TEST_F(DatabaseViewTest, FailingColumnsEndTheClickOnly) {
    database_.script->Answer(FakeDatabase::ColumnsOfOrders,
                             ado::MemoryResult::Fails("no columns", -2147217865));
    window_.DoView(FakeDatabase::ConnStr);
    testing::internal::CaptureStderr();
    ClickNode("_tbl_Orders");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "-2147217865: no columns\n");
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(DatabaseViewTest, QueryOpensTheQueryWindowEmptyAndScriptWithTheTablesScript) {
    window_.DoView(FakeDatabase::ConnStr);
    Press("LaunchScript");
    EXPECT_EQ(QueryText(), "");
    ClickNode("_tbl_Orders");
    Press("LaunchScript");
    EXPECT_EQ(QueryText(),
              "CREATE TABLE Orders (\r\n   id int,\r\n   note nvarchar(80) NULL\r\n)\r\n");
    Press("LaunchQuery");
    EXPECT_EQ(QueryText(), "");
}

TEST_F(DatabaseViewTest, ThereIsOneQueryWindowOnTheWindowsConnection) {
    window_.DoView(FakeDatabase::ConnStr);
    Press("LaunchQuery");
    QueryView* first = QueryWindow();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->Caption(), "Query: SQL Server srv Sales");
    first->Close();
    Press("LaunchQuery");
    EXPECT_EQ(QueryWindow(), first);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(database_.script->Opened().size(), 1);
}

}  // namespace
}  // namespace quarv
