"""bench.py [WORD]: runs the workloads whose name holds WORD. README.md says how it measures."""

import sys

sys.dont_write_bytecode = True

import datetime
import importlib
import json
import os
import platform
import shlex
import shutil
import statistics
import subprocess
import tempfile
from pathlib import Path

from workload import MIB, Compare, Data, Growth

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
GARNEL = ROOT / "build/release/garnel"
OUT = ROOT / "build/bench"
DATA, LINKS, TOOLS = OUT / "data", OUT / "bin", OUT / "tools"

ROUNDS = 7  # that count; one more goes ahead to warm the caches
GROWTH_RUNS = 3
MOUNT = 'mkdir -p elsewhere && mount -t tmpfs none elsewhere && exec "$@"'
ENVIRONMENT = {"PATH": f"{TOOLS}:/usr/bin:/bin", "LC_ALL": "C", "TZ": "UTC", "TERM": "xterm"}


class CannotRun(Exception):
    """Something is missing or went wrong: the report is not complete."""


def run(command: list[str], **options) -> subprocess.CompletedProcess:
    quiet = {"stdin": subprocess.DEVNULL, "capture_output": True}
    return subprocess.run(command, **quiet, text=True, errors="replace", **options)


def status(text: str) -> None:
    """Tells whoever waits at a terminal what is going on; the empty text clears the line."""
    if sys.stderr.isatty():
        print(f"\r\x1b[K{text}", end="", file=sys.stderr, flush=True)


# What the workloads need.


def compile_tools() -> None:
    for source in HERE.glob("*.c"):
        flags = ["-nostdlib"] if source.stem == "empty" else []
        command = ["gcc", "-O2", "-Wall", "-Wextra", "-static", *flags, "-o", TOOLS / source.stem, source]
        if subprocess.run(command).returncode != 0:
            sys.exit(f"bench: could not compile {source}")


def our_command(name: str) -> str:
    """The path of a link that starts the command."""
    link = LINKS / name
    link.unlink(missing_ok=True)
    link.symlink_to("garnel")
    return str(link)


def their_command(name: str, package: str) -> str:
    path = shutil.which(name, path=ENVIRONMENT["PATH"])
    if path is None:
        raise CannotRun(f"no {name} on this machine; it is in Debian's package {package}")
    return path


def make_data(needed: tuple[Data, ...], room: int) -> None:
    missing = [data for data in needed if not (DATA / data.name).exists()]
    room += sum(data.size for data in missing)
    if room > 0 and shutil.disk_usage(DATA).free < room * 1.1:
        raise CannotRun(f"needs {room // MIB} MiB of disk below {DATA}")
    for data in missing:
        status(f"making {data.name} ...")
        unfinished = DATA / "unfinished"
        run(["rm", "-rf", str(unfinished)])
        try:
            data.make(unfinished)
            unfinished.rename(DATA / data.name)
        except (OSError, subprocess.CalledProcessError) as reason:
            raise CannotRun(f"could not make {data.name}: {reason}") from reason


# Measuring.


def hyperfine(command: str, work: Compare) -> list[float]:
    """The seconds of each run."""
    report = OUT / "hyperfine.json"
    options = ["--style=none", f"--runs={work.runs}", f"--export-json={report}"]
    options += ["--shell=/bin/sh"] if work.output else ["-N"]
    if work.output.startswith(">"):
        # What the last run left for the disk to do would slow down the next one.
        options += ["--prepare=rm -f out; sync -f ."]
    elif work.prepare:
        options += ["--prepare=sh -c " + shlex.quote(work.prepare)]
    inside = ["unshare", "-m", "sh", "-c", MOUNT, "sh"] if work.elsewhere else []
    done = run([*inside, "hyperfine", *options, f"{command} {work.output}"], cwd=DATA, env=ENVIRONMENT)
    if done.returncode != 0:
        raise CannotRun(f"{command[:60]}: {done.stderr.strip()}")
    return json.loads(report.read_text())["results"][0]["times"]


