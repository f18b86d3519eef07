// What the grid paints, by named pixels: header, lines, marker band, cells of all kinds.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QWheelEvent>

#include "GridFakes.h"
#include "grid/KelEditGrid.h"
#include "platform/drawing/Picture.h"
#include "platform/forms/Form.h"
#include "support/PaintCounter.h"

namespace quarv::test {
namespace {

class KelEditGridPaintTest : public ::testing::Test {
  protected:
    KelEditGridPaintTest() {
        QPalette palette = form.palette();
        palette.setColor(QPalette::Button, Qt::cyan);
        palette.setColor(QPalette::Base, Qt::white);
        palette.setColor(QPalette::Text, Qt::black);
        palette.setColor(QPalette::ButtonText, Qt::darkBlue);
        palette.setColor(QPalette::Mid, Qt::red);
        palette.setColor(QPalette::Light, Qt::green);
        form.setPalette(palette);
        form.Move(0, 0, 9000, 6000);
        grid.Move(0, 0, 7500, 4500);
        form.Show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        header = grid.Geometry().HeaderHeight() / 15;
        row = grid.Geometry().RowHeight() / 15;
    }

    void Fill(const RowListRef& rows, const ColumnListRef& columns = ColumnsOf({1500, 1500})) {
        grid.SetColList(columns);
        grid.SetRowList(rows);
    }
    QImage Picture() { return grid.grab().toImage().convertToFormat(QImage::Format_RGB32); }
    // Pixels of the colour within a rectangle.
    static int Count(const QImage& image, const QRect& area, QColor color) {
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                if (image.pixelColor(x, y) == color) ++count;
        return count;
    }
    // Without the lines at its right and bottom.
    QRect Cell(int line, int column) const {
        return {20 + 100 * column, header + line * row, 99, row - 1};
    }
    bool IsBlank(const QImage& image, int line, int column) const {
        const QRect cell = Cell(line, column);
        return Count(image, cell, Qt::white) == cell.width() * cell.height();
    }

    forms::Form form{QStringLiteral("Form")};
    KelEditGrid grid{&form, QStringLiteral("Grid")};
    int header = 0;  // pixels
    int row = 0;
};

TEST_F(KelEditGridPaintTest, DrawsHeaderMarkersLinesAndGround) {
    Fill(PlainRows(3));
    const QImage image = Picture();
    EXPECT_EQ(image.pixelColor(90, 2), Qt::cyan);
    EXPECT_EQ(image.pixelColor(400, 2), Qt::cyan);
    EXPECT_EQ(image.pixelColor(400, header - 1), Qt::red);
    EXPECT_EQ(image.pixelColor(20, 2), Qt::green);
    EXPECT_EQ(image.pixelColor(119, 2), Qt::red);
    EXPECT_EQ(image.pixelColor(5, header + 2), Qt::cyan);
    EXPECT_EQ(image.pixelColor(19, header + 2), Qt::red);
    EXPECT_EQ(image.pixelColor(119, header + 2), Qt::red);
    EXPECT_EQ(image.pixelColor(219, header + 2), Qt::red);
    EXPECT_EQ(image.pixelColor(60, header + row - 1), Qt::red);
    EXPECT_EQ(image.pixelColor(60, header + row), Qt::white);
    EXPECT_EQ(image.pixelColor(119, header + 3 * row - 1), Qt::red);
    EXPECT_EQ(image.pixelColor(119, header + 3 * row + 1), Qt::white);
    EXPECT_EQ(image.pixelColor(300, header + 5), Qt::white);
    EXPECT_GT(Count(image, QRect(20, 1, 60, header - 3), Qt::darkBlue), 0);
}

TEST_F(KelEditGridPaintTest, DrawsTheTextsOfTheVisibleRows) {
    const RowListRef rows = RowsOf({0, 1, 0});
    RowAt(rows, 2).values[1] = Value(u"deleted");
    RowAt(rows, 3).values[2] = Value(u"shown");
    Fill(rows);
    const QImage image = Picture();
    EXPECT_TRUE(IsBlank(image, 0, 0));
    EXPECT_TRUE(IsBlank(image, 1, 0));
    EXPECT_FALSE(IsBlank(image, 1, 1));
    EXPECT_EQ(image.pixelColor(60, header + 2 * row + 3), Qt::white);
    EXPECT_EQ(Count(image, QRect(0, header + 2 * row, 300, 20), Qt::red), 0);
}

TEST_F(KelEditGridPaintTest, AnEditorLiesOverItsCell) {
    const RowListRef rows = PlainRows(2);
    RowAt(rows, 1).values[1] = Value(u"text");
    Fill(rows);
    EXPECT_FALSE(IsBlank(Picture(), 0, 0));
    QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, QPoint(60, header + 5));
    ASSERT_NE(grid.ShownEditor(), nullptr);
    EXPECT_EQ(grid.ShownEditor()->geometry(), QRect(20, header, 100, row));
    const QImage image = Picture();
    EXPECT_EQ(image.pixelColor(119, header + 2), Qt::red);
    EXPECT_EQ(image.pixelColor(60, header + row - 1), Qt::red);
}

TEST_F(KelEditGridPaintTest, MarksTheCurrentRow) {
    Fill(PlainRows(2));
    const QRect band(1, header + row + 1, 17, row - 3);
    const int plain = Count(Picture(), band, Qt::cyan);
    EXPECT_EQ(plain, band.width() * band.height());
    QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, QPoint(5, header + row + 5));
    EXPECT_LT(Count(Picture(), band, Qt::cyan), plain);
    EXPECT_EQ(Count(Picture(), band.translated(0, -row), Qt::cyan), plain);
}

