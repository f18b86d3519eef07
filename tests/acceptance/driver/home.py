"""A home of its own for one story: the program finds no trace of the person's settings there, and
leaves none behind."""

import os
import shutil
import signal
import tempfile

from .waiting import TimedOut, wait_until


class Home:
    """Folders under one temporary folder, and the environment that points at them."""

    def __init__(self, desktop_environment):
        self.folder = tempfile.mkdtemp(prefix="quarv-home-")
        self.environment = dict(desktop_environment)
        self.environment["HOME"] = self.folder
        for variable, name in (("XDG_CONFIG_HOME", "config"), ("XDG_DATA_HOME", "data"),
                               ("XDG_CACHE_HOME", "cache"), ("XDG_STATE_HOME", "state"),
                               ("XDG_CONFIG_DIRS", "machine"), ("TMPDIR", "tmp")):
            path = os.path.join(self.folder, name)
            os.mkdir(path)
            self.environment[variable] = path
        # The sanitizers' settings, for a program built with them.
        for variable in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"):
            if variable in os.environ:
                self.environment[variable] = os.environ[variable]

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text, mode=0o600):
        with open(os.open(self.path(name), os.O_CREAT | os.O_WRONLY | os.O_TRUNC, mode), "w",
                  encoding="utf-8") as out:
            out.write(text)
        return self.path(name)

    def end(self):
        """Ends the local servers started from here, then removes everything."""
        for instance in instances(self.environment):
            end_instance(instance)
        shutil.rmtree(self.folder, ignore_errors=True)


def instance_folder(environment):
    data = environment.get("XDG_DATA_HOME") or os.path.join(environment["HOME"], ".local/share")
    return os.path.join(data, "quarv", "localdb")


def instances(environment):
    """The state of each local server started under this environment, as dictionaries."""
    folder = instance_folder(environment)
    names = os.listdir(folder) if os.path.isdir(folder) else []
    return [state for state in (read_state(environment, name) for name in names) if state]


def read_state(environment, name):
    """What the named local server says of itself; nothing where it has said nothing yet."""
    try:
        with open(os.path.join(instance_folder(environment), name, "state"),
                  encoding="utf-8") as lines:
            return dict(line.rstrip("\n").split("=", 1) for line in lines if "=" in line)
    except FileNotFoundError:
        return None


def end_instance(state):
    """Ends a local server by what its state says; a number that meanwhile is another program's is
    left alone."""
    pid = int(state["pid"])
    for number in (signal.SIGTERM, signal.SIGKILL):
        if not _is_local_server(pid):
            return
        try:
            os.kill(pid, number)
            wait_until("a local server to end", lambda: not _is_local_server(pid), 5)
        except (ProcessLookupError, TimedOut):
            continue


def _is_local_server(pid):
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8") as stat:
            name, rest = stat.read().split("(", 1)[1].rsplit(")", 1)
    except FileNotFoundError:
        return False
    # A program that has ended and waits to be collected has no life left to end.
    return name.startswith("quarv-localdb") and rest.split()[0] != "Z"
