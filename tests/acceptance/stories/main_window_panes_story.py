"""The panes of the main window: each table and each procedure, as another client knows it."""

from driver.recorded import RecordedStory
from driver.witness import changed

CUSTOMERS = """CREATE TABLE Customers (
   CustomerID int,
   CustomerName nvarchar(80),
   City PlaceName  NULL,
   Country PlaceName ,
   CreditLimit decimal NULL,
   CustomerSince datetime,
   Notes nvarchar(400) NULL
)
"""
ORDERS_OF_CUSTOMER = """
CREATE PROCEDURE OrdersOfCustomer
    @CustomerID int,
    @Since datetime
AS
SELECT OrderID, OrderDate, ShippedDate, Freight
FROM Orders
WHERE CustomerID = @CustomerID AND OrderDate >= @Since
ORDER BY OrderDate DESC
"""


class PanesStory(RecordedStory):
    def test_each_table_is_shown_as_the_server_has_it(self):
        self.assertIn("Order Details", self.other.tables())
        self.assertEqual(self.other.tables(), self.main.group("Tables", "Routines"))
        self._click_each(self.other.tables(), self.main.show_table, "select top 100 * from [{}]",
                         self._compare_table)

    def test_each_procedure_is_shown_as_the_server_has_it(self):
        self.assertIn("OrdersOfCustomer", self.other.procedures())
        self.assertEqual(self.other.procedures(), self.main.group("Routines"))
        self._click_each(self.other.procedures(), self.main.show_procedure, "sp_help '{}'",
                         self._compare_procedure)

    def test_a_table_and_a_procedure_take_each_others_place(self):
        orders = ["Fields: Orders", "Indexes: Orders", "Records:Orders"]
        self.main.show_table("Orders")
        self.assertEqual(orders, self.main.panes())
        self.main.show_procedure("OrdersOfCustomer")
        caption = self.main.procedure()
        self.assertTrue(caption.startswith("dbo.OrdersOfCustomer, created "), caption)
        self.assertEqual([caption], self.main.panes())
        self.assertEqual("@CustomerID, @Since", self.main.parameters())
        self._script_is(ORDERS_OF_CUSTOMER)
        self.main.show_table("Orders")
        self.assertEqual(orders, self.main.panes())

    def test_script_opens_what_was_shown_last(self):
        self._script_is("")
        self.main.show_table("Customers")
        self._script_is(CUSTOMERS)
        self.main.show_procedure("OrdersOfCustomer")
        self._script_is(ORDERS_OF_CUSTOMER)
        # The window that is still open is filled anew.
        self.open_query().await_text("")
        self.desktop.activate(self.title)
        self.main.show_table("Customers")
        self._script_is(CUSTOMERS)

    def _click_each(self, names, show, batch, compare):
        """A click asks for what its batch names, nothing twice, and changes nothing."""
        before = self.other.dump()
        for name in names:
            said = len(self.recorder.statements())
            show(name)
            asked = self.recorder.statements()[said:]
            self.assertEqual(1, asked.count(("batch", batch.format(name))), asked)
            self.assertEqual(len(set(asked)), len(asked), asked)
            compare(name)
        self.assertEqual([], self.recorder.writes())
        self.assertEqual([], changed(before, self.other.dump()))

    def _compare_table(self, name):
        self.assertEqual([f"Fields: {name}", f"Indexes: {name}", f"Records:{name}"],
                         self.main.panes())
        self.assertEqual(self.other.columns(name), self.main.columns(name), name)
        self.assertEqual(self.other.indexes(name), self.main.indexes(name), name)
        rows = self.other.rows(name)
        self.assertTrue(rows, name)
        records = self.main.records()
        self.assertEqual(self.other.names(name), records.columns(), name)
        self.assertEqual(rows, records.rows(), name)
        self._script_is(self.other.script(name))

    def _compare_procedure(self, name):
        self.assertEqual([self.other.procedure(name)], self.main.panes())
        self.assertEqual(self.other.parameters(name), self.main.parameters(), name)
        source = self.other.source(name)
        self.assertIn(f"CREATE PROCEDURE {name}", source)
        self.assertEqual(source, self.main.source())
        self._script_is(source)

    def _script_is(self, text):
        query = self.main.script()
        query.await_text(text)
        query.close()