def compare(work: Compare) -> dict:
    our_name, *our_rest = work.ours.split(" ", 1)
    their_name, *their_rest = work.theirs.split(" ", 1)
    commands = {
        "ours": " ".join([shlex.quote(our_command(our_name)), *our_rest]),
        "theirs": " ".join([shlex.quote(their_command(their_name, work.needs)), *their_rest]),
    }
    make_data(work.data, work.room)
    times = {"ours": [], "theirs": []}
    (DATA / "memory").unlink(missing_ok=True)
    memory = tempfile.mkdtemp(prefix="garnel-bench.", dir="/dev/shm" if os.access("/dev/shm", os.W_OK) else OUT)
    (DATA / "memory").symlink_to(memory)
    try:
        for count in range(ROUNDS + 1):
            for side, command in commands.items():
                seconds = hyperfine(command, work)
                if count > 0:
                    times[side] += seconds
    finally:
        (DATA / "out").unlink(missing_ok=True)
        (DATA / "memory").unlink()
        run(["rm", "-rf", memory, str(DATA / "elsewhere")])
    result = {
        side: {"median": statistics.median(runs), "min": min(runs), "max": max(runs), "runs": len(runs)}
        for side, runs in times.items()
    }
    if result["theirs"]["median"] == 0:  # hyperfine takes off what it thinks that the shell took
        raise CannotRun("too short to be measured through a shell")
    ratio = result["ours"]["median"] / result["theirs"]["median"]
    met = None if work.goal is None else ratio <= work.goal
    return {"name": work.name, **result, "ratio": ratio, "goal": work.goal, "met": met}


def grow(work: Growth) -> dict:
    points = []
    for count, (name, *rest) in work.points:
        command = [str(TOOLS / "peak"), our_command(name), *rest]
        make_data(work.data, 0)
        runs = []
        for _ in range(GROWTH_RUNS + 1):
            done = run(command, cwd=DATA, env=ENVIRONMENT)
            if done.returncode != 0:
                raise CannotRun(f"{name}: status {done.returncode}: {done.stderr.strip()[:200]}")
            runs.append([float(word) for word in done.stdout.split()])
        seconds, kib = (statistics.median(column) for column in zip(*runs[1:]))
        points.append({"units": count, "seconds": seconds, "peak_bytes": int(kib * 1024)})
    return {"name": work.name, "unit": work.unit, "points": points}


# Showing.


def machine() -> dict:
    info = Path("/proc/cpuinfo").read_text().splitlines()
    models = [line.split(":", 1)[1].strip() for line in info if line.startswith("model name")]
    commit = run(["git", "-C", str(ROOT), "describe", "--always", "--dirty", "--exclude=*"]).stdout.strip()
    return {
        "cpu": models[0] if models else platform.machine(),
        "cores": os.cpu_count(),
        "kernel": platform.release(),
        "date": datetime.datetime.now().astimezone().isoformat(timespec="minutes"),
        "commit": commit or "none",
        "load": round(os.getloadavg()[0], 2),
    }


def show_time(seconds: float) -> str:
    for unit, scale in (("s", 1), ("ms", 1e3), ("us", 1e6)):
        if seconds * scale >= 1:
            return f"{seconds * scale:.3g} {unit}" if seconds < 100 else f"{seconds:.0f} s"
    return f"{seconds * 1e9:.3g} ns"


def show_compare(result: dict) -> str:
    ours, theirs = (show_time(result[side]["median"]) for side in ("ours", "theirs"))
    goal = "" if result["goal"] is None else f"{result['goal']:g}"
    verdict = {None: "", True: "ok", False: "MISSED"}[result["met"]]
    return f"{ours:>9} {theirs:>9} {result['ratio']:>7.3f} {goal:>6}  {verdict}".rstrip()


