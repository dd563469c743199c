"""The robot before a program that speaks another language."""

from __future__ import annotations

import xml.etree.ElementTree as ElementTree
from pathlib import Path

from eyes import Window
from kelmoran_robot import Program, Robot
from virtual_screen import VirtualScreen

CATALOGUES = Path(__file__).resolve().parents[2] / "languages"


class Words:
    """What the program says, by its English texts."""

    def __init__(self, language: str) -> None:
        catalogue = ElementTree.parse(CATALOGUES / f"kelmoran_{language}.ts")
        self._said = {message.findtext("source"): message.findtext("translation")
                      for message in catalogue.iter("message")}

    def said(self, text: str) -> str:
        """A text that is in no catalogue is shown as it stands."""
        return self._said.get(text) or text


class TranslatedRobot(Robot):
    """Windows are told by their English titles."""

    def __init__(self, screen: VirtualScreen, program: Program, language: str) -> None:
        super().__init__(screen, program)
        self.words = Words(language)

    def wait_window(self, title: str, timeout: float = 15) -> Window:
        return super().wait_window(self.words.said(title), timeout)

    def wait_gone(self, title: str, timeout: float = 10) -> None:
        super().wait_gone(self.words.said(title), timeout)
