#!/usr/bin/python3
"""Makes the pictures of the instruction book, of the page with the video instructions and of the
guides: a walk through the real program on a virtual screen, in one language.

What shows words goes into a folder of the language. What a patient sees in a trial has none, and is
the same in all languages: `--trials` makes these pictures instead.
"""

from __future__ import annotations

import argparse
import random
import struct
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from PIL import Image, ImageOps
from Xlib import X

from attention_task import AttentionTask
from eyes import Picture, Window
from forms import Place
from kelmoran_robot import Program, Robot
from memory_task import MemoryTask
from movement_task import MovementTask
from task_screen import FRAME_HEIGHT, FRAME_WIDTH, TaskScreen
from translated_robot import TranslatedRobot
from virtual_screen import VirtualScreen
from vision_task import VisionTask
from waiting import RobotError, wait_for

HORIZONTAL_MM, VERTICAL_MM = "270", "135"
LAST_NAME, FIRST_NAME, BORN = "Demonstration", "Ada", "14.03.1952"
KEY = f"{LAST_NAME} {FIRST_NAME} {BORN}"
LONG_EXPOSURE = 1133  # ms
ASSESSOR = ["Weber", "Klara", "Eye and Memory Clinic", "Station Road 12", "3011", "Bern",
            "Switzerland"]
TITLES = {"vision": (1, VisionTask), "attention": (2, AttentionTask), "movement": (3, MovementTask),
          "memory": (4, MemoryTask)}
TRIALS_OF_REPORT = 96
REHEARSED_AT = "2026-03-16T10:00:00"
REPORT_DPI = 70
# Mean reaction times of the person in seconds, by what announced the target.
REACTION = {"cross": 0.28, "asterisk": 0.25, "arrow": 0.21}
SPREAD = 0.025

# Pictures.
COLOURS, GREYS = 64, 16
GREY = 128
SCREEN_SCALE, TITLE_SCALE = 2 / 3, 0.4
AROUND = 30  # pixels around what is cut out
CALIBRATION = Place(100, 190, 1080, 360)
BUTTONS = (480, 130)  # around the two buttons at the end of a test
STIMULUS = (864, 664)  # around the figures and arrows of the visual recognition task
ANSWERS = (1000, 750)  # around its answers
TARGETS = (640, 560)  # around the targets of the attention task
FIELD, PAD = (738, 738), (240, 240)  # around those of the movement detection task
PANEL = Place(0, 0, 440, 420)


