// KelEditGridFixture: a grid on a form between two text boxes, under real events.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>

#include "GridFakes.h"
#include "grid/KelEditGrid.h"
#include "platform/forms/Form.h"
#include "platform/forms/TextBox.h"

namespace quarv::test {

class KelEditGridFixture : public ::testing::Test {
  protected:
    KelEditGridFixture() {
        form.Move(0, 0, 9000, 6000);
        before.Move(0, 5000, 1500, 300);
        grid.Move(0, 0, 7500, 3000);
        after.Move(3000, 5000, 1500, 300);
        form.Show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
    }

    void Fill(const RowListRef& rows,
              const ColumnListRef& columns = ColumnsOf({1500, 1500, 1500})) {
        grid.SetColList(columns);
        grid.SetRowList(rows);
    }
    // The pixel in the middle of a line, counted from 0, over a column's width of 100.
    QPoint At(int line, int column) const {
        const int row = grid.Geometry().RowHeight() / 15;
        return {20 + 100 * column + 50, grid.Geometry().HeaderHeight() / 15 + line * row + row / 2};
    }
    void Click(int line, int column) {
        QTest::mouseClick(&grid, Qt::LeftButton, Qt::NoModifier, At(line, column));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void Wheel(const QPoint& angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWheelEvent event(QPointF(50, 50), grid.mapToGlobal(QPointF(50, 50)), QPoint(), angle,
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&grid, &event);
    }
    template <typename Part>
    Part& Find(const char16_t* name) {
        return *grid.findChild<Part*>(QString::fromUtf16(name));
    }
    bool HasFocus(const QWidget& box) const {
        return QApplication::focusWidget() == &box ||
               QApplication::focusWidget() == box.focusProxy();
    }

    forms::Form form{QStringLiteral("Form")};
    forms::TextBox before{&form, QStringLiteral("Before")};
    KelEditGrid grid{&form, QStringLiteral("Grid")};
    forms::TextBox after{&form, QStringLiteral("After")};
};

}  // namespace quarv::test
