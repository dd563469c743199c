"""The same short test in a German session, where the system writes a decimal comma."""

import os
import re
import subprocess
import unittest
import unittest.mock
from pathlib import Path

from desk import T2_RT, Desk

GERMAN = "de_DE.UTF-8"


def make_german() -> dict[str, str]:
    """Makes the locale, where the system lacks it, in a folder of the build. Returns what has to be
    in the environment for it to be found."""
    known = subprocess.run(["locale", "-a"], capture_output=True, text=True, check=True).stdout
    if re.search(r"^de_DE\.utf-?8$", known, re.IGNORECASE | re.MULTILINE):
        return {}
    folder = Path(os.environ["KELMORAN_BUILD"]) / "locales"
    folder.mkdir(exist_ok=True)
    if not (folder / GERMAN / "LC_NUMERIC").exists():
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", str(folder / GERMAN)], check=True)
    return {"LOCPATH": str(folder)}


class GermanSession(Desk):
    locale = GERMAN

    @classmethod
    def setUpClass(cls) -> None:
        cls.enterClassContext(unittest.mock.patch.dict(os.environ, make_german()))
        super().setUpClass()

    def setUp(self) -> None:
        super().setUp()
        self.assertEqual(self.decimal_point(), ",", "the German locale isn't in force")

    @staticmethod
    def decimal_point() -> str:
        """What a program sees that is started as the tested one is."""
        look = ("import locale; locale.setlocale(locale.LC_ALL, '');"
                "print(locale.localeconv()['decimal_point'])")
        return subprocess.run(["/usr/bin/python3", "-c", look], capture_output=True, text=True,
                              env={**os.environ, "LC_ALL": GERMAN}, check=True).stdout.strip()

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


if __name__ == "__main__":
    unittest.main()
