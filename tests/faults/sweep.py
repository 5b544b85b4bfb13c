"""sweep.py SHIM GARNEL short|full [WORD]: makes every call of every command fail once, and looks at what is left.

Each scenario (scenarios.py) first runs undisturbed. Then, for every routine that it called and every way in which
that routine can fail, the first call fails, in the next run the second, and so on until no call is left to fail:
once by itself, and once with all calls of the routine that follow it. After every run:

- it ended by itself, in time, with a status of the scenario's, and said only what garnel says;
- no descriptor but the three and no file that was not there after the undisturbed run is left;
- when output or files differ from the undisturbed run, the status or a message tells so, unless the scenario
  lists the routine as one whose failure has no other sign, with the reason;
- what the scenario's command promises to keep is kept.

"short" takes every call of the first dozen and then strides; "full" takes them all, and more errors. Only scenarios
whose command holds WORD run, if it is given. Ends with status 80 where the kernel cannot catch system calls.
"""

import sys

sys.dont_write_bytecode = True

import errno
import multiprocessing
import os
import re
import tempfile
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

from scenarios import FIXED_TIME, SCENARIOS, Run, Scenario

SHIM, GARNEL, FORM = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2]), sys.argv[3]
WORD = sys.argv[4] if len(sys.argv) > 4 else ""
TOOLS = Path(__file__).resolve().parents[2] / "app/tools.h"

PROCESSES = 2
SECONDS = 10  # that a run may take
EVERY_CALL = 12  # in the short form; behind them about as many again

# How routines can fail: error names, or "short". What ends with "+" stays so for all calls that follow.
WAYS = {
    routine: ways.split()
    for routines, ways in {
        "memory map": "ENOMEM ENOMEM+",
        "fork": "EAGAIN",
        "open": "EMFILE EACCES EMFILE+",
        "read": "EIO EINTR short EIO+ short+",
        "write": "ENOSPC EIO EINTR short ENOSPC+ short+",
        "close list database": "EIO EIO+",
        "stat": "EACCES ENOENT EIO+",
        "rename": "EACCES EXDEV",
        "unlink": "EPERM EPERM+",
        "mkdir": "ENOSPC EEXIST",
        "copy": "EIO ENOSPC EXDEV EINVAL short ENOSPC+",
        "splice": "EINVAL EIO short short+",
        "truncate": "EFBIG EINVAL EIO",
        "seek": "ESPIPE",
        "advise control handler": "EINVAL",
        "device": "ENOTTY",
        "pipe duplicate socket": "EMFILE",
        "wait": "EINTR ECHILD",
        "exec": "ENOENT EACCES",
        "poll": "EINTR EINVAL",
        "nap": "EINTR",
        "limit": "EPERM",
        "directory": "ENOENT",
        "random": "ENOSYS",
        "system": "EFAULT",
    }.items()
    for routine in routines.split()
}
OTHERS = ["EPERM"]
# The full form has all of these for each routine as well.
ANY = ["EPERM", "EIO", "ENOMEM", "EINTR", "EINVAL", "ENOSYS", "EPERM+", "EIO+", "ENOSYS+"]
# Some errors are answers: this one says that a name is no link.
ANSWERS = {("readlink", "EINVAL")}

# A call that is interrupted is made again, and one that comes short goes on: nothing is to be seen of it.
HARMLESS = {("read", "EINTR"), ("read", "short"), ("write", "short"), ("copy", "short"),
            ("splice", "short"), ("wait", "EINTR"), ("nap", "EINTR")}  # fmt: skip


@dataclass(frozen=True)
class Sweep:
    number: int  # of the scenario: only its number can be sent to another process
    routine: str
    way: str

    @property
    def scenario(self) -> Scenario:
        return SCENARIOS[self.number]


def tree(top: str) -> dict[str, tuple]:
    """Everything below a place by its name. Times count where the command has set them."""
    found = {}
    for path in sorted(Path(top).rglob("*")):
        status = path.lstat()
        if path.is_symlink():
            data = os.readlink(path)
        else:
            data = path.read_bytes() if path.is_file() else None
        time = status.st_mtime if path.is_file() and status.st_mtime < FIXED_TIME else None
        found[str(path.relative_to(top))] = (status.st_mode, status.st_uid, status.st_gid, time, data)
    return found


def play(scenario: Scenario, plan: str) -> Run:
    """One run in a fresh directory."""
    with tempfile.TemporaryDirectory(prefix="faults.") as scratch:
        here, report = os.path.join(scratch, "here"), os.path.join(scratch, "report")
        os.mkdir(here)
        scenario.lay_out(here)
        before = tree(here)
        faults = " ".join([*scenario.given, plan, *scenario.otherwise])
        more = {"LD_PRELOAD": SHIM, "GARNEL_FAULTS": faults, "GARNEL_FAULTS_REPORT": report}
        status, out, err = scenario.play(here, GARNEL, scenario.words, SECONDS, more)
        lines = Path(report).read_text(errors="replace").splitlines() if os.path.exists(report) else []
        files = {scenario.fixed(here, name.encode()).decode(): what for name, what in tree(here).items()}
        return Run(
            status=status or 0,
            hangs=status is None,
            out=scenario.fixed(here, out),
            raw=out,
            err=scenario.fixed(here, err),
            messages=err,
            before=before,
            files=files,
            calls={line.split()[1]: int(line.split()[2]) for line in lines if line.startswith("calls ")},
            met=any(line == f"met {plan}" for line in lines) if plan else False,
            left_open=[line for line in lines if line.startswith("open ")],
        )


