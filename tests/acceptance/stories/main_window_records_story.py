"""The rows of a table in the main window: narrowed by conditions and edited, and never changed."""

from driver.recorded import RecordedStory
from driver.waiting import wait_until
from driver.witness import changed


class RecordsStory(RecordedStory):
    def test_what_is_typed_into_cells_never_reaches_the_database(self):
        before = self.other.dump()
        self._edit_products()
        self._nothing_was_written(before)
        self._leave_open_cells()
        self.main.show_procedure("OpenOrders")
        self._nothing_was_written(before)
        self._a_write_is_noticed(before)

    def _nothing_was_written(self, before):
        self.assertEqual([], self.recorder.writes())
        self.assertEqual([], changed(before, self.other.dump()))

    def _edit_products(self):
        self.main.show_table("Products")
        grid = self.main.records()
        grid.write(0, 1, "Nilgiri Thaw", "Return")
        grid.write(0, 1, "Nilgiri Flood", "Tab")
        grid.write(1, 0, "2000", "Tab")
        grid.write(2, 4, "93.5", "Down")
        grid.write(3, 1, "It's [not] sent", "Up")
        grid.write(1, 8, "null before", "Tab")
        edited = grid.rows()
        self.assertEqual(("1", "Nilgiri Flood"), edited[0][:2])
        self.assertEqual(("2000", "null before"), (edited[1][0], edited[1][8]))
        self.assertEqual("93.5", edited[2][4])

    def _leave_open_cells(self):
        """The grid is filled anew while one of its cells is being edited."""
        self.main.records().click(4, 1)
        self.desktop.type("left for the condition")
        self.main.enter_condition("ProductID < 6")
        self.main.records().await_rows(self.other.rows("Products", "ProductID < 6"))
        self.main.records().click(2, 1)
        self.desktop.type("left for another table")
        self.main.show_table("Orders")
        self.main.show_table("Products")
        self.assertEqual(self.other.rows("Products"), self.main.records().rows())

    def _a_write_is_noticed(self, before):
        """Typed where it is sent, a write is heard and seen."""
        query = self.open_query()
        update = "Update Categories set Description = N'sent' where CategoryID = 5"
        query.write(update)
        query.run()
        wait_until("the write to be heard",
                   lambda: self.recorder.writes() == [("batch", update)],
                   detail=self.recorder.writes)
        wait_until("the write to be done",
                   lambda: changed(before, self.other.dump()) == ["Categories"])

    def test_a_condition_narrows_the_rows(self):
        self.main.show_table("Orders")
        self._narrow("OrderID > 1010")
        self._narrow(" ShippedDate is null ")
        said = len(self.recorder.batches())
        self.main.enter_condition("   ")
        self.main.records().await_rows(self.other.rows("Orders"))
        self.assertIn("select top 100 * from [Orders]", self.recorder.batches()[said:])
        conditions = [" ShippedDate is null ", "OrderID > 1010"]
        self.assertEqual(conditions, self.main.conditions())
        # A click takes no notice of what stands in the box, and leaves it there.
        self._narrow("OrderID > 1010")
        self.main.show_table("Customers")
        self.assertEqual("OrderID > 1010", self.main.condition().text())
        self.assertEqual(self.other.rows("Customers"), self.main.records().rows())
        self.assertEqual([], self.recorder.writes())

    def _narrow(self, condition):
        self.main.enter_condition(condition)
        rows = self.other.rows("Orders", condition)
        self.assertTrue(0 < len(rows) < len(self.other.rows("Orders")), rows)
        self.main.records().await_rows(rows)
        self.assertIn("select top 100 * from [Orders] where " + condition,
                      self.recorder.batches())

    def test_the_second_start_offers_the_conditions_of_the_first(self):
        self.assertEqual([], self.conditions_of("Orders"))
        for condition in ("Freight > 50", "OrderID = 1001", "Freight > 50"):
            self._narrow(condition)
        self.close_main()

        self.open_main()
        self.assertEqual(["Freight > 50", "OrderID = 1001"], self.conditions_of("Orders"))
        self.assertEqual("", self.main.condition().text())
        self.main.choose_condition("OrderID = 1001")
        self.assertEqual(self.other.rows("Orders"), self.main.records().rows())
        self.desktop.press("Return")
        self.main.records().await_rows(self.other.rows("Orders", "OrderID = 1001"))
        self.assertEqual(["OrderID = 1001", "Freight > 50"], self.main.conditions())

    def conditions_of(self, table):
        self.main.show_table(table)
        return self.main.conditions()

    def test_a_wrong_condition_is_told_and_the_window_goes_on(self):
        self.main.show_table("Orders")
        rows = self.main.records().rows()
        for condition, error in (
                ("nonsense = 1", "Invalid column name 'nonsense'."),
                ("OrderID >", "Incorrect syntax near '>'."),
                # A message box breaks its lines at this sign.
                ("OrderID = 'a|b'", "Conversion failed when converting the varchar value "
                                    "'a\nb' to data type int.")):
            self.main.enter_condition(condition)
            box, text = self.quarv.message("Note")
            self.assertEqual("Error: " + error, text)
            self.quarv.answer(box, "OK")
            self.assertEqual(condition, self.main.condition().text())
        self._narrow("OrderID > 1010")
        self.main.show_table("Orders")
        self.assertEqual(rows, self.main.records().rows())

    def test_what_was_dropped_meanwhile_leaves_the_window_working(self):
        self.main.show_table("Orders")
        status, output = self.other.run("drop table Currencies\ndrop procedure OpenOrders")
        self.assertEqual((0, ""), (status, output.replace("Password: ", "")))
        self._click_in_vain("Currencies", "The object 'Currencies' does not exist")
        self.assertEqual([], self.main.columns("Currencies"))
        self.main.show_table("Customers")
        self.assertEqual(self.other.rows("Customers"), self.main.records().rows())
        self.assertEqual(self.other.indexes("Customers"), self.main.indexes("Customers"))

        self.main.show_procedure("OrdersOfCustomer")
        self._click_in_vain("OpenOrders", "Either BOF or EOF is True")
        self.assertEqual(self.other.procedure("OrdersOfCustomer"), self.main.procedure())
        self.main.show_procedure("ProductsOfCategory")
        self.assertEqual("@CategoryName", self.main.parameters())
        self.close_main()

    def test_a_lost_server_leaves_the_window_working(self):
        self.main.show_table("Orders")
        self.server.end()
        for name in ("Customers", "Products"):
            self._click_in_vain(name, "-2147467259: ")
        self.close_main()

    def _click_in_vain(self, name, complaint):
        """Clicks a node; the program's log tells why it has nothing to show, and no box does."""
        written = len(self.quarv.process.log())
        self.main.node(name).click_left_end()
        wait_until(f'"{complaint}" in the log',
                   lambda: complaint in self.quarv.process.log()[written:],
                   detail=self.quarv.process.log)
        # A box would be there before the window answers again.
        self.main.nodes()
        self.assertEqual([self.title], self.quarv.titles())
