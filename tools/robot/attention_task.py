"""The attention task on the whole screen, as its assessor and its patient see it."""

from __future__ import annotations

import math

from kelmoran_robot import DARK, Robot
from task_screen import TaskScreen
from waiting import holds_for, wait_for

TARGET_RADIUS = 250
ASTERISK_AT_LEAST = 430  # it has 590 white pixels
ARROW_AT_LEAST = 150  # it has 270
SHORT_WAITS = {"le_timer01": 20, "le_timer02": 60, "le_timer03": 40, "le_timer05": 20}
DIRECTIONS = ("E", "SE", "S", "SW", "W", "NW", "N", "NE")


class AttentionTask(TaskScreen):
    form_name = "Test2"

    def __init__(self, robot: Robot) -> None:
        super().__init__(robot)
        self.targets = [self._target_place(direction) for direction in range(8)]

    def _target_place(self, direction: int) -> tuple[int, int]:
        angle = math.radians(45 * direction)
        return (self.x + int(TARGET_RADIUS * math.cos(angle)),
                self.y + int(TARGET_RADIUS * math.sin(angle)))

    # What is on the screen

    def target(self) -> int | None:
        """The direction of the target, an index into DIRECTIONS; nothing if it isn't up."""
        for direction, (x, y) in enumerate(self.targets):
            if self.eyes.is_bright(x, y):
                return direction
        return None

    def fixation(self) -> str | None:
        """What stands at the centre: cross, asterisk or arrow, told apart by how much of it is
        white. The lines of the cross are thin and nowhere quite white."""
        half = 30
        picture = self.eyes.area(self.x - half, self.y - half, 2 * half, 2 * half)
        white = picture.bright_count()
        if white > ASTERISK_AT_LEAST:
            return "asterisk"
        if white > ARROW_AT_LEAST:
            return "arrow"
        return "cross" if picture.brightest() > DARK / 2 else None

    # What is done

    def shorten(self, number: int | None = None) -> None:
        """Short waits, and if told a short test."""
        for edit, wait in SHORT_WAITS.items():
            self.set_parameter(edit, wait)
        if number is not None:
            self.set_parameter("le_number", number)

    def wait_target(self, timeout: float = 10) -> int:
        found: list[int] = []

        def look() -> bool:
            direction = self.target()
            if direction is not None:
                found.append(direction)
            return bool(found)
        wait_for("a target", look, timeout)
        return found[0]

    def wait_no_target(self) -> None:
        wait_for("the target to go", lambda: self.target() is None)

    def answer(self, by_mouse: bool = False) -> None:
        """Answers a target that is up, and sees it go. Not at once: no line runs through reaction
        times of 0 ms."""
        holds_for(lambda: self.target() is not None, 0.05)
        if by_mouse:
            self.hands.click(10, 700)
        else:
            self.hands.press("space")
        self.wait_no_target()
