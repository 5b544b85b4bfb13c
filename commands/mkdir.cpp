// mkdir: makes directories.
// Scripts rely on: without -p the first failure ends the run, and the operands behind it are not mentioned;
// with -p no failure is reported or changes the status; a backslash separates where no slash is left, and is
// a slash in the path from then on; without operands there is the usage with status 0.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>

#include <sys/stat.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: mkdir [OPTION]... DIRECTORY...\n",
    "Create the DIRECTORY(ies), if they are not already exist.\n",
    "\n",
    "    -p    no error if existing, make parent directories as needed\n",
    "    -v    print a message for each created directory\n",
};

// False with errno.
[[nodiscard]] bool make(const char* path, bool verbose) {
    if (mkdir(path, 0755) != 0) return false;
    if (verbose) printf("'%s': directory created\n", path);
    return true;
}

char* find_separator(char* path) {
    char* slash = strchr(path, '/');
    return slash != nullptr ? slash : strchr(path, '\\');
}

// False after a message, which only a lack of memory gives reason to.
bool make_with_parents(const char* operand, bool verbose) {
    CString path(strdup(operand));
    if (!path) {
        cli::error("mkdir: '%s': out of memory\n", operand);
        return false;
    }
    // A parent that cannot be made mostly is there already; whether the next one can be shows by itself.
    for (char* rest = path.get(); (rest = find_separator(rest)) != nullptr;) {
        *rest = '\0';
        (void)make(path.get(), verbose);
        *rest++ = '/';
        rest += strspn(rest, "/\\");
    }
    (void)make(path.get(), verbose);
    return true;
}

}  // namespace

int gn_mkdir(int argc, char** argv) {
    bool parents = false;
    bool verbose = false;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'p': parents = true; break;
        case 'v': verbose = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "mkdir: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::help(usage);

    bool ok = true;
    for (const char* operand : std::span(argv, static_cast<size_t>(argc))) {
        if (parents) {
            ok &= make_with_parents(operand, verbose);
        } else if (!make(operand, verbose)) {
            cli::error("mkdir: '%s': cannot create directory: %s\n", operand, gn_strerror(errno));
            ok = false;
            break;
        }
    }
    return output::finish("mkdir", ok ? 0 : 1);
}
