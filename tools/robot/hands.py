"""Keys and clicks, made by the X server as if a keyboard and a mouse had sent them."""

from __future__ import annotations

import time

from Xlib import XK, X
from Xlib.display import Display
from Xlib.ext import xtest

NAMES = {" ": "space", ".": "period", ",": "comma", "-": "minus", "'": "apostrophe",
         ";": "semicolon", "/": "slash", ":": "colon", "(": "parenleft", ")": "parenright"}

FROM_MOUSE_TO_KEYBOARD = 0.03


class Hands:
    def __init__(self, display: Display) -> None:
        self._display = display

    def press(self, *keys: str) -> None:
        """Presses keys together, the last one as the key and the others as its modifiers."""
        for key in keys:
            self.hold(key)
        for key in reversed(keys):
            self.release(key)

    def hold(self, key: str) -> None:
        self._key(X.KeyPress, key)

    def release(self, key: str) -> None:
        self._key(X.KeyRelease, key)

    def type(self, text: str) -> None:
        for letter in text:
            name = NAMES.get(letter, letter)
            if letter.isupper() or letter in ":()":
                self.press("Shift_L", name)
            else:
                self.press(name)

    def move(self, x: int, y: int) -> None:
        xtest.fake_input(self._display, X.MotionNotify, x=x, y=y)
        self._display.sync()

    def click(self, x: int, y: int, times: int = 1, button: int = 1) -> None:
        self.move(x, y)
        for _ in range(times):
            xtest.fake_input(self._display, X.ButtonPress, button)
            xtest.fake_input(self._display, X.ButtonRelease, button)
        self._display.sync()
        # A key that follows at once can overtake the click on its way. No person is so quick.
        time.sleep(FROM_MOUSE_TO_KEYBOARD)

    def _key(self, kind: int, key: str) -> None:
        code = self._display.keysym_to_keycode(XK.string_to_keysym(key))
        if code == 0:
            raise ValueError(f"no key for {key!r}")
        xtest.fake_input(self._display, kind, code)
        self._display.sync()
