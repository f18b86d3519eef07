#include "platform/forms/DataGrid.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

#include "DataGridFixture.h"
#include "base/LateBinding.h"
#include "support/ListeningTools.h"

namespace quarv::forms {
namespace {

class DataGridTest : public DataGridFixture {};

TEST_F(DataGridTest, IsAControl) {
    EXPECT_EQ(grid.TypeName(), u"DataGrid"_qs);
    EXPECT_EQ(grid.accessibleName(), u"Results"_qs);
    EXPECT_EQ(grid.property("Width").toDouble(), 9000);
    SetByName(&grid, u"Tag"_qs, Value(u"t"));
    EXPECT_EQ(grid.Tag(), u"t"_qs);
}

TEST_F(DataGridTest, ShowsNothingWithoutASource) {
    EXPECT_EQ(grid.DataSource(), nullptr);
    EXPECT_FALSE(grid.horizontalHeader()->isVisible());
    EXPECT_FALSE(grid.verticalHeader()->isVisible());
    const QImage picture = form.grab().toImage();
    EXPECT_EQ(picture.pixelColor(300, 200), grid.palette().color(QPalette::Base));
    Press(Qt::Key_Down);
    Press(Qt::Key_End, Qt::ControlModifier);
    Press(Qt::Key_A, Qt::ControlModifier);
    grid.SetDataSource(&source);
    grid.SetDataSource(nullptr);
    EXPECT_EQ(grid.model()->columnCount(), 0);
    EXPECT_FALSE(grid.horizontalHeader()->isVisible());
    EXPECT_EQ(form.grab().toImage().pixelColor(300, 200), grid.palette().color(QPalette::Base));
}

TEST_F(DataGridTest, AResultWithoutColumnsIsAnEmptyFrame) {
    source.Refresh({}, 0);
    grid.SetDataSource(&source);
    EXPECT_EQ(grid.model()->rowCount(), 0);
    EXPECT_FALSE(grid.horizontalHeader()->isVisible());
    form.grab();
}

TEST_F(DataGridTest, AnEmptyResultShowsItsColumns) {
    source.Refresh({u"a"_qs, u"b"_qs}, 0);
    grid.SetDataSource(&source);
    EXPECT_TRUE(grid.horizontalHeader()->isVisible());
    EXPECT_EQ(grid.model()->columnCount(), 2);
    EXPECT_EQ(grid.model()->rowCount(), 0);
    EXPECT_TRUE(source.AtEnd());
    EXPECT_FALSE(grid.currentIndex().isValid());
    form.grab();
}

TEST_F(DataGridTest, ANewResultReplacesTheOld) {
    grid.SetDataSource(&source);
    Press(Qt::Key_End, Qt::ControlModifier);
    grid.setColumnWidth(0, 290);
    grid.setColumnWidth(1, 290);
    grid.setColumnWidth(2, 290);
    Settle();
    grid.horizontalScrollBar()->setValue(100);
    source.Refresh({u"x"_qs, u"y"_qs, u"z"_qs, u"w"_qs}, 5'000);
    source.cell = [](qint64 row, int) { return Value(row + 7); };
    grid.SetDataSource(&source);
    EXPECT_EQ(grid.model()->columnCount(), 4);
    EXPECT_EQ(Heading(3), u"w"_qs);
    EXPECT_EQ(Cell(0, 0), u"7"_qs);
    EXPECT_LT(grid.model()->rowCount(), 200);
    EXPECT_EQ(Bar().value(), 0);
    EXPECT_EQ(grid.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(grid.columnWidth(0), 40);
    EXPECT_FALSE(grid.selectionModel()->hasSelection());
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(0, 0));
}

TEST_F(DataGridTest, ColumnNamesMayBeEmptyEqualOrLookLikeMarkup) {
    source.Refresh({u"a"_qs, u""_qs, u"a"_qs, u"<b>x</b>\ny"_qs}, 1);
    grid.SetDataSource(&source);
    EXPECT_EQ(Heading(0), u"a"_qs);
    EXPECT_EQ(Heading(1), u"(No column name)"_qs);
    EXPECT_EQ(Heading(2), u"a"_qs);
    EXPECT_EQ(Heading(3), u"<b>x</b> y"_qs);
    const auto tip = [this](int column) {
        return grid.model()->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString();
    };
    EXPECT_EQ(tip(1), u""_qs);
    EXPECT_TRUE(tip(3).contains(u"&lt;b&gt;x&lt;/b&gt;\ny"_qs));
    EXPECT_TRUE(Qt::mightBeRichText(tip(0)));
}

TEST_F(DataGridTest, RowsAreNumberedFromOne) {
    grid.SetDataSource(&source);
    EXPECT_EQ(grid.model()->headerData(0, Qt::Vertical).toString(), u"1"_qs);
    EXPECT_EQ(grid.model()->headerData(9, Qt::Vertical).toString(), u"10"_qs);
    EXPECT_FALSE(grid.model()->headerData(5'000, Qt::Vertical).isValid());
}

TEST_F(DataGridTest, ColumnsAreAsWideAsTheirFirstRows) {
    source.Refresh({u"a"_qs, u"b"_qs, u"a heading of some words"_qs, u"c"_qs}, 30);
    source.cell = [](qint64, int column) {
        return column == 3 ? Value(QString(100'000, u'w')) : Value(QString(5 + 9 * column, u'w'));
    };
    grid.SetDataSource(&source);
    const QFontMetrics metrics = grid.fontMetrics();
    EXPECT_GE(grid.columnWidth(0), 40);
    EXPECT_GT(grid.columnWidth(1), metrics.horizontalAdvance(QString(14, u'w')));
    EXPECT_LT(grid.columnWidth(1), metrics.horizontalAdvance(QString(16, u'w')));
    EXPECT_GT(grid.columnWidth(2), metrics.horizontalAdvance(u"a heading of some words"_qs));
    EXPECT_EQ(grid.columnWidth(3), 300);
    EXPECT_EQ(grid.horizontalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
}

TEST_F(DataGridTest, FourThousandColumnsAskForFewCells) {
    QStringList fields;
    for (int i = 0; i < 4096; ++i) fields.append(QStringLiteral("Column %1").arg(i));
    source.Refresh(fields, 1000);
    int asked = 0;
    source.cell = [&asked](qint64, int column) {
        ++asked;
        return Value(column);
    };
    grid.SetDataSource(&source);
    form.grab();
    EXPECT_EQ(grid.model()->columnCount(), 4096);
    EXPECT_LE(asked, 12'000);
    Press(Qt::Key_End);
    EXPECT_EQ(grid.currentIndex().column(), 4095);
    EXPECT_TRUE(grid.viewport()->rect().contains(CentreOf(0, 4095)));
}

TEST_F(DataGridTest, PaintingAsksForNoMoreThanIsSeen) {
    grid.SetDataSource(&source);
    Settle();
    int asked = 0;
    source.cell = [&asked](qint64 row, int) {
        ++asked;
        return Value(row);
    };
    form.grab();
    EXPECT_GT(asked, 0);
    EXPECT_LE(asked, 3 * Screen());
}

TEST_F(DataGridTest, AToolTipIsPlainText) {
    source.cell = [](qint64 row, int) {
        return row == 0 ? Value(u"<b>bold</b>\r\nnext <img src='/etc/passwd'>") : Value::Null();
    };
    grid.SetDataSource(&source);
    const auto hover = [this](int row) {
        const QPoint at = CentreOf(row, 1);
        QHelpEvent help(QEvent::ToolTip, at, grid.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(grid.viewport(), &help);
        return QToolTip::text();
    };
    const QString tip = hover(0);
    EXPECT_TRUE(tip.contains(u"&lt;b&gt;bold&lt;/b&gt;\nnext &lt;img"_qs)) << tip.toStdString();
    EXPECT_TRUE(Qt::mightBeRichText(tip));
    EXPECT_TRUE(hover(1).contains(u"NULL"_qs));
    QToolTip::hideText();
}

TEST_F(DataGridTest, ACellThatTheSourceNoLongerHasIsEmpty) {
    grid.SetDataSource(&source);
    source.Refresh({u"a"_qs}, 1);
    EXPECT_EQ(Cell(3, 2), u""_qs);
    form.grab();
    grid.SetDataSource(&source);
}

TEST_F(DataGridTest, AssistiveToolsReadTheCellsTexts) {
    source.cell = [](qint64 row, int) { return row == 0 ? Value(u"Ada") : Value::Null(); };
    grid.SetDataSource(&source);
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&grid);
    ASSERT_NE(table, nullptr);
    ASSERT_NE(table->tableInterface(), nullptr);
    EXPECT_EQ(table->text(QAccessible::Name), u"Results"_qs);
    EXPECT_EQ(table->tableInterface()->cellAt(0, 1)->text(QAccessible::Name), u"Ada"_qs);
    EXPECT_EQ(table->tableInterface()->cellAt(1, 1)->text(QAccessible::Name), u"NULL"_qs);
    EXPECT_EQ(table->tableInterface()->columnDescription(1), u"Name"_qs);
}

TEST_F(DataGridTest, SelectingMillionsOfCellsTellsAssistiveToolsOfOne) {
    test::ListeningTools tools;
    tester.reset();
    source.Refresh({u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs}, 5'000'000);
    int asked = 0;
    source.cell = [&asked](qint64 row, int) {
        ++asked;
        return Value(row);
    };
    grid.SetDataSource(&source);
    asked = 0;
    tools.Forget();
    grid.selectAll();
    Settle();
    EXPECT_EQ(grid.model()->rowCount(), 5'000'000);
    EXPECT_EQ(tools.Told(QAccessible::SelectionAdd).size(), 1U);
    EXPECT_LT(asked, 1000);
    grid.clearSelection();
    EXPECT_EQ(tools.Told(QAccessible::SelectionRemove).size(), 1U);
}

}  // namespace
}  // namespace quarv::forms
