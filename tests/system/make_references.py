#!/usr/bin/python3
"""Makes the pictures in `references` anew, from the instructions of the dual subtask, of the
movement detection task and of the working memory task, and from two windows in German.

    KELMORAN_BUILD=build/test python3 tests/system/make_references.py

The program plays its demonstrations on a virtual screen, the pairs and places in their plain order.
No test makes a picture: after a wanted change of what a task shows, run this, and look at every new
picture before it is kept.
"""

from __future__ import annotations

import os
import struct
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Callable

from desk import ASSESSOR, KEY, PATIENT_LINE, PROJECT
from kelmoran_robot import Program, Robot
from memory_task import MemoryTask
from movement_task import MovementTask
from reference_pictures import (REFERENCES, GreyPicture, answers_of, example_of, field_of,
                                guides_of, mask_of, pad_of, pair_of, path_of, ring_of, window_of)
from translated_robot import TranslatedRobot
from virtual_screen import VirtualScreen
from vision_task import PLACES, Stimulus, VisionTask
from waiting import wait_for

# The pairs in the order of their demonstration.
PAIRS = ("IdR", "ShR", "CnR", "OrR", "SzR", "IdL", "ShL", "CnL", "OrL", "SzL")


def keep(name: str, picture: GreyPicture) -> None:
    path_of(name).write_bytes(picture.png())
    print(f"{path_of(name).relative_to(PROJECT)}  {path_of(name).stat().st_size} bytes")


def keep_stimuli(task: VisionTask) -> None:
    """The ten pairs; the first six come with the six places."""
    last: Stimulus | None = None

    def look() -> Stimulus | None:
        seen = task.stimulus()
        return seen if seen and (last is None or seen.picture != last.picture) else None
    for number, pair in enumerate(PAIRS):
        last = wait_for(f"the pair {pair}", look)
        keep(f"pair-{pair}", pair_of(last.picture))
        if number < len(PLACES):
            keep(f"ring-{PLACES[number]}", ring_of(last.picture))


def keep_example(task: VisionTask) -> None:
    task.wait_stimulus()
    keep("mask", mask_of(task, task.wait_mask()))
    task.wait_asked()
    task.robot.wait_still()
    keep("answers", answers_of(task, task.eyes.whole()))


def play_vision(robot: Robot) -> None:
    robot.start_test(7, parameters=False, instruction=True)
    task = VisionTask(robot)
    task.press_corner_button()
    keep_stimuli(task)
    task.next_step()  # "Example"
    task.press_corner_button()
    keep_example(task)


def play_movement(robot: Robot) -> None:
    robot.start_test(3, parameters=False, instruction=True)
    task = MovementTask(robot)
    task.next_step()
    robot.wait_still()
    keep("movement-field", field_of(task, robot.eyes.whole()))
    for _ in range(4):  # arrow, frame, drift, pad
        task.next_step()
    robot.wait_still()
    keep("movement-pad", pad_of(task, robot.eyes.whole()))


def play_memory(robot: Robot) -> None:
    robot.start_test(4, parameters=False, instruction=True)
    task = MemoryTask(robot)
    for step in range(1, 7):
        task.next_step()
        robot.wait_still()
        keep(f"memory-example-{step}", example_of(task, robot.eyes.whole()))
        if step == 1:
            task.switch_guides()
            keep("memory-guides", guides_of(task, robot.eyes.whole()))
            task.switch_guides()


def play_tasks(robot: Robot) -> None:
    for play in (play_vision, play_movement, play_memory):
        play(robot)
        robot.hands.press("Escape")
        robot.main_window()


def show_windows(robot: Robot) -> None:
    robot.set_option("cb_subTask", True)
    robot.hands.move(5, 5)
    robot.wait_still()
    keep("main-window-de", window_of(robot.main_window(), robot.eyes.whole()))
    robot.choose_menu("actionAbout_Kelmoran")
    keep("about-de", window_of(robot.wait_page("WebViewer"), robot.eyes.whole()))


def run(language: str, play: Callable[[Robot], None]) -> None:
    """The program in a language, with a patient chosen."""
    with tempfile.TemporaryDirectory(prefix="kelmoran-") as folder, VirtualScreen() as screen:
        root = Path(folder)
        layout = PROJECT / "scripts" / "lay-out-root.sh"
        subprocess.run([str(layout), folder, os.environ["KELMORAN_BUILD"], language], check=True)
        (root / "Parameters" / "screen.pix").write_bytes(struct.pack(">iii", 270, 270, 0))
        (root / "Parameters" / "patients_list.txt").write_bytes(PATIENT_LINE)
        (root / "Parameters" / "assessor.txt").write_bytes(ASSESSOR)
        program = Program(screen, root)
        try:
            robot = TranslatedRobot(screen, program, language)
            robot.wait_ready()
            robot.choose_patient(KEY)
            play(robot)
        finally:
            program.stop()


def main() -> int:
    if not os.environ.get("KELMORAN_BUILD"):
        print("make_references: KELMORAN_BUILD names no build folder", file=sys.stderr)
        return 2
    REFERENCES.mkdir(exist_ok=True)
    run("en", play_tasks)
    run("de", show_windows)
    return 0


if __name__ == "__main__":
    sys.exit(main())
