// sleep: waits.
// Scripts rely on: all operands add up and share the one unit, of which the last given wins; numbers are not
// checked; the longest wait is a little under 2^31 milliseconds, and a longer one fails silently without -v;
// messages, that of an unknown switch too, go to standard output.

#include <cstdint>
#include <cstdlib>
#include <span>

#include "app/tools.h"
#include "common/cli.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: sleep [OPTION]... NUMBER...\n",
    "Sleep for the specified number of seconds.\n",
    "\n",
    "    -d    Interpret NUMBER as days.\n",
    "    -h    Interpret NUMBER as hours.\n",
    "    -m    Interpret NUMBER as minutes.\n",
    "    -s    Interpret NUMBER as seconds (default).\n",
    "    -t    Interpret NUMBER as tenths of second.\n",
    "    -v    Verbosity mode (show error messages).\n",
};

// The tick counter's 31 bits with some room left: a wait near the limit must not wrap.
constexpr uint64_t longest_wait = 2147480000;

struct Options {
    uint64_t unit = 1000;  // milliseconds
    bool verbose = false;
};

}  // namespace

int gn_sleep(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'd': opt.unit = 86400000; break;
        case 'h': opt.unit = 3600000; break;
        case 'm': opt.unit = 60000; break;
        case 's': opt.unit = 1000; break;
        case 't': opt.unit = 100; break;
        case 'v': opt.verbose = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::help(usage);

    // Sum and product wrap as two's complement numbers do; a product that wrapped negative is too long.
    uint64_t total = 0;
    for (const char* number : std::span(argv, static_cast<size_t>(argc))) {
        total += static_cast<uint64_t>(strtoll(number, nullptr, 10));
    }
    if (static_cast<int64_t>(total) < 0) return 0;

    uint64_t interval = opt.unit * total;
    if (interval > longest_wait) {
        if (opt.verbose) printf("sleep: interval too long\n");
        return 1;
    }
    TickSleep(static_cast<uint32_t>(interval));
    return 0;
}
