"""Stories of the main window on a server whose clients are listened to."""

from .recorder import Recorder
from .server import Tsql
from .story import Story
from .witness import Witness

DATABASE = "mirel"


class RecordedStory(Story):
    """Quarv asks the recorder, the witness asks the server itself."""

    def setUp(self):
        super().setUp()
        self.server = self.start_server()
        self.recorder = Recorder(self.server.host, self.server.port)
        self.addCleanup(self.recorder.end)
        address = f"{self.recorder.host},{self.recorder.port}"
        self.title = f"SQL Server {address} {DATABASE}"
        self.store(f"Provider=sqloledb;Data Source={address};Initial Catalog={DATABASE};"
                   f"User ID={self.server.login};Password={self.server.password};")
        self.other = Witness(Tsql(self.home.environment, self.server.host, self.server.port,
                                  self.server.login, self.server.password, DATABASE))
        self.open_main()

    def open_main(self):
        """Starts the program and opens both groups of the tree."""
        self.quarv = self.start_quarv()
        self.quarv.dialog().press("Okay")
        self.main = self.quarv.main_window(self.title)
        self.main.expand("Routines")
        self.main.expand("Tables")

    def close_main(self):
        self.main.close()
        self.assertEqual(0, self.quarv.exit_status())

    def open_query(self):
        self.main.press("Query")
        return self.quarv.query_window("Query: " + self.title)
