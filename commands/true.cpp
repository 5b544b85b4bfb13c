// true: succeeds.
// Scripts rely on: every option and operand is ignored, also unknown ones; "--help" succeeds too.

#include "app/tools.h"
#include "common/cli.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: true [--help] [ignored command line argument]...\n",
    "Exit with a status code indicating success.\n",
    "NOTE: your shell may have its own version of true, which\n",
    "usually supersedes the version described here.\n",
};

}  // namespace

int gn_true(int argc, char** argv) {
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        if (c == e_help) return cli::help(usage);
    }
    return 0;
}
