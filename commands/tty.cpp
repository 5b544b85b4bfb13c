// tty: prints the name of the terminal on standard input.
// Scripts rely on: "not a tty" goes to standard output and follows every failure; -s tells a failure that is
// not just another kind of file apart, by status 4; operands are ignored.

#include <cerrno>

#include <termios.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: tty [OPTION]...\n",
    "Print the file name of the terminal connected to standard input\n",
    "\n",
    "    -s    --silent, --quiet     print nothing, only return an exit status\n",
};

constexpr e_longoption _gn_tty_longs[] = {
    {"--silent", 's'},
    {"--quiet", 's'},
    {nullptr, 0},
};

// 0 when standard input is a terminal, otherwise the reason why not. Some C libraries' isatty and ttyname say
// ENOTTY for most reasons, such as a line that was hung up; this one is the system's own.
int refusal() {
    termios settings;
    return tcgetattr(STDIN_FILENO, &settings) == 0 ? 0 : errno;
}

int tell(int refused) {
    if (refused == 0) return 0;
    return refused == ENOTTY ? 1 : 4;
}

int print(int refused) {
    const char* name = nullptr;
    if (refused == 0) {
        name = ttyname(STDIN_FILENO);
        if (name == nullptr) refused = errno;
    }
    if (name == nullptr && refused != ENOTTY) cli::error("tty: standard input: %s\n", gn_strerror(refused));
    puts(name != nullptr ? name : "not a tty");
    return output::finish("tty", name != nullptr ? 0 : 1);
}

}  // namespace

int gn_tty(int argc, char** argv) {
    bool silent = false;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    e_setlongoption(&state, _gn_tty_longs);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 's': silent = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "tty: unknown switch: -%c\n", c);
        }
    }
    return silent ? tell(refusal()) : print(refusal());
}
