// The grid under mouse, wheel and bars, and where rows and handlers raise. Keys and editors are in
// KelEditGridEditorsTest, looks in KelEditGridPaintTest.
#include "grid/KelEditGrid.h"

#include <QDragMoveEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QToolTip>

#include "KelEditGridFixture.h"
#include "grid/HBigScroller.h"
#include "platform/forms/ScrollBar.h"

namespace quarv::test {
namespace {

class KelEditGridTest : public KelEditGridFixture {};

TEST_F(KelEditGridTest, AClickOpensTheCellAndTypingFillsIt) {
    const RowListRef rows = PlainRows(3);
    RowAt(rows, 2).values[2] = Value(u"old");
    Fill(rows);
    Click(1, 1);
    auto& editor = Find<forms::TextBox>(u"Editor");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_TRUE(HasFocus(editor));
    EXPECT_EQ(editor.Text(), u"old");
    EXPECT_EQ(editor.Left(), 1800);
    EXPECT_EQ(editor.Width(), 1500);
    Type("new");
    Click(0, 0);
    EXPECT_EQ(RowAt(rows, 2).values[2].Text(), u"new");
    EXPECT_EQ(grid.State().currentPosition, 1);
}

TEST_F(KelEditGridTest, TheWholeTextIsSelectedAtFirst) {
    const RowListRef rows = PlainRows(1);
    RowAt(rows, 1).values[1] = Value(u"replaced");
    Fill(rows);
    Click(0, 0);
    Type("x");
    grid.CommitAnyChanges();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_FALSE(Find<forms::TextBox>(u"Editor").isVisible());
}

TEST_F(KelEditGridTest, TheVerticalBarScrollsAndGivesTheKeyboardBack) {
    const RowListRef rows = PlainRows(40);
    Fill(rows);
    auto& bar = Find<forms::ScrollBar>(u"VScr");
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.Min(), 1);
    EXPECT_EQ(bar.Max(), 40);
    Click(0, 0);
    Type("x");
    bar.SetValue(7);
    EXPECT_EQ(grid.State().topRow, rows->Items(7));
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"x");
    EXPECT_EQ(grid.ShownEditor(), nullptr);
    bar.SetFocus();
    QTest::mouseMove(&grid, QPoint(60, 60));
    EXPECT_TRUE(HasFocus(Find<forms::TextBox>(u"FocusTaker")));
}

TEST_F(KelEditGridTest, SelectingFarAwayMovesTheBarQuietly) {
    Fill(PlainRows(40));
    Click(0, 0);
    Key(Qt::Key_PageDown);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(Find<forms::ScrollBar>(u"VScr").Value(), grid.State().topRow->VisibleIndex());
    EXPECT_EQ(grid.ShownEditor(), Find<forms::TextBox>(u"Editor").Widget());
}

TEST_F(KelEditGridTest, TheHorizontalScrollerMovesTheColumns) {
    Fill(PlainRows(2), ColumnsOf({6000, 6000}));
    auto& scroller = Find<HBigScroller>(u"HScr");
    EXPECT_TRUE(scroller.isVisible());
    EXPECT_EQ(scroller.Max(), 4500);
    EXPECT_EQ(scroller.Left(), 0);
    EXPECT_EQ(scroller.Top(), 3000 - scroller.Height());
    Click(0, 0);
    scroller.findChild<forms::ScrollBar*>()->SetValue(600);
    EXPECT_EQ(grid.State().horizontalOffset, 600);
    EXPECT_EQ(Find<forms::TextBox>(u"Editor").Left(), -300);
}

