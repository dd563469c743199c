"""The language of the session: which decimal separator it brings, which digits, which capitals. What
is filed is the same in every one of them, but where it is meant to follow the language."""

from __future__ import annotations

import os
import shutil
import subprocess
import tempfile
import unittest
import unittest.mock
from dataclasses import dataclass
from pathlib import Path

from desk import PROJECT, T2_RT, T4_FIRST, T4_LAST, Desk
from waiting import wait_for

GERMAN = "de_DE.UTF-8"
TURKISH = "tr_TR.UTF-8"
PERSIAN = "fa_IR.UTF-8"
PLAIN = "C.UTF-8"


@dataclass(frozen=True)
class Session:
    """The language of a session, and what its distances are written with."""
    name: str
    separator: str
    settings: tuple[tuple[str, str], ...] = ()  # LC_ALL=<name> if there are none
    is_made: bool = True  # whether the system has this locale, too, or the toolkit alone knows it

    def environment(self, folder: Path) -> dict[str, str]:
        kept = {name: value for name, value in os.environ.items()
                if not name.startswith(("LC_", "LANG", "LOCPATH", "QT_"))}
        told = {**kept, **dict(self.settings or (("LC_ALL", self.name),)), "TZ": "UTC"}
        return {**told, "LOCPATH": str(folder)} if self.is_made else told


SHARE = [Session(GERMAN, ","), Session(TURKISH, ","), Session(PERSIAN, ".")]
PATIENT = "Işık Ünal;İdil ß;14.03.1952;Mrs."
TRAINED = (1, 5, 6, 7)  # the visual perception task begins with a training


def make_locale(name: str) -> Path:
    """Makes a locale in a folder of the build, and returns the folder."""
    folder = Path(os.environ["KELMORAN_BUILD"]) / "locales"
    folder.mkdir(exist_ok=True)
    language, _, letters = name.partition(".")
    if letters and language != "C" and not (folder / name / "LC_NUMERIC").exists():
        subprocess.run(["localedef", "-i", language, "-f", letters, str(folder / name)], check=True)
    return folder


class Foreign(Desk):
    """The real program in a session of another language."""

    @classmethod
    def setUpClass(cls) -> None:
        folder = make_locale(cls.locale)
        cls.enterClassContext(unittest.mock.patch.dict(os.environ, {"LOCPATH": str(folder)}))
        super().setUpClass()

    def setUp(self) -> None:
        super().setUp()
        # What a program sees that is started as the tested one is.
        look = "import locale; print(locale.setlocale(locale.LC_ALL, ''))"
        seen = subprocess.run(["/usr/bin/python3", "-c", look], capture_output=True, text=True,
                              env={**os.environ, "LC_ALL": self.locale}, check=True).stdout.strip()
        self.assertEqual(seen, self.locale, "the locale isn't in force")


class GermanSession(Foreign):
    locale = GERMAN

    def test_the_numbers_of_a_score_row_have_points(self) -> None:
        _, task = self.start_attention(6)
        task.press_go()
        for _ in range(6):
            task.wait_target()
            task.answer()
        task.wait_end()
        scores = self.rows("results_T2.csv")[0]
        self.assertEqual(len(scores), 23)
        for at, field in enumerate(scores[11:]):
            decimals = 1 if at % 4 == 1 else 6
            self.assertRegex(field.decode(), rf"^-?\d+\.\d{{{decimals}}}$")
        for row in self.rows("valid-output.csv"):
            self.assertEqual(len(row), 30)
            self.assertRegex(row[T2_RT].decode(), r"^\d+$")


class PersianSession(Foreign):
    locale = PERSIAN

    def test_a_screen_is_calibrated_and_a_patient_registered(self) -> None:
        robot = self.start()
        robot.calibrate("270", "135")
        self.assertEqual(self.parameters("screen.pix").read_bytes(), bytes.fromhex("0000010e" * 2)
                         + bytes(4))
        robot.wait_ready()
        robot.register(1, "Tester", "Paula", "14.03.1952")
        wait_for("the patient's line", self.patients)
        self.assertEqual(self.patients(), b"Mrs.;Tester;Paula;14.03.1952" + b";0" * 10 + b"\r\n")


class TurkishSession(Foreign):
    locale = TURKISH

    def test_italian_is_found_whose_first_letter_has_another_capital(self) -> None:
        layout = PROJECT / "scripts" / "lay-out-root.sh"
        subprocess.run([str(layout), str(self.root), os.environ["KELMORAN_BUILD"], "it"], check=True,
                       env={**os.environ, "LC_ALL": TURKISH})
        self.assertEqual([path.name for path in (self.root / "Languages").glob("*t*.qm")],
                         ["Itkelmoran_it.qm"])
        self.start().wait_window("Calibrazione")


class SameFiles(unittest.TestCase):
    """Whole tests with the same simulated patient, in several sessions."""

    sessions = SHARE
    buttons: tuple[int, ...] = (2, 3, 4, 5)

    def setUp(self) -> None:
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory(prefix="kelmoran-")))
        build = Path(os.environ["KELMORAN_BUILD"])
        self.rehearse = shutil.which("kelmoran-rehearse", path=build / "tools" / "rehearse")
        self.assertIsNotNone(self.rehearse, "kelmoran-rehearse isn't built")

    def play(self, session: Session, number: int) -> Path:
        """All tests in a data root of their own."""
        root = self.folder / f"{number}"
        locales = make_locale(session.name) if session.is_made else root
        for button in self.buttons:
            done = subprocess.run(
                [str(self.rehearse), "--root", str(root), "--task", f"test{button}", "--seed", "3",
                 "--patient", PATIENT] + ["--training"] * (button in TRAINED),
                env=session.environment(locales), capture_output=True, check=False)
            self.assertEqual((done.returncode, done.stderr), (0, b""), f"{session} test{button}")
        return root

    def files(self, root: Path) -> dict[str, bytes]:
        return {str(path.relative_to(root)): path.read_bytes()
                for path in root.rglob("*") if path.is_file()}

    def with_points(self, name: str, text: bytes, session: Session) -> bytes:
        """A file of trials as it is in a session with decimal points; in all other files nothing
        follows the session."""
        if session.separator == "." or name not in ("Results/output.csv", "Results/valid-output.csv"):
            return text
        header, *lines = (line.split(b";") for line in text.split(b"\n"))
        answered = [line for line in lines if len(line) == len(header) and line[T4_FIRST]]
        self.assertGreater(len(answered), 20)
        for line in answered:
            for at in (T4_FIRST, T4_LAST):
                self.assertRegex(line[at].decode(), rf"^ *\d+{session.separator}\d\d$")
                line[at] = line[at].replace(session.separator.encode(), b".")
        return b"\n".join(b";".join(line) for line in [header, *lines])

    def test_every_session_leaves_the_same_files(self) -> None:
        plain = self.files(self.play(Session(PLAIN, "."), 0))
        key = PATIENT.replace(";", " ").removesuffix(" Mrs.")
        self.assertIn(f"Archives/{key}/results_T4_{key}.csv", plain)
        self.assertEqual(plain["Results/results_T1.csv"].count(b"\n"), len(self.buttons) - 2)
        self.assertIn(PATIENT.split(";")[0].encode(), plain["Parameters/patients_list.txt"])
        for number, session in enumerate(self.sessions, 1):
            with self.subTest(session=session):
                files = self.files(self.play(session, number))
                self.assertEqual(files.keys(), plain.keys())
                for name, text in files.items():
                    self.assertEqual(self.with_points(name, text, session), plain[name], name)
                shutil.rmtree(self.folder / f"{number}")


if __name__ == "__main__":
    unittest.main()
