"""The witness, running beside the program."""

from __future__ import annotations

import queue
import subprocess
import threading
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from forms import Place
from stamps import Stamp, read_line
from virtual_screen import VirtualScreen, die_with_parent, end_process
from kelmoran_robot import program_environment
from waiting import RobotError


@dataclass(frozen=True)
class Watched:
    name: str
    place: Place

    def argument(self) -> str:
        mark = self.place
        return f"{self.name}={mark.width}x{mark.height}+{mark.x}+{mark.y}"


class Witness:
    """To be used in a `with`. Its stamps come by themselves: nobody looks at the screen."""

    def __init__(self, screen: VirtualScreen, program: Path, watched: list[Watched],
                 errands: tuple[str, ...] = (), seed: int = 1) -> None:
        self._command = [str(program), "--seed", str(seed)]
        for one in watched:
            self._command += ["--place", one.argument()]
        for errand in errands:
            self._command += ["--on", errand]
        self._environment = program_environment(screen, "C.UTF-8")
        self._fresh: queue.Queue[Stamp | None] = queue.Queue()
        self._places = len(watched)
        self.stamps: list[Stamp] = []

    def __enter__(self) -> Witness:
        self._process = subprocess.Popen(
            self._command, env=self._environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, text=True, preexec_fn=die_with_parent)
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        for _ in range(self._places):
            self.wait("the first look at a place", lambda stamp: stamp.kind == "place")
        return self

    def __exit__(self, *_: object) -> None:
        end_process(self._process)  # type: ignore[arg-type]
        self._reader.join()
        assert self._process.stdout
        self._process.stdout.close()

    def _read(self) -> None:
        assert self._process.stdout
        for line in self._process.stdout:
            stamp = read_line(line)
            if stamp:
                self.stamps.append(stamp)
                self._fresh.put(stamp)
        self._fresh.put(None)

    def wait(self, what: str, is_it: Callable[[Stamp], bool], timeout: float = 10) -> Stamp:
        """The next stamp of its kind. Those that came before it are used up."""
        while True:
            try:
                stamp = self._fresh.get(timeout=timeout)
            except queue.Empty:
                raise RobotError(f"the witness saw nothing for {timeout:g} s, waiting for {what}") \
                    from None
            if stamp is None:
                raise RobotError(f"the witness ended, waiting for {what}")
            if is_it(stamp):
                return stamp

    def wait_lit(self, place: str, timeout: float = 10) -> Stamp:
        """The place gets something to show."""
        return self.wait(f"{place} to be lit", lambda stamp: stamp.kind == "change"
                         and stamp.what == place and not stamp.is_dark, timeout)

    def wait_change(self, place: str, timeout: float = 10) -> Stamp:
        return self.wait(f"{place} to change", lambda stamp: stamp.kind == "change"
                         and stamp.what == place, timeout)
