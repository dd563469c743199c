"""The visual perception task, played on the screen by mouse."""

import unittest

from desk import (ERROR, FIGURE, FIGURE_ANSWER, IDENTITY, KEY, POSITION, POSITION_ANSWER, RANK,
                  RANK_SUB, SESSION, SUBTASK, T1_ANSWER, T1_TANSWER, T1_TIME, TASK, patient_line)
from eyes import Picture
from forms import Place
from kelmoran_robot import Robot
from reference_pictures import LookingDesk, answers_of, mask_of, pair_of, ring_of
from vision_task import PLACES, Stimulus, VisionTask
from waiting import holds_for, wait_for

PAIRS = ["CnL", "CnR", "Id", "Id", "OrL", "OrR", "ShL", "ShR", "SzL", "SzR"]
# The exposures of the training of a new patient; a wrong answer after 1133 ms keeps them long enough
# for a look on a busy machine.
TRAINING = [4633] + [2283, 1133] * 4 + [2283]


class Vision(LookingDesk):
    def assert_is_stimulus(self, seen: Stimulus) -> None:
        if seen.pair:
            codes = ("IdR", "IdL") if seen.pair == "Id" else (seen.pair,)
            for code in codes:  # the two identical pairs are one picture
                self.assert_looks_like(pair_of(seen.picture), f"pair-{code}")
        if seen.place:
            self.assert_looks_like(ring_of(seen.picture), f"ring-{seen.place}")

    def assert_is_row(self, row: list[bytes], seen: Stimulus, task: int, rank: int) -> None:
        """What holds for the row of a trial that was answered rightly."""
        self.assertEqual(len(row), 30)
        self.assertEqual(row[:5], IDENTITY)
        self.assertEqual((row[TASK], row[SESSION], row[RANK]),
                         (str(task).encode(), b"1", str(rank).encode()))
        part = 3 if seen.pair and seen.place else 1 if seen.pair else 2
        self.assertEqual(row[SUBTASK], str(part).encode())
        self.assertTrue(row[FIGURE].decode().startswith(seen.pair or ""))
        self.assertEqual(row[FIGURE] == b"", seen.pair is None)
        self.assertEqual(row[FIGURE_ANSWER].decode(), seen.kind or "")
        self.assertEqual(row[POSITION].decode(), seen.place or "")
        self.assertEqual(row[POSITION_ANSWER].decode(), seen.place or "")
        self.assertTrue(0 < int(row[T1_TANSWER]) < 60_000)
        self.assertEqual((row[T1_ANSWER], row[ERROR]), (b"0", b"0"))

    def assert_filed(self, button: int) -> list[bytes]:
        """The one row of results, which stands in two files."""
        results = self.root / "Results" / "results_T1.csv"
        archived = self.root / "Archives" / KEY / f"results_T1_{KEY}.csv"
        self.assertEqual(archived.read_bytes(), results.read_bytes())
        rows = self.rows("results_T1.csv")
        self.assertEqual([len(row) for row in rows], [32])
        self.assertEqual((rows[0][TASK], rows[0][SESSION]), (str(button).encode(), b"1"))
        self.assertEqual(self.rows("valid-output.csv"), self.rows())
        return rows[0]

    # A training, and the test behind it

    def trained(self, task: VisionTask, right: bool) -> Stimulus:
        seen = task.wait_stimulus()
        task.answer(seen, right)
        return seen

    def test_a_training_leads_into_a_test_that_is_filed_and_reported(self) -> None:
        robot, task = self.start_vision(7, (0, 0, 0), training=True)
        task.press_corner_button()
        seen = [self.trained(task, right=exposure > 1133) for exposure in TRAINING]
        self.assertEqual(sorted(stimulus.pair or "" for stimulus in seen), PAIRS)
        self.assertEqual({stimulus.place for stimulus in seen}, set(PLACES))
        for stimulus in seen:
            self.assert_is_stimulus(stimulus)
        task.wait_shown(task.go, "the Go button of the test")
        self.assertEqual(self.rows(), [])

        task.set_parameter("le_number", 2)
        task.press_go()
        first = task.wait_stimulus()
        self.assert_looks_like(mask_of(task, task.wait_mask()), "mask")
        task.wait_asked()
        robot.wait_still()
        self.assert_looks_like(answers_of(task, robot.eyes.whole()), "answers")
        task.answer(first)
        tested = [first, task.wait_stimulus()]
        task.answer(tested[1])
        task.wait_end()

        rows = self.wait_rows(2)
        for rank, (row, stimulus) in enumerate(zip(rows, tested), 1):
            self.assert_is_row(row, stimulus, 7, rank)
            self.assertEqual(row[RANK_SUB], str(rank).encode())
        # The tenth trial of the training, a right one, made no step down.
        self.assertEqual([row[T1_TIME] for row in rows], [b"2283", b"1983"])
        results = self.assert_filed(7)
        self.assertEqual(results[11:25], [b""] * 14)
        self.assertEqual(results[25:], [b"1500", b"0", b"0", b"0.000000", b"0", b"0.000000", b"0"])
        self.assertEqual(self.patients(), patient_line((0, 4, 0, 0, 0, 0, 1), (0, 0, 1500)))

        task.click(task.results)
        robot.wait_window("Result", 30)
        text = wait_for("the report's PDF", lambda: self.report_text(1, 1), 60)
        self.assertRegex(text, r"Dual task +1500 +0 +0 +0 +0 +0 +0\n")
        self.assertEqual(text.count("\f"), 1, "pages")

    # The whole task

    def assert_pointer_at_centre(self, task: VisionTask) -> None:
        self.assertEqual(task.eyes.pointer(), (task.x, task.y))
        self.assertTrue(task.eyes.pointer_is_shown())

    def around(self, task: VisionTask, screen: Picture) -> list[Picture]:
        """The screen outside of the mask and of the parameter panel."""
        mark, panel = task.frame, task.panel
        right = mark.x + mark.width
        below = mark.y + mark.height
        places = [Place(0, mark.y, mark.x, screen.height - mark.y),
                  Place(right, mark.y, screen.width - right, screen.height - mark.y),
                  Place(0, below, screen.width, screen.height - below),
                  Place(panel.x + panel.width, 0, screen.width - panel.x - panel.width, mark.y)]
        return [screen.part(part.x, part.y, part.width, part.height) for part in places]

    def observed_trial(self, task: VisionTask) -> Stimulus:
        """A trial with a look at each of its stages."""
        seen = task.wait_stimulus()
        self.assertFalse(task.eyes.pointer_is_shown(), "the pointer beside a stimulus")
        masked = task.wait_mask()
        wait_for("a blank screen", lambda: not task.mask_is_shown())
        mark = task.frame
        wait_for("a blank frame",
                 lambda: task.eyes.area(mark.x, mark.y, mark.width, mark.height).is_dark())
        self.assertFalse(task.eyes.pointer_is_shown(), "the pointer on the blank screen")
        task.wait_asked()
        # A comparison takes longer than a stage of the trial; the answer has no time limit.
        self.assert_is_stimulus(seen)
        self.assert_looks_like(mask_of(task, masked), "mask")
        for part in self.around(task, masked):
            self.assertTrue(part.is_dark(), "something stands beside the mask")
        self.assertEqual((task.asks_figure(), task.asks_place()),
                         (seen.pair is not None, seen.place is not None))
        self.assert_pointer_at_centre(task)
        task.answer(seen)
        wait_for("the pointer to go", lambda: not task.eyes.pointer_is_shown())
        return seen

    def test_the_whole_task_takes_its_three_parts_in_turn(self) -> None:
        robot, task = self.start_vision(1, (1983, 2633, 3500))
        task.set_parameter("le_number", 3)
        task.press_go()
        seen = [self.observed_trial(task) for _ in range(3)]
        task.wait_end()

        rows = self.wait_rows(3)
        self.assertEqual({row[SUBTASK] for row in rows}, {b"1", b"2", b"3"})
        for rank, (row, stimulus) in enumerate(zip(rows, seen), 1):
            self.assert_is_row(row, stimulus, 1, rank)
            self.assertEqual(row[RANK_SUB], b"1")
        self.assertEqual({row[SUBTASK]: row[T1_TIME] for row in rows},
                         {b"1": b"1983", b"2": b"2633", b"3": b"3500"})
        results = self.assert_filed(1)
        self.assertEqual([results[at] for at in (11, 18, 25)], [b"1500", b"1983", b"2633"])
        self.assertEqual(self.patients(), patient_line((1, 4, 0, 0, 0, 0, 0), (1500, 1983, 2633)))

        task.click(task.main_menu)
        robot.main_window()
        text = wait_for("the report's PDF", lambda: self.report_text(1, 1), 60)
        self.assertRegex(text, r"Central vision +1500 [^\f]*Peripheral vision +1983 "
                               r"[^\f]*Dual task +2633 ")
        self.assertNotIn("v_t1", text)
        self.assertEqual(text.count("\f"), 1, "pages")

    # Refusal

    def test_a_patient_without_thresholds_is_sent_to_the_training(self) -> None:
        robot = self.start_with_patient(patient_line(thresholds=(283, 0, 483)))
        robot.press_test(1)
        box = robot.wait_window("Error")
        robot.wait_still()
        # Behind the icon two lines of dark text on a light ground.
        text = robot.eyes.area(box.x + 58, box.y + 8, box.width - 64, 34)
        light = text.data[1::4]
        self.assertGreater(min(light[:text.width]), 200)
        self.assertGreater(sum(1 for value in light if value < 100), 200)
        robot.hands.click(box.x + box.width - 50, box.y + box.height - 24)
        robot.wait_gone("Error")
        robot.main_window()
        wait_for("the stored session number", lambda: robot.session_shown(1) == "0")
        self.assertEqual(self.rows(), [])
        self.assertEqual(self.patients(), patient_line(thresholds=(283, 0, 483)))

    # The assessor's keys

    def held(self, robot: Robot, task: VisionTask, key: str, word: bytes) -> None:
        """What holds after P or E: the buttons are gone, the trial waits for Continue."""
        robot.hands.press(key)
        task.wait_shown(task.mode, f"the word {word!r}")
        task.wait_shown(task.corner_button, "the Continue button")
        self.assertFalse(task.asks_figure())
        self.assertTrue(robot.eyes.pointer_is_shown())
        self.assertTrue(holds_for(lambda: task.stimulus() is None, 0.6))
        robot.hands.press("c")
        task.wait_hidden(task.corner_button, "the Continue button")

    def test_the_assessors_keys_hold_strike_and_break_off(self) -> None:
        robot, task = self.start_vision(5, (2633, 0, 483))
        task.press_go()
        first = task.wait_stimulus()
        for key in ("p", "e"):
            robot.hands.press(key)  # nobody has been asked yet
        task.wait_asked()
        self.assertEqual(self.rows(), [])
        self.held(robot, task, "p", b"PAUSE")
        self.assertEqual(self.wait_rows(1), [IDENTITY + [b"paused"]])

        again = task.wait_stimulus()
        self.assertEqual((again.pair, again.place), (first.pair, None))
        task.wait_asked()
        self.held(robot, task, "e", b"ERROR")
        struck = self.wait_rows(2)[1]
        self.assertEqual((struck[TASK], struck[T1_TIME], struck[RANK], struck[ERROR]),
                         (b"5", b"2633", b"0", b"1"))
        self.assertTrue(struck[FIGURE].decode().startswith(first.pair or "none"))
        self.assertEqual((struck[FIGURE_ANSWER], struck[T1_TANSWER], struck[T1_ANSWER]),
                         (b"", b"0", b""))

        last = task.wait_stimulus()
        self.assertEqual(last.pair, first.pair)
        task.answer(last)
        self.assert_is_row(self.wait_rows(3)[2], last, 5, 1)
        task.wait_stimulus()
        robot.hands.press("Escape")
        robot.main_window()
        wait_for("the stored session number", lambda: robot.session_shown(5) == "0")
        self.assertEqual(self.wait_rows(4)[3], IDENTITY + [b"interrupted"])
        self.assertFalse((self.root / "Results" / "results_T1.csv").exists())
        self.assertEqual(self.patients(), patient_line(thresholds=(1983, 0, 483)))


if __name__ == "__main__":
    unittest.main()
