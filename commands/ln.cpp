// ln: makes a link.
// Scripts rely on: a LINKNAME that is a directory is not looked into; any other number of operands than one
// or two shows the usage with status 0.

#include <cerrno>

#include "app/tools.h"
#include "common/cli.h"
#include "common/paths.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: ln TARGET [LINKNAME]\n",
    "Create a link to TARGET with the name LINKNAME.\n",
    "\n",
    "    -s    make symbolic links instead of hard links\n",
};

}  // namespace

int gn_ln(int argc, char** argv) {
    bool symbolic = false;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 's': symbolic = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "ln: unknown switch: -%c\n", c);
        }
    }
    if (argc != 1 && argc != 2) return cli::help(usage);

    const char* target = argv[0];
    const char* name = argc == 2 ? argv[1] : base_name(target);
    if ((symbolic ? symlink_wrap(target, name) : link_wrap(target, name)) != 0) {
        return cli::fail("ln: failed to create %s link: %s\n", symbolic ? "symbolic" : "hard",
                         gn_strerror(errno));
    }
    return 0;
}
