"""What the tests of the real program share: a screen, a fresh data root, the program, a robot."""

from __future__ import annotations

import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "tools" / "robot"))

from attention_task import AttentionTask  # noqa: E402
from kelmoran_robot import Program, Robot  # noqa: E402
from memory_task import MemoryTask  # noqa: E402
from movement_task import MovementTask  # noqa: E402
from virtual_screen import VirtualScreen  # noqa: E402
from vision_task import VisionTask  # noqa: E402
from waiting import wait_for  # noqa: E402

KEY = "Tester Paula 14.03.1952"


def patient_line(sessions: tuple[int, ...] = (0, 4, 0, 0, 0, 0, 0),
                 thresholds: tuple[int, ...] = (0, 0, 0)) -> bytes:
    """The line of the list: last sessions of the seven tests, thresholds of the three subtasks of
    visual perception in ms."""
    numbers = ";".join(str(number) for number in sessions + thresholds)
    return f"Mrs.;Tester;Paula;14.03.1952;{numbers}\r\n".encode("ascii")


PATIENT_LINE = patient_line()
ASSESSOR = b"Dr.;Weber;Klara;Augenklinik;Bahnhofstr. 12;3011;Bern;Schweiz\n"
IDENTITY = [b"", b"Mrs.", b"Tester", b"Paula", b"14/03/1952"]
HEADER = (b"code;gender;l_name;f_name;dob;task;session;date;time;subtask;rank_task;rank_sub;t1_time;"
          b"t1c_figure;t1c_answer;t1p_position;t1p_answer;t1_tanswer;t1_answer;t1_implement;t2_rt;"
          b"t2_position;t3_rt;t3_position;t3_dir_mov;t4_dist_first;t4_dist_last;t4_pos_first;"
          b"t4_pos_last;error\n")
# Columns of a row.
TASK, SESSION, SUBTASK, RANK, RANK_SUB = 5, 6, 9, 10, 11
T1_TIME, FIGURE, FIGURE_ANSWER, POSITION, POSITION_ANSWER, T1_TANSWER, T1_ANSWER = range(12, 19)
T2_RT, T2_POSITION, T3_RT, T3_POSITION, T3_DIRECTION = range(20, 25)
T4_FIRST, T4_LAST, T4_POS_FIRST, T4_POS_LAST, ERROR = range(25, 30)


class Desk(unittest.TestCase):
    """One screen for all tests of a class, and for each test a data root and a run of its own."""

    locale = "C.UTF-8"
    screen: VirtualScreen

    @classmethod
    def setUpClass(cls) -> None:
        cls.screen = VirtualScreen()
        cls.enterClassContext(cls.screen)

    def setUp(self) -> None:
        self.root = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="kelmoran-")))
        layout = PROJECT / "scripts" / "lay-out-root.sh"
        subprocess.run([str(layout), str(self.root), os.environ["KELMORAN_BUILD"]], check=True)

    # Files

    def parameters(self, name: str) -> Path:
        return self.root / "Parameters" / name

    def rows(self, name: str = "output.csv") -> list[list[bytes]]:
        """The rows of a result file, its header checked and left out."""
        text = (self.root / "Results" / name).read_bytes()
        lines = text.split(b"\n")
        self.assertEqual(lines.pop(), b"", f"{name} doesn't end in a line feed")
        if name in ("output.csv", "valid-output.csv"):
            self.assertEqual(lines[0] + b"\n", HEADER)
        return [line.split(b";") for line in lines[1:]]

    def patients(self) -> bytes:
        return self.parameters("patients_list.txt").read_bytes()

    def report(self, test: int, session: int) -> Path:
        return self.root / "Archives" / KEY / f"Output_T{test}_S{session:02d}_{KEY}.pdf"

    def report_text(self, test: int, session: int) -> str:
        """The text of a report's PDF, a form feed behind each page; empty as long as it isn't
        whole."""
        if not self.report(test, session).exists():
            return ""
        answer = subprocess.run(["pdftotext", "-layout", str(self.report(test, session)), "-"],
                                capture_output=True, check=False)
        return answer.stdout.decode() if answer.returncode == 0 else ""

    def wait_rows(self, count: int) -> list[list[bytes]]:
        """Rows are on the disk when their trial is over."""
        wait_for(f"{count} rows in output.csv", lambda: len(self.rows()) >= count)
        rows = self.rows()
        self.assertEqual(len(rows), count)
        return rows

    def has_calibration(self, horizontal: int = 270, vertical: int = 270) -> None:
        self.parameters("screen.pix").write_bytes(struct.pack(">iii", horizontal, vertical, 0))

    def has_patient(self, line: bytes = PATIENT_LINE) -> None:
        self.parameters("patients_list.txt").write_bytes(line)

    # The program

    def start(self) -> Robot:
        program = Program(self.screen, self.root, self.locale)
        self.addCleanup(self.keep_trace, program)
        self.addCleanup(program.stop)
        return Robot(self.screen, program)

    def keep_trace(self, _: Program) -> None:
        """On request, the files of a run are kept for a look."""
        kept = os.environ.get("KELMORAN_KEEP")
        if kept:
            shutil.copytree(self.root, Path(kept) / self.id(), dirs_exist_ok=True)

    def start_with_patient(self, line: bytes = PATIENT_LINE,
                           pitches: tuple[int, int] = (270, 270)) -> Robot:
        """The program with its screen calibrated and a patient of the list chosen."""
        self.has_calibration(*pitches)
        self.has_patient(line)
        robot = self.start()
        robot.wait_ready()
        robot.choose_patient(KEY)
        return robot

    def start_attention(self, number: int | None = 6, **options: bool) -> tuple[Robot, AttentionTask]:
        """A short attention test, ready for its Go."""
        robot = self.start_with_patient()
        robot.start_test(2, **options)
        task = AttentionTask(robot)
        if options.get("parameters", True):
            task.wait_shown(task.panel, "the parameter panel")
            task.shorten(number)
        return robot, task

    def start_vision(self, button: int, thresholds: tuple[int, int, int],
                     **options: bool) -> tuple[Robot, VisionTask]:
        """The whole visual perception task (button 1) or one of its subtasks (5, 6, 7)."""
        robot = self.start_with_patient(patient_line(thresholds=thresholds))
        robot.start_test(button, **options)
        task = VisionTask(robot, button)
        task.wait_shown(task.panel, "the parameter panel")
        return robot, task

    def start_movement(self, number: int | None = None, **options: bool) -> tuple[Robot, MovementTask]:
        """A short movement detection test, ready for its Go, or its instruction or training."""
        robot = self.start_with_patient()
        robot.start_test(3, **options)
        task = MovementTask(robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(number)
        return robot, task

    def start_memory(self, number: int | None = None, pitches: tuple[int, int] = (270, 270),
                     **options: bool) -> tuple[Robot, MemoryTask]:
        """A short working memory test, ready for its Go, or its instruction or training."""
        robot = self.start_with_patient(pitches=pitches)
        robot.start_test(4, **options)
        task = MemoryTask(robot)
        task.wait_shown(task.panel, "the parameter panel")
        task.shorten(number)
        return robot, task
