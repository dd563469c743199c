"""The movement detection task on the whole screen, as its assessor and its patient see it.

What a patient sees drift is measured here in pixels: where the lines of a patch stand at one look,
and where they stand at the next.
"""

from __future__ import annotations

import time
from dataclasses import dataclass

from eyes import Picture
from forms import Place
from kelmoran_robot import DARK, Robot
from task_screen import TaskScreen
from waiting import wait_for

PLACES = ("E", "SE", "S", "SW", "W", "NW", "N", "NE")
DIRECTIONS = ("E", "S", "W", "N")
WAYS = {"E": (1, 0), "S": (0, 1), "W": (-1, 0), "N": (0, -1)}
KEYS = {"E": "Right", "S": "Down", "W": "Left", "N": "Up"}
BUTTONS = {"E": "pb_right", "S": "pb_down", "W": "pb_left", "N": "pb_up", "?": "pb_center"}

# Pixels.
GRID = 84  # from the centre of a patch to the next
GRID_HALF = 4  # patches on each side of the centre
PATCH = 42  # the side of a patch
LINES = 15  # from a line of a patch to the next
FIELD = 2 * GRID_HALF * GRID + PATCH
FRAME = 62  # around one patch
RING = 2 * GRID + PATCH
HEAD_AT, HEAD_BESIDE = 10, 4  # a point in the arrow's head, where its shaft is too thin to reach

STEP = 0.015  # seconds; the lines move by a pixel in no less, unless the panel says so
# Lines that have moved by half their distance could as well have moved the other way.
SURELY_MOVED, SURELY_NOT_ROUND = 2, 7


