// time: runs a command and tells how long that took.
// Scripts rely on: options end at the first operand; the report goes to standard error; the status is the command's,
// 128 and the signal when one killed it; 125, 126 and 127 are those of env.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <initializer_list>

#include "app/tools.h"
#include "common/cli.h"
#include "common/start.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"

namespace {

constexpr const char* usage[] = {
    "Usage: time [OPTION]... COMMAND [ARG]...\n",
    "Run COMMAND, then print its real, user and system time in seconds on standard error.\n",
    "\n",
    "  -p, --portability  print them as POSIX has it, in hundredths\n",
    "  -v, --verbose      also print peak memory, page faults and context switches\n",
};

constexpr e_longoption long_options[] = {
    {"--portability", 'p'},
    {"--verbose", 'v'},
    {nullptr, 0},
};

struct Options {
    bool posix = false;
    bool verbose = false;
};

// One line of the report.
void print_time(const Options& opt, const char* label, long long seconds, long microseconds) {
    if (opt.posix) {
        fprintf(stderr, "%s %lld.%02ld\n", label, seconds, microseconds / 10000);
    } else {
        fprintf(stderr, "%-9s%lld.%03ld\n", label, seconds, microseconds / 1000);
    }
}

void report(const Options& opt, const timespec& begin, const timespec& end, const rusage& used) {
    long long seconds = end.tv_sec - begin.tv_sec;
    long nanoseconds = end.tv_nsec - begin.tv_nsec;
    if (nanoseconds < 0) {
        nanoseconds += 1000000000;
        seconds--;
    }
    print_time(opt, "real", seconds, nanoseconds / 1000);
    print_time(opt, "user", used.ru_utime.tv_sec, static_cast<long>(used.ru_utime.tv_usec));
    print_time(opt, "sys", used.ru_stime.tv_sec, static_cast<long>(used.ru_stime.tv_usec));
    if (!opt.verbose) return;
    fprintf(stderr,
            "memory   %ld KiB at most\n"
            "faults   %ld minor, %ld major\n"
            "switches %ld voluntary, %ld involuntary\n",
            used.ru_maxrss, used.ru_minflt, used.ru_majflt, used.ru_nvcsw, used.ru_nivcsw);
}

}  // namespace

int gn_time(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'p': opt.posix = true; break;
        case 'v': opt.verbose = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "time: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) {
        cli::error("time: missing operand\n");
        return exit_not_started;
    }

    // What the terminal sends to stop the command must not stop the report of it.
    sigset_t defaults;
    sigemptyset(&defaults);
    for (int interrupt : {SIGINT, SIGQUIT}) {
        if (signal(interrupt, SIG_IGN) == SIG_DFL) sigaddset(&defaults, interrupt);
    }
    const e_program program{.arguments = argv, .defaults = &defaults};
    e_failure failure;
    timespec begin{}, end{};
    clock_gettime(CLOCK_MONOTONIC, &begin);
    const pid_t child = e_spawn(program, &failure);
    if (child < 0) return cannot_start("time", program, failure);

    e_result result;
    if (!e_wait(child, &result)) {
        cli::error("time: %s: %s\n", argv[0], gn_strerror(errno));
        return exit_not_started;
    }
    clock_gettime(CLOCK_MONOTONIC, &end);
    report(opt, begin, end, result.usage);
    return result.status;
}
