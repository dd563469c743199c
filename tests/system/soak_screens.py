"""Screens that are too small, two of them, and one that goes while a test runs; for ./soak.sh."""

from __future__ import annotations

import time
import unittest

from desk import KEY, Desk, patient_line
from eyes import Window
from kelmoran_robot import Robot
from monitors import plug_in, unplug
from virtual_screen import VirtualScreen
from waiting import wait_for

TITLES = {1: "Test1", 2: "Test2", 3: "Test3", 4: "Test4"}
SMALL = ((800, 600), (1024, 600), (960, 540))


class SmallScreens(Desk):
    """Each is told, and nothing else happens: every task can be begun and left."""

    @classmethod
    def setUpClass(cls) -> None:
        """A screen of its own for each test."""

    def on_screen(self, width: int, height: int) -> None:
        self.screen = VirtualScreen(width, height)
        self.enterContext(self.screen)
        robot = self.start_with_patient(patient_line(thresholds=(283, 283, 283)))
        status = robot.main_window()
        # The line at the foot of the main window is empty on a screen that is large enough.
        foot = robot.eyes.area(status.x + 4, status.y + status.height - 20, 300, 18)
        self.assertLess(min(foot.data[1::4]), 100, "nothing is told")
        for test in TITLES:
            robot.press_test(test, parameters=False)
            window = robot.wait_full_screen()
            self.assertEqual((window.width, window.height), (width, height))
            robot.hands.press("Escape")
            robot.main_window()
            self.assertEqual(self.rows()[-1][-1], b"interrupted")
        robot.choose_menu("actionPreferences")
        robot.wait_window("Preferences")
        robot.hands.press("Escape")
        robot.main_window()
        self.assertEqual(self.parameters("screen.pix").stat().st_size, 12)

    def test_each_is_told(self) -> None:
        for width, height in SMALL:
            with self.subTest(width=width, height=height):
                self.doCleanups()
                self.setUp()
                self.on_screen(width, height)


class TwoScreens(Desk):
    """A primary one of 1280 by 1024, and one of 1100 by 900 to its right, which can go."""

    FIRST = (0, 0, 1280, 1024)
    SECOND = (1280, 0, 1100, 900)

    @classmethod
    def setUpClass(cls) -> None:
        cls.screen = VirtualScreen(2380, 1024)
        cls.enterClassContext(cls.screen)

    def setUp(self) -> None:
        super().setUp()
        for number, place in enumerate((self.FIRST, self.SECOND)):
            plug_in(self.screen, number, *place)

    def place_of(self, window: Window) -> tuple[int, int, int, int]:
        return window.x, window.y, window.width, window.height

    def wait_pointer(self, robot: Robot, place: tuple[int, int, int, int]) -> None:
        middle = (place[0] + place[2] // 2, place[1] + place[3] // 2)
        wait_for("the pointer in the middle of the screen",
                 lambda: robot.eyes.pointer() == middle)

    def on_second(self) -> Robot:
        """The main window on the second screen."""
        robot = self.start_with_patient(patient_line(thresholds=(283, 283, 283)))
        window = robot.main_window()
        client = self.screen.display.create_resource_object("window", window.id)
        client.configure(x=self.SECOND[0] + 100, y=100)
        self.screen.display.sync()
        wait_for("the main window on the other screen",
                 lambda: robot.main_window().x >= self.SECOND[0])
        time.sleep(0.5)  # the server tells the program, and the program itself
        return robot

    def wait_task(self, robot: Robot, test: int) -> Window:
        """A task on the whole of one screen."""
        whole = (self.FIRST, self.SECOND)
        wait_for("a task on the whole screen",
                 lambda: self.place_of(robot.wait_window(TITLES[test])) in whole)
        return robot.wait_window(TITLES[test])

    def test_calibration_and_tasks_go_to_the_screen_of_the_main_window(self) -> None:
        robot = self.on_second()
        for test in TITLES:
            robot.press_test(test, parameters=False)
            task = self.wait_task(robot, test)
            self.assertEqual(self.place_of(task), self.SECOND, TITLES[test])
            self.wait_pointer(robot, self.SECOND)
            robot.hands.press("Escape")
            robot.main_window()

    def test_a_screen_goes_while_a_test_runs(self) -> None:
        for test in TITLES:
            with self.subTest(test=test):
                self.doCleanups()
                self.setUp()
                self.unplugged_during(test)

    def unplugged_during(self, test: int) -> None:
        robot = self.on_second()
        robot.press_test(test, parameters=False)
        task = self.wait_task(robot, test)
        robot.hands.click(task.x + task.width // 2, task.y + task.height // 2)  # Go
        time.sleep(0.7)  # into the first trial
        unplug(self.screen, 1)
        wait_for("the task on the screen that is left",
                 lambda: self.place_of(robot.wait_window(TITLES[test])) == self.FIRST)
        self.assertFalse(robot.program.has_ended())
        robot.hands.press("Escape")
        wait_for("the whole main window on the screen that is left",
                 lambda: robot.main_window().x + robot.main_window().width <= self.FIRST[2])
        self.assertEqual(self.rows()[-1][-1], b"interrupted")
        robot.press_test(test, parameters=False)  # and the next one begins there
        self.assertEqual(self.place_of(self.wait_task(robot, test)), self.FIRST)
        self.wait_pointer(robot, self.FIRST)
        robot.hands.press("Escape")
        robot.main_window()
        robot.choose_patient(KEY)
        self.assertFalse(robot.program.has_ended())


if __name__ == "__main__":
    unittest.main()
