"""Drives the real program on a virtual screen, by keyboard and mouse alone.

The robot knows where a widget stands from the forms, and what it shows from the pixels.
"""

from __future__ import annotations

import os
import subprocess
import time
from pathlib import Path
from tempfile import TemporaryFile

from eyes import Eyes, Window
from forms import Place, form
from hands import Hands
from virtual_screen import VirtualScreen, die_with_parent, end_process
from waiting import RobotError, wait_for

SETTINGS_NOT_HANDED_ON = ("WAYLAND_DISPLAY", "XAUTHORITY", "LANG", "LANGUAGE", "LC_")
MENUS = ("menuFile", "menuUsers", "menuArchive", "menuHelp")
ENTRIES = {
    "actionAbout_Kelmoran": ("menuFile", 0), "actionPreferences": ("menuFile", 1),
    "actionQuitter": ("menuFile", 2), "actionAdd_patient": ("menuUsers", 0),
    "actionAssessor": ("menuUsers", 1), "actionPrevious_reports": ("menuArchive", 0),
    "actionInstruction_book": ("menuHelp", 0), "actionVideo_instructions": ("menuHelp", 1),
    "actionPublications": ("menuHelp", 2),
}
PARTS = (5, 6, 7)  # the test buttons that "Subtasks" brings
DARK = 130
WHITE_OF_PAGE = 0.55  # with a large picture on it; less than that of a main window behind a void
MENU_BAR_AT_MOST = 40
STILL_FOR = 0.15


def program_environment(screen: VirtualScreen, locale: str) -> dict[str, str]:
    """What the program is started with: nothing of the caller's desktop, toolkit or language."""
    kept = {name: value for name, value in os.environ.items()
            if not name.startswith(("QT_", "QTWEBENGINE_") + SETTINGS_NOT_HANDED_ON)}
    return {**kept, "DISPLAY": screen.name, "LC_ALL": locale}


class Program:
    """One run of the program in the `bin` folder of a data root."""

    def __init__(self, screen: VirtualScreen, root: Path, locale: str = "C.UTF-8") -> None:
        self.screen = screen
        self.root = root
        self._said = TemporaryFile()
        self.process = subprocess.Popen(
            [str(root / "bin" / "kelmoran")], cwd=root / "bin",
            env=program_environment(screen, locale), stdin=subprocess.DEVNULL,
            stdout=self._said, stderr=self._said, preexec_fn=die_with_parent)

    @property
    def pid(self) -> int:
        return self.process.pid

    def said(self) -> str:
        """What it wrote to its output and error channels."""
        self._said.seek(0)
        return self._said.read().decode(errors="replace")

    def has_ended(self) -> bool:
        return self.process.poll() is not None

    def wait_until_ended(self, timeout: float = 20) -> int:
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise RobotError(f"the program didn't end within {timeout:g} s") from None

    def stop(self) -> None:
        end_process(self.process)
        self._said.close()

    def resident_bytes(self) -> int:
        status = Path(f"/proc/{self.pid}/status").read_text(encoding="ascii")
        line = next(line for line in status.splitlines() if line.startswith("VmRSS:"))
        return int(line.split()[1]) * 1024

    def child_programs(self) -> list[str]:
        """The names of all processes below this one."""
        parents: dict[int, tuple[int, str]] = {}
        for entry in Path("/proc").glob("[0-9]*/stat"):
            try:
                text = entry.read_text(encoding="utf-8", errors="replace")
            except OSError:
                continue  # ended while we looked
            name, rest = text[text.index("(") + 1:text.rindex(")")], text[text.rindex(")") + 2:]
            parents[int(entry.parent.name)] = (int(rest.split()[1]), name)
        return [name for pid, (_, name) in parents.items() if self._is_below(pid, parents)]

    def _is_below(self, pid: int, parents: dict[int, tuple[int, str]]) -> bool:
        while pid in parents and pid > 1:
            pid = parents[pid][0]
            if pid == self.pid:
                return True
        return False


