"""The attention task, played on the screen."""

import unittest

from desk import ERROR, IDENTITY, KEY, PATIENT_LINE, RANK, SESSION, T2_POSITION, T2_RT, Desk
from attention_task import DIRECTIONS, AttentionTask
from waiting import holds_for, wait_for


class Attention(Desk):
    def answer_next(self, task: AttentionTask, by_mouse: bool = False) -> str:
        direction = task.wait_target()
        task.answer(by_mouse)
        return DIRECTIONS[direction]

    def test_a_short_test_is_filed(self) -> None:
        robot, task = self.start_attention(6)
        task.press_go()
        seen = [self.answer_next(task) for _ in range(6)]
        task.wait_end()
        rows = self.wait_rows(6)
        self.assertEqual([row[T2_POSITION].decode() for row in rows], seen)
        for rank, row in enumerate(rows, 1):
            self.assertEqual(len(row), 30)
            self.assertEqual(row[:5], IDENTITY)
            self.assertEqual(row[SESSION], b"5")
            self.assertEqual(row[RANK], str(rank).encode())
            self.assertEqual(row[ERROR], b"0")
            self.assertTrue(0 <= int(row[T2_RT]) <= 2000)
        self.assertEqual(self.rows("valid-output.csv"), rows)
        scores = self.rows("results_T2.csv")
        self.assertEqual([len(row) for row in scores], [23])
        self.assertEqual(self.patients(), PATIENT_LINE.replace(b";0;4;", b";0;5;"))
        archived = self.root / "Archives" / KEY / f"results_T2_{KEY}.csv"
        self.assertEqual(archived.read_bytes(),
                         (self.root / "Results" / "results_T2.csv").read_bytes())

    def test_the_task_covers_the_screen(self) -> None:
        robot, _ = self.start_attention(None)
        window = robot.wait_full_screen()
        self.assertEqual((window.x, window.y, window.width, window.height),
                         (0, 0, self.screen.width, self.screen.height))

    def test_space_answers_while_an_edit_of_the_panel_has_the_keyboard(self) -> None:
        _, task = self.start_attention(None)
        task.press_go()
        for trial in range(1, 3):
            task.set_parameter("le_number", 3, leave=False)
            self.answer_next(task)
            self.wait_rows(trial)
        task.set_parameter("le_number", 3)
        self.answer_next(task)
        task.wait_end()
        self.assertEqual([row[ERROR] for row in self.rows()], [b"0"] * 3)

    def test_the_left_mouse_button_answers(self) -> None:
        _, task = self.start_attention(3)
        task.press_go()
        for _ in range(3):
            self.answer_next(task, by_mouse=True)
        task.wait_end()
        self.assertEqual([row[ERROR] for row in self.rows()], [b"0"] * 3)

    def test_a_held_space_answers_once(self) -> None:
        robot, task = self.start_attention()
        task.press_go()
        task.wait_target()
        robot.hands.hold("space")
        task.wait_no_target()
        try:
            task.wait_target()
            self.assertTrue(holds_for(lambda: task.target() is not None, 1.0))
        finally:
            robot.hands.release("space")
        self.assertEqual([row[ERROR] for row in self.rows()], [b"0"])

    def test_p_marks_a_pause_and_c_goes_on(self) -> None:
        robot, task = self.start_attention(3)
        task.press_go()
        task.wait_target()
        robot.hands.press("p")
        task.wait_shown(task.mode, "the word PAUSE")
        task.wait_shown(task.corner_button, "the Continue button")
        self.assertIsNone(task.target())
        self.assertEqual(self.wait_rows(1), [IDENTITY + [b"paused"]])
        self.assertTrue(holds_for(lambda: task.fixation() is None, 0.5))
        robot.hands.press("c")
        task.wait_hidden(task.corner_button, "the Continue button")
        for _ in range(3):
            self.answer_next(task)
        task.wait_end()
        self.assertEqual([row[-1] for row in self.rows()], [b"paused", b"0", b"0", b"0"])

    def test_e_marks_an_error_without_a_reaction_time(self) -> None:
        robot, task = self.start_attention(3)
        task.press_go()
        task.wait_target()
        robot.hands.press("e")
        task.wait_shown(task.mode, "the word ERROR")
        row = self.wait_rows(1)[0]
        self.assertEqual((row[T2_RT], row[ERROR]), (b"", b"1"))
        robot.hands.press("c")
        task.wait_hidden(task.corner_button, "the Continue button")
        for _ in range(3):
            self.answer_next(task)
        task.wait_end()
        self.assertEqual([row[ERROR] for row in self.rows()], [b"1", b"0", b"0", b"0"])
        self.assertEqual(len(self.rows("valid-output.csv")), 3)

    def interrupted(self, robot, task: AttentionTask) -> None:  # type: ignore[no-untyped-def]
        """What holds after a test that was broken off in its second trial."""
        robot.main_window()
        wait_for("the stored session number", lambda: robot.session_shown(2) == "4")
        rows = self.wait_rows(2)
        self.assertEqual(rows[1], IDENTITY + [b"interrupted"])
        self.assertEqual(self.patients(), PATIENT_LINE)
        self.assertFalse((self.root / "Results" / "valid-output.csv").exists())
        self.assertFalse((self.root / "Results" / "results_T2.csv").exists())

    def test_escape_breaks_off_and_takes_no_session_number(self) -> None:
        robot, task = self.start_attention()
        task.press_go()
        self.answer_next(task)
        self.wait_rows(1)
        task.wait_target()
        robot.hands.press("Escape")
        self.interrupted(robot, task)

    def test_the_window_managers_close_is_escape(self) -> None:
        robot, task = self.start_attention()
        task.press_go()
        self.answer_next(task)
        self.wait_rows(1)
        task.wait_target()
        robot.eyes.ask_to_close(robot.wait_full_screen())
        self.interrupted(robot, task)
        self.assertFalse(robot.program.has_ended())

    def test_a_held_escape_does_not_end_the_program(self) -> None:
        robot, task = self.start_attention()
        task.press_go()
        task.wait_target()
        robot.hands.hold("Escape")
        robot.main_window()
        stayed = holds_for(lambda: not robot.program.has_ended(), 1.5)
        robot.hands.release("Escape")
        self.assertTrue(stayed)
        self.assertEqual(self.rows(), [IDENTITY + [b"interrupted"]])

    def test_escape_in_the_instruction_writes_nothing(self) -> None:
        robot, task = self.start_attention(None, parameters=False, instruction=True, training=True)
        task.wait_shown(task.corner_button, "the Next button")
        task.next_step(by_key=True)
        robot.hands.press("Escape")
        robot.main_window()
        wait_for("the stored session number", lambda: robot.session_shown(2) == "4")
        self.assertEqual(self.rows(), [])

    def test_a_second_test_starts_anew(self) -> None:
        robot, task = self.start_attention(3)
        task.press_go()
        for _ in range(3):
            self.answer_next(task)
        task.wait_end()
        task.click(task.main_menu)
        robot.main_window()
        robot.start_test(2)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(3)
        task.press_go()
        for _ in range(3):
            self.answer_next(task)
        task.wait_end()
        rows = self.wait_rows(6)
        self.assertEqual([row[SESSION] for row in rows], [b"5"] * 3 + [b"6"] * 3)
        self.assertEqual([row[RANK] for row in rows], [b"1", b"2", b"3"] * 2)
        self.assertEqual(len(self.rows("results_T2.csv")), 2)


if __name__ == "__main__":
    unittest.main()
