"""The movement detection task, played on the screen by keyboard and mouse."""

import math
import re
import time
import unittest
from dataclasses import dataclass

from desk import (ERROR, IDENTITY, KEY, RANK, RANK_SUB, SESSION, SUBTASK, T3_DIRECTION, T3_POSITION,
                  T3_RT, TASK, patient_line)
from kelmoran_robot import Robot
from movement_task import (DIRECTIONS, FIELD, PLACES, STEP, MovementTask, all_patches, direction_of,
                           moved, offset_of)
from reference_pictures import LookingDesk, field_of, pad_of
from waiting import holds_for, wait_for

RANKS = 40  # of a whole test, to which the scores refer
PAINTED_LATE = 0.1  # seconds, at most from a word of the program to what is seen of it


@dataclass(frozen=True)
class Trial:
    """What a patient saw and did, and in which limits the reaction time must be, seconds."""
    place: str
    direction: str
    shortest: float
    longest: float


class Movement(LookingDesk):
    def reacted(self, task: MovementTask, reaction: float = 0.1) -> Trial:
        """A trial up to the pad, with this time at least between arrow and Space."""
        before = [time.monotonic()]

        def look() -> str | None:
            began = time.monotonic()
            place = task.arrow()
            if not place:
                before[0] = began
            return place
        place = wait_for("the arrow", look)
        seen = time.monotonic()
        self.assertFalse(task.eyes.pointer_is_shown(), "the pointer beside the field")
        direction = task.direction(place) or "none"
        self.assertIn(direction, DIRECTIONS)
        self.assertTrue(holds_for(lambda: task.arrow() == place, reaction))
        shortest = time.monotonic() - seen
        task.space()
        return Trial(place, direction, shortest, time.monotonic() - before[0] + PAINTED_LATE)

    def assert_is_row(self, row: list[bytes], trial: Trial, rank: int, error: bool = False) -> None:
        self.assertEqual(len(row), 30)
        self.assertEqual(row[:5], IDENTITY)
        self.assertEqual((row[TASK], row[SESSION], row[SUBTASK], row[RANK], row[RANK_SUB]),
                         (b"3", b"1", b"1", str(rank).encode(), b""))
        self.assertEqual((row[T3_POSITION].decode(), row[T3_DIRECTION].decode()),
                         (trial.place, trial.direction))
        self.assertTrue(1000 * trial.shortest - 2 <= int(row[T3_RT]) <= 1000 * trial.longest,
                        f"{int(row[T3_RT])} ms, seen {trial.shortest:.3f} to {trial.longest:.3f} s")
        self.assertEqual(row[ERROR], b"1" if error else b"0")

    def assert_filed(self, trials: int, errors: int) -> list[float]:
        """The one row of results, which stands in two files; its scores come back."""
        results = self.root / "Results" / "results_T3.csv"
        archived = self.root / "Archives" / KEY / f"results_T3_{KEY}.csv"
        self.assertEqual(archived.read_bytes(), results.read_bytes())
        rows = self.rows("results_T3.csv")
        self.assertEqual([len(row) for row in rows], [21])
        self.assertEqual((rows[0][TASK], rows[0][SESSION]), (b"3", b"1"))
        self.assertEqual((rows[0][10], rows[0][12]),
                         (str(trials).encode(), f"{100 * errors / trials:.1f}".encode()))
        self.assertEqual(self.rows("valid-output.csv"),
                         [row for row in self.rows() if row[-1] == b"0"])
        self.assertEqual(self.patients(), patient_line((0, 4, 1, 0, 0, 0, 0)))
        return [float(score) for score in rows[0][11:]]

    def assert_scores(self, scores: list[float], rows: list[list[bytes]]) -> None:
        """The scores from the rows, by arithmetic of our own."""
        times = [int(row[T3_RT]) for row in rows]
        fitted = practice(times)
        self.assertAlmostEqual(scores[0], fitted[0], 4)
        self.assertAlmostEqual(scores[2], fitted[1], 4)
        places = [row[T3_POSITION].decode() for row in rows]

        def mean(of: list[str]) -> float:
            return sum(t for t, place in zip(times, places) if place in of) / (5 * len(of))
        expected = [mean([place for place in PLACES if len(place) == 2]),
                    mean([place for place in PLACES if len(place) == 1])]
        expected += [mean([place for place in PLACES if side in place]) for side in "WENS"]
        for score, value in zip(scores[4:], expected, strict=True):
            self.assertAlmostEqual(score, value, 5)

    # Whole tests

    def test_a_test_by_space_and_arrow_keys_is_filed_and_reported(self) -> None:
        robot, task = self.start_movement(5)
        task.press_go()
        trials = []
        for reaction in (0.3, 0.1, 0.2, 0.05, 0.15):
            trials.append(self.reacted(task, reaction))
            task.answer(trials[-1].direction)
        task.wait_end()
        rows = self.wait_rows(5)
        for rank, (row, trial) in enumerate(zip(rows, trials), 1):
            self.assert_is_row(row, trial, rank)
        self.assertEqual(len({trial.place for trial in trials}), 5, "a place was asked twice")
        scores = self.assert_filed(5, 0)
        self.assert_scores(scores, rows)

        task.click(task.results)
        robot.wait_window("Result", 30)
        text = wait_for("the report's PDF", lambda: self.report_text(3, 1), 60)
        _, _, _, _, oblique, cardinal, left, right, top, bottom = scores
        for name, value in (("Detection time", scores[0]),
                            ("Oblique minus cardinal", oblique - cardinal),
                            ("Left minus right", left - right), ("Top minus bottom", top - bottom)):
            shown = re.search(rf"{name} +(-?\d+)[ \n]", text)
            self.assertIsNotNone(shown, name)
            self.assertAlmostEqual(int(shown[1]), value, delta=0.500001, msg=name)
        self.assertNotIn("v_t3", text)
        self.assertEqual(text.count("\f"), 1, "pages")

    def test_a_test_by_the_buttons_of_the_pad_repeats_what_was_wrong(self) -> None:
        robot, task = self.start_movement(3)
        task.press_go()
        trials = []
        for number in range(5):
            trial = self.reacted(task)
            trials.append(trial)
            self.assertTrue(task.eyes.pointer_is_shown())
            self.assertEqual(task.eyes.pointer(), (task.x, task.y))
            wrong = DIRECTIONS[DIRECTIONS.index(trial.direction) - 1]
            task.answer(["?", wrong, trial.direction][min(number, 2)], by_mouse=True)
            wait_for("the pointer to go", lambda: not task.eyes.pointer_is_shown())
        task.wait_end()
        rows = self.wait_rows(5)
        for rank, (row, trial) in enumerate(zip(rows, trials)):
            self.assert_is_row(row, trial, max(rank - 1, 1), error=rank < 2)
        self.assertEqual([trial.place for trial in trials[:2]], [trials[2].place] * 2)
        self.assert_scores(self.assert_filed(5, 2), rows[2:])
        task.click(task.main_menu)
        robot.main_window()
        wait_for("the report's PDF", lambda: self.report_text(3, 1), 60)

    # The drift

    def test_all_patches_drift_at_one_speed_and_the_asked_one_as_its_row_tells(self) -> None:
        _, task = self.start_movement(1)
        task.press_go()
        place = task.wait_arrow()
        first, second = task.two_looks(FIELD, pixels=5)  # in 75 ms
        ways = {patch: moved(first.patch(*patch), second.patch(*patch)) for patch in all_patches()}
        self.assertEqual(len(ways), 80)
        self.assertEqual({direction_of(way) for way in ways.values()}, set(DIRECTIONS))
        pixels = {abs(x) + abs(y) for x, y in ways.values()}
        self.assertEqual(len(pixels), 1, "patches drift at different speeds")
        self.assertLessEqual(pixels.pop(), (second.ended - first.began) / STEP + 1)
        task.space()
        direction = direction_of(ways[offset_of(place)]) or "none"
        task.answer(direction)
        row = self.wait_rows(1)[0]
        self.assertEqual((row[T3_POSITION], row[T3_DIRECTION], row[ERROR]),
                         (place.encode(), direction.encode(), b"0"))

    # The assessor's keys

    def held(self, robot: Robot, task: MovementTask, key: str, widths: range) -> None:
        """What holds after P or E: a word as long as it should be, and nothing else goes on."""
        robot.hands.press(key)
        task.wait_shown(task.mode, "a word at the top right")
        task.wait_shown(task.corner_button, "the Continue button")
        robot.wait_still()
        self.assertIn(task.word_width(), widths)
        self.assertTrue(robot.eyes.pointer_is_shown())
        robot.hands.press("Right")
        robot.hands.press("space")
        self.assertTrue(holds_for(
            lambda: not task.pad_is_shown() and not task.field_is_shown(), 0.5))

    def go_on(self, robot: Robot, task: MovementTask) -> None:
        robot.hands.press("c")
        task.wait_field()
        self.assertFalse(task.is_shown(task.mode))
        self.assertFalse(task.is_shown(task.corner_button))

    def test_the_assessors_keys_hold_strike_and_break_off(self) -> None:
        robot, task = self.start_movement()
        task.set_parameter("le_timer01", 600)
        pause, instructions = range(60, 130), range(160, 260)
        task.press_go()
        task.wait_field()
        for key in ("space", "p", "e", "Right"):
            robot.hands.press(key)  # nothing is asked yet
        place = task.wait_arrow()
        self.assertTrue(holds_for(lambda: task.arrow() == place, 0.2))
        self.held(robot, task, "p", pause)
        self.assertEqual(self.wait_rows(1), [IDENTITY + [b"paused"]])
        self.go_on(robot, task)

        self.assertEqual(self.reacted(task).place, place)
        self.held(robot, task, "p", pause)
        self.assertEqual(self.wait_rows(2)[1], IDENTITY + [b"paused"])
        self.go_on(robot, task)

        struck = self.reacted(task)
        self.held(robot, task, "e", instructions)
        self.assertEqual(len(self.rows()), 2)
        self.go_on(robot, task)
        row = self.wait_rows(3)[2]
        self.assertEqual((row[T3_RT], row[T3_POSITION], row[T3_DIRECTION], row[RANK], row[ERROR]),
                         (b"", place.encode(), struck.direction.encode(), b"1", b"1"))

        last = self.reacted(task)
        self.assertEqual(last.place, place)
        task.answer(last.direction)
        self.assert_is_row(self.wait_rows(4)[3], last, 1)
        task.wait_arrow()
        robot.hands.press("Escape")
        robot.main_window()
        wait_for("the stored session number", lambda: robot.session_shown(3) == "0")
        self.assertEqual(self.wait_rows(5)[4], IDENTITY + [b"interrupted"])
        self.assertFalse((self.root / "Results" / "results_T3.csv").exists())
        self.assertEqual(self.patients(), patient_line())

    # Fixed duration

    def test_with_a_fixed_duration_a_trial_ends_by_itself(self) -> None:
        robot, task = self.start_movement(1, fixed_duration=True)
        for edit in ("le_timer04", "le_timer05"):
            task.set_parameter(edit, 500)
        task.press_go()
        place = task.wait_arrow()
        robot.hands.press("p")
        task.wait_pad()
        robot.hands.press("e")
        task.wait_no_pad()
        row = self.wait_rows(1)[0]
        self.assertEqual((row[T3_RT], row[T3_POSITION], row[ERROR]), (b"500", place.encode(), b"1"))
        trial = self.reacted(task)
        task.answer(trial.direction)
        task.wait_end()
        self.assert_is_row(self.wait_rows(2)[1], trial, 1)

    # Instruction and training

    def test_the_instruction_shows_its_nine_steps_and_the_training_leads_to_the_test(self) -> None:
        robot, task = self.start_movement(instruction=True, training=True)
        task.next_step()
        robot.wait_still()
        self.assert_looks_like(field_of(task, robot.eyes.whole()), "movement-field")
        task.next_step(by_key=True)
        wait_for("the arrow", lambda: task.arrow() == "SW")
        self.assertFalse(task.frame_is_shown())
        task.next_step()
        wait_for("the frame", task.frame_is_shown)
        robot.wait_still()
        task.next_step()
        self.assertIn(task.direction("SW"), DIRECTIONS)
        task.next_step()
        task.wait_pad()
        robot.hands.press("Right")
        robot.hands.click(task.x + 72, task.y)
        robot.wait_still()
        self.assert_looks_like(pad_of(task, robot.eyes.whole()), "movement-pad")
        for place in ("NW", "NE", "E"):
            task.press_corner_button()
            wait_for(f"the arrow to {place}", lambda place=place: task.arrow() == place)
            self.assertIn(task.direction(place), DIRECTIONS)
        task.next_step()
        self.assertFalse(task.field_is_shown())

        task.press_corner_button()
        first = self.reacted(task)
        task.answer("?", by_mouse=True)
        for number in range(5):
            trial = self.reacted(task)
            if number == 0:
                self.assertEqual(trial.place, first.place)
            task.answer(trial.direction)
        task.wait_shown(task.go, "the Go button of the test")
        self.assertFalse(task.field_is_shown())
        self.assertEqual(self.rows(), [])
        self.assertFalse(task.is_shown(task.mode))


def practice(times: list[int]) -> tuple[float, float]:
    """Mean at the level of the fortieth rank, and slope, of the times against the logarithm of
    their rank. What a short test lacks counts as 0."""
    filled = times + [0] * (RANKS - len(times))
    logs = [math.log(rank) for rank in range(1, RANKS + 1)]
    centre, mean = sum(logs) / RANKS, sum(filled) / RANKS
    slope = (sum((x - centre) * (y - mean) for x, y in zip(logs, filled))
             / sum((x - centre) ** 2 for x in logs))
    return mean + slope * (math.log(RANKS) - centre), slope


if __name__ == "__main__":
    unittest.main()
