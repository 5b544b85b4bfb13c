"""Start-up: what a script pays for every line."""

from workload import Compare

RUNS = 150

WORKLOADS = [
    Compare("start-up: true", "true", "true", goal=0.3, runs=RUNS),
    Compare("start-up: true / empty process", "true", "empty", goal=1.25, runs=RUNS),
    Compare("start-up: echo hi", "echo hi", "echo hi", goal=0.3, runs=RUNS),
    Compare("start-up: echo hi / empty process", "echo hi", "empty", goal=1.25, runs=RUNS),
]
