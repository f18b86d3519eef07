"""Quarv's windows in a person's words: the connection dialog and the main window."""

from . import widgets
from .program import Program
from .query import QueryWindow
from .waiting import wait_until

DIALOG = "SQL Server Connection Details"
WINDOWS_ACCOUNT = "Use your Windows user account to log onto SQL Server"
SQL_ACCOUNT = "Log onto SQL Server with a username and password"
FILLED_BY_LABEL = ("combo box", "text", "password text")


class Quarv(Program):
    def dialog(self, seconds=30):
        return ConnectionDialog(self, self.window(DIALOG, seconds))

    def main_window(self, title, seconds=60):
        return MainWindow(self, self.window(title, seconds))

    def query_window(self, title, seconds=30):
        return QueryWindow(self, self.window(title, seconds))


class ConnectionDialog:
    def __init__(self, program, window):
        self.program = program
        self.window = window

    def field(self, label):
        return self.window.labelled(FILLED_BY_LABEL, label)

    def server(self):
        return self.field("Server:").text()

    def database(self):
        return self.field("Database name:").text()

    def enter(self, server=None, database=None, username=None, password=None):
        """Types into the boxes named; the account's boxes need the SQL Server account chosen."""
        for label, text in (("Server:", server), ("Database name:", database),
                            ("Username", username), ("Password", password)):
            if text is not None:
                self.field(label).enter(text)

    def chosen_account(self):
        """The caption of the chosen account; nothing where neither is chosen."""
        for caption in (WINDOWS_ACCOUNT, SQL_ACCOUNT):
            if self.window.find("radio button", caption).checked():
                return caption
        return None

    def choose(self, caption):
        self.window.find("radio button", caption).click()
        wait_until(f'"{caption}" to be chosen', lambda: self.chosen_account() == caption)

    def databases(self):
        """The entries of the list of databases."""
        return [item.name() for item in self.field("Database name:").descendants()
                if item.role() == "list item"]

    def press(self, caption):
        self.window.find("push button", caption).click()


class MainWindow:
    def __init__(self, program, window):
        self.program = program
        self.window = window

    def press(self, caption):
        self.window.find("push button", caption).click()

    def tree(self):
        return self.window.find("tree")

    def node(self, text):
        return self.tree().find("table cell", text)

    def nodes(self):
        """The texts of the visible nodes of the tree, top to bottom."""
        return [cell.name() for cell in self.tree().all("table cell")]

    def expand(self, text):
        """Opens a group as a person does with the keyboard: select it, press Right."""
        node = self.node(text)
        if not node.expanded():
            node.click_left_end()
            self.program.desktop.press("Right")
        wait_until(f'the group "{text}" to open', lambda: widgets.seen(self.node(text).expanded))

    def group(self, text, end=None):
        """The texts of the nodes of an open group, down to the group end or the last node."""
        texts = self.nodes()
        first = texts.index(text) + 1
        return texts[first:texts.index(end, first) if end else None]

    def show_table(self, name):
        """Clicks a table's node and waits for the columns pane to be about it."""
        self.node(name).click_left_end()
        caption = "Fields: " + name
        wait_until(f'the pane "{caption}"', lambda: self._pane(caption), detail=self.window.outline)

    def columns(self, name):
        """The rows of the columns pane of a table: name, type, nullable and default, as shown."""
        pane = self._pane("Fields: " + name)
        listed = next(widget for widget in pane.descendants()
                      if widget.role() in ("tree", "table", "list") and widget.showing())
        cells = [cell.name() for cell in listed.children() if cell.role() == "table cell"]
        return [tuple(cells[start:start + 4]) for start in range(0, len(cells), 4)]

    def close(self):
        """Closes the window by the window manager, as its corner button does."""
        title = self.window.name()
        self.program.desktop.close_window(title)
        self.program.gone(title)

    def _pane(self, caption):
        return widgets.seen(lambda: next((widget for widget in self.window.descendants()
                                          if widget.name() == caption and widget.showing()), None))
