"""The gallery of controls: its grids, cell by cell, as an assistive tool sees them."""

from .program import Program
from .waiting import wait_until
from .widgets import Widget, seen

TITLE = "Quarv gallery"


class Gallery(Program):
    def main_window(self, seconds=120):
        """The window, waited for: its long list takes its time."""
        return self.window(TITLE, seconds)

    def grid(self, name):
        return Grid(self, self.main_window().find("table", name))

    def press(self, caption):
        self.main_window().find("push button", caption).click()

    def close(self):
        self.desktop.close_window(TITLE)
        return self.exit_status()


class Grid:
    """Rows that are shown and columns, both counted from 0."""

    def __init__(self, gallery, table):
        self.gallery = gallery
        self.table = table

    def row_count(self):
        return self.table.accessible.queryTable().nRows

    def cell(self, row, column):
        return Widget(self.table.accessible.queryTable().getAccessibleAt(row, column),
                      self.gallery)

    def click(self, row, column):
        """Clicks a cell and waits until it is the one being edited."""
        self.cell(row, column).click_left_end()
        self.await_cell(row, column)

    def click_under(self, row):
        """Clicks the line under a row, in the first column."""
        x, y, _, height = self.cell(row, 0).extents()
        self.gallery.desktop.click(x + 20, y + height + height // 2)

    def await_cell(self, row, column):
        wait_until(f"the cell {row}, {column} to be edited",
                   lambda: seen(lambda: self.cell(row, column).selected()))

    def await_rows(self, count):
        wait_until(f"{count} rows", lambda: seen(lambda: self.row_count() == count),
                   detail=lambda: seen(self.row_count))

    def await_top(self, row):
        """Waits until the row is the first one shown."""
        def on_top():
            return self.cell(row, 0).showing() and not self.cell(row - 1, 0).showing()

        wait_until(f"the row {row} on top", lambda: seen(on_top))

    def await_text(self, row, column, text):
        wait_until(f'"{text}" in the cell {row}, {column}',
                   lambda: seen(lambda: self.cell(row, column).name() == text))

    def wheel_down(self, notches):
        x, y, width, height = self.table.extents()
        self.gallery.desktop.wheel_down(x + width // 2, y + height // 2, notches)
