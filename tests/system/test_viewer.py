"""The documents and the earlier reports, in a program that speaks German."""

import os
import subprocess
import unittest
import unittest.mock
from pathlib import Path

from desk import ASSESSOR, KEY, PROJECT
from eyes import Window
from kelmoran_robot import Robot
from reference_pictures import GreyPicture, LookingDesk, reference_of, window_of
from translated_robot import TranslatedRobot
from waiting import wait_for

LANGUAGE = "de"
BOOK = "Languages/DeKelmoran_Instruction-book_de.pdf"
REPORT = "report.pdf"
# Pixels of a page.
MOST_DIFFERENT = 500  # another version of the fonts moves no line
ANOTHER_PAGE = 10_000
STILLS = 30_000  # black pixels; letters have fewer


class Viewer(LookingDesk):
    def setUp(self) -> None:
        super().setUp()
        layout = PROJECT / "scripts" / "lay-out-root.sh"
        subprocess.run([str(layout), str(self.root), os.environ["KELMORAN_BUILD"], LANGUAGE],
                       check=True)
        self.parameters("assessor.txt").write_bytes(ASSESSOR)
        self.opened = self.root / "opened.txt"
        self.has_viewer()

    # The desktop around the program

    def search_only(self, *folders: str) -> None:
        """The folders in which the program looks for others."""
        path = unittest.mock.patch.dict(os.environ, {"PATH": os.pathsep.join(folders)})
        self.enterContext(path)

    def has_viewer(self) -> None:
        """A viewer of PDF files that only notes what it is to open."""
        viewer = self.root / "desktop" / "xdg-open"
        viewer.parent.mkdir()
        viewer.write_text(f'#!/bin/sh\nprintf "%s\\n" "$@" >>"{self.opened}"\n', encoding="ascii")
        viewer.chmod(0o755)
        self.search_only(str(viewer.parent), os.environ["PATH"])

    def wait_opened(self, file: Path) -> None:
        def look() -> bool:
            return self.opened.exists() and self.opened.read_text(encoding="utf-8") == (
                file.resolve().as_uri() + "\n")
        wait_for(f"{file.name} to be opened", look)

    # The program

    def start(self) -> TranslatedRobot:
        robot = super().start()
        return TranslatedRobot(robot.screen, robot.program, LANGUAGE)

    def page(self, robot: Robot, action: str) -> GreyPicture:
        """Opens a document by its menu entry, sees it, and closes it."""
        robot.choose_menu(action)
        window = robot.wait_page("WebViewer")
        self.assertEqual((window.width, window.height), (850, 840))
        seen = window_of(window, robot.eyes.whole())
        robot.close_window("WebViewer")
        robot.main_window()
        return seen

    def assert_told(self, robot: Robot, title: str) -> None:
        """A box of this title, which Return closes."""
        robot.wait_window(title)
        robot.hands.press("Return")
        robot.wait_gone(title)

    def shown(self, robot: Robot, window: Window) -> GreyPicture:
        robot.wait_still()
        return window_of(window, robot.eyes.whole())

    # What is seen

    def test_the_main_window_and_its_dialogs_speak_german(self) -> None:
        robot = self.start_with_patient()
        robot.set_option("cb_subTask", True)
        robot.hands.move(5, 5)
        self.assert_looks_like(self.shown(robot, robot.main_window()), "main-window-de",
                               MOST_DIFFERENT)
        for action, title in (("actionPreferences", "Einstellungen"),
                              ("actionAdd_patient", "Patient/in hinzufügen"),
                              ("actionAssessor", "Testleitung")):
            robot.choose_menu(action)
            robot.wait_window(title)
            robot.hands.press("Escape")
            robot.wait_gone(title)

    def test_the_documents_are_shown_in_german(self) -> None:
        robot = self.start_with_patient()
        about = self.page(robot, "actionAbout_Kelmoran")
        self.assert_looks_like(about, "about-de", MOST_DIFFERENT)
        publications = self.page(robot, "actionPublications")
        films = self.page(robot, "actionVideo_instructions")
        for one, two in ((about, publications), (publications, films), (films, about)):
            self.assertGreater(one.differing(two), ANOTHER_PAGE)
        for page, has_stills in ((about, False), (publications, False), (films, True)):
            self.assertEqual(page.light.count(0) > STILLS, has_stills)
        self.assertEqual(self.page(robot, "actionAbout_Kelmoran").differing(about), 0)

    def test_a_document_that_german_lacks_is_shown_in_english(self) -> None:
        languages = self.root / "Languages"
        (languages / "DeKelmoran_About_de.html").unlink()
        english = (languages / "En" / "Kelmoran_About_en.html").read_bytes()
        (languages / "DeKelmoran_About_en.html").write_bytes(english)
        robot = self.start_with_patient()
        seen = self.page(robot, "actionAbout_Kelmoran")
        self.assertGreater(seen.differing(reference_of("about-de")), ANOTHER_PAGE)

    def test_a_document_that_cannot_be_read_is_told(self) -> None:
        languages = self.root / "Languages"
        for missing in languages.glob("**/*Kelmoran_Publications_*.html"):
            missing.unlink()
        unreadable = languages / "DeKelmoran_About_de.html"
        unreadable.unlink()
        unreadable.mkdir()  # which nobody can read as a file, root neither
        robot = self.start_with_patient()
        for action in ("actionPublications", "actionAbout_Kelmoran"):
            robot.choose_menu(action)
            self.assert_told(robot, "Datei kann nicht geöffnet werden")
            robot.close_window("WebViewer")
            robot.main_window()

    # What the desktop's viewer shows

    def test_the_book_is_handed_to_the_viewer_of_the_desktop(self) -> None:
        robot = self.start_with_patient()
        robot.choose_menu("actionInstruction_book")
        self.wait_opened(self.root / BOOK)
        robot.main_window()

    def test_an_earlier_report_is_picked_in_the_patients_folder(self) -> None:
        report = self.root / "Archives" / KEY / REPORT
        report.parent.mkdir()
        report.write_bytes((self.root / BOOK).read_bytes())
        robot = self.start_with_patient()
        robot.choose_menu("actionPrevious_reports")
        robot.wait_window("Ouvrir")
        robot.hands.type(REPORT)
        robot.hands.press("Return")
        robot.wait_gone("Ouvrir")
        self.wait_opened(report)
        robot.choose_menu("actionPrevious_reports")
        robot.wait_window("Ouvrir")
        robot.hands.press("Escape")
        self.assert_told(robot, "Fehler")
        robot.main_window()

    def test_a_computer_without_a_viewer_is_told_so(self) -> None:
        self.search_only(str(self.root / "Parameters"))
        robot = self.start_with_patient()
        robot.choose_menu("actionInstruction_book")
        self.assert_told(robot, "Fehler")
        robot.main_window()


if __name__ == "__main__":
    unittest.main()
