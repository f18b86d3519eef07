"""The stored connection string: in which file it is kept, for whom, and what another program does to
it."""

import fcntl
import os

from driver.home import Home
from driver.quarv import WINDOWS_ACCOUNT
from driver.story import GENERAL, Story

SAMPLE = (r"Provider=sqloledb;Data Source=(localdb)\quarv;Initial Catalog=mirel;"
          "Integrated Security=SSPI;")
TITLE = r"SQL Server (localdb)\quarv mirel"
SHIPPED = ("Provider=sqloledb;Data Source=shipped.example;Initial Catalog=stock;"
           "Integrated Security=SSPI;")
MACHINE = "machine/quarv/machine.hive"
OVERLAY = "config/quarv/machine-overlay.hive"


class SettingsStory(Story):
    def ship(self):
        """Writes the machine-wide settings as an installer does: for all to read."""
        os.makedirs(self.home.path("machine/quarv"))
        path = self.home.write(MACHINE, 'quarv-hive 1\nkey "Software\\\\Kel\\\\Quarv\\\\General"\n'
                                        f'value "ConnStr" text "{SHIPPED}"\n'
                                        'value "Other" text "kept"\nend\n')
        os.chmod(path, 0o644)

    def confirm(self):
        """Opens the sample database in the dialog, and ends the program in its main window."""
        quarv = self.start_quarv()
        quarv.dialog().enter(server=r"(localdb)\quarv", database="mirel")
        quarv.dialog().press("Okay")
        quarv.main_window(TITLE).close()
        self.assertEqual(0, quarv.exit_status())

    def assert_offers(self, server, database):
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual((server, database, WINDOWS_ACCOUNT),
                         (dialog.server(), dialog.database(), dialog.chosen_account()))
        dialog.press("Cancel")
        self.assertEqual(0, quarv.exit_status())

    def mode(self, name):
        return oct(os.stat(self.home.path(name)).st_mode & 0o7777)

    def contents(self, name):
        with open(self.home.path(name), encoding="utf-8") as file:
            return file.read()

    def test_what_was_confirmed_is_listed_and_kept_from_others(self):
        self.ship()
        self.assert_offers("shipped.example", "stock")
        self.confirm()
        self.assertEqual(SAMPLE, self.stored())
        status, listed = self.registry("query", GENERAL)
        self.assertEqual(0, status)
        self.assertEqual([GENERAL, f"    ConnStr    REG_SZ    {SAMPLE}",
                          "    Other    REG_SZ    kept"], listed.splitlines())
        self.assertEqual("0o600", self.mode(MACHINE))
        self.assertFalse(os.path.exists(self.home.path(OVERLAY)))

    def test_who_may_not_write_for_all_keeps_it_for_himself(self):
        self.ship()
        shipped = self.contents(MACHINE)
        # Rights hold root back nowhere; a lock that nobody can take does.
        os.mkdir(self.home.path(MACHINE + ".lock"))
        self.confirm()
        self.assert_offers(r"(localdb)\quarv", "mirel")
        self.assertEqual(SAMPLE, self.stored())
        self.assertEqual("0o600", self.mode(OVERLAY))
        self.assertEqual(shipped, self.contents(MACHINE))
        self.assertEqual("0o644", self.mode(MACHINE))

        machine = self.home.path("machine")
        self.home = Home(self.desktop.environment)
        self.addCleanup(self.home.end)
        self.home.environment["XDG_CONFIG_DIRS"] = machine
        self.assert_offers("shipped.example", "stock")
        self.assertEqual(SHIPPED, self.stored())

    def test_settings_that_another_program_keeps_locked_stop_nobody(self):
        self.ship()
        before = self.contents(MACHINE)
        with open(self.home.path(MACHINE + ".lock"), "w", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.confirm()
        self.assertEqual(before, self.contents(MACHINE))
        self.assert_offers("shipped.example", "stock")
