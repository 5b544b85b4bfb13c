"""sort, and the commands that copy in blocks."""

import random
import subprocess
from pathlib import Path

from workload import GIB, MIB, Compare, Data, Growth, random_bytes

LETTERS = bytes(range(ord("a"), ord("z") + 1)) + bytes(range(ord("A"), ord("Z") + 1)) + b"0123456789  "


def random_lines(name: str, size: int, seed: int = 1) -> Data:
    """Lines of 0 to 119 letters, digits and blanks."""

    def make(path: Path) -> None:
        draw = random.Random(seed)
        letters = bytes(LETTERS[i % len(LETTERS)] for i in range(256))
        with path.open("wb") as file:
            while file.tell() < size:
                block = draw.randbytes(MIB).translate(letters)
                lines, at = [], 0
                while at < len(block):
                    end = at + draw.randint(0, 119)
                    lines.append(block[at:end] + b"\n")
                    at = end
                file.write(b"".join(lines))

    return Data(name, size, make)


def short_lines(name: str, count: int) -> Data:
    def make(path: Path) -> None:
        draw = random.Random(1)
        path.write_text("".join(f"{draw.randrange(10_000_000)}\n" for _ in range(count)))

    return Data(name, count * 8, make)


def sort_file(source: Path, result: Path) -> None:
    subprocess.run(["sort", "-o", result, source], env={"LC_ALL": "C", "PATH": "/usr/bin:/bin"}, check=True)


def sorted_lines(name: str, source: Data) -> Data:
    def make(path: Path) -> None:
        original = path.parent / source.name
        if not original.exists():
            source.make(original)
        sort_file(original, path)

    return Data(name, source.size, make)


def sorted_parts(name: str, size: int, count: int) -> Data:
    def make(path: Path) -> None:
        path.mkdir()
        for number in range(count):
            part = path / f"{number:02}"
            random_lines(part.name, size // count, number).make(part)
            sort_file(part, part)

    return Data(name, size, make)


BYTES = random_bytes("bytes.1g", GIB)
LINES_10 = random_lines("lines.10m", 10 * MIB)
LINES = random_lines("lines.100m", 100 * MIB)
LINES_1000 = random_lines("lines.1000m", 1000 * MIB)
SHORT = short_lines("lines.short", 1_000_000)
SORTED = sorted_lines("lines.sorted", LINES)
PARTS = sorted_parts("lines.parts", 100 * MIB, 50)
PART_NAMES = " ".join(f"lines.parts/{number:02}" for number in range(50))

WORKLOADS = [
    Compare("sort 100 MiB", "sort lines.100m", "sort --parallel=1 lines.100m", 0.7, data=(LINES,)),
    Compare("sort -S 256M, 100 MiB", "sort -S 256M lines.100m", "sort --parallel=1 lines.100m", 0.7, data=(LINES,)),
    Compare("sort 1,000,000 short lines", "sort lines.short", "sort --parallel=1 lines.short", 0.7, data=(SHORT,)),
    Compare("sort 100 MiB in order", "sort lines.sorted", "sort --parallel=1 lines.sorted", 0.7, data=(LINES, SORTED)),
    Compare("sort -f, 100 MiB", "sort -f lines.100m", "sort -f -s --parallel=1 lines.100m", 1.0, data=(LINES,)),
    Compare("sort -m of 50 files", f"sort -m {PART_NAMES}", f"sort -m --parallel=1 {PART_NAMES}", 0.7, data=(PARTS,)),
    Compare("tee 1 GiB to two files", "tee out", "tee out", 1.0, "> out2 < bytes.1g; rm out2", (BYTES,), room=2 * GIB),
    *[
        Compare(f"dd {sizes}, 1 GiB", f"dd {sizes} if=bytes.1g of=/dev/null",
                f"dd {sizes} if=bytes.1g of=/dev/null status=none", 1.0, data=(BYTES,))
        for sizes in ("bs=1M", "bs=512", "ibs=512 obs=1M")
    ],
    Compare("dd bs=1M, 1 GiB to a file", "dd bs=1M if=bytes.1g of=out", "dd bs=1M if=bytes.1g of=out status=none",
            1.0, "> /dev/null", (BYTES,), room=GIB),
    Growth("sort", "byte", tuple((data.size, ("sort", data.name)) for data in (LINES_10, LINES, LINES_1000)),
           (LINES_10, LINES, LINES_1000)),
]
