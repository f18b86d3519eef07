"""The gallery of controls: its grids, cell by cell, as an assistive tool sees them."""

from .grid import Grid
from .program import Program

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
