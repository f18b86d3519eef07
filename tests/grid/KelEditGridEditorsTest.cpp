// The grid's editors and keys under real events.
#include "KelEditGridFixture.h"
#include "controls/RButton.h"
#include "controls/RCheckbox.h"
#include "grid/HBigScroller.h"
#include "platform/forms/ComboBox.h"
#include "support/BoxWatcher.h"

namespace quarv::test {
namespace {

class KelEditGridEditorsTest : public KelEditGridFixture {};

TEST_F(KelEditGridEditorsTest, EnterAndEscapeReachTheEditing) {
    const RowListRef rows = PlainRows(2);
    Fill(rows);
    Click(0, 0);
    Type("a");
    Key(Qt::Key_Return);
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"a");
    EXPECT_EQ(grid.State().currentColumn, 2);
    Type("b");
    Key(Qt::Key_Escape);
    EXPECT_EQ(Find<forms::TextBox>(u"Editor").Text(), u"");
    Key(Qt::Key_Enter);
    EXPECT_EQ(grid.State().currentColumn, 3);
    Key(Qt::Key_Return);
    EXPECT_EQ(grid.State().currentPosition, 2);
    EXPECT_EQ(grid.State().currentColumn, 1);
}

TEST_F(KelEditGridEditorsTest, TabWalksTheCellsAndLeavesAtTheEnd) {
    Fill(PlainRows(1), ColumnsOf({1500, 1500}));
    Click(0, 0);
    Type("a");
    Key(Qt::Key_Tab);
    EXPECT_EQ(grid.State().currentColumn, 2);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid.State().currentColumn, 1);
    Key(Qt::Key_Tab);
    Type("z");
    Key(Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(after));
    EXPECT_EQ(grid.State().currentColumn, 0);
    EXPECT_EQ(RowAt(grid.RowList(), 1).values[2].Text(), u"z");
}

TEST_F(KelEditGridEditorsTest, ShiftTabLeavesAtTheBeginning) {
    Fill(PlainRows(2));
    Click(0, 0);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(HasFocus(before));
    EXPECT_EQ(grid.ShownEditor(), nullptr);
}

TEST_F(KelEditGridEditorsTest, TheKeyboardComesInAndPassesBy) {
    Fill(PlainRows(2));
    before.SetFocus();
    Key(Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(Find<forms::TextBox>(u"FocusTaker")));
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.State().currentPosition, 1);
    EXPECT_EQ(grid.State().currentColumn, 1);
    grid.CommitAnyChanges();
    Key(Qt::Key_Return);
    EXPECT_EQ(grid.State().currentColumn, 1);
    grid.CommitAnyChanges();
    Type("q");
    EXPECT_EQ(Find<forms::TextBox>(u"FocusTaker").Text(), u"");
    Key(Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(after));
}

TEST_F(KelEditGridEditorsTest, ArrowsAndPagesWalkTheRows) {
    Fill(PlainRows(40));
    const qint16 page = grid.State().rowsThatFit;
    Click(0, 1);
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.State().currentPosition, 2);
    EXPECT_EQ(grid.State().currentColumn, 2);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(grid.State().currentPosition, 2 + page);
    Key(Qt::Key_PageUp);
    Key(Qt::Key_Up);
    EXPECT_EQ(grid.State().currentPosition, 1);
}

TEST_F(KelEditGridEditorsTest, TheKeyboardBringsColumnsIntoView) {
    Fill(PlainRows(1), ColumnsOf({3000, 3000, 3000}));
    Click(0, 0);
    Key(Qt::Key_Return);
    Key(Qt::Key_Return);
    auto& editor = Find<forms::TextBox>(u"Editor");
    const qint32 offset = grid.State().horizontalOffset;
    EXPECT_EQ(offset, 1500);  // 9000 less the control's width: the end of the scroller
    EXPECT_EQ(Find<HBigScroller>(u"HScr").Value(), offset);
    EXPECT_EQ(editor.Left(), 300 + 6000 - offset);
    Key(Qt::Key_Return);
    EXPECT_EQ(grid.State().horizontalOffset, 1500);
    Click(0, 0);
    EXPECT_EQ(grid.State().horizontalOffset, 1500);
}

TEST_F(KelEditGridEditorsTest, AListCellOffersItsChoices) {
    const RowListRef rows = PlainRows(1);
    const ColumnListRef columns = ColumnsOf({1500, 1500});
    columns->Items(1)->ColType = 1;
    columns->Items(1)->Choices = std::make_shared<StringList>();
    columns->Items(1)->Choices->Add(QStringLiteral("red"));
    columns->Items(1)->Choices->Add(QStringLiteral("green"));
    RowAt(rows, 1).values[1] = Value(1);
    Fill(rows, columns);
    Click(0, 0);
    auto& combo = Find<forms::ComboBox>(u"Combo");
    EXPECT_TRUE(combo.isVisible());
    EXPECT_EQ(combo.ListCount(), 2);
    EXPECT_EQ(combo.Text(), u"red");
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.State().currentPosition, 1);
    Key(Qt::Key_Return);
    EXPECT_EQ(RowAt(rows, 1).values[1].ToInteger(), 2);
    EXPECT_EQ(grid.State().currentColumn, 2);
}

TEST_F(KelEditGridEditorsTest, ACheckCellTogglesBySpace) {
    const RowListRef rows = PlainRows(1);
    const ColumnListRef columns = ColumnsOf({1500, 1500});
    columns->Items(1)->ColType = 3;
    Fill(rows, columns);
    Click(0, 0);
    auto& check = Find<RCheckbox>(u"Check");
    EXPECT_TRUE(check.isVisible());
    EXPECT_TRUE(HasFocus(check));
    Key(Qt::Key_Space);
    EXPECT_TRUE(check.Checked());
    Key(Qt::Key_Tab);
    EXPECT_TRUE(RowAt(rows, 1).values[1].ToBoolean());
}

