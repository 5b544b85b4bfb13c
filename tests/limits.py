"""limits.py GARNEL: every command with little room, and with far too many arguments.

The scenarios of faults/ and some with large files run with 64 descriptors, in 32 MiB of address space (only where
the C library is linked in), on a stack of 64 KiB, and under a limit on the size of files, with the signal of that
limit ignored and not. They end in time and by no other signal, and either as they end without the limit or with a
message of their own. Then every command gets two megabytes of arguments, in many words and in long ones.
"""

import sys

sys.dont_write_bytecode = True

import os
import re
import resource
import signal
import tempfile
from collections.abc import Callable
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "faults"))
from scenarios import SCENARIOS, Scenario, image

GARNEL = os.path.abspath(sys.argv[1])
STATIC = b"ld-linux" not in Path(GARNEL).read_bytes()
TOOLS = Path(__file__).resolve().parents[1] / "app/tools.h"
COMMANDS = re.findall(r'^ *TOOL\("([^"]*)"', TOOLS.read_text(), re.MULTILINE)
SECONDS = 120
MIB = 1 << 20

# Faults are part of what these scenarios play: of the rest of their commands nothing is to be seen without them.
PLAYED_WITHOUT_FAULTS = [s for s in SCENARIOS if not s.given and not s.otherwise and s.allowed]
MANY_LINES = b"".join(b"%d some words of a line\n" % (n * 7919 % 1000003) for n in range(1_500_000))
LARGE = [
    Scenario("cat", ("a",), {"a": MANY_LINES}),
    Scenario("cmp", ("a", "b"), {"a": MANY_LINES, "b": MANY_LINES}),
    Scenario("cp", ("a", "b"), {"a": MANY_LINES}),
    Scenario("cpio2", ("cat", "i", "a"), {"i": image(("a", MANY_LINES))}),
    Scenario("dd", ("if=a", "of=b", "bs=40M"), {"a": MANY_LINES}),
    Scenario("head", ("-n", "-5", "a"), {"a": MANY_LINES}),
    Scenario("sort", ("a",), {"a": MANY_LINES}),
    Scenario("tail", ("-n", "1000000", "a"), {"a": MANY_LINES}),
    Scenario("tail", ("-n", "1000000"), stdin=MANY_LINES),
    Scenario("tee", ("a",), stdin=MANY_LINES),
    Scenario("wc", ("a",), {"a": MANY_LINES}),
]

WORDS = ["aaaaaaa"] * 120_000
LONG_WORDS = ["a" * 100_000] * 19
# Words that nest, for the commands that read expressions, and what a command would not end with or would do.
ARGUMENTS = {
    "test": [["!"] * 190_000, ["("] * 190_000, ["a", "=", "a", "-a"] * 45_000],
    "[": [["!"] * 190_000, [*WORDS, "]"]],
    "tree": [["-" + "l" * 100_000] * 19],
}


def play(words: list[str], scenario: Scenario, limit: Callable[[], None] = lambda: None) -> tuple:
    """Status, output, messages and files of a run."""
    with tempfile.TemporaryDirectory(prefix="limits.") as here:
        scenario.lay_out(here)
        # Endless output ends where there is no room.
        full = {"stdout": open("/dev/full", "wb")} if scenario.command == "yes" else {}
        status, out, err = scenario.play(here, GARNEL, words, SECONDS, {}, preexec_fn=limit, **full)
        if status is None:
            return "hangs", out, err, {}
        paths = Path(here).rglob("*")
        files = {scenario.fixed(here, bytes(p)): p.read_bytes() if p.is_file() else None for p in paths}
        return status, scenario.fixed(here, out), scenario.fixed(here, err), files


def limiting(what: int, value: int) -> Callable[[], None]:
    return lambda: resource.setrlimit(what, (value, value))


def size_limit(action: signal.Handlers) -> Callable[[], None]:
    def limit() -> None:
        signal.signal(signal.SIGXFSZ, action)
        resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))

    return limit


def more_stack() -> None:
    # A quarter of it is for arguments.
    resource.setrlimit(resource.RLIMIT_STACK, (9 * MIB, 9 * MIB))


def main() -> int:
    limits = {
        "64 descriptors": limiting(resource.RLIMIT_NOFILE, 64),
        "64 KiB of stack": limiting(resource.RLIMIT_STACK, 64 << 10),
    }
    if STATIC:
        limits["32 MiB of addresses"] = limiting(resource.RLIMIT_AS, 32 * MIB)
    sizes = {
        "1000 bytes in a file": size_limit(signal.SIG_IGN),
        "1000 bytes in a file and a signal": size_limit(signal.SIG_DFL),
    }
    wrong = []
    runs = 0

    def complain(scenario: Scenario, limit: str, what: object) -> None:
        wrong.append(f"{scenario.command} {' '.join(scenario.words)}: {limit}: {what}")

    for scenario in PLAYED_WITHOUT_FAULTS + LARGE:
        if scenario.command not in COMMANDS:
            continue
        words = list(scenario.words)
        free = play(words, scenario)
        for name, limit in limits.items():
            runs += 1
            status, out, err, files = play(words, scenario, limit)
            if (status, out, err, files) == free:
                continue
            # Small inputs need no room that is not there.
            refused = scenario in LARGE and isinstance(status, int) and status >= 0 and err != b""
            if not refused or scenario.strange(err):
                complain(scenario, name, f"{status} {err[:200]!r} instead of {free[0]} {free[2][:200]!r}")
        for name, limit in sizes.items() if scenario not in LARGE else ():
            runs += 1
            status, out, err, files = play(words, scenario, limit)
            if (status == "hangs" or status < 0) and (status, "signal" in name) != (-signal.SIGXFSZ, True):
                complain(scenario, name, status)
            if scenario.strange(err):
                complain(scenario, name, err)
            if (out, files) != free[1:2] + free[3:] and status == free[0] and err == free[2]:
                if "write" not in scenario.silent:
                    complain(scenario, name, "output or files differ, and nothing tells")

    for command in COMMANDS:
        for words in [WORDS, LONG_WORDS, *ARGUMENTS.get(command, [])]:
            runs += 1
            scenario = Scenario(command, (words[0][:20], "..."))
            status, out, err, _ = play(words, scenario, more_stack)
            if status == "hangs" or status < 0:
                complain(scenario, f"{len(words)} words", status)

    for line in wrong:
        print(line)
    print(f"runs with little room: {runs}, violations: {len(wrong)}")
    return 0 if not wrong else 1


if __name__ == "__main__":
    sys.exit(main())
