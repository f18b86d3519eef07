"""The base of every story: a home of its own, programs that end with it, and what they wrote in
front of whoever has to find out why it failed."""

import os
import signal
import subprocess
import unittest

from .gallery import Gallery
from .home import Home
from .quarv import Quarv
from .server import Server

STORY_SECONDS = 240
GENERAL = r"HKLM\Software\Kel\Quarv\General"


def smoke(method):
    """Marks the story that also runs under the sanitizers."""
    method.smoke = True
    return method


class Story(unittest.TestCase):
    desktop = None
    bin = None
    pictures = None

    def run(self, result=None):
        self.result = result
        return super().run(result)

    def setUp(self):
        signal.signal(signal.SIGALRM, self._out_of_time)
        signal.alarm(STORY_SECONDS)
        self.addCleanup(signal.alarm, 0)
        self.home = Home(self.desktop.environment)
        self.addCleanup(self.home.end)
        self.started = []
        self.addCleanup(self._end_programs)

    def start_quarv(self):
        log = self.home.path(f"quarv-{len(self.started)}.log")
        quarv = Quarv(self.desktop, self.home.environment, self.program("quarv"), log)
        self.started.append(quarv)
        return quarv

    def start_gallery(self, *arguments):
        log = self.home.path(f"gallery-{len(self.started)}.log")
        gallery = Gallery(self.desktop, self.home.environment, self.program("quarv-gallery"), log,
                          arguments)
        self.started.append(gallery)
        return gallery

    def start_server(self):
        server = Server(self.home, self.program("quarv-localdb"))
        self.started.append(server)
        return server

    def program(self, name):
        return os.path.join(self.bin, name)

    def registry(self, *arguments):
        """Runs quarv-reg; its exit status and output."""
        done = subprocess.run([self.program("quarv-reg"), *arguments], env=self.home.environment,
                              text=True, capture_output=True, timeout=30, check=False)
        return done.returncode, done.stdout + done.stderr

    def store(self, connection_string):
        status, output = self.registry("add", GENERAL, "ConnStr", connection_string)
        self.assertEqual(0, status, output)

    def stored(self):
        """The stored connection string; nothing where none is stored."""
        status, output = self.registry("query", GENERAL, "ConnStr")
        return output.rstrip("\n") if status == 0 else None

    def _out_of_time(self, _number, _frame):
        raise AssertionError(f"the story took longer than {STORY_SECONDS} s")

    def _failed(self):
        # While it is cleaned up a test case takes itself for passed; the result knows better.
        return self.id() in self.result.bad

    def _end_programs(self):
        if self._failed():
            picture = os.path.join(self.pictures, self.id().rsplit(".", 1)[-1] + ".png")
            os.makedirs(self.pictures, exist_ok=True)
            self.desktop.screenshot(picture)
            print(f"the screen at that moment: {picture}")
        for started in reversed(self.started):
            if self._failed():
                print(f"{started.process.name} wrote:\n{started.process.log()}")
            started.end()