TEST_F(KelEditGridEditorsTest, ACustomCellHasAButtonBesideItsText) {
    const ColumnListRef columns = ColumnsOf({1500});
    columns->Items(1)->ColType = 5;
    Fill(PlainRows(1), columns);
    int asked = 0;
    QObject::connect(&grid, &KelEditGrid::CustomColumnElipsis, [&asked](RowRef& row, ColumnRef&) {
        ++asked;
        row->SetColumnValue(1, Value(u"set"));
    });
    Click(0, 0);
    auto& button = Find<RButton>(u"Elipsis");
    auto& editor = Find<forms::TextBox>(u"Editor");
    const double side = grid.Geometry().RowHeight();
    EXPECT_EQ(button.Width(), side);
    EXPECT_EQ(button.Height(), side);
    EXPECT_EQ(editor.Width(), 1500 - side);
    EXPECT_EQ(button.Left(), editor.Left() + editor.Width());
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(editor.Text(), u"set");
    Key(Qt::Key_F4);
    EXPECT_EQ(asked, 2);
}

TEST_F(KelEditGridEditorsTest, AMaximumLengthKeepsMoreFromBeingTypedAndCutsNothing) {
    const RowListRef rows = PlainRows(2);
    RowAt(rows, 1).values[1] = Value(u"longer");
    const ColumnListRef columns = ColumnsOf({1500});
    columns->Items(1)->MaxLength = 3;
    Fill(rows, columns);
    Click(0, 0);
    grid.CommitAnyChanges();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"longer");
    Click(1, 0);
    Type("abcdef");
    grid.CommitAnyChanges();
    EXPECT_EQ(RowAt(rows, 2).values[1].Text(), u"abc");
}

TEST_F(KelEditGridEditorsTest, WithoutAMaximumLengthLongTextIsKept) {
    const RowListRef rows = PlainRows(1);
    const QString text = QString(100'000, u'x') + QStringLiteral("\r\n\ttail");
    RowAt(rows, 1).values[1] = Value(text);
    Fill(rows);
    Click(0, 0);
    grid.CommitAnyChanges();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), text);
}

TEST_F(KelEditGridEditorsTest, AColumnOfUnknownKindShowsBoom) {
    const ColumnListRef columns = ColumnsOf({1500});
    columns->Items(1)->ColType = 2;
    Fill(PlainRows(1), columns);
    BoxWatcher boxes;
    Click(0, 0);
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen()[0].text, u"boom");
    EXPECT_EQ(grid.ShownEditor(), nullptr);
}

TEST_F(KelEditGridEditorsTest, WhatTheHostPutsInIsNotCutByTheMaximumLength) {
    const RowListRef rows = PlainRows(1);
    const ColumnListRef columns = ColumnsOf({1500});
    columns->Items(1)->ColType = 5;
    columns->Items(1)->MaxLength = 3;
    Fill(rows, columns);
    QObject::connect(&grid, &KelEditGrid::CustomColumnElipsis, [](RowRef& row, ColumnRef&) {
        row->SetColumnValue(1, Value(u"longer than three"));
    });
    Click(0, 0);
    Key(Qt::Key_F4);
    EXPECT_EQ(Find<forms::TextBox>(u"Editor").Text(), u"longer than three");
    grid.CommitAnyChanges();
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"longer than three");
}

TEST_F(KelEditGridEditorsTest, OfAVeryLongTextTheBeginningIsEdited) {
    const RowListRef rows = PlainRows(1);
    const QString text(5000000, u'x');
    RowAt(rows, 1).values[1] = text;
    Fill(rows);
    Click(0, 0);
    EXPECT_TRUE(Find<forms::TextBox>(u"Editor").Text() ==
                QString(65536, u'x') + QString::fromUtf8("… [4934464 more]"));
    Key(Qt::Key_Tab);
    EXPECT_TRUE(RowAt(rows, 1).values[1].Text() == text);
    Click(0, 0);
    Key(Qt::Key_Home);
    Type("a");
    Key(Qt::Key_Tab);
    EXPECT_TRUE(RowAt(rows, 1).values[1].Text() == u'a' + text);
    // It opens with all of it selected.
    Click(0, 0);
    Type("b");
    Key(Qt::Key_Tab);
    EXPECT_EQ(RowAt(rows, 1).values[1].Text(), u"b");
}

TEST_F(KelEditGridEditorsTest, TabLeavesPastTheScrollBars) {
    Fill(PlainRows(40), ColumnsOf({6000, 6000}));
    Click(0, 0);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(HasFocus(before));
    Key(Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(Find<forms::TextBox>(u"FocusTaker")));
    Key(Qt::Key_Tab);
    EXPECT_TRUE(HasFocus(after));
}

TEST_F(KelEditGridEditorsTest, AnOpenEditorIsCutAnewWhenTheGridShrinks) {
    Fill(PlainRows(2), ColumnsOf({6000}));
    Click(0, 0);
    const QWidget& editor = *grid.ShownEditor();
    EXPECT_EQ(editor.mask().boundingRect().width(), 399);
    grid.Move(0, 0, 3000, 3000);
    EXPECT_EQ(editor.mask().boundingRect().width(), 180);
}

}  // namespace
}  // namespace quarv::test
