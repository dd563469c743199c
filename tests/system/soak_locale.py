"""The long form of test_locale.py, for ./soak.sh: every session, and the reports too."""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import unicodedata
import unittest

import test_locale
from desk import PROJECT
from test_locale import GERMAN, PERSIAN, PLAIN, SHARE, TURKISH, Session, make_locale

ALL = SHARE + [
    Session("C", "."), Session("en_GB.UTF-8", "."), Session("fr_FR.UTF-8", ","),
    Session("it_IT.UTF-8", ","), Session("es_ES.UTF-8", ","), Session("nl_NL.UTF-8", ","),
    Session("de_CH.UTF-8", "."), Session("fr_CH.UTF-8", ","), Session("sv_SE.UTF-8", ","),
    Session("ar_EG.UTF-8", "."), Session("hi_IN.UTF-8", "."), Session("de_DE.ISO-8859-1", ","),
    Session("de_CH.UTF-8", ",", (("LANG", TURKISH), ("LC_NUMERIC", GERMAN))),
    Session(GERMAN, ",", is_made=False), Session(PERSIAN, ".", is_made=False),
    Session("xx_YY.UTF-8", ".", is_made=False)]
OTHER_SIGNS = {"٫": ".", "−": "-"}


def in_plain(text: str) -> str:
    """A report's text with the digits and signs of a plain session, and without the marks that tell
    which way a number runs. In Arabic a sign stands behind its number."""
    plain = "".join(str(unicodedata.decimal(letter)) if letter.isdecimal()
                    else OTHER_SIGNS.get(letter, letter)
                    for letter in text if unicodedata.category(letter) != "Cf")
    plain = re.sub(r"(?<=\d),(?=\d)", ".", plain)
    plain = re.sub(r"(?<!\S)([\d.]+)-(?!\S)", r"-\1", plain)
    return re.sub(r"\s+", " ", plain)


class EverySession(test_locale.SameFiles):
    sessions = ALL
    buttons = tuple(range(1, 8))


class SameReports(unittest.TestCase):
    """But for the digits and signs the reports of all sessions tell the same."""

    setUp = test_locale.SameFiles.setUp

    def report(self, session: Session, button: int) -> str:
        root = self.folder / "root"
        subprocess.run([str(PROJECT / "scripts" / "lay-out-root.sh"), str(root),
                        os.environ["KELMORAN_BUILD"]], check=True)
        locales = make_locale(session.name) if session.is_made else root
        done = subprocess.run(
            [str(self.rehearse), "--root", str(root), "--report", "--seed", "3",
             "--task", f"test{button}", "--training"],
            env=session.environment(locales), capture_output=True, check=False)
        self.assertEqual(done.returncode, 0, f"{session} test{button}: {done.stderr.decode()}")
        made, = (root / "Archives").rglob("*.pdf")
        text = subprocess.run(["pdftotext", "-layout", str(made), "-"], capture_output=True,
                              check=True).stdout.decode()
        shutil.rmtree(root)
        return text

    def test_every_session_reports_the_same(self) -> None:
        for button in (1, 2, 3, 4):
            plain = self.report(Session(PLAIN, "."), button)
            self.assertIn("06.01.2025", plain)
            for session in ALL:
                with self.subTest(session=session, button=button):
                    self.assertEqual(in_plain(self.report(session, button)), in_plain(plain))


if __name__ == "__main__":
    unittest.main()
