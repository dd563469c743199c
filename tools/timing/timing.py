#!/usr/bin/python3
"""Measures from outside when the program shows what it shows, and renews docs/timing.md by it.

The real program runs real tests in real time on a virtual screen. A witness that knows nothing of it
stamps the changes of the screen and answers at known moments; a bare timer runs beside.
"""

from __future__ import annotations

import argparse
import os
import platform
import signal
import subprocess
import sys
import tempfile
import time
from contextlib import ExitStack, contextmanager
from pathlib import Path
from typing import Iterator

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "robot"))

from kelmoran_robot import program_environment  # noqa: E402
from page import TITLES, Findings, renewed, section  # noqa: E402
from runs import PROJECT, RUNS, SHORT, WHOLE, Bench  # noqa: E402
from stamps import Mismatch  # noqa: E402
from virtual_screen import VirtualScreen, die_with_parent, end_process  # noqa: E402
from waiting import RobotError  # noqa: E402

PAGE = PROJECT / "docs" / "timing.md"
MANY_WAITS = 1_000_000  # ended before
WRITTEN_MB = 64


@contextmanager
def running(command: list[str], output: Path | None = None) -> Iterator[None]:
    with open(output or os.devnull, "wb") as out:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=out,
                                   stderr=subprocess.DEVNULL, preexec_fn=die_with_parent)
        try:
            yield
        finally:
            end_process(process)


def load(condition: str, scratch: Path) -> list[list[str]]:
    """What else the machine does meanwhile."""
    spin = ["/bin/sh", "-c", "while :; do :; done"]
    write = ["/bin/sh", "-c", 'while dd if=/dev/zero of="$1" bs=1M count="$2" conv=fsync; do :; done',
             "write", str(scratch / "written"), str(WRITTEN_MB)]
    cores = os.cpu_count() or 1
    return {"idle": [], "one-core": [spin], "both-cores": [spin] * cores,
            "disk": [write]}[condition]


def machine() -> str:
    lines = Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines()
    model = next((line.split(":")[1].strip() for line in lines if line.startswith("model name")),
                 platform.machine())
    return f"{model}, {os.cpu_count()} cores, Linux {platform.release()}"


def self_test(screen: VirtualScreen, build: Path) -> list[str]:
    answer = subprocess.run([str(build / "tools" / "witness" / "kelmoran-witness"), "--self-test"],
                            env=program_environment(screen, "C.UTF-8"), capture_output=True,
                            text=True, check=False)
    if answer.returncode != 0:
        raise RobotError(answer.stderr.strip())
    return answer.stdout.splitlines()


def measure(condition: str, arguments: argparse.Namespace) -> Findings:
    findings = Findings(condition, machine())
    began = time.monotonic()
    with ExitStack() as stack:
        scratch = Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="kelmoran-timing-")))
        screen = stack.enter_context(VirtualScreen())
        # Line by line, or what it said last is lost when it is ended.
        bare = ["stdbuf", "-oL", str(arguments.build / "tools" / "bench" / "kelmoran-bare-timer"),
                str(MANY_WAITS), "100"]
        stack.enter_context(running(bare, scratch / "bare"))
        for command in load(condition, scratch):
            stack.enter_context(running(command))
        findings.witness = self_test(screen, arguments.build)
        bench = Bench(screen, arguments.build, scratch, SHORT if arguments.short else WHOLE,
                      findings)
        for name in arguments.only or RUNS:
            print(f"{condition}: {name}, {time.monotonic() - began:.0f} s", flush=True)
            RUNS[name](bench)
        lines = (scratch / "bare").read_text(encoding="ascii").split("\n")[:-1]
    findings.bare_timer = [float(line) for line in lines]
    priority = findings.witness[0].removeprefix("# ")
    findings.machine = (f"{time.strftime('%d %B %Y').lstrip('0')}; {findings.machine}; for the "
                        f"witness {priority}; {time.monotonic() - began:.0f} s.")
    return findings


def read_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("conditions", nargs="*", metavar="CONDITION",
                        help=f"{', '.join(TITLES)}; all of them if none is named")
    parser.add_argument("--build", type=Path, required=True, help="where the programs were built")
    parser.add_argument("--short", action="store_true",
                        help="a little of everything, printed; the page stays as it is")
    parser.add_argument("--only", action="append", choices=RUNS,
                        help="for a look at one run, with --short; may be given again")
    arguments = parser.parse_args()
    for condition in arguments.conditions:
        if condition not in TITLES:
            parser.error(f"no condition {condition!r}")
    if arguments.only and not arguments.short:
        parser.error("--only goes with --short")
    return arguments


def main() -> int:
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    arguments = read_arguments()
    for condition in arguments.conditions or TITLES:
        try:
            findings = measure(condition, arguments)
        except (RobotError, Mismatch) as error:
            print(f"timing.py: {condition}: {error}", file=sys.stderr)
            return 1
        text = section(findings)
        print(text)
        if not arguments.short:
            page = PAGE.read_text(encoding="utf-8")
            PAGE.write_text(renewed(page, condition, text), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
