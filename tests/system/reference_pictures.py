"""The pictures that the screen is compared with, kept in `references` as small files in grey."""

from __future__ import annotations

import struct
import zlib
from dataclasses import dataclass
from pathlib import Path

from desk import PROJECT, Desk  # which also finds the robot
from eyes import Picture, Window
from forms import Place
from memory_task import MemoryTask
from movement_task import MovementTask
from vision_task import PAIR_HEIGHT, PAIR_WIDTH, RING_HEIGHT, RING_WIDTH, VisionTask

REFERENCES = PROJECT / "tests" / "system" / "references"
SAME_LEVEL = 32  # levels of grey, of 255
MOST_DIFFERENT = 6  # pixels; rounded corners are 14
SIGNATURE = b"\x89PNG\r\n\x1a\n"
AROUND_MASK = 4
# What surrounds the eleven buttons.
ANSWERS_WIDTH, ANSWERS_HEIGHT = 960, 704
LETTER = 40  # around the question mark


@dataclass(frozen=True)
class GreyPicture:
    width: int
    height: int
    light: bytes  # a byte a pixel

    @classmethod
    def of(cls, picture: Picture) -> GreyPicture:
        return cls(picture.width, picture.height, picture.data[1::4])

    def without(self, place: Place) -> GreyPicture:
        """With a part of it dark."""
        light = bytearray(self.light)
        for y in range(max(place.y, 0), min(place.y + place.height, self.height)):
            left, right = max(place.x, 0), min(place.x + place.width, self.width)
            light[y * self.width + left:y * self.width + right] = bytes(right - left)
        return GreyPicture(self.width, self.height, bytes(light))

    def differing(self, other: GreyPicture) -> int:
        """How many pixels are of another grey."""
        if (self.width, self.height) != (other.width, other.height):
            return max(self.width * self.height, other.width * other.height)
        return sum(1 for one, two in zip(self.light, other.light) if abs(one - two) > SAME_LEVEL)

    def png(self) -> bytes:
        head = struct.pack(">IIBBBBB", self.width, self.height, 8, 0, 0, 0, 0)
        lines = b"".join(b"\0" + self.light[at:at + self.width]
                         for at in range(0, len(self.light), self.width))
        return (SIGNATURE + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(lines, 9))
                + chunk(b"IEND", b""))

    @classmethod
    def read(cls, png: bytes) -> GreyPicture:
        """Reads what png() has written; any other form of the format is refused."""
        if not png.startswith(SIGNATURE):
            raise ValueError("no PNG")
        chunks, at = {}, len(SIGNATURE)
        while at < len(png):
            (length,) = struct.unpack_from(">I", png, at)
            chunks[png[at + 4:at + 8]] = png[at + 8:at + 8 + length]
            at += length + 12
        width, height, *form = struct.unpack(">IIBBBBB", chunks[b"IHDR"])
        lines = zlib.decompress(chunks[b"IDAT"])
        if form != [8, 0, 0, 0, 0] or any(lines[::width + 1]):
            raise ValueError("not as it was written here")
        return cls(width, height,
                   b"".join(lines[y * (width + 1) + 1:(y + 1) * (width + 1)] for y in range(height)))


def chunk(name: bytes, data: bytes) -> bytes:
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))


def path_of(name: str) -> Path:
    return REFERENCES / f"{name}.png"


def reference_of(name: str) -> GreyPicture:
    return GreyPicture.read(path_of(name).read_bytes())


class LookingDesk(Desk):
    """For the tests that compare the screen with the references."""

    def assert_looks_like(self, seen: GreyPicture, name: str,
                          most_different: int = MOST_DIFFERENT) -> None:
        """Compares a part of the screen with its reference, which no test makes."""
        differing = seen.differing(reference_of(name))
        if differing > most_different:
            (self.root / f"{name}.png").write_bytes(seen.png())
        self.assertLessEqual(differing, most_different, f"pixels of {name}.png")


# What is compared of a screen

def pair_of(stimulus: Picture) -> GreyPicture:
    """The two figures of a stimulus."""
    middle = _middle_of_stimulus()
    return GreyPicture.of(stimulus.part(middle.x, middle.y, middle.width, middle.height))


def ring_of(stimulus: Picture) -> GreyPicture:
    """The six arrows of a stimulus."""
    return GreyPicture.of(stimulus).without(_middle_of_stimulus())


def _middle_of_stimulus() -> Place:
    return Place((RING_WIDTH - PAIR_WIDTH) // 2, (RING_HEIGHT - PAIR_HEIGHT) // 2,
                 PAIR_WIDTH, PAIR_HEIGHT)


def mask_of(task: VisionTask, screen: Picture) -> GreyPicture:
    """The mask, and a little of what surrounds it."""
    mark = task.frame
    return GreyPicture.of(screen.part(mark.x - AROUND_MASK, mark.y - AROUND_MASK,
                                      mark.width + 2 * AROUND_MASK, mark.height + 2 * AROUND_MASK))


def answers_of(task: VisionTask, screen: Picture) -> GreyPicture:
    """The answer buttons, without "Next", which stands beside them in an instruction."""
    mark = task.centred(ANSWERS_WIDTH, ANSWERS_HEIGHT)
    part = GreyPicture.of(screen.part(mark.x, mark.y, mark.width, mark.height))
    return part.without(task.corner_button.moved(-mark.x, -mark.y))


def field_of(task: MovementTask, screen: Picture) -> GreyPicture:
    """All patches, and the cross between them."""
    return _cut(screen, task.field)


def pad_of(task: MovementTask, screen: Picture) -> GreyPicture:
    """The five buttons, without the letter in the middle one."""
    middle = (task.pad.width - LETTER) // 2
    return _cut(screen, task.pad).without(Place(middle, middle, LETTER, LETTER))


def example_of(task: MemoryTask, screen: Picture) -> GreyPicture:
    """The crosses of the instruction and the text that belongs to them, without what stands beside
    them: the parameter panel, the word at the top right, and "Continue"."""
    picture = _cut(screen, task.frame)
    for mark in (task.panel, task.mode, task.corner_button):
        picture = picture.without(mark.moved(-task.frame.x, -task.frame.y))
    return picture


def guides_of(task: MemoryTask, screen: Picture) -> GreyPicture:
    """The two rings and the lines between them, with the crosses that are shown."""
    picture = _cut(screen, task.guides)
    return picture.without(task.told.moved(-task.guides.x, -task.guides.y))


def window_of(window: Window, screen: Picture) -> GreyPicture:
    """All of a window but its frame."""
    return _cut(screen, Place(window.x, window.y, window.width, window.height))


def _cut(screen: Picture, mark: Place) -> GreyPicture:
    return GreyPicture.of(screen.part(mark.x, mark.y, mark.width, mark.height))