class Robot:
    """An assessor and a patient before the program."""

    def __init__(self, screen: VirtualScreen, program: Program) -> None:
        self.screen = screen
        self.program = program
        self.hands = Hands(screen.display)
        self.eyes = Eyes(screen.display)

    # Windows

    def wait_window(self, title: str, timeout: float = 15) -> Window:
        """Waits until a window of this program is shown and has the keyboard."""
        def look() -> Window | None:
            if self.program.has_ended():
                raise RobotError(f"the program ended before {title!r} was shown: "
                                 f"{self.program.said().strip()[-300:]}")
            window = next((window for window in self.eyes.windows()
                           if window.title == title and window.pid == self.program.pid), None)
            return window if window and self.eyes.has_focus(window) else None
        return wait_for(f"the window {title!r}", look, timeout)

    def wait_gone(self, title: str, timeout: float = 10) -> None:
        wait_for(f"the window {title!r} to close", lambda: self.eyes.find(title) is None, timeout)

    def wait_page(self, title: str, timeout: float = 30) -> Window:
        """Waits for a window with a page, which another process draws: letters on white."""
        def look() -> Window | None:
            window = self.wait_window(title, timeout)
            picture = self.eyes.area(window.x, window.y, window.width, window.height)
            light = picture.bright_count() / (window.width * window.height)
            dark = min(picture.data[1::4]) < DARK
            return window if dark and light > WHITE_OF_PAGE else None
        wait_for(f"the page in {title!r}", look, timeout)
        self.wait_still()
        return self.wait_window(title)

    def main_window(self) -> Window:
        return self.wait_window(form("Kelmoran").title)

    def screenshot(self, path: Path) -> None:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(self.eyes.whole().png())

    def wait_still(self) -> None:
        """Waits until the screen hasn't changed for a moment, shorter than a cursor's blink."""
        last = [self.eyes.whole(), time.monotonic()]

        def look() -> bool:
            now = self.eyes.whole()
            if now != last[0]:
                last[:] = [now, time.monotonic()]
            return time.monotonic() - last[1] > STILL_FOR
        wait_for("a still screen", look)

    # Main window

    def wait_ready(self) -> None:
        """Waits until the main window has read the screen's data, and so takes entries."""
        self.main_window()
        wait_for("the patient box to open", self.takes_entries)

    def takes_entries(self) -> bool:
        """The arrow of the patient box is dark, and pale as long as the box is closed."""
        box = self._main_place("cob_patientName")
        return self._is_dark(box.x + box.width - 26, box.y + 4, 22, box.height - 8)

    def _main_place(self, widget: str) -> Place:
        return form("Kelmoran").place(widget).moved(0, self._menu_height())

    def _menu_height(self) -> int:
        """The widgets' coordinates begin below the menu bar, whose height follows its font."""
        return wait_for("the menu bar", self._look_for_menu_bar)

    def _look_for_menu_bar(self) -> int | None:
        """Where the empty right end of the menu bar ends at its lower line; nothing before it is
        painted."""
        window = self.main_window()
        column = self.eyes.area(window.x + window.width - 4, window.y, 1, MENU_BAR_AT_MOST)
        ground = column.rgb(0, MENU_BAR_AT_MOST - 1)
        lines = [y for y in range(MENU_BAR_AT_MOST) if column.rgb(0, y) != ground]
        return lines[-1] + 1 if lines else None

    def click_main(self, widget: str, times: int = 1) -> None:
        window = self.main_window()
        x, y = self._main_place(widget).centre
        self.hands.click(window.x + x, window.y + y, times)

    def choose_menu(self, action: str) -> None:
        """Opens a menu by the mouse and chooses its entry by the keyboard."""
        menu, entry = ENTRIES[action]
        window = self.main_window()
        self.hands.click(window.x + 18, window.y + 12)
        self._wait_popup()
        # A menu reached by the keyboard opens with its first entry chosen. Each step is seen before
        # the next: a key that comes while a menu opens is lost.
        steps = MENUS.index(menu)
        for key in (["Right"] * steps or ["Right", "Left"]) + ["Down"] * entry:
            self.wait_still()
            self.hands.press(key)
        self.wait_still()
        self.hands.press("Return")
        self._wait_no_popup()

    def _wait_popup(self) -> None:
        wait_for("a menu or list to open", self.eyes.popup_is_open)

    def _wait_no_popup(self) -> None:
        wait_for("a menu or list to close", lambda: not self.eyes.popup_is_open())

    def set_option(self, check_box: str, on: bool) -> None:
        """Ticks a box or clears it, and sees the tick come or go."""
        window = self.main_window()
        place = self._main_place(check_box)
        wait_for(f"{check_box} to open", lambda: self._is_dark(place.x + 24, place.y, 60, 26))
        x, y = place.x, place.y + place.height // 2

        def is_ticked() -> bool:
            return self._is_dark(x + 4, y - 4, 8, 8)
        if is_ticked() != on:
            self.hands.click(window.x + x + 8, window.y + y)
        wait_for(f"the tick of {check_box}", lambda: is_ticked() == on)

    def _is_dark(self, x: int, y: int, width: int, height: int) -> bool:
        """Whether something dark is in a part of the main window."""
        window = self.main_window()
        return min(self.eyes.area(window.x + x, window.y + y, width, height).data[1::4]) < DARK

    def session_shown(self, test: int) -> str:
        """The session number beside a test button, taken by a double click."""
        self.click_main(f"le_session{test}", times=2)
        return self.eyes.selection()

    def choose_patient(self, key: str) -> None:
        """Chooses a patient of the list by typing its name into the open box."""
        self.click_main("cob_patientName")
        self._wait_popup()
        self.hands.type(key)
        self.hands.press("Return")
        self._wait_no_popup()

    # Dialogs

    def close_window(self, title: str) -> None:
        self.eyes.ask_to_close(self.wait_window(title))
        self.wait_gone(title)

    def calibrate(self, horizontal: str, vertical: str) -> None:
        self.wait_window("Calibration")
        self.enter_line(horizontal, "horizontal")
        self.enter_line(vertical, "vertical")
        self.wait_gone("Calibration")

    def enter_line(self, value: str, line: str) -> None:
        """Types a measured length, once its line is on the screen."""
        self.wait_window("Calibration")
        wait_for(f"the {line} line", lambda: self.line_shown() == line)
        self.hands.type(value)
        self.hands.press("Return")

    def line_shown(self) -> str | None:
        """Which of the two measuring lines of the calibration is on the screen."""
        x, y = self.screen.width // 2, self.screen.height // 2
        ways = {"horizontal": ((-300, 0), (300, 0)), "vertical": ((0, -200), (0, 200))}
        for line, points in ways.items():
            if all(self._bright_near(x + dx, y + dy) for dx, dy in points):
                return line
        return None

    def _bright_near(self, x: int, y: int) -> bool:
        return self.eyes.area(x - 4, y - 4, 9, 9).bright_count() > 0

    def register(self, gender: int, last_name: str, first_name: str, born: str) -> None:
        """Registers a patient: gender 0 or 1, date of birth as dd.MM.yyyy."""
        self.choose_menu("actionAdd_patient")
        self.wait_window("NewPatient")
        self.fill_patient(gender, last_name, first_name, born)
        self.accept("NewPatient")

    def fill_patient(self, gender: int, last_name: str, first_name: str, born: str) -> None:
        self._choose_item(gender)
        for text in (last_name, first_name):
            self.hands.type(text)
            self.hands.press("Return")
        # A date edit goes on to the next part by itself; a typed point would skip one.
        self.hands.type(born.replace(".", ""))

    def fill_assessor(self, title: int, texts: list[str]) -> None:
        """The assessor's record: title 0 to 3, then the seven lines from last name to country."""
        self.choose_menu("actionAssessor")
        self.wait_window("Assessor")
        self._choose_item(title)
        for text in texts[:-1]:
            self.hands.type(text)
            self.hands.press("Return")
        self.hands.type(texts[-1])

    def accept(self, title: str) -> None:
        """From the last entry of a dialog to its Ok."""
        self.hands.press("Tab")
        self.hands.press("space")
        self.wait_gone(title)

    def _choose_item(self, index: int) -> None:
        """In a combo box that has the keyboard, and nothing chosen yet."""
        self.hands.press("space")
        self._wait_popup()
        self.hands.press("Home")
        for _ in range(index):
            self.hands.press("Down")
        self.hands.press("Return")
        self._wait_no_popup()

    # Tests

    def start_test(self, number: int, **options: bool) -> Window:
        """Presses a test button, 1 to 7, and waits for its task; the options as in press_test."""
        self.press_test(number, **options)
        return self.wait_full_screen()

    def press_test(self, number: int, parameters: bool = True, instruction: bool = False,
                   training: bool = False, fixed_duration: bool = False) -> None:
        for box, on in (("cb_parameters", parameters), ("cb_withInstruction", instruction),
                        ("cb_withTraining", training), ("cb_fixedDuration", fixed_duration),
                        ("cb_subTask", number in PARTS)):
            self.set_option(box, on)
        self.click_main(f"pb_test{number}")

    def wait_full_screen(self) -> Window:
        def look() -> Window | None:
            return next((window for window in self.eyes.windows()
                         if window.pid == self.program.pid and window.width == self.screen.width
                         and window.height == self.screen.height
                         and self.eyes.has_focus(window)), None)
        return wait_for("a task on the whole screen", look)
