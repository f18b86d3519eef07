// GridAccessFixture: a grid on a form as assistive tools see it, with rows whose cells say where
// they are ("r2c3").
#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include "GridFakes.h"
#include "grid/KelEditGrid.h"
#include "platform/forms/Form.h"
#include "support/TextPrinter.h"

namespace quarv::test {

class GridAccessFixture : public ::testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    KelEditGrid grid{&form, u"Grid"_qs};

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        grid.Move(0, 0, 6000, 4500);
        form.Show();
        QApplication::setActiveWindow(&form);
    }

    static RowListRef Named(const RowListRef& rows) {
        for (qint16 i = 1; i <= rows->Count(); ++i)
            for (qint16 c = 1; c <= 3; ++c)
                rows->Items(i)->SetColumnValue(c, Value(u"r%1c%2"_qs.arg(i).arg(c)));
        return rows;
    }
    // Columns A, B and C.
    void Fill(const RowListRef& rows, const ColumnListRef& columns = ColumnsOf({1400, 1400, 900})) {
        grid.SetColList(columns);
        grid.SetRowList(Named(rows));
    }

    QAccessibleInterface* View() { return QAccessible::queryAccessibleInterface(&grid); }
    QAccessibleTableInterface& Table() { return *View()->tableInterface(); }
    QAccessibleInterface* Cell(int row, int column) { return Table().cellAt(row, column); }
    QString Text(int row, int column) { return Cell(row, column)->text(QAccessible::Name); }
    QWidget* Part(const char* name) { return grid.findChild<QWidget*>(QString::fromLatin1(name)); }
    static QAccessible::Id IdOf(QAccessibleInterface* part) { return QAccessible::uniqueId(part); }
};

}  // namespace quarv::test
