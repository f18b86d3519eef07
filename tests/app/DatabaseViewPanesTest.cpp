// What a click on a node shows in the main window's panes, and how the panes lie.
#include "app/DatabaseViewFixture.h"
#include "inspect/SprocView.h"
#include "inspect/TableFieldView.h"
#include "inspect/TableIndexView.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListView.h"

namespace quarv {
namespace {

using ado::MemoryResult;

class DatabaseViewPanesTest : public DatabaseViewFixture {
  protected:
    forms::ListView& ListOf(const char* pane) {
        return *PartNamed<QWidget>(pane).findChild<forms::ListView*>(QStringLiteral("Detail"));
    }
    QString TitleOf(const char* pane) {
        return PartNamed<QWidget>(pane)
            .findChild<forms::FramePlus*>(QStringLiteral("BorderFrame"))
            ->Caption();
    }
    SprocView& Sproc() { return PartNamed<SprocView>("SprocViewer"); }
    // Pixels from the window's corner.
    QRect Place(const char* name) {
        QWidget& part = PartNamed<QWidget>(name);
        return {part.mapTo(&window_, QPoint()), part.size()};
    }
    // What the click writes to the log.
    QString LogOfClick(const char* key) {
        testing::internal::CaptureStderr();
        ClickNode(key);
        return QString::fromStdString(testing::internal::GetCapturedStderr());
    }
};

TEST_F(DatabaseViewPanesTest, BeforeAClickTheTablePanesAreThereAndEmpty) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(TableFrame().Visible());
    EXPECT_FALSE(SprocFrame().Visible());
    EXPECT_EQ(TableEditFrame().Caption(), "Records:");
    EXPECT_EQ(PartNamed<forms::Label>("Label1").Caption(), "Condition:");
    EXPECT_EQ(Records(), QStringList());
}

TEST_F(DatabaseViewPanesTest, ClickOnATableFillsItsPanes) {
    window_.DoView(FakeDatabase::ConnStr);
    ClickNode("_tbl_Orders");
    EXPECT_TRUE(TableFrame().Visible());
    EXPECT_FALSE(SprocFrame().Visible());
    EXPECT_EQ(TitleOf("TableFieldViewer"), "Fields: Orders");
    ASSERT_EQ(ListOf("TableFieldViewer").ListItems().Count(), 2);
    EXPECT_EQ(ListOf("TableFieldViewer").ListItems().Item(2).Text(), "note");
    EXPECT_EQ(TitleOf("TableIndexViewer"), "Indexes: Orders");
    ASSERT_EQ(ListOf("TableIndexViewer").ListItems().Count(), 1);
    EXPECT_EQ(ListOf("TableIndexViewer").ListItems().Item(1).Text(), "PK_Orders");
    EXPECT_EQ(TableEditFrame().Caption(), "Records:Orders");
    EXPECT_EQ(Records(), (QStringList{"1|a", "2|b"}));
}

TEST_F(DatabaseViewPanesTest, AClickAsksTheServerForNothingTwice) {
    window_.DoView(FakeDatabase::ConnStr);
    const qsizetype sent = database_.script->Statements().size();
    const qsizetype asked = database_.script->Schemas().size();
    ClickNode("_tbl_Orders");
    EXPECT_EQ(database_.script->Statements().sliced(sent),
              (QStringList{FakeDatabase::ColumnsOfOrders, "sp_helpindex 'Orders'",
                           FakeDatabase::RowsOfOrders}));
    EXPECT_EQ(database_.script->Schemas().sliced(asked),
              (QStringList{"20 .Orders", "28 dbo.Orders", "12 dbo.Orders"}));
}

TEST_F(DatabaseViewPanesTest, AnotherTableReplacesEverything) {
    database_.FillSmallTable("Customers", 7);
    window_.DoView(FakeDatabase::ConnStr);
    ClickNode("_tbl_Orders");
    ClickNode("_tbl_Customers");
    EXPECT_EQ(TitleOf("TableFieldViewer"), "Fields: Customers");
    EXPECT_EQ(ListOf("TableFieldViewer").ListItems().Count(), 1);
    EXPECT_EQ(TitleOf("TableIndexViewer"), "Indexes: Customers");
    EXPECT_EQ(ListOf("TableIndexViewer").ListItems().Count(), 0);
    EXPECT_EQ(TableEditFrame().Caption(), "Records:Customers");
    EXPECT_EQ(Records(), QStringList{"7"});
}

TEST_F(DatabaseViewPanesTest, ClickOnAProcedureShowsItInPlaceOfTheTable) {
    window_.DoView(FakeDatabase::ConnStr);
    ClickNode("_tbl_Orders");
    ClickNode("_sp_Plain");
    EXPECT_FALSE(TableFrame().Visible());
    EXPECT_TRUE(SprocFrame().Visible());
    EXPECT_EQ(TitleOf("SprocViewer"), "dbo.Plain, created 9 Feb 2024 00:00:00");
    EXPECT_EQ(Sproc().Text(), "create proc Plain as select 1");
    ClickNode("_tbl_Orders");
    EXPECT_TRUE(TableFrame().Visible());
    EXPECT_FALSE(SprocFrame().Visible());
}

TEST_F(DatabaseViewPanesTest, AProcedureIsAskedForWithoutItsVersion) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_TRUE(LogOfClick("_sp_usp_Report").contains("routine_name= 'usp_Report'"));
}

