// GridFixture: layout, editing and navigation of a grid over fakes. Header and rows are 300 twips
// high, the bars 255 thick; the control is 6000 wide and 2700 high, so that eight rows fit.
#pragma once

#include <gtest/gtest.h>

#include "GridFakes.h"
#include "grid/GridNavigation.h"
#include "support/Raised.h"

namespace quarv::test {

class GridFixture : public ::testing::Test {
  protected:
    using Kind = FakeEditors::Kind;
    using Told = std::vector<std::string>;

    GridFixture() {
        geometry.Resize(6000, 2700);
        layout.Resize();
    }

    void Fill(const RowListRef& rows, const ColumnListRef& columns = ColumnsOf({1400, 1400, 900})) {
        layout.SetColList(columns);
        layout.SetRowList(rows);
        host.told.clear();
    }
    // A click in the middle of a line, counted from 0, at x twips.
    void Click(int line, double x) { editing.Release(x, 300 + 300 * line + 150); }
    // The new row that the host gives away.
    FakeRowRef OfferRow() {
        auto row = std::make_shared<FakeRow>();
        row->empty = true;
        host.onAddRow = [row](RowRef& asked) { asked = row; };
        return row;
    }
    void ExpectNothingSelected() const {
        EXPECT_EQ(state.mode, GridMode::NoRow);
        EXPECT_EQ(state.currentPosition, 0);
        EXPECT_EQ(state.currentColumn, 0);
        EXPECT_EQ(state.currentRow, nullptr);
        EXPECT_EQ(editors.shown, Kind::None);
    }

    GridState state;
    FakeScreen screen;
    FakeEditors editors;
    FakeHost host;
    GridGeometry geometry{GridMetrics{240, 300, 255, 255}};
    GridLayout layout{state, geometry, screen, editors};
    GridEditing editing{state, geometry, layout, editors, host};
    GridNavigation navigation{state, editing};
};

}  // namespace quarv::test
