// mktemp: makes a temporary file or directory and prints its name.
// Scripts rely on: the template's last X, and everything behind it, stays as it is, and what is replaced are
// the X's immediately in front of it; -q silences generating and making alone; a template that --suffix does
// not fit is reported on standard output; --tmpdir without a value keeps the directory, but applies it to the
// template.

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/temporary.h"
#include "common/text.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: mktemp [OPTION]... [TEMPLATE]\n",
    "Create a temporary file or directory.\n",
    "\n",
    "    -d    create a directory, not a file\n",
    "    -q    suppress diagnostics about file/dir-creation failure\n",
    "    -u    do not create anything; merely print a name (unsafe)\n",
    ("    --suffix    SUFF -- append SUFF to TEMPLATE. SUFF must not contain slash. "
     "This option is implied if TEMPLATE does not end in X.\n"),
    "    --tmpdir    PATH -- interpret TEMPLATE relative to DIR\n",
};

constexpr int suffix_option = 1000;
constexpr int tmpdir_option = 1001;

constexpr e_longoption _gn_mktemp_longs[] = {
    {"--suffix", suffix_option},
    {"--tmpdir", tmpdir_option},
    {nullptr, 0},
};

constexpr int exit_no_name = 2;

struct Options {
    bool directory = false;
    bool quiet = false;
    bool name_only = false;
    const char* suffix = nullptr;
    const char* tmpdir = nullptr;
    bool tmpdir_given = false;
};

const char* default_tmpdir() {
    for (const char* variable : {"TMP", "TEMP", "TMPDIR"}) {
        const char* value = getenv(variable);
        if (value != nullptr) return value;
    }
    return "/tmp";
}

// A dangling link exists, too: nothing can be made under its name.
bool exists(const char* path) {
    struct stat status;
    return lstat(path, &status) == 0;
}

// Puts random letters in place of the X's in front of the cut. The name up to the cut must be new, or there
// is none to be had (false). The whole name should be, and nearly always can; if not, the caller finds it
// taken.
bool generate(char* path, size_t cut) {
    const std::span<char> part = temporary::trailing_xs(path, cut);
    if (part.empty()) return false;

    bool is_new = false;
    for (int attempt = 0; attempt < temporary::most_attempts; attempt++) {
        if (!temporary::fill(part)) return false;
        const char behind = path[cut];
        path[cut] = '\0';
        is_new = !exists(path);
        path[cut] = behind;
        if (is_new && !exists(path)) break;
    }
    return is_new;
}

// Whatever came to bear the name in the meantime is not touched.
bool make(const char* path, bool directory) {
    if (directory) return mkdir(path, 0755) == 0;
    UniqueFd file(open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    return file.valid() && file.close();
}

// From a whole template, at whose `cut` its last X stands, to the file and its name on standard output.
int make_temporary(char* path, size_t cut, const Options& opt) {
    const char* kind = opt.directory ? "dir" : "file";
    if (!generate(path, cut)) {
        if (!opt.quiet) cli::error("mktemp: failed to generate temporary name\n");
        return exit_no_name;
    }
    if (!opt.name_only) {
        if (access(path, F_OK) == 0) {
            if (!opt.quiet) cli::error("mktemp: %s: %s exists\n", path, kind);
            return exit_no_name;
        }
        if (!make(path, opt.directory)) {
            if (!opt.quiet) cli::error("mktemp: %s: failed to create %s\n", path, kind);
            return 1;
        }
    }
    printf("%s\n", path);
    return output::finish("mktemp", 0);
}

}  // namespace

int gn_mktemp(int argc, char** argv) {
    Options opt;
    opt.tmpdir = default_tmpdir();

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    e_setlongoption(&state, _gn_mktemp_longs);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'd': opt.directory = true; break;
        case 'q': opt.quiet = true; break;
        case 'u': opt.name_only = true; break;
        case suffix_option:
            opt.suffix = e_opt_getstr(&state);
            if (opt.suffix == nullptr) return 1;
            break;
        case tmpdir_option: {
            const char* given = e_opt_getstr(&state);
            if (given != nullptr && given[0] != '\0') opt.tmpdir = given;
            opt.tmpdir_given = true;
            break;
        }
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "Unknown switch: -%c\n", c);
        }
    }
    if (argc > 1) return cli::fail("mktemp: extra operand '%s'\n", argv[1]);

    const bool in_tmpdir = argc == 0 || opt.tmpdir_given;
    CString path(gn_joinpath(in_tmpdir ? opt.tmpdir : "", argc == 0 ? "tmp.XXXXXXXXXX" : argv[0]));
    if (!path) return cli::fail("mktemp: out of memory\n");
    if (path.get()[0] == '\0') return cli::fail("mktemp: template too short\n");

    const char* last_x = strrchr(path.get(), 'X');
    const size_t cut = last_x != nullptr ? static_cast<size_t>(last_x - path.get()) : 0;
    if (opt.suffix != nullptr) {
        if (last_x == nullptr || last_x[1] != '\0') {
            printf("mktemp: with --suffix, template '%s' must end in X\n", path.get());
            return output::finish("mktemp", 1);
        }
        path = CString(gn_strcata(path.get(), opt.suffix));
        if (!path) return cli::fail("mktemp: could not allocate buffer: %s\n", gn_strerror(ENOMEM));
    }
    return make_temporary(path.get(), cut, opt);
}
