"""How sort orders lines, step by step and without any cleverness: lines are inserted one by one into a list by
a binary search, the list is a run when the memory budget is used up, and a merge looks at the head of every
run for every line. What the command prints, and how it ends, must be the same."""

LINE_BUFFER = 2048
TEMPORARY = "TEMPORARY"  # stands for the name of any temporary file
COST = 9  # of a line, beside its bytes

BLANKS = b" \t\n\v\f\r"


def less(a, b, blanks, fold):
    if blanks:
        a, b = a.lstrip(BLANKS), b.lstrip(BLANKS)
    if fold:
        a, b = a.upper(), b.upper()  # of bytes: ASCII letters alone
    return a < b


def pieces(data):
    """Lines as they are read: at most LINE_BUFFER - 1 bytes at once, line ends taken off."""
    at = 0
    while at < len(data):
        newline = data.find(b"\n", at, at + LINE_BUFFER - 1)
        end = newline + 1 if newline >= 0 else min(at + LINE_BUFFER - 1, len(data))
        yield data[at:end].rstrip(b"\r\n")
        at = end


class Budget:
    def __init__(self, limit):
        self.limit = limit
        self.used = 0

    def is_used_up(self):
        return self.used >= self.limit

    def take(self, line):
        self.used += len(line) + COST

    def give_back(self, line):
        self.used -= len(line) + COST


class Slot:
    def __init__(self, name, lines):
        self.name = name
        self.rest = iter(lines)
        self.head = None
        self.failed = False

    def read(self, budget):
        """True when there is a line; failed when there is one, but no memory for it."""
        self.head = next(self.rest, None)
        self.failed = self.head is not None and budget.is_used_up()
        if self.head is None or self.failed:
            return False
        budget.take(self.head)
        return True


class Sort:
    def __init__(self, limit, blanks=False, fold=False):
        self.budget = Budget(limit)
        self.blanks = blanks
        self.fold = fold
        self.held = []
        self.runs = []  # (name, lines)
        self.out = bytearray()
        self.messages = []

    def less(self, a, b):
        return less(a, b, self.blanks, self.fold)

    def position(self, line):
        if not self.held:
            return 0
        low, high = 0, len(self.held) - 1
        while True:
            middle = (low + high + 1) // 2
            if self.less(self.held[middle], line):
                low = middle + 1
                place = low
            elif not self.less(line, self.held[middle]) or low + high + 1 < 2:
                return middle
            else:
                high = middle - 1
                place = middle
            if high < low:
                return place

    def make_run(self):
        self.runs.append((TEMPORARY, self.held))
        for line in self.held:
            self.budget.give_back(line)
        self.held = []

    def read(self, name, data):
        """False after a message."""
        for line in pieces(data):
            if self.budget.is_used_up():
                self.make_run()
                if self.budget.is_used_up():
                    self.messages.append(f"sort: {name}: out of memory")
                    return False
            self.budget.take(line)
            self.held.insert(self.position(line), line)
        return True

    def merge(self, status):
        if not self.runs:
            return status
        slots = []
        for name, lines in self.runs:
            slot = Slot(name, lines)
            if not slot.read(self.budget):
                self.messages.append(f"sort: {name}: failed to read file")
                return 2
            slots.append(slot)
        while slots:
            least = 0
            for i in range(1, len(slots)):
                if self.less(slots[i].head, slots[least].head):
                    least = i
            slot = slots[least]
            self.out += slot.head + b"\n"
            self.budget.give_back(slot.head)
            if slot.read(self.budget):
                continue
            if slot.failed:
                self.messages.append(f"sort: {slot.name}: out of memory while reading line")
                status = 2
            last = slots.pop()
            if last is not slot:
                slots[least] = last
        return status


def run(inputs, limit, blanks=False, fold=False, merge=False):
    """inputs: (name, bytes) of each operand, or one input named "-" for standard input.
    Returns standard output, the messages and the status."""
    sort = Sort(limit, blanks, fold)
    status = 0
    for name, data in inputs:
        if not merge:
            status = status if sort.read(name, data) else 1
        elif name != "-":
            sort.runs.append((name, list(pieces(data))))
        elif limit == 0 and data:
            return b"", ["sort: -: out of memory", "sort: failed to redirect stdin"], 1
        else:
            sort.runs.append((TEMPORARY, list(pieces(data))))
    if sort.held:
        sort.make_run()
    status = sort.merge(status)
    return bytes(sort.out), sort.messages, status
