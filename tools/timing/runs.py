"""Real tests on the real program, in real time, stamped by the witness."""

from __future__ import annotations

import random
import re
import struct
import subprocess
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Iterator

from attention_task import DIRECTIONS, AttentionTask
from forms import Place, form
from kelmoran_robot import Program, Robot
from memory_task import MemoryTask
from movement_task import GRID, PATCH, MovementTask
from page import Findings
from stamps import (Mismatch, Shown, changes, crosses, cues, exposures, reaction_errors, steps,
                    true_reaction_times)
from task_screen import TaskScreen
from virtual_screen import VirtualScreen
from vision_task import VisionTask
from waiting import wait_for
from watched import Watched, Witness

PROJECT = Path(__file__).resolve().parents[2]
KEY = "Clock Klara 14.03.1952"
PATIENT = "Mrs.;Clock;Klara;14.03.1952;0;0;0;0;0;0;0;17;17;17\r\n"
SUBTASK, T1_TIME, T2_RT = 9, 12, 20  # columns of a row
ALERTED = 2  # of the attention task's subtasks

# What the panels are set to, ms: short pauses. What is measured stays as it is.
ATTENTION_WAITS = {"le_timer01": 100, "le_timer05": 200}
MEMORY_WAITS = {"le_timer01": 100, "le_timer05": 100}
MASK, CUE, WAIT, DRIFT_STEP, CROSS, EMPTY = 200, 100, 400, 15, 500, 1000
# From the centre: in the left figure of every pair, beside the cross.
IN_LEFT_FIGURE = Place(-36, -14, 14, 28)
CROSS_PIXELS = 156  # of a cross, two lines of 40 by 2 that cut one another


@dataclass(frozen=True)
class Length:
    """How much of everything a run shows."""
    short_exposures: int  # up to 283 ms, times each
    middle_exposures: int  # up to 650 ms
    long_exposures: int  # up to 1133 ms
    longest_exposures: int
    reactions: int
    drift_steps: int
    runs_of_crosses: int

    def times(self, ms: int) -> int:
        if ms <= 283:
            return self.short_exposures
        if ms <= 650:
            return self.middle_exposures
        return self.long_exposures if ms <= 1133 else self.longest_exposures


WHOLE = Length(13, 6, 4, 3, 70, 400, 2)
SHORT = Length(1, 1, 1, 0, 9, 60, 1)


def table_of_exposures() -> list[int]:
    """Every entry of both tables, each once, as the program has them."""
    text = (PROJECT / "src" / "tasks" / "test1" / "exposures.h").read_text(encoding="utf-8")
    rows = re.findall(r"Row\{([\d,\s]+)\}", text)
    if len(rows) != 2:
        raise Mismatch("the tables of exposures are not where they were")
    return sorted({int(number) for row in rows for number in row.split(",")})


@dataclass(frozen=True)
class Bench:
    """What every run needs: a screen, the built programs, and a folder for the roots."""
    screen: VirtualScreen
    build: Path
    scratch: Path
    length: Length
    findings: Findings

    @contextmanager
    def program(self, name: str) -> Iterator[Robot]:
        """The program with a calibrated screen and a patient who needs no training."""
        root = self.scratch / name
        layout = PROJECT / "scripts" / "lay-out-root.sh"
        subprocess.run([str(layout), str(root), str(self.build)], check=True)
        (root / "Parameters" / "screen.pix").write_bytes(struct.pack(">iii", 270, 270, 0))
        (root / "Parameters" / "patients_list.txt").write_bytes(PATIENT.encode("ascii"))
        program = Program(self.screen, root)
        try:
            robot = Robot(self.screen, program)
            robot.wait_ready()
            robot.choose_patient(KEY)
            yield robot
        finally:
            program.stop()

    def witness(self, watched: list[Watched], errands: tuple[str, ...] = ()) -> Witness:
        return Witness(self.screen, self.build / "tools" / "witness" / "kelmoran-witness", watched,
                       errands)

    def rows(self, name: str) -> list[list[str]]:
        """The trials in the log, without its heading and its markers."""
        text = (self.scratch / name / "Results" / "output.csv").read_text(encoding="latin-1")
        rows = [line.split(";") for line in text.splitlines()[1:]]
        return [row for row in rows if len(row) > T2_RT]

    def wait_rows(self, name: str, count: int) -> list[list[str]]:
        wait_for(f"{count} rows", lambda: len(self.rows(name)) >= count)
        return self.rows(name)

    def note(self, name: str, nominal: float, shown: list[float]) -> None:
        self.findings.others.setdefault(name, []).extend(Shown(nominal, ms) for ms in shown)


def open_task(robot: Robot, task: TaskScreen, button: int, waits: dict[str, int]) -> None:
    robot.start_test(button)
    task.wait_shown(task.panel, "the parameter panel")
    for edit, wait in waits.items():
        task.set_parameter(edit, wait)


def type_exposure(task: VisionTask, ms: int) -> None:
    """Without a look whether it was taken: the rows will tell."""
    task.hands.click(*form(task.form_name).place("le_timer02_S3").centre)
    task.hands.press("Control_L", "a")
    task.hands.type(str(ms))
    task.hands.press("Return")


