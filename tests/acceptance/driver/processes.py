"""Child processes that cannot outlive us: each in a session of its own, its output in a log file,
all ended together however this program ends."""

import atexit
import os
import signal
import subprocess

_running = []


class Process:
    """One child. Its output goes to the file log; Log() reads it back."""

    def __init__(self, arguments, log, env=None, **options):
        self.name = os.path.basename(arguments[0])
        self.log_path = log
        with open(log, "ab") as out:
            options = {"stdin": subprocess.DEVNULL, "stdout": out, "stderr": out, **options}
            self.popen = subprocess.Popen(arguments, env=env, start_new_session=True, **options)
        self.pid = self.popen.pid
        _running.append(self)

    def running(self):
        return self.popen.poll() is None

    def status(self):
        """The exit status; nothing while it runs; the negative signal number when one ended it."""
        return self.popen.poll()

    def log(self):
        with open(self.log_path, encoding="utf-8", errors="replace") as text:
            return text.read()

    def end(self):
        """Ends the process and those it started, gently first. Does nothing the second time."""
        if self in _running:
            _running.remove(self)
        for number, patience in ((signal.SIGTERM, 3), (signal.SIGKILL, 3)):
            try:
                os.killpg(self.pid, number)
            except ProcessLookupError:
                break
            try:
                self.popen.wait(patience)
            except subprocess.TimeoutExpired:
                continue
        if self.popen.stdout:
            self.popen.stdout.close()
        self.popen.poll()


def end_all():
    for process in reversed(list(_running)):
        process.end()


def _ended_by_signal(number, _frame):
    raise SystemExit(128 + number)


atexit.register(end_all)
for _number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
    signal.signal(_number, _ended_by_signal)
