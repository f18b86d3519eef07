"""What an assistive tool sees of a program: windows and widgets, found by role and name, acted on
by real X events. Nothing is cached: every question is asked of the program anew."""

import gi

gi.require_version("Atspi", "2.0")
import pyatspi  # noqa: E402
from gi.repository import Atspi, GLib  # noqa: E402

from .waiting import wait_until  # noqa: E402

# A program that is busy does not answer: give up one question soon, the waiting asks again.
Atspi.set_timeout(3000, 15000)

LEAVES = ("table cell", "list item", "table", "tree")


class Widget:
    """One widget of a program. Questions about one that is gone raise GLib.Error, which seen()
    turns into "not there"."""

    def __init__(self, accessible, program):
        self.accessible = accessible
        self.program = program

    def role(self):
        return self.accessible.get_role_name()

    def name(self):
        return self.accessible.get_name()

    def has(self, state):
        return self.accessible.get_state_set().contains(state)

    def showing(self):
        return self.has(pyatspi.STATE_SHOWING)

    def enabled(self):
        return self.has(pyatspi.STATE_ENABLED)

    def checked(self):
        return self.has(pyatspi.STATE_CHECKED)

    def expanded(self):
        return self.has(pyatspi.STATE_EXPANDED)

    def active(self):
        """Whether the window has the keyboard."""
        return self.has(pyatspi.STATE_ACTIVE)

    def focused(self):
        return self.has(pyatspi.STATE_FOCUSED)

    def selected(self):
        return self.has(pyatspi.STATE_SELECTED)

    def extents(self):
        """Position and size on the screen: x, y, width, height in pixels."""
        box = self.accessible.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        return box.x, box.y, box.width, box.height

    def text(self):
        """What stands in the widget: a text's or a combo box's content, otherwise its name."""
        if "Text" in self.accessible.get_interfaces():
            return self.accessible.queryText().getText(0, -1)
        for child in self.children():
            if child.role() == "text":
                return child.text()
        return self.name()

    def children(self):
        return [Widget(child, self.program)
                for child in (self.accessible.get_child_at_index(index)
                              for index in range(self.accessible.get_child_count())) if child]

    def descendants(self):
        """Every widget below this one, a parent before its children. A row of a list is a leaf,
        and so are tables and trees, which may be long: who wants their cells asks them."""
        for child in self.children():
            yield child
            if child.role() not in LEAVES:
                yield from child.descendants()

    def all(self, role, name=None):
        """The showing widgets of a role (one or a tuple of several), in the program's own order."""
        return list(self._showing(role, name))

    def find(self, role, name=None, seconds=20):
        """The first such widget, waited for."""
        what = f"a {role}" + (f' "{name}"' if name is not None else "")
        return wait_until(what, lambda: seen(lambda: next(self._showing(role, name), None)),
                          seconds, self.outline)

    def labelled(self, role, label, seconds=20):
        """The widget of a role that a label speaks for: by the name that it tells assistive tools,
        or by the label that says whom it labels."""
        def probe():
            for widget in self.all(role):
                if label in (widget.name(), *widget.labels()):
                    return widget
            return None

        return wait_until(f'a {role} labelled "{label}"', lambda: seen(probe), seconds,
                          self.outline)

    def labels(self):
        """The texts of the labels that say that they label this widget."""
        return [relation.get_target(index).get_name()
                for relation in self.accessible.get_relation_set()
                if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
                for index in range(relation.get_n_targets())]

    def click(self, double=False):
        """Clicks the widget's middle, once it has come to rest."""
        x, y, width, height = self._resting_extents()
        self.program.desktop.click(x + width // 2, y + height // 2, double)

    def click_left_end(self):
        """Clicks close to the widget's left end, where a wide cell has its text."""
        x, y, width, height = self._resting_extents()
        self.program.desktop.click(x + min(10, width // 2), y + height // 2)

    def enter(self, text):
        """Replaces the content of a text or combo box by typing."""
        self.click_left_end()
        self.program.desktop.press("ctrl+a", "Delete")
        if text:
            self.program.desktop.type(text)
        # A password box tells nobody what it holds; keys arrive in order, so nothing is lost.
        if self.role() != "password text":
            wait_until(f'"{text}" in the box', lambda: seen(lambda: self.text() == text),
                       detail=lambda: seen(self.text))

    def outline(self):
        """The widgets below this one, for a failure's message."""
        lines = seen(lambda: [f"{each.role()} {each.name()!r}" for each in self.descendants()])
        return "there are: " + ", ".join((lines or [])[:60])

    def _showing(self, role, name):
        roles = role if isinstance(role, tuple) else (role,)
        return (widget for widget in self.descendants()
                if widget.role() in roles and name in (None, widget.name()) and widget.showing())

    def _resting_extents(self):
        last = [None]

        def rests():
            before, last[0] = last[0], seen(self.extents)
            return last[0] if last[0] and last[0] == before and last[0][2] > 0 else None

        return wait_until(f'"{self.name()}" to come to rest', rests)


def application(pid):
    """The accessible root of the program with this process id; nothing before it registers."""
    desktop = pyatspi.Registry.getDesktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        try:
            if child and child.get_process_id() == pid:
                # What is cached goes stale unless an event loop runs here, and none does.
                child.set_cache_mask(Atspi.Cache.NONE)
                return child
        except GLib.Error:
            continue
    return None


def seen(question):
    """The answer to a question about the screen; nothing where a widget went while it was asked."""
    try:
        return question()
    except (GLib.Error, NotImplementedError, LookupError):
        return None
