"""A share of what kill.py tries, always the same; and that what it looks at would be seen."""

import random
import tempfile
import unittest
from pathlib import Path

import kill
from promises import Expected, Root
from rehearsals import KNOWN, UNKNOWN, Play, Stage, kind_of, line_of, old_list

SEED = 8
HEADER = b"code;gender;l_name;f_name;dob;task" + b";x" * 24 + b"\n"
ROW = b";Mrs.;Muster;Anna;02/03/1950;2" + b";1" * 24 + b"\n"
LIST = "Parameters/patients_list.txt"
LOG = "Results/output.csv"
PATIENT = f"Rehearsal {KNOWN} 14.03.1952"


class Kill(unittest.TestCase):
    def test_a_rehearsal_dies_at_a_call_of_each_kind_and_the_next_one_is_played(self) -> None:
        rng = random.Random(SEED)
        stage = Stage()
        self.addCleanup(stage.close)
        play = Play(2, 2, first_name=UNKNOWN)
        calls = stage.whole_run(play).calls
        by_kind: dict[str, list[int]] = {}
        for index, call in enumerate(calls):
            by_kind.setdefault(kind_of(calls, index), []).append(call.number)
        self.assertLessEqual({"lock", "registration", "rewrite of the list", "trial rows", "scores",
                              "valid rows", "calibration, frequency"}, by_kind.keys())
        for kind, numbers in by_kind.items():
            with self.subTest(kind):
                attempt = stage.try_moment(play, at=rng.choice(numbers))
                self.assertTrue(attempt.killed)
                self.assertEqual(attempt.wrong, [])

    def test_the_program_dies_at_random_moments_and_the_next_one_starts(self) -> None:
        def work(ward: kill.scenes.Ward) -> list[kill.Told]:
            told = []
            for name in ("attention", "registration"):
                rng = random.Random(f"{SEED} {name}")
                attempt = ward.attempt(name, rng, delay=lambda length: rng.uniform(0.01, length))
                told.append(kill.Told(name, attempt.killed, wrong=attempt.wrong))
            return told
        told = list(kill.open_ward(work))
        self.assertEqual([(moment.kind, moment.wrong) for moment in told],
                         [("attention", []), ("registration", []), ("last start", [])])
        self.assertTrue(told[0].midway and told[1].midway)


class Promises(unittest.TestCase):
    """What is broken is told."""

    def setUp(self) -> None:
        folder = self.enterContext(tempfile.TemporaryDirectory(prefix="kelmoran-"))
        self.root = Path(folder)
        for name in ("Parameters", "Results", "Archives", "bin"):
            (self.root / name).mkdir()
        self.write(LIST, old_list())
        self.write(LOG, HEADER + ROW)
        self.write("Parameters/screen.pix", bytes(12))
        self.state = Root(self.root)

    def write(self, name: str, data: bytes) -> None:
        (self.root / name).write_bytes(data)

    def broken(self, cut: bool = False, **expected: object) -> int:
        return len(self.state.broken(Expected(PATIENT, [line_of(UNKNOWN)], **expected), cut))

    def test_nothing_is_broken_where_nothing_has_changed(self) -> None:
        self.assertEqual(self.broken(), 0)

    def test_whole_rows_and_a_new_patient_are_no_harm(self) -> None:
        self.write(LOG, HEADER + ROW + ROW)
        self.write(LIST, old_list().replace(b";120;90;", b";61;90;", 1) + line_of(UNKNOWN) + b"\r\n")
        self.write("bin/_patients_list.txt", b"Mr")
        self.assertEqual(self.broken(finished=1), 0)

    def test_a_trial_without_its_row_is_told(self) -> None:
        self.assertEqual(self.broken(finished=1), 1)

    def test_half_a_row_is_told_but_where_the_write_was_cut(self) -> None:
        self.write(LOG, HEADER + ROW + ROW[:20])
        self.assertEqual(self.broken(), 1)
        self.assertEqual(self.broken(cut=True), 0)

    def test_rows_that_have_changed_or_lack_fields_are_told(self) -> None:
        for data in (HEADER + ROW.replace(b"1950", b"1951"), HEADER, HEADER + ROW + b";Mrs.;x\n",
                     ROW, b""):
            with self.subTest(data):
                self.write(LOG, data)
                self.assertEqual(self.broken(), 1)

    def test_a_list_that_lost_or_changed_a_line_is_told(self) -> None:
        lines = old_list().split(b"\r\n")
        for data in (b"\r\n".join(lines[1:]), old_list()[:-1], old_list() + b"Mr.;Half",
                     old_list() + line_of(KNOWN) + b"\r\n",
                     old_list().replace(b"ukasz 2;", b"ukasz 22;"),
                     old_list().replace(b"ukasz 3;11.12.1948;0", b"ukasz 3;11.12.1948;1")):
            with self.subTest(data[-80:]):
                self.write(LIST, data)
                self.assertEqual(self.broken(), 1)

    def test_a_screen_file_that_is_half_or_gone_is_told(self) -> None:
        self.write("Parameters/screen.pix", bytes(8))
        self.assertEqual(self.broken(), 1)
        (self.root / "Parameters" / "screen.pix").unlink()
        self.assertEqual(self.broken(), 2)

    def test_files_that_nobody_knows_and_half_a_report_are_told(self) -> None:
        self.write("Results/output.csv.new", b"")
        (self.root / "Archives" / PATIENT).mkdir()
        self.write(f"Archives/{PATIENT}/Output_T2_S01_{PATIENT}.pdf", b"%PDF-1.4\n")
        self.assertEqual(self.broken(), 2)


if __name__ == "__main__":
    unittest.main()
