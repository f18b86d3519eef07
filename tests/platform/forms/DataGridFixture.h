// DataGridFixture: a grid on a shown form, and what its tests ask of it.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>
#include <optional>
#include <vector>

#include "ScriptedRowSource.h"
#include "platform/forms/DataGrid.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv::forms {

class DataGridFixture : public testing::Test {
  protected:
    struct Told {
        int number;
        QString description;

        bool operator==(const Told&) const = default;
    };

    Form form{u"F"_qs};
    DataGrid grid{&form, u"Results"_qs};
    // Keeps an index for each row that is inserted: not for millions.
    std::optional<QAbstractItemModelTester> tester{
        std::in_place, grid.model(), QAbstractItemModelTester::FailureReportingMode::Warning};
    ScriptedRowSource source{{u"Id"_qs, u"Name"_qs, u"Town"_qs}, 10'000};
    std::vector<Told> told;

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        grid.Move(0, 0, 9000, 6000);
        form.Show();
        QApplication::setActiveWindow(&form);
        grid.SetFocus();
        QObject::connect(&grid, &DataGrid::Error, &form, [this](int number, const QString& text) {
            told.push_back({number, text});
        });
        // Reading while painting would raise within the paint event.
        source.onRead = [this] { EXPECT_FALSE(grid.viewport()->paintingActive()); };
        Settle();
    }

    static void Settle() { QCoreApplication::processEvents(); }

    QScrollBar& Bar() { return *grid.verticalScrollBar(); }
    // Rows on the screen, one that is partly seen included.
    qint64 Screen() const {
        const int height = grid.verticalHeader()->defaultSectionSize();
        return (grid.viewport()->height() + height - 1) / height;
    }
    qint64 LastVisible() { return Bar().value() + Screen() - 1; }
    // How many rows were asked for that lie beyond the last visible one.
    qint64 AskedAhead() { return source.greatest - LastVisible(); }
    QString Cell(int row, int column) const {
        return grid.model()->index(row, column).data().toString();
    }
    QString Heading(int column) const {
        return grid.model()->headerData(column, Qt::Horizontal).toString();
    }
    QPoint CentreOf(int row, int column) const {
        return grid.visualRect(grid.model()->index(row, column)).center();
    }
    void Press(int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        QTest::keyClick(&grid, static_cast<Qt::Key>(key), held);
    }
    bool ShowsLastRow() const {
        const int last = grid.model()->rowCount() - 1;
        return grid.viewport()->rect().contains(CentreOf(last, grid.columnAt(5)));
    }
};

}  // namespace quarv::forms
