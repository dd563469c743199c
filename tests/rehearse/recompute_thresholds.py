#!/usr/bin/env python3
"""Walks the staircases of the visual perception task once more from the trial rows alone, and
compares exposures, ranks and stops of every trial, the rows of scores, the valid rows and the
patients' thresholds with what the program wrote.

    recompute_thresholds.py ROOT

Exit code 0: all of it agrees. Each difference is a line of output.
"""

import math
import sys
from pathlib import Path

from recompute_scores import IDENTITY, TOLERANCE, rows

TABLES = {
    60: [17, 17, 33, 33, 50, 67, 83, 117, 150, 217, 283]
    + [367, 483, 650, 850, 1133, 1500, 1983, 2633, 3500, 4633, 4633],
    120: [17, 17, 33, 42, 50, 67, 92, 117, 158, 208, 275]
    + [367, 492, 650, 858, 1133, 1500, 1992, 2633, 3492, 4633, 4633],
}
SHORTEST, LONGEST = 1, 20  # places on the table; those beyond reflect
LEAST, MOST = 20, 50  # entries of a track for a result, and for giving up
SUBTASKS = {"1": (0, 1, 2), "5": (0,), "6": (1,), "7": (2,)}  # by the column task
TASK, SESSION, SUBTASK, RANK_TASK, RANK_SUB, EXPOSURE = 5, 6, 9, 10, 11, 12
FIGURE, FIGURE_ANSWER, PLACE, PLACE_ANSWER, TIME, ANSWER, LIMIT = range(13, 20)
ERROR = 29
TRIALS, FIRST_GROUP, GROUP = 10, 11, 7
LIST_SESSION, LIST_THRESHOLD = 3, 11  # places in a patient's line; the task's number is added
TIME_LIMIT = "5000"
FIGURES = {kind + side for kind in ("Id", "Sh", "Cn", "Or", "Sz") for side in "LR"}
PLACES = {"TL", "ML", "BL", "TR", "MR", "BR"}


class Track:
    """One staircase: a step down after a success, a step up after a failure."""

    def __init__(self, exposure, table):
        self.table = table
        self.exposure = exposure
        fitting = (i for i in range(SHORTEST, LONGEST + 1) if table[i] >= exposure)
        self.place = next(fitting, LONGEST)
        self.entries = {0: self.place}  # a place that was never entered counts as 0
        self.n = 0
        self.errors = 0
        self.peaks = []
        self.troughs = []
        self.score = None

    def enter(self, place):
        self.place = place
        self.entries[self.n + 1] = place

    def step(self, success):
        """True if the walk was reflected."""
        self.enter(self.place + (-1 if success else 1))
        reflected = not SHORTEST <= self.place <= LONGEST
        if reflected:
            self.n += 1
            self.enter(SHORTEST if success else LONGEST)
        self.exposure = self.table[self.place]
        return reflected

    def close_trial(self):
        self.n += 1

    def analyse(self):
        self.note_turning_points()
        peaks, troughs = settled(self.peaks), settled(self.troughs)
        if peaks and troughs and self.n >= LEAST:
            self.score = Score(peaks, troughs, self.table)

    def note_turning_points(self):
        def back(k):
            return self.entries.get(self.n - k, 0)

        if self.n > 1:
            if back(1) > max(back(2), back(0)):
                self.peaks.append(back(1))
            if back(1) < min(back(2), back(0)):
                self.troughs.append(back(1))
        if self.n > 2:  # a reflection has passed over these
            if back(3) == LONGEST + 1 and back(2) < min(back(3), back(1)):
                self.troughs.append(back(2))
            if back(3) == SHORTEST - 1 and back(2) > max(back(3), back(1)):
                self.peaks.append(back(2))


class Score:
    def __init__(self, peaks, troughs, table):
        self.sup = geometric_mean([table[place] for place in peaks])
        self.inf = geometric_mean([table[place] for place in troughs])
        self.mean = geometric_mean([table[place] for place in peaks + troughs])
        self.limit_sup = peaks.count(LONGEST + 1)
        self.limit_inf = troughs.count(SHORTEST - 1)


def geometric_mean(values):
    return math.exp(sum(math.log(value) for value in values) / len(values))


def settled(points):
    """The most recent four turning points that lie within three neighbouring places."""
    for last in range(len(points) - 1, 2, -1):
        groups = []
        for below in range(3):
            low = points[last] - below
            fitting = [k for k in range(last - 1, -1, -1) if low <= points[k] <= low + 2][:3]
            if len(fitting) == 3:
                groups.append((fitting[-1], -below, [points[k] for k in [last] + fitting]))
        if groups:
            return max(groups)[2]
    return None


