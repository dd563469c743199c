"""The places of widgets, read from the forms that the program itself is built from."""

from __future__ import annotations

import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass
from functools import cache
from pathlib import Path

FORMS = Path(__file__).resolve().parents[2] / "forms"


@dataclass(frozen=True)
class Place:
    x: int
    y: int
    width: int
    height: int

    @property
    def centre(self) -> tuple[int, int]:
        return self.x + self.width // 2, self.y + self.height // 2

    def moved(self, x: int, y: int) -> Place:
        return Place(self.x + x, self.y + y, self.width, self.height)


class Form:
    def __init__(self, name: str) -> None:
        top = ElementTree.parse(FORMS / f"{name}.ui").getroot().find("widget")
        assert top is not None
        self.title = top.findtext("property[@name='windowTitle']/string") or ""
        self._places: dict[str, Place] = {}
        self._read(top)

    def place(self, widget: str) -> Place:
        return self._places[widget]

    def names(self, prefix: str) -> list[str]:
        """The widgets whose name begins so, in the order of the form."""
        return [name for name in self._places if name.startswith(prefix)]

    def _read(self, parent: ElementTree.Element) -> None:
        for widget in parent.findall("widget"):
            place = widget.find("property[@name='geometry']/rect")
            if place is not None:
                numbers = [int(number.text or 0) for number in place]
                self._places[widget.get("name", "")] = Place(*numbers)
            self._read(widget)


@cache
def form(name: str) -> Form:
    return Form(name)
