"""Commands that write long streams."""

from workload import GIB, KIB, MIB, Compare, Growth, random_bytes, text

BYTES = random_bytes("bytes.1g", GIB)
TEXT = text("text.200m", 200 * MIB)


def escapes(size: int) -> tuple[str, ...]:
    """An echo of this many bytes of arguments, each as long as the system takes them."""
    return ("echo", "-e", *[r"a\tb\x41\n" * (64 * KIB // 10)] * (size // (64 * KIB)))


WORKLOADS = [
    Compare("cat 1 GiB to a pipe", "cat bytes.1g", "cat bytes.1g", 0.3, f"| sink {GIB}", (BYTES,)),
    Compare("cat 1 GiB to a file", "cat bytes.1g", "cat bytes.1g", 0.8, "> out", (BYTES,), room=GIB),
    Compare("cat -n 200 MiB of text", "cat -n text.200m", "cat -n text.200m", 0.6, data=(TEXT,)),
    Compare("yes, 4 GiB to a pipe", "yes", "yes", 0.4, f"| sink {4 * GIB}"),
    Compare("seq 10000000", "seq 10000000", "seq 10000000", 0.5),
    Compare("seq -w 10000000", "seq -w 10000000", "seq -w 10000000", 0.1),
    Compare("seq 1 3 30000000", "seq 1 3 30000000", "seq 1 3 30000000"),
    Growth("echo -e", "byte", tuple((size, escapes(size)) for size in (64 * KIB, 256 * KIB, MIB))),
]