class Test:
    """The trial rows from one press of the start button to the end."""

    def __init__(self, first):
        self.patient = tuple(first[:IDENTITY])
        self.task = first[TASK]
        self.session = first[SESSION]
        self.rows = []
        self.interrupted = False
        self.tracks = {}
        self.trials = 0
        self.end = None  # "done", "unstable", or none: by the assessor, or the number ran out
        self.differences = []

    def name(self):
        return f"task {self.task}, session {self.session} of {self.patient[2]}"

    def differ(self, what):
        self.differences.append(f"{self.name()}: {what}")

    def expect(self, row, column, value, what):
        if row[column] != str(value):
            self.differ(f"trial {self.trials}: {what} is {row[column]}, not {value}")

    def counted(self):
        return [row for row in self.rows if not is_struck(row)]

    def walk(self, table):
        for row in self.rows:
            if self.end:
                self.differ(f"trial {self.trials}: there are rows behind the end")
                return
            self.walk_trial(row, table)
        self.check_order()

    def walk_trial(self, row, table):
        subtask = int(row[SUBTASK]) - 1
        if subtask not in self.tracks:
            self.tracks[subtask] = Track(int(row[EXPOSURE]), table)
        track = self.tracks[subtask]
        self.expect(row, EXPOSURE, track.exposure, "the exposure")
        reflected = False
        if is_struck(row):
            track.errors += 1
            self.expect(row, TIME, 0, "the answer time")
        else:
            reflected = self.answer(row, subtask, track)
            self.trials += 1
            track.close_trial()
        self.expect(row, LIMIT, int(reflected), "the mark of the limit")
        self.expect(row, RANK_TASK, self.trials, "the rank")
        self.expect(row, RANK_SUB, track.n, "the rank in the subtask")
        self.stop(row, track)

    def answer(self, row, subtask, track):
        if row[ERROR] == "1":
            track.errors += 1
            self.expect(row, TIME, TIME_LIMIT, "the time of a trial without an answer")
            return False
        self.expect(row, ANSWER, judged(row, subtask), "the code of the answer")
        return track.step(row[ANSWER] == "0")

    def stop(self, row, track):
        asked = [self.tracks.get(subtask) for subtask in SUBTASKS[self.task]]
        if all(one and one.n >= MOST for one in asked):
            self.end = "unstable"
        elif not is_struck(row):
            track.analyse()
            if all(one and one.score for one in asked):
                self.end = "done"

    def check_order(self):
        """Subtasks, figures and places come in shuffles in which each is there once."""
        subtasks = [int(row[SUBTASK]) - 1 for row in self.counted()]
        asked = set(SUBTASKS[self.task])
        self.check_shuffles(subtasks, asked, "the subtasks")
        if all(row[ERROR] == "0" for row in self.rows):  # an error moves both on
            shown = [row[FIGURE] for row in self.rows if row[SUBTASK] != "2"]
            places = [row[PLACE] for row in self.rows if row[SUBTASK] != "1"]
            self.check_shuffles(shown, FIGURES, "the figures")
            self.check_shuffles(places, PLACES, "the places")

    def check_shuffles(self, shown, each, what):
        for start in range(0, len(shown), len(each)):
            part = shown[start : start + len(each)]
            if len(set(part)) != len(part) or not set(part) <= each:
                self.differ(f"{what} from the {start + 1}th on are {part}")

    def threshold(self, subtask):
        """In ms, with decimals."""
        track = self.tracks.get(subtask)
        if track is None:
            return None
        return track.score.mean if self.end == "done" else track.exposure

    def check_scores(self, row):
        if self.end == "unstable":
            self.differ("has scores, and was unstable")
        done = self.trials if self.end == "done" else 0
        if row[TRIALS] != str(done):
            self.differ(f"has {row[TRIALS]} trials, not {done}")
        for subtask in range(3):
            first = FIRST_GROUP + GROUP * subtask
            self.check_group(subtask, row[first : first + GROUP])

    def check_group(self, subtask, fields):
        if subtask not in SUBTASKS[self.task]:
            if any(fields):
                self.differ(f"subtask {subtask + 1} was not asked for and has {fields}")
            return
        track = self.tracks.get(subtask)
        if track is None:
            return
        score = track.score
        value, errors, reversals, sup, limit_sup, inf, limit_inf = fields
        expected = [track.errors, len(track.peaks) + len(track.troughs)]
        expected += [score.limit_sup, score.limit_inf] if score else [0, 0]
        found = [int(text) for text in (errors, reversals, limit_sup, limit_inf)]
        means = [score.sup, score.inf] if score else [0.0, 0.0]
        near = all(abs(float(a) - b) <= TOLERANCE for a, b in zip((sup, inf), means))
        if found != expected or not near or not is_cut(value, self.threshold(subtask)):
            self.differ(
                f"subtask {subtask + 1} has {fields}, not {self.threshold(subtask)} with errors, "
                f"reversals and limits {expected} and means {means}"
            )


