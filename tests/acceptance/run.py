#!/usr/bin/python3
"""Tells the acceptance stories and closes on "N passed, N failed".

    run.py --bin FOLDER [--smoke] [NAME...]

FOLDER holds the programs. --smoke tells only the stories so marked; a NAME only those whose name
holds it."""

import argparse
import os
import sys
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))


class Telling(unittest.TestResult):
    """One line for each story as it ends, and why where it failed."""

    def __init__(self):
        super().__init__()
        self.bad = set()

    def startTest(self, test):
        super().startTest(test)
        self.began = time.monotonic()

    def stopTest(self, test):
        super().stopTest(test)
        word = "FAILED" if test.id() in self.bad else "passed"
        name = test.id().split(".", 1)[-1]
        print(f"{word}  {name} ({time.monotonic() - self.began:.1f} s)", flush=True)

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self._blame(test, self.failures[-1][1])

    def addError(self, test, err):
        super().addError(test, err)
        self._blame(test, self.errors[-1][1])

    def addSubTest(self, test, subtest, err):
        super().addSubTest(test, subtest, err)
        if err:
            self._blame(test, f"{subtest}\n{self._exc_info_to_string(err, subtest)}")

    def _blame(self, test, why):
        self.bad.add(test.id())
        print(why, flush=True)


def stories(suite, arguments):
    for entry in suite:
        if isinstance(entry, unittest.TestSuite):
            yield from stories(entry, arguments)
            continue
        method = getattr(entry, entry._testMethodName, None)
        if arguments.smoke and not getattr(method, "smoke", False):
            continue
        if not arguments.names or any(name in entry.id() for name in arguments.names):
            yield entry


def main():
    parser = argparse.ArgumentParser(description="Tells the acceptance stories.")
    parser.add_argument("--bin", required=True)
    parser.add_argument("--smoke", action="store_true")
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()

    # The desktop comes first: the accessibility library binds to the one that it finds.
    from driver.desktop import Desktop
    desktop = Desktop()
    from driver.story import Story
    Story.desktop = desktop
    Story.bin = os.path.abspath(arguments.bin)
    Story.pictures = os.path.join(ROOT, "build", "acceptance")

    found = unittest.defaultTestLoader.discover(os.path.join(HERE, "stories"), "*_story.py",
                                                os.path.join(HERE, "stories"))
    chosen = unittest.TestSuite(stories(found, arguments))
    result = Telling()
    try:
        chosen.run(result)
    finally:
        desktop.end()
    failed = len(result.bad)
    print(f"{result.testsRun - failed} passed, {failed} failed")
    return 0 if result.testsRun > 0 and failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
