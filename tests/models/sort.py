"""sort.py COUNT [SEED]: garnel sort against a model on random inputs.

The model orders lines step by step and without any cleverness: lines are inserted one by one into a list by a
binary search, the list is a run when the memory budget is used up, and a merge looks at the head of every run
for every line. What the command prints, and how it ends, must be the same."""

import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

LINE_BUFFER = 2048
TEMPORARY = "TEMPORARY"  # stands for the name of any temporary file
COST = 9  # of a line, beside its bytes

BLANKS = b" \t\n\v\f\r"


def pieces(data):
    """Lines as they are read: at most LINE_BUFFER - 1 bytes at once, line ends taken off."""
    at = 0
    while at < len(data):
        newline = data.find(b"\n", at, at + LINE_BUFFER - 1)
        end = newline + 1 if newline >= 0 else min(at + LINE_BUFFER - 1, len(data))
        yield data[at:end].rstrip(b"\r\n")
        at = end


class Sort:
    def __init__(self, limit, blanks, fold):
        self.budget = limit
        self.blanks = blanks
        self.fold = fold
        self.held = []
        self.runs = []  # (name, lines)
        self.out = bytearray()
        self.messages = []

    def key(self, line):
        line = line.lstrip(BLANKS) if self.blanks else line
        return line.upper() if self.fold else line  # of bytes: ASCII letters alone

    def take(self, line):
        """False when the budget is used up."""
        if self.budget <= 0:
            return False
        self.budget -= len(line) + COST
        return True

    def position(self, line):
        low, high, place = 0, len(self.held) - 1, 0
        while low <= high:
            middle = (low + high + 1) // 2
            if self.key(self.held[middle]) < self.key(line):
                place = low = middle + 1
            elif self.key(line) == self.key(self.held[middle]) or low + high + 1 < 2:
                return middle
            else:
                high = middle - 1
                place = middle
        return place

    def make_run(self):
        self.runs.append((TEMPORARY, self.held))
        self.budget += sum(len(line) + COST for line in self.held)
        self.held = []

    def read(self, name, data):
        """False after a message."""
        for line in pieces(data):
            if not self.take(line):
                self.make_run()
                if not self.take(line):
                    self.messages.append(f"sort: {name}: out of memory")
                    return False
            self.held.insert(self.position(line), line)
        return True

    def merge(self, status):
        slots = []  # [head, name, what follows]
        for name, lines in self.runs:
            rest = iter(lines)
            head = next(rest, None)
            if head is None or not self.take(head):
                self.messages.append(f"sort: {name}: failed to read file")
                return 2
            slots.append([head, name, rest])
        while slots:
            least = min(range(len(slots)), key=lambda i: self.key(slots[i][0]))
            head, name, rest = slots[least]
            self.out += head + b"\n"
            self.budget += len(head) + COST
            head = slots[least][0] = next(rest, None)
            if head is not None and self.take(head):
                continue
            if head is not None:
                self.messages.append(f"sort: {name}: out of memory while reading line")
                status = 2
            slots[least] = slots[-1]
            slots.pop()
        return status


def expected(inputs, limit, blanks, fold, merge):
    """inputs: (name, bytes) of each operand, or one input named "-" for standard input.
    Returns standard output, the messages and the status."""
    sort = Sort(limit, blanks, fold)
    status = 0
    for name, data in inputs:
        if not merge:
            status = status if sort.read(name, data) else 1
        elif name == "-" and limit == 0 and data:
            return b"", ["sort: -: out of memory", "sort: failed to redirect stdin"], 1
        else:
            sort.runs.append((TEMPORARY if name == "-" else name, list(pieces(data))))
    if sort.held:
        sort.make_run()
    status = sort.merge(status)
    return bytes(sort.out), sort.messages, status


def random_line(draw):
    kind = draw.random()
    if kind < 0.03:
        return bytes(draw.choices(b"xX", k=draw.choice((2045, 2046, 2047, 2048, 2049, 3000, 4094, 5000))))
    any_byte = bytes(range(256)).replace(b"\n", b"")
    letters = draw.choice((b"ab", b"aAbB", b"aA \t", b"aAzZ@[`{\xe1\xc1", b" a\r\v\0", any_byte))
    longest = draw.choice((1, 2, 4, 8, 9, 17, 40))
    return bytes(draw.choices(letters, k=draw.randint(0, longest)))


def random_input(draw, order, count):
    lines = [random_line(draw) for _ in range(count)]
    if lines and draw.random() < 0.5:  # many equal ones
        lines = draw.choices(lines[:10], k=len(lines))
    if draw.random() < 0.3:
        lines = sorted(lines, key=order, reverse=draw.random() < 0.1)
    ends = draw.choice((b"\n", b"\n", b"\r\n"))
    data = ends.join(lines)
    return data + ends if draw.random() < 0.8 else data


def compare(draw, directory, is_large):
    blanks, fold, merge = (draw.random() < chance for chance in (0.4, 0.5, 0.3))
    limit = draw.choice((0, 1, 9, 10, 20, 30, 100, 300, 1000, 3000, 5000, 20000, 1 << 20))
    limit += draw.randint(0, limit)
    if is_large:  # more lines, with equal ones, than are sorted at once
        fold, merge, limit = True, False, 1 << 26

    order = Sort(limit, blanks, fold).key
    count = 1 if is_large else draw.choice((1, 1, 2, 3, 5, 17))
    from_stdin = count == 1 and draw.random() < 0.5
    sizes = (40000,) if is_large else (0, 1, 2, 3, 10, 50, 200)
    names = ["-"] if from_stdin else [f"f{i}" for i in range(count)]
    inputs = [(name, random_input(draw, order, draw.choice(sizes))) for name in names]
    for name, data in inputs:
        pathlib.Path(directory, name).write_bytes(data)

    words = ["garnel", "sort", "-S", str(limit)]
    options = {"-b": blanks, "-f": fold, "-m": merge, "-r": draw.random() < 0.1}
    words += [word for word, wanted in options.items() if wanted]
    to_file = draw.random() < 0.2
    words += ["-o", "out"] if to_file else []
    words += [] if from_stdin else [name for name, _ in inputs]
    with open(os.path.join(directory, inputs[0][0]), "rb") as stdin:
        result = subprocess.run(words, cwd=directory, stdin=stdin, capture_output=True,
                                env={**os.environ, "TEMP": os.path.join(directory, "temp")})
    out = pathlib.Path(directory, "out")
    out = out.read_bytes() if out.exists() else result.stdout
    messages = re.sub(r"\S*/temp/sort\.\d+\.[A-Za-z0-9]{12}(?=:)", TEMPORARY, result.stderr.decode())

    wanted = expected(inputs, limit, blanks, fold, merge)
    found = (out, messages.splitlines(), result.returncode)
    left = os.listdir(os.path.join(directory, "temp"))
    if found == wanted and not left:
        return True
    print("differs:", " ".join(words))
    for name, (ours, its) in zip(("output", "messages", "status"), zip(found, wanted)):
        if ours != its:
            print(f"{name}: {ours!r:.2000}\n  not: {its!r:.2000}")
    print("left behind:", left)
    return False


def main():
    count = int(sys.argv[1])
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    draw = random.Random(seed)
    for number in range(count):
        with tempfile.TemporaryDirectory() as directory:
            os.mkdir(os.path.join(directory, "temp"))
            if not compare(draw, directory, is_large=number == 0):
                print(f"comparison {number} with seed {seed}, inputs:")
                sys.exit(1)
    print(f"{count} comparisons with seed {seed} agree")


if __name__ == "__main__":
    main()
