"""The witness of the timing measurements on a virtual screen: that it sees and presses, not when."""

import os
import subprocess
import sys
import unittest
from pathlib import Path

from desk import PROJECT  # which also finds the robot
from forms import Place
from virtual_screen import VirtualScreen
from waiting import wait_for

sys.path.insert(0, str(PROJECT / "tools" / "timing"))

from watched import Watched, Witness  # noqa: E402
from Xlib import X  # noqa: E402

PROGRAM = Path(os.environ["KELMORAN_BUILD"]) / "tools" / "witness" / "kelmoran-witness"
AREA = Place(40, 50, 30, 20)
WHITE, BLACK = 0xFFFFFF, 0


class WitnessOfAScreen(unittest.TestCase):
    screen: VirtualScreen

    @classmethod
    def setUpClass(cls) -> None:
        cls.screen = VirtualScreen()
        cls.enterClassContext(cls.screen)

    def setUp(self) -> None:
        """A black window above all others, which takes the keys."""
        root = self.screen.display.screen().root
        self.window = root.create_window(0, 0, 200, 100, 0, X.CopyFromParent, background_pixel=BLACK,
                                         override_redirect=True,
                                         event_mask=X.KeyPressMask | X.ButtonPressMask
                                         | X.ExposureMask)
        self.addCleanup(self.screen.display.sync)
        self.addCleanup(self.window.destroy)
        self.window.map()
        self.pen = self.window.create_gc()
        self.next_event(X.Expose)
        self.window.grab_keyboard(True, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
        self.addCleanup(self.screen.display.ungrab_keyboard, X.CurrentTime)

    def next_event(self, kind: int):  # type: ignore[no-untyped-def]
        def look():  # type: ignore[no-untyped-def]
            while self.screen.display.pending_events():
                event = self.screen.display.next_event()
                if event.type == kind:
                    return event
            return None
        return wait_for("an event of the window", look)

    def fill(self, colour: int, place: Place) -> None:
        self.pen.change(foreground=colour)
        self.window.fill_rectangle(self.pen, place.x, place.y, place.width, place.height)
        self.screen.display.sync()

    def witness(self, *errands: str) -> Witness:
        return self.enterContext(Witness(self.screen, PROGRAM, [Watched("area", AREA)], errands))

    def test_it_measures_itself(self) -> None:
        answer = subprocess.run([PROGRAM, "--self-test", "--rounds", "20"], check=False,
                                env={**os.environ, "DISPLAY": self.screen.name},
                                capture_output=True, text=True)
        # The window above holds the keyboard: the drawings are measured, and then it says why not.
        self.assertEqual(answer.stderr, "kelmoran-witness: another program holds the keyboard\n")
        self.screen.display.ungrab_keyboard(X.CurrentTime)
        self.screen.display.sync()
        answer = subprocess.run([PROGRAM, "--self-test", "--rounds", "20"], check=False,
                                env={**os.environ, "DISPLAY": self.screen.name},
                                capture_output=True, text=True)
        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        rows = [line.split(",") for line in answer.stdout.splitlines()[2:]]
        self.assertEqual([row[:2] for row in rows],
                         [["drawn to stamped", "20"], ["due to sent", "20"],
                          ["sent to received", "20"]])
        for row in rows:
            median, p95, p99, worst = (float(cell) for cell in row[2:])
            self.assertTrue(0 <= median <= p95 <= p99 <= worst, row)

    def test_it_stamps_what_changes_and_nothing_else(self) -> None:
        witness = self.witness()
        self.fill(BLACK, AREA)  # drawn, and as black as before
        self.fill(WHITE, Place(AREA.x + AREA.width, AREA.y, 10, 10))  # beside it
        seen = []
        for colour, place in ((WHITE, Place(AREA.x, AREA.y, 10, 5)),
                              (WHITE, Place(AREA.x, AREA.y, 10, 10)),
                              (BLACK, Place(0, 0, 200, 100))):
            self.fill(colour, place)
            seen.append(witness.wait_change("area"))
        self.assertEqual([stamp.pixels for stamp in seen], [50, 50, 100])
        self.assertEqual([stamp.is_dark for stamp in seen], [False, False, True])
        self.assertAlmostEqual(seen[1].brightness, 255 * 100 / 600, 3)
        self.assertEqual(sorted(stamp.at for stamp in seen), [stamp.at for stamp in seen])

    def test_a_key_arrives_after_the_change_that_asked_for_it(self) -> None:
        witness = self.witness("area brighter key=space 20", "area darker button=1 20")
        self.fill(WHITE, AREA)
        change = witness.wait_change("area")
        press = witness.wait("the press", lambda stamp: stamp.kind == "press")
        self.assertEqual((press.what, press.due), ("key=space", change.at + 20_000_000))
        self.assertGreaterEqual(press.at, press.due)
        key = self.next_event(X.KeyPress)
        self.assertEqual(self.screen.display.keycode_to_keysym(key.detail, 0), ord(" "))

    def test_a_click_arrives_where_the_pointer_stands(self) -> None:
        witness = self.witness("area* changes button=1 5")
        self.screen.display.screen().root.warp_pointer(AREA.x + 3, AREA.y + 4)
        self.fill(WHITE, AREA)
        witness.wait("the press", lambda stamp: stamp.kind == "press" and stamp.what == "button=1")
        click = self.next_event(X.ButtonPress)
        self.assertEqual((click.detail, click.root_x, click.root_y), (1, AREA.x + 3, AREA.y + 4))

    def test_a_place_off_the_screen_is_refused(self) -> None:
        answer = subprocess.run([PROGRAM, "--place", "area=10x10+5000+0"], check=False,
                                env={**os.environ, "DISPLAY": self.screen.name},
                                capture_output=True, text=True)
        self.assertEqual((answer.returncode, answer.stderr),
                         (1, "kelmoran-witness: area is not on the screen\n"))


if __name__ == "__main__":
    unittest.main()
