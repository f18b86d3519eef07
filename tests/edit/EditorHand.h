// EditorHand: reads what a table editor's pane shows, and works its grid as a hand does, by real
// events.
#pragma once

#include <gtest/gtest.h>

#include <QTest>

#include "edit/TableEdit.h"
#include "edit/TableEditGridRow.h"
#include "grid/KelEditGrid.h"

namespace quarv::test {

class EditorHand {
  public:
    // The pane outlives this, and need not be made yet.
    explicit EditorHand(const TableEdit& pane) : handled_(pane) {}

    KelEditGrid& Grid() { return *handled_.findChild<KelEditGrid*>(QStringLiteral("Editor")); }
    // 1-based.
    TableEditGridRow& Row(qint16 position) {
        return dynamic_cast<TableEditGridRow&>(*Grid().RowList()->Items(position));
    }
    // The columns as "name width kind".
    QStringList Columns() {
        QStringList texts;
        const auto& columns = *Grid().State().columns;
        for (qint16 i = 1; i <= columns.Count(); ++i) {
            const KelEditGridColumn& column = *columns.Items(i);
            texts +=
                QStringLiteral("%1 %2 %3").arg(column.Name).arg(column.Width).arg(column.ColType);
        }
        return texts;
    }
    // Their names, joined by "|".
    QString Heading() {
        QStringList names;
        const auto& columns = *Grid().State().columns;
        for (qint16 i = 1; i <= columns.Count(); ++i) names += columns.Items(i)->Name;
        return names.join(u'|');
    }
    // The rows' cells, joined by "|".
    QStringList Cells() {
        QStringList texts;
        for (qint16 i = 1; i <= Grid().RowList()->Count(); ++i) {
            QStringList cells;
            for (qint16 c = 1; c <= Grid().State().columns->Count(); ++c)
                cells += Row(i).ColumnValue(c).ToText();
            texts += cells.join(u'|');
        }
        return texts;
    }

    // Opens the cell by a click, counted from 1; its text is selected.
    void Open(int row, int column) {
        const int height = Grid().Geometry().RowHeight() / 15;
        const QPoint place(20 + 1400 / 15 * (column - 1) + 40,
                           Grid().Geometry().HeaderHeight() / 15 + (row - 1) * height + height / 2);
        QTest::mouseClick(&Grid(), Qt::LeftButton, Qt::NoModifier, place);
        EXPECT_EQ(Grid().State().currentPosition, row);
        EXPECT_EQ(Grid().State().currentColumn, column);
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void Type(const char* text) {
        ASSERT_NO_FATAL_FAILURE(Press(Qt::Key_A, Qt::ControlModifier));
        QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
    }
    void Edit(int row, int column, const char* text) {
        Open(row, column);
        Type(text);
        Press(Qt::Key_Tab);
    }

  private:
    const TableEdit& handled_;
};

}  // namespace quarv::test
