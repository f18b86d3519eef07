"""Quarv's windows in a person's words: the connection dialog and the main window."""

from . import widgets
from .grid import Grid
from .program import Program
from .query import QueryWindow
from .waiting import wait_until

DIALOG = "SQL Server Connection Details"
WINDOWS_ACCOUNT = "Use your Windows user account to log onto SQL Server"
SQL_ACCOUNT = "Log onto SQL Server with a username and password"
CAPTIONS = ("Fields: ", "Indexes: ", "Records:", ", created ")
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

    def focus(self):
        """What has the keyboard: the text of the label that speaks for it, or its own name."""
        # A tab says that it has the keyboard wherever that is; what really has it comes later.
        spoken = [(widget.labels() or [widget.name()])[0]
                  for widget in self.window.descendants() if widget.focused()]
        return next((text for text in reversed(spoken) if text), None)

    def await_focus(self, name):
        wait_until(f'"{name}" to have the keyboard', lambda: widgets.seen(self.focus) == name,
                   detail=lambda: widgets.seen(self.focus))


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
        """Clicks a table's node and waits for the panes to be about it. The rows come last: until
        all is there the program does not answer."""
        self.node(name).click_left_end()
        self._await_pane("Fields: " + name)
        self._await_pane("Records:" + name)

    def show_procedure(self, name):
        """Clicks a procedure's node and waits for the pane to be about it."""
        self.node(name).click_left_end()
        wait_until(f"the pane of {name}", lambda: f".{name}, created " in (self.procedure() or ""),
                   detail=self.window.outline)

    def panes(self):
        """The captions of the panes that are showing, a table's or a procedure's."""
        return widgets.seen(lambda: [
            widget.name() for widget in self.window.descendants()
            if any(part in widget.name() for part in CAPTIONS) and widget.showing()]) or []

    def columns(self, name):
        """The rows of the columns pane of a table: name, type, nullable and default, as shown."""
        return self._listed("Fields: " + name, 4)

    def indexes(self, name):
        """The rows of the indexes pane of a table: name, fields and the rest, as shown."""
        return self._listed("Indexes: " + name, 3)

    def records(self):
        return Grid(self.program, self.window.find("table", "Records"))

    def condition(self):
        return self.window.labelled("combo box", "Condition:")

    def enter_condition(self, text):
        self.condition().enter(text)
        self.program.desktop.press("Return")

    def conditions(self):
        """The entries of the condition's drop-down list."""
        return [item.name() for item in self.condition().descendants()
                if item.role() == "list item"]

    def choose_condition(self, text):
        """Opens the drop-down list with the keyboard and clicks an entry."""
        self.condition().enter("")
        self.program.desktop.press("alt+Down")
        self.condition().find("list item", text).click()
        wait_until(f'"{text}" in the box', lambda: widgets.seen(self.condition().text) == text)

    def procedure(self):
        """The caption of the procedure's pane; nothing while it does not show."""
        return next((caption for caption in self.panes() if ", created " in caption), None)

    def parameters(self):
        """The line over the procedure's source."""
        return self._pane(self.procedure()).find("label").text()

    def source(self):
        return self._pane(self.procedure()).find("text", "Source").text()

    def script(self):
        """Presses Script; the query window that opens."""
        self.press("Script")
        return self.program.query_window("Query: " + self.window.name())

    def close(self):
        """Closes the window by the window manager, as its corner button does."""
        title = self.window.name()
        self.program.desktop.close_window(title)
        self.program.gone(title)

    def _listed(self, caption, width):
        """The texts of the list in a pane, as many a row."""
        listed = self._pane(caption).find(("tree", "table", "list"))
        cells = [cell.name() for cell in listed.children() if cell.role() == "table cell"]
        return [tuple(cells[start:start + width]) for start in range(0, len(cells), width)]

    def _await_pane(self, caption):
        return wait_until(f'the pane "{caption}"', lambda: self._pane(caption),
                          detail=self.window.outline)

    def _pane(self, caption):
        return widgets.seen(lambda: next((widget for widget in self.window.descendants()
                                          if widget.name() == caption and widget.showing()), None))