@dataclass(frozen=True)
class Look:
    """The patches next to the centre, or all of them, and when they were seen."""
    began: float
    ended: float
    picture: Picture

    def patch(self, column: int, row: int) -> Picture:
        """Counted from the centre of the field, to the right and down."""
        middle = self.picture.width // 2
        return self.picture.part(middle + column * GRID - PATCH // 2,
                                 middle + row * GRID - PATCH // 2, PATCH, PATCH)


class MovementTask(TaskScreen):
    form_name = "Test3"

    def __init__(self, robot: Robot) -> None:
        super().__init__(robot)
        self._heads = {place: self._points_in_head(place) for place in PLACES}

    # What is on the screen

    @property
    def go(self) -> Place:
        """Between the arrow and the patch to the left of it, where the frame of the button goes
        through."""
        return Place(self.x - 60, self.y - 25, 30, 50)

    @property
    def mode(self) -> Place:
        """Without the lowest lines, which come close to the uppermost patches."""
        mark = self.framed("lbl_mode")
        return Place(mark.x, mark.y, mark.width, mark.height - 2)

    @property
    def results(self) -> Place:
        return self._above_patches("pb_results")

    @property
    def main_menu(self) -> Place:
        return self._above_patches("pb_mainMenu")

    def _above_patches(self, button: str) -> Place:
        """The upper edge of a button, which passes above the middle row of patches."""
        mark = self.framed(button)
        return Place(mark.x, mark.y, mark.width, (mark.height - PATCH) // 2)

    @property
    def field(self) -> Place:
        return self._square(FIELD)

    @property
    def pad(self) -> Place:
        middle = self.framed("pb_center")
        return self._square(3 * middle.width)

    def _square(self, side: int) -> Place:
        return Place(self.x - side // 2, self.y - side // 2, side, side)

    def field_is_shown(self) -> bool:
        return is_patch(self.look().patch(1, 1))

    def word_width(self) -> int:
        """From the first letter of the word at the top right to the last, pixels."""
        mark = self.mode
        picture = self.eyes.area(mark.x, mark.y, mark.width, mark.height)
        lit = [x for x in range(mark.width) if max(picture.data[4 * x + 1::4 * mark.width]) > DARK]
        return lit[-1] - lit[0] + 1 if lit else 0

    def frame_is_shown(self) -> bool:
        """The red frame of the instruction, around the patch at the bottom left."""
        x, y = self.x - GRID - FRAME // 2, self.y + GRID
        edge = self.eyes.area(x - 1, y - 10, 4, 20)
        return any(edge.rgb(column, 10)[0] > DARK > edge.rgb(column, 10)[1] for column in range(4))

    def pad_is_shown(self) -> bool:
        """The left edge of its middle button: a line where no arrow reaches, and no patch."""
        edge = self.eyes.area(self.x - 36, self.y - 20, 8, 40)
        return any(min(edge.data[4 * x + 1::4 * edge.width]) > DARK for x in range(edge.width))

    def look(self, side: int = RING) -> Look:
        mark = self._square(side)
        began = time.monotonic()
        picture = self.eyes.area(mark.x, mark.y, mark.width, mark.height)
        return Look(began, time.monotonic(), picture)

    def arrow(self) -> str | None:
        """The place to which the arrow points; nothing as long as there is none. The pad, whose
        middle could be taken for one, has no patches around it."""
        seen = self.look()
        if not is_patch(seen.patch(1, 1)):
            return None
        picture = seen.picture
        return next((place for place, points in self._heads.items()
                     if all(picture.is_bright(x, y) for x, y in points)), None)

    @staticmethod
    def _points_in_head(place: str) -> list[tuple[int, int]]:
        """Two points on both sides of the middle line of the head, in a picture of the ring."""
        along_x, along_y = offset_of(place)
        length = (along_x ** 2 + along_y ** 2) ** 0.5
        along_x, along_y = along_x / length, along_y / length
        return [(RING // 2 + round(HEAD_AT * along_x - side * HEAD_BESIDE * along_y),
                 RING // 2 + round(HEAD_AT * along_y + side * HEAD_BESIDE * along_x))
                for side in (1, -1)]

    # What is done

    def wait_arrow(self, timeout: float = 10) -> str:
        return wait_for("the arrow", self.arrow, timeout)

    def wait_pad(self) -> None:
        wait_for("the pad", self.pad_is_shown)

    def wait_no_pad(self) -> None:
        wait_for("the pad to go", lambda: not self.pad_is_shown())

    def wait_field(self) -> None:
        wait_for("the field", self.field_is_shown)

    def two_looks(self, side: int = RING, pixels: int = SURELY_MOVED) -> tuple[Look, Look]:
        """Two looks at the drift: in between every patch has moved by so many pixels at least, and
        not so far that its lines could be mistaken for one another."""
        first = [self.look(side)]

        def again() -> Look | None:
            second = self.look(side)
            if second.ended - first[0].began > SURELY_NOT_ROUND * STEP:
                first[0] = second  # too late for this pair
                return None
            way = moved(first[0].patch(1, 1), second.patch(1, 1))
            return second if max(abs(way[0]), abs(way[1])) >= pixels else None
        second = wait_for("the patches to drift", again)
        return first[0], second

    def direction(self, place: str) -> str | None:
        """Where a patch next to the centre drifts to."""
        first, second = self.two_looks()
        return direction_of(moved(first.patch(*offset_of(place)), second.patch(*offset_of(place))))

    def see(self) -> tuple[str, str | None]:
        """The place to which the arrow points, and the direction of the patch there."""
        place = self.wait_arrow()
        return place, self.direction(place)

    def space(self) -> None:
        """Says that the movement is seen, and sees the pad come."""
        self.hands.press("space")
        self.wait_pad()

    def answer(self, direction: str, by_mouse: bool = False) -> None:
        """Answers on the pad, and sees it go."""
        if by_mouse:
            self.click(self.framed(BUTTONS[direction]))
        else:
            self.hands.press(KEYS[direction])
        self.wait_no_pad()

    def shorten(self, number: int | None = None) -> None:
        """Short waits, and if told a short test."""
        for edit, wait in {"le_timer01": 20, "le_timer03": 20, "le_timer06": 200}.items():
            self.set_parameter(edit, wait)
        if number is not None:
            self.set_parameter("le_number", number)


def offset_of(place: str) -> tuple[int, int]:
    """In patches from the centre, to the right and down."""
    return ("E" in place) - ("W" in place), ("S" in place) - ("N" in place)


def all_patches() -> list[tuple[int, int]]:
    reach = range(-GRID_HALF, GRID_HALF + 1)
    return [(column, row) for row in reach for column in reach if (column, row) != (0, 0)]


def is_patch(picture: Picture) -> bool:
    """A patch is white with a few thin lines, and neither a button nor a word is."""
    return picture.bright_count() > PATCH * PATCH // 2


def lines_of(patch: Picture) -> tuple[int, int]:
    """Where the lines down a patch stand, and those across it: pixels from its edge to the first
    line, below LINES."""
    light = patch.data[1::4]
    columns = [sum(light[x::PATCH]) for x in range(2 * LINES)]
    rows = [sum(light[y * PATCH:(y + 1) * PATCH]) for y in range(2 * LINES)]
    return darkest(columns), darkest(rows)


def darkest(sums: list[int]) -> int:
    """Of the light of two spacings, the phase of the darkest pair of neighbours: so wide is a line
    at its darkest."""
    folded = [sums[at] + sums[at + LINES] for at in range(LINES)]
    return min(range(LINES), key=lambda at: folded[at] + folded[(at + 1) % LINES])


def moved(first: Picture, second: Picture) -> tuple[int, int]:
    """How far the lines of a patch have moved to the right and down, pixels, by the shorter way."""
    half = LINES // 2
    x, y = ((after - before + half) % LINES - half
            for before, after in zip(lines_of(first), lines_of(second)))
    return x, y


def direction_of(way: tuple[int, int]) -> str | None:
    """Nothing if the lines stand still or move in both ways."""
    x, y = way
    if (x == 0) == (y == 0):
        return None
    step = ((x > 0) - (x < 0), (y > 0) - (y < 0))
    return next(direction for direction, taken in WAYS.items() if taken == step)
