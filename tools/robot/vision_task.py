"""The visual perception task on the whole screen, as its assessor and its patient see it.

What a patient compares by eye is measured here in pixels: the sizes, corners and grey levels of the
two central figures, and the weight of the arrows' inner and outer ends.
"""

from __future__ import annotations

import math
import time
from dataclasses import dataclass

from eyes import Eyes, Picture
from forms import Place
from kelmoran_robot import DARK, Robot
from task_screen import TaskScreen
from waiting import holds_for, wait_for

KINDS = ("Id", "Sh", "Cn", "Or", "Sz")
FIGURE_BUTTONS = {"Id": "pb_uniform", "Sh": "pb_shape", "Cn": "pb_contrast",
                  "Or": "pb_orientation", "Sz": "pb_size"}
PLACES = ("TL", "ML", "BL", "TR", "MR", "BR")
ANGLES = (225, 180, 135, 315, 0, 45)
RING_RADIUS = 336
HALF_ARROW = 75  # at least half of an arrow's length, at most half of what lies between two
PAIR_WIDTH, PAIR_HEIGHT = 260, 140  # around the two figures
RING_WIDTH, RING_HEIGHT = 824, 624  # around the arrows
HOLDS = 0.05  # s, longer than anything is half painted


@dataclass(frozen=True)
class Figure:
    width: int
    height: int
    level: int
    has_corners: bool


@dataclass(frozen=True)
class Stimulus:
    """What a trial shows: the code of the pair (Id, ShL, ...) and of the place of the arrow that
    is turned, as far as there are any."""
    pair: str | None
    place: str | None
    picture: Picture

    @property
    def kind(self) -> str | None:
        return self.pair and self.pair[:2]


