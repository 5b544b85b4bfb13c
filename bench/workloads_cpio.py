"""Looking into cpio archives."""

import random
from collections.abc import Iterable
from pathlib import Path

from workload import GIB, MIB, Compare, Data


def entry(name: str, mode: int, time: int, data: bytes) -> bytes:
    """In the newc format, padded up to the next header."""
    fields = (1, mode, 0, 0, 1, time, len(data), 0, 0, 0, 0, len(name) + 1, 0)
    header = b"070701" + b"".join(b"%08X" % field for field in fields) + name.encode() + b"\0"
    return header + bytes(-len(header) % 4) + data + bytes(-len(data) % 4)


def archive(name: str, size: int, entries: Iterable[tuple[str, bytes]]) -> Data:
    def make(path: Path) -> None:
        draw = random.Random(1)
        with path.open("wb") as file:
            for name, data in entries:
                file.write(entry(name, 0o100644, draw.randrange(1_000_000_000, 1_700_000_000), data))
            file.write(entry("TRAILER!!!", 0, 0, b""))

    return Data(name, size, make)


def small_files() -> Iterable[tuple[str, bytes]]:
    draw = random.Random(2)
    for number in range(100_000):
        yield f"usr/share/dir{number // 100:04}/file{number:06}.txt", draw.randbytes(draw.randrange(1000))


def large_files() -> Iterable[tuple[str, bytes]]:
    data = random.Random(3).randbytes(10 * MIB)
    return ((f"large/file{number:03}", data) for number in range(102))


SMALL = archive("small.cpio", 64 * MIB, small_files())
LARGE = archive("large.cpio", GIB, large_files())

def listing(ours: str, theirs: str, package: str, goal: float | None = None) -> Compare:
    return Compare(
        f"cpio2 {ours}, 100,000 entries / {theirs.split()[0]}",
        f"cpio2 {ours} small.cpio",
        f"{theirs} --quiet -F small.cpio",
        goal,
        data=(SMALL,),
        runs=3,
        needs=package,
    )


WORKLOADS = [
    listing("list", "cpio -t", "cpio", 0.3),
    listing("list", "bsdcpio -t", "libarchive-tools"),
    listing("list -l", "cpio -tv", "cpio", 0.3),
    listing("list -l", "bsdcpio -tv", "libarchive-tools"),
    Compare(
        "cpio2 cat, 10 MiB out of 1 GiB / cpio",
        "cpio2 cat large.cpio large/file050",
        "cpio -i --quiet --to-stdout -F large.cpio large/file050",
        0.2,
        f"| sink {10 * MIB}",
        (LARGE,),
        needs="cpio",
    ),
]
