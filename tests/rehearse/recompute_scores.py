#!/usr/bin/env python3
"""Works out the scores of the attention task from the trial rows alone, and compares them with the
rows of scores that the program wrote.

    recompute_scores.py ROOT

Exit code 0: every row of scores agrees to a millionth. Each difference is a line of output.
"""

import math
import sys
from pathlib import Path

CONDITIONS = 3
RANKS = 32  # reaction times kept per condition
FITTED = 20  # of which so many make the learning curve
IDENTITY = 5
TASK, SESSION, SUBTASK, RANK_SUB, RT, ERROR = 5, 6, 9, 11, 20, 29
TRIALS, FIRST_SCORE = 10, 11
TOLERANCE = 1.000001e-6


def rows(path):
    lines = path.read_text(encoding="latin-1").splitlines()
    return [line.split(";") for line in lines[1:]]


def divide(a, b):
    """As the machine divides: no complaint about a zero."""
    if b != 0.0:
        return a / b
    return math.nan if a == 0.0 or math.isnan(a) else math.copysign(math.inf, a)


def finished_tests(root):
    """The trial rows by test. A test that was broken off leaves its number to the next one."""
    tests = {}
    running = {}
    for row in rows(root / "Results" / "output.csv"):
        patient = tuple(row[:IDENTITY])
        if row[IDENTITY] == "interrupted":
            tests.pop(running.get(patient), None)
        elif row[IDENTITY] == "paused":
            continue
        elif row[TASK] == "2":
            running[patient] = patient + (row[SESSION],)
            tests.setdefault(running[patient], []).append(row)
    return tests


def time_table(trials):
    """One slot a rank, rows of a condition on end: what a row can't hold goes into the next one.
    Behind the three rows lie three for the corrected times."""
    table = [0.0] * (2 * CONDITIONS * RANKS)
    for row in trials:
        slot = (int(row[SUBTASK]) - 1) * RANKS + int(row[RANK_SUB]) - 1
        if row[ERROR] == "0" and 0 <= slot < len(table):
            table[slot] = float(int(row[RT]))
    return table


def fit(x, y):
    n = len(x)
    mean_x, mean_y = sum(x) / n, sum(y) / n
    sum_xy = sum(a * b for a, b in zip(x, y))
    sum_dx2 = sum((a - mean_x) ** 2 for a in x)
    sum_dy2 = sum((b - mean_y) ** 2 for b in y)
    slope = divide(sum_xy - n * mean_x * mean_y, sum_dx2)
    return slope, divide(slope * slope * sum_dx2, sum_dy2)


def scores(trials):
    table = time_table(trials)
    logs = [math.log(rank) for rank in range(1, FITTED + 1)]
    means, fits, errors = [], [], []
    for condition in range(CONDITIONS):
        times = table[condition * RANKS : (condition + 1) * RANKS]
        slope, r2 = fit(logs, times[:FITTED])
        corrected = [
            time + slope * (math.log(FITTED) - log) for time, log in zip(times[:FITTED], logs)
        ]
        means.append((sum(corrected) + sum(times[FITTED:])) / RANKS)
        fits.append((slope, r2))
        wrong = sum(row[ERROR] == "1" and int(row[SUBTASK]) == condition + 1 for row in trials)
        errors.append(100.0 * wrong / len(trials))
    values = [means[0], means[0] - means[1], means[0] - means[2]]
    return [
        number
        for value, error, (slope, r2) in zip(values, errors, fits)
        for number in (value, error, slope, r2)
    ]


def agrees(index, expected, text):
    written = float(text)
    if math.isnan(expected) or math.isnan(written):
        return math.isnan(expected) and math.isnan(written)
    tolerance = 0.05 + 1e-9 if index % 4 == 1 else TOLERANCE
    return abs(expected - written) <= tolerance


def compare(root):
    tests = finished_tests(root)
    score_rows = rows(root / "Results" / "results_T2.csv")
    differences = []
    if not score_rows:
        differences.append("no row of scores")
    for row in score_rows:
        test = tests.get(tuple(row[:IDENTITY]) + (row[SESSION],))
        name = f"session {row[SESSION]} of {row[2]}"
        if test is None:
            differences.append(f"{name}: no trials")
            continue
        if int(row[TRIALS]) != len(test):
            differences.append(f"{name}: {row[TRIALS]} trials, {len(test)} rows")
        for index, expected in enumerate(scores(test)):
            text = row[FIRST_SCORE + index]
            if not agrees(index, expected, text):
                differences.append(f"{name}: score {index + 1} is {text}, not {expected:.6f}")
    return differences


def main():
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    differences = compare(Path(sys.argv[1]))
    print("\n".join(differences))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
