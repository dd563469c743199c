#!/usr/bin/python3
"""Draws the table of kelmoran-observers: plot.py observers.csv PICTURE

A column of panels for each subtask, a row for each measure, over the observer's threshold. The
colour tells the steepness of the observer, the line the screen. Observers who lapse in 2 % of the
trials are shown.
"""

import csv
import io
import sys

import matplotlib
from PIL import Image

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

SUBTASKS = ["central", "peripheral", "dual"]
LAPSE = 0.02
STEEPNESSES = {1.0: "#b2182b", 2.0: "#e08214", 4.0: "#2166ac", 8.0: "#1b7837"}
SCREENS = {60: "-", 120: (0, (3, 2))}
THRESHOLDS = [17, 50, 150, 500, 1500, 4633]

# A measure: its column, its title, what it is multiplied by, the line that would be ideal, the
# range of the axis, and its ticks if it is logarithmic.
MEASURES = [
    ("mean_by_threshold", "result / threshold", 1, 1, (0.5, 2.3), [0.5, 0.7, 1, 1.4, 2]),
    ("mean_by_half_right", "result / exposure\nat which half is right", 1, 1, (0.5, 2.3), [0.5, 0.7, 1, 1.4, 2]),
    ("smallest_change", "smallest change\nbetween visits (factor)", 1, None, (1, 6), [1, 1.5, 2, 3, 5]),
    ("trials_mean", "trials, mean", 1, None, (12, 26), None),
    ("unstable", "unstable (% of visits)", 100, None, (-0.03, 0.8), None),
]


def read(name):
    with open(name, encoding="ascii", newline="") as file:
        return list(csv.DictReader(file, delimiter=";"))


def number(text):
    return float(text) if text else float("nan")


def curve(rows, subtask, hertz, steepness, column, factor):
    points = [
        (number(row["threshold_ms"]), factor * number(row[column]))
        for row in rows
        if row["subtask"] == subtask
        and int(row["frequency_hz"]) == hertz
        and number(row["steepness"]) == steepness
        and number(row["lapse"]) == LAPSE
    ]
    return zip(*sorted(points))


def draw_panel(axes, rows, subtask, measure):
    column, _, factor, ideal, limits, ticks = measure
    if ideal is not None:
        axes.axhline(ideal, color="0.6", linewidth=0.8)
    for steepness, colour in STEEPNESSES.items():
        for hertz, line in SCREENS.items():
            x, y = curve(rows, subtask, hertz, steepness, column, factor)
            axes.plot(x, y, color=colour, linestyle=line, linewidth=1.2)
    axes.set_xscale("log")
    axes.set_xticks(THRESHOLDS, [str(ms) for ms in THRESHOLDS])
    axes.minorticks_off()
    if ticks:
        axes.set_yscale("log")
        axes.set_yticks(ticks, [str(tick) for tick in ticks])
        axes.minorticks_off()
    axes.set_ylim(limits)
    axes.grid(color="0.92", linewidth=0.6)
    for side in ("top", "right"):
        axes.spines[side].set_visible(False)


def add_legend(figure):
    lines = [plt.Line2D([], [], color=colour) for colour in STEEPNESSES.values()]
    names = [f"steepness {steepness:g}" for steepness in STEEPNESSES]
    lines += [plt.Line2D([], [], color="0.3", linestyle=line) for line in SCREENS.values()]
    names += [f"{hertz} Hz" for hertz in SCREENS]
    figure.legend(lines, names, loc="upper center", ncol=len(lines), frameon=False, fontsize=9)


def draw(rows, picture):
    plt.rcParams.update({"font.size": 8.5, "axes.edgecolor": "0.4"})
    figure, panels = plt.subplots(
        len(MEASURES), len(SUBTASKS), figsize=(9.2, 10.4), sharex=True, sharey="row"
    )
    for line, measure in zip(panels, MEASURES):
        for axes, subtask in zip(line, SUBTASKS):
            draw_panel(axes, rows, subtask, measure)
        line[0].set_ylabel(measure[1])
    for axes, subtask in zip(panels[0], SUBTASKS):
        axes.set_title(subtask, fontsize=10)
    for axes in panels[-1]:
        axes.set_xlabel("threshold of the observer (ms)")
    figure.tight_layout(rect=(0, 0, 1, 0.97))
    add_legend(figure)
    save(figure, picture)


def save(figure, picture):
    """Few colours make a small file."""
    drawn = io.BytesIO()
    figure.savefig(drawn, format="png", dpi=100)
    Image.open(drawn).convert("RGB").quantize(64).save(picture, format="png", optimize=True)


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: plot.py observers.csv PICTURE")
    draw(read(sys.argv[1]), sys.argv[2])


if __name__ == "__main__":
    main()
