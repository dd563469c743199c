"""A scaled desktop, measured in the pixels of the screen: what has its millimetres keeps them, and a
click falls where it is made."""

from __future__ import annotations

import math
import struct
import unittest
import unittest.mock

from desk import KEY, T2_RT, Desk, patient_line  # which also finds the robot
import kelmoran_robot
from eyes import Picture
from forms import Place, form
from kelmoran_robot import Program, Robot
from monitors import scale_fonts
from virtual_screen import VirtualScreen
from waiting import holds_for, wait_for

PIXEL = 0.2  # mm: how large the screen's own pixels are, whatever the scaling
LIT = bytes(level >= 100 for level in range(256))
WIDTH, HEIGHT = 1280, 1024  # of the desktop, in its scaled pixels
RING = 250  # of the attention task's targets, in scaled pixels as all that follow
TARGET = 20


def lit(picture: Picture, part: Place) -> Place | None:
    """What is lit in a part of a picture; nothing if all is dark."""
    rows = []
    for y in range(max(part.y, 0), min(part.y + part.height, picture.height)):
        line = picture.line(y)[max(part.x, 0):part.x + part.width].translate(LIT)
        if 1 in line:
            rows.append((y, line.index(1), line.rindex(1)))
    if not rows:
        return None
    left, right = min(row[1] for row in rows), max(row[2] for row in rows)
    return Place(max(part.x, 0) + left, rows[0][0], right - left + 1, rows[-1][0] - rows[0][0] + 1)


