// hostname: shows or sets the name of this machine.
// Scripts rely on: a name that cannot be had or set fails without a word; an unknown switch is status 1, and
// a second operand status 2.

#include <cstring>

#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: hostname [NAME]\n",
    "Show or set the system's host name.\n",
};

constexpr size_t buffer_size = 64;

int show() {
    // Whether a name that does not fit is an error, cut, or not even terminated differs between C libraries.
    // Room to spare tells such names, which are an error here.
    char name[4 * buffer_size];
    if (gethostname(name, sizeof name) != 0 || strnlen(name, buffer_size) == buffer_size) return 1;
    printf("%s\n", name);
    return output::finish("hostname", 0);
}

}  // namespace

int gn_hostname(int argc, char** argv) {
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        if (c == e_help) return cli::help(usage);
        return cli::fail("hostname: unknown switch: -%c\n", c);
    }
    if (argc == 0) return show();
    if (argc > 1) {
        cli::error("hostname: extra operand \"%s\"\n", argv[1]);
        return 2;
    }
    return sethostname(argv[0], strlen(argv[0])) == 0 ? 0 : 1;
}
