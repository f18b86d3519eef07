"""The connection dialog without a mouse, and what it keeps from whoever looks on."""

import pyatspi

from driver.quarv import DIALOG, SQL_ACCOUNT, WINDOWS_ACCOUNT
from driver.recorded import RecordedStory
from driver.story import Story
from driver.waiting import wait_until

NO_SERVER = "You must provide the name of the SQL Server."
NO_DATABASE = "You must provide the name of a database within the SQL Server you have chosen."
NO_USER = "You must provide the name and password of an account on the SQL Server."


class ConnectionDialogKeyboardStory(Story):
    def setUp(self):
        super().setUp()
        self.quarv = self.start_quarv()
        self.dialog = self.quarv.dialog()

    def await_box(self, title, text):
        box, said = self.quarv.message(title)
        self.assertEqual(text, said)
        self.quarv.answer(box, "OK")

    def test_the_tab_key_visits_every_control_from_top_to_bottom(self):
        self.desktop.press("alt+l", "alt+s")
        self.dialog.await_focus("Server:")
        for name in ("Database name:", "Create", WINDOWS_ACCOUNT, SQL_ACCOUNT, "Username",
                     "Password", "Test", "Okay", "Cancel", "Connection", "Server:"):
            self.desktop.press("Tab")
            self.dialog.await_focus(name)
        self.desktop.press("shift+Tab", "shift+Tab")
        self.dialog.await_focus("Cancel")
        self.desktop.press("space")
        self.assertEqual(0, self.quarv.exit_status())

    def test_a_letter_reaches_each_control_and_no_caption_shows_it_in_its_words(self):
        self.assertEqual(WINDOWS_ACCOUNT, self.dialog.chosen_account())
        for key, account in (("alt+l", SQL_ACCOUNT), ("alt+u", WINDOWS_ACCOUNT),
                             ("alt+l", SQL_ACCOUNT)):
            self.desktop.press(key)
            wait_until(f'"{account}"', lambda: self.dialog.chosen_account() == account)
        for key, name in (("alt+d", "Database name:"), ("alt+e", "Username"),
                          ("alt+p", "Password"), ("alt+s", "Server:")):
            self.desktop.press(key)
            self.dialog.await_focus(name)
        self.desktop.press("alt+t")
        self.await_box("Username", NO_USER)
        self.dialog.enter(server="")
        self.desktop.press("alt+o")
        self.await_box("Server name", NO_SERVER)
        self.dialog.enter(database="x")
        self.desktop.press("alt+c")
        self.await_box("Note", "You need a valid database name!")
        self.desktop.press("alt+a")
        self.assertEqual(0, self.quarv.exit_status())

    def test_enter_anywhere_presses_okay_which_tells_what_is_missing(self):
        okay = self.dialog.window.find("push button", "Okay")
        self.assertTrue(okay.has(pyatspi.STATE_IS_DEFAULT))
        self.dialog.enter(server="")
        self.desktop.press("Return")
        self.await_box("Server name", NO_SERVER)
        # The box for databases confirms by itself, and no second time by the default button.
        self.dialog.enter(server="localhost", database="")
        self.desktop.press("Return")
        self.await_box("Database name", NO_DATABASE)
        self.dialog.choose(SQL_ACCOUNT)
        self.dialog.enter(database="mirel", password="p")
        self.desktop.press("Return")
        self.await_box("Username", NO_USER)
        self.assertEqual([DIALOG], self.quarv.titles())
        self.assertIsNone(self.stored())

    def test_escape_and_the_corner_button_end_the_program(self):
        self.dialog.enter(server="elsewhere")
        self.desktop.press("Escape")
        self.assertEqual(0, self.quarv.exit_status())
        quarv = self.start_quarv()
        self.assertEqual("localhost", quarv.dialog().server())
        self.desktop.close_window(DIALOG)
        self.assertEqual(0, quarv.exit_status())
        self.assertIsNone(self.stored())

    def test_a_password_is_read_neither_from_the_screen_nor_by_other_programs(self):
        self.dialog.choose(SQL_ACCOUNT)
        box = self.dialog.window.find("password text", "Password")
        pictures = []
        for password in ("iiiiiiii", "WWWWWWWW", "iiiiiiiii"):
            self.dialog.enter(password=password)
            self.desktop.press("Tab")
            self.dialog.await_focus("Test")
            self.assertNotIn(password[:2], box.text())
            pictures.append(self.desktop.picture(box.extents()).part(box.extents()))
        self.assertEqual(pictures[0], pictures[1])
        # There is something to be seen of it at all: how long it is.
        self.assertNotEqual(pictures[0], pictures[2])
        self.desktop.press("shift+Tab", "ctrl+a", "ctrl+c", "alt+d", "ctrl+a", "ctrl+c", "alt+p",
                           "ctrl+a", "ctrl+c", "ctrl+x", "alt+s", "ctrl+a", "ctrl+v")
        wait_until("the last text that was copied",
                   lambda: self.dialog.server() == self.dialog.database() == "mirel",
                   detail=self.dialog.server)


class ConfirmingStory(RecordedStory):
    def test_enter_in_the_box_for_databases_asks_the_server_no_more_than_okay(self):
        self.close_main()
        asked = []
        for confirm in (lambda dialog: dialog.press("Okay"), self.press_enter):
            before = len(self.recorder.statements())
            quarv = self.start_quarv()
            confirm(quarv.dialog())
            quarv.main_window(self.title).close()
            self.assertEqual(0, quarv.exit_status())
            asked.append(self.recorder.statements()[before:])
        self.assertTrue(asked[0])
        self.assertEqual(asked[0], asked[1])

    def press_enter(self, dialog):
        dialog.field("Database name:").click_left_end()
        dialog.await_focus("Database name:")
        self.desktop.press("Return")
