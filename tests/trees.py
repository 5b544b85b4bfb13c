"""trees.py GARNEL race|depth|kill: what transcripts cannot show of the commands that work on trees.

race   A process swaps directories for links to a place outside while a command runs on their tree.
depth  Trees whose paths no system call takes, with few descriptors.
kill   Moves across file systems, copies and sorts are killed at random points: no byte of what they read is gone.

Runs in two file systems of its own, in memory; ends with status 80 where they cannot be mounted.
"""

import ctypes
import os
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable
from pathlib import Path

GARNEL, PART = os.path.abspath(sys.argv[1]), sys.argv[2]
AT_FDCWD, RENAME_EXCHANGE = -100, 2
libc = ctypes.CDLL(None, use_errno=True)


def garnel(*words: str, under: tuple[str, ...] = (), **options) -> subprocess.CompletedProcess:
    return subprocess.run([*under, GARNEL, *words], capture_output=True, timeout=120, **options)


def check(holds: bool, what: str) -> None:
    if not holds:
        sys.exit(f"{PART}: {what}")


def clear() -> None:
    subprocess.run("chmod -R u+rwx a b; rm -rf a/* b/*", shell=True, check=True)


def make_tree(top: str, width: int = 12) -> None:
    for upper in range(width):
        for lower in range(4):
            here = Path(top, f"d{upper}", f"d{lower}")
            here.mkdir(parents=True)
            for number in range(4):
                (here / f"f{number}").write_text(f"{upper}.{lower}.{number}")
        (here.parent / "f").write_text(f"{upper}")


def contents(*tops: str) -> list[str]:
    return sorted(p.read_text() for top in tops for p in Path(top).rglob("*") if p.is_file() and not p.is_symlink())


# race


def state(top: str) -> list[tuple]:
    """Everything about a place but the times of reading."""
    found = [(p, p.lstat()) for p in sorted([Path(top), *Path(top).rglob("*")])]
    return [(p, s.st_mode, s.st_uid, s.st_nlink, s.st_ctime_ns, s.st_size) for p, s in found]


def swap(directory: int, name: bytes, target: bytes, plant: bool) -> None:
    """Puts a link in the place of an entry, on request also where there is none, or takes it away again."""
    other = name + b"~"
    libc.symlinkat(target, directory, other)
    if libc.renameat2(directory, name, directory, other, RENAME_EXCHANGE) != 0 and plant:
        libc.renameat(directory, other, directory, name)


def swap_for_ever(top: str, width: int, target: bytes, plant: bool) -> None:
    while True:
        for upper in range(width):
            swap(AT_FDCWD, f"{top}/d{upper}".encode(), target, plant)
            try:
                inside = os.open(f"{top}/d{upper}", os.O_PATH | os.O_DIRECTORY | os.O_NOFOLLOW)
            except OSError:
                continue
            for lower in range(4):
                swap(inside, f"d{lower}".encode(), target, plant)
            os.close(inside)


# Holds a command up behind every directory that it makes, where others have a microsecond or two otherwise.
SLOWLY = ("strace", "-o", "/dev/null", "-e", "trace=mkdirat", "-e", "inject=mkdirat:delay_exit=2000")


def race_round(command: list[str], under: tuple[str, ...], swapped: str, width: int, target: str, plant: bool) -> None:
    swapper = os.fork()
    if swapper == 0:
        swap_for_ever(swapped, width, target.encode(), plant)
    done = garnel(*command, under=under)
    os.kill(swapper, signal.SIGKILL)
    check(os.WIFSIGNALED(os.waitpid(swapper, 0)[1]), "the swapping did not go on to the end")
    check(done.returncode in (0, 1), f"{command}: status {done.returncode}: {done.stderr.decode()[:500]}")


def race() -> None:
    traced = subprocess.run("strace -o /dev/null true", shell=True, capture_output=True).returncode == 0
    check(garnel("true").returncode == 0, "the executable does not run")
    outside = os.path.abspath("a/outside/linked")
    cases = [  # cp and mv follow the links of a source by design, but none in what they make
        (["rm", "-r", "a/tree"], "a/tree"),
        (["chown", "-R", "1:1", "a/tree"], "a/tree"),
        (["chmod", "-R", "711", "a/tree"], "a/tree"),
        (["cp", "-r", "a/tree", "b/tree"], "b/tree"),
        (["mv", "a/tree", "b/tree"], "b/tree"),
    ]
    for command, swapped in cases:
        # chmod follows links by design, but no further than they lead.
        watched = "a/outside/beside" if command[0] == "chmod" else "a/outside"
        clear()
        make_tree("a/outside/linked", 2)
        make_tree("a/outside/beside", 2)
        end = time.monotonic() + 2
        rounds = 0
        while time.monotonic() < end:
            shutil.rmtree("a/tree", ignore_errors=True)
            shutil.rmtree("b/tree", ignore_errors=True)
            width, under = (12, ()) if rounds % 4 == 0 or not traced else (1, SLOWLY)
            make_tree("a/tree", width)
            bytes_before, before = contents("a/tree"), state(watched)
            race_round(command, under, swapped, width, outside, plant=rounds % 2 == 0)
            check(state(watched) == before, f"{command} changed something outside in round {rounds}")
            if command[0] == "mv":
                check(contents("a/tree", "b") == bytes_before, f"{command} lost something in round {rounds}")
            rounds += 1
        print(f"{command[0]}: {rounds} rounds")


