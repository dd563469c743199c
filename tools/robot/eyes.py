"""Looking at the screen: its windows, its pixels, and text that was selected."""

from __future__ import annotations

import struct
import zlib
from dataclasses import dataclass

from Xlib import X
from Xlib.display import Display
from Xlib.error import XError
from Xlib.protocol.event import ClientMessage

from waiting import wait_for

BRIGHT = 200


@dataclass(frozen=True)
class Window:
    id: int
    title: str
    pid: int
    x: int
    y: int
    width: int
    height: int


class Picture:
    """A part of the screen as the server gives it: four bytes a pixel, blue first."""

    def __init__(self, width: int, height: int, data: bytes) -> None:
        self.width = width
        self.height = height
        self.data = data

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Picture) and self.data == other.data

    def is_bright(self, x: int, y: int) -> bool:
        return self.data[(y * self.width + x) * 4 + 1] >= BRIGHT

    def rgb(self, x: int, y: int) -> tuple[int, int, int]:
        at = (y * self.width + x) * 4
        return self.data[at + 2], self.data[at + 1], self.data[at]

    def bright_count(self) -> int:
        return sum(1 for value in self.data[1::4] if value >= BRIGHT)

    def brightest(self) -> int:
        return max(self.data[1::4])

    def line(self, y: int) -> bytes:
        """The light of a line, a byte a pixel."""
        return self.data[y * self.width * 4 + 1:(y + 1) * self.width * 4:4]

    def is_dark(self) -> bool:
        """Whether nothing at all is on it."""
        return not any(self.data[1::4])

    def part(self, x: int, y: int, width: int, height: int) -> Picture:
        lines = (self.data[(row * self.width + x) * 4:(row * self.width + x + width) * 4]
                 for row in range(y, y + height))
        return Picture(width, height, b"".join(lines))

    def png(self) -> bytes:
        colours = bytearray(self.width * self.height * 3)
        for channel in range(3):
            colours[channel::3] = self.data[2 - channel::4]
        line = self.width * 3
        rows = b"".join(b"\0" + colours[at:at + line] for at in range(0, len(colours), line))
        head = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        return (b"\x89PNG\r\n\x1a\n" + self._chunk(b"IHDR", head)
                + self._chunk(b"IDAT", zlib.compress(rows)) + self._chunk(b"IEND", b""))

    @staticmethod
    def _chunk(name: bytes, data: bytes) -> bytes:
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


class Eyes:
    def __init__(self, display: Display) -> None:
        self._display = display
        self._root = display.screen().root
        self._reader = self._root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)

    # Pixels

    def area(self, x: int, y: int, width: int, height: int) -> Picture:
        image = self._root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF)
        return Picture(width, height, image.data)

    def is_bright(self, x: int, y: int) -> bool:
        return self.area(x, y, 1, 1).is_bright(0, 0)

    def whole(self) -> Picture:
        screen = self._display.screen()
        return self.area(0, 0, screen.width_in_pixels, screen.height_in_pixels)

    # The mouse pointer

    def pointer(self) -> tuple[int, int]:
        place = self._root.query_pointer()
        return place.root_x, place.root_y

    def pointer_is_shown(self) -> bool:
        """Whether the pointer has a picture with something on it."""
        self._display.xfixes_query_version()
        picture = self._display.xfixes_get_cursor_image(self._root)
        return any(pixel >> 24 for pixel in picture.cursor_image)

    # Windows

    def windows(self) -> list[Window]:
        """The windows that the window manager shows, the oldest first."""
        known = self._property(self._root, "_NET_CLIENT_LIST")
        found = (self._describe(number) for number in (known or []))
        return [window for window in found if window]

    def find(self, title: str) -> Window | None:
        return next((window for window in self.windows() if window.title == title), None)

    def popup_is_open(self) -> bool:
        """Whether a menu or the list of a combo box is on the screen."""
        for window in self._root.query_tree().children:
            try:
                shown = window.get_attributes()
                place = window.get_geometry()
            except XError:
                continue  # it went away while we looked
            if (shown.override_redirect and shown.map_state == X.IsViewable
                    and place.width > 40 and place.x >= 0 and place.y >= 0):
                return True
        return False

    def has_focus(self, window: Window) -> bool:
        active = self._property(self._root, "_NET_ACTIVE_WINDOW")
        return bool(active) and active[0] == window.id

    def ask_to_close(self, window: Window) -> None:
        """As the close button of the window manager does."""
        close = self._display.intern_atom("_NET_CLOSE_WINDOW")
        message = ClientMessage(window=window.id, client_type=close, data=(32, [0, 2, 0, 0, 0]))
        self._root.send_event(message,
                              X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self._display.sync()

    def _describe(self, number: int) -> Window | None:
        window = self._display.create_resource_object("window", number)
        try:
            if window.get_attributes().map_state != X.IsViewable:
                return None
            place = window.get_geometry()
            origin = self._root.translate_coords(window, 0, 0)
            title = self._property(window, "_NET_WM_NAME") or b""
            pid = self._property(window, "_NET_WM_PID") or [0]
        except XError:
            return None  # it went away while we looked
        return Window(number, bytes(title).decode(), pid[0], origin.x, origin.y,
                      place.width, place.height)

    def _property(self, window, name: str):  # type: ignore[no-untyped-def]
        answer = window.get_full_property(self._display.intern_atom(name), X.AnyPropertyType)
        return answer.value if answer else None

    # Selected text

    def selection(self, name: str = "PRIMARY") -> str:
        """The text that is selected (PRIMARY) or was copied (CLIPBOARD); empty if there is none."""
        display = self._display
        selection, kind = display.intern_atom(name), display.intern_atom("UTF8_STRING")
        if display.get_selection_owner(selection) == X.NONE:
            return ""
        kept = display.intern_atom("ROBOT_SELECTION")
        self._reader.convert_selection(selection, kind, kept, X.CurrentTime)
        display.flush()
        event = wait_for(f"the {name} selection", self._next_notify)
        if event.property == X.NONE:
            return ""
        answer = self._reader.get_full_property(kept, X.AnyPropertyType)
        return bytes(answer.value).decode() if answer else ""

    def _next_notify(self):  # type: ignore[no-untyped-def]
        while self._display.pending_events():
            event = self._display.next_event()
            if event.type == X.SelectionNotify:
                return event
        return None