def is_struck(row):
    return row[ERROR] == "1" and row[ANSWER] == ""


def is_cut(text, value):
    """The whole part of the value; a hair beside a whole number it may be either."""
    return int(text) in (math.floor(value - 1e-9), math.floor(value + 1e-9))


def judged(row, subtask):
    central = 1 if subtask != 1 and row[FIGURE][:2] != row[FIGURE_ANSWER] else 0
    peripheral = 2 if subtask != 0 and row[PLACE] != row[PLACE_ANSWER] else 0
    unasked = {0: (PLACE, PLACE_ANSWER), 1: (FIGURE, FIGURE_ANSWER), 2: ()}[subtask]
    if any(row[column] for column in unasked):
        return "none with the other half filled in"
    return central + peripheral


def read_tests(root):
    tests, running = [], None
    for row in rows(root / "Results" / "output.csv"):
        if row[IDENTITY] == "interrupted":
            if running:
                running.interrupted = True
            running = None
        elif row[IDENTITY] != "paused":
            key = (tuple(row[:IDENTITY]), row[TASK], row[SESSION])
            if running is None or key != (running.patient, running.task, running.session):
                running = Test(row)
                tests.append(running)
            running.rows.append(row)
    return [test for test in tests if test.task in SUBTASKS]


def frequency(root):
    number = int.from_bytes((root / "Parameters" / "screen.pix").read_bytes()[8:12], "big")
    return 120 if number == 1 else 60


def compare_scores(root, finished):
    path = root / "Results" / "results_T1.csv"
    score_rows = rows(path) if path.exists() else []
    if len(score_rows) != len(finished):
        return [f"{len(score_rows)} rows of scores for {len(finished)} finished tests"]
    differences = []
    for row, test in zip(score_rows, finished):
        if (tuple(row[:IDENTITY]), row[TASK], row[SESSION]) != (
            test.patient,
            test.task,
            test.session,
        ):
            differences.append(f"{test.name()}: the row of scores is another one's")
        else:
            test.check_scores(row)
    return differences


def compare_valid_rows(root, finished):
    path = root / "Results" / "valid-output.csv"
    valid = [row for row in rows(path) if row[TASK] in SUBTASKS] if path.exists() else []
    expected = [row for test in finished for row in test.counted()]
    return [] if valid == expected else ["the valid rows are not those of the finished tests"]


def patient_lines(root):
    text = (root / "Parameters" / "patients_list.txt").read_text(encoding="utf-8")
    lines = [line.split(";") for line in text.splitlines() if line]
    return {(fields[1], fields[2], fields[3].replace(".", "/")): fields for fields in lines}


def compare_patients(root, tests, finished):
    """A test leaves its thresholds in the patient's line, and its session if it was finished. A
    training leaves no row, so that only the last test of a patient tells what stands there."""
    differences = []
    lines = patient_lines(root)
    for test in {test.patient: test for test in tests}.values():
        line = lines[test.patient[2:]]
        for subtask in SUBTASKS[test.task]:
            value, text = test.threshold(subtask), line[LIST_THRESHOLD + subtask]
            if test.end != "unstable" and value is not None and not is_cut(text, value):
                differences.append(f"{test.name()}: {text} stands on the list, not {value}")
    for test in {(test.patient, test.task): test for test in finished}.values():
        session = lines[test.patient[2:]][LIST_SESSION + int(test.task)]
        if session != test.session:
            differences.append(f"{test.name()}: session {session} stands on the list")
    return differences


def compare(root):
    tests = read_tests(root)
    for test in tests:
        test.walk(TABLES[frequency(root)])
    finished = [test for test in tests if not test.interrupted]
    differences = [] if tests else ["no trials"]
    differences += compare_scores(root, finished)
    differences += compare_valid_rows(root, finished)
    differences += compare_patients(root, tests, finished)
    return [line for test in tests for line in test.differences] + differences


def main():
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    differences = compare(Path(sys.argv[1]))
    print("\n".join(differences))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
