"""The main window on the local server: the tree, and what a click on it shows."""

from driver.server import own_instance
from driver.story import Story, smoke
from driver.witness import Witness

SAMPLE = (r"Provider=sqloledb;Data Source=(localdb)\quarv;Initial Catalog=mirel;"
          "Integrated Security=SSPI;")
TITLE = r"SQL Server (localdb)\quarv mirel"


class MainWindowStory(Story):
    @smoke
    def test_from_the_dialog_to_a_table_and_a_procedure(self):
        self.store(SAMPLE)
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual(r"(localdb)\quarv", dialog.server())
        dialog.press("Okay")
        main = quarv.main_window(TITLE)
        other = Witness(own_instance(self.home.environment, "quarv", "mirel"))

        self.assertTrue(main.nodes()[0].startswith(TITLE + " "), main.nodes())
        self.assertEqual(["Tables", "Routines"], main.nodes()[1:])
        main.expand("Routines")
        self.assertEqual(other.procedures(), main.group("Routines"))
        main.expand("Tables")
        tables = other.tables()
        self.assertEqual(tables, main.group("Tables", "Routines"))
        self.assertTrue(tables)
        for name in tables:
            main.show_table(name)
            self.assertEqual(other.columns(name), main.columns(name))
        self._look_at_rows(main, other)
        main.show_procedure("OrdersOfCustomer")
        self.assertEqual(other.source("OrdersOfCustomer"), main.source())
        main.close()
        self.assertEqual(0, quarv.exit_status())

    def _look_at_rows(self, main, other):
        main.show_table("Employees")
        self.assertEqual(other.indexes("Employees"), main.indexes("Employees"))
        self.assertEqual(other.rows("Employees"), main.records().rows())
        main.enter_condition("ManagerID = 1")
        rows = other.rows("Employees", "ManagerID = 1")
        main.records().await_rows(rows)
        main.records().write(0, 2, "Beorn", "Return")
        self.assertEqual(rows, other.rows("Employees", "ManagerID = 1"))

    def test_a_click_on_a_group_changes_nothing(self):
        self.store(SAMPLE)
        quarv = self.start_quarv()
        quarv.dialog().press("Okay")
        main = quarv.main_window(TITLE)
        main.expand("Tables")
        name = main.group("Tables", "Routines")[0]
        main.show_table(name)
        before = main.columns(name)
        main.node("Tables").click_left_end()
        main.node(main.nodes()[0]).click_left_end()
        self.assertEqual(before, main.columns(name))