# depth


def make_chain(top: str, depth: int) -> None:
    os.mkdir(top)
    at = os.open(top, os.O_RDONLY)
    for _ in range(depth):
        os.mkdir("d", dir_fd=at)
        inner = os.open("d", os.O_RDONLY, dir_fd=at)
        os.close(at)
        at = inner
        os.close(os.open("f", os.O_WRONLY | os.O_CREAT, 0o644, dir_fd=at))
    os.close(at)


def chain(top: str) -> list[tuple[int, int]]:
    """Mode and owner of each level's file and of its directory."""
    levels = []
    at = os.open(top, os.O_RDONLY)
    while True:
        try:
            inner = os.open("d", os.O_RDONLY, dir_fd=at)
        except FileNotFoundError:
            os.close(at)
            return levels
        os.close(at)
        at = inner
        for status in (os.stat("f", dir_fd=at), os.fstat(at)):
            levels.append((status.st_mode & 0o777, status.st_uid))


def depth() -> None:
    levels = 5000
    few = {"preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (64, 64))}
    make_chain("a/tree", levels)
    listing = garnel("ls", "-R", "a/tree", **few)
    check(listing.stdout.count(b"\nf\n") == levels, "ls -R did not list every file")
    drawing = garnel("tree", "a/tree", **few)
    check(drawing.stdout.count(b"-- f\n") == levels, "tree did not draw every file")
    steps = [
        (["cp", "-r", "a/tree", "a/copy"], "a/copy", [(0o644, 0), (0o755, 0)]),
        (["chmod", "-R", "711", "a/copy"], "a/copy", [(0o711, 0), (0o711, 0)]),
        (["chown", "-R", "1:1", "a/copy"], "a/copy", [(0o711, 1), (0o711, 1)]),
        (["mv", "a/copy", "b"], "b/copy", [(0o711, 0), (0o711, 0)]),
        (["rm", "-r", "b/copy", "a/tree"], None, []),
    ]
    for command, top, expected in steps:
        done = garnel(*command, **few)
        check((done.returncode, done.stdout, done.stderr) == (0, b"", b""), f"{command}: {str(done)[:500]}")
        check(top is None or chain(top) == expected * levels, f"{command}: not everywhere")
    check(not (os.listdir("a") or os.listdir("b")), "something is left over")


# kill


def kill_at_random(draw: random.Random, rounds: int, words: list[str], left: Callable[[], bool]) -> int:
    """How many of the rounds met the command at work: it had begun, and was not done."""
    longest, met = 0.0, 0
    for number in range(rounds + 1):
        clear()
        make_tree("a/tree")
        Path("a/tree/large").write_text("large\n" * 1_000_000)
        before = contents("a/tree")
        start = time.monotonic()
        command = subprocess.Popen([GARNEL, *words], env=os.environ | {"TMPDIR": "b"})
        if number > 0:  # the first round only takes the time
            time.sleep(draw.uniform(0, longest))
            command.kill()
        ended = command.wait(120)
        longest = longest or time.monotonic() - start
        after = contents("a", "b") if words[0] == "mv" else contents("a/tree")
        check(set(before) <= set(after), f"bytes are gone after round {number} of {words[0]}")
        met += ended == -signal.SIGKILL and left()
    return met


def kill() -> None:
    seed = 20240229
    print(f"seed {seed}")
    draw = random.Random(seed)
    in_tree = ["a/tree/large", "a/tree/large"]
    for rounds, words, left in (
        (80, ["mv", "a/tree", "b"], lambda: bool(os.listdir("b")) and Path("a/tree/").exists()),
        (60, ["cp", "-r", "a/tree", "b"], lambda: bool(os.listdir("b"))),
        (60, ["sort", "-S", "1M", "-o", "b/sorted", *in_tree], lambda: True),
    ):
        met = kill_at_random(draw, rounds, words, left)
        check(met > 5, f"only {met} rounds met {words[0]} at work")
        print(f"{words[0]}: {met} of {rounds} rounds met it at work")


def main() -> None:
    if len(sys.argv) == 3:
        if subprocess.run(["unshare", "-m", "true"], capture_output=True).returncode != 0:
            print("skipped: this machine does not allow mounting in a private namespace")
            sys.exit(80)
        with tempfile.TemporaryDirectory() as scratch:
            again = ["unshare", "-m", sys.executable, __file__, GARNEL, PART, scratch]
            sys.exit(subprocess.run(again).returncode)
    os.chdir(sys.argv[3])
    os.umask(0o022)
    for side in ("a", "b"):
        os.mkdir(side)
        subprocess.run(["mount", "-t", "tmpfs", "-o", "size=512m", "none", side], check=True)
    {"race": race, "depth": depth, "kill": kill}[PART]()


main()
