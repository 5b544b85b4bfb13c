"""What sweep.py plays: one to three scenarios for every command."""

from collections.abc import Callable
from dataclasses import dataclass, field


@dataclass(frozen=True)
class Run:
    """What there was to see of a run."""

    status: int  # below 0: the signal
    hangs: bool
    out: bytes
    err: bytes
    before: dict[str, tuple]  # files before and after; the data is the last field
    files: dict[str, tuple]
    calls: dict[str, int]
    met: bool
    left_open: list[str]


def nothing_to_keep(_run: Run, _routine: str, _way: str) -> list[str]:
    return []


@dataclass(frozen=True, eq=False)
class Scenario:
    command: str
    words: tuple[str, ...] = ()
    files: dict[str, bytes | str | None] = field(default_factory=dict)  # data, target of a link, or a directory
    stdin: bytes = b""
    given: tuple[str, ...] = ()  # faults that are always there
    status: int = 0
    statuses: frozenset[int] = frozenset({1})  # that a fault may lead to
    says: tuple[bytes, ...] = ()  # lines beside those that begin with the name
    # Routines whose failure shows in the output alone, with the reason.
    silent: dict[str, str] = field(default_factory=dict)
    stops_at: dict[str, str] = field(default_factory=dict)  # routines that are not tried again, with the reason
    vary: bytes = b""  # what is different every time
    may_leave: str = ""
    keeps: Callable[[Run, str, str], list[str]] = nothing_to_keep


def data(run_files: dict[str, tuple], name: str) -> bytes | None:
    return run_files[name][-1] if name in run_files else None


LINES = b"".join(b"line %d\n" % (number * 7919 % 1000) for number in range(300))
BIG = bytes(number * number % 251 for number in range(200_000))


def source_stays(*names: str) -> Callable[[Run, str, str], list[str]]:
    def keeps(run: Run, _routine: str, _way: str) -> list[str]:
        return [f"{name} is not what it was" for name in names if run.files.get(name) != run.before[name]]

    return keeps


CAT = {
    "read": "reading that fails ends an operand without a word",
    "write": "what a reader does not take is none of cat's business",
    "splice": "as for writing",
    "copy": "as for writing",
}
SCENARIOS = [
    Scenario("cat", ("a", "b"), {"a": LINES, "b": BIG}, silent=CAT),
    Scenario("cat", ("-n", "a", "-"), {"a": LINES}, stdin=LINES, silent=CAT),
    Scenario("cp", ("a", "b"), {"a": LINES}, keeps=source_stays("a")),
    Scenario("sort", ("a",), {"a": LINES}, keeps=source_stays("a")),
]
