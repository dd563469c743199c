#!/usr/bin/env python3
"""Works out the scores of the working memory task from the trial rows alone, and compares them with
the rows of scores that the program wrote. The order of the trials, the valid rows and the sessions
in the patients' list are checked too.

    recompute_memory.py ROOT

Exit code 0: all of it agrees. Each difference is a line of output.

The rows hold the distances rounded to 0.01 mm, the scores were made of the whole numbers. A score
agrees if roundings can explain the difference: each distance is moved by 0.005 mm in turn, and what
that changes in the score is added up; the score's own rounding to a millionth comes on top.
"""

import math
import sys
from pathlib import Path

from recompute_movement import check_list, finished_tests, key, tests_of
from recompute_scores import IDENTITY, SESSION, TASK, TOLERANCE, divide, rows

RANKS, LOADS, BLOCKS = 30, 6, 5
SUBTASK, RANK, DISTANCE_FIRST, DISTANCE_LAST, PLACE_FIRST, PLACE_LAST = 9, 10, 25, 26, 27, 28
ERROR = 29
TRIALS, FIRST_SCORE = 10, 11
NAMES = ["average_f", "average_l", "t4_slope", "t4_intercept", "t4_r2"]
NAMES += ["t4l_slope", "t4l_r2", "t4_error"]
LN_RANKS = [math.log(rank) for rank in range(1, RANKS + 1)]
ROUNDING = 0.005  # mm, of a distance
CURVATURE = 1.1  # the sum of the changes is that of small ones


def number(text):
    """As the country of the program's run writes it, in front of it blanks."""
    return float(text.strip().replace(",", "."))


class Table:
    """The logarithms of the distances by rank. A rank that no trial has reached stays 0."""

    def __init__(self, valid):
        self.first, self.last = [0.0] * RANKS, [0.0] * RANKS
        self.loads = [0] * RANKS
        self.slack_first, self.slack_last = [0.0] * RANKS, [0.0] * RANKS
        for row in valid:
            rank = int(row[RANK]) - 1
            if 0 <= rank < RANKS:  # a later trial of the same rank takes the place
                self.first[rank], self.slack_first[rank] = logarithm(row[DISTANCE_FIRST])
                self.last[rank], self.slack_last[rank] = logarithm(row[DISTANCE_LAST])
                self.loads[rank] = int(row[SUBTASK])


def logarithm(text):
    distance = number(text)
    return math.log(distance), ROUNDING / (distance - ROUNDING)


def line(x, y):
    """Slope, height at 0 and share of the squares, from centred sums."""
    mean_x, mean_y = sum(x) / len(x), sum(y) / len(y)
    sum_xy = sum((a - mean_x) * (b - mean_y) for a, b in zip(x, y))
    sum_xx = sum((a - mean_x) ** 2 for a in x)
    sum_yy = sum((b - mean_y) ** 2 for b in y)
    slope = sum_xy / sum_xx
    return slope, mean_y - slope * mean_x, divide(slope * slope * sum_xx, sum_yy)


def at_last_rank(logarithms):
    slope, _, r2 = line(LN_RANKS, logarithms)
    level = [y + slope * (LN_RANKS[-1] - x) for x, y in zip(LN_RANKS, logarithms)]
    return level, slope, r2


