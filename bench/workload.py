"""What a workload is, and makers of test data that several areas use."""

import os
import random
import subprocess
from collections.abc import Callable
from dataclasses import dataclass
from pathlib import Path

KIB, MIB, GIB = 1 << 10, 1 << 20, 1 << 30


@dataclass(frozen=True)
class Data:
    """A file or directory below build/bench/data, made when it is first needed and then kept."""

    name: str
    size: int  # what it takes on the disk, roughly, in bytes
    make: Callable[[Path], None]  # is given the path


@dataclass(frozen=True)
class Compare:
    """Our command against another one. Both run in build/bench/data, in turns, with a fixed environment."""

    name: str
    ours: str  # command line; the first word is one of our commands
    theirs: str  # the same for a tool of the host, or for a program of this directory
    goal: float | None = None  # ours / theirs at most; None: only shown
    output: str = ""  # a shell's words for it, "| sink BYTES" or "> out"; without: /dev/null and no shell
    data: tuple[Data, ...] = ()
    runs: int = 1  # in each round
    room: int = 0  # bytes of disk for the output
    needs: str = "coreutils"  # the Debian package of their tool
    elsewhere: bool = False  # the directory of this name is another file system in memory; takes root
    prepare: str = ""  # a shell's command that makes what a run consumes; not measured


@dataclass(frozen=True)
class Growth:
    """Time and peak memory of our command as its input grows. Has no goal."""

    name: str
    unit: str
    points: tuple[tuple[int, tuple[str, ...]], ...]  # (units of input, the words of the command line)
    data: tuple[Data, ...] = ()


def random_bytes(name: str, size: int) -> Data:
    def make(path: Path) -> None:
        with path.open("wb") as file:
            subprocess.run(["head", "-c", str(size), "/dev/urandom"], stdout=file, check=True)

    return Data(name, size, make)


def text(name: str, size: int) -> Data:
    """Lines of 0 to 12 words; after a MiB they begin again."""

    def make(path: Path) -> None:
        draw = random.Random(1)
        words = ["".join(draw.choices("etaoinshrdlu", k=draw.randint(1, 9))) for _ in range(1000)]
        lines = "".join(" ".join(draw.choices(words, k=draw.randint(0, 12))) + "\n" for _ in range(40000))
        block = lines.encode()[:MIB]
        with path.open("wb") as file:
            for _ in range(size // len(block)):
                file.write(block)

    return Data(name, size, make)


def fill_directory(path: Path, count: int, draw: random.Random) -> None:
    """Files without blocks, but of different sizes and times, so that every order has something to sort."""
    path.mkdir()
    for number in range(count):
        file = os.path.join(path, f"f{number:06}")
        os.mknod(file, 0o644)
        os.truncate(file, draw.randrange(MIB))
        time = draw.randrange(1_000_000_000, 1_700_000_000)
        os.utime(file, (time, time))


def flat_directory(name: str, count: int) -> Data:
    return Data(name, count * 400, lambda path: fill_directory(path, count, random.Random(1)))


def write_files(path: Path, count: int, draw: random.Random) -> None:
    """Small files with something in them."""
    path.mkdir()
    for number in range(count):
        (path / f"f{number:06}").write_bytes(b"x" * draw.randrange(4 * KIB))


def directory_tree(
    name: str, directories: int, files: int, fill: Callable[[Path, int, random.Random], None] = fill_directory
) -> Data:
    """Two levels: every hundredth directory holds the 99 that follow it. Each has its share of the files."""

    def make(path: Path) -> None:
        draw = random.Random(1)
        path.mkdir()
        for number in range(directories):
            upper = path / f"d{number // 100:02}"
            here = upper if number % 100 == 0 else upper / f"e{number % 100:02}"
            fill(here, files // directories, draw)

    per_file = 400 if fill is fill_directory else 4 * KIB
    return Data(name, files * per_file + directories * 4 * KIB, make)
