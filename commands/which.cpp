// which: shows what a command's name stands for in PATH.

#include <cerrno>
#include <cstdlib>
#include <span>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"

namespace {

constexpr const char* usage[] = {
    "Usage: which [OPTION]... NAME...\n",
    "Print the path of the program that each NAME runs.\n",
    "\n",
    "  -a, --all      print all matches in PATH, not only the first\n",
    "  -s, --silent   print nothing, the status alone tells\n",
};

constexpr e_longoption long_options[] = {
    {"--all", 'a'},
    {"--silent", 's'},
    {nullptr, 0},
};

struct Options {
    bool all = false;
    bool silent = false;
};

// False when the name runs nothing, after a message.
bool show(const char* name, const char* path, const Options& opt) {
    e_search search;
    e_initsearch(&search, name, path);
    const char* found = e_nextfound(&search);
    if (found == nullptr) {
        if (!opt.silent) cli::error("which: %s: %s\n", name, gn_strerror(errno));
        return false;
    }
    while (found != nullptr && !opt.silent) {
        output::write(found);
        output::write("\n");
        found = opt.all ? e_nextfound(&search) : nullptr;
    }
    return true;
}

}  // namespace

int gn_which(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'a': opt.all = true; break;
        case 's': opt.silent = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "which: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("which: missing operand\n");

    const char* path = getenv("PATH");
    bool ok = true;
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) ok &= show(name, path, opt);
    return output::finish("which", ok ? 0 : 1);
}
