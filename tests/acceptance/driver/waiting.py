"""Waiting with a deadline: the only place that lets time pass."""

import time

INTERVAL = 0.05


class TimedOut(AssertionError):
    """What was waited for did not come in time."""


def wait_until(what, probe, seconds=20.0, detail=None):
    """The first true value of probe(). When the deadline passes, raises TimedOut naming what was
    waited for, with the answer of detail()."""
    deadline = time.monotonic() + seconds
    while True:
        seen = probe()
        if seen:
            return seen
        if time.monotonic() >= deadline:
            more = f": {detail()}" if detail else ""
            raise TimedOut(f"waited {seconds:g} s in vain for {what}{more}")
        time.sleep(INTERVAL)