class Album:
    """The folder of the pictures, which are kept small."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder
        folder.mkdir(parents=True, exist_ok=True)

    def keep(self, name: str, picture: Picture) -> None:
        """In colour, pixel by pixel: a window with its words."""
        self._save(name, as_image(picture).quantize(COLOURS))

    def keep_grey(self, name: str, picture: Picture, scale: float = SCREEN_SCALE) -> None:
        """White on black, smaller than it was: a task."""
        image = as_image(picture).convert("L")
        size = round(image.width * scale), round(image.height * scale)
        self._save(name, image.resize(size, Image.Resampling.LANCZOS).quantize(GREYS))

    def keep_page(self, name: str, page: Path) -> None:
        """With an edge, since it is white on white."""
        image = ImageOps.expand(Image.open(page).convert("L"), border=1, fill=GREY)
        self._save(name, image.quantize(GREYS))

    def _save(self, name: str, image: Image.Image) -> None:
        path = self.folder / f"{name}.png"
        image.save(path, optimize=True)
        print(f"{path}  {image.width} x {image.height}, {path.stat().st_size} bytes", flush=True)


def as_image(picture: Picture) -> Image.Image:
    size = picture.width, picture.height
    return Image.frombuffer("RGB", size, picture.data, "raw", "BGRX", 0, 1)


class Walk:
    """What the two walks share: the robot, and cutting a picture out of the screen."""

    def __init__(self, robot: Robot, album: Album) -> None:
        self.robot = robot
        self.eyes = robot.eyes
        self.album = album
        self.x, self.y = robot.screen.width // 2, robot.screen.height // 2
        self.person = random.Random(TRIALS_OF_REPORT)

    def seen(self, place: Place) -> Picture:
        return self.eyes.area(place.x, place.y, place.width, place.height)

    def centred(self, width: int, height: int) -> Place:
        return Place(self.x - width // 2, self.y - height // 2, width, height)

    @property
    def frame(self) -> Place:
        """What the words of a task stand in."""
        return self.centred(FRAME_WIDTH + 2 * AROUND, FRAME_HEIGHT + 2 * AROUND)

    @staticmethod
    def wait_cue(task: AttentionTask) -> str:
        """What announces a target: a star at once, the others when the target is there."""
        cues: set[str | None] = set()

        def look() -> bool:
            cues.add(task.fixation())
            return "asterisk" in cues or task.target() is not None
        wait_for("a target or a star", look)
        return next((cue for cue in ("asterisk", "arrow") if cue in cues), "cross")

    def leave_task(self) -> None:
        self.robot.hands.press("Escape")
        self.robot.main_window()


class WordsWalk(Walk):
    """The main window, the dialogs, and what the tasks say."""

    def run(self) -> None:
        self.calibrate()
        self.fill_dialogs()
        self.show_titles()
        self.show_example()
        self.end_a_test(1)

    def keep_window(self, name: str, title: str) -> None:
        self.robot.wait_window(title)
        self.robot.wait_still()
        self.album.keep(name, self.seen(self._framed(self.robot.wait_window(title))))

    def _framed(self, window: Window) -> Place:
        """A window with the frame that the window manager draws around it."""
        display = self.robot.screen.display
        frame = display.create_resource_object("window", window.id).get_full_property(
            display.intern_atom("_NET_FRAME_EXTENTS"), X.AnyPropertyType)
        left, right, top, bottom = frame.value
        return Place(window.x - left, window.y - top, window.width + left + right,
                     window.height + top + bottom)

    def calibrate(self) -> None:
        self.robot.wait_window("Calibration")
        wait_for("the line", lambda: self.robot.line_shown() == "horizontal")
        self.robot.hands.type(HORIZONTAL_MM)
        self.robot.wait_still()
        self.album.keep_grey("calibration", self.seen(CALIBRATION))
        self.robot.hands.press("Return")
        self.robot.enter_line(VERTICAL_MM, "vertical")
        self.robot.wait_gone("Calibration")
        self.robot.wait_ready()

    def fill_dialogs(self) -> None:
        self.robot.fill_assessor(2, ASSESSOR)
        self.keep_window("assessor", "Assessor")
        self.robot.accept("Assessor")
        self.robot.choose_menu("actionPreferences")
        self.keep_window("preferences", "Preferences")
        self.robot.close_window("Preferences")
        self.robot.choose_menu("actionAdd_patient")
        self.robot.wait_window("NewPatient")
        self.robot.fill_patient(1, LAST_NAME, FIRST_NAME, BORN)
        self.keep_window("new-patient", "NewPatient")
        self.robot.accept("NewPatient")
        for option in ("cb_withInstruction", "cb_withTraining", "cb_subTask"):
            self.robot.set_option(option, True)
        self.keep_window("main-window", "Kelmoran")

    def show_titles(self) -> None:
        """How each task begins with its instruction, and how a training begins."""
        for name, (button, task) in TITLES.items():
            self.robot.start_test(button, parameters=False, instruction=True)
            self.keep_title(f"{name}-title", task(self.robot))
        self.robot.start_test(2, parameters=False, training=True)
        self.keep_title("training", AttentionTask(self.robot))

    def keep_title(self, name: str, task: TaskScreen) -> None:
        task.wait_shown(task.corner_button, "the button of the title")
        self.robot.wait_still()
        self.album.keep_grey(name, self.seen(self.frame), TITLE_SCALE)
        self.leave_task()

    def show_example(self) -> None:
        """The example of the working memory task: first cross, question for the last, guides."""
        self.robot.start_test(4, parameters=False, instruction=True)
        task = MemoryTask(self.robot)
        for step in range(1, 7):
            task.next_step()
            self.robot.wait_still()
            if step in (1, 5):
                name = "memory-first" if step == 1 else "memory-question"
                self.album.keep_grey(name, self.seen(self.frame), TITLE_SCALE)
        task.switch_guides()
        self.album.keep_grey("memory-guides", self.seen(self.frame), TITLE_SCALE * 1.25)
        self.leave_task()

    def answer(self, task: AttentionTask) -> None:
        """Answers a target in the time that a person needs."""
        cue = self.wait_cue(task)
        task.wait_target()
        time.sleep(self.person.gauss(REACTION[cue], SPREAD))
        task.answer()

    def end_a_test(self, trials: int) -> AttentionTask:
        self.robot.start_test(2)
        task = AttentionTask(self.robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(trials)
        task.press_go()
        for _ in range(trials):
            self.answer(task)
        task.wait_end()
        self.robot.wait_still()
        self.album.keep_grey("test-end", self.seen(self.centred(*BUTTONS)))
        return task


class GuideWalk(WordsWalk):
    """In English also what only the assessor's guide shows."""

    def run(self) -> None:
        super().run()
        self.leave_task()
        self.robot.choose_menu("actionAbout_Kelmoran")
        self.keep_page_window("viewer", "WebViewer")
        self.show_panel()
        task = self.end_a_test(TRIALS_OF_REPORT)
        task.click(task.results)
        self.keep_page_window("report-window", "Result")

    def keep_page_window(self, name: str, title: str) -> None:
        self.robot.wait_page(title)
        self.keep_window(name, title)
        self.robot.close_window(title)
        self.robot.main_window()

    def show_panel(self) -> None:
        self.robot.start_test(2)
        task = AttentionTask(self.robot)
        task.press_go()
        self.answer(task)
        task.wait_target()
        self.album.keep_grey("parameters", self.seen(PANEL), 1)
        self.leave_task()


