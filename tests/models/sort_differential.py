"""sort_differential.py COUNT [SEED]: garnel sort against its model on random inputs."""

import os
import random
import re
import subprocess
import sys
import tempfile

import sort_model


def random_line(draw):
    kind = draw.random()
    if kind < 0.03:
        return bytes(draw.choices(b"xX", k=draw.choice((2045, 2046, 2047, 2048, 2049, 3000, 4094, 5000))))
    letters = draw.choice((b"ab", b"aAbB", b"aA \t", b"aAzZ@[`{\xe1\xc1", b" a\r\v\0", bytes(range(256)).replace(b"\n", b"")))
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

    def order(line):
        line = line.lstrip(sort_model.BLANKS) if blanks else line
        return line.upper() if fold else line

    count = 1 if is_large else draw.choice((1, 1, 2, 3, 5, 17))
    from_stdin = count == 1 and draw.random() < 0.5
    sizes = (40000,) if is_large else (0, 1, 2, 3, 10, 50, 200)
    inputs = [("-" if from_stdin else f"f{i}", random_input(draw, order, draw.choice(sizes))) for i in range(count)]
    for name, data in inputs:
        with open(os.path.join(directory, name), "wb") as file:
            file.write(data)

    words = ["garnel", "sort", "-S", str(limit)]
    words += [word for word, wanted in (("-b", blanks), ("-f", fold), ("-m", merge), ("-r", draw.random() < 0.1)) if wanted]
    to_file = draw.random() < 0.2
    words += ["-o", "out"] if to_file else []
    words += [] if from_stdin else [name for name, _ in inputs]
    with open(os.path.join(directory, inputs[0][0]), "rb") as stdin:
        result = subprocess.run(words, cwd=directory, stdin=stdin, capture_output=True,
                                env={**os.environ, "TEMP": os.path.join(directory, "temp")})
    out = result.stdout
    if to_file and os.path.exists(os.path.join(directory, "out")):
        with open(os.path.join(directory, "out"), "rb") as file:
            out = file.read()
    messages = re.sub(r"\S*/temp/sort\.\d+\.[A-Za-z0-9]{12}(?=:)", sort_model.TEMPORARY, result.stderr.decode())

    expected = sort_model.run(inputs, limit, blanks, fold, merge)
    found = (out, messages.splitlines(), result.returncode)
    left = os.listdir(os.path.join(directory, "temp"))
    if found == expected and not left:
        return True
    print("differs:", " ".join(words))
    for name, (ours, its) in zip(("output", "messages", "status"), zip(found, expected)):
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