TEST_F(DatabaseViewPanesTest, ClicksOnRootAndGroupsDoNothing) {
    window_.DoView(FakeDatabase::ConnStr);
    const qsizetype sent = database_.script->Statements().size();
    ClickNode("Tables");
    ClickNode("Routines");
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                      Tree().visualRect(Tree().model()->index(0, 0)).center());
    EXPECT_EQ(database_.script->Statements().size(), sent);
    EXPECT_TRUE(TableFrame().Visible());
}

TEST_F(DatabaseViewPanesTest, FailingColumnsEndTheClickAndAreLogged) {
    database_.script->Answer(FakeDatabase::ColumnsOfOrders,
                             MemoryResult::Fails("no columns", -2147217865));
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_EQ(LogOfClick("_tbl_Orders"), "-2147217865: no columns\n");
    EXPECT_TRUE(window_.isVisible());
    EXPECT_EQ(TableEditFrame().Caption(), "Records:");
    EXPECT_EQ(boxes_.Seen().size(), 0U);
}

TEST_F(DatabaseViewPanesTest, FailingIndexesLeaveTheColumnsAndTheirScript) {
    database_.script->Answer("sp_helpindex 'Orders'", MemoryResult::Fails("no indexes", -5));
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_EQ(LogOfClick("_tbl_Orders"), "-5: no indexes\n");
    EXPECT_EQ(TitleOf("TableFieldViewer"), "Fields: Orders");
    EXPECT_EQ(TableEditFrame().Caption(), "Records:");
    Press("LaunchScript");
    EXPECT_TRUE(QueryText().startsWith("CREATE TABLE Orders ("));
}

TEST_F(DatabaseViewPanesTest, FailingRecordsAreToldInABox) {
    database_.script->Answer(FakeDatabase::RowsOfOrders, MemoryResult::Fails("no rows"));
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_EQ(LogOfClick("_tbl_Orders"), "");
    ASSERT_EQ(boxes_.Seen().size(), 1U);
    EXPECT_EQ(boxes_.Seen()[0].text, "Error: no rows");
    EXPECT_EQ(boxes_.Seen()[0].title, "Note");
}

// The columns of the failing query are there by then, and its rows are not.
TEST_F(DatabaseViewPanesTest, WhileABoxIsUpTheWindowIsBlockedAndCanBePainted) {
    database_.script->Answer(FakeDatabase::RowsOfOrders,
                             MemoryResult::Rows({"id"}, {{1}}).ThenFails("lost"));
    window_.DoView(FakeDatabase::ConnStr);
    bool blocked = false;
    boxes_.onShow = [&] {
        blocked = QApplication::activeModalWidget() != nullptr &&
                  QApplication::activeModalWidget() != &window_;
        EXPECT_FALSE(window_.grab().isNull());
    };
    EXPECT_EQ(LogOfClick("_tbl_Orders"), "");
    EXPECT_TRUE(blocked);
    ASSERT_EQ(boxes_.Seen().size(), 1U);
    EXPECT_EQ(boxes_.Seen()[0].text, "Error: lost");
    EXPECT_EQ(Records(), QStringList());
}

