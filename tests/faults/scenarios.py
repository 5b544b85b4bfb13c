"""What sweep.py plays: one to three scenarios for every command."""

import os
import re
import subprocess
from collections.abc import Callable
from dataclasses import dataclass, field
from pathlib import Path

FIXED_TIME = 946684800  # of the files that a scenario begins with


@dataclass(frozen=True)
class Run:
    """What there was to see of a run."""

    status: int  # below 0: the signal
    hangs: bool
    out: bytes  # without what is different every time
    raw: bytes
    err: bytes  # likewise
    messages: bytes
    before: dict[str, tuple]  # files before and after; the data is the last field
    files: dict[str, tuple]
    calls: dict[str, int]
    met: bool
    left_open: list[str]


Keeps = Callable[[Run, str, str], list[str]]


def nothing_to_keep(_run: Run, _routine: str, _way: str) -> list[str]:
    return []


@dataclass(frozen=True, eq=False)
class Scenario:
    command: str
    words: tuple[str, ...] = ()
    files: dict[str, bytes | str | None] = field(default_factory=dict)  # data, target of a link, or a directory
    stdin: bytes = b""
    given: tuple[str, ...] = ()  # faults that are always there
    otherwise: tuple[str, ...] = ()  # what becomes of calls that no fault meets
    status: int = 0
    statuses: frozenset[int] = frozenset({1})  # that a fault may lead to
    says: tuple[bytes, ...] = ()  # lines beside those that begin with the name
    # Routines whose failure shows in the output alone, with the reason.
    silent: dict[str, str] = field(default_factory=dict)
    vary: bytes = b""  # in outputs and in file names: what is different every time
    keeps: Keeps = nothing_to_keep
    allowed: bool = True  # whether it can be played by whoever plays

    def lay_out(self, here: str) -> None:
        for name, content in self.files.items():
            path = Path(here, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            if content is None:
                path.mkdir()
            elif isinstance(content, str):
                path.symlink_to(content)
            else:
                path.write_bytes(content)
                os.utime(path, (FIXED_TIME, FIXED_TIME))

    def play(self, here: str, garnel: str, words: list[str], seconds: int, more: dict, **options) -> tuple:
        """Runs in a directory with the scenario's files, and more in its environment: status, or None where it hangs,
        and both streams."""
        environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C", "TZ": "UTC", "TMP": here, "TEMP": here} | more
        streams = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE} | options
        process = subprocess.Popen([garnel, self.command, *words], cwd=here, env=environment, **streams)
        try:
            out, err = process.communicate(self.stdin, seconds)
            return process.returncode, out or b"", err
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
            return None, out or b"", err

    def fixed(self, here: str, text: bytes) -> bytes:
        """The text without what is different in every run."""
        text = text.replace(here.encode(), b"HERE")
        return re.sub(self.vary, b"*", text) if self.vary else text

    def strange(self, err: bytes) -> list[bytes]:
        """Messages that are not garnel's."""
        forms = (re.escape(self.command).encode() + b": .", *self.says)
        return [line for line in err.splitlines() if not any(re.match(form, line) for form in forms)]


LINES = b"".join(b"line %d\n" % (number * 7919 % 1000) for number in range(300))
BIG = bytes(number * number % 251 for number in range(200_000))
TREE = {"t/a": LINES, "t/u/b": BIG[:5000], "t/u/v/c": b"c\n", "t/link": "a", "t/empty": None}


def sources_stay(*names: str) -> Keeps:
    def keeps(run: Run, _routine: str, _way: str) -> list[str]:
        return [f"{name} is not what it was" for name in names if run.files.get(name) != run.before[name]]

    return keeps


def copies(pairs: dict[str, str]) -> Keeps:
    """The sources stay, and what could not be written is not left behind."""

    def keeps(run: Run, routine: str, _way: str) -> list[str]:
        wrong = sources_stay(*pairs)(run, routine, _way)
        if routine in ("write", "copy", "splice", "truncate"):
            for source, copy in pairs.items():
                if copy in run.files and run.files[copy][-1] != run.before[source][-1]:
                    wrong.append(f"{copy} is left half-written")
        return wrong

    return keeps


def moves(pairs: dict[str, str]) -> Keeps:
    """Every byte is at the old place or at the new one."""

    def keeps(run: Run, _routine: str, _way: str) -> list[str]:
        return [
            f"{source} is lost"
            for source, target in pairs.items()
            if run.before[source][-1] not in [run.files[name][-1] for name in (source, target) if name in run.files]
        ]

    return keeps


