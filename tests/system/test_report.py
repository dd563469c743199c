"""The report of a test."""

import unittest

from desk import Desk
from attention_task import AttentionTask
from kelmoran_robot import Robot
from waiting import wait_for


class Report(Desk):
    def finished_test(self) -> tuple[Robot, AttentionTask]:
        robot, task = self.start_attention(3)
        task.press_go()
        for _ in range(3):
            task.wait_target()
            task.answer()
        task.wait_end()
        return robot, task

    def text(self) -> str:
        return self.report_text(2, 5)

    def test_the_main_menu_button_files_a_report_without_showing_it(self) -> None:
        self.parameters("assessor.txt").write_bytes(
            b"Dr.;Weber;Klara;Eye Clinic;Station Road 12;3011;Bern;Switzerland\n")
        robot, task = self.finished_test()
        task.click(task.main_menu)
        robot.main_window()
        text = wait_for("the report's PDF", self.text, 60)
        self.assertIn("Paula", text)
        self.assertIn("14.03.1952", text)
        self.assertIn("Dr. Klara Weber", text)
        self.assertNotIn("v_", text)
        self.assertIsNone(robot.eyes.find("Result"))

    def test_the_results_button_shows_the_report_and_files_it(self) -> None:
        robot, task = self.finished_test()
        task.click(task.results)
        robot.wait_window("Result", 30)
        wait_for("the report's PDF", self.text, 60)

    def test_leaving_the_program_at_once_still_files_the_report(self) -> None:
        robot, task = self.finished_test()
        task.click(task.main_menu)
        robot.main_window()
        robot.hands.press("Escape")
        self.assertEqual(robot.program.wait_until_ended(60), 0)
        self.assertIn("Tester", self.text())

    def test_escape_at_the_two_buttons_makes_no_report_and_keeps_the_number(self) -> None:
        robot, _ = self.finished_test()
        robot.hands.press("Escape")
        robot.main_window()
        wait_for("the new session number", lambda: robot.session_shown(2) == "5")
        robot.hands.press("Escape")
        self.assertEqual(robot.program.wait_until_ended(), 0)
        self.assertEqual(self.text(), "")


if __name__ == "__main__":
    unittest.main()
