"""The connection dialog's button Create: what it refuses, asks and makes."""

from driver.quarv import SQL_ACCOUNT
from driver.server import LOGIN, PASSWORD, Tsql
from driver.story import Story

NOT_TESTED = "Please test the connection before attempting to Create a new database!!!"
EXISTS = "This database already exists!!! Create Failed"


class ConnectionDialogCreateStory(Story):
    def setUp(self):
        super().setUp()
        self.quarv = self.start_quarv()
        self.dialog = self.quarv.dialog()

    def create(self, name, title, text, answer="OK"):
        """Asks for a database of this name, and answers the box that comes of it."""
        self.dialog.enter(database=name)
        self.dialog.press("Create")
        box, said = self.quarv.message(title)
        self.assertEqual(text, said)
        self.quarv.answer(box, answer)

    def use_server(self):
        server = self.start_server()
        self.address = f"{server.host},{server.port}"
        self.other = Tsql(self.home.environment, server.host, server.port, LOGIN, PASSWORD,
                          "master")
        self.dialog.choose(SQL_ACCOUNT)
        self.dialog.enter(server=self.address, username=LOGIN, password=PASSWORD)

    def known(self):
        """The databases that the server names to whoever asks for its catalogues, in its order."""
        return [row[0] for row in self.other.rows("exec sp_tables '', '', '%'")]

    def test_what_is_no_name_or_no_server_is_refused(self):
        self.create("x", "Note", "You need a valid database name!")
        self.create("", "Note", "You need a valid database name!")
        self.dialog.enter(server="127.0.0.1,9")
        self.create("fresh", "Quarv", NOT_TESTED)
        self.dialog.enter(server="")
        self.create("fresh", "Quarv", NOT_TESTED)
        self.assertEqual("fresh", self.dialog.database())
        self.assertIsNone(self.stored())

    def test_a_database_is_made_once_and_opened(self):
        self.use_server()
        before = self.known()
        self.create("mirel", "Quarv", EXISTS)
        self.create("MIREL", "Quarv", EXISTS)
        question = "Are you sure you wish to create a database called [fresh]?"
        self.create("fresh", "Question", question, "No")
        self.assertEqual(before, self.known())
        self.create("fresh", "Question", question, "Yes")
        self.assertEqual({*before, "fresh"}, set(self.known()))
        self.assertEqual("fresh", self.dialog.database())
        self.create("fresh", "Quarv", EXISTS)
        self.dialog.enter(password="guess")
        self.create("more", "Quarv", NOT_TESTED)
        self.dialog.enter(password=PASSWORD, database="fresh")
        self.dialog.press("Test")
        box, _ = self.quarv.message("Test")
        self.quarv.answer(box, "OK")
        self.assertEqual(self.known(), self.dialog.databases())
        self.dialog.press("Okay")
        self.quarv.main_window(f"SQL Server {self.address} fresh")

    def test_what_the_server_says_against_it_is_told(self):
        self.use_server()
        before = self.known()
        self.create("fre]sh", "Question",
                    "Are you sure you wish to create a database called [fre]sh]?", "Yes")
        box, text = self.quarv.message("Quarv")
        self.assertIn(text, self.other.run("CREATE DATABASE [fre]sh]")[1])
        self.quarv.answer(box, "OK")
        self.assertEqual("fre]sh", self.dialog.database())
        self.assertEqual(before, self.known())

    def test_the_local_server_makes_one_for_the_windows_account(self):
        server = r"(localdb)\notes"
        self.dialog.enter(server=server)
        self.create("letters", "Question",
                    "Are you sure you wish to create a database called [letters]?", "Yes")
        self.dialog.press("Okay")
        self.quarv.main_window(f"SQL Server {server} letters").close()
        self.assertEqual(0, self.quarv.exit_status())
        self.assertEqual(f"Provider=sqloledb;Data Source={server};Initial Catalog=letters;"
                         "Integrated Security=SSPI;", self.stored())
