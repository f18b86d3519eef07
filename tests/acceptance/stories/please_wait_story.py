"""What stands on the screen while a server keeps the connection dialog waiting."""

import time

from driver.listener import SILENT, Listener
from driver.quarv import SQL_ACCOUNT, WINDOWS_ACCOUNT
from driver.story import Story
from driver.waiting import wait_until

CONNECT_TIMEOUT = 15  # seconds
TITLE = "Error -2147467259"
SAND = (224, 166, 58)  # in the hourglass


class PleaseWaitStory(Story):
    def test_the_frame_is_seen_until_the_wait_is_over_in_time(self):
        listener = Listener(SILENT)
        self.addCleanup(listener.end)
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        dialog.choose(SQL_ACCOUNT)
        dialog.enter(server=f"127.0.0.1,{listener.port}", username="sa")
        self.desktop.press("alt+p", "Tab")
        dialog.await_focus("Test")
        window = dialog.window.extents()
        account = dialog.window.find("radio button", WINDOWS_ACCOUNT).extents()
        quiet = self.desktop.picture(window)

        dialog.press("Test")
        began = time.monotonic()
        self.assertTrue(listener.heard.wait(5), "nobody connected")
        waiting = wait_until("the account choices to be covered", lambda: self.look(
            window, lambda picture: picture.part(account) != quiet.part(account)), 5)
        self.desktop.await_window(TITLE, CONNECT_TIMEOUT + 5)
        took = time.monotonic() - began
        self.assertLessEqual(took, CONNECT_TIMEOUT + 1)
        self.assertGreater(took, CONNECT_TIMEOUT - 1)
        self.frame_was_whole(quarv, dialog, quiet, waiting)

        box, text = quarv.message(TITLE)
        self.assertTrue(text.startswith("Error connecting to server: "), text)
        self.assertIn("127.0.0.1", text)
        quarv.answer(box, "OK")
        wait_until("the frame to go", lambda: self.look(
            window, lambda picture: picture.part(account) == quiet.part(account)))

    def look(self, extents, holds):
        """A picture of which this holds; nothing where it does not hold of the present one."""
        picture = self.desktop.picture(extents)
        return picture if holds(picture) else None

    def frame_was_whole(self, quarv, dialog, quiet, waiting):
        """Behind the box the frame still stands, and the program answers again: where its parts
        are, and what it looks like when it can be painted at any time."""
        parts = {widget.name(): widget.extents() for widget in dialog.window.descendants()}
        frame = parts["Please Wait"]
        words = parts["Attempting to talk to your database. This may take a few moments."]
        x, y, width, _ = frame
        self.assertGreater(waiting.ink((x + 4, y + 2, width // 3, 12)), 100)
        self.assertGreater(waiting.ink(words), 400)
        self.assertGreater(waiting.colours(parts["Image1"])[SAND], 100)
        self.assertEqual(0, quiet.colours(parts["Image1"])[SAND])
        for name in ("Server:", "Database name:", "Create", "Okay", "Cancel"):
            self.assertEqual(quiet.part(parts[name]), waiting.part(parts[name]), name)

        self.desktop.move_window(TITLE, 0, 0)
        wait_until("the frame to look as it did in the wait", lambda: self.look(
            frame, lambda picture: picture.part(frame) == waiting.part(frame)))
