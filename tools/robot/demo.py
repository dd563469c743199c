#!/usr/bin/python3
"""A scripted assessor and a scripted patient carry out one attention test on the real program.

They work on a virtual screen, by key presses and mouse clicks. The waits of the test are shortened by
the panel of "Parameters", so that 96 valid trials take two minutes. Ends with 0 only if rows, scores,
report and screenshots are all there and complete.
"""

from __future__ import annotations

import argparse
import random
import signal
import subprocess
import sys
import time
from pathlib import Path

from attention_task import DIRECTIONS, AttentionTask
from eyes import Picture
from kelmoran_robot import Program, Robot
from virtual_screen import VirtualScreen
from waiting import RobotError, wait_for

VALID_TRIALS = 96
TRAINING_TRIALS = 5
HORIZONTAL_MM, VERTICAL_MM = "270", "135"
LAST_NAME, FIRST_NAME, BORN = "Demonstration", "Ada", "14.03.1952"
KEY = f"{LAST_NAME} {FIRST_NAME} {BORN}"
ASSESSOR = ["Weber", "Klara", "Eye and Memory Clinic", "Station Road 12", "3011", "Bern",
            "Switzerland"]
# Mean reaction times of the patient in seconds, by what announced the target.
REACTION = {"cross": 0.28, "asterisk": 0.25, "arrow": 0.21}
SPREAD = 0.025
ARGUMENT_ERROR = 2


