// readlink: prints the target of a symbolic link.
// Scripts rely on: the target is cut at 2047 bytes; -f prints whatever is no link, even what does not exist,
// behind the current directory, with its dots and links as they were written; no operand at all shows the
// usage with status 0.

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
    "Usage: readlink [OPTION]... FILE\n",
    "Print value of a symbolic link.\n",
    "\n",
    "    -f    print canonical name if FILE is not a symlink\n",
    "    -q    quiet\n",
    "    -n    do not output the trailing newline\n",
};

constexpr size_t longest = 2047;
constexpr int exit_no_directory = 2;

struct Options {
    bool canonical = false;
    bool quiet = false;
    bool newline = true;
};

int print(const char* text, const Options& opt) {
    printf("%s%s", text, opt.newline ? "\n" : "");
    return output::finish("readlink", 0);
}

int fail(const char* name, const char* reason, const Options& opt, int status) {
    if (!opt.quiet) cli::error("readlink: %s: %s\n", name, reason);
    return status;
}

int print_joined(const char* name, const Options& opt) {
    char directory[longest];
    if (getcwd(directory, sizeof directory) == nullptr) {
        // For a path that is too long even for the system, the C libraries disagree.
        const int error = errno == ENAMETOOLONG ? ERANGE : errno;
        return fail(name, gn_strerror(error), opt, exit_no_directory);
    }
    CString joined(gn_joinpath(directory, name));
    if (!joined) return fail(name, "Not enough space", opt, exit_no_directory);
    return print(joined.get(), opt);
}

}  // namespace

int gn_readlink(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'f': opt.canonical = true; break;
        case 'q': opt.quiet = true; break;
        case 'n': opt.newline = false; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "readlink: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::help(usage);
    if (argc > 1) {
        if (!opt.quiet) cli::error("readlink: extra operand '%s'\n", argv[1]);
        return 1;
    }

    char target[longest + 1];
    const ssize_t size = readlink(argv[0], target, longest);
    if (size >= 0) {
        target[size] = '\0';
        return print(target, opt);
    }
    if (opt.canonical) return print_joined(argv[0], opt);
    return fail(argv[0], gn_strerror(errno), opt, 1);
}
