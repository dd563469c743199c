"""The program as a process among others."""

import unittest

from desk import Desk
from waiting import wait_for

MEGABYTE = 1_000_000


class Process(Desk):
    def test_the_main_window_is_small_and_has_no_browser_beside_it(self) -> None:
        robot = self.start_with_patient()
        self.assertEqual(robot.program.child_programs(), [])
        self.assertLess(robot.program.resident_bytes(), 150 * MEGABYTE)

    def test_a_test_without_its_report_starts_no_browser(self) -> None:
        robot, task = self.start_attention(3)
        task.press_go()
        for _ in range(3):
            task.wait_target()
            task.answer()
        task.wait_end()
        self.assertEqual(robot.program.child_programs(), [])
        task.click(task.main_menu)
        wait_for("the browser of the report", robot.program.child_programs)

    def test_a_second_program_on_the_same_folders_says_so_and_ends(self) -> None:
        first = self.start_with_patient()
        second = self.start()
        second.wait_window("Error")
        second.hands.press("Return")
        self.assertEqual(second.program.wait_until_ended(), 1)
        self.assertFalse(first.program.has_ended())

    def test_after_a_kill_the_next_start_works(self) -> None:
        first = self.start_with_patient()
        first.program.process.kill()
        first.program.wait_until_ended()
        self.start().wait_ready()


if __name__ == "__main__":
    unittest.main()