class Demo:
    def __init__(self, robot: Robot, root: Path) -> None:
        self.robot = robot
        self.root = root
        self.pictures = root / "screenshots"
        self.task = AttentionTask(robot)
        self.patient = random.Random(96)
        self.session = 1
        self._began = time.monotonic()
        self._step = 0

    def say(self, text: str) -> None:
        print(f"[{time.monotonic() - self._began:5.1f} s] {text}", flush=True)

    def picture(self, name: str, still: bool = True) -> None:
        """Saves the screen, as a rule once the program has shown what was typed."""
        if still:
            self.robot.wait_still()
        self.keep(name, self.robot.eyes.whole())

    def keep(self, name: str, picture: Picture) -> None:
        self._step += 1
        self.pictures.mkdir(parents=True, exist_ok=True)
        (self.pictures / f"{self._step:02d}-{name}.png").write_bytes(picture.png())

    def run(self) -> None:
        self.start()
        self.record_assessor()
        self.choose_patient()
        self.set_up_test()
        self.learn()
        self.answer_trials()
        self.read_report()
        self.leave()

    def start(self) -> None:
        self.say("the program starts")
        if not (self.root / "Parameters" / "screen.pix").exists():
            self.robot.wait_window("Calibration")
            self.picture("calibration")
            self.robot.calibrate(HORIZONTAL_MM, VERTICAL_MM)
            self.say(f"the screen is calibrated: {HORIZONTAL_MM} mm and {VERTICAL_MM} mm")
        self.robot.wait_ready()
        self.picture("main-window")

    def record_assessor(self) -> None:
        record = self.root / "Parameters" / "assessor.txt"
        if record.exists():
            return
        self.robot.fill_assessor(2, ASSESSOR)
        self.picture("assessor")
        self.robot.accept("Assessor")
        wait_for("the assessor's record", record.exists)
        self.say(f"the assessor is recorded: Dr. {ASSESSOR[1]} {ASSESSOR[0]}")

    def patient_line(self) -> list[str] | None:
        """The fields of the demonstration's patient in the list of patients."""
        text = (self.root / "Parameters" / "patients_list.txt").read_text(encoding="utf-8")
        lines = (line.split(";") for line in text.split("\n"))
        return next((fields for fields in lines if " ".join(fields[1:4]) == KEY), None)

    def choose_patient(self) -> None:
        known = self.patient_line()
        if known:
            self.robot.choose_patient(KEY)
            self.session = int(known[5]) + 1
            self.say(f"the patient is known and chosen: {KEY}")
        else:
            self.robot.choose_menu("actionAdd_patient")
            self.robot.wait_window("NewPatient")
            self.robot.fill_patient(1, LAST_NAME, FIRST_NAME, BORN)
            self.picture("new-patient")
            self.robot.accept("NewPatient")
            wait_for("the patient's line in the list", self.patient_line)
            self.say(f"the patient is registered: {KEY}")
        self.robot.main_window()
        self.picture("patient-chosen")

    def set_up_test(self) -> None:
        self.robot.start_test(2, instruction=True, training=True)
        self.task.wait_shown(self.task.panel, "the parameter panel")
        self.task.shorten()
        self.picture("parameters")
        self.say("the attention test is open, its waits are shortened")

    def learn(self) -> None:
        """The instruction and the training of the three conditions."""
        self.task.next_step()  # the eight places
        self.picture("instruction-places")
        for part in ("neutral", "alerted", "oriented"):
            self.task.next_step()  # "Example"
            self.task.next_step()  # the demonstration
            self.task.wait_target()
            self.picture(f"instruction-{part}", still=False)
            self.task.next_step()  # the training
            self.picture(f"training-{part}")
            self.task.press_corner_button()
            self.task.wait_hidden(self.task.corner_button, "the Go button")
            for _ in range(TRAINING_TRIALS):
                self.answer_trial()
            self.say(f"the {part} condition is shown and trained")

    def answer_trials(self) -> None:
        self.task.press_go()
        pictured: set[str] = set()
        for trial in range(1, VALID_TRIALS + 1):
            cue, direction, picture = self.answer_trial()
            if cue not in pictured:
                pictured.add(cue)
                self.keep(f"trial-{cue}", picture)
            if trial % 12 == 0:
                self.say(f"trial {trial} of {VALID_TRIALS}, the target was "
                         f"{DIRECTIONS[direction]}")

    def answer_trial(self) -> tuple[str, int, Picture]:
        """Waits for the target, noting what announced it, and answers in the patient's own time."""
        cues: set[str | None] = set()

        def look() -> bool:
            cues.add(self.task.fixation())
            return self.task.target() is not None
        wait_for("a target", look)
        cue = next((cue for cue in ("arrow", "asterisk") if cue in cues), "cross")
        onset = time.monotonic()
        direction, picture = self.task.wait_target(), self.robot.eyes.whole()
        reaction = self.patient.gauss(REACTION[cue], SPREAD)
        time.sleep(max(0.0, onset + reaction - time.monotonic()))
        self.task.answer()
        return cue, direction, picture

    def read_report(self) -> None:
        self.task.wait_end()
        self.picture("end-of-test")
        self.say("the test is over, the report is opened")
        self.task.click(self.task.results)
        self.robot.wait_window("Result", 30)
        wait_for("the PDF file", self.report_text, 60)
        self.picture("report")
        self.say("the report is printed")

    def leave(self) -> None:
        self.robot.close_window("Result")
        self.robot.main_window()
        self.picture("back-at-the-main-window")
        self.robot.hands.press("Escape")
        code = self.robot.program.wait_until_ended()
        if code != 0:
            raise RobotError(f"the program ended with {code}")
        self.say("the program is left")

    # What must be there at the end

    @property
    def archive(self) -> Path:
        return self.root / "Archives" / KEY

    @property
    def report(self) -> Path:
        return self.archive / f"Output_T2_S{self.session:02d}_{KEY}.pdf"

    def report_text(self) -> str:
        """The text of the PDF; empty as long as it isn't whole."""
        if not self.report.exists():
            return ""
        answer = subprocess.run(["pdftotext", "-layout", str(self.report), "-"],
                                capture_output=True, check=False)
        return answer.stdout.decode() if answer.returncode == 0 else ""

    def own_rows(self, path: Path) -> list[list[str]]:
        """The rows of this test in a file of rows."""
        rows = [line.split(";") for line in path.read_text(encoding="latin-1").splitlines()[1:]]
        return [row for row in rows
                if row[2:4] == [LAST_NAME, FIRST_NAME] and row[5:7] == ["2", str(self.session)]]

    def check(self) -> None:
        results = self.root / "Results"
        valid = [row for row in self.own_rows(results / "output.csv") if row[-1] == "0"]
        expect(len(valid) == VALID_TRIALS, f"output.csv holds {len(valid)} valid rows")
        expect(all(row[20].isdigit() and len(row) == 30 for row in valid), "a row is incomplete")
        kept = self.own_rows(results / "valid-output.csv")
        expect(kept == valid, "valid-output.csv differs from the valid rows of output.csv")
        for path in (results / "results_T2.csv", self.archive / f"results_T2_{KEY}.csv"):
            scores = self.own_rows(path)
            expect(len(scores) == 1 and len(scores[0]) == 23, f"no score row in {path.name}")
        line = self.patient_line()
        expect(line is not None and line[5] == str(self.session), "the session isn't in the list")
        text = self.report_text()
        expect(LAST_NAME in text and FIRST_NAME in text, "the report doesn't name the patient")
        pictures = list(self.pictures.glob("*.png"))
        expect(len(pictures) >= 14, "screenshots are missing")

    def tell(self) -> None:
        print(f"screenshots  {self.pictures}/")
        print(f"rows         {self.root / 'Results' / 'output.csv'}")
        print(f"valid rows   {self.root / 'Results' / 'valid-output.csv'}")
        print(f"scores       {self.archive / f'results_T2_{KEY}.csv'}")
        print(f"report       {self.report}")


def expect(so: bool, otherwise: str) -> None:
    if not so:
        raise RobotError(otherwise)


def play(root: Path) -> None:
    with VirtualScreen() as screen:
        program = Program(screen, root)
        demo = Demo(Robot(screen, program), root)
        try:
            demo.run()
        except RobotError:
            demo.picture("where-it-stopped", still=False)
            raise
        finally:
            program.stop()
    demo.check()
    demo.tell()


def main() -> int:
    parser = argparse.ArgumentParser(description="One attention test on a virtual screen.")
    parser.add_argument("--root", type=Path, required=True, help="a data root, laid out")
    root = parser.parse_args().root.resolve()
    if not (root / "bin" / "kelmoran").exists():
        print(f"demo: no program in {root / 'bin'}", file=sys.stderr)
        return ARGUMENT_ERROR
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    try:
        play(root)
    except (RobotError, OSError) as error:
        print(f"demo: {error}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        return 130
    return 0


if __name__ == "__main__":
    sys.exit(main())
