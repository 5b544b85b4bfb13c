"""text.py COMMAND SEED ROUNDS: runs head, tail, wc, hd or cmp on random files with random options, and
compares what it prints and its status with a model that follows the rules literally. Ends at the first
difference."""

import os
import random
import subprocess
import sys
import threading
import time
from pathlib import Path

PIECE = 2046


def pieces(text: bytes) -> list[bytes]:
    """Lines with their newlines, none of them longer than a piece."""
    result, start = [], 0
    while start < len(text):
        end = text.find(b"\n", start, start + PIECE) + 1
        result.append(text[start : end or start + PIECE])
        start += len(result[-1])
    return result


def lines_of(wanted: list[bytes], keep) -> bytes:
    """The pieces, of whose lines `keep` says what is shown."""
    return b"".join(keep(p[:-1]) + b"\n" if p.endswith(b"\n") else keep(p) for p in wanted)


def head(text: bytes, lines: int, count: int) -> bytes:
    def keep(line: bytes) -> bytes:
        if abs(count) >= len(line) or count == 0:
            return line
        return line[:count] if count > 0 else line[: len(line) + count - 1]

    every = pieces(text)
    return lines_of(every[: lines if lines >= 0 else max(0, len(every) + lines)], keep)


def tail(text: bytes, lines: int, count: int) -> bytes:
    def keep(line: bytes) -> bytes:
        if abs(count) >= len(line) or count == 0:
            return line
        return line[len(line) - count - 1 :] if count > 0 else line[-count:]

    every = pieces(text)
    return lines_of(every[max(0, len(every) - lines) if lines >= 0 else -lines :], keep)


def wc(text: bytes) -> tuple[int, int, int, int]:
    # bytes.split() parts words at the same six blanks.
    return text.count(b"\n"), len(text.split()), len(text), max(map(len, text.split(b"\n")))


def hd(text: bytes, skip: int, length: int) -> bytes:
    shown = text[skip : skip + length]
    lines = []
    for place in range(0, len(shown), 16):
        line = shown[place : place + 16]
        digits = [f"{byte:02x} " for byte in line]
        digits.insert(8, " ") if len(digits) >= 8 else None
        letters = "".join(chr(byte) if 32 <= byte < 127 else "." for byte in line)
        lines.append(f"{skip + place:08x}  {''.join(digits):49} |{letters}|\n")
    return ("".join(lines) + f"{skip + len(shown):08x}\n").encode()


def cmp(text1: bytes, text2: bytes, skip1: int, skip2: int, options: str) -> tuple[bytes, int]:
    """Byte by byte, with names a and b."""
    streams = [iter(text1), iter(text2)]
    now = [next(stream, -1) for stream in streams]
    out, status, byte, line = b"", 0, 1, 1
    for side, skip in enumerate((skip1, skip2)):
        while skip > 0 and -1 not in now:
            now[side] = next(streams[side], -1)
            skip -= 1
    while -1 not in now:
        if now[0] != now[1]:
            if "s" in options:
                return b"", 1
            if "l" not in options:
                out = b"a b differ: byte %d, line %d" % (byte, line)
                if "b" in options:
                    out += b" is %d %c %d %c" % (now[0], now[0], now[1], now[1])
                return out + b"\n", 1
            out += b"%d %d %d\n" % (byte, *now)
            status = 1
        line += now[0] == 10
        byte += 1
        now = [next(stream, -1) for stream in streams]
    if now == [-1, -1]:
        return out, status
    return out if "s" in options else out + b"cmp: EOF on " + (b"a\n" if now[0] == -1 else b"b\n"), 1


