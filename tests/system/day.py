"""A day of tests in one run of the real program, on a virtual screen and in real time.

Not one of the daily tests, as it takes some minutes: ./soak.sh years runs it. KELMORAN_DAY_CYCLES says
how often its six tests are played.
"""

from __future__ import annotations

import itertools
import os
import unittest
from collections import Counter
from pathlib import Path

from desk import PATIENT_LINE, Desk
from attention_task import AttentionTask
from kelmoran_robot import Robot
from memory_task import MemoryTask
from movement_task import MovementTask
from waiting import RobotError, wait_for

CYCLE = 6  # tests until each kind has left its report in both ways
PATIENCE = 30  # seconds, for the browser's processes to go
KILOBYTE = 1024
GROWTH = 1024 * KILOBYTE  # bytes a test; a picture of the screen has five times as many


class Day(Desk):
    def footprint(self, robot: Robot) -> Counter[str]:
        """What the program holds, in itself and in the screen's server."""
        process = Path(f"/proc/{robot.program.pid}")
        window = robot.main_window()
        display = self.screen.display
        held = Counter({
            "descriptors": len(list(process.glob("fd/*"))),
            "threads": sum(self.counts(task) for task in process.glob("task/*")),
            "processes": len(robot.program.child_programs()),
            "bytes of pictures": display.res_query_client_pixmap_bytes(window.id).bytes})
        for kind in display.res_query_client_resources(window.id).types:
            held[display.get_atom_name(kind.resource_type)] = kind.count
        return held

    @staticmethod
    def counts(thread: Path) -> bool:
        """The browser's pools come and go with the work."""
        try:
            return not (thread / "comm").read_text(encoding="ascii").startswith("ThreadPool")
        except OSError:
            return False  # it ended while we looked

    def play_attention(self, robot: Robot) -> AttentionTask:
        robot.start_test(2)
        task = AttentionTask(robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(2)
        task.press_go()
        for _ in range(2):
            task.wait_target()
            task.answer()
        return task

    def play_movement(self, robot: Robot) -> MovementTask:
        robot.start_test(3)
        task = MovementTask(robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(1)
        task.press_go()
        while not task.is_shown(task.results):  # a direction that was mistaken is asked again
            _, direction = task.see()
            task.space()
            task.answer(direction or "?", by_mouse=direction is None)
            wait_for("the next trial or the end",
                     lambda: task.arrow() or task.is_shown(task.results))
        return task

    def play_memory(self, robot: Robot) -> MemoryTask:
        robot.start_test(4)
        task = MemoryTask(robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(1)
        task.press_go()
        run = task.watch_run()
        task.answer(run.last, run.first)
        return task

    def leave(self, robot: Robot, task: AttentionTask | MovementTask | MemoryTask,
              shown: bool) -> None:
        """By one of the two buttons, and sees the report filed."""
        task.wait_end()
        before = len(self.reports())
        task.click(task.results if shown else task.main_menu)
        wait_for("the report", lambda: len(self.reports()) > before, 60)
        if shown:
            robot.close_window("Result")
        robot.main_window()

    def reports(self) -> list[Path]:
        return list((self.root / "Archives").glob("*/*.pdf"))

    def test_a_day_of_tests_leaves_nothing_behind(self) -> None:
        robot = self.start_with_patient(PATIENT_LINE)
        plays = itertools.cycle((self.play_attention, self.play_movement, self.play_memory))
        cycles = int(os.environ.get("KELMORAN_DAY_CYCLES", "9"))
        self.assertGreater(cycles, 1)
        warm_up = (cycles + 1) // 2
        warm: Counter[str] = Counter()
        resident = 0
        for cycle in range(1, cycles + 1):
            for number in range(CYCLE):
                self.leave(robot, next(plays)(robot), shown=number < CYCLE // 2)
            self.tell(robot, cycle * CYCLE)
            if cycle <= warm_up:
                warm |= self.footprint(robot)  # the most of each: what rests may come back
                resident = robot.program.resident_bytes()
            else:
                self.wait_no_growth(robot, warm)
        grown = (robot.program.resident_bytes() - resident) / ((cycles - warm_up) * CYCLE)
        self.assertLess(grown, GROWTH)
        self.assertEqual(len(self.reports()), cycles * CYCLE)

    def wait_no_growth(self, robot: Robot, warm: Counter[str]) -> None:
        try:
            wait_for("the program to let go", lambda: not self.footprint(robot) - warm, PATIENCE)
        except RobotError:
            self.fail(f"more than before: {dict(self.footprint(robot) - warm)}")

    def tell(self, robot: Robot, played: int) -> None:
        held = self.footprint(robot)
        print(f"{played} tests: {held['descriptors']} descriptors, {held['threads']} threads, "
              f"{held['processes']} processes, {held['WINDOW']} windows, {held['PIXMAP']} pixmaps of "
              f"{held['bytes of pictures'] // KILOBYTE} KiB, "
              f"{robot.program.resident_bytes() // KILOBYTE} KiB resident", flush=True)


if __name__ == "__main__":
    unittest.main()
