#!/usr/bin/env python3
"""test_model.py GARNEL COUNT: test and [ against a literal model of their evaluator, on random word lists.

The model recurses just as the rules do. GARNEL_TEST_SEED replaces the fixed seed.
"""

import itertools
import os
import random
import re
import socket
import stat
import sys
import tempfile

INTEGER = {b"-lt": 1, b"-eq": 2, b"-le": 3, b"-gt": 4, b"-ne": 5, b"-ge": 6}
STRING = {b"=": 2, b"==": 2, b"!=": 5}
FILE = (b"-ef", b"-nt", b"-ot")
TYPES = {b"b": stat.S_ISBLK, b"c": stat.S_ISCHR, b"d": stat.S_ISDIR, b"f": stat.S_ISREG, b"p": stat.S_ISFIFO,
         b"S": stat.S_ISSOCK, b"h": stat.S_ISLNK, b"L": stat.S_ISLNK}
ACCESS = {b"e": os.F_OK, b"r": os.R_OK, b"w": os.W_OK, b"x": os.X_OK}


def status(path):
    try:
        return os.stat(path)
    except OSError:
        return None


def number(text):
    digits = re.match(rb"[ \t-\r]*([+-]?[0-9]+)", text)
    return max(-(2**63), min(2**63 - 1, int(digits[1]))) if digits else 0


def ordered(mask, left, right):
    return 0 if left < right and mask & 1 or left == right and mask & 2 or left > right and mask & 4 else 1


def unary(letter, operand):
    if letter in TYPES or letter == b"s":
        found = status(operand)
        return 0 if found and (found.st_size >= 1 if letter == b"s" else TYPES[letter](found.st_mode)) else 1
    if letter in ACCESS:
        return 0 if os.access(operand, ACCESS[letter]) else 1
    if letter in (b"n", b"z"):
        return 0 if (operand == b"") == (letter == b"z") else 1
    return -4


def files(operator, left, right):
    left, right = status(left), status(right)
    if operator == b"-ef":
        left, right = ((s.st_dev, s.st_ino) if s else (0, 0) for s in (left, right))
        return 0 if left == right else 1 if left > right else 2
    left, right = (s.st_mtime_ns if s else 0 for s in (left, right))
    return 0 if left == right or (left > right) == (operator == b"-nt") else 1


def evaluate(words):
    if not words:
        return -3
    if words[0] == b"!":
        words.pop(0)
        result = evaluate(words)
        return result if result < 0 else 1 if result == 0 else 0
    if words[0] == b"(":
        if len(words) < 2:
            return -1
        words.pop(0)
        result = evaluate(words)
        if result < 0 or not words or words[0] != b")":
            return -1
        return rest(words, True, result)
    if words[0] == b"-l":
        if len(words) < 2:
            return -1
        words[1] = b"%d" % len(words[1])
        words.pop(0)
        return evaluate(words)
    first = words[0]
    if len(words) < 2:
        return -1 if first.startswith(b"-") else -5
    operator = words[1]
    if operator in INTEGER or operator in STRING or operator in FILE:
        if len(words) == 2:
            return -1
        used = 3
        if operator in INTEGER:
            if words[2] == b"-l":
                if len(words) == 3:
                    return -1
                right = len(words[3])
                used = 4
            else:
                right = number(words[2])
            value = ordered(INTEGER[operator], number(first), right)
        elif operator in STRING:
            value = ordered(STRING[operator], first, words[2])
        else:
            value = files(operator, first, words[2])
        del words[:used]
    else:
        if not first.startswith(b"-"):
            return -5
        if len(first) > 2:
            return -2
        value = unary(first[1:], operator)
        if value < 0:
            return value
        del words[:2]
    return rest(words, False, value)


