"""The working memory task on the whole screen, as its assessor and its patient see it.

A cross is found by its arms: two lines of 40 white pixels that cut one another in the middle. No
letter has such a run of white, nor have the thin lines of the fixation and of the guides.
"""

from __future__ import annotations

import math
import time
from dataclasses import dataclass

from eyes import Picture
from forms import Place, form
from kelmoran_robot import DARK, Robot
from task_screen import FRAME_HEIGHT, FRAME_WIDTH, TaskScreen
from waiting import RobotError, wait_for

SECTORS = 12
SECTOR_ANGLE = 30  # degrees

# Pixels.
CROSS = 40
HALF = CROSS // 2
INNER_RADIUS, OUTER_RADIUS = 180, 360
RING = 2 * (OUTER_RADIUS + HALF)  # every cross lies in this square
GUIDES = 2 * OUTER_RADIUS + 4
ASKED_WIDTH = 170  # of the text of a question; no cross reaches it
TOLD_WIDTH, TOLD_HEIGHT = 400, 40  # of the text that tells an example, at the lower left
LETTER_PARTS = 4  # rows at the head and at the foot of a letter

WHITE = 250
ARM = b"\1" * CROSS
TO_WHITE = bytes(level >= WHITE for level in range(256))

# Seconds. Who looks without a rest gets less of a busy machine, and misses a cross.
BETWEEN_LOOKS = 0.03
SLOW_LOOK = 0.05  # it takes 5 ms where nothing else runs
CROSS_FOR = 1000  # ms that a cross stands
LONG_CROSS = 3000  # ms, for slow looks

Point = tuple[int, int]


@dataclass(frozen=True)
class Run:
    """The crosses of a trial in their order, by their centres, and where the pointer was
    meanwhile."""
    crosses: list[Point]
    pointers: set[Point]
    pointer_was_shown: bool

    @property
    def first(self) -> Point:
        return self.crosses[0]

    @property
    def last(self) -> Point:
        return self.crosses[-1]