def measure_exposures(bench: Bench) -> None:
    """The dual subtask, which shows all that the task can. Each trial is struck when its buttons
    come, so that it makes no step and the test goes on for as long as it is wanted to."""
    order = [ms for ms in table_of_exposures() for _ in range(bench.length.times(ms))]
    random.Random(1).shuffle(order)
    with bench.program("vision") as robot:
        task = VisionTask(robot, 7)
        open_task(robot, task, 7, {})
        buttons = task.framed("pb_uniform")
        watched = [Watched("stimulus", IN_LEFT_FIGURE.moved(task.x, task.y)),
                   Watched("answers", Place(buttons.x, buttons.y, 12, buttons.height)),
                   Watched("continue", task.corner_button)]
        masks = []
        with bench.witness(watched) as witness:
            for trial, ms in enumerate(order):
                type_exposure(task, ms)
                if trial == 0:
                    task.hands.click(task.x, task.y)
                else:
                    task.hands.press("c")
                masks.append(witness.wait_lit("answers"))  # it covers all that will stand there
                witness.wait_lit("answers")
                task.hands.press("e")
                witness.wait_lit("continue")
        asked = [int(row[T1_TIME]) for row in bench.wait_rows("vision", len(order))]
    if asked != order:
        raise Mismatch("the rows have other exposures than were typed")
    seen = exposures(changes(witness.stamps, "stimulus"), masks, asked)
    bench.findings.exposures += seen.shown
    bench.findings.gaps += seen.gaps
    bench.note("mask, 200 ms", MASK, seen.masks)
    bench.note("the mask's edge after its middle, 0 ms", 0, seen.parts)


def measure_reactions(bench: Bench) -> None:
    with bench.program("attention") as robot:
        task = AttentionTask(robot)
        open_task(robot, task, 2, ATTENTION_WAITS)
        task.set_parameter("le_number", bench.length.reactions)
        watched = [Watched(f"target-{name}", Place(x - 4, y - 4, 8, 8))
                   for name, (x, y) in zip(DIRECTIONS, task.targets)]
        watched.append(Watched("centre", Place(task.x - 20, task.y - 20, 40, 40)))
        with bench.witness(watched, ("target* brighter key=space|button=1 200..700",)) as witness:
            task.hands.click(task.x, task.y)
            for _ in range(bench.length.reactions):
                witness.wait("a press", lambda stamp: stamp.kind == "press")
            rows = bench.wait_rows("attention", bench.length.reactions)
    targets = changes(witness.stamps, "target-*")
    shown_cues, waits = cues(changes(witness.stamps, "centre"), targets,
                             [int(row[SUBTASK]) for row in rows], ALERTED)
    bench.note("cue, 100 ms", CUE, shown_cues)
    bench.note("wait for the target, 400 ms", WAIT, waits)
    true = true_reaction_times(witness.stamps, "target-")
    found = reaction_errors(true, [int(row[T2_RT]) for row in rows])
    for press, reactions in found.items():
        bench.findings.reactions.setdefault(press, []).extend(reactions)


def measure_drift(bench: Bench) -> None:
    with bench.program("movement") as robot:
        task = MovementTask(robot)
        open_task(robot, task, 3, {"le_timer01": 100})
        patch = Place(task.x + GRID - PATCH // 2, task.y + GRID - PATCH // 2, PATCH, PATCH)
        with bench.witness([Watched("patch", patch)]) as witness:
            task.hands.click(task.x, task.y)
            for _ in range(bench.length.drift_steps):
                witness.wait_change("patch")
            task.hands.press("space")
            witness.wait("the field to go", lambda stamp: stamp.is_dark)
    bench.note("a step of the drift, 15 ms", DRIFT_STEP,
               steps(changes(witness.stamps, "patch")))


def measure_crosses(bench: Bench) -> None:
    with bench.program("memory") as robot:
        task = MemoryTask(robot)
        open_task(robot, task, 4, MEMORY_WAITS)
        watched = [Watched("ring", task.ring), Watched("question", task.asked),
                   Watched("continue", task.corner_button)]
        with bench.witness(watched) as witness:
            runs = []
            task.hands.click(task.x, task.y)
            began = 0
            for run in range(bench.length.runs_of_crosses):
                runs.append((began, witness.wait_lit("question", 30).at))
                task.hands.click(task.x + 200, task.y)
                witness.wait_change("question")
                task.hands.click(task.x - 200, task.y)
                if run < bench.length.runs_of_crosses - 1:
                    began = witness.wait_lit("continue").at
                    task.hands.click(*task.at_continue)
    stood, gaps = crosses(changes(witness.stamps, "ring"), runs, CROSS_PIXELS)
    bench.note("cross, 500 ms", CROSS, stood)
    bench.note("between two crosses, 1000 ms", EMPTY, gaps)


RUNS = {"exposures": measure_exposures, "reactions": measure_reactions, "drift": measure_drift,
        "crosses": measure_crosses}
