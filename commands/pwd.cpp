// pwd: prints the current directory.
// Scripts rely on: a directory that has no name, or one longer than the buffer takes, is reported on standard
// output; operands are ignored.

#include <cerrno>

#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: pwd [OPTION]...\n",
    "Print the full filename of the current working directory.\n",
    "\n",
    "    -P    avoid all symlinks\n",
};

}  // namespace

int gn_pwd(int argc, char** argv) {
    bool physical = false;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'P': physical = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }

    char name[2047];
    if (getcwd(name, sizeof name) == nullptr) {
        output::write("pwd: failed to get current working directory\n");
        return output::finish("pwd", 1);
    }
    CString resolved;
    if (physical) {
        resolved = CString(gn_mkabs(name));
        if (!resolved) return cli::fail("pwd: %s\n", gn_strerror(errno));
    }
    printf("%s\n", physical ? resolved.get() : name);
    return output::finish("pwd", 0);
}