def serves(run: Run, routine: str, way: str) -> list[str]:
    """One operand that does not work takes nothing away from the others."""
    if way.endswith("+") or routine not in ("open", "write"):
        return []
    served = [run.out, *(run.files[name][-1] for name in ("a", "b") if name in run.files)]
    return [] if served.count(LINES) >= 2 else ["the operands that work are not served"]


def repeats(run: Run, _routine: str, _way: str) -> list[str]:
    whole = b"word\n" * (len(run.raw) // 5 + 1)
    return [] if whole.startswith(run.raw) else ["lines are not whole"]


def image(*entries: tuple[str, bytes]) -> bytes:
    """A cpio archive in the "newc" format."""
    made = b""
    for name, content in [*entries, ("TRAILER!!!", b"")]:
        numbers = [1, 0o100644, 0, 0, 1, 0, len(content), 0, 0, 0, 0, len(name) + 1, 0]
        head = b"070701" + b"".join(b"%08X" % number for number in numbers) + name.encode() + b"\0"
        made += head + bytes(-len(head) % 4) + content + bytes(-len(content) % 4)
    return made


CAT = {
    "read": "reading that fails ends an operand without a word",
    "write": "what a reader does not take is none of cat's business",
    "splice": "as for writing",
}
# What every command that reads directories takes no notice of.
DIRECTORIES = {
    "stat": "an entry that cannot be examined is left out",
    "list": "a directory that cannot be read on ends there",
    "memory": "an entry for which there is no room is left out",
    "map": "as for memory",
}
CP = {"read": "reading that fails ends a copy like the end of the file"}
MV = {"unlink": "a source that cannot be removed stays"}
NAMES = {"database": "an owner without a name is shown as a number"}
LINK = {"readlink": "a link that cannot be read is shown without its target"}
STAT = NAMES | {
    "readlink": "a link that cannot be read shows two question marks",
    "memory": "as for readlink",
    "map": "as for memory",
    "stat": "a system that tells no time of birth is asked for the rest",
}
UNCHECKED = {"write": "writing is not looked at"}
SKIPPED = {"open": "a file that cannot be opened is passed over"}
SORT = {"unlink": "a temporary file that cannot be removed stays"}
CMP = {"read": "reading that fails is the end of the file"}
CHOWN = (rb"chown: .", rb"chmod: cannot access '", rb"chmod: out of memory")
OWN = frozenset({1, 2})
OWN_101 = frozenset({1, 101})
NO_RENAME = ("rename:1+:18",)

# What a command that runs another one ends with where that does not come about.
RUNS = frozenset({1, 125, 126, 127})
IS_ROOT = os.geteuid() == 0

SCENARIOS = [
    Scenario("cat", ("a", "b"), {"a": LINES, "b": BIG}, silent=CAT),
    Scenario("cat", ("-n", "a", "-"), {"a": LINES}, stdin=LINES, silent=CAT),
    Scenario("chmod", ("-R", "-v", "u=rw", "a", "t"), {"a": LINES, **TREE}, silent=DIRECTORIES),
    Scenario("chown", ("-R", "-v", "root:root", "a", "t"), {"a": LINES, **TREE}, says=CHOWN,
             silent=DIRECTORIES | NAMES),
    Scenario("chgrp", ("-v", "root", "a"), {"a": LINES}, says=CHOWN, silent=NAMES),
    Scenario("chroot", (".", "sh", "-c", "exit 3"), otherwise=("root:1+:=0",), status=3, statuses=RUNS, allowed=IS_ROOT),
    Scenario("cmp", ("a", "b"), {"a": BIG, "b": BIG}, statuses=OWN, silent=CMP),
    Scenario("cmp", ("-l", "a", "b"), {"a": LINES, "b": LINES[:100] + b"x" + LINES[101:] + b"y"}, status=1,
             statuses=frozenset({0, 1, 2}), silent=CMP),
    Scenario("cp", ("a", "b"), {"a": LINES}, silent=CP, statuses=OWN, keeps=copies({"a": "b"})),
    Scenario("cp", ("a", "b", "d"), {"a": LINES, "b": BIG, "d": None}, silent=CP, statuses=OWN,
             keeps=copies({"a": "d/a", "b": "d/b"})),
    Scenario("cp", ("-r", "-v", "t", "new"), TREE, silent=CP | DIRECTORIES, statuses=OWN,
             keeps=copies({"t/a": "new/a", "t/u/b": "new/u/b", "t/u/v/c": "new/u/v/c"})),
    Scenario("dd", ("if=a", "of=b", "bs=512", "status=dnd"), {"a": LINES}, says=(rb"[-.]*$",),
             keeps=sources_stay("a")),
    Scenario("dd", ("if=a", "of=b", "ibs=512", "obs=300", "skip=1", "seek=2"), {"a": BIG[:4000]},
             silent={"seek": "a place that cannot be reached is not sought"}, keeps=sources_stay("a")),
    Scenario("dd", ("if=a", "of=b", "bs=1M"), {"a": LINES}, given=("copy:1:short", "copy:2:5"),
             silent={"write": "the status never tells, and a message that cannot be written does not either"}),
    Scenario("cpio2", ("list", "i"), {"i": image(("a", LINES), ("b", b"b"))}, statuses=OWN),
    Scenario("cpio2", ("cat", "i", "a"), {"i": image(("a", LINES), ("b", b"b"))}, statuses=OWN),
    Scenario("cpio2", ("export", "i", "a", "out"), {"i": image(("a", LINES))}, statuses=OWN),
    Scenario("df", (".",), vary=rb" *[0-9.]+[kMGT%]?",
             silent=dict.fromkeys(("open", "read"), "a device of which nothing can be read goes by another name")),
    Scenario("df", vary=rb" *[0-9.]+[kMGT%]?",
             silent=dict.fromkeys(("open", "memory", "map", "read"), "mounts that cannot be read are left out")),
    Scenario("echo", ("-e", r"a\x41\n", "b"), silent=UNCHECKED),
    Scenario("env", ("-i", "A=1"), statuses=RUNS),
    Scenario("env", ("A=1", "sh", "-c", "exit 3"), status=3, statuses=RUNS),
    Scenario("false", (), status=1),
    Scenario("format", ("-y", "missing"), status=2, statuses=OWN),
    Scenario("hd", ("a",), {"a": LINES}, statuses=frozenset({1, 2, 3}),
             silent={"read": "a read that comes short makes a short line"}),
    Scenario("head", ("-n", "20", "a", "b"), {"a": LINES, "b": LINES}, statuses=OWN, silent=SKIPPED),
    Scenario("head", ("-n", "-20", "a"), {"a": LINES}, statuses=OWN, silent=SKIPPED),
    Scenario("hostname"),
    Scenario("hostname", ("name",), otherwise=("system:1+:=0",)),
    Scenario("ln", ("a", "b"), {"a": LINES}),
    Scenario("ln", ("-s", "a", "b"), {"a": LINES}),
    Scenario("ls", ("-l", "-R", "-a", "t"), TREE, statuses=frozenset({1, 5, 101}), vary=rb"20[0-9-]+ [ 0-9:]+",
             silent=DIRECTORIES | NAMES | LINK),
    Scenario("ls", ("a", "t", "t/u"), {"a": LINES, **TREE}, statuses=frozenset({1, 5, 101}), silent=DIRECTORIES),
    Scenario("mkdir", ("-v", "a", "b")),
    Scenario("mkdir", ("-p", "-v", "a/b/c"), silent={"mkdir": "what -p cannot make is not an error"}),
    Scenario("mknod", ("f", "p")),
    Scenario("mktemp", ("x.XXXXXXXXY",), vary=rb"x[.]\w+", statuses=OWN),
    Scenario("mktemp", ("-d",), vary=rb"/\S*tmp[.]\w+|tmp[.]\w+", statuses=OWN),
    Scenario("mv", ("-v", "a", "b"), {"a": LINES}, keeps=moves({"a": "b"})),
    Scenario("mv", ("-f", "a", "b"), {"a": BIG, "b": LINES}, silent=MV, keeps=moves({"a": "b"})),
    Scenario("mv", ("-v", "a", "t", "d"), {"a": LINES, **TREE, "d": None}, given=NO_RENAME, statuses=OWN,
             silent=DIRECTORIES | MV,
             keeps=moves({"a": "d/a", "t/a": "d/t/a", "t/u/b": "d/t/u/b", "t/u/v/c": "d/t/u/v/c"})),
    Scenario("nslookup", ("localhost",)),
    Scenario("pwd"),
    Scenario("pwd", ("-P",)),
    Scenario("readlink", ("l",), {"a": LINES, "l": "a"}, statuses=OWN),
    Scenario("readlink", ("-f", "l"), {"a": LINES, "l": "a"}, statuses=OWN,
             silent={"readlink": "what is no link is shown where it lies"}),
    Scenario("realpath", ("a", "./missing"), {"a": LINES}),
    Scenario("realpath", ("-e", "l"), {"a": LINES, "l": "a"}),
    Scenario("rm", ("-v", "a"), {"a": LINES}),
    Scenario("rm", ("-r", "-v", "a", "t"), {"a": LINES, **TREE}),
    Scenario("rmdir", ("-p", "-v", "a/b/c"), {"a/b/c": None}),
    Scenario("seq", ("1", "3", "5000"), silent=UNCHECKED),
    Scenario("seq", ("-w", "-s", ",", "100"), silent=UNCHECKED),
    Scenario("sleep", ("-v", "-s", "0")),
    Scenario("sort", ("a", "b"), {"a": LINES, "b": LINES}, statuses=OWN, silent=SORT,
             keeps=sources_stay("a", "b")),
    Scenario("sort", ("-S", "3000", "-o", "out", "a"), {"a": LINES}, statuses=OWN, silent=SORT,
             keeps=sources_stay("a")),
    Scenario("sort", ("-m", "-o", "out", "a", "b"), {"a": b"a\nb\nd\n", "b": b"c\ne\n"}, statuses=OWN,
             keeps=sources_stay("a", "b")),
    Scenario("sort", ("-c",), stdin=LINES, status=1, statuses=OWN),
    Scenario("stat", ("a", "l"), {"a": LINES, "l": "a"}, vary=rb" *[0-9.]+", silent=STAT),
    Scenario("stat", ("-L", "l"), {"a": LINES, "l": "a"}, vary=rb" *[0-9.]+", silent=STAT),
    Scenario("stty", ("-a",), status=1),
    Scenario("su", ("-c", "exit 3", "root"), status=3, statuses=RUNS, allowed=IS_ROOT),
    Scenario("sync", otherwise=("sync:1+:=0",)),
    Scenario("tail", ("-n", "20", "a", "b"), {"a": LINES, "b": LINES}, statuses=OWN, silent=SKIPPED),
    Scenario("tail", ("-n", "20"), stdin=BIG + LINES, statuses=OWN),
    Scenario("tee", ("a", "b"), stdin=LINES, silent=UNCHECKED, keeps=serves),
    Scenario("test", ("-f", "a"), {"a": LINES}),
    Scenario("[", ("1", "-eq", "2", "]"), status=1),
    Scenario("time", ("sh", "-c", "exit 3"), status=3, statuses=RUNS, says=(rb"(real|user|sys) ",), vary=rb"[0-9]+"),
    Scenario("touch", ("-t", "199901020304", "a", "b"), {"a": LINES}),
    Scenario("tree", ("t",), TREE, statuses=OWN_101, silent=DIRECTORIES | LINK),
    Scenario("tree", ("-l", "t"), {**TREE, "t/to": "u"}, statuses=OWN_101, silent=DIRECTORIES | LINK),
    Scenario("true"),
    Scenario("truncate", ("-s", "100000", "a", "b"), {"a": LINES}, statuses=OWN_101),
    Scenario("truncate", ("-r", "c", "a"), {"a": LINES, "c": b"c"}, statuses=OWN_101),
    Scenario("tty", status=1, statuses=OWN),
    Scenario("tty", ("-s",), status=1, statuses=frozenset({1, 4})),
    Scenario("umount", ("-R", "-v", "/proc"), otherwise=("mount:1+:=0", "sync:1+:=0")),
    Scenario("watch", ("-n", "0", "-e", "echo x >> rounds; wc -l < rounds; [ $(wc -l < rounds) != 2 ] || exit 3"),
             status=3, statuses=RUNS, silent={"read": "output that cannot be read on ends there"}),
    Scenario("wc", ("-L", "a", "b"), {"a": LINES, "b": BIG}, statuses=OWN_101),
    Scenario("wc", (), stdin=LINES, statuses=OWN_101),
    Scenario("which", ("-a", "sh"), silent=dict.fromkeys(("stat", "access"), "what cannot be examined is no match")),
    Scenario("yes", ("word",), given=("write:40+:32", "splice:40+:32"), vary=rb"(?s).*", keeps=repeats),
    Scenario("uname", ("-a",)),
    Scenario("arch", says=(rb"uname: Could not get info: .",)),
]
