"""The first start, and the measuring of the screen."""

import struct
import unittest

from desk import HEADER, Desk
from waiting import wait_for


class Calibration(Desk):
    def values(self) -> tuple[int, ...]:
        data = self.parameters("screen.pix").read_bytes()
        self.assertEqual(len(data), 12)
        return struct.unpack(">iii", data)

    def refuse(self, value: str, line: str) -> None:
        """Types a value that is refused, and closes the box that says so."""
        self.robot.enter_line(value, line)
        box = self.robot.wait_window("Error")
        self.assertLess(box.width, self.screen.width)
        self.robot.hands.press("Return")
        self.robot.wait_gone("Error")

    def first_start(self) -> None:
        self.robot = self.start()
        self.robot.wait_window("Calibration")

    def test_the_first_start_makes_the_files_and_opens_the_calibration(self) -> None:
        self.first_start()
        window = self.robot.wait_window("Calibration")
        self.assertEqual((window.x, window.y), (0, 0))
        self.assertEqual((window.width, window.height), (self.screen.width, self.screen.height))
        self.assertEqual((self.root / "Results" / "output.csv").read_bytes(), HEADER)
        self.assertEqual(self.parameters("patients_list.txt").read_bytes(), b"")
        self.assertEqual(self.values(), (0, 0, 0))

    def test_a_line_of_270_and_one_of_135_are_kept_as_270_and_270(self) -> None:
        self.first_start()
        self.robot.calibrate("270", "135")
        self.assertEqual(self.values(), (270, 270, 0))
        self.robot.wait_ready()

    def test_99_is_refused_and_100_is_taken_at_the_first_line(self) -> None:
        self.first_start()
        self.refuse("99", "horizontal")
        self.assertEqual(self.values(), (0, 0, 0))
        self.robot.enter_line("100", "horizontal")
        wait_for("the vertical line", lambda: self.robot.line_shown() == "vertical")

    def test_49_is_refused_and_50_is_taken_at_the_second_line(self) -> None:
        self.first_start()
        self.robot.enter_line("100", "horizontal")
        self.refuse("49", "vertical")
        self.assertEqual(self.values(), (0, 0, 0))
        self.robot.calibrate("100", "50")
        self.assertEqual(self.values(), (100, 100, 0))

    def test_letters_are_refused(self) -> None:
        self.first_start()
        self.refuse("abc", "horizontal")
        self.robot.calibrate("270", "135")
        self.assertEqual(self.values(), (270, 270, 0))

    def test_escape_at_the_second_line_writes_nothing(self) -> None:
        self.first_start()
        self.robot.enter_line("300", "horizontal")
        wait_for("the vertical line", lambda: self.robot.line_shown() == "vertical")
        self.robot.hands.type("15")
        self.robot.hands.press("Escape")
        self.robot.wait_gone("Calibration")
        self.robot.main_window()
        self.assertEqual(self.values(), (0, 0, 0))
        self.assertFalse(self.robot.program.has_ended())


if __name__ == "__main__":
    unittest.main()