TEST_F(KelEditGridTest, TheWheelScrollsBothWays) {
    Fill(PlainRows(40), ColumnsOf({6000, 6000}));
    Wheel(QPoint(0, -120));
    EXPECT_EQ(grid.State().topRow->VisibleIndex(), 4);
    Wheel(QPoint(0, -40));
    EXPECT_EQ(grid.State().topRow->VisibleIndex(), 5);
    Wheel(QPoint(0, 1200));
    EXPECT_EQ(grid.State().topRow->VisibleIndex(), 1);
    Wheel(QPoint(0, -12000));
    EXPECT_EQ(grid.State().topRow->VisibleIndex(), 40);
    Wheel(QPoint(-120, 0));
    EXPECT_EQ(grid.State().horizontalOffset, 900);
    Wheel(QPoint(0, 120), Qt::ShiftModifier);
    EXPECT_EQ(grid.State().horizontalOffset, 0);
    Wheel(QPoint(-12000, 0));
    EXPECT_EQ(grid.State().horizontalOffset, 4500);
}

TEST_F(KelEditGridTest, TheWheelLeavesWhatFitsAlone) {
    Fill(PlainRows(2));
    Wheel(QPoint(0, -120));
    Wheel(QPoint(-120, 0));
    EXPECT_EQ(grid.State().topRow->VisibleIndex(), 1);
    EXPECT_EQ(grid.State().horizontalOffset, 0);
}

TEST_F(KelEditGridTest, WhatARowRaisesEndsTheEventAlone) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    RowAt(rows, 1).failing = true;
    testing::internal::CaptureStderr();
    Click(0, 0);
    form.repaint();
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("11: "), std::string::npos) << log;
    EXPECT_EQ(grid.ShownEditor(), nullptr);
    Click(1, 0);
    EXPECT_NE(grid.ShownEditor(), nullptr);
    RowAt(rows, 1).failing = false;
}

TEST_F(KelEditGridTest, WhatAHandlerRaisesEndsTheHandlerAlone) {
    Fill(PlainRows(2));
    QObject::connect(&grid, &KelEditGrid::ColumnChanged,
                     [](RowRef&, ColumnRef&) { throw RuntimeError(RuntimeError::TypeMismatch); });
    Click(0, 0);
    testing::internal::CaptureStderr();
    Click(1, 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("13: "), std::string::npos);
    EXPECT_EQ(grid.State().currentPosition, 2);
    EXPECT_NE(grid.ShownEditor(), nullptr);
}

TEST_F(KelEditGridTest, AHandlerMayReplaceTheListsInTheMiddle) {
    Fill(PlainRows(3));
    Click(0, 0);
    QObject::connect(&grid, &KelEditGrid::ColumnChanged, [this](RowRef&, ColumnRef&) {
        grid.SetColList(ColumnsOf({}));
        grid.SetRowList(PlainRows(0));
    });
    Click(1, 0);
    form.repaint();
    EXPECT_EQ(grid.State().currentRow == nullptr || grid.State().currentColumn == 0, true);
    EXPECT_EQ(grid.RowList()->Count(), 0);
    EXPECT_EQ(grid.ShownEditor(), nullptr);
}

