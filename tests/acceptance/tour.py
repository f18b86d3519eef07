#!/usr/bin/python3
"""Takes the path of a first visit on a virtual display and says what it did and saw.

    tour.py --bin FOLDER --pictures FOLDER

From the connection dialog through the local sample database, by real X events, with the settings of
whoever starts it, which must name that database. Each window's picture is written. Ends with status
0 only if each step showed what it should."""

import argparse
import os
import sys

SERVER = r"(localdb)\quarv"
DATABASE = "mirel"
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TITLE = f"SQL Server {SERVER} {DATABASE}"


class Tour:
    def __init__(self, desktop, bin_folder, pictures, environment):
        from driver.quarv import Quarv
        self.pictures = pictures
        self.environment = environment
        self.step = 0
        log = os.path.join(desktop.folder, "quarv.log")
        self.quarv = Quarv(desktop, environment, os.path.join(bin_folder, "quarv"), log)

    def say(self, text):
        self.step += 1
        print(f"{self.step:2}. {text}", flush=True)

    def saw(self, text):
        print(f"    saw {text}", flush=True)

    def expect(self, what, wanted, got):
        if wanted != got:
            raise AssertionError(f"{what}: expected {wanted!r}, saw {got!r}")
        self.saw(f"{what}: {in_words(got)}")

    def expect_rows(self, what, wanted, got):
        """As expect, but says only how many there are."""
        if wanted != got:
            raise AssertionError(f"{what}: expected {wanted}, saw {got}")
        self.saw(f"{what}: {len(got)}, the same that tsql gives")

    def photograph(self, window, name):
        path = os.path.join(self.pictures, name + ".png")
        self.quarv.photograph(window, path)
        print(f"    picture {os.path.relpath(path, ROOT)}", flush=True)

    def take(self):
        dialog = self.open_dialog()
        self.test_connection(dialog)
        main = self.confirm(dialog)
        from driver.server import own_instance
        from driver.witness import Witness
        other = Witness(own_instance(self.environment, "quarv", DATABASE))
        table = self.look_at_tree(main, other)
        self.look_at_table(main, other, table)
        self.look_at_procedure(main, other)
        self.run_query(main, other, table)
        self.leave(main)

    def open_dialog(self):
        from driver.quarv import DIALOG, WINDOWS_ACCOUNT
        self.say("Start Quarv")
        dialog = self.quarv.dialog()
        self.saw(f'the window "{DIALOG}"')
        self.expect("server", SERVER, dialog.server())
        self.expect("database", DATABASE, dialog.database())
        self.expect("account", WINDOWS_ACCOUNT, dialog.chosen_account())
        self.photograph(dialog.window, "1-connection-dialog")
        return dialog

    def test_connection(self, dialog):
        self.say("Press Test")
        dialog.press("Test")
        box, text = self.quarv.message(seconds=60)
        self.expect("message", "Test successful.", text)
        self.photograph(box, "2-test")
        self.quarv.answer(box, "OK")

    def confirm(self, dialog):
        self.say("Press Okay")
        name = dialog.window.name()
        dialog.press("Okay")
        main = self.quarv.main_window(TITLE)
        self.saw(f'the window "{TITLE}"')
        self.quarv.gone(name)
        self.saw("the dialog closed")
        return main

    def look_at_tree(self, main, other):
        self.say("Open the groups of the tree")
        root = main.nodes()[0]
        if not root.startswith(TITLE + " "):
            raise AssertionError(f"the tree's root is {root!r}")
        self.saw(f"root: {root.splitlines()[0]}")
        main.expand("Routines")
        self.expect("procedures, the same that tsql lists", other.procedures(),
                    main.group("Routines"))
        main.expand("Tables")
        tables = main.group("Tables", "Routines")
        self.expect("tables, the same that tsql lists", other.tables(), tables)
        if not tables:
            raise AssertionError("the sample database has no table")
        self.photograph(main.window, "3-main-window")
        return max(tables, key=lambda name: len(other.columns(name)))

    def look_at_table(self, main, other, table):
        self.say(f"Click the table {table}")
        main.show_table(table)
        self.saw(f'the pane "Fields: {table}"')
        columns = main.columns(table)
        self.expect("columns, the same that tsql lists", other.columns(table), columns)
        if not columns:
            raise AssertionError(f"the table {table} shows no column")
        self.expect("indexes, the same that tsql lists", other.indexes(table), main.indexes(table))
        self.expect_rows("its first rows", other.rows(table), main.records().rows())
        self.photograph(main.window, "4-table-columns")

    def look_at_procedure(self, main, other):
        procedures = other.procedures()
        if not procedures:
            raise AssertionError("the sample database has no procedure")
        name = max(procedures, key=lambda each: len(other.parameters(each)))
        self.say(f"Click the procedure {name}")
        main.show_procedure(name)
        self.expect("the only pane", [other.procedure(name)], main.panes())
        self.expect("parameters, the same that tsql lists", other.parameters(name),
                    main.parameters())
        if main.source() != other.source(name):
            raise AssertionError(f"another source than tsql gives: {main.source()}")
        self.saw("its source, the same that tsql gives")
        self.photograph(main.window, "5-procedure")

    def run_query(self, main, other, table):
        self.say("Press Query, type and press F5")
        main.press("Query")
        title = "Query: " + TITLE
        query = self.quarv.query_window(title)
        self.saw(f'the window "{title}"')
        sql = f"select count(*) as Total, 'a' as A from [{table}]"
        query.write(sql)
        query.run()
        query.await_rows(other.tsql.rows(sql))
        self.saw("rows, the same that tsql gives")
        self.photograph(query.window, "6-query")
        query.close()

    def leave(self, main):
        self.say("Close the window")
        main.close()
        self.expect("exit status", 0, self.quarv.exit_status())


def in_words(value):
    if isinstance(value, list):
        return ", ".join(in_words(each) for each in value)
    if isinstance(value, tuple):
        return " ".join(part for part in value if part)
    return str(value)


def main():
    parser = argparse.ArgumentParser(description="Takes the path of a first visit.")
    parser.add_argument("--bin", required=True)
    parser.add_argument("--pictures", required=True)
    arguments = parser.parse_args()
    persons_own = {name: value for name, value in os.environ.items()
                   if name == "HOME" or name.startswith("XDG_") and name != "XDG_RUNTIME_DIR"}

    from driver.desktop import Desktop
    desktop = Desktop()
    tour = Tour(desktop, arguments.bin, arguments.pictures, {**desktop.environment, **persons_own})
    try:
        tour.take()
    except AssertionError as error:
        print(f"    WRONG: {error}", flush=True)
        desktop.screenshot(os.path.join(arguments.pictures, "wrong.png"))
        print(f"    Quarv wrote:\n{tour.quarv.process.log()}", flush=True)
        return 1
    finally:
        tour.quarv.end()
        desktop.end()
    print(f"Each of {tour.step} steps showed what it should.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