TEST_F(KelEditGridPaintTest, LongTextStaysInItsCell) {
    const RowListRef rows = PlainRows(1);
    RowAt(rows, 1).values[1] = Value(QString(100'000, u'W'));
    Fill(rows);
    const QImage image = Picture();
    EXPECT_FALSE(IsBlank(image, 0, 0));
    EXPECT_TRUE(IsBlank(image, 0, 1));
}

TEST_F(KelEditGridPaintTest, ACheckCellShowsItsTick) {
    const RowListRef rows = PlainRows(2);
    RowAt(rows, 1).values[1] = Value(true);
    RowAt(rows, 2).values[1] = Value(false);
    const ColumnListRef columns = ColumnsOf({1500, 1500});
    columns->Items(1)->ColType = 3;
    Fill(rows, columns);
    const QImage image = Picture();
    const QRect ticked = Cell(0, 0);
    const int without = Count(image, ticked.translated(0, row), Qt::white);
    EXPECT_LT(without, ticked.width() * ticked.height());
    EXPECT_LT(Count(image, ticked, Qt::white), without);
}

TEST_F(KelEditGridPaintTest, ScrolledColumnsGoBehindTheMarkerBand) {
    const RowListRef rows = PlainRows(1);
    RowAt(rows, 1).values[1] = Value(QString(200, u'W'));
    Fill(rows, ColumnsOf({9000, 1500}));
    QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, QPoint(5, header + 5));
    const QRect band(1, header + 1, 4, row - 3);
    QWheelEvent wheel(QPointF(50, 50), grid.mapToGlobal(QPointF(50, 50)), QPoint(), QPoint(-120, 0),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&grid, &wheel);
    EXPECT_EQ(grid.State().horizontalOffset, 900);
    const QImage image = Picture();
    EXPECT_EQ(Count(image, band, Qt::cyan), band.width() * band.height());
    EXPECT_EQ(Count(image, QRect(0, 0, 19, header - 2), Qt::cyan), 19 * (header - 2));
}

TEST_F(KelEditGridPaintTest, ARowThatRaisesLeavesItsCellBlankAndTheOthersPainted) {
    const RowListRef rows = PlainRows(3);
    RowAt(rows, 1).values[1] = Value(u"first");
    RowAt(rows, 2).failing = true;
    RowAt(rows, 3).values[2] = Value(u"third");
    Fill(rows);
    testing::internal::CaptureStderr();
    const QImage image = Picture();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("11: "), std::string::npos);
    EXPECT_FALSE(IsBlank(image, 0, 0));
    EXPECT_TRUE(IsBlank(image, 1, 0));
    EXPECT_FALSE(IsBlank(image, 2, 1));
    RowAt(rows, 2).failing = false;
}

TEST_F(KelEditGridPaintTest, RowsThatAreGoneAreNotPaintedFromFreedMemory) {
    auto rows = PlainRows(3);
    RowAt(rows, 1).values[1] = Value(u"first");
    Fill(rows);
    rows->Clear();
    EXPECT_FALSE(IsBlank(Picture(), 0, 0));
    grid.Redraw();
    EXPECT_TRUE(grid.State().lines.empty());
    Picture();
}

TEST_F(KelEditGridPaintTest, APaintedPictureStaysUntilTheNextRedraw) {
    Fill(PlainRows(1));
    QImage blue(4, 4, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    grid.PaintPicture(std::make_shared<drawing::Picture>(blue), 3000, 3000);
    EXPECT_EQ(Picture().pixelColor(201, 201), Qt::blue);
    EXPECT_EQ(Picture().pixelColor(205, 201), Qt::white);
    grid.Redraw();
    EXPECT_EQ(Picture().pixelColor(201, 201), Qt::white);
}

TEST_F(KelEditGridPaintTest, WhatLiesBehindTheGridIsNotPainted) {
    Fill(PlainRows(3));
    PaintCounter gridPaints(grid);
    PaintCounter formPaints(form);
    gridPaints.Taken();
    formPaints.Taken();
    grid.Redraw();
    EXPECT_EQ(gridPaints.Taken(), 1);
    EXPECT_EQ(formPaints.Taken(), 0);
}

TEST_F(KelEditGridPaintTest, OnlyTheAreaThatIsAskedForIsRead) {
    class Counting : public FakeRow {
      public:
        mutable int reads = 0;
        Value ColumnValue(qint16) const override {
            ++reads;
            return {};
        }
    };
    const RowListRef rows = PlainRows(1);
    const auto row2 = std::make_shared<Counting>();
    rows->Add(row2);
    Fill(rows, ColumnsOf({1500, 1500, 9000, 1500}));
    QCoreApplication::processEvents();
    row2->reads = 0;
    grid.repaint(QRect(130, header + row + 2, 10, 5));
    EXPECT_EQ(row2->reads, 1);
    row2->reads = 0;
    grid.repaint(QRect(130, header + 2, 10, 5));
    EXPECT_EQ(row2->reads, 0);
    grid.repaint();
    EXPECT_EQ(row2->reads, 3);
}

}  // namespace
}  // namespace quarv::test
