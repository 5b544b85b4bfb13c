// realpath: prints absolute names without links and dots.
// Scripts rely on: without -e the last component is printed as it was written, a dot or a link too, and only
// what stands in front of it is resolved; a trailing separator stays; backslashes separate, but not under -e;
// an unknown switch is reported on standard output.

#include <cerrno>
#include <climits>
#include <cstring>
#include <span>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/text.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: realpath [OPTION]... FILE...\n",
    "Print the resolved absolute file name;\n",
    "all but the last component must exist\n",
    "\n",
    "    -e    --canonicalize-existing ; all components of the path must exist\n",
    "    -q    --quiet ; suppress most error messages\n",
    "    -z    --zero ; end each output line with NUL, not newline\n",
};

constexpr e_longoption _gn_realpath_longs[] = {
    {"--canonicalize-existing", 'e'},
    {"--quiet", 'q'},
    {"--zero", 'z'},
    {nullptr, 0},
};

struct Options {
    bool must_exist = false;
    bool quiet = false;
    char line_end = '\n';
};

// Returns false, after a message unless that is not wanted.
bool fail(const char* name, const char* reason, const Options& opt) {
    if (!opt.quiet) cli::error("realpath: %s: %s\n", name, reason);
    return false;
}

bool print_resolved(const char* operand, const Options& opt) {
    if (operand[0] == '\0') return fail("''", gn_strerror(ENOENT), opt);

    char resolved[PATH_MAX];
    if (opt.must_exist) {
        if (realpath_wrap(operand, resolved) == nullptr) return fail(operand, gn_strerror(errno), opt);
        output::write(resolved);
    } else {
        // The prefix gives every path a directory part.
        const bool absolute = operand[0] == '/' || operand[0] == '\\';
        CString path(gn_strcata(absolute ? "/./" : "./", operand));
        if (!path) return fail(operand, "out of memory", opt);
        gn_normalize_separators(path.get());
        char* slash = strrchr(path.get(), '/');
        *slash = '\0';
        if (realpath_wrap(path.get(), resolved) == nullptr) return fail(operand, gn_strerror(errno), opt);
        output::write(resolved);
        if (resolved[strlen(resolved) - 1] != '/') output::write("/");
        output::write(slash + 1);
    }
    output::write({&opt.line_end, 1});
    return true;
}

}  // namespace

int gn_realpath(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    e_setlongoption(&state, _gn_realpath_longs);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'e': opt.must_exist = true; break;
        case 'q': opt.quiet = true; break;
        case 'z': opt.line_end = '\0'; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("realpath: missing operand\n");

    bool ok = true;
    for (const char* operand : std::span(argv, static_cast<size_t>(argc))) ok &= print_resolved(operand, opt);
    return output::finish("realpath", ok ? 0 : 1);
}
