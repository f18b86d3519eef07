"""One started Quarv, from its first window to its exit status."""

import os

from .processes import Process
from .waiting import wait_until
from .widgets import Widget, application, seen

TITLE_BAR = 20  # pixels


class Program:
    """A program with windows, started in a home on a desktop. The log is what it wrote."""

    def __init__(self, desktop, home_environment, path, log, arguments=()):
        self.desktop = desktop
        self.process = Process([path, *arguments], log, home_environment)
        self._root = None

    def root(self):
        if self._root is None:
            self._root = application(self.process.pid)
        return self._root

    def windows(self):
        """The showing windows, oldest first."""
        if not self.root():
            return []
        return [window for window in Widget(self.root(), self).children()
                if window.showing()]

    def window(self, title, seconds=30):
        """The window with this title, waited for. Fails at once when the program has ended or a
        message box came up instead."""
        def probe():
            for window in seen(self.windows) or []:
                if seen(window.name) == title:
                    return window
            self._must_run(f'window "{title}"')
            self._no_message(f'the window "{title}"')
            return None

        return wait_until(f'the window "{title}"', probe, seconds, self.titles)

    def titles(self):
        return seen(lambda: [window.name() for window in self.windows()]) or []

    def gone(self, title, seconds=20):
        wait_until(f'the window "{title}" to close',
                   lambda: not self.process.running() or title not in self.titles(), seconds,
                   self.titles)

    def message(self, title=None, seconds=30):
        """The message box that comes up and the text that stands in it. A box with another title
        than the one wanted is a failure."""
        def probe():
            self._must_run(f'message box "{title or ""}"')
            return self._open_message()

        box = wait_until(f'a message box "{title or ""}"', probe, seconds, self.titles)
        text = wait_until("the text of the message box", lambda: _message_text(box))
        if title not in (None, box.name()):
            raise AssertionError(f'instead of "{title}" the box "{box.name()}" says: {text}')
        return box, text

    def answer(self, box, button):
        """Presses a button of a message box and waits until the box is gone."""
        title = box.name()
        box.find("push button", button).click()
        self.gone(title)

    def exit_status(self, seconds=30):
        wait_until("the program to end", lambda: not self.process.running(), seconds)
        return self.process.status()

    def _must_run(self, wanted):
        if not self.process.running():
            raise AssertionError(f"no {wanted}: the program ended with status "
                                 f"{self.process.status()} and wrote: {self.process.log()}")

    def _open_message(self):
        for window in seen(self.windows) or []:
            if seen(lambda: _is_message(window)):
                return window
        return None

    def _no_message(self, wanted):
        box = self._open_message()
        if box:
            text = wait_until("the text of the message box", lambda: _message_text(box))
            raise AssertionError(f'instead of {wanted} the box "{box.name()}" says: {text}')

    def photograph(self, window, path):
        """Writes a PNG of a window, with the title bar that the window manager draws above it."""
        wait_until(f'the window "{window.name()}" to be in front', lambda: seen(window.active))
        x, y, width, height = window.extents()
        top = max(0, y - TITLE_BAR)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        self.desktop.screenshot(path, (x, top, width, height + y - top))

    def end(self):
        self.process.end()


def _is_message(window):
    """A message box is a dialog that wants an answer."""
    return window.role() in ("alert", "dialog") and any(
        button.name() in ("OK", "Yes") for button in window.all("push button"))


def _message_text(box):
    return seen(lambda: " ".join(part.text() for part in box.all(("label", "text"))
                                 if part.text()))