TEST_F(DatabaseViewPanesTest, AFailingProcedureIsLoggedAndTheNextClickWorks) {
    window_.DoView(FakeDatabase::ConnStr);
    EXPECT_NE(LogOfClick("_sp_a"), "");
    EXPECT_TRUE(SprocFrame().Visible());
    EXPECT_EQ(LogOfClick("_tbl_Orders"), "");
    EXPECT_EQ(Records().size(), 2);
}

TEST_F(DatabaseViewPanesTest, ScriptTakesTheTextOfWhatWasShownLast) {
    window_.DoView(FakeDatabase::ConnStr);
    ClickNode("_tbl_Orders");
    ClickNode("_sp_Plain");
    Press("LaunchScript");
    EXPECT_EQ(QueryText(), "create proc Plain as select 1");
    ClickNode("_tbl_Orders");
    Press("LaunchScript");
    EXPECT_EQ(QueryText(),
              "CREATE TABLE Orders (\r\n   id int,\r\n   note nvarchar(80) NULL\r\n)\r\n");
}

TEST_F(DatabaseViewPanesTest, FitsAScreenOf1440By900WithItsBars) {
    EXPECT_LE(window_.width(), 1440 - 2 * 10);
    EXPECT_LE(window_.height(), 900 - 80);
}

TEST_F(DatabaseViewPanesTest, ThePartsLieInsideTheWindowAndBesideOneAnother) {
    const char* const names[] = {"LaunchQuery",        "LaunchScript",     "DBObjectList",
                                 "TableFieldViewer",   "TableIndexViewer", "Label1",
                                 "TableEditCondition", "TableEditor"};
    for (const char* name : names) {
        EXPECT_TRUE(window_.rect().contains(Place(name))) << name;
        for (const char* other : names)
            EXPECT_TRUE(other == name || !Place(name).intersects(Place(other))) << name << other;
    }
    EXPECT_EQ(Place("SprocViewer"), Place("TableFrame"));
}

TEST_F(DatabaseViewPanesTest, EdgesAreAligned) {
    EXPECT_EQ(Place("DBObjectList").bottom(), Place("TableEditFrame").bottom());
    EXPECT_EQ(Place("DBObjectList").left(), Place("LaunchQuery").left());
    EXPECT_EQ(Place("LaunchQuery").top(), Place("TableFieldViewer").top());
    EXPECT_EQ(Place("TableFieldViewer").left(), Place("TableEditFrame").left());
    EXPECT_EQ(Place("TableIndexViewer").right(), Place("TableEditFrame").right());
    EXPECT_EQ(Place("TableEditCondition").right(), Place("TableEditor").right());
    EXPECT_EQ(Place("Label1").left(), Place("TableEditor").left());
}

// Eight columns of 1400 twips, beside the row marks and the scroll bar.
TEST_F(DatabaseViewPanesTest, TheRecordsHaveRoomForEightColumns) {
    const auto& grid = PartNamed<KelEditGrid>("Editor");
    EXPECT_GE(grid.Width(), GridGeometry::LeftMargin + 8 * 1400 + 300);
}

TEST_F(DatabaseViewPanesTest, TabLeadsFromTheTreeThroughThePanesAndBack) {
    window_.DoView(FakeDatabase::ConnStr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    EXPECT_TRUE(Tree().hasFocus());
    QStringList met;
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget* at = QApplication::focusWidget();
        for (const char* name : {"TableFieldViewer", "TableIndexViewer", "TableEditCondition",
                                 "TableEditor", "LaunchQuery", "LaunchScript", "DBObjectList"}) {
            const QWidget& part = PartNamed<QWidget>(name);
            if (at == &part || part.isAncestorOf(at)) met += QLatin1String(name);
        }
    }
    EXPECT_EQ(met, (QStringList{"TableFieldViewer", "TableIndexViewer", "TableEditCondition",
                                "TableEditor", "LaunchQuery", "LaunchScript", "DBObjectList"}));
}

}  // namespace
}  // namespace quarv
