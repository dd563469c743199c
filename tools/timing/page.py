"""The tables of the timing page, and their place in it."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Iterable, Sequence

from spread import Spread
from stamps import Mismatch, Shown

WITH_GOALS = {"idle": 1.0, "one-core": 2.0}  # 99 % of an exposure's errors, ms
MEDIAN_GOAL = 0.3  # ms
REACTION_MEDIAN_GOAL, REACTION_DEVIATION_GOAL = 0.5, 0.4  # ms
BEYOND_BARE_TIMER = 2.0  # ms
SHORT_EXPOSURE = 650  # ms
PRESSES = {"key=space": "reaction time by the key", "button=1": "reaction time by the mouse"}
TITLES = {"idle": "Idle", "one-core": "One core busy", "both-cores": "Both cores busy",
          "disk": "The disk being written"}
HEAD = ("n", "median", "mean", "SD", "95 %", "99 %", "worst")


@dataclass
class Findings:
    """All that one condition has shown."""
    condition: str
    machine: str
    witness: list[str] = field(default_factory=list)  # what its self-test said, line by line
    exposures: list[Shown] = field(default_factory=list)
    gaps: int = 0
    others: dict[str, list[Shown]] = field(default_factory=dict)
    reactions: dict[str, list[Shown]] = field(default_factory=dict)  # by what was pressed
    bare_timer: list[float] = field(default_factory=list)

    @property
    def bare_worst(self) -> float:
        return max(self.bare_timer)


def errors(shown: Iterable[Shown]) -> list[float]:
    return [interval.error for interval in shown]


def row(*cells: str) -> str:
    return "| " + " | ".join(cells) + " |"


def spread_cells(values: Sequence[float]) -> list[str]:
    spread = Spread.of(values)
    return [str(spread.count)] + [f"{value:.3f}" for value in (
        spread.median, spread.mean, spread.deviation, spread.p95, spread.p99, spread.worst)]


def table(first: str, rows: Iterable[tuple[str, Sequence[float]]]) -> list[str]:
    return [row(first, *HEAD), "|---" * (len(HEAD) + 1) + "|"] + [
        row(name, *spread_cells(values)) for name, values in rows if values]


def exposure_rows(shown: Sequence[Shown]) -> list[tuple[str, list[float]]]:
    lengths = sorted({interval.nominal for interval in shown})
    rows = [(f"{length:g}", errors(interval for interval in shown if interval.nominal == length))
            for length in lengths]
    rows.append((f"up to {SHORT_EXPOSURE}", errors(
        interval for interval in shown if interval.nominal <= SHORT_EXPOSURE)))
    rows.append(("longer", errors(
        interval for interval in shown if interval.nominal > SHORT_EXPOSURE)))
    rows.append(("all", errors(shown)))
    return [(name, values) for name, values in rows if values]


@dataclass(frozen=True)
class Goal:
    name: str
    limit: float
    found: float
    where: str = ""

    @property
    def is_met(self) -> bool:
        return self.found <= self.limit

    def line(self) -> str:
        where = f" ({self.where})" if self.where else ""
        return row(self.name, f"{self.limit:.2f}", f"{self.found:.3f}{where}",
                   "yes" if self.is_met else "**no**")


def farthest(found: Iterable[tuple[float, str]]) -> tuple[float, str]:
    return max(found, key=lambda one: one[0])


def goals(findings: Findings) -> list[Goal]:
    """Those of idle and of one core busy; the others have none."""
    tail = WITH_GOALS.get(findings.condition)
    if tail is None:
        return []
    by_length = [(Spread.of(values), f"at {name} ms") for name, values in
                 exposure_rows(findings.exposures) if name.isdigit()]
    limit = findings.bare_worst + BEYOND_BARE_TIMER
    met = [] if not by_length else [
        Goal("exposure, median of every length", MEDIAN_GOAL,
             *farthest((abs(spread.median), where) for spread, where in by_length)),
        Goal("exposure, 99 % of every length", tail,
             *farthest((spread.p99, where) for spread, where in by_length)),
        Goal("exposure, worst", limit,
             *farthest((spread.worst, where) for spread, where in by_length)),
    ]
    for press, name in PRESSES.items():
        values = errors(findings.reactions.get(press, []))
        if not values:
            continue
        spread = Spread.of(values)
        met += [Goal(f"{name}, median", REACTION_MEDIAN_GOAL, abs(spread.median)),
                Goal(f"{name}, SD", REACTION_DEVIATION_GOAL, spread.deviation),
                Goal(f"{name}, worst", limit, spread.worst)]
    return met


def section(findings: Findings) -> str:
    """Everything between the markers of a condition."""
    lines = [f"{findings.machine}", ""]
    lines += ["Exposures, shown minus nominal, ms:", ""]
    lines += table("nominal", exposure_rows(findings.exposures))
    lines += ["", f"The stimulus went before its mask came: {findings.gaps} of "
              f"{len(findings.exposures)} times.", ""]
    lines += ["Other intervals, shown minus nominal; reaction times, reported minus true; and how "
              "late the bare timer was, ms:", ""]
    lines += table("", [(name, errors(shown)) for name, shown in findings.others.items()]
                   + [(name, errors(findings.reactions.get(press, [])))
                      for press, name in PRESSES.items()]
                   + [("the bare timer, 100 ms", findings.bare_timer)])
    lines += ["", "The witness itself in the same minutes, µs:", ""]
    lines += witness_table(findings.witness)
    met = goals(findings)
    if met:
        lines += ["", row("Goal, ms", "wanted, at most", "found", "met"), "|---|---|---|---|"]
        lines += [goal.line() for goal in met]
    return "\n".join(lines) + "\n"


def witness_table(lines: Sequence[str]) -> list[str]:
    """From the lines of the self-test: a name and five numbers each."""
    rows = [line.split(",") for line in lines if line.count(",") == 5]
    return [row("", "n", "median", "95 %", "99 %", "worst"), "|---|---|---|---|---|---|"] + [
        row(*cells) for cells in rows if cells[1].isdigit()]


def markers(condition: str) -> tuple[str, str]:
    return f"<!-- figures: {condition} -->\n", f"<!-- end: {condition} -->\n"


def renewed(page: str, condition: str, text: str) -> str:
    """The page with the figures of one condition replaced, and all else as it was."""
    begin, end = markers(condition)
    if page.count(begin) != 1 or page.count(end) != 1 or page.index(begin) > page.index(end):
        raise Mismatch(f"the page has no place for {condition}")
    head, rest = page.split(begin)
    return head + begin + text + end + rest.split(end)[1]