class MemoryTask(TaskScreen):
    form_name = "Test4"

    def __init__(self, robot: Robot) -> None:
        super().__init__(robot)
        self.at_continue = self.framed("pb_continue").centre

    # What is on the screen

    @property
    def instruction(self) -> Place:
        """The title and, in its place, the crosses of the example."""
        return self.ring

    @property
    def ring(self) -> Place:
        return self.square(RING)

    @property
    def guides(self) -> Place:
        return self.square(GUIDES)

    def square(self, side: int) -> Place:
        return Place(self.x - side // 2, self.y - side // 2, side, side)

    @property
    def frame(self) -> Place:
        """What the form's widgets stand in, and the text that tells an example, a little below."""
        return Place(self.x - FRAME_WIDTH // 2, self.y - FRAME_HEIGHT // 2,
                     FRAME_WIDTH, FRAME_HEIGHT + TOLD_HEIGHT)

    @property
    def told(self) -> Place:
        """The text that tells which cross of the example is shown."""
        return Place(self.frame.x, self.framed("lbl_localisation").y, TOLD_WIDTH, TOLD_HEIGHT)

    @property
    def asked(self) -> Place:
        """The text of the question at the upper left. Its label goes on into the ring."""
        label = self.framed("lbl_lastCross")
        return Place(label.x, label.y, ASKED_WIDTH, label.height)

    def question(self) -> str | None:
        """Which cross is asked for, "last" or "first", by the first letter of the question: an L is
        broad at its foot, an F at its head."""
        mark = self.asked
        picture = self.eyes.area(mark.x, mark.y, mark.width, mark.height)
        lines = [picture.line(y) for y in range(mark.height)]
        columns = [max(line[x] for line in lines) > DARK for x in range(mark.width)]
        if not any(columns):
            return None
        left = columns.index(True)
        right = columns.index(False, left)
        letter = [sum(level > DARK for level in line[left:right]) for line in lines]
        rows = [count for count in letter if count]
        head, foot = max(rows[:LETTER_PARTS]), max(rows[-LETTER_PARTS:])
        return "last" if foot > head else "first"

    def crosses(self) -> list[Point]:
        """The centres of the crosses in the ring, in pixels of the screen."""
        mark = self.ring
        return [(mark.x + x, mark.y + y)
                for x, y in crosses_in(self.eyes.area(mark.x, mark.y, mark.width, mark.height))]

    def guides_are_shown(self) -> bool:
        """The inner ring on all four sides; a cross covers one of them at most."""
        sides = ((0, -INNER_RADIUS), (INNER_RADIUS, 0), (0, INNER_RADIUS), (-INNER_RADIUS, 0))
        return all(self.eyes.area(self.x + x - 3, self.y + y - 3, 6, 6).brightest() > DARK / 2
                   for x, y in sides)

    def fixation_is_shown(self) -> bool:
        middle = self.square(CROSS)
        picture = self.eyes.area(middle.x, middle.y, middle.width, middle.height)
        return picture.brightest() > DARK / 2

    # What is done

    def watch_run(self, timeout: float = 40) -> Run:
        """Sees the crosses of a trial, up to the question for the last one. Two crosses that follow
        one another never stand at the same place."""
        seen: list[Point] = []
        pointers: set[Point] = set()
        pointer_shown: set[bool] = set()

        def look() -> bool:
            time.sleep(BETWEEN_LOOKS)
            here = self.crosses()
            if len(here) > 1:
                raise RobotError(f"{len(here)} crosses at a time")
            if here and here != seen[-1:]:
                seen.extend(here)
                pointers.add(self.eyes.pointer())
                pointer_shown.add(self.eyes.pointer_is_shown())
            return bool(seen) and not here and self.question() == "last"
        wait_for("the run and the question for its last cross", look, timeout)
        return Run(seen, pointers, True in pointer_shown)

    def wait_cross(self, timeout: float = 10) -> Point:
        return wait_for("a cross", self.crosses, timeout)[0]

    def point_at(self, place: Point, timeout: float = 10) -> None:
        """Clicks where a cross stood, and sees the cross come to the click."""
        self.hands.click(*place)
        wait_for("the cross at the click", lambda: place in self.crosses(), timeout)

    def answer(self, last: Point, first: Point) -> None:
        """Points at the two places in the order of the questions, and sees the trial end."""
        wait_for("the question for the last cross", lambda: self.question() == "last")
        self.point_at(last)
        wait_for("the question for the first cross", lambda: self.question() == "first")
        self.hands.click(*first)
        wait_for("the questions to go", lambda: self.question() is None)

    def press_continue(self) -> None:
        self.press_corner_button()
        self.wait_hidden(self.corner_button, "the Continue button")

    def wait_continue(self) -> None:
        self.wait_shown(self.corner_button, "the Continue button")

    def switch_guides(self) -> None:
        """Shows the assessor's guides or hides them, by the key S, and sees it done."""
        shown = self.guides_are_shown()
        self.hands.press("s")
        wait_for("the guides", lambda: self.guides_are_shown() != shown)
        self.robot.wait_still()

    def shorten(self, number: int | None = None) -> None:
        """Short waits, and if told a short test. A cross stands longer than it always
        does, and still longer on a busy machine, where it could be missed."""
        for edit, wait in {"le_timer01": 60, "le_timer03": 60, "le_timer05": 100}.items():
            self.set_parameter(edit, wait)
        slow = self._slowest_look() > SLOW_LOOK
        self.set_parameter("le_timer02", LONG_CROSS if slow else CROSS_FOR)
        if number is not None:
            self.set_parameter("le_number", number)

    def _slowest_look(self) -> float:
        times = [time.monotonic()]
        for _ in range(10):
            self.crosses()
            times.append(time.monotonic())
        return max(after - before for before, after in zip(times, times[1:]))

    def reads(self, edit: str, text: str) -> bool:
        """Whether an edit of the panel that only shows something holds this text."""
        self.hands.click(*form(self.form_name).place(edit).centre)
        return any(self._reads(text) for _ in range(3))

    def sector(self, place: Point) -> int:
        """Of a place in the ring, 1 to 12 clockwise from the top. The program cuts the place to
        whole pixels, but the angle was in whole degrees."""
        angle = math.degrees(math.atan2(place[0] - self.x, self.y - place[1]))
        return round(angle) % 360 // SECTOR_ANGLE + 1

    def radius(self, place: Point) -> float:
        return math.hypot(place[0] - self.x, place[1] - self.y)


def crosses_in(picture: Picture) -> list[Point]:
    """The centres of the crosses in a picture that no cross is cut by."""
    white = picture.data[1::4].translate(TO_WHITE)
    found: list[Point] = []
    at = white.find(ARM)
    while at >= 0:
        y, x = divmod(at, picture.width)
        # The two arms are two pixels wide: the upper pixel of the one across is above the middle.
        centre = x + HALF, y + 1
        if is_cross(white, picture.width, centre):
            found.append(centre)
        at = white.find(ARM, at + 1)
    return found


def is_cross(white: bytes, width: int, centre: Point) -> bool:
    """Whether the arm down is there, too."""
    x, y = centre
    above, below = y - HALF, y + HALF
    if above < 0 or below * width > len(white):
        return False
    column = white[above * width + x:below * width:width]
    return len(column) == CROSS and all(column)
