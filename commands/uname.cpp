// uname: prints what the system calls itself.
// Scripts rely on: the fields come in a fixed order, whatever the order of the options; options end at the
// first operand, which is an error.

#include <cerrno>

#include <sys/utsname.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: uname [OPTION]...\n",           "Print certain system information.\n",
    "With no OPTION, same as -s\n",         "\n",
    "    -a    print all information\n",    "    -s    print the kernel name\n",
    "    -n    print the node name\n",      "    -r    print the kernel release\n",
    "    -v    print the kernel version\n", "    -m    print the machine hardware name\n",
};

struct Options {
    bool none = true;
    bool all = false;
    bool system = false;
    bool node = false;
    bool release = false;
    bool version = false;
    bool machine = false;
};

void print(const utsname& names, const Options& opt) {
    const char* separator = "";
    auto print_if = [&separator](bool wanted, const char* field) {
        if (!wanted) return;
        printf("%s%s", separator, field);
        separator = " ";
    };
    print_if(opt.none || opt.system || opt.all, names.sysname);
    print_if(opt.node || opt.all, names.nodename);
    print_if(opt.release || opt.all, names.release);
    print_if(opt.version || opt.all, names.version);
    print_if(opt.machine || opt.all, names.machine);
    printf("\n");
}

}  // namespace

int gn_uname(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'a': opt.all = true; break;
        case 's': opt.system = true; break;
        case 'n': opt.node = true; break;
        case 'r': opt.release = true; break;
        case 'v': opt.version = true; break;
        case 'm': opt.machine = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "uname: unknown switch: -%c\n", c);
        }
        opt.none = false;
    }
    if (argc > 0) return cli::fail("uname: excess argument: \"%s\"\n", argv[0]);

    utsname names;
    if (uname(&names) < 0) return cli::fail("uname: Could not get info: %s\n", gn_strerror(errno));
    print(names, opt);
    return output::finish("uname", 0);
}