def wrongs(sweep: Sweep, calm: Run, run: Run) -> list[str]:
    """What is wrong with a run that a fault has met."""
    scenario = sweep.scenario
    found = []
    if run.hangs:
        return [f"still runs after {SECONDS} seconds"]
    if run.status < 0:
        return [f"ended by signal {-run.status}"]
    if run.status not in scenario.statuses | {calm.status}:
        found.append(f"status {run.status}")
    # What writing hits can be the message itself.
    if sweep.routine != "write":
        found += [f"says {line!r}" for line in scenario.strange(run.messages)]
    found += run.left_open
    known = calm.files.keys() | run.before.keys()
    if sweep.routine != "unlink":
        found += [f"leaves {name}" for name in run.files if name not in known]
    different = run.out != calm.out or run.files != calm.files
    signs = run.status != calm.status or run.err != calm.err
    # Where nothing can be written, the status alone is left to tell, and may have told something else already.
    unheard = sweep.routine == "write" and sweep.way.endswith("+") and calm.status != 0
    if different and not signs and not unheard and sweep.routine not in scenario.silent:
        found.append("output or files differ, and nothing tells")
    harmless = (sweep.routine, sweep.way.rstrip("+")) in HARMLESS and sweep.routine not in scenario.silent
    if harmless and (different or signs):
        found.append("an interruption or a short count changes the result")
    found += scenario.keeps(run, sweep.routine, sweep.way)
    return found


def perform(sweep: Sweep) -> tuple[str, int, list[str]]:
    calm = play(sweep.scenario, "")
    calls = calm.calls.get(sweep.routine, 0)
    way = sweep.way.rstrip("+")
    sign = "+" if sweep.way.endswith("+") else ""
    result = "short" if way == "short" else str(getattr(errno, way))
    injected, violations = 0, []
    number = 1
    while True:
        plan = f"{sweep.routine}:{number}{sign}:{result}"
        run = play(sweep.scenario, plan)
        if not run.met and not run.hangs and run.status >= 0:
            break
        injected += 1
        for wrong in wrongs(sweep, calm, run):
            words = " ".join(sweep.scenario.words)
            violations.append(f"{sweep.scenario.command} {words}: {sweep.routine} call {number}{sign} {way}: {wrong}")
        # All calls at once are the same from wherever the shortness begins.
        if sweep.way == "short+":
            break
        number += 1 if FORM == "full" or number < EVERY_CALL else max(1, calls // EVERY_CALL)
    return sweep.scenario.command, injected, violations


def sweeps_of(number: int) -> list[Sweep] | str:
    """What to do with a scenario, or why nothing can be done."""
    scenario = SCENARIOS[number]
    calm = play(scenario, "")
    if not calm.calls:
        return f"{scenario.command}: {calm.err.decode(errors='replace').strip() or 'no report'}"
    if calm.hangs or calm.status != scenario.status or calm.left_open:
        words = " ".join(scenario.words)
        return f"{scenario.command} {words}: undisturbed, but {calm.status}, {calm.err!r}, {calm.left_open}"
    more = ANY if FORM == "full" else []
    ways = {routine: dict.fromkeys([*WAYS.get(routine, OTHERS), *more]) for routine in calm.calls}
    pairs = [(routine, way) for routine, found in ways.items() for way in found]
    return [Sweep(number, *pair) for pair in pairs if pair not in ANSWERS]


def main() -> int:
    tools = re.findall(r'^ *TOOL\("([^"]*)"', TOOLS.read_text(), re.MULTILINE)
    scenarios = [n for n, s in enumerate(SCENARIOS) if s.command in tools and WORD in s.command and s.allowed]
    trouble = [f"{name}: no scenario" for name in tools if name not in {s.command for s in SCENARIOS}]

    with multiprocessing.Pool(PROCESSES) as pool:
        work = []
        for found in pool.map(sweeps_of, scenarios):
            if isinstance(found, str):
                trouble.append(found)
            else:
                work += found
        injected: Counter[str] = Counter()
        violations: Counter[str] = Counter()
        for command, count, wrong in pool.imap_unordered(perform, work):
            injected[command] += count
            violations[command] += len(wrong)
            for line in wrong:
                print(line)
    for line in trouble:
        print(line)
    if trouble and all("no system call user dispatch" in line for line in trouble):
        return 80
    for name in tools:
        if injected[name] > 0:
            print(f"{name}: faults injected: {injected[name]}, violations: {violations[name]}")
    total = violations.total() + len(trouble)
    figures = f"faults injected: {injected.total()}, violations: {total}"
    print(figures)
    if not WORD:
        Path(SHIM).with_name("faults.txt").write_text(figures + "\n")
    return 0 if total == 0 and injected.total() > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
