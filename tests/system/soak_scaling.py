"""The long form of test_scaling.py, for ./soak.sh: all four tasks at three scalings, each told in three
ways."""

from __future__ import annotations

import math
import time
import unittest

import test_scaling
from desk import FIGURE_ANSWER, POSITION_ANSWER, SUBTASK, T3_RT, T4_FIRST, T4_LAST
from eyes import Picture
from forms import Place, form
from test_scaling import PIXEL, lit
from waiting import holds_for, wait_for

# Millimetres.
FIGURE = (14, 15.4)
ARROW = (37.5, 25)
# Scaled pixels.
PAIR_WIDTH, PAIR_HEIGHT = 360, 160
ARROW_RING, BUTTON_RING = 336, 436
GRID, PATCH = 84, 42
INNER, OUTER, CROSS = 160, 380, 40

Point = tuple[float, float]


class FourTasks(test_scaling.ScaledDesk):
    """For the classes made below."""

    def pointer_is_shown(self) -> bool:
        return self.robot.eyes.pointer_is_shown()

    def wait_pointer(self, timeout: float = 20) -> None:
        wait_for("the pointer", self.pointer_is_shown, timeout)
        self.wait_pointer_at_centre()

    def button(self, form_name: str, widget: str, x: float, y: float) -> Place:
        size = form(form_name).place(widget)
        return self.around(x, y, size.width, size.height)

    def click(self, mark: Place) -> None:
        self.robot.hands.click(*mark.centre)

    def sizes(self, picture: Picture, part: Place) -> tuple[int, int] | None:
        found = lit(picture, part)
        return (found.width, found.height) if found else None

    # The visual perception task

    def stimulus(self) -> Picture | None:
        """A picture of the screen while a pair of figures or a ring of arrows is on it."""
        def shown() -> bool:
            return (self.seen(self.around(-20, -12, 10, 4)) is not None
                    or self.seen(self.around(ARROW_RING, 0, 8, 8)) is not None)
        def stands() -> bool:
            """As long as neither the mask is shown nor the buttons, which come with the pointer."""
            mask = self.around(-508, -380, 4, 4)
            return shown() and not self.seen(mask) and not self.pointer_is_shown()
        if not stands():
            return None
        time.sleep(0.1)  # longer than it is half painted
        picture = self.robot.eyes.whole()
        return picture if stands() else None

    def measure(self, picture: Picture) -> tuple[bool, bool]:
        """Measures what there is of a pair of figures, one of which is the standard one, and of a
        ring of arrows; returns what there is."""
        half = PAIR_WIDTH // 2
        sides = [self.sizes(picture, self.around(x, 0, half - 2, PAIR_HEIGHT))
                 for x in (-half / 2, half / 2)]
        ring = [self.sizes(picture, self.around(x, 0, 160, 160)) for x in (-ARROW_RING, ARROW_RING)]
        if sides[0] and sides[1]:
            wrong = min(max(abs(seen - told / PIXEL) for seen, told in zip(side, FIGURE))
                        for side in sides if side)
            self.assertLessEqual(wrong, 0.5 * self.factor + 0.5, f"figures of {sides}")
            self.off.append(wrong)
        for arrow in ring:
            if arrow:
                # Its points are cut to whole pixels at both ends; its outline is one wide.
                for seen, told in zip(arrow, ARROW):
                    off = abs(seen - told / PIXEL - self.factor)
                    self.assertLessEqual(off, 1.5 * self.factor + 0.5, f"an arrow of {seen}")
        return sides[0] is not None and sides[1] is not None, ring[0] is not None

    def vision(self) -> None:
        self.off: list[float] = []
        self.start_task(1)
        kinds = set()
        for trial in range(1, 4):
            picture = wait_for("a stimulus", self.stimulus, 20)
            kinds.add(self.measure(picture))
            self.wait_pointer()
            figure, place = (self.button("Test1", "pb_uniform", 0, 0),
                             self.button("Test1", "pb_pos1", -BUTTON_RING, 0))
            time.sleep(0.1)  # all buttons come at once
            asked = [mark for mark in (figure, place) if self.seen(mark)]
            for mark in asked:
                self.click(mark)
            row = self.wait_rows(trial)[-1]
            self.assertEqual((row[FIGURE_ANSWER], row[POSITION_ANSWER]),
                             (b"Id" if figure in asked else b"", b"ML" if place in asked else b""))
        self.assertEqual(kinds, {(True, False), (False, True), (True, True)})
        print(f"{self.way} {self.percent} %: a figure is {max(self.off):.2f} pixels off", flush=True)
        self.leave_task()

    # The movement detection task

    def movement(self) -> None:
        before = len(self.rows())
        self.start_task(3)
        patch = self.around(GRID, 0, 20, 20)
        wait_for("the field", lambda: self.seen(patch))
        picture = self.robot.eyes.whole()
        for column in (-4, -3, -2, -1, 1, 2, 3, 4):
            for row in (-4, 4):
                seen = self.sizes(picture, self.around(column * GRID, row * GRID, GRID - 2, GRID - 2))
                self.assertIsNotNone(seen)
                for side in seen or ():
                    self.assert_length(side, PATCH * self.factor, "a patch")

        def pressed() -> bool:
            self.robot.hands.press("space")
            return holds_for(self.pointer_is_shown, 0.2)
        wait_for("the pad", pressed, 20)
        self.wait_pointer_at_centre()
        size = form("Test3").place("pb_center").width
        self.click(self.button("Test3", "pb_center", size, 0))
        row = self.wait_rows(before + 1)[-1]
        self.assertRegex(row[T3_RT].decode(), r"^\d+$")
        self.leave_task()

    # The working memory task

    def cross(self) -> Point | None:
        """The middle of the cross that is shown in the ring, in the screen's pixels."""
        ring, middle = self.around(0, 0, 2 * OUTER, 2 * OUTER), round(INNER * self.factor)
        picture = self.robot.eyes.area(*self.within(ring))
        side, within = ring.width, (ring.width - middle) // 2
        found = [place for part in (Place(0, 0, side, within), Place(0, side - within, side, within),
                                    Place(0, within, within, middle),
                                    Place(side - within, within, within, middle))
                 if (place := lit(picture, part))]
        if not found:
            return None
        left, top = min(place.x for place in found), min(place.y for place in found)
        right = max(place.x + place.width for place in found)
        bottom = max(place.y + place.height for place in found)
        if abs(right - left - CROSS * self.factor) > 2 or abs(bottom - top - CROSS * self.factor) > 2:
            return None
        return ring.x + (left + right) / 2, ring.y + (top + bottom) / 2

    def watched_run(self) -> list[Point]:
        """The crosses up to the question; on a busy machine not all are seen."""
        wait_for("the pointer to go", lambda: not self.pointer_is_shown())
        crosses: list[Point] = []

        def look() -> bool:
            cross = self.cross()
            if cross and cross not in crosses[-1:]:
                crosses.append(cross)
            return self.pointer_is_shown()
        wait_for("the question", look, 40)
        self.wait_pointer_at_centre()
        return crosses or [self.centre]

    def memory(self) -> None:
        before = len(self.rows())
        self.start_task(4)
        for trial in range(1, 11):
            crosses = self.watched_run()
            for x, y in (crosses[-1], crosses[0]):
                self.robot.hands.click(math.floor(x), math.floor(y))
                time.sleep(0.2)  # a person's, from one question to the next
            row = self.wait_rows(before + trial)[-1]
            if len(crosses) == int(row[SUBTASK]) + 2:
                break
            wait_for("Continue", self.pointer_is_shown)
            self.robot.hands.press("c")
        else:
            self.fail("in no run all crosses were seen")
        for at in (T4_FIRST, T4_LAST):
            self.assertEqual(row[at].strip(), b"1.00", "mm; no less is told")
        self.leave_task()

    def everything(self) -> None:
        self.start_measured((3500, 3500, 3500))  # ms, long enough for a look
        self.vision()
        self.attention()
        self.movement()
        self.memory()


def load_tests(loader: unittest.TestLoader, *_: object) -> unittest.TestSuite:
    """A class for each scaling and way: a screen lasts as long as its class."""
    tests = unittest.TestSuite()
    for way in ("QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "Xft.dpi"):
        for percent in (125, 150, 200):
            made = type(f"{way.replace('.', '_')}_{percent}", (FourTasks,),
                        {"way": way, "percent": percent, "test_all_four_tasks": FourTasks.everything})
            tests.addTest(loader.loadTestsFromTestCase(made))
    return tests


if __name__ == "__main__":
    unittest.main()
