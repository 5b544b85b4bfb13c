// rmdir: removes empty directories.
// Scripts rely on: the first failure ends the run, and the operands behind it are not mentioned; -i keeps
// every failure, whatever its reason, from counting, but not from being reported; -p cuts the path as text,
// so that a trailing separator makes it try the same directory twice, and a leading one the empty path.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>

#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: rmdir [OPTION]... DIRECTORY...\n",
    "Remove the DIRECTORY(ies), if they are empty.\n",
    "\n",
    "    -i    ignore each failure that is solely because a directory is non-empty\n",
    "    -p    remove DIRECTORY and its ancestors\n",
    "    -v    output a diagnostic for every directory processed\n",
};

struct Options {
    bool ignore = false;
    bool parents = false;
    bool verbose = false;
};

// 0, or 1 for a failure that counts.
int gn_rmdir_rmdir(const char* path, bool ignore, bool verbose) {
    if (rmdir(path) != 0) {
        cli::error("rmdir: failed to remove '%s': %s\n", path, gn_strerror(errno));
        return ignore ? 0 : 1;
    }
    if (verbose) printf("'%s': directory removed\n", path);
    return 0;
}

// Cuts a path at its last separator, together with those immediately before it. False when there is none.
bool cut_last_component(char* path) {
    char* cut = strrchr(path, '/');
    if (cut == nullptr) cut = strrchr(path, '\\');
    if (cut == nullptr) return false;
    while (cut != path && (cut[-1] == '/' || cut[-1] == '\\')) cut--;
    *cut = '\0';
    return true;
}

// False after a message about something that counts.
bool remove_with_ancestors(const char* operand, const Options& opt) {
    CString path(strdup(operand));
    if (!path) {
        cli::error("rmdir: '%s': out of memory\n", operand);
        return false;
    }
    do {
        if (gn_rmdir_rmdir(path.get(), opt.ignore, opt.verbose) != 0) return false;
    } while (cut_last_component(path.get()));
    return true;
}

}  // namespace

int gn_rmdir(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'i': opt.ignore = true; break;
        case 'p': opt.parents = true; break;
        case 'v': opt.verbose = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "rmdir: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("rmdir: missing operand\n");

    for (const char* operand : std::span(argv, static_cast<size_t>(argc))) {
        const bool ok = opt.parents ? remove_with_ancestors(operand, opt)
                                    : gn_rmdir_rmdir(operand, opt.ignore, opt.verbose) == 0;
        if (!ok) return output::finish("rmdir", 1);
    }
    return output::finish("rmdir", 0);
}
