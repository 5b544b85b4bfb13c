"""Commands that look at directories."""

from workload import Compare, Growth, directory_tree, flat_directory

SOME = flat_directory("some", 10_000)
MANY = flat_directory("many", 100_000)
MOST = flat_directory("most", 1_000_000)
TREE = directory_tree("tree", 2_000, 100_000)
OPERANDS = " ".join(f"many/f{number:06}" for number in range(2_000))


def growth(*words: str) -> Growth:
    sizes = ((10_000, SOME), (100_000, MANY), (1_000_000, MOST))
    points = tuple((count, ("ls", *words, data.name)) for count, data in sizes)
    return Growth(" ".join(("ls", *words)), "entry", points, (SOME, MANY, MOST))


WORKLOADS = [
    # With colours their ls has to examine every file, as ours always does.
    Compare("ls, 100,000 files", "ls -c many", "ls -1 --color=always many", 0.8, data=(MANY,)),
    Compare("ls -l, 100,000 files", "ls -l many", "ls -l many", 0.45, data=(MANY,)),
    Compare("ls -l -R, 2,000 directories", "ls -l -R tree", "ls -l -R tree", 0.4, data=(TREE,)),
    Compare("tree, 2,000 directories", "tree tree", "tree tree", 0.4, data=(TREE,), needs="tree"),
    Compare("stat, 2,000 operands", f"stat {OPERANDS}", f"stat {OPERANDS}", 0.6, data=(MANY,), runs=10),
    *[
        growth(*form, order, *reverse)
        for form in ((), ("-l",))
        for order in ("-n", "-d", "-s")
        for reverse in ((), ("-i",))
    ],
]
