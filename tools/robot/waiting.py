"""Waiting for something to be so, by short looks and with a time-out."""

from __future__ import annotations

import time
from typing import Callable, TypeVar

T = TypeVar("T")

LOOK_EVERY = 0.002


class RobotError(Exception):
    """What the robot expected didn't come; the text says what, in one line."""


def wait_for(what: str, look: Callable[[], T | None], timeout: float = 10.0) -> T:
    """Looks until `look` gives something true, and returns it."""
    end = time.monotonic() + timeout
    while True:
        late = time.monotonic() > end  # before the look: the machine may stand still during one
        seen = look()
        if seen:
            return seen
        if late:
            raise RobotError(f"waited {timeout:g} s in vain for {what}")
        time.sleep(LOOK_EVERY)


def holds_for(look: Callable[[], bool], seconds: float) -> bool:
    """Whether something is so, and stays so for a while."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if not look():
            return False
        time.sleep(LOOK_EVERY)
    return True
