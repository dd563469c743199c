#!/usr/bin/python3
"""Kills the program at random moments, and at each call by which it changes a file; looks each time at
what is left, and starts again.

    kill.py rehearsal [--moments A-B] [--seed S]   random moments of rehearsals
    kill.py rehearsal --calls --moments 1-9999     every call of a rehearsal of each test
    kill.py screen [--moments A-B] [--seed S]      random moments of the real program
    kill.py screen --calls --moments 1-9999        every call of the real program

A moment is always the same for a seed and its number; --moments 101-200 are those behind the first
hundred. KELMORAN_BUILD names the build; --jobs, how many run at a time. Ends with 0 if no promise was
broken; each that was is told on a line.
"""

from __future__ import annotations

import argparse
import multiprocessing
import random
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Iterable

import rehearsals
import scenes
from rehearsals import UNKNOWN, WHOLE, Play, Stage, kind_of
from virtual_screen import VirtualScreen

TASKS = (1, 2, 3, 4, 5, 6, 7)
WEIGHTS = (1, 4, 4, 4, 4, 2, 2, 2)  # of the scenes: a test has more moments than an entry


@dataclass
class Told:
    """What a moment adds to the table."""
    kind: str
    midway: bool  # it was killed in the midst of it, and had not come to its end
    finished: int = 0
    wrong: list[str] = field(default_factory=list)
    left: list[str] = field(default_factory=list)


# The rehearsal

def plays() -> list[Play]:
    first = [Play(task, 2, first=True) for task in TASKS]
    later = [Play(task, WHOLE) for task in TASKS]
    reported = [Play(task, 2, report=True) for task in TASKS]
    return first + later + reported + [Play(2, 2, first_name=UNKNOWN)]


def rehearsed_calls() -> list[tuple[Play, int, bool, str]]:
    """Every call of each play; writes that cross the end of a page twice, in front of them and in
    their middle."""
    found = []
    stage = Stage()
    for play in plays():
        calls = stage.whole_run(play).calls
        for index, call in enumerate(calls):
            kind = kind_of(calls, index)
            found.append((play, call.number, False, kind))
            if call.crosses_page:
                found.append((play, call.number, True, kind))
    stage.close()
    return found


def try_calls(moments: list[tuple[Play, int, bool, str]]) -> Iterable[Told]:
    stage = Stage()
    for play, number, within, kind in moments:
        attempt = stage.try_moment(play, number, within)
        name = f"{play}, call {number}{' in its middle' * within}"
        yield Told(f"{kind}, cut" if within else kind, attempt.killed, attempt.finished,
                   [f"{name}: {text}" for text in attempt.wrong], attempt.left)
    stage.close()


def try_rehearsals(moments: list[tuple[int, int]]) -> Iterable[Told]:
    """Of the clock: anywhere in a run, whose length is taken from the last one that nobody killed."""
    stage = Stage()
    lengths = {play: stage.whole_run(play).seconds for play in plays()}
    for seed, moment in moments:
        rng = random.Random(f"{seed} {moment}")
        play = rng.choice(plays())
        attempt = stage.try_moment(play, delay=rng.uniform(0.1, 1.0) * lengths[play])
        if not attempt.killed:  # the machine is faster than it was
            lengths[play] = attempt.seconds
        yield Told(f"test{play.task}", attempt.killed, attempt.finished,
                   [f"moment {moment}, {play}: {text}" for text in attempt.wrong], attempt.left)
    stage.close()


# The real program

def open_ward(work: Callable[[scenes.Ward], Iterable[Told]]) -> Iterable[Told]:
    """The last start is left alone: it shows what the last kill has left."""
    with tempfile.TemporaryDirectory(prefix="kelmoran-kill-") as folder, VirtualScreen() as screen:
        root = Path(folder).resolve()
        subprocess.run([str(scenes.PROJECT / "scripts" / "lay-out-root.sh"), str(root),
                        str(rehearsals.BUILD)], check=True)
        ward = scenes.Ward(screen, root)
        yield from work(ward)
        last = ward.attempt("start", random.Random(0))
        yield Told("last start", False, wrong=last.wrong)


