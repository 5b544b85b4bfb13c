// false: fails.
// Scripts rely on: every option and operand is ignored, also unknown ones; "--help" fails too.

#include "app/tools.h"
#include "common/cli.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: false [--help] [ignored command line argument]...\n",
    "Exit with a status code indicating failure.\n",
    "NOTE: your shell may have its own version of false, which\n",
    "usually supersedes the version described here.\n",
};

}  // namespace

int gn_false(int argc, char** argv) {
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        if (c == e_help) {
            cli::help(usage);
            break;
        }
    }
    return 1;
}
