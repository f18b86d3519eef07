"""A grid of any window, cell by cell, as an assistive tool sees it."""

from .waiting import wait_until
from .widgets import Widget, seen


class Grid:
    """Rows that are there, shown or scrolled away, and columns, both counted from 0."""

    def __init__(self, program, table):
        self.program = program
        self.table = table

    def row_count(self):
        return self._cells().nRows

    def columns(self):
        """The columns' names."""
        cells = self._cells()
        return tuple(cells.getColumnDescription(column) for column in range(cells.nColumns))

    def rows(self):
        """The rows as tuples of the texts shown."""
        cells = self._cells()
        return [tuple(cells.getAccessibleAt(row, column).get_name()
                      for column in range(cells.nColumns)) for row in range(cells.nRows)]

    def cell(self, row, column):
        return Widget(self._cells().getAccessibleAt(row, column), self.program)

    def click(self, row, column):
        """Clicks a cell and waits until it is the one being edited."""
        self.cell(row, column).click_left_end()
        self.await_cell(row, column)

    def click_under(self, row):
        """Clicks the line under a row, in the first column."""
        x, y, _, height = self.cell(row, 0).extents()
        self.program.desktop.click(x + 20, y + height + height // 2)

    def write(self, row, column, text, last_key):
        """Replaces what stands in a cell by typing, and leaves the cell by a key."""
        self.click(row, column)
        self.program.desktop.press("ctrl+a")
        self.program.desktop.type(text)
        self.program.desktop.press(last_key)
        self.await_text(row, column, text)

    def await_cell(self, row, column):
        wait_until(f"the cell {row}, {column} to be edited",
                   lambda: seen(lambda: self.cell(row, column).selected()))

    def await_row_count(self, count):
        wait_until(f"{count} rows", lambda: seen(lambda: self.row_count() == count),
                   detail=lambda: seen(self.row_count))

    def await_rows(self, rows):
        wait_until(f"the rows {rows}", lambda: seen(self.rows) == rows,
                   detail=lambda: seen(self.rows))

    def await_top(self, row):
        """Waits until the row is the first one shown."""
        def on_top():
            return self.cell(row, 0).showing() and not self.cell(row - 1, 0).showing()

        wait_until(f"the row {row} on top", lambda: seen(on_top))

    def await_text(self, row, column, text):
        wait_until(f'"{text}" in the cell {row}, {column}',
                   lambda: seen(lambda: self.cell(row, column).name() == text),
                   detail=lambda: seen(lambda: self.cell(row, column).name()))

    def wheel_down(self, notches):
        x, y, width, height = self.table.extents()
        self.program.desktop.wheel_down(x + width // 2, y + height // 2, notches)

    def _cells(self):
        return self.table.accessible.queryTable()
