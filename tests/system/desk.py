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

from kelmoran_robot import AttentionTask, Program, Robot  # noqa: E402
from virtual_screen import VirtualScreen  # noqa: E402
from waiting import wait_for  # noqa: E402

KEY = "Tester Paula 14.03.1952"
PATIENT_LINE = b"Mrs.;Tester;Paula;14.03.1952;0;4;0;0;0;0;0;0;0;0\r\n"
IDENTITY = [b"", b"Mrs.", b"Tester", b"Paula", b"14/03/1952"]
HEADER = (b"code;gender;l_name;f_name;dob;task;session;date;time;subtask;rank_task;rank_sub;t1_time;"
          b"t1c_figure;t1c_answer;t1p_position;t1p_answer;t1_tanswer;t1_answer;t1_implement;t2_rt;"
          b"t2_position;t3_rt;t3_position;t3_dir_mov;t4_dist_first;t4_dist_last;t4_pos_first;"
          b"t4_pos_last;error\n")
# Columns of a row.
SESSION, SUBTASK, RANK, T2_RT, T2_POSITION, ERROR = 6, 9, 10, 20, 21, 29


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

    def start_with_patient(self) -> Robot:
        """The program with its screen calibrated and a patient of the list chosen."""
        self.has_calibration()
        self.has_patient()
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
