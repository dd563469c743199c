"""The working memory task, played on the screen by the mouse alone but for the assessor's keys."""

import math
import re
import unittest

from desk import (ERROR, IDENTITY, KEY, RANK, RANK_SUB, SESSION, SUBTASK, T4_FIRST, T4_LAST,
                  T4_POS_FIRST, T4_POS_LAST, TASK, patient_line)
from kelmoran_robot import Robot
from memory_task import INNER_RADIUS, OUTER_RADIUS, SECTORS, MemoryTask, Point, Run
from reference_pictures import LookingDesk, example_of, guides_of
from waiting import holds_for, wait_for

RANKS = 30  # of a whole test, to which the scores refer
LOADS = 6
BLOCKS = RANKS // LOADS
REST = (10, 700)  # where the pointer waits during a run
ASIDE = 40  # pixels, from the true place to the click
PITCHES = (270, 250)  # micrometres, across and down
EXACT, ACROSS, DOWN = "    1.00", "   10.80", "   10.00"  # mm, of a click there and so far aside


class Memory(LookingDesk):
    def watched(self, task: MemoryTask) -> Run:
        """A run up to its question, with what holds for every run."""
        run = task.watch_run()
        self.assertEqual((run.pointers, run.pointer_was_shown), ({REST}, False))
        wait_for("the pointer", task.eyes.pointer_is_shown)
        self.assertEqual(task.eyes.pointer(), (task.x, task.y))
        self.assertTrue(task.fixation_is_shown())
        self.assertIn(len(run.crosses), range(2, 8))
        for place in run.crosses:
            self.assertTrue(INNER_RADIUS - 2 < task.radius(place) < OUTER_RADIUS)
        sectors = [task.sector(place) for place in run.crosses]
        self.assertEqual(len(set(sectors)), len(sectors), "two crosses in one sector")
        for sector in sectors[1:]:
            self.assertNotIn((sector - sectors[0]) % SECTORS, (0, 1, SECTORS - 1))
        return run

    def go_on(self, task: MemoryTask) -> None:
        """From one trial to the next, where the pointer stands on the button already."""
        task.wait_continue()
        wait_for("the pointer", task.eyes.pointer_is_shown)
        for at, expected in zip(task.eyes.pointer(), task.at_continue):
            self.assertAlmostEqual(at, expected, delta=1)
        self.assertEqual(task.crosses(), [])
        task.press_continue()

    def assert_is_row(self, row: list[bytes], task: MemoryTask, run: Run, rank: int,
                      last: str, first: str) -> None:
        """Without distances it is the row of a trial that doesn't count."""
        self.assertEqual(len(row), 30)
        self.assertEqual(row[:5], IDENTITY)
        self.assertEqual((row[TASK], row[SESSION], row[RANK], row[RANK_SUB]),
                         (b"4", b"1", str(rank).encode(), b""))
        self.assertEqual(int(row[SUBTASK]), len(run.crosses) - 2)
        self.assertEqual((row[T4_LAST].decode(), row[T4_FIRST].decode()), (last, first))
        self.assertEqual((int(row[T4_POS_LAST]), int(row[T4_POS_FIRST])),
                         (task.sector(run.last), task.sector(run.first)))
        self.assertEqual(row[ERROR], b"0" if first else b"1")

    def assert_filed(self, trials: int) -> list[float]:
        """The one row of results, which stands in two files; its scores come back."""
        results = self.root / "Results" / "results_T4.csv"
        archived = self.root / "Archives" / KEY / f"results_T4_{KEY}.csv"
        self.assertEqual(archived.read_bytes(), results.read_bytes())
        rows = self.rows("results_T4.csv")
        self.assertEqual([len(row) for row in rows], [19])
        # The session number in this row is that of the attention task.
        self.assertEqual((rows[0][TASK], rows[0][SESSION], rows[0][10]),
                         (b"4", b"4", str(trials).encode()))
        self.assertEqual(self.rows("valid-output.csv"),
                         [row for row in self.rows() if row[-1] == b"0"])
        self.assertEqual(self.patients(), patient_line((0, 4, 0, 1, 0, 0, 0)))
        return [float(score) for score in rows[0][11:]]

    # A whole test

    def test_a_test_by_the_mouse_is_filed_and_reported(self) -> None:
        robot, task = self.start_memory(3, PITCHES)
        task.press_go()
        answers = [(EXACT, EXACT), (ACROSS, DOWN), (DOWN, ACROSS)]
        runs = []
        for number, (last, first) in enumerate(answers):
            if number > 0:
                self.go_on(task)
            run = self.watched(task)
            task.answer(clicked(task, run.last, last), clicked(task, run.first, first))
            runs.append(run)
        task.wait_end()
        for edit, distance in zip(("le_distLast", "le_distFirst"), answers[-1]):
            self.assertTrue(task.reads(edit, distance), edit)
        rows = self.wait_rows(3)
        for rank, (row, run, answer) in enumerate(zip(rows, runs, answers), 1):
            self.assert_is_row(row, task, run, rank, *answer)
        self.assertEqual(len({row[SUBTASK] for row in rows}), 3, "a load came twice")
        scores = self.assert_filed(3)
        for score, value in zip(scores, scores_of(rows), strict=True):
            self.assertAlmostEqual(score, value, 5)

        task.click(task.results)
        robot.wait_window("Result", 30)
        text = wait_for("the report's PDF", lambda: self.report_text(4, 1), 60)
        average_f, average_l, slope, intercept, r2, practice, practice_r2, error = scores
        for name, unit, value, step in (
                ("First cross", "mm", average_f, 1), ("Last cross", "mm", average_l, 1),
                ("Growth with each further cross", f"factor +{r2:.3f}", slope, 0.1),
                ("Distance with two crosses", "mm", intercept, 1),
                ("Slope of learning", rf"ln\(mm\) per ln\(rank\) +{practice_r2:.3f}", practice,
                 0.001),
                ("Errors", "% of the valid trials", error, 0.1)):
            shown = re.search(rf"{name} +(-?[0-9.]+) +{unit}\n", text)
            self.assertIsNotNone(shown, name)
            self.assertAlmostEqual(float(shown[1]), value, delta=0.500001 * step, msg=name)
        self.assertNotIn("v_t4", text)
        self.assertEqual(text.count("\f"), 1, "pages")

    # Instruction and training

    def test_the_instruction_shows_its_seven_steps_and_the_training_leads_to_the_test(self) -> None:
        robot, task = self.start_memory(instruction=True, training=True)
        for step in range(1, 7):
            task.next_step()
            robot.wait_still()
            self.assert_looks_like(example_of(task, robot.eyes.whole()), f"memory-example-{step}")
            if step == 1:
                task.switch_guides()
                self.assert_looks_like(guides_of(task, robot.eyes.whole()), "memory-guides")
                task.switch_guides()
                self.assert_looks_like(example_of(task, robot.eyes.whole()), "memory-example-1")
        task.next_step()
        robot.wait_still()
        self.assertTrue(task.is_shown(task.mode))
        self.assertIsNone(task.question())

        task.press_corner_button()
        for number in range(3):
            if number > 0:
                self.go_on(task)
            run = self.watched(task)
            self.assertFalse(task.is_shown(task.mode))
            task.answer(run.last, run.first)
        task.wait_shown(task.go, "the Go button of the test")
        self.assertTrue(task.eyes.pointer_is_shown())
        self.assertEqual(task.eyes.pointer(), (task.x, task.y))
        self.assertEqual(self.rows(), [])
        self.assertTrue(task.reads("le_number", "30"))

    # The assessor's keys

    def held(self, robot: Robot, task: MemoryTask, key: str) -> None:
        """What holds after P or E: a word at the top right, and nothing goes on by itself."""
        robot.hands.press(key)
        task.wait_shown(task.mode, "a word at the top right")
        task.wait_continue()
        self.assertTrue(holds_for(lambda: not task.crosses(), 0.6))

    def test_the_assessors_keys_strike_hold_and_break_off(self) -> None:
        robot, task = self.start_memory()
        task.press_go()
        struck = self.watched(task)
        self.held(robot, task, "e")
        self.assert_is_row(self.wait_rows(1)[0], task, struck, 1, "", "")
        self.assertTrue(task.reads("le_no", "0"))  # an error takes back a further rank

        task.press_continue()
        task.wait_cross()
        self.held(robot, task, "p")
        self.assertEqual(self.wait_rows(2)[1], IDENTITY + [b"paused"])
        self.go_on(task)
        self.assertFalse(task.is_shown(task.mode))
        run = task.watch_run()
        load = len(struck.crosses)
        self.assertEqual(len(run.crosses), load)  # it was held at its first cross
        task.answer(run.last, run.last)
        row = self.wait_rows(3)[2]
        self.assertEqual((row[SUBTASK], row[RANK], row[ERROR]),
                         (str(load - 2).encode(), b"0", b"0"))
        task.wait_continue()
        robot.hands.press("Escape")
        robot.main_window()
        wait_for("the stored session number", lambda: robot.session_shown(4) == "0")
        self.assertEqual(self.wait_rows(4)[3], IDENTITY + [b"interrupted"])
        self.assertFalse((self.root / "Results" / "results_T4.csv").exists())
        self.assertEqual(self.patients(), patient_line())


