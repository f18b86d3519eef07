"""The main window: a real database's tree and a table's columns."""

from driver.story import Story, smoke
from driver.server import own_instance

SAMPLE = (r"Provider=sqloledb;Data Source=(localdb)\quarv;Initial Catalog=mirel;"
          "Integrated Security=SSPI;")
TITLE = r"SQL Server (localdb)\quarv mirel"


class MainWindowStory(Story):
    @smoke
    def test_from_the_dialog_to_the_columns_of_a_table(self):
        self.store(SAMPLE)
        quarv = self.start_quarv()
        dialog = quarv.dialog()
        self.assertEqual(r"(localdb)\quarv", dialog.server())
        dialog.press("Okay")
        main = quarv.main_window(TITLE)
        other = own_instance(self.home.environment, "quarv", "mirel")

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
        main.close()
        self.assertEqual(0, quarv.exit_status())

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