# Random cases: each returns the arguments, the bytes for standard input or None, the output and the status.
def draw_text(draw: random.Random) -> bytes:
    longest = draw.choice((3, 80, 300, 2200, 9000))
    limit, odds = draw.choice((0, 100, 5000, 100000)), draw.choice((0, 0.001, 0.1))
    text, size = [], 0
    while size < limit:
        length = draw.randrange(longest)
        if draw.random() < odds:
            length = PIECE * draw.randrange(4) + draw.randrange(5)
        text.append(draw.randbytes(4) * (length // 4) + draw.choice((b"\n", b"\n", b" \n", b"\t\0")))
        size += len(text[-1])
    return b"".join(text)


def draw_lines(draw: random.Random, model):
    text = draw_text(draw)
    lines = draw.choice((0, 1, -1, 5, -5, 1500, -1500)) + draw.randrange(3)
    count = draw.choice((0, 0, 1, -1, 10, -10, 2045, -2044))
    arguments = [*(["-n", str(lines)] if lines != 10 else []), "-c", str(count)]
    output = model(text, lines, count)
    if draw.random() < 0.5:
        return arguments, text, output, 0
    Path("a").write_bytes(text)
    return [*arguments, "a"], None, output, 0


def draw_wc(draw: random.Random):
    text = draw_text(draw)
    numbers = [str(number) for number in wc(text)]
    width = max(map(len, numbers))
    row = " ".join(f"{number:>{width}}" for number in numbers)
    return ["-L", "-lc", "-w"], text, f"{row}\n".encode(), 0


def draw_hd(draw: random.Random):
    text = draw_text(draw)[:50000]
    Path("a").write_bytes(text)
    skip, length = draw.randrange(20000), draw.choice((0, 1, 100, 8192, 100000))
    skip = min(skip, len(text))
    return ["-s", str(skip), "-n", hex(length), "a"], None, hd(text, skip, length), 0


def draw_cmp(draw: random.Random):
    text1 = bytearray(draw_text(draw)[:30000])
    skip1, skip2 = (draw.choice((0, 1, 5, draw.randrange(20000))) for _ in range(2))
    text2 = draw.randbytes(skip2) + text1[skip1:]
    for _ in range(draw.randrange(4)):
        if text1:
            text1[draw.randrange(len(text1))] ^= 1 << draw.randrange(8)
    if draw.random() < 0.5:
        text2 = text2[: draw.randrange(len(text2) + 1)]
    Path("a").write_bytes(text1)
    Path("b").write_bytes(text2)
    option = draw.choice(("", "b", "l", "s", "bl", "bs"))
    arguments = [*(["-" + option] if option else []), "a", "b", str(skip1), hex(skip2)]
    return arguments, None, *cmp(bytes(text1), bytes(text2), skip1, skip2, option)


CASES = {
    "head": lambda draw: draw_lines(draw, head),
    "tail": lambda draw: draw_lines(draw, tail),
    "wc": draw_wc,
    "hd": draw_hd,
    "cmp": draw_cmp,
}


def feed(pipe: int, text: bytes, draw: random.Random) -> None:
    """In parts, some of which wait until the one before was read."""
    try:
        while text:
            size = draw.choice((1, 100, 5000, 70000))
            os.write(pipe, text[:size])
            text = text[size:]
            time.sleep(draw.choice((0, 0, 0.0005)))
    except BrokenPipeError:
        pass
    os.close(pipe)


def run(command: str, arguments: list[str], text: bytes | None, draw: random.Random) -> tuple[bytes, int]:
    words = ["garnel", command, *arguments]
    if text is None or draw.random() < 0.5:
        Path("in").write_bytes(text or b"")
        with open("in", "rb") as file:
            done = subprocess.run(words, stdin=file, capture_output=True)
    else:
        reading, writing = os.pipe()
        thread = threading.Thread(target=feed, args=(writing, text, draw))
        thread.start()
        done = subprocess.run(words, stdin=reading, capture_output=True)
        os.close(reading)
        thread.join()
    sys.stdout.write(done.stderr.decode())
    return done.stdout, done.returncode


def main() -> int:
    command, seed, rounds = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    for number in range(rounds):
        draw = random.Random(f"{seed} {number}")
        arguments, text, *expected = CASES[command](draw)
        result = run(command, arguments, text, draw)
        if list(result) != expected:
            Path("got").write_bytes(result[0])  # to be looked at
            Path("expected").write_bytes(expected[0])
            print(f"seed {seed}, round {number}: {command} {arguments}: status {result[1]}")
            return 1
    print(f"{command}, seed {seed}: {rounds} rounds agree")
    return 0


if __name__ == "__main__":
    sys.exit(main())
