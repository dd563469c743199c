"""The real program, killed while an assessor and a patient work with it."""

from __future__ import annotations

import os
import random
import signal
import struct
import sys
from contextlib import contextmanager
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable, Iterator

PROJECT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(PROJECT / "tools" / "robot")]

from Xlib import X  # noqa: E402
from Xlib.display import Display  # noqa: E402
from Xlib.ext import xtest  # noqa: E402

from attention_task import AttentionTask  # noqa: E402
from kelmoran_robot import Program, Robot  # noqa: E402
from memory_task import INNER_RADIUS, MemoryTask  # noqa: E402
from movement_task import MovementTask  # noqa: E402
from promises import Expected, Root  # noqa: E402
from rehearsals import ASSESSOR, UNCALIBRATED, Call, calls_in, old_list, tripwire  # noqa: E402
from task_screen import TaskScreen  # noqa: E402
from virtual_screen import VirtualScreen  # noqa: E402
from vision_task import VisionTask  # noqa: E402
from waiting import RobotError, wait_for  # noqa: E402

PATIENT = "Tester Paula 14.03.1952"
PATIENT_LINE = b"Mrs.;Tester;Paula;14.03.1952;0;4;0;0;0;0;0;120;90;300\r\n"
LETTERS = "abcdefghijklmnopqrstuvwxyz"
BROWSER = "QtWebEngineProc"
TRIALS = 3
KEY_CODES = 256
SHARE_OF_STARTS = 0.1  # of the moments
MEASURED = struct.pack(">iii", 270, 270, 0)

# Seconds.
START = 1.2  # until the main window takes entries
LONGEST = 20
WRITTEN = 0.06  # from a key to the file
FILED = 0.3  # a registration waits for the next beat of the main window
REPORTED = 2.0  # from "Main Menu" to the report


class Killed(Exception):
    """The program is dead."""


@dataclass
class Attempt:
    scene: str
    wrong: list[str] = field(default_factory=list)
    left: list[str] = field(default_factory=list)
    calls: list[Call] = field(default_factory=list)
    finished: int = 0
    killed: bool = False
    midway: bool = True  # or the scene was played to its end


