// sync: has the system write everything that it holds back to the disks.

#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: sync [OPTION]...\n",
    "Force changed blocks to disk.\n",
};

}  // namespace

int gn_sync(int argc, char** argv) {
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "sync: unknown switch: -%c\n", c);
        }
    }
    if (argc > 0) return cli::fail("sync: extra operand '%s'\n", argv[0]);
    sync();
    return 0;
}