def rest(words, skip_one, value):
    if skip_one:
        words.pop(0)
    if not words:
        return value
    if words[0] == b")":
        return value if skip_one else -8
    link = words.pop(0)
    if link == b"-a":
        return evaluate(words) | value
    if link == b"-o":
        result = evaluate(words)
        return result if result < 0 else 1 if value != 0 and result != 0 else 0
    return -2


def expected(words):
    return 0 if not words or words[0] == b"--help" else evaluate(list(words)) & 0xFF


def make_files():
    """Fills the current directory with files of every kind; returns their names and some that are none."""
    for name, content, mode, nanoseconds in (
            (b"empty", b"", 0o0, 0), (b"full", b"x", 0o6755, -1_000_000_001),
            (b"old", b"", 0o444, 1_000_000_000_000_000_001), (b"young", b"", 0o222, 1_000_000_000_000_000_002)):
        with open(name, "wb") as file:
            file.write(content)
        os.chmod(name, mode)
        os.utime(name, ns=(0, nanoseconds))
    os.mkdir(b"dir", 0o1777)
    os.mkfifo(b"fifo")
    socket.socket(socket.AF_UNIX).bind(b"socket")
    os.symlink(b"full", b"link")
    os.symlink(b"nothing", b"dangling")
    os.link(b"full", b"same")
    return sorted(os.listdir(b".")) + [b"nothing", b"", b"/dev/null", b"dir/../link", b"full/x"]


def generator(names):
    """Yields expressions, of which some met with an accident, and noise."""
    integers = [b"0", b"1", b"2", b"-1", b"+1", b" 010", b"9x", b"", b"x", b"9223372036854775807", b"9" * 20]
    strings = [b"", b"a", b"ab", b"\xff", b"=", b"!", b"(", b")", b"-f", b"-a", b"-l", b"-eq", b"]", b"-"]
    letters = [b"-" + bytes([c]) for c in b"bcdfpShLserwxnz"]
    odd = [b"!", b"!", b"(", b")", b"-a", b"-o", b"-l", b"-q", b"-nn", b"-", b"--help", b"]"]
    noise = odd * 3 + integers + strings + letters + names + [*INTEGER, *STRING, *FILE]
    lengths = [[b"-l", word] for word in strings]
    integers = [[word] for word in integers] + lengths
    pick = random.choice
    while True:
        words = []
        while pick((True, False)) or not words:
            words += [pick((b"-a", b"-o"))] * bool(words) + [b"!"] * pick((0, 0, 0, 1, 2))
            words += pick(([pick(strings), pick([*STRING]), pick(strings)], [pick(names), pick(FILE), pick(names)],
                           pick(integers) + [pick([*INTEGER])] + pick(integers), [pick(letters), pick(names)]))
        accident = random.randrange(6)
        if accident == 0:
            words[random.randrange(len(words))] = pick(noise)
        elif accident == 1:
            words.insert(random.randrange(len(words) + 1), pick(noise))
        elif accident == 2:
            del words[random.randrange(len(words))]
        yield words if pick((True, False)) else random.choices(noise, k=random.randrange(8))


def run(garnel, words):
    command = [b"test", *words] if random.random() < 0.5 else [b"[", *words, b"]"]
    quiet = [(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)]
    child = os.posix_spawn(garnel, [b"garnel", *command], os.environ, file_actions=quiet)
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


def main():
    garnel, count = os.path.abspath(sys.argv[1]), int(sys.argv[2])
    seed = int(os.environ.get("GARNEL_TEST_SEED", "20240229"))
    print(f"GARNEL_TEST_SEED={seed}, {count} expressions")
    random.seed(seed)
    agreed = True
    with tempfile.TemporaryDirectory() as directory:
        os.chdir(directory)
        for words in itertools.islice(generator(make_files()), count):
            status, wanted = run(garnel, words), expected(words)
            if status != wanted:
                agreed = False
                print(f"status {status} instead of {wanted}: {words}")
        os.chdir("/")
    sys.exit(0 if agreed else 1)


main()
