#!/usr/bin/env python3
"""Plays working memory tests with a simulated patient, and compares the scores with what the
patient's scatter implies.

    memory_recovery.py DIR OBSERVER.json [--play PROGRAM] [--tests N] [--seed N]

With PROGRAM, which is kelmoran-rehearse, so many tests are played with the observer, in two data
roots in DIR; without it those that were played there before are read. The expected scores are
worked out from the section "memory" of the observer; it must hold both crosses, practice and
confusions. Printed is a line for each score: what is expected, the mean of the tests, its standard
error, and how many of these lie between the two. Factors and millimetres are compared by their
logarithms.

Exit code 0: all means lie within three standard errors. What confusions do isn't worked out: with
them the code is 0 whatever comes out.
"""

import argparse
import json
import math
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from recompute_scores import rows

RANKS, LOADS = 30, 6
PITCH = 0.27  # mm per pixel, as the simulated assessor calibrates the screen
EULER = 0.5772156649015329
NAMES = ["average_f", "average_l", "t4_slope", "t4_intercept", "t4l_slope"]
COLUMNS = [11, 12, 13, 14, 16]
LOGARITHMIC = 4  # so many of them
PROCESSES = 2
ALLOWED = 3.0  # standard errors

LN_RANKS = [math.log(rank) for rank in range(1, RANKS + 1)]
MEAN_LN_RANK = sum(LN_RANKS) / RANKS
SQUARES = sum((x - MEAN_LN_RANK) ** 2 for x in LN_RANKS)
WEIGHTS = [(x - MEAN_LN_RANK) / SQUARES for x in LN_RANKS]  # of the practice line's slope
MIDDLE = (LOADS - 1) / 2
LEVERS = [(load - MIDDLE) / (RANKS / LOADS * 17.5) for load in range(LOADS)]  # of the growth


def exponential_integral(x):
    """E1, by its series or its continued fraction."""
    if x > 2.0:
        value = 0.0
        for n in range(60, 0, -1):
            value = n / (1.0 + n / (x + value))
        return math.exp(-x) / (x + value)
    total, term = -EULER - math.log(x), 1.0
    for n in range(1, 40):
        term *= -x / n
        total -= term / n
    return total


def mean_logarithm(spread):
    """Of a distance in mm whose two axes scatter by so much: that of a Rayleigh distance, ln(spread
    sqrt 2) - Euler / 2, but nothing below 1 mm. Whole pixels add a little to the scatter."""
    variance = spread**2 + PITCH**2 / 12.0
    return 0.5 * exponential_integral(1.0 / (2.0 * variance))


def expected_table(trace, practice):
    """By rank and load."""
    return [
        [
            mean_logarithm(trace["spread"] * trace["growth"] ** load * rank**-practice)
            for load in range(LOADS)
        ]
        for rank in range(1, RANKS + 1)
    ]


def expected_level(table):
    """The slope of the practice line, and the mean carried forward to the last rank."""
    means = [sum(row) / LOADS for row in table]
    slope = sum(weight * mean for weight, mean in zip(WEIGHTS, means))
    return slope, sum(means) / RANKS + slope * (LN_RANKS[-1] - MEAN_LN_RANK)


def expected_growth(table):
    """The line against the load, over all orders in which a block of six can ask for the loads. A
    block's order tilts the practice line too, which takes a little of the growth away."""
    pulls = [sum(lever * y for lever, y in zip(LEVERS, row)) for row in table]
    growth = sum(pulls) / LOADS
    for rank, (x, pull) in enumerate(zip(LN_RANKS, pulls)):
        start = rank // LOADS * LOADS
        for other in range(start, start + LOADS):
            share = pull / LOADS if other == rank else -pulls[other] / (LOADS * (LOADS - 1))
            growth -= x * WEIGHTS[other] * share
    return growth


def expected_scores(memory):
    first = expected_table(memory["first"], memory["practice"])
    slope, level = expected_level(first)
    _, level_last = expected_level(expected_table(memory["last"], memory["practice"]))
    growth = expected_growth(first)
    return [level, level_last, growth, level - MIDDLE * growth, slope]


def play(program, root, observer, tests, seed):
    command = [program, "--root", str(root), "--task", "test4", "--observer", str(observer)]
    command += ["--seed", str(seed), "--repeat", str(tests)]
    subprocess.run(command, capture_output=True, check=True)


def play_all(program, roots, observer, tests, seed):
    shares = [tests // len(roots) + (i < tests % len(roots)) for i in range(len(roots))]
    with ThreadPoolExecutor(len(roots)) as pool:
        played = [
            pool.submit(play, program, root, observer, share, seed + i)
            for i, (root, share) in enumerate(zip(roots, shares))
        ]
        for part in played:
            part.result()


def score_rows(roots):
    scores = [row for root in roots for row in rows(root / "Results" / "results_T4.csv")]
    return [[float(row[column]) for column in COLUMNS] for row in scores]


def mean_and_error(values):
    mean = sum(values) / len(values)
    variance = sum((value - mean) ** 2 for value in values) / (len(values) - 1)
    return mean, math.sqrt(variance / len(values))


def compare(scores, expected):
    """False if a mean lies too far off."""
    fine = True
    print("score expected mean error distance")
    for i, name in enumerate(NAMES):
        logarithmic = i < LOGARITHMIC
        values = [math.log(row[i]) if logarithmic else row[i] for row in scores]
        mean, error = mean_and_error(values)
        distance = (mean - expected[i]) / error
        fine = fine and abs(distance) <= ALLOWED
        shown = [math.exp(value) if logarithmic else value for value in (expected[i], mean)]
        shown.append(shown[1] * error if logarithmic else error)
        print(name, *(f"{value:.4f}" for value in shown), f"{distance:+.1f}")
    return fine


def main():
    parser = argparse.ArgumentParser(description="Scores against what the scatter implies.")
    parser.add_argument("dir", type=Path)
    parser.add_argument("observer", type=Path)
    parser.add_argument("--play", metavar="PROGRAM")
    parser.add_argument("--tests", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    given = parser.parse_args()
    memory = json.loads(given.observer.read_text(encoding="utf-8"))["memory"]
    roots = [given.dir / str(number) for number in range(PROCESSES)]
    if given.play:
        play_all(given.play, roots, given.observer, given.tests, given.seed)
    fine = compare(score_rows(roots), expected_scores(memory))
    return 0 if fine or memory["confusions"] > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
