// rm: removes files and directory trees.
// Scripts rely on: a child that could not be removed shows up only as the failure of its directory; -f is
// silent about what cannot be examined, whatever the reason, and about nothing else; an unknown switch is
// reported on standard output.

#include <cerrno>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/tree_walk.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: rm [OPTION]... FILE...\n",
    "Remove files or directories.\n",
    "\n",
    "    -f    ignore nonexistent files\n",
    "    -r    remove directories and their contents recursively\n",
    "    -v    explain what is being done\n",
};

enum Flags : unsigned { verbose = 1, recursive = 2, force = 4 };

// What gn_rm_remove returns.
enum Result {
    removed = 0,
    cannot_stat = 1,
    cannot_unlink = 2,
    is_directory = 3,
    cannot_remove_directory = 4,
    cannot_read_directory = 5,
    no_memory = 6,
};

void report(std::string_view quoted_path, std::string_view what) {
    output::write("'");
    output::write(quoted_path);
    output::write(what);
}

Result missing(const WalkEntry& entry, unsigned flags) {
    if ((flags & force) != 0) return removed;
    cli::error("rm: cannot stat '%s': %s\n", entry.path, gn_strerror(errno));
    return cannot_stat;
}

Result remove_emptied(const WalkEntry& directory, unsigned flags) {
    if (unlinkat(directory.dir, directory.name, AT_REMOVEDIR) != 0) {
        cli::error("rm: cannot remove directory '%s': %s\n", directory.path, gn_strerror(errno));
        return cannot_remove_directory;
    }
    if ((flags & verbose) != 0) report(directory.path, "' directory removed\n");
    return removed;
}

// Removes a file, or enters a directory, which is removed when the walk leaves it.
Result begin(TreeWalk& walk, const WalkEntry& entry, unsigned flags) {
    if (entry.path == nullptr) {
        cli::error("rm: '%s': out of memory\n", walk.path());
        return no_memory;
    }
    struct stat status;
    bool directory = false;
    if (entry.status != nullptr) {
        directory = S_ISDIR(entry.status->mode);
    } else if (!platform::file_status(entry.dir, entry.name, platform::Links::keep, &status, nullptr)) {
        return missing(entry, flags);
    } else {
        directory = S_ISDIR(status.st_mode);
    }

    if (!directory) {
        if (unlinkat(entry.dir, entry.name, 0) == 0) {
            if ((flags & verbose) != 0) report(entry.path, "' removed\n");
            return removed;
        }
        // Somebody else was faster: as if it had been looked for now.
        if (errno == ENOENT) return missing(entry, flags);
        cli::error("rm: cannot remove '%s': %s\n", entry.path, gn_strerror(errno));
        return cannot_unlink;
    }
    if ((flags & recursive) == 0) {
        cli::error("rm: cannot remove '%s': %s\n", entry.path, gn_strerror(EISDIR));
        return is_directory;
    }
    if (!walk.enter(entry, platform::Links::keep)) {
        if (errno == ENOENT) return missing(entry, flags);
        cli::error("rm: '%s': failed to open directory\n", entry.path);
        return cannot_read_directory;
    }
    return removed;
}

Result gn_rm_remove(const char* path, unsigned flags) {
    TreeWalk walk(EntryOrder::unsorted, false, EntryDetail::type);
    Result result = begin(walk, WalkEntry::operand(path), flags);
    while (walk.depth() != 0) {
        WalkEntry entry;
        if (!walk.next(&entry)) {
            result = remove_emptied(walk.leave(), flags);
        } else if (begin(walk, entry, flags) == no_memory) {
            // The directory stays, with what is left in it.
            (void)walk.leave();
            result = no_memory;
        }
    }
    return result;
}

}  // namespace

int gn_rm(int argc, char** argv) {
    unsigned flags = 0;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'f': flags |= force; break;
        case 'r': flags |= recursive; break;
        case 'v': flags |= verbose; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return (flags & force) != 0 ? 0 : cli::fail("rm: missing operand\n");

    bool ok = true;
    for (const char* path : std::span(argv, static_cast<size_t>(argc))) {
        ok &= gn_rm_remove(path, flags) == removed;
    }
    return output::finish("rm", ok ? 0 : 1);
}
