"""The connection dialog: what it offers, what it says of a server, what it remembers."""

import os

from driver.listener import Listener
from driver.quarv import SQL_ACCOUNT, WINDOWS_ACCOUNT
from driver.server import LOGIN, PASSWORD
from driver.story import Story

UNREACHABLE = ("Provider=sqloledb;Data Source=127.0.0.1,9;Initial Catalog=mirel;"
               "Integrated Security=SSPI;")


class ConnectionDialogStory(Story):
    def test_first_run_offers_the_default_and_says_why_the_server_is_not_there(self):
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual("localhost", dialog.server())
        self.assertEqual("mirel", dialog.database())
        self.assertEqual(WINDOWS_ACCOUNT, dialog.chosen_account())
        dialog.press("Test")
        box, text = quarv.message()
        self.assertEqual("Error -2147467259", box.name())
        self.assertTrue(text.startswith("Error connecting to server: "), text)
        self.assertIn("localhost", text)
        quarv.answer(box, "OK")
        dialog.press("Cancel")
        self.assertEqual(0, quarv.exit_status())

    def test_a_good_connection_fills_the_list_of_databases(self):
        server = self.start_server()
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        dialog.choose(SQL_ACCOUNT)
        dialog.enter(server=f"{server.host},{server.port}", username=LOGIN, password=PASSWORD)
        dialog.press("Test")
        box, text = quarv.message("Test")
        self.assertEqual("Test successful.", text)
        quarv.answer(box, "OK")
        self.assertEqual("mirel", dialog.database())
        self.assertIn("mirel", dialog.databases())

    def test_a_wrong_password_is_told(self):
        server = self.start_server()
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        dialog.choose(SQL_ACCOUNT)
        dialog.enter(server=f"{server.host},{server.port}", username=LOGIN, password="guess")
        dialog.press("Test")
        box, text = quarv.message()
        self.assertEqual("Error -2147217843", box.name())
        self.assertTrue(text.startswith(
            f"Error connecting to server: Login failed for user '{LOGIN}'."), text)
        quarv.answer(box, "OK")

    def test_a_port_that_is_no_sql_server_is_told(self):
        for greeting in (b"", b"SSH-2.0-OpenSSH_9.2\r\n" * 20, bytes(range(256)) * 40):
            with self.subTest(greeting=greeting[:8]):
                listener = Listener(greeting)
                self.addCleanup(listener.end)
                quarv = self.start_quarv()
                dialog = quarv.dialog()
                dialog.choose(SQL_ACCOUNT)
                dialog.enter(server=f"127.0.0.1,{listener.port}", username=LOGIN)
                dialog.press("Test")
                box, text = quarv.message()
                self.assertEqual("Error -2147467259", box.name())
                self.assertIn("127.0.0.1", text)
                self.assertIn(str(listener.port), text)
                quarv.answer(box, "OK")
                dialog.press("Cancel")
                self.assertEqual(0, quarv.exit_status())

    def test_a_damaged_settings_file_is_set_aside_and_the_default_offered(self):
        self.store(UNREACHABLE)
        path = self.home.path("machine/quarv/machine.hive")
        damage = b"\x00\xff[half a fi"
        with open(path, "wb") as hive:
            hive.write(damage)
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual("localhost", dialog.server())
        dialog.press("Cancel")
        self.assertEqual(0, quarv.exit_status())
        folder = os.path.dirname(path)
        kept = [open(os.path.join(folder, name), "rb").read() for name in os.listdir(folder)
                if name != os.path.basename(path)]
        self.assertIn(damage, kept)

    def test_cancel_ends_the_program(self):
        quarv = self.start_quarv()
        quarv.dialog().press("Cancel")
        self.assertEqual(0, quarv.exit_status())
        self.assertIsNone(self.stored())

    def test_a_database_that_cannot_be_opened_ends_the_program_with_status_1(self):
        self.store(UNREACHABLE)
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual("127.0.0.1,9", dialog.server())
        dialog.press("Okay")
        box, text = quarv.message()
        self.assertIn("127.0.0.1", text)
        quarv.answer(box, "OK")
        self.assertEqual(1, quarv.exit_status())

    def test_the_second_start_remembers_the_first(self):
        server = self.start_server()
        address = f"{server.host},{server.port}"
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        dialog.choose(SQL_ACCOUNT)
        dialog.enter(server=address, username=LOGIN, password=PASSWORD)
        dialog.press("Okay")
        title = f"SQL Server {address} mirel"
        quarv.main_window(title).close()
        self.assertEqual(0, quarv.exit_status())

        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual(address, dialog.server())
        self.assertEqual("mirel", dialog.database())
        self.assertEqual(SQL_ACCOUNT, dialog.chosen_account())
        dialog.press("Okay")
        quarv.main_window(title)
