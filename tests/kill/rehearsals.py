"""The rehearsal, killed at a call that changes a file or at a moment of the clock."""

from __future__ import annotations

import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
from dataclasses import dataclass, replace
from pathlib import Path

from promises import Expected, Root

PROJECT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ.get("KELMORAN_BUILD", PROJECT / "build" / "test"))
PAGE = 4096
WHOLE = 24  # trials, enough to cross the end of a page
LONGEST = 60  # seconds for a run that takes less than one
DEAD_LOCK = 5  # the call at which a start is killed for its lock, which it has by then

LAST_NAME, BORN = "Rehearsal", "14.03.1952"
KNOWN, UNKNOWN = "Paul", "Paula"  # to a list that isn't empty
ZEROS = b";0" * 10
ASSESSOR = b"Dr.;Weber;Klara;Augenklinik;Bahnhofstr. 12;3011;Bern;Schweiz\n"
UNCALIBRATED = bytes(12)
CALIBRATED = b"\0\0\x01\x0e" * 2 + bytes(4)
AT_120_HZ = CALIBRATED[:8] + b"\0\0\0\1"


def line_of(first_name: str) -> bytes:
    return f"Mr.;{LAST_NAME};{first_name};{BORN}".encode() + ZEROS


def old_list() -> bytes:
    """Patients up to a few bytes before the end of a page, which the next line will cross."""
    known = line_of(KNOWN).removesuffix(b";0;0;0") + b";120;90;300\r\n"
    lines = [f"Mr.;Şahin;Łukasz {number};11.12.1948".encode() + ZEROS + b"\r\n"
             for number in range(1, PAGE // len(known))]
    whole = known + b"".join(lines)
    return whole.replace("Łukasz 1;".encode(), b"x" * (PAGE - 11 - len(whole)) + b";")


@dataclass(frozen=True)
class Play:
    """A rehearsal: what it plays, and what it finds."""
    task: int
    number: int
    seed: int = 1
    first: bool = False  # an empty data root; otherwise one with years behind it and a dead lock
    report: bool = False
    first_name: str = KNOWN

    def __str__(self) -> str:
        return (f"test{self.task} --number {self.number} --seed {self.seed}"
                f"{' --report' * self.report}{', first start' * self.first}"
                f"{', registered' * (self.first_name == UNKNOWN)}")

    @property
    def trains(self) -> bool:
        """A patient without thresholds has to."""
        return self.first and self.task in (1, 5, 6, 7)

    def expected(self, finished: int) -> Expected:
        return Expected(f"{LAST_NAME} {self.first_name} {BORN}", [line_of(self.first_name)],
                        [UNCALIBRATED, CALIBRATED, AT_120_HZ], finished=finished)

    def short(self) -> Play:
        return replace(self, number=1, report=False)

    def command(self, root: Path) -> list[str]:
        program = next(BUILD.rglob("kelmoran-rehearse"))
        training = ["--training"] * self.trains
        return [str(program), "--root", str(root), "--task", f"test{self.task}", "--number",
                str(self.number), "--seed", str(self.seed), "--frequency", "120", "--patient",
                f"{LAST_NAME};{self.first_name};{BORN};Mr.", *training, *["--report"] * self.report]


@dataclass(frozen=True)
class Call:
    """A call that changes a file, as the tripwire writes it down."""
    number: int
    name: str
    path: str
    result: str
    place: int

    @property
    def crosses_page(self) -> bool:
        """Whether a kill can leave a part of this write."""
        return self.name == "write" and self.place % PAGE + int(self.result) > PAGE


@dataclass
class Outcome:
    code: int
    calls: list[Call]
    said: list[str]
    seconds: float

    @property
    def finished(self) -> int:
        """The trials behind which another one has begun."""
        begun = [line.split()[-1] for line in self.said if line.startswith("kelmoran.rehearse: trial")]
        return max(0, int(begun[-1]) - 1) if begun else 0


def tripwire(root: Path, log: Path, at: int, within: bool = False) -> dict[str, str]:
    """What tells the tripwire when it is to kill."""
    library = next(BUILD.rglob("kelmoran-tripwire.so"))
    return {"LD_PRELOAD": str(library), "TRIPWIRE_ROOT": str(root), "TRIPWIRE_LOG": str(log),
            "TRIPWIRE_AT": str(at), "TRIPWIRE_WITHIN": str(int(within))}


class Stage:
    """A place where data roots come and go."""

    def __init__(self) -> None:
        self._folder = tempfile.TemporaryDirectory(prefix="kelmoran-kill-")
        self.folder = Path(self._folder.name).resolve()
        self.laid_out = self.folder / "laid-out"
        subprocess.run([str(PROJECT / "scripts" / "lay-out-root.sh"), str(self.laid_out), str(BUILD)],
                       check=True)
        self._aged = self._make_aged()

    def close(self) -> None:
        self._folder.cleanup()

    def root_for(self, play: Play) -> Path:
        root = Path(tempfile.mkdtemp(dir=self.folder))
        (root / "Languages").symlink_to(self.laid_out / "Languages")
        if not play.first:
            shutil.copytree(self._aged, root, dirs_exist_ok=True, symlinks=True)
            self.run(play, root, at=DEAD_LOCK)
        return root

    def _make_aged(self) -> Path:
        """A data root with patients, an assessor, rows, and half a copy of the list."""
        root = self.root_for(Play(2, WHOLE, first=True))
        (root / "Parameters").mkdir()
        (root / "Parameters" / "patients_list.txt").write_bytes(old_list())
        (root / "Parameters" / "assessor.txt").write_bytes(ASSESSOR)
        self.run(Play(2, WHOLE), root)
        (root / "bin" / "_patients_list.txt").write_bytes(old_list()[:70])
        (root / "Languages").unlink()
        (root / "calls.txt").unlink()
        return root

    # Runs

    def run(self, play: Play, root: Path, at: int = 0, within: bool = False,
            delay: float | None = None) -> Outcome:
        """Plays it; killed at a call, or after so many seconds, or not at all."""
        log = root / "calls.txt"
        log.unlink(missing_ok=True)
        environment = {
            **{name: value for name, value in os.environ.items() if not name.startswith("QT_")},
            "LC_ALL": "C.UTF-8", "TZ": "UTC", "QT_LOGGING_RULES": "kelmoran.rehearse=true",
            **tripwire(root, log, at, within)}
        with tempfile.TemporaryFile() as said:
            began = time.monotonic()
            process = subprocess.Popen(play.command(root), env=environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=said)
            try:
                process.wait(LONGEST if delay is None else delay)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            seconds = time.monotonic() - began
            said.seek(0)
            lines = said.read().decode(errors="replace").splitlines()
        return Outcome(process.returncode, calls_in(log), lines, seconds)

    def whole_run(self, play: Play) -> Outcome:
        """What it does when nobody kills it: each call is a moment to be killed at."""
        root = self.root_for(play)
        outcome = self.run(play, root)
        shutil.rmtree(root)
        if outcome.code != 0:
            raise RuntimeError(f"{play} ended with {outcome.code}: {outcome.said}")
        return outcome

    def try_moment(self, play: Play, at: int = 0, within: bool = False,
                   delay: float | None = None) -> Attempt:
        """Kills a run, and looks at what is left; then starts again, and looks once more."""
        root = self.root_for(play)
        state = Root(root)
        outcome = self.run(play, root, at, within, delay)
        killed = outcome.code == -signal.SIGKILL
        finished = 0 if play.trains else outcome.finished
        wrong = state.broken(play.expected(finished), cut=within)
        left = state.left_behind() if killed else []

        state = Root(root)
        after = self.run(play.short(), root)
        if after.code != 0:
            wrong.append(f"the next start ended with {after.code}: {after.said[-1:]}")
        wrong += [f"after the next start: {text}" for text in state.broken(play.expected(1))]
        shutil.rmtree(root)
        return Attempt(killed, outcome.seconds, wrong, left, finished)


@dataclass
class Attempt:
    killed: bool  # or it had ended by itself
    seconds: float  # to its end, whichever it was
    wrong: list[str]
    left: list[str]
    finished: int


def calls_in(log: Path) -> list[Call]:
    if not log.exists():
        return []
    calls = []
    for line in log.read_text(encoding="utf-8").splitlines():
        number, name, path, result, *place = line.split("\t")
        calls.append(Call(int(number), name, path, result, int(place[0]) if place else 0))
    return calls


KINDS = (
    (r"kelmoran\.lock.*", "lock"),
    (r"Results/output\.csv", "trial rows"),
    (r"Results/timing\.csv", "times of the trials"),
    (r"Results/valid-output\.csv", "valid rows"),
    (r"(Results|Archives/[^/]+)/results_T.*", "scores"),
    (r"Archives/[^/]+/Output_.*", "report"),
    (r"Parameters/screen\.pix.*", "calibration, frequency"),
    (r"Parameters/assessor\.txt.*", "assessor's record"),
    (r"bin/_patients_list\.txt", "rewrite of the list"),
    (r"Parameters/patients_list\.txt.*", "registration"),
)


def kind_of(calls: list[Call], index: int) -> str:
    """What a call serves: that of a file without a name, what gets its name."""
    call = calls[index]
    if call.name == "mkdir":
        return "folders"
    if call.name == "rename" and calls[index - 1].path == "bin/_patients_list.txt":
        return "rewrite of the list"
    for later in calls[index:]:
        for pattern, kind in KINDS:
            if re.fullmatch(pattern, later.path):
                return kind
    raise ValueError(f"nobody knows what {call} serves")