def scores(first, last, loads):
    level_first, slope, r2 = at_last_rank(first)
    level_last, _, _ = at_last_rank(last)
    by_load = [[0.0] * BLOCKS for _ in range(LOADS)]
    for rank, (load, level) in enumerate(zip(loads, level_first)):
        by_load[load][rank // LOADS] = level
    axis = [float(load) for load in range(LOADS) for _ in range(BLOCKS)]
    growth, lowest, growth_r2 = line(axis, [level for row in by_load for level in row])
    averages = [math.exp(sum(levels) / RANKS) for levels in (level_first, level_last)]
    return averages + [math.exp(growth), math.exp(lowest), growth_r2, slope, r2]


def tolerances(table, expected):
    """For each score how far the rounding of the distances can have moved it."""
    sums = [0.0] * len(expected)
    for kind, slacks in enumerate((table.slack_first, table.slack_last)):
        for rank, slack in enumerate(slacks):
            moved = [list(table.first), list(table.last)]
            moved[kind][rank] += slack
            changed = scores(*moved, table.loads)
            sums = [total + abs(a - b) for total, a, b in zip(sums, changed, expected)]
    return [CURVATURE * total + TOLERANCE for total in sums]


def agrees(expected, text, tolerance):
    written = float(text)
    if not math.isfinite(expected) or not math.isfinite(written):
        return math.isfinite(expected) == math.isfinite(written)
    return abs(expected - written) <= tolerance


def check_row(name, row, rank):
    differences = []
    if row[RANK] != str(rank):
        differences.append(f"{name}: {row} isn't that of rank {rank}")
    if row[SUBTASK] not in "012345":
        differences.append(f"{name}: {row[SUBTASK]} is no load")
    if not {int(row[PLACE_FIRST]), int(row[PLACE_LAST])} <= set(range(1, 13)):
        differences.append(f"{name}: {row} tells of no sectors")
    for text in (row[DISTANCE_FIRST], row[DISTANCE_LAST]):
        if (text == "") != (row[ERROR] == "1") or (text and number(text) < 1.0):
            differences.append(f"{name}: a distance of '{text}' at rank {rank}")
    return differences


def check_trials(test):
    """An invalid trial takes back a further rank, and its load is asked again."""
    differences = []
    rank = 1
    for row, following in zip(test.rows, test.rows[1:] + [None]):
        differences += check_row(test.name(), row, rank)
        rank += 1 if row[ERROR] == "0" else -1
        if row[ERROR] == "1" and following and following[SUBTASK] != row[SUBTASK]:
            differences.append(f"{test.name()}: load {row[SUBTASK]} isn't asked again")
    loads = [row[SUBTASK] for row in test.valid()]
    for start in range(0, len(loads), LOADS):
        part = loads[start : start + LOADS]
        if len(set(part)) != len(part):
            differences.append(f"{test.name()}: the loads of a block are {part}")
    return differences


def attention_session(test, trials, attention):
    """The row of scores carries the number of the last attention test that was finished before."""
    session = "0"
    places = {id(row): place for place, row in enumerate(trials)}
    for other, _ in attention:
        same = other.key[:IDENTITY] == test.key[:IDENTITY]
        if same and places[id(other.rows[0])] < places[id(test.rows[0])]:
            session = other.key[-1]
    return session


def check_scores(test, valid, row, session):
    name = test.name()
    if row[:IDENTITY] != list(test.key[:IDENTITY]) or row[TASK] != "4":
        return [f"{name}: the row of scores is another one's"]
    differences = []
    if row[SESSION] != session:
        differences.append(f"{name}: the scores carry the number {row[SESSION]}, not {session}")
    if int(row[TRIALS]) != len(valid):
        differences.append(f"{name}: {row[TRIALS]} trials, {len(valid)} valid rows")
    table = Table(valid)
    expected = scores(table.first, table.last, table.loads)
    bounds = tolerances(table, expected)
    expected.append(100.0 * (len(test.rows) - len(valid)) / len(valid))
    bounds.append(TOLERANCE)
    for score, value, text, bound in zip(NAMES, expected, row[FIRST_SCORE:], bounds):
        if not agrees(value, text, bound):
            differences.append(f"{name}: {score} is {text}, not {value:.6f} within {bound:.6f}")
    if len(row) != FIRST_SCORE + len(NAMES):
        differences.append(f"{name}: {len(row)} columns")
    return differences


def compare(root):
    results = root / "Results"
    trials = rows(results / "output.csv")
    valid_path, scores_path = results / "valid-output.csv", results / "results_T4.csv"
    valid_rows = rows(valid_path) if valid_path.exists() else []
    score_rows = rows(scores_path) if scores_path.exists() else []
    tests = tests_of(trials, "4")
    finished, strange = finished_tests(tests, tests_of(valid_rows, "4"))
    attention, _ = finished_tests(tests_of(trials, "2"), tests_of(valid_rows, "2"))
    differences = [] if tests else ["no trials"]
    differences += [f"{name}: the valid rows are those of no test" for name in strange]
    for test in tests:
        differences += check_trials(test)
    if len(score_rows) != len(finished):
        differences.append(f"{len(score_rows)} rows of scores for {len(finished)} finished tests")
    for (test, valid), row in zip(finished, score_rows):
        session = attention_session(test, trials, attention)
        differences += check_scores(test, valid, row, session)
    return differences + check_list(root, finished, 4)


def main():
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    differences = compare(Path(sys.argv[1]))
    print("\n".join(differences))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
