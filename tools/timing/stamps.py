"""What the witness has stamped, and what can be read from it: times shown against nominal ones.

All moments are nanoseconds of the monotonic clock, all results milliseconds.
"""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Iterable, Sequence

DARK = "0" * 16  # the hash of a place that is black all over
NS_IN_MS = 1e6


class Mismatch(Exception):
    """What was seen doesn't fit what was done; the text says where, in one line."""


@dataclass(frozen=True)
class Stamp:
    """A line of the witness: a place at the start, a change of it, or a press."""
    kind: str
    at: int
    what: str
    hash: str = ""
    brightness: float = 0.0
    pixels: int = 0
    due: int = 0

    @property
    def is_dark(self) -> bool:
        return self.hash == DARK


@dataclass(frozen=True)
class Shown:
    """An interval as it was shown, beside what it should have been."""
    nominal: float
    shown: float

    @property
    def error(self) -> float:
        return self.shown - self.nominal


def read_line(line: str) -> Stamp | None:
    """Nothing for a heading or a remark."""
    fields = line.strip().split(",")
    if len(fields) != 7 or not fields[1].isdigit():
        return None
    kind, at, what, picture, brightness, pixels, due = fields
    return Stamp(kind, int(at), what, picture, float(brightness or 0), int(pixels or 0),
                 int(due or 0))


def changes(stamps: Iterable[Stamp], place: str) -> list[Stamp]:
    """The changes of a place, or of all places whose name begins so if it ends in `*`. The look at
    the start counts as the first."""
    if place.endswith("*"):
        return [stamp for stamp in stamps
                if stamp.kind != "press" and stamp.what.startswith(place[:-1])]
    return [stamp for stamp in stamps if stamp.kind != "press" and stamp.what == place]


def between(first: Stamp, second: Stamp) -> float:
    return (second.at - first.at) / NS_IN_MS


def presentations(seen: Sequence[Stamp]) -> list[list[Stamp]]:
    """What stood at a place from dark to dark: the changes of each presentation, the one that made
    it dark again last. One that isn't over is left out."""
    found: list[list[Stamp]] = []
    current: list[Stamp] = []
    for stamp in seen:
        if current or not stamp.is_dark:
            current.append(stamp)
        if current and stamp.is_dark:
            found.append(current)
            current = []
    return found


@dataclass
class Exposures:
    """What a series of stimuli and their masks has shown."""
    shown: list[Shown] = field(default_factory=list)
    masks: list[float] = field(default_factory=list)  # how long they stood
    parts: list[float] = field(default_factory=list)  # from the mask where the stimulus was to the rest
    gaps: int = 0  # the stimulus went before its mask came


def exposures(seen: Sequence[Stamp], masks: Sequence[Stamp], asked: Sequence[int]) -> Exposures:
    """Of a place where a stimulus stands and later other things. The masks are told as a place
    without a stimulus has seen them come, one for each trial."""
    if len(masks) != len(asked):
        raise Mismatch(f"{len(asked)} stimuli were asked for and {len(masks)} masks came")
    trials = presentations(seen)
    found = Exposures()
    for mask, nominal in zip(masks, asked):
        before = [trial for trial in trials if trial[0].at < mask.at]
        if not before:
            raise Mismatch("a mask came, and no stimulus before it")
        trial = before[-1]
        found.shown.append(Shown(nominal, between(trial[0], trial[1])))
        if len(trial) == 2:
            found.gaps += 1
        else:
            found.masks.append(between(trial[1], trial[-1]))
            found.parts.append(between(trial[1], mask))
    return found


def steps(seen: Sequence[Stamp]) -> list[float]:
    """The times between the moves of something that drifts: from change to change, without its
    coming and going."""
    found = []
    for trial in presentations(seen):
        moves = trial[1:-1]
        found += [between(first, second) for first, second in zip(moves, moves[1:])]
    return found


def cues(centre: Sequence[Stamp], targets: Sequence[Stamp], conditions: Sequence[int],
         alerted: int) -> tuple[list[float], list[float]]:
    """Of the alerted ones of attention trials: how long the cue stood at the centre, and how long
    the wait from its end to the target was."""
    onsets = [stamp for stamp in targets if stamp.kind == "change" and not stamp.is_dark]
    if len(onsets) < len(conditions):
        raise Mismatch(f"{len(conditions)} trials and {len(onsets)} targets")
    shown_cues, waits = [], []
    for condition, onset in zip(conditions, onsets):
        if condition != alerted:
            continue
        before = [stamp for stamp in centre if stamp.at < onset.at][-2:]
        if len(before) < 2 or before[0].brightness <= before[1].brightness:
            raise Mismatch("no cue came and went before an alerted target")
        shown_cues.append(between(before[0], before[1]))
        waits.append(between(before[1], onset))
    return shown_cues, waits


def true_reaction_times(stamps: Sequence[Stamp], place: str) -> list[tuple[str, float]]:
    """For each press what was pressed, and how long after the onset that it answers."""
    onset: Stamp | None = None
    found = []
    for stamp in stamps:
        if stamp.kind == "press":
            if onset is None:
                raise Mismatch("a press came without an onset")
            found.append((stamp.what, between(onset, stamp)))
            onset = None
        elif stamp.kind == "change" and stamp.what.startswith(place) and not stamp.is_dark:
            onset = stamp
    return found


def reaction_errors(true: Sequence[tuple[str, float]],
                    reported: Sequence[int]) -> dict[str, list[Shown]]:
    """By what was pressed, the reported reaction times beside the true ones."""
    if len(true) != len(reported):
        raise Mismatch(f"{len(true)} presses and {len(reported)} reported reaction times")
    found: dict[str, list[Shown]] = {}
    for (press, time), report in zip(true, reported):
        found.setdefault(press, []).append(Shown(time, report))
    return found


def crosses(ring: Sequence[Stamp], runs: Sequence[tuple[int, int]],
            pixels: int) -> tuple[list[float], list[float]]:
    """Of runs of crosses, each told by its begin and its end: how long each cross stood, and how
    long the ring was empty between two. A cross is a change of so many pixels that makes the ring
    brighter, and the same back; one that is half hidden counts for nothing, nor what is beside it."""
    stood: list[float] = []
    gaps: list[float] = []
    for began, ended in runs:
        on: Stamp | None = None
        off: Stamp | None = None
        for before, stamp in zip(ring, ring[1:]):
            if not began < stamp.at < ended:
                continue
            if stamp.pixels != pixels:  # half of it lies under a field of the panel
                on = off = None
                continue
            if stamp.brightness > before.brightness:
                if off:
                    gaps.append(between(off, stamp))
                on, off = stamp, None
            elif on:
                stood.append(between(on, stamp))
                on, off = None, stamp
    return stood, gaps
