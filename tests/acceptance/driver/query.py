"""The query window in a person's words: its box, its buttons and the rows below."""

from .grid import Grid
from .waiting import wait_until
from .widgets import seen

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
        self.await_text(text)

    def press(self, caption):
        self.window.find("push button", caption).click()

    def run(self):
        self.program.desktop.press("F5")

    def grid(self):
        return Grid(self.program, self.window.find("table", "Results"))

    def columns(self):
        return self.grid().columns()

    def rows(self):
        """The rows read so far, as tuples of the texts shown."""
        return self.grid().rows()

    def row_count(self):
        return self.grid().row_count()

    def await_rows(self, rows):
        self.grid().await_rows(rows)

    def await_text(self, text):
        """Waits until the box holds the text."""
        wait_until("the text in the box", lambda: seen(self.box().text) == text,
                   detail=lambda: repr(seen(self.box().text)))

    def click_cell(self, row, column):
        self.grid().cell(row, column).click_left_end()

    def close(self):
        title = self.window.name()
        self.program.desktop.close_window(title)
        self.program.gone(title)

    def run_script(self, path):
        """Presses the button and types the path into the dialog for files."""
        self.press("Run Script")
        dialog = self.program.window(FILE_DIALOG)
        name = dialog.labelled("text", "File name:")
        wait_until("the name to have the keyboard", lambda: seen(name.focused))
        self.program.desktop.type(path)
        self.program.desktop.press("Return")
        self.program.gone(FILE_DIALOG)