class Ward:
    """A screen and a data root, in which the program is started and killed again and again."""

    def __init__(self, screen: VirtualScreen, root: Path) -> None:
        self.screen = screen
        self.root = root
        self.program: Program | None = None
        self.expected = Expected()
        self.delay: Callable[[float], float] | None = None
        for folder in ("Parameters", "Results", "Archives"):
            (root / folder).mkdir(exist_ok=True)
        (root / "Parameters" / "patients_list.txt").write_bytes(PATIENT_LINE + old_list())
        (root / "Parameters" / "assessor.txt").write_bytes(ASSESSOR)
        signal.signal(signal.SIGALRM, self._kill)
        signal.signal(signal.SIGCHLD, self._notice)

    def measure(self) -> None:
        """A calibration that was cut short is to be made anew, which isn't what is tried here."""
        (self.root / "Parameters" / "screen.pix").write_bytes(MEASURED)

    def file(self, name: str) -> bytes:
        return (self.root / "Parameters" / name).read_bytes()

    def reports(self) -> set[tuple[Path, int]]:
        """With their times: those of the parts of visual recognition have one name."""
        folder = self.root / "Archives" / PATIENT
        return {(path, path.stat().st_mtime_ns) for path in folder.glob("*.pdf")}

    def valid_rows(self) -> int:
        """The size of their file, which grows at the end of a test."""
        path = self.root / "Results" / "valid-output.csv"
        return path.stat().st_size if path.exists() else 0

    # The end of a run

    def _kill(self, *_: object) -> None:
        if self.program:
            self.program.process.kill()

    def _notice(self, *_: object) -> None:
        """A child has died: if it is the program, nobody waits for what it would have shown."""
        if self.program and self.program.has_ended():
            self.program = None
            raise Killed

    def within(self, seconds: float) -> None:
        """Here begins what is of interest, and takes about so long."""
        if self.delay:
            signal.setitimer(signal.ITIMER_REAL, self.delay(seconds))
            self.delay = None

    def _bury(self) -> list[str]:
        """Lets go of the keys and the button that were held when the program died, and waits for
        what it had started."""
        signal.setitimer(signal.ITIMER_REAL, 0)
        self.screen.display.display.socket.close()  # it may have been left in the midst of a request
        display = self.screen.display = Display(self.screen.name)
        keys = display.query_keymap()
        for code in range(KEY_CODES):
            if keys[code // 8] >> code % 8 & 1:
                xtest.fake_input(display, X.KeyRelease, code)
        if display.screen().root.query_pointer().mask & X.Button1Mask:
            xtest.fake_input(display, X.ButtonRelease, 1)
        display.sync()
        try:
            wait_for("the browser of the dead program to end", lambda: not self._browsers())
        except RobotError as error:
            return [str(error)]
        return []

    def _browsers(self) -> bool:
        """Whether a living browser process belongs to this screen."""
        mark = f"DISPLAY={self.screen.name}\0".encode()
        for folder in Path("/proc").glob("[0-9]*"):
            try:
                if ((folder / "comm").read_text().startswith(BROWSER)
                        and mark in (folder / "environ").read_bytes()):
                    return True
            except OSError:
                continue  # ended while we looked
        return False

    # Runs

    def attempt(self, name: str, rng: random.Random, delay: Callable[[float], float] | None = None,
                at: int = 0) -> Attempt:
        """Plays a scene in which the program is killed: when `delay` says, of a length, or at a
        call."""
        scene = Scene(self, rng)
        log = self.root / "calls.txt"
        log.unlink(missing_ok=True)
        self.measure()
        self.expected = Expected(PATIENT)
        self.delay = delay
        attempt = Attempt(name)
        SCENES[name].prepare(scene)
        state = Root(self.root)
        with in_environment(tripwire(self.root, log, at) if delay is None else {}):
            program = Program(self.screen, self.root)
        try:
            self.program = program
            if delay and rng.random() < SHARE_OF_STARTS:
                self.within(START)
            scene.robot = Robot(self.screen, program)
            SCENES[name].play(scene)
            attempt.midway = False
            self.within(FILED)
            if not delay and at == 0:
                self._kill()
            wait_for("the kill", program.has_ended, LONGEST)
        except (Killed, RobotError) as end:
            if program.process.poll() is None:
                attempt.wrong.append(f"it came to a standstill: {end}")
                self._keep_screen(name)
        self.program = None
        program.process.kill()
        attempt.killed = program.process.wait() == -signal.SIGKILL
        program.stop()
        attempt.wrong += self._bury()
        attempt.wrong += state.broken(self.expected)
        attempt.left = state.left_behind()
        attempt.calls = calls_in(log)
        attempt.finished = self.expected.finished
        return attempt

    def _keep_screen(self, name: str) -> None:
        """On request, for a look."""
        kept = os.environ.get("KELMORAN_KEEP")
        if kept and self.program:
            Robot(self.screen, self.program).screenshot(Path(kept) / f"kill-{name}.png")


@contextmanager
def in_environment(variables: dict[str, str]) -> Iterator[None]:
    before = {name: os.environ.get(name) for name in variables}
    os.environ.update(variables)
    try:
        yield
    finally:
        for name, value in before.items():
            if value is None:
                del os.environ[name]
            else:
                os.environ[name] = value


class Scene:
    """What the two people do. Whatever it begins with, the program has to start and a patient of the
    list has to be there: the run before was killed."""

    def __init__(self, ward: Ward, rng: random.Random) -> None:
        self.ward = ward
        self.rng = rng
        self.robot: Robot
        self.begun = 0
        self.reports: set[tuple[Path, int]] = set()
        self.filed = 0

    def nothing(self) -> None:
        pass

    def open(self) -> None:
        self.robot.wait_ready()

    def begin(self) -> None:
        self.ward.within(START)
        self.choose()

    def choose(self) -> None:
        self.open()
        self.robot.choose_patient(PATIENT)

    # Tests

    def attention(self) -> None:
        self.choose()
        self.robot.start_test(2)
        task = AttentionTask(self.robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(TRIALS)
        self.ward.within(TRIALS * 0.4 + 0.3 + REPORTED)
        task.press_go()
        while self.another(task, lambda: task.target() is not None):
            task.answer(by_mouse=self.rng.random() < 0.5)
        self.finish(task)

    def vision(self) -> None:
        self.choose()
        button = self.rng.choice((1, 5, 6, 7))
        self.robot.start_test(button)
        task = VisionTask(self.robot, button)
        task.wait_shown(task.panel, "the parameter panel")
        task.set_parameter("le_number", TRIALS)
        self.ward.within(TRIALS * 2.0 + 0.3 + REPORTED)
        task.press_go()
        while self.another(task, lambda: task.asks_figure() or task.asks_place()):
            if task.asks_figure():
                task.click_figure("Id")
            if task.asks_place():
                task.click_place("ML")
        self.finish(task)

    def movement(self) -> None:
        self.choose()
        self.robot.start_test(3)
        task = MovementTask(self.robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(TRIALS)
        self.ward.within(TRIALS * 0.5 + 0.3 + REPORTED)
        task.press_go()
        while self.another(task, lambda: task.arrow() is not None):
            _, direction = task.see()
            task.space()
            task.answer(direction or "E")
        self.finish(task)

    def memory(self) -> None:
        self.choose()
        self.robot.start_test(4)
        task = MemoryTask(self.robot)
        task.wait_shown(task.panel, "the parameter panel")
        for edit in ("le_timer01", "le_timer02", "le_timer03", "le_timer05"):
            task.set_parameter(edit, 60)
        task.set_parameter("le_number", TRIALS)
        self.ward.within(TRIALS * 0.9 + 0.3 + REPORTED)
        task.press_go()
        while self.another(task, lambda: task.question() == "last"):
            task.hands.click(task.x, task.y - INNER_RADIUS)
            wait_for("the question for the first cross", lambda: task.question() == "first")
            task.hands.click(task.x, task.y - INNER_RADIUS)
            wait_for("the end of the trial", lambda: task.is_shown(task.corner_button)
                     or self.is_over(task))
            if task.is_shown(task.corner_button):
                self.over(self.begun)
                task.press_continue()
        self.finish(task)

    def another(self, task: TaskScreen, asked: Callable[[], bool]) -> bool:
        """Whether another trial comes to where the patient is asked; if not, the test is over. That
        a trial is there tells that those before it are finished."""
        wait_for("a trial or the end of the test", lambda: asked() or self.is_over(task))
        if not asked():
            return False
        self.over(self.begun)
        self.begun += 1
        return True

    def over(self, trials: int) -> None:
        self.ward.expected.finished = trials

    def is_over(self, task: TaskScreen) -> bool:
        """Whether the two buttons stand there. What else is bright in their places, as a figure of
        seconds, comes before the test is filed."""
        return (self.ward.valid_rows() != self.filed and task.is_shown(task.results)
                and task.is_shown(task.main_menu))

    def finish(self, task: TaskScreen) -> None:
        self.over(self.begun)
        task.click(task.main_menu)
        self.robot.main_window()
        wait_for("the report", lambda: self.ward.reports() - self.reports, LONGEST)

    def note_files(self) -> None:
        self.reports = self.ward.reports()
        self.filed = self.ward.valid_rows()

    # Entries

    def registration(self) -> None:
        self.open()
        last, first = ("".join(self.rng.choices(LETTERS, k=6)).capitalize() for _ in range(2))
        zeros = ";0" * 10
        self.ward.expected.registered = [f"Mrs.;{last};{first};14.03.1952{zeros}".encode()]
        self.robot.choose_menu("actionAdd_patient")
        self.robot.wait_window("NewPatient")
        self.robot.fill_patient(1, last, first, "14.03.1952")
        self.ward.within(FILED)
        self.robot.accept("NewPatient")
        self.robot.main_window()
        wait_for("the line of the list", lambda: last.encode() in self.ward.file("patients_list.txt"))

    def assessor(self) -> None:
        self.open()
        texts = self.rng.choices(LETTERS, k=7)  # behind what stands in the lines
        then = self.ward.file("assessor.txt").decode().strip().split(";")
        line = (";".join(["Dr.", *map("".join, zip(then[1:], texts))]) + "\n").encode()
        self.ward.expected.assessors = [line]
        self.robot.fill_assessor(2, texts)
        self.ward.within(WRITTEN)
        self.robot.accept("Assessor")
        wait_for("the record", lambda: self.ward.file("assessor.txt") == line)

    def unmeasured(self) -> None:
        """As on the first day, or as on a second one that came before the measuring."""
        screen = self.ward.root / "Parameters" / "screen.pix"
        if self.rng.random() < 0.5:
            screen.unlink()
        else:
            screen.write_bytes(UNCALIBRATED)

    def calibration(self) -> None:
        self.ward.expected.screens = [UNCALIBRATED, MEASURED]
        self.robot.wait_window("Calibration")
        self.robot.enter_line("270", "horizontal")
        wait_for("the vertical line", lambda: self.robot.line_shown() == "vertical")
        self.ward.within(WRITTEN)
        self.robot.enter_line("135", "vertical")
        self.robot.wait_gone("Calibration")
        self.open()


@dataclass(frozen=True)
class Part:
    play: Callable[[Scene], None]
    prepare: Callable[[Scene], None] = Scene.nothing


SCENES = {
    "start": Part(Scene.begin),
    "attention": Part(Scene.attention, Scene.note_files),
    "visual recognition": Part(Scene.vision, Scene.note_files),
    "movement detection": Part(Scene.movement, Scene.note_files),
    "working memory": Part(Scene.memory, Scene.note_files),
    "registration": Part(Scene.registration),
    "assessor": Part(Scene.assessor),
    "calibration": Part(Scene.calibration, Scene.unmeasured),
}
