"""Commands that change trees and files."""

import getpass

from workload import GIB, Compare, directory_tree, random_bytes, write_files

TREE = directory_tree("written", 2_000, 100_000, write_files)
SMALL = directory_tree("written.20k", 400, 20_000, write_files)
BYTES = random_bytes("bytes.1g", GIB)
USER = getpass.getuser()
NEW = " ".join(f"memory/{number}" for number in range(10_000))


def copy_of(data: str) -> str:
    return f"rm -rf memory/t; cp -r {data} memory/t"


KEPT = "[ -e memory/t ] || " + copy_of(TREE.name)


WORKLOADS = [
    Compare("rm -r, 100,000 files", "rm -r memory/t", "rm -r memory/t", 1.0, prepare=copy_of(TREE.name), data=(TREE,)),
    Compare(
        "cp -r, 100,000 files",
        "cp -r memory/t memory/new",
        "cp -r memory/t memory/new",
        0.8,
        prepare=f"rm -rf memory/new; {KEPT}",
        data=(TREE,),
    ),
    Compare(
        "cp, 1 GiB", "cp bytes.1g memory/new", "cp bytes.1g memory/new", 1.0, prepare="rm -f memory/new", data=(BYTES,)
    ),
    Compare(
        "mv to another file system, 20,000 files",
        "mv memory/t elsewhere/t",
        "mv memory/t elsewhere/t",
        0.6,
        elsewhere=True,
        prepare="rm -rf elsewhere/t; " + copy_of(SMALL.name),
        data=(SMALL,),
    ),
    Compare("chmod -R 755", "chmod -R 755 memory/t", "chmod -R 755 memory/t", 0.8, prepare=KEPT, data=(TREE,)),
    Compare("chmod -R u+x", "chmod -R u+x memory/t", "chmod -R u+x memory/t", 0.8, prepare=KEPT, data=(TREE,)),
    Compare("chown -R", f"chown -R {USER} memory/t", f"chown -R {USER} memory/t", 0.8, prepare=KEPT, data=(TREE,)),
    Compare(
        "touch, 10,000 new files", f"touch {NEW}", f"touch {NEW}", 0.8, prepare="rm -f memory/*"
    ),
]
