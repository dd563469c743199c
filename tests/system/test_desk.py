"""The main window and its dialogs."""

import unittest

from desk import KEY, PATIENT_LINE, Desk
from waiting import wait_for


class MainWindow(Desk):
    def calibrated(self) -> None:
        self.has_calibration()
        self.robot = self.start()
        self.robot.wait_ready()

    def copied(self) -> str:
        """The whole text of the line edit that has the keyboard."""
        self.robot.hands.press("Control_L", "a")
        self.robot.hands.press("Control_L", "c")
        self.robot.wait_still()
        return self.robot.eyes.selection("CLIPBOARD")

    def test_a_registration_is_a_line_in_the_list_and_opens_the_tests(self) -> None:
        self.calibrated()
        self.robot.register(1, "Tester", "Paula", "14.03.1952")
        expected = b"Mrs.;Tester;Paula;14.03.1952;0;0;0;0;0;0;0;0;0;0\r\n"
        wait_for("the line in the list",
                 lambda: self.parameters("patients_list.txt").read_bytes() == expected)
        self.robot.main_window()
        self.assertEqual(self.robot.session_shown(2), "0")
        self.robot.start_test(2)

    def test_a_cancelled_registration_writes_nothing(self) -> None:
        self.calibrated()
        self.robot.choose_menu("actionAdd_patient")
        self.robot.wait_window("NewPatient")
        self.robot.fill_patient(0, "Nobody", "Ned", "01.02.1960")
        self.robot.hands.press("Escape")
        self.robot.wait_gone("NewPatient")
        self.robot.main_window()
        self.assertEqual(self.parameters("patients_list.txt").read_bytes(), b"")

    def test_a_patient_of_the_list_brings_its_session_number(self) -> None:
        robot = self.start_with_patient()
        self.assertEqual(robot.session_shown(2), "4")
        self.assertEqual(robot.session_shown(1), "0")
        self.assertEqual(self.parameters("patients_list.txt").read_bytes(), PATIENT_LINE)
        self.assertTrue(KEY.startswith("Tester"))

    def test_the_assessor_is_kept_as_typed(self) -> None:
        self.calibrated()
        self.robot.fill_assessor(2, ["Weber", "Klara", "Eye Clinic", "Station Road 12", "3011",
                                     "Bern", "Switzerland"])
        self.robot.accept("Assessor")
        wait_for("the record", self.parameters("assessor.txt").exists)
        self.assertEqual(self.parameters("assessor.txt").read_bytes(),
                         b"Dr.;Weber;Klara;Eye Clinic;Station Road 12;3011;Bern;Switzerland\n")

    def test_preferences_show_the_screen_and_ok_keeps_the_file(self) -> None:
        self.calibrated()
        before = self.parameters("screen.pix").read_bytes()
        self.robot.choose_menu("actionPreferences")
        self.robot.wait_window("Preferences")
        texts = [self.copied()]
        for _ in range(3):
            self.robot.hands.press("Tab")
            texts.append(self.copied())
        self.assertEqual(texts, [str(self.screen.width), str(self.screen.height), "270", "270"])
        for _ in range(3):  # over the frequency and "Re calibrate" to "Ok"
            self.robot.hands.press("Tab")
        self.robot.hands.press("space")
        self.robot.wait_gone("Preferences")
        self.assertEqual(self.parameters("screen.pix").read_bytes(), before)

    def test_escape_on_the_main_window_ends_the_program(self) -> None:
        self.calibrated()
        self.robot.hands.press("Escape")
        self.assertEqual(self.robot.program.wait_until_ended(), 0)


if __name__ == "__main__":
    unittest.main()