TEST_F(KelEditGridTest, DragsArePassedOnUnchanged) {
    std::vector<const QEvent*> seen;
    QObject::connect(&grid, &KelEditGrid::OLEDragOver, [&seen](QDragMoveEvent* event) {
        seen.push_back(event);
        event->acceptProposedAction();
    });
    QObject::connect(&grid, &KelEditGrid::OLEDragDrop,
                     [&seen](QDropEvent* event) { seen.push_back(event); });
    QMimeData data;
    data.setText(QStringLiteral("x"));
    QDragEnterEvent enter(QPoint(40, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&grid, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDragMoveEvent move(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&grid, &move);
    EXPECT_TRUE(move.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&grid, &drop);
    EXPECT_FALSE(drop.isAccepted());
    EXPECT_EQ(seen, (std::vector<const QEvent*>{&enter, &move, &drop}));
}

TEST_F(KelEditGridTest, ResizingPlacesTheParts) {
    Fill(PlainRows(40), ColumnsOf({9000}));
    grid.Move(0, 0, 6000, 2400);
    const auto& bar = Find<forms::ScrollBar>(u"VScr");
    EXPECT_EQ(bar.Left(), 6000 - bar.Width());
    EXPECT_EQ(bar.Top(), grid.Geometry().HeaderHeight());
    const auto& scroller = Find<HBigScroller>(u"HScr");
    EXPECT_EQ(scroller.Top(), 2400 - scroller.Height());
    EXPECT_EQ(scroller.Width(), 6000 - bar.Width());
    EXPECT_EQ(bar.Height(), 2400 - grid.Geometry().HeaderHeight() - scroller.Height());
    EXPECT_EQ(Find<forms::TextBox>(u"FocusTaker").Top(), 2900);
}

TEST_F(KelEditGridTest, AnyControlSmallerThanItsPartsStaysWhole) {
    Fill(PlainRows(40), ColumnsOf({9000}));
    for (const double side : {0.0, 15.0, 100.0, 260.0}) {
        grid.Move(0, 0, side, side);
        form.repaint();
    }
    EXPECT_LE(grid.State().rowsThatFit, 0);
}

TEST_F(KelEditGridTest, ACutTextIsWholeInItsToolTip) {
    const RowListRef rows = PlainRows(2);
    RowAt(rows, 1).values[1] = Value(QString(60, u'W') + QStringLiteral("<b>\nend"));
    RowAt(rows, 2).values[1] = Value(u"fits");
    Fill(rows);
    const auto ask = [this](const QPoint& at) {
        QHelpEvent event(QEvent::ToolTip, at, grid.mapToGlobal(at));
        QApplication::sendEvent(&grid, &event);
    };
    ask(At(0, 0));
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("W&lt;b&gt;\nend")))
        << QToolTip::text().toStdString();
    ask(At(1, 0));
    EXPECT_FALSE(QToolTip::text().contains(QStringLiteral("fits")));
    QToolTip::hideText();
}

TEST_F(KelEditGridTest, RowsComeAndGoByTheHostsHandlers) {
    Fill(PlainRows(2));
    const auto row = std::make_shared<FakeRow>();
    RowRef gone;
    QObject::connect(&grid, &KelEditGrid::AddRow, [&row](RowRef& asked) { asked = row; });
    QObject::connect(&grid, &KelEditGrid::DeleteRow, [&gone](RowRef& asked) { gone = asked; });
    bool helper = false;
    EXPECT_EQ(grid.AddRowMode(helper), row);
    EXPECT_EQ(grid.RowList()->Count(), 3);
    grid.DeleteCurrentRow();
    EXPECT_EQ(gone, row);
    EXPECT_EQ(grid.RowList()->Count(), 2);
}

TEST_F(KelEditGridTest, ADragOfTheVerticalBarScrollsAsItGoes) {
    const RowListRef rows = PlainRows(40);
    Fill(rows);
    auto& bar = Find<forms::ScrollBar>(u"VScr");
    bar.setSliderDown(true);
    bar.setSliderPosition(9);
    Q_EMIT bar.Scroll();
    EXPECT_EQ(grid.State().topRow, rows->Items(9));
    bar.setSliderDown(false);
}

TEST_F(KelEditGridTest, ARowThatReplacesTheListsWhileItIsPaintedDoesNoHarm) {
    class Restless : public FakeRow {
      public:
        explicit Restless(KelEditGrid& owner) : grid(owner) {}
        KelEditGrid& grid;
        mutable bool done = false;
        Value ColumnValue(qint16) const override {
            if (!done) {
                done = true;
                grid.SetColList(ColumnsOf({1500}));
                grid.SetRowList(PlainRows(1));
            }
            return Value(u"text");
        }
    };
    const RowListRef rows = PlainRows(0);
    rows->Add(std::make_shared<Restless>(grid));
    rows->Add(std::make_shared<FakeRow>());
    Fill(rows);
    form.repaint();
    QCoreApplication::processEvents();
    EXPECT_EQ(grid.RowList()->Count(), 1);
    EXPECT_EQ(grid.State().columns->Count(), 1);
}

}  // namespace
}  // namespace quarv::test
