"""A hand-started local server, and other programs that talk to it."""

import os
import subprocess

from .home import read_state
from .processes import Process
from .waiting import wait_until

LOGIN = "visitor"
PASSWORD = "Open Sesame 1"


class Server:
    """quarv-localdb in the foreground on a port of its own choosing, serving the sample."""

    def __init__(self, home, program):
        password_file = home.write("password", PASSWORD)
        log = home.path("server.log")
        os.makedirs(home.path("server"), exist_ok=True)
        self.process = Process([program, "serve", "--data", home.path("server"), "--listen",
                                "127.0.0.1:0", "--login", LOGIN, "--password-file", password_file,
                                "--sample"], log, home.environment)
        self.host, self.port = wait_until("the server to listen", self._address,
                                          detail=self.process.log)
        self.login = LOGIN
        self.password = PASSWORD

    def _address(self):
        for line in self.process.log().splitlines():
            if line.startswith("listening on "):
                return line.rsplit(" ", 1)[1].rsplit(":", 1)
        if not self.process.running():
            raise AssertionError("the server ended: " + self.process.log())
        return None

    def end(self):
        self.process.end()


def quoted(text):
    """As a literal of SQL."""
    return "'" + text.replace("'", "''") + "'"


# Types whose length says nothing, for every value may have it.
ENDLESS = ("text", "ntext", "image")


class Tsql:
    """FreeTDS's tsql, logged in for one script at a time."""

    def __init__(self, environment, host, port, login, password, database):
        self.environment = dict(environment, TDSVER="7.4")
        self.arguments = ["tsql", "-H", host, "-p", str(port), "-U", login, "-D", database, "-o",
                          "fhq", "-t", "|"]
        self.password = password

    def run(self, sql):
        """Exit status and everything that tsql wrote. The password goes in as typed, so that no
        list of processes shows it."""
        done = subprocess.run(self.arguments, input=f"{self.password}\n{sql}\ngo\nexit\n",
                              env=self.environment, text=True, capture_output=True, timeout=60,
                              start_new_session=True, check=False)
        return done.returncode, done.stdout + done.stderr

    def rows(self, sql):
        """The rows of a script's results, as tuples of texts."""
        status, output = self.run(sql)
        if status != 0 or "Msg " in output:
            raise AssertionError(f"tsql ended with status {status}: {output}")
        return [tuple(line.split("|")) for line in output.splitlines() if "|" in line]


    def tables(self):
        """What the tree lists under Tables, in the server's order."""
        return [row[2] for row in self.rows("exec sp_tables") if row[3] in ("TABLE", "VIEW")
                and row[1] not in ("sys", "INFORMATION_SCHEMA")]

    def procedures(self):
        return [row[2].split(";")[0] for row in self.rows("exec sp_stored_procedures")
                if row[1] not in ("sys", "INFORMATION_SCHEMA")]

    def columns(self, table):
        """A table's columns as the columns pane shows them: name, type, nullable, default."""
        rows = self.rows("select column_name, domain_name, data_type, character_maximum_length, "
                         "is_nullable, column_default from information_schema.columns "
                         f"where table_name={quoted(table)} order by ordinal_position")
        return [(name, shown_type(domain, kind, length), "Yes" if nullable == "YES" else "",
                 "" if default == "NULL" else default)
                for name, domain, kind, length, nullable, default in rows]


def shown_type(domain, kind, length):
    """A column's type in the pane: the alias type, if any, with what it stands for."""
    plain = kind if length == "NULL" or kind in ENDLESS else f"{kind}({length})"
    return plain if domain == "NULL" else f"{domain} [{plain}]"


def own_instance(environment, name, database):
    """tsql on the local server of this name that runs under this environment."""
    state = read_state(environment, name)
    if state is None:
        raise AssertionError(f"no local server {name} is running")
    return Tsql(environment, state["address"], state["port"], state["user"], state["secret"],
                database)


class Isql:
    """unixODBC's isql, over a data source of its own."""

    def __init__(self, home, host, port, login, password, database):
        folder = home.path("odbc")
        os.makedirs(folder, exist_ok=True)
        home.write("odbc/odbc.ini", f"[sample]\nDriver=FreeTDS\nServer={host}\nPort={port}\n"
                                    f"TDS_Version=7.4\nDatabase={database}\n")
        self.environment = dict(home.environment, ODBCINI=home.path("odbc/odbc.ini"))
        self.arguments = ["isql", "sample", login, password, "-b", "-v", "-d|"]

    def run(self, sql):
        done = subprocess.run(self.arguments, input=sql + "\n", env=self.environment, text=True,
                              capture_output=True, timeout=60, check=False)
        return done.returncode, done.stdout + done.stderr

    def rows(self, sql):
        status, output = self.run(sql)
        if status != 0 or "[ISQL]ERROR" in output:
            raise AssertionError(f"isql ended with status {status}: {output}")
        return [tuple(cell.strip() for cell in line.split("|"))
                for line in output.splitlines() if "|" in line]
