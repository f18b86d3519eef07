"""The query window: SQL typed and run, in part and whole, and script files."""

from driver.server import own_instance
from driver.story import Story
from driver.waiting import wait_until
from driver.widgets import seen

SAMPLE = (r"Provider=sqloledb;Data Source=(localdb)\quarv;Initial Catalog=mirel;"
          "Integrated Security=SSPI;")
TITLE = r"SQL Server (localdb)\quarv mirel"

PRODUCTS = ("select ProductID, ProductName, convert(varchar(20), UnitPrice) as Price, WeightKg, "
            "SupplierID + 0 from Products where ProductID < 30 order by ProductID")


class QueryWindowStory(Story):
    def setUp(self):
        super().setUp()
        self.store(SAMPLE)
        self.quarv = self.start_quarv()
        self.quarv.dialog().press("Okay")
        self.main = self.quarv.main_window(TITLE)
        self.other = own_instance(self.home.environment, "quarv", "mirel")

    def open_query(self):
        self.main.press("Query")
        return self.quarv.query_window("Query: " + TITLE)

    def test_what_is_typed_is_run_whole_or_in_part(self):
        query = self.open_query()
        query.write(PRODUCTS)
        query.run()
        expected = self.other.rows(PRODUCTS)
        self.assertTrue(expected)
        query.await_rows(expected)
        self.assertEqual(("ProductID", "ProductName", "Price", "WeightKg", "(No column name)"),
                         query.columns())

        # Only the second line is selected.
        query.write("select 1 as One\nselect nchar(1076) + 'a' as Two, null as Three")
        self.desktop.press("shift+Home", "F5")
        query.await_rows([("дa", "NULL")])
        # With a modifier the key is another one.
        query.write("select 4")
        self.desktop.press_holding("shift", "F5")
        self.desktop.press_holding("ctrl", "F5")
        # What came after the keys is seen, so they were.
        self.desktop.press("space")
        wait_until("the keys to be seen", lambda: seen(query.box().text) == "select 4 ")
        self.assertEqual([("дa", "NULL")], query.rows())
        query.press("Run Query")
        query.await_rows([("4",)])
        query.write("select 5 union all select 6")
        query.click_cell(0, 0)
        query.run()
        query.await_rows([("5",), ("6",)])

    def test_a_wrong_query_is_told_and_the_rows_stay(self):
        query = self.open_query()
        query.write("select 7 as Seven")
        query.run()
        query.await_rows([("7",)])
        query.write("select * from NoSuchTable")
        query.run()
        box, text = self.quarv.message("Run")
        self.assertEqual("Invalid object name 'NoSuchTable'.", text)
        self.quarv.answer(box, "OK")
        self.assertEqual([("7",)], query.rows())
        # The rows come first, then the error behind them.
        query.write("select 8 as Eight; select 1 / 0")
        query.run()
        box, text = self.quarv.message("Run")
        self.assertEqual("Divide by zero error encountered.", text)
        self.quarv.answer(box, "OK")
        query.await_rows([("8",)])

    def test_a_block_is_copied_with_its_headers(self):
        query = self.open_query()
        query.write("select 1 as A, 'x' as B union all select 2, 'y'")
        query.run()
        query.await_rows([("1", "x"), ("2", "y")])
        query.click_cell(0, 0)
        self.desktop.press("shift+Down", "shift+Right", "ctrl+shift+c")
        query.box().click()
        self.desktop.press("ctrl+a", "ctrl+v")
        wait_until("the block in the box",
                   lambda: seen(query.box().text) == "A\tB\n1\tx\n2\ty\n",
                   detail=lambda: repr(seen(query.box().text)))

    def test_the_end_of_a_long_result_is_reached_by_one_key(self):
        query = self.open_query()
        query.write("select top 5000 a.ProductID from Products a, Products b, Products c")
        query.run()
        wait_until("the first rows", lambda: seen(query.row_count))
        self.assertLess(query.row_count(), 200)
        query.click_cell(0, 0)
        self.desktop.press("ctrl+End")
        wait_until("the last row", lambda: seen(query.row_count) == 5000,
                   detail=lambda: seen(query.row_count))

    def test_script_files_run_batch_by_batch(self):
        query = self.open_query()
        path = self.home.write("good.sql",
                               "create table Visits (Id int, Who nvarchar(20))\r\nGO\r\n"
                               "insert Visits values (1, N'Ада')\r\ngo -- one more\r\n"
                               "select * from Visits\r\ninsert Visits values (2, N'Бо')\r\n")
        query.run_script(path)
        box, text = self.quarv.message("Quarv")
        self.assertEqual("Complete", text)
        self.quarv.answer(box, "OK")
        self.assertEqual([("1", "Ада"), ("2", "Бо")],
                         self.other.rows("select * from Visits order by Id"))

        path = self.home.write("bad.sql", "insert Visits values (3, N'В')\ngo\n"
                                          "insert Visits values (4, 5, 6)\ngo\n"
                                          "insert Visits values (7, N'Г')\n")
        query.run_script(path)
        box, text = self.quarv.message("Quarv")
        self.assertIn(text, self.other.run("insert Visits values (4, 5, 6)")[1])
        self.quarv.answer(box, "OK")
        self.assertEqual([("1", "Ада"), ("2", "Бо"), ("3", "В")],
                         self.other.rows("select * from Visits order by Id"))

    def test_the_window_is_refilled_and_outlives_its_closing(self):
        query = self.open_query()
        query.write("select 1")
        query.close()
        name = "Products"
        self.main.expand("Tables")
        self.main.show_table(name)
        self.main.press("Script")
        query = self.quarv.query_window("Query: " + TITLE)
        self.assertTrue(query.box().text().startswith("CREATE TABLE"), query.box().text())
