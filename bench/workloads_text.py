"""Commands that look at the lines and bytes of files."""

import os
from pathlib import Path

from workload import GIB, MIB, Compare, Data, random_bytes, text


def from_disk(data: Data) -> Data:
    """Makes the first run read the file from the disk, as it is in life: what was just written may lie in
    memory in smaller pieces than what was read."""

    def make(path: Path) -> None:
        data.make(path)
        with path.open("rb") as file:
            os.fsync(file.fileno())
            os.posix_fadvise(file.fileno(), 0, 0, os.POSIX_FADV_DONTNEED)

    return Data(data.name, data.size, make)


TEXT = from_disk(text("text.1g", GIB))
SAME = from_disk(text("same.1g", GIB))
HALF = from_disk(text("text.500m", 500 * MIB))
SHORT = text("text.64m", 64 * MIB)
RANDOM = tuple(random_bytes(name, 8 * MIB) for name in ("random1.8m", "random2.8m"))

# Their cmp looks where its output goes: for /dev/null it counts no lines and ends at the first difference.
# Files that differ are no failure.
TO_FILE = {"output": "> out || true", "room": 256 * MIB}


def same(name: str, command: str, goal: float, *data: Data, **more) -> Compare:
    return Compare(name, command, command, goal, data=data, **more)


WORKLOADS = [
    same("wc -l of 1 GiB", "wc -l text.1g", 0.8, TEXT),
    same("wc of 1 GiB", "wc text.1g", 0.08, TEXT),
    same("cmp of equal 1 GiB", "cmp text.1g same.1g", 0.6, TEXT, SAME, **TO_FILE),
    same("cmp -l of random 8 MiB", "cmp -l random1.8m random2.8m", 0.25, *RANDOM, **TO_FILE),
    same("hd of 64 MiB", "hd text.64m", 0.03, SHORT, needs="bsdextrautils"),
    same("head -n 1000000 of 500 MiB", "head -n 1000000 text.500m", 0.5, HALF, runs=5),
    same("tail -n 1000000 of 500 MiB", "tail -n 1000000 text.500m", 0.5, HALF, runs=5),
    same("head -n -10 of 500 MiB", "head -n -10 text.500m", 0.3, HALF),
    # 1.1 times what start-up itself may take.
    Compare("tail -n 10 of 1 GiB / empty process", "tail -n 10 text.1g", "empty", 1.38, "", (TEXT,), 150),
]
