#!/usr/bin/env python3
"""Works out the scores of the movement detection task from its valid rows alone, trials and errors
from the trial rows, and compares them with the rows of scores that the program wrote. The order of
the trials and the sessions in the patients' list are checked too.

    recompute_movement.py ROOT

Exit code 0: all of it agrees. Each difference is a line of output.
"""

import math
import sys
from pathlib import Path

from recompute_scores import IDENTITY, TOLERANCE, fit, rows
from recompute_thresholds import LIST_SESSION, patient_lines

RANKS = 40
PLACES = ["E", "SE", "S", "SW", "W", "NW", "N", "NE"]
DIRECTIONS = {"E", "S", "W", "N"}
MEANS = [  # of the places with these letters, over a whole test's trials there
    ("oblique", lambda place: len(place) == 2, 20),
    ("cardinal", lambda place: len(place) == 1, 20),
    ("left", lambda place: "W" in place, 15),
    ("right", lambda place: "E" in place, 15),
    ("top", lambda place: "N" in place, 15),
    ("bottom", lambda place: "S" in place, 15),
]
SCORES = ["t3_rt", "t3_error", "t3_slope", "t3_r2"] + [name for name, _, _ in MEANS]
TASK, SESSION, SUBTASK, RANK, RT, PLACE, DIRECTION, ERROR = 5, 6, 9, 10, 22, 23, 24, 29
TRIALS, FIRST_SCORE = 10, 11
SLOWEST = 5000  # ms, of a trial that counts


class Test:
    """The trial rows from one press of the start button to the end."""

    def __init__(self, first):
        self.key = key(first)
        self.rows = []

    def name(self):
        return f"session {self.key[-1]} of {self.key[2]}"

    def valid(self):
        return [row for row in self.rows if row[ERROR] == "0"]


def key(row):
    return tuple(row[:IDENTITY]) + (row[SESSION],)


def tests_of(trials, task):
    """Rows of one patient and session on end; after a broken-off test the number comes again."""
    tests, running = [], None
    for row in trials:
        if row[IDENTITY] == "interrupted":
            running = None
        elif row[IDENTITY] != "paused" and row[TASK] == task:
            if running is None or key(row) != running.key:
                running = Test(row)
                tests.append(running)
            running.rows.append(row)
    return tests


def read_tests(path):
    return tests_of(rows(path) if path.exists() else [], "3")


def finished_tests(tests, valid_tests):
    """The valid rows are written at the end of a test only."""
    finished, waiting = [], list(valid_tests)
    for test in tests:
        if waiting and test.valid() == waiting[0].rows:
            finished.append((test, waiting.pop(0).rows))
    return finished, [test.name() for test in waiting]


def check_trials(test):
    """Each eight valid trials ask for every place once, and an invalid one is asked for again."""
    differences = []
    rank = 1
    for row, following in zip(test.rows, test.rows[1:] + [None]):
        if row[RANK] != str(rank) or row[SUBTASK] != "1" or row[DIRECTION] not in DIRECTIONS:
            differences.append(f"{test.name()}: {row} isn't that of rank {rank}")
        if row[ERROR] == "0":
            rank += 1
            if not row[RT] or int(row[RT]) > SLOWEST:
                differences.append(f"{test.name()}: a time of {row[RT]} has counted")
        elif following and following[PLACE] != row[PLACE]:
            differences.append(f"{test.name()}: {row[PLACE]} at rank {rank} isn't asked again")
    places = [row[PLACE] for row in test.valid()]
    for start in range(0, len(places), len(PLACES)):
        part = places[start : start + len(PLACES)]
        if len(set(part)) != len(part) or not set(part) <= set(PLACES):
            differences.append(f"{test.name()}: the places from rank {start + 1} on are {part}")
    return differences


def scores(trials, valid):
    times = [float(int(row[RT])) for row in valid[:RANKS]]
    times += [0.0] * (RANKS - len(times))
    logs = [math.log(rank) for rank in range(1, RANKS + 1)]
    slope, r2 = fit(logs, times)
    corrected = [time + slope * (math.log(RANKS) - log) for time, log in zip(times, logs)]
    errors = len(trials) - len(valid)
    means = [
        sum(int(row[RT]) for row in valid if belongs(row[PLACE])) / count
        for _, belongs, count in MEANS
    ]
    return [sum(corrected) / RANKS, 100.0 * errors / len(trials), slope, r2] + means


def agrees(name, expected, text):
    written = float(text)
    if not math.isfinite(expected) or not math.isfinite(written):
        # Of equal times the last bits decide whether r2 is 0 / 0 or more than that.
        return math.isfinite(expected) == math.isfinite(written)
    return abs(expected - written) <= (0.05 + 1e-9 if name == "t3_error" else TOLERANCE)


def check_scores(test, valid, row):
    if key(row) != test.key or row[TASK] != "3":
        return [f"{test.name()}: the row of scores is another one's"]
    differences = []
    if int(row[TRIALS]) != len(test.rows):
        differences.append(f"{test.name()}: {row[TRIALS]} trials, {len(test.rows)} rows")
    for name, expected, text in zip(SCORES, scores(test.rows, valid), row[FIRST_SCORE:]):
        if not agrees(name, expected, text):
            differences.append(f"{test.name()}: {name} is {text}, not {expected:.6f}")
    if len(row) != FIRST_SCORE + len(SCORES):
        differences.append(f"{test.name()}: {len(row)} columns")
    return differences


def check_list(root, finished, task=3):
    """The list holds the number of the last finished test."""
    differences = []
    lines = patient_lines(root)
    for test in {test.key[:IDENTITY]: test for test, _ in finished}.values():
        session = lines[test.key[2:IDENTITY]][LIST_SESSION + task]
        if session != test.key[-1]:
            differences.append(f"{test.name()}: session {session} stands on the list")
    return differences


def compare(root):
    results = root / "Results"
    tests = read_tests(results / "output.csv")
    finished, strange = finished_tests(tests, read_tests(results / "valid-output.csv"))
    differences = [] if tests else ["no trials"]
    differences += [f"{name}: the valid rows are those of no test" for name in strange]
    for test in tests:
        differences += check_trials(test)
    path = results / "results_T3.csv"
    score_rows = rows(path) if path.exists() else []
    if len(score_rows) != len(finished):
        differences.append(f"{len(score_rows)} rows of scores for {len(finished)} finished tests")
    for (test, valid), row in zip(finished, score_rows):
        differences += check_scores(test, valid, row)
    return differences + check_list(root, finished)


def main():
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    differences = compare(Path(sys.argv[1]))
    print("\n".join(differences))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
