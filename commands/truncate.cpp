// truncate: sets the size of files.
// Scripts rely on: under -c a file that cannot be opened is passed over, whatever the reason; without it, one
// whose directory is missing is, too; what cannot be extended otherwise, a device too, gets zeros written
// behind its end; new files belong to their user alone (mode 0600).

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/own.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: truncate [OPTION]... FILE...\n",
    "Shrink the size of each FILE to the specified size.\n",
    "\n",
    "    -c    do not create any files\n",
    "    -r    use this FILE's size (can not be used with -s)\n",
    "    -s    use this SIZE (can not be used with -r)\n",
};

// False with errno. A device that takes no more without an error ends it as well.
bool append_zeros(int fd, int64_t count) {
    static char zeros[size_t{1} << 16] = {};
    while (count > 0) {
        const ssize_t step = write(fd, zeros, static_cast<size_t>(std::min<int64_t>(count, sizeof zeros)));
        if (step == 0) break;
        if (step > 0) {
            count -= step;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

// False with errno.
bool set_size(int fd, int64_t size) {
    struct stat status;
    if (fstat(fd, &status) != 0) return false;
    if (ftruncate(fd, size) == 0) return true;
    if (status.st_size > size || errno == EFBIG) return false;
    return append_zeros(fd, size - status.st_size);
}

// False after a message.
bool truncate_file(const char* name, int64_t size, bool create) {
    UniqueFd file(open(name, O_WRONLY | O_CLOEXEC | O_APPEND | O_NOCTTY | (create ? O_CREAT : 0), 0600));
    if (!file.valid() && (!create || errno == ENOENT)) return true;
    if (file.valid() && set_size(file.get(), size) && file.close()) return true;
    cli::error("truncate: '%s': %s\n", name, gn_strerror(errno));
    return false;
}

int fail_ambiguous() {
    return cli::fail("truncate: only 1 relative must be specified\n");
}

}  // namespace

int gn_truncate(int argc, char** argv) {
    bool create = true;
    bool size_given = false;
    int64_t size = 0;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'c': create = false; break;
        case 'r': {
            if (size_given) return fail_ambiguous();
            const char* reference = e_opt_getstr(&state);
            if (reference == nullptr) return cli::fail("truncate: missing -%c operand\n", c);
            struct stat status;
            if (stat(reference, &status) != 0) {
                return cli::fail("truncate: '%s': no such file or directory\n", reference);
            }
            size = status.st_size;
            size_given = true;
            break;
        }
        case 's':
            if (size_given) return fail_ambiguous();
            if (e_opt_getsize(&state, &size) != e_opt_ok) {
                return cli::fail("truncate: missing -%c operand\n", c);
            }
            if (size < 0) return cli::fail("truncate: invalid -%c operand\n", c);
            size_given = true;
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "truncate: Unknown switch: -%c\n", c);
        }
    }
    if (!size_given) return fail_ambiguous();
    if (argc == 0) return cli::fail("truncate: missing file operand\n");

    // A size beyond the process's limit is an error to report, not a reason to be killed.
    signal(SIGXFSZ, SIG_IGN);
    bool ok = true;
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) {
        ok &= truncate_file(name, size, create);
    }
    return ok ? 0 : 1;
}