def try_scenes(moments: list[tuple[int, int]]) -> Iterable[Told]:
    def work(ward: scenes.Ward) -> Iterable[Told]:
        for seed, moment in moments:
            rng = random.Random(f"{seed} {moment}")
            name = rng.choices(list(scenes.SCENES), WEIGHTS)[0]
            attempt = ward.attempt(name, rng, delay=lambda length: rng.uniform(0.01, length))
            yield Told(name, attempt.killed and attempt.midway, attempt.finished,
                       [f"moment {moment}, {name}: {text}" for text in attempt.wrong], attempt.left)
    return open_ward(work)


def scene_calls() -> list[tuple[str, int, str]]:
    """Every call of each scene. Those of the start are the same in each, and are tried in one."""
    found: list[tuple[str, int, str]] = []

    def work(ward: scenes.Ward) -> Iterable[Told]:
        prepare(ward)
        started = 0
        for name in scenes.SCENES:
            attempt = ward.attempt(name, random.Random(0))
            if attempt.wrong:
                raise RuntimeError(f"{name}: {attempt.wrong}")
            calls = attempt.calls
            found.extend((name, calls[index].number, kind_of(calls, index))
                         for index in range(started, len(calls)))
            started = started or len(calls)
        return []
    list(open_ward(work))
    return found


def prepare(ward: scenes.Ward) -> None:
    """All files are there, and the lock of a dead program."""
    ward.attempt("attention", random.Random(0))


def try_scene_calls(moments: list[tuple[str, int, str]]) -> Iterable[Told]:
    def work(ward: scenes.Ward) -> Iterable[Told]:
        prepare(ward)
        for name, number, kind in moments:
            attempt = ward.attempt(name, random.Random(0), at=number)
            if name == "start":  # the next one finds the same lock again
                ward.attempt("start", random.Random(0))
            yield Told(kind, attempt.killed and attempt.midway, attempt.finished,
                       [f"{name}, call {number}: {text}" for text in attempt.wrong], attempt.left)
    return open_ward(work)


# The whole

def work_through(jobs: int, work: Callable[[list], Iterable[Told]], moments: list) -> list[Told]:
    """Several at a time, each in a process of its own with its own screen and data."""
    queue: multiprocessing.Queue = multiprocessing.Queue()

    def one(mine: list) -> None:
        try:
            for told in work(mine):
                queue.put(told)
        except Exception as error:  # told like all else that is wrong
            queue.put(Told("the driver", False, wrong=[repr(error)]))
        queue.put(None)
    shares = [moments[job::jobs] for job in range(min(jobs, len(moments)))]
    processes = [multiprocessing.Process(target=one, args=(share,)) for share in shares]
    for process in processes:
        process.start()
    results = []
    ended = 0
    while ended < len(processes):
        told = queue.get()
        if told is None:
            ended += 1
        else:
            results.append(told)
            for text in told.wrong:
                print(text, flush=True)
    for process in processes:
        process.join()
    return results


def tell(results: list[Told]) -> None:
    """A line a kind: how many moments, how many of them in the midst of it, the trials that were seen
    to be finished, the broken promises, and how often a copy was left behind."""
    line = "{:<28} {:>8} {:>8} {:>10} {:>8} {:>12}"
    print(line.format("killed at", "moments", "midway", "trials", "broken", "left behind"))
    groups = {kind: [told for told in results if told.kind == kind]
              for kind in sorted({told.kind for told in results})}
    for kind, group in [*groups.items(), ("all", results)]:
        print(line.format(kind, len(group), sum(told.midway for told in group),
                          sum(told.finished for told in group),
                          sum(bool(told.wrong) for told in group),
                          sum(bool(told.left) for told in group)))


def moments_in(text: str) -> range:
    first, _, last = text.partition("-")
    return range(int(first), int(last or first) + 1)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("what", choices=("rehearsal", "screen"))
    parser.add_argument("--moments", default="1-500", help="or calls, by their numbers")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--calls", action="store_true", help="every call rather than random moments")
    chosen = parser.parse_args()

    work, every = {"rehearsal": (try_calls, rehearsed_calls),
                   "screen": (try_scene_calls, scene_calls)}[chosen.what]
    numbers = moments_in(chosen.moments)
    if chosen.calls:
        moments = [moment for number, moment in enumerate(every(), 1) if number in numbers]
    else:
        work = {"rehearsal": try_rehearsals, "screen": try_scenes}[chosen.what]
        moments = [(chosen.seed, number) for number in numbers]
    results = work_through(chosen.jobs, work, moments)
    tell(results)
    return 1 if any(told.wrong for told in results) else 0


if __name__ == "__main__":
    sys.exit(main())