class VisionTask(TaskScreen):
    """The task behind one of its test buttons: 5 shows pairs, 6 arrows, 7 both at once, and 1 each
    of these in turn."""
    form_name = "Test1"

    def __init__(self, robot: Robot, button: int = 1) -> None:
        super().__init__(robot)
        self._has_pair = button in (5, 7)
        self._has_ring = button in (6, 7)

    # What is on the screen

    def centred(self, width: int, height: int) -> Place:
        return Place(self.x - width // 2, self.y - height // 2, width, height)

    @property
    def frame(self) -> Place:
        """What the mask covers."""
        return self.framed("lbl_noise")

    def mask_is_shown(self) -> bool:
        """Two opposite corners of the frame are white in nothing else."""
        return self._is_mask(self.eyes)

    def _is_mask(self, seen: Eyes | Picture) -> bool:
        mark = self.frame
        return (seen.is_bright(mark.x, mark.y)
                and seen.is_bright(mark.x + mark.width - 17, mark.y + mark.height - 1))

    def asks_figure(self) -> bool:
        return self._is_button(FIGURE_BUTTONS["Id"])

    def asks_place(self) -> bool:
        return self._is_button("pb_pos1")

    def _is_button(self, widget: str) -> bool:
        """Whether a button's left edge is there: a line all the way down, and nothing beside it.
        The squares of the mask give no such line."""
        mark = self.framed(widget)
        picture = self.eyes.area(mark.x, mark.y + 16, 12, mark.height - 32)
        return (all(max(picture.line(y)[:5]) > DARK for y in range(picture.height))
                and picture.part(5, 0, 7, picture.height).is_dark())

    def stimulus(self) -> Stimulus | None:
        """The stimulus, if there is one on the screen, and the whole of it."""
        if not self._has_something():
            return None
        picture = self.eyes.area(*self._place_of_ring())
        time.sleep(HOLDS)
        if (self.mask_is_shown() or self.asks_figure() or self.asks_place()
                or self.eyes.area(*self._place_of_ring()) != picture):
            return None
        pair, place = self._pair(picture), self._turned(picture)
        if (not pair and (self._has_pair or not place)) or (not place and self._has_ring):
            return None
        return Stimulus(pair, place, picture)

    def _place_of_ring(self) -> tuple[int, int, int, int]:
        mark = self.centred(RING_WIDTH, RING_HEIGHT)
        return mark.x, mark.y, mark.width, mark.height

    def _has_something(self) -> bool:
        """A point of the left figure beside the lines of the cross, or of the right arrow."""
        return self.eyes.is_bright(self.x - 15, self.y - 8) or self.eyes.is_bright(
            self.x + RING_RADIUS, self.y)

    def _pair(self, picture: Picture) -> str | None:
        left = (RING_WIDTH - PAIR_WIDTH) // 2
        top = (RING_HEIGHT - PAIR_HEIGHT) // 2
        sides = [self._figure(picture.part(x, top, PAIR_WIDTH // 2, PAIR_HEIGHT))
                 for x in (left, left + PAIR_WIDTH // 2)]
        if sides[0] is None or sides[1] is None:
            return None
        return compared(sides[0], sides[1])

    @staticmethod
    def _figure(half: Picture) -> Figure | None:
        """Measures the figure that stands alone on a picture. The cross is none: its middle is
        wider than the rest."""
        lines = [line for y in range(half.height) if any(line := half.line(y))]
        if not lines:
            return None
        middle, quarter = lines[len(lines) // 2].strip(b"\0"), lines[len(lines) // 4].strip(b"\0")
        if len(middle) != len(quarter):
            return None
        left = lines[len(lines) // 2].index(middle[0])
        return Figure(len(middle), len(lines), middle[len(middle) // 2], lines[0][left] == middle[0])

    def _turned(self, picture: Picture) -> str | None:
        """The place of the arrow whose head is nearer to the centre than its tail."""
        inner = []
        for angle in ANGLES:
            x = RING_WIDTH // 2 + int(RING_RADIUS * math.cos(math.radians(angle)))
            y = RING_HEIGHT // 2 + int(RING_RADIUS * math.sin(math.radians(angle)))
            arrow = picture.part(x - HALF_ARROW, y - HALF_ARROW, 2 * HALF_ARROW, 2 * HALF_ARROW)
            outside, inside = halves(arrow, angle)
            if not outside or not inside:
                return None
            inner.append(inside > outside)
        return PLACES[inner.index(True)] if inner.count(True) == 1 else None

    # What is done

    def wait_stimulus(self, timeout: float = 10) -> Stimulus:
        return wait_for("a stimulus", self.stimulus, timeout)

    def wait_mask(self) -> Picture:
        """The whole screen while the mask is on it."""
        return wait_for("the mask", self._masked)

    def _masked(self) -> Picture | None:
        if not self.mask_is_shown():  # a quick look: the mask is short
            return None
        screen = self.eyes.whole()
        return screen if self._is_mask(screen) else None

    def wait_asked(self) -> None:
        wait_for("the answer buttons", lambda: self.asks_figure() or self.asks_place())

    def answer(self, seen: Stimulus, right: bool = True) -> None:
        """Clicks the answer to what was seen, or a wrong one for each half that is asked for, and
        sees the buttons go."""
        self.wait_asked()
        holds_for(lambda: self.asks_figure() or self.asks_place(), 0.05)  # as a person would
        if seen.kind:
            shift = 0 if right else 1
            self.click_figure(KINDS[(KINDS.index(seen.kind) + shift) % len(KINDS)])
        if seen.place:
            shift = 0 if right else 1
            self.click_place(PLACES[(PLACES.index(seen.place) + shift) % len(PLACES)])

    def click_figure(self, kind: str) -> None:
        self.click(self.framed(FIGURE_BUTTONS[kind]))
        wait_for("the figure buttons to go", lambda: not self.asks_figure())

    def click_place(self, place: str) -> None:
        self.click(self.framed(f"pb_pos{PLACES.index(place)}"))
        wait_for("the place buttons to go", lambda: not self.asks_place())


def compared(left: Figure, right: Figure) -> str:
    """The code of a pair: the kind of the difference, and the side of the odd figure."""
    if left == right:
        return "Id"
    if left.level != right.level:
        return "CnL" if left.level < right.level else "CnR"
    if left.has_corners != right.has_corners:
        return "ShR" if left.has_corners else "ShL"
    if (left.width > left.height) != (right.width > right.height):
        return "OrL" if left.width > left.height else "OrR"
    return "SzL" if left.width < right.width else "SzR"


def halves(arrow: Picture, angle: float) -> tuple[int, int]:
    """How many pixels of an arrow are lit on its far half, seen from the centre of the screen, and
    how many on its near half. Its place is at this angle, which is neither up nor down."""
    outward = math.cos(math.radians(angle))
    slope = math.tan(math.radians(angle))
    left = right = 0
    for y in range(arrow.height):
        line = arrow.line(y)
        split = round(arrow.width / 2 - (y - arrow.height / 2) * slope)
        split = min(max(split, 0), arrow.width)
        left += split - line.count(0, 0, split)
        right += arrow.width - split - line.count(0, split)
    return (right, left) if outward > 0 else (left, right)
