"""What the tasks on the whole screen have in common, as an assessor sees and does it."""

from __future__ import annotations

from forms import Place, form
from kelmoran_robot import Robot
from waiting import RobotError, wait_for

FRAME_WIDTH, FRAME_HEIGHT = 1024, 768  # what a form is drawn in, and stands around the centre


class TaskScreen:
    form_name: str

    def __init__(self, robot: Robot) -> None:
        self.robot = robot
        self.hands = robot.hands
        self.eyes = robot.eyes
        self.x = robot.screen.width // 2
        self.y = robot.screen.height // 2

    # What is on the screen

    def is_shown(self, mark: Place) -> bool:
        return self.eyes.area(mark.x, mark.y, mark.width, mark.height).bright_count() > 8

    def framed(self, widget: str) -> Place:
        """The place of a widget that stands in the frame around the centre."""
        return form(self.form_name).place(widget).moved(self.x - FRAME_WIDTH // 2,
                                                        self.y - FRAME_HEIGHT // 2)

    @property
    def go(self) -> Place:
        """The left edge of the button at the centre, which no stimulus reaches."""
        return Place(self.x - 70, self.y - 25, 15, 50)

    @property
    def corner_button(self) -> Place:
        """"Next", "Continue", and "Go" in training: one at a time stands there."""
        return self.framed("pb_next")

    @property
    def mode(self) -> Place:
        return self.framed("lbl_mode")

    @property
    def instruction(self) -> Place:
        return self.framed("lbl_instruction")

    @property
    def results(self) -> Place:
        return self.framed("pb_results")

    @property
    def main_menu(self) -> Place:
        return self.framed("pb_mainMenu")

    @property
    def panel(self) -> Place:
        """What the edits of the parameter panel and their labels take up, which keep to the top
        left of the screen."""
        edits = form(self.form_name).names("le_")
        labels = ["lbl_" + edit.removeprefix("le_") for edit in edits]
        places = [form(self.form_name).place(widget) for widget in edits + labels]
        left, top = min(place.x for place in places), min(place.y for place in places)
        return Place(left, top, max(place.x + place.width for place in places) - left,
                     max(place.y + place.height for place in places) - top)

    # What is done

    def wait_shown(self, mark: Place, what: str, timeout: float = 10) -> None:
        wait_for(what, lambda: self.is_shown(mark), timeout)

    def wait_hidden(self, mark: Place, what: str, timeout: float = 10) -> None:
        wait_for(f"{what} to go", lambda: not self.is_shown(mark), timeout)

    def click(self, mark: Place) -> None:
        self.hands.click(*mark.centre)

    def set_parameter(self, edit: str, value: int, leave: bool = True) -> None:
        """Types a value into an edit of the panel and reads it back, as a careful assessor does;
        `leave` sends it off with Return."""
        for _ in range(3):
            self._type_over(edit, str(value))
            if self._reads(str(value)):
                break
        else:
            raise RobotError(f"{edit} doesn't take {value}")
        if leave:
            self.hands.press("Return")

    def _type_over(self, edit: str, text: str) -> None:
        self.hands.click(*form(self.form_name).place(edit).centre)
        self.hands.press("Control_L", "a")
        self.hands.type(text)

    def _reads(self, text: str) -> bool:
        """Whether the edit that has the keyboard holds this text."""
        self.hands.press("Control_L", "a")
        self.hands.press("Control_L", "c")
        try:
            wait_for("the copy", lambda: self.eyes.selection("CLIPBOARD") == text, 1)
        except RobotError:
            return False
        return True

    def next_step(self, by_key: bool = False) -> None:
        """Goes on in an instruction by "Next" or its key C, and sees the middle of the screen
        change."""
        self.wait_shown(self.corner_button, "the Next button")
        mark = self.instruction
        place = mark.x, mark.y, mark.width, mark.height
        before = self.eyes.area(*place)
        if by_key:
            self.hands.press("c")
        else:
            self.click(self.corner_button)
        wait_for("the next step of the instruction", lambda: self.eyes.area(*place) != before)

    def press_go(self) -> None:
        self.wait_shown(self.go, "the Go button")
        self.hands.click(self.x, self.y)
        self.wait_hidden(self.go, "the Go button")

    def press_corner_button(self) -> None:
        self.wait_shown(self.corner_button, "the button at the bottom right")
        self.click(self.corner_button)

    def wait_end(self) -> None:
        self.wait_shown(self.results, "the Results button")
        self.wait_shown(self.main_menu, "the Main Menu button")