class TrialsWalk(Walk):
    """What a patient sees, without a word on the screen."""

    def run(self) -> None:
        self.robot.wait_ready()
        self.robot.choose_patient(KEY)
        self.show_stimulus()
        for button, play in ((7, self.see_figures), (2, self.see_targets), (3, self.see_movement),
                             (4, self.see_crosses)):
            self.robot.start_test(button, parameters=False)
            play()
            self.leave_task()

    def show_stimulus(self) -> None:
        """The demonstration shows the pairs in a fixed order; its words stand farther out."""
        self.robot.start_test(7, parameters=False, instruction=True)
        task = VisionTask(self.robot, 7)
        task.press_corner_button()

        def look() -> Picture | None:
            seen = task.stimulus()
            if not seen or (seen.pair, seen.place) != ("OrR", "TR"):
                return None
            return self.seen(self.centred(*STIMULUS))
        self.album.keep_grey("vision-stimulus", wait_for("the turned figure", look, 30))
        self.leave_task()

    def see_figures(self) -> None:
        task = VisionTask(self.robot, 7)
        task.press_go()
        mask, mark = task.wait_mask(), task.frame
        self.album.keep_grey("vision-mask", mask.part(mark.x, mark.y, mark.width, mark.height), 0.25)
        task.wait_asked()
        self.robot.wait_still()
        self.album.keep_grey("vision-answers", self.seen(self.centred(*ANSWERS)))

    def see_targets(self) -> None:
        task = AttentionTask(self.robot)
        task.press_go()
        wanted = {"asterisk": "star", "arrow": "trial"}
        while wanted:
            cue = self.wait_cue(task)
            if cue in wanted:
                self.album.keep_grey(wanted.pop(cue), self.seen(self.centred(*TARGETS)))
            task.wait_target()
            task.answer()

    def see_movement(self) -> None:
        task = MovementTask(self.robot)
        task.press_go()
        while task.wait_arrow() != "N":  # a wrong answer would bring the same place again
            _, direction = task.see()
            task.space()
            task.answer(direction or "?", by_mouse=True)
        self.album.keep_grey("movement-field", self.seen(self.centred(*FIELD)), 1)
        task.space()
        self.robot.wait_still()
        self.album.keep_grey("movement-pad", self.seen(self.centred(*PAD)), 1)

    def see_crosses(self) -> None:
        task = MemoryTask(self.robot)
        task.press_go()
        task.wait_cross()
        self.album.keep_grey("memory-cross", self.seen(task.ring))


def prepare_trials(root: Path) -> None:
    """A calibrated screen, and a patient who needs no training."""
    parameters = root / "Parameters"
    (parameters / "screen.pix").write_bytes(struct.pack(">iii", 270, 270, 0))
    numbers = ";".join(["0"] * 7 + [str(LONG_EXPOSURE)] * 3)
    line = f"Mrs.;{LAST_NAME};{FIRST_NAME};{BORN};{numbers}\r\n"
    (parameters / "patients_list.txt").write_text(line, encoding="utf-8", newline="")


def walk(root: Path, language: str, album: Album, trials: bool) -> None:
    kind = TrialsWalk if trials else GuideWalk if language == "en" else WordsWalk
    with VirtualScreen() as screen:
        program = Program(screen, root)
        try:
            kind(TranslatedRobot(screen, program, language), album).run()
        finally:
            program.stop()


def keep_report(root: Path, language: str, album: Album) -> None:
    """The report of a whole test, which a simulated patient plays in a folder of its own."""
    with tempfile.TemporaryDirectory(prefix="kelmoran-") as other:
        place = Path(other)
        (place / "Languages").symlink_to(root / "Languages")
        (place / "Parameters").mkdir()
        record = (root / "Parameters" / "assessor.txt").read_bytes()
        (place / "Parameters" / "assessor.txt").write_bytes(record)
        subprocess.run([root / "bin" / "kelmoran-rehearse", "--root", place, "--task", "test2",
                        "--report", "--language", language, "--start", REHEARSED_AT,
                        "--patient", f"{LAST_NAME};{FIRST_NAME};{BORN};Mrs."],
                       check=True, stdout=subprocess.DEVNULL)
        (report,) = place.glob("Archives/*/*.pdf")
        subprocess.run(["pdftoppm", "-r", str(REPORT_DPI), "-png", "-singlefile", report,
                        place / "report"], check=True)
        album.keep_page("report", place / "report.png")


def main() -> int:
    parser = argparse.ArgumentParser(description="Pictures of the program in one language.")
    parser.add_argument("--root", type=Path, required=True, help="a new data root, laid out")
    parser.add_argument("--language", required=True, help="the language it was laid out in")
    parser.add_argument("--pictures", type=Path, required=True, help="the folder to fill")
    parser.add_argument("--trials", action="store_true", help="what has no words")
    told = parser.parse_args()
    root, album = told.root.resolve(), Album(told.pictures)
    try:
        if told.trials:
            prepare_trials(root)
        walk(root, told.language, album, told.trials)
        if not told.trials:
            keep_report(root, told.language, album)
    except (RobotError, OSError, subprocess.CalledProcessError) as error:
        print(f"stills: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