class ScaledRobot(Robot):
    """Finds the widgets of the main window where the scaling has put them."""

    percent = 100

    @property
    def factor(self) -> float:
        return self.percent / 100

    def scaled(self, place: Place) -> Place:
        return Place(*(round(self.factor * value)
                       for value in (place.x, place.y, place.width, place.height)))

    def _main_place(self, widget: str) -> Place:
        return self.scaled(form("Kelmoran").place(widget)).moved(0, self._menu_height())

    def takes_entries(self) -> bool:
        box = self._main_place("cob_patientName")
        arrow = round(26 * self.factor)
        return self._is_dark(box.x + box.width - arrow, box.y + 4, arrow - 4, box.height - 8)

    def clear(self, check_box: str) -> None:
        window, box = self.main_window(), self._main_place(check_box)
        self.hands.click(window.x + box.x + round(8 * self.factor),
                         window.y + box.y + box.height // 2)


class ScaledDesk(Desk):
    """One scaling, in one of the ways by which a desktop tells it."""

    percent = 150
    way = "Xft.dpi"
    robot: ScaledRobot

    @classmethod
    def setUpClass(cls) -> None:
        cls.screen = VirtualScreen(WIDTH * cls.percent // 100, HEIGHT * cls.percent // 100)
        cls.enterClassContext(cls.screen)
        factor = cls.percent / 100
        cls.enterClassContext(unittest.mock.patch.object(
            kelmoran_robot, "MENU_BAR_AT_MOST", round(kelmoran_robot.MENU_BAR_AT_MOST * factor)))
        if cls.way == "Xft.dpi":
            scale_fonts(cls.screen, cls.percent)
            return
        environment = kelmoran_robot.program_environment
        cls.enterClassContext(unittest.mock.patch.object(
            kelmoran_robot, "program_environment",
            lambda *told: {**environment(*told), cls.way: f"{factor:g}"}))

    @property
    def factor(self) -> float:
        return self.percent / 100

    @property
    def centre(self) -> tuple[int, int]:
        return self.screen.width // 2, self.screen.height // 2

    def around(self, x: float, y: float, width: float, height: float) -> Place:
        """About a point that is told from the centre; all in scaled pixels."""
        f = self.factor
        return Place(round(self.centre[0] + f * (x - width / 2)),
                     round(self.centre[1] + f * (y - height / 2)), round(f * width),
                     round(f * height))

    def seen(self, mark: Place) -> Place | None:
        """What is lit on a part of the screen."""
        picture = self.robot.eyes.area(*self.within(mark))
        found = lit(picture, Place(0, 0, mark.width, mark.height))
        return found.moved(mark.x, mark.y) if found else None

    def steady(self, mark: Place) -> Place:
        """The same, once it stays so: nothing is half painted any more."""
        def look() -> Place | None:
            found = self.seen(mark)
            return found if found and holds_for(lambda: self.seen(mark) == found, 0.1) else None
        return wait_for("a still part of the screen", look)

    def within(self, mark: Place) -> tuple[int, int, int, int]:
        self.assertGreaterEqual(min(mark.x, mark.y), 0)
        return mark.x, mark.y, mark.width, mark.height

    def assert_length(self, seen: float, told: float, what: str) -> None:
        """In the screen's pixels. A length is whole in the scaled ones, and so half of one off at
        most; its edges may fall between two of the screen's."""
        self.assertLessEqual(abs(seen - told), 0.5 * self.factor + 0.5,
                             f"{what}: {seen} pixels, not {told:.1f}")

    def wait_pointer_at_centre(self) -> None:
        def is_there() -> bool:
            x, y = self.robot.eyes.pointer()
            return max(abs(x - self.centre[0]), abs(y - self.centre[1])) <= self.factor
        wait_for("the pointer in the middle of the screen", is_there)

    # What is done

    def enter(self, line: str, mark: Place, beyond: int) -> float:
        """Lays a ruler along a line, beyond which its marks reach by so many scaled pixels, types
        what it says, and returns the line's pixels."""
        wait_for(f"the {line} line", lambda: self.is_crossed(mark))
        found = self.steady(mark)
        length = max(found.width, found.height) - beyond * self.factor
        self.robot.hands.type(str(round(length * PIXEL)))
        self.robot.hands.press("Return")
        return length

    def is_crossed(self, mark: Place) -> bool:
        """Whether a line goes through most of a mark."""
        found = self.seen(mark)
        return found is not None and max(found.width, found.height) > max(mark.width, mark.height) / 2

    def calibrate(self) -> None:
        self.robot.wait_window("Calibration")
        across = self.enter("horizontal", self.around(0, 0, 1100, 24), 1)
        self.assert_length(across, 1000 * self.factor, "the horizontal line")
        up = self.enter("vertical", self.around(0, 0, 24, 520), 0)
        self.assert_length(up, 500 * self.factor, "the vertical line")
        self.robot.wait_gone("Calibration")
        pitches = struct.unpack(">iii", self.parameters("screen.pix").read_bytes())
        self.assertLessEqual(abs(pitches[0] - 1000 * PIXEL * self.factor), 1)
        self.assertLessEqual(abs(pitches[1] - 1000 * PIXEL * self.factor), 2)

    def start_measured(self, thresholds: tuple[int, int, int] = (0, 0, 0)) -> None:
        """The program on a screen that has just been measured, with a patient chosen."""
        self.has_patient(patient_line(thresholds=thresholds))
        program = Program(self.screen, self.root, self.locale)
        self.addCleanup(self.keep_trace, program)
        self.addCleanup(program.stop)
        self.robot = ScaledRobot(self.screen, program)
        self.robot.percent = self.percent
        self.calibrate()
        self.robot.wait_ready()
        self.robot.choose_patient(KEY)
        for box in ("cb_withInstruction", "cb_withTraining"):
            self.robot.clear(box)

    def start_task(self, test: int) -> None:
        self.robot.main_window()
        self.robot.hands.press("Control_L", str(test))
        self.robot.wait_window(f"Test{test}")
        beside = self.around(0, -120, 400, 20)  # a part of the main window
        wait_for("the task to cover all", lambda: self.seen(beside) is None)
        go = self.around(-62, 0, 15, 50)
        wait_for("the Go button", lambda: self.seen(go))
        self.wait_pointer_at_centre()
        self.robot.hands.click(*self.centre)

    def leave_task(self) -> None:
        self.robot.hands.press("Escape")
        self.robot.main_window()

    # The attention task

    def target(self) -> tuple[float, float] | None:
        """Where the target stands, from the centre, in scaled pixels."""
        for direction in range(8):
            angle = math.radians(45 * direction)
            x, y = RING * math.cos(angle), RING * math.sin(angle)
            if self.robot.eyes.is_bright(round(self.centre[0] + self.factor * x),
                                         round(self.centre[1] + self.factor * y)):
                return x, y
        return None

    def attention(self, trials: int = 2) -> None:
        self.start_task(2)
        before = len(self.rows())
        for trial in range(1, trials + 1):
            x, y = wait_for("a target", self.target)
            self.assertTrue(holds_for(lambda: self.target() is not None, 0.05))
            found = self.seen(self.around(x, y, 60, 60))
            assert found
            self.assert_length(found.width, TARGET * self.factor, "a target's width")
            self.assert_length(found.height, TARGET * self.factor, "a target's height")
            away = math.hypot(found.x + found.width / 2 - self.centre[0],
                              found.y + found.height / 2 - self.centre[1])
            # Its place is cut to whole pixels rather than rounded.
            self.assertLessEqual(abs(away - RING * self.factor), 1.5 * self.factor + 0.5)
            self.robot.hands.click(found.x, found.y)
            rows = self.wait_rows(before + trial)
            self.assertRegex(rows[-1][T2_RT].decode(), r"^\d+$")
        self.leave_task()


class ScaledScreen(ScaledDesk):
    def test_the_lines_and_the_targets_have_their_pixels(self) -> None:
        self.start_measured()
        self.attention(trials=1)


if __name__ == "__main__":
    unittest.main()
