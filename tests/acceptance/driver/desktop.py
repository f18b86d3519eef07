"""A private desktop: an X server on a free display, a window manager, a message bus and the
accessibility bus. One for each run, since the accessibility library binds to the first it meets."""

import os
import re
import shutil
import subprocess
import tempfile

from .picture import Picture
from .processes import Process
from .waiting import wait_until

# What the windows are made for.
SCREEN = "1440x900x24"


class Desktop:
    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="quarv-desktop-")
        self.environment = self._bare_environment()
        self._start_display()
        self._start_bus()
        self._processes.append(Process(["openbox", "--sm-disable"], self._log("openbox"),
                                       self.environment))
        self._processes.append(
            Process(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                    self._log("accessibility"), self.environment))
        wait_until("the window manager", self._window_manager_answers)
        # The accessibility library reads these when it is first imported.
        os.environ.update(self.environment)

    def end(self):
        for process in reversed(self._processes):
            process.end()
        shutil.rmtree(self.folder, ignore_errors=True)

    def screenshot(self, path, extents=None):
        """Writes a PNG of the screen, or of the rectangle extents (x, y, width, height)."""
        area = ["-a", ",".join(str(number) for number in extents)] if extents else []
        self._tool(["scrot", "--overwrite", *area, str(path)])

    def picture(self, extents):
        """The pixels of a rectangle of the screen."""
        path = os.path.join(self.folder, "picture.ppm")
        self.screenshot(path, extents)
        return Picture(path, extents)

    def click(self, x, y, double=False):
        repeat = ["--repeat", "2", "--delay", "60"] if double else []
        self._tool(["xdotool", "mousemove", str(x), str(y), "click", *repeat, "1"])

    def wheel_down(self, x, y, notches):
        self._tool(["xdotool", "mousemove", str(x), str(y), "click", "--repeat", str(notches),
                    "--delay", "60", "5"])

    def press(self, *keys):
        """Presses keys by their X names, combinations joined by a plus sign."""
        self._tool(["xdotool", "key", "--delay", "15", *keys])

    def press_holding(self, modifier, key):
        """Presses a key while another is held, and lets that one go last: a combination that is
        pressed as one lets its keys go in the order in which it names them."""
        self._tool(["xdotool", "keydown", modifier, "key", key, "keyup", modifier])

    def type(self, text):
        self._tool(["xdotool", "type", "--delay", "10", "--", text])

    def activate(self, title):
        """Brings the window with this title to the front."""
        self._with_window(title, "windowactivate", "--sync")

    def move_window(self, title, x, y):
        self._with_window(title, "windowmove", "--sync", str(x), str(y))

    def await_window(self, title, seconds=20):
        """Waits for a window with this title without asking its program, which may be busy."""
        self._with_window(title, seconds=seconds)

    def close_window(self, title):
        """Activates the window with this title and presses the window manager's key to close."""
        self.activate(title)
        self.press("alt+F4")

    def _bare_environment(self):
        self._processes = []
        runtime = os.path.join(self.folder, "runtime")
        os.mkdir(runtime, 0o700)
        return {
            "PATH": os.environ.get("PATH", "/usr/local/bin:/usr/bin:/bin"),
            "HOME": self.folder,
            "XDG_RUNTIME_DIR": runtime,
            "LC_ALL": "C.UTF-8",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_QPA_PLATFORM": "xcb",
        }

    def _log(self, name):
        return os.path.join(self.folder, name + ".log")

    def _start_display(self):
        # The X server picks a free display itself and says which: no race with another run.
        reader, writer = os.pipe()
        process = Process(["Xvfb", "-displayfd", str(writer), "-screen", "0", SCREEN, "-nolisten",
                           "tcp", "-noreset"], self._log("display"), self.environment,
                          pass_fds=[writer])
        self._processes.append(process)
        os.close(writer)
        os.set_blocking(reader, False)
        said = []

        def number():
            try:
                said.append(os.read(reader, 32).decode())
            except BlockingIOError:
                pass
            text = "".join(said)
            return text.strip() if text.endswith("\n") else None

        self.environment["DISPLAY"] = ":" + wait_until("the X server", number,
                                                          detail=process.log)
        os.close(reader)

    def _start_bus(self):
        process = Process(["dbus-daemon", "--session", "--nofork", "--nopidfile",
                           "--print-address=1"], self._log("bus"), self.environment,
                          stdout=subprocess.PIPE)
        self._processes.append(process)
        os.set_blocking(process.popen.stdout.fileno(), False)
        said = []

        def address():
            said.append(process.popen.stdout.read() or b"")
            text = b"".join(said).decode()
            return text.strip() if text.endswith("\n") else None

        self.environment["DBUS_SESSION_BUS_ADDRESS"] = wait_until("the message bus", address,
                                                                  detail=process.log)

    def _window_manager_answers(self):
        done = subprocess.run(["xdotool", "get_num_desktops"], env=self.environment,
                              capture_output=True, timeout=10, check=False)
        return done.returncode == 0

    def _with_window(self, title, *command, seconds=20):
        """Finds the window and does something to it. The search fails also where any window goes
        while it looks, so it is repeated."""
        arguments = ["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$",
                     *command]
        wait_until(f'the window "{title}" on the screen',
                   lambda: self._run(arguments).returncode == 0, seconds)

    def _tool(self, arguments):
        done = self._run(arguments)
        if done.returncode != 0:
            raise AssertionError(f"{arguments[0]} failed: {done.stderr.strip()}")

    def _run(self, arguments):
        return subprocess.run(arguments, env=self.environment, capture_output=True, text=True,
                              timeout=30, check=False)