def clicked(task: MemoryTask, place: Point, distance: str) -> Point:
    """On the place, or aside of it on the side of the centre."""
    x, y = place
    if distance == ACROSS:
        return (x - ASIDE if x > task.x else x + ASIDE), y
    if distance == DOWN:
        return x, (y - ASIDE if y > task.y else y + ASIDE)
    return place


def line(xs: list[float], ys: list[float]) -> tuple[float, float, float]:
    """Slope, intercept and r2 of the straight line through these points."""
    centre, mean = sum(xs) / len(xs), sum(ys) / len(ys)
    across = sum((x - centre) ** 2 for x in xs)
    both = sum((x - centre) * (y - mean) for x, y in zip(xs, ys))
    slope = both / across
    return slope, mean - slope * centre, slope * both / sum((y - mean) ** 2 for y in ys)


def scores_of(rows: list[list[bytes]]) -> list[float]:
    """The scores from the rows, by arithmetic of our own. What a short test lacks counts as a
    logarithm of 0 at load 0."""
    lacking = RANKS - len(rows)
    loads = [int(row[SUBTASK]) for row in rows] + [0] * lacking
    log_ranks = [math.log(rank) for rank in range(1, RANKS + 1)]

    def corrected(column: int) -> tuple[list[float], tuple[float, float, float]]:
        logs = [math.log(float(row[column])) for row in rows] + [0.0] * lacking
        fitted = line(log_ranks, logs)
        return [log + fitted[0] * (log_ranks[-1] - at)
                for log, at in zip(logs, log_ranks)], fitted
    first, practice = corrected(T4_FIRST)
    last, _ = corrected(T4_LAST)
    by_load = [0.0] * RANKS
    for rank, load in enumerate(loads):
        by_load[BLOCKS * load + rank // LOADS] = first[rank]
    growth = line([float(at // BLOCKS) for at in range(RANKS)], by_load)
    return [math.exp(sum(first) / RANKS), math.exp(sum(last) / RANKS), math.exp(growth[0]),
            math.exp(growth[1]), growth[2], practice[0], practice[2], 0.0]


if __name__ == "__main__":
    unittest.main()
