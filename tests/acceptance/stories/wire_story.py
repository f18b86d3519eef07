"""Other programs' view of the local server: they log in and ask for its catalogue."""

from driver.server import Isql, LOGIN, PASSWORD, Tsql, quoted
from driver.story import Story


class WireStory(Story):
    def clients(self, password=PASSWORD):
        server = self.start_server()
        where = (server.host, server.port, LOGIN, password, "mirel")
        return Tsql(self.home.environment, *where), Isql(self.home, *where)

    def test_both_clients_run_the_catalogue_queries_and_agree(self):
        tsql, isql = self.clients()
        tables = [row[2] for row in tsql.rows("exec sp_tables") if row[3] == "TABLE"]
        self.assertTrue(tables)
        queries = ["exec sp_server_info 2", "exec sp_tables", "exec sp_stored_procedures"]
        queries += [f"select * from information_schema.columns where table_name={quoted(name)}"
                    " order by ordinal_position" for name in tables]
        for query in queries:
            rows = tsql.rows(query)
            self.assertTrue(rows, query)
            self.assertEqual([self.without_nulls(row) for row in rows],
                             [self.without_nulls(row) for row in isql.rows(query)], query)

    def test_a_wrong_password_is_refused(self):
        for client in self.clients(password="guess"):
            status, output = client.run("select 1")
            self.assertNotEqual(0, status, output)

    def test_an_unknown_name_is_refused_by_number(self):
        tsql, isql = self.clients()
        self.assertIn("Msg 208", tsql.run("select * from nowhere")[1])
        self.assertIn("Invalid object name 'nowhere'.", isql.run("select * from nowhere")[1])

    @staticmethod
    def without_nulls(row):
        """One client writes a missing value as a word, the other leaves it empty."""
        return tuple("" if cell == "NULL" else cell for cell in row)
