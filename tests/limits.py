"""limits.py GARNEL: every command with little room, and with far too many arguments.

Each command runs with 64 descriptors, in 32 MiB of address space, on a stack of 64 KiB, and under a file size
limit with the signal of that limit ignored and not: it ends in time, by no signal but that one, and what it says
begins with its name. Two megabytes of arguments are handled or refused likewise. Commands whose rows in the table
are not READY are left out.
"""

import sys

sys.dont_write_bytecode = True

import os
import re
import resource
import signal
import subprocess
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent / "faults"))
from scenarios import SCENARIOS, Scenario  # noqa: E402
from sweep import lay_out  # noqa: E402

GARNEL = os.path.abspath(sys.argv[1])
SECONDS = 60
MIB = 1 << 20