def show_growth(result: dict) -> str:
    points = [
        f"{p['units']:,}: {show_time(p['seconds'] / p['units'])}, {p['peak_bytes'] / p['units']:.4g} B"
        for p in result["points"]
    ]
    return f"  per {result['unit']} at " + "; at ".join(points)


CHART = """
set terminal svg size 900,{height} noenhanced font "sans,12" background "white"
set output "{file}"
set title "Time of ours as a part of theirs (less is better; the black mark is the goal)\\n{machine}"
set xrange [0:{right}]
set yrange [{bottom}:0.5]
set grid x
set ytics scale 0 ({labels})
set key off
set lmargin 36
set style fill solid noborder
plot "-" using ($2/2):(-$1):($2/2):(0.3):3 with boxxyerror linecolor rgb variable, \\
     "-" using 2:(-$1-0.42):(0):(0.84) with vectors nohead linewidth 3 linecolor "black"
{bars}
e
{goals}
e
"""


def draw(results: list[dict], where: dict) -> None:
    if not results:
        return
    colour = {None: 0x8899AA, True: 0x4C9F70, False: 0xC8553D}
    rows = list(enumerate(results))
    bars = [f"{i} {result['ratio']} {colour[result['met']]}" for i, result in rows]
    goals = [f"{i} {result['goal']}" for i, result in rows if result["goal"] is not None]
    script = CHART.format(
        height=120 + 32 * len(rows),
        file=OUT / "results.svg",
        machine=", ".join(str(where[key]) for key in ("cpu", "kernel", "date", "commit")),
        right=max(1.3, *(1.05 * result["ratio"] for result in results)),
        bottom=0.5 - len(rows),
        labels=", ".join(f'"{result["name"]}" {-i}' for i, result in rows),
        bars="\n".join(bars),
        goals="\n".join(goals or ["0 NaN"]),
    )
    done = subprocess.run(["gnuplot"], input=script, text=True)
    if done.returncode != 0:
        sys.exit("bench: gnuplot could not draw the chart")


def main() -> int:
    word = sys.argv[1] if len(sys.argv) > 1 else ""
    areas = [importlib.import_module(file.stem) for file in sorted(HERE.glob("workloads_*.py"))]
    works = [work for area in areas for work in area.WORKLOADS if word in work.name]
    if not works:
        sys.exit(f"bench: no workload's name holds {word!r}")
    for program in ("gcc", "hyperfine", "gnuplot"):
        if shutil.which(program) is None:
            sys.exit(f"bench: {program} is missing")
    if not os.access(GARNEL, os.X_OK):
        sys.exit(f"bench: {GARNEL} is missing; ./dev build makes it")
    for directory in (DATA, LINKS, TOOLS):
        directory.mkdir(parents=True, exist_ok=True)
    shutil.copy(GARNEL, LINKS / "garnel")  # one and the same for the whole run, also when it is built anew
    compile_tools()

    where = machine()
    print(", ".join(f"{key}: {value}" for key, value in where.items()))
    width = max(len(work.name) for work in works)
    print(f"{'workload':{width}} {'ours':>9} {'theirs':>9} {'ratio':>7} {'goal':>6}")
    compared, grown, left_out, complete = [], [], [], True
    for work in works:
        status(f"{work.name} ...")
        try:
            if isinstance(work, Compare):
                compared.append(compare(work))
                row = show_compare(compared[-1])
            else:
                grown.append(grow(work))
                row = show_growth(grown[-1])
        except CannotRun as reason:
            row = f"  CANNOT RUN: {reason}"
            left_out.append({"name": work.name, "reason": str(reason)})
            complete = False
        status("")
        print(f"{work.name:{width}} {row}", flush=True)

    report = {"machine": where, "compared": compared, "growth": grown, "left_out": left_out}
    (OUT / "results.json").write_text(json.dumps(report, indent=2) + "\n")
    draw(compared, where)
    return 0 if complete else 1


if __name__ == "__main__":
    sys.exit(main())
