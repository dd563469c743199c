"""What holds of a data root after its program was killed, whatever it was doing."""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from pathlib import Path

LIST, SCREEN, ASSESSOR = "patients_list.txt", "screen.pix", "assessor.txt"
TRIALS = "output.csv"
TRIAL_FIELDS = 30
MARKERS = (b"paused", b"interrupted")
MARKER_FIELDS = 6
LIST_FIELDS = 14
NAME_FIELDS = 4
# What a kill may leave behind: the copy of the list, a copy beside the file that it was to replace, and
# locks. The rest is known.
LEFT_BEHIND = re.compile(
    r"bin/_patients_list\.txt|Parameters/(screen\.pix|assessor\.txt|patients_list\.txt)\.[A-Za-z]{6}"
    r"|Results/output\.csv\.[A-Za-z]{6}|Archives/[^/]+/[^/]+\.pdf\.[A-Za-z]{6}"
    r"|kelmoran\.lock(\.rmlock)*")
KNOWN = re.compile(
    r"Parameters/(screen\.pix|assessor\.txt|patients_list\.txt)"
    r"|Results/(output|timing|valid-output|results_T[1-4])\.csv"
    r"|Archives/[^/]+/(results_T[1-4]_[^/]+\.csv|Output_T[1-7]_S[0-9]+_[^/]+\.pdf)")
OURS = ("Parameters", "Results", "Archives", "bin")


@dataclass
class Expected:
    """What a run may have changed beside the results of its test."""
    key: str = ""  # whose numbers in the list may be others
    registered: list[bytes] = field(default_factory=list)  # whose lines may have come
    screens: list[bytes] = field(default_factory=list)  # what screen.pix may hold beside what it held
    assessors: list[bytes] = field(default_factory=list)
    finished: int = 0  # trials that were seen to be over


class Root:
    """The files of a data root before a run, and what is wrong with them after it."""

    def __init__(self, root: Path) -> None:
        self.root = root
        self._before = self.files()

    def files(self) -> dict[str, bytes]:
        paths = [path for folder in OURS for path in (self.root / folder).rglob("*")]
        paths += self.root.glob("kelmoran.lock*")
        return {str(path.relative_to(self.root)): path.read_bytes() for path in paths
                if path.is_file() and not path.name.startswith("kelmoran-")
                and path.name != "kelmoran"}

    def left_behind(self) -> list[str]:
        """Copies that nobody reads any more. The lock is taken over."""
        return [name for name in self.files() if LEFT_BEHIND.fullmatch(name)
                and name not in self._before and not name.startswith("kelmoran.lock")]

    def broken(self, expected: Expected, cut: bool = False) -> list[str]:
        """The promises that don't hold, a line each. `cut`: the program was killed in the middle of
        a write, whose line nobody counts on."""
        now = self.files()
        wrong = [f"{name} is gone" for name in self._before
                 if name not in now and KNOWN.fullmatch(name)]
        for name, bytes_now in now.items():
            if LEFT_BEHIND.fullmatch(name):
                continue
            if not KNOWN.fullmatch(name):
                wrong.append(f"{name} is no file of the program's")
            elif name.endswith(".csv"):
                wrong += [f"{name}: {text}" for text in self._log(name, bytes_now, cut)]
            elif name.endswith(".pdf") and not is_whole_pdf(bytes_now):
                wrong.append(f"{name} isn't whole")
        wrong += self._list(now, expected)
        wrong += self._record(now, SCREEN, expected.screens)
        wrong += self._record(now, ASSESSOR, expected.assessors)
        rows = self._new_trials(now)
        if rows < expected.finished:
            wrong.append(f"{TRIALS} has {rows} rows of {expected.finished} finished trials")
        return wrong

    def _new_trials(self, now: dict[str, bytes]) -> int:
        """The whole rows of trials that have come since."""
        name = f"Results/{TRIALS}"
        lines = now.get(name, b"")[len(self._before.get(name, b"")):].split(b"\n")[:-1]
        return sum(len(line.split(b";")) == TRIAL_FIELDS and not line.startswith(b"code;")
                   for line in lines)

    def _log(self, name: str, bytes_now: bytes, cut: bool) -> list[str]:
        """Files that are only added to."""
        before = self._before.get(name, b"")
        if not bytes_now.startswith(before):
            return ["what it held has changed"]
        if not bytes_now and name != f"Results/{TRIALS}":
            return []  # the first row brings the header
        if not bytes_now.startswith((b"code;", b"date;")):
            return ["without its header"]
        columns = len(bytes_now.split(b"\n")[0].split(b";"))
        new = bytes_now[len(before):]
        if new and before and not before.endswith(b"\n"):  # half a line of a run before
            if not new.startswith(b"\n"):
                return ["a row joins half a line"]
            new = new[1:]
        lines = new.split(b"\n")
        last = lines.pop()
        if last and not cut:
            return [f"half a row, {last[-40:]!r}"]
        return [f"a row of {len(line.split(b';'))} fields" for line in lines
                if not is_whole_row(line, columns)]

    def _list(self, now: dict[str, bytes], expected: Expected) -> list[str]:
        name = f"Parameters/{LIST}"
        before = self._before.get(name, b"").split(b"\r\n")
        lines = now.get(name, b"").split(b"\r\n")
        if lines.pop() != b"":
            return [f"{LIST} ends in half a line"]
        before.pop()
        added = lines[len(before):]
        if len(lines) < len(before) or len(added) > len(expected.registered):
            return [f"{LIST} has {len(lines)} lines, had {len(before)}"]
        wrong = [line for line, new in zip(added, expected.registered)
                 if not is_same_patient(new, line)]
        wrong += [line for line, then in zip(lines, before)
                  if line != then and not (key_of(then) == expected.key
                                           and is_same_patient(then, line))]
        return [f"{LIST} has the line {line!r}" for line in wrong]

    def _record(self, now: dict[str, bytes], record: str, others: list[bytes]) -> list[str]:
        name = f"Parameters/{record}"
        then = self._before.get(name)
        if now.get(name) == then or now.get(name) in others:
            return []
        return [f"{record} is neither as it was nor new: {now.get(name)!r}"]


def is_whole_row(line: bytes, columns: int) -> bool:
    fields = line.split(b";")
    return len(fields) == columns or (len(fields) == MARKER_FIELDS and fields[-1] in MARKERS)


def key_of(line: bytes) -> str:
    return b" ".join(line.split(b";")[1:NAME_FIELDS]).decode()


def is_same_patient(then: bytes, now: bytes) -> bool:
    """Whether only the numbers of a patient's line are others."""
    old, new = then.split(b";"), now.split(b";")
    return (len(new) == LIST_FIELDS and old[:NAME_FIELDS] == new[:NAME_FIELDS]
            and all(number.isdigit() for number in new[NAME_FIELDS:]))


def is_whole_pdf(data: bytes) -> bool:
    return data.startswith(b"%PDF-") and data.rstrip().endswith(b"%%EOF")
