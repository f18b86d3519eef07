"""The query window in a person's words: its box, its buttons and the rows below."""

from .waiting import wait_until
from .widgets import Widget, seen

FILE_DIALOG = "Open"


class QueryWindow:
    def __init__(self, program, window):
        self.program = program
        self.window = window

    def box(self):
        return self.window.find("text", "Query")

    def write(self, text):
        """Replaces what stands in the box by typing, line by line."""
        first, *others = text.split("\n")
        self.box().enter(first)
        for line in others:
            self.program.desktop.press("Return")
            self.program.desktop.type(line)
        wait_until("the text in the box", lambda: seen(self.box().text) == text,
                   detail=lambda: seen(self.box().text))

    def press(self, caption):
        self.window.find("push button", caption).click()

    def run(self):
        self.program.desktop.press("F5")

    def grid(self):
        return self.window.find("table", "Results")

    def columns(self):
        table = self.grid().accessible.queryTable()
        return tuple(table.getColumnDescription(column) for column in range(table.nColumns))

    def rows(self):
        """The rows read so far, as tuples of the texts shown."""
        table = self.grid().accessible.queryTable()
        return [tuple(Widget(table.getAccessibleAt(row, column), self.program).name()
                      for column in range(table.nColumns)) for row in range(table.nRows)]

    def row_count(self):
        return self.grid().accessible.queryTable().nRows

    def await_rows(self, rows):
        wait_until(f"the rows {rows}", lambda: seen(self.rows) == rows,
                   detail=lambda: seen(self.rows))

    def click_cell(self, row, column):
        Widget(self.grid().accessible.queryTable().getAccessibleAt(row, column),
               self.program).click_left_end()

    def run_script(self, path):
        """Presses the button and types the path into the dialog for files."""
        self.press("Run Script")
        dialog = self.program.window(FILE_DIALOG)
        name = dialog.labelled("text", "File name:")
        wait_until("the name to have the keyboard", lambda: seen(name.focused))
        self.program.desktop.type(path)
        self.program.desktop.press("Return")
        self.program.gone(FILE_DIALOG)
