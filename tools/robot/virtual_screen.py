"""A screen that nobody sees, with a window manager on it: Xvfb and openbox."""

from __future__ import annotations

import ctypes
import os
import select
import shutil
import signal
import subprocess
from pathlib import Path

from Xlib import X
from Xlib.display import Display

from waiting import RobotError, wait_for

MANAGER_RULES = Path(__file__).with_name("openbox.xml")
PR_SET_PDEATHSIG = 1


def die_with_parent() -> None:
    """Run in a child before it becomes its program: no process outlives the robot."""
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


def end_process(process: subprocess.Popen[bytes] | None) -> None:
    """Ends a process of ours, kindly first."""
    if process is None or process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class VirtualScreen:
    """To be used in a `with`: the screen lives as long as the block."""

    def __init__(self, width: int = 1280, height: int = 1024) -> None:
        self.width = width
        self.height = height
        self.name = ""
        self.display: Display
        self._server: subprocess.Popen[bytes] | None = None
        self._manager: subprocess.Popen[bytes] | None = None

    def __enter__(self) -> VirtualScreen:
        try:
            self._start_server()
            self._start_manager()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        if self.name and hasattr(self, "display"):
            self.display.close()
        end_process(self._manager)
        end_process(self._server)

    def _start_server(self) -> None:
        readable, writable = os.pipe()
        command = ["Xvfb", "-displayfd", str(writable), "-nolisten", "tcp", "-noreset",
                   "-screen", "0", f"{self.width}x{self.height}x24"]
        self._server = self._start(command, os.environ.copy(), pass_fds=(writable,))
        os.close(writable)
        with os.fdopen(readable) as answer:
            if not select.select([answer], [], [], 20)[0]:
                raise RobotError("the virtual screen didn't start within 20 s")
            number = answer.readline().strip()
        if not number:
            raise RobotError("the virtual screen ended at once")
        self.name = f":{number}"
        self.display = Display(self.name)

    def _start_manager(self) -> None:
        command = ["openbox", "--sm-disable", "--config-file", str(MANAGER_RULES)]
        self._manager = self._start(command, {**os.environ, "DISPLAY": self.name})
        root = self.display.screen().root
        check = self.display.intern_atom("_NET_SUPPORTING_WM_CHECK")
        wait_for("the window manager",
                 lambda: root.get_full_property(check, X.AnyPropertyType), 20)

    @staticmethod
    def _start(command: list[str], environment: dict[str, str],
               pass_fds: tuple[int, ...] = ()) -> subprocess.Popen[bytes]:
        if shutil.which(command[0]) is None:
            raise RobotError(f"{command[0]} is not installed")
        return subprocess.Popen(command, env=environment, pass_fds=pass_fds,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL, preexec_fn=die_with_parent)
