// cp: copies files and directory trees.
// Scripts rely on: links are followed; an existing file is overwritten without a question, even by itself,
// which empties it; an existing directory is never merged into, and like every other trouble with a directory
// this shows in the status alone; a read error ends a copy as the end of the file does, and is no failure; no
// operands show the usage with status 0; an unknown switch is reported on standard output.

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/copy_file.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/text.h"
#include "common/tree_walk.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: cp [OPTION]... SOURCE DESTINATION\n",
    "  or:  cp [OPTION]... SOURCE... DIRECTORY\n",
    "Copy SOURCE to DEST, or multiple SOURCE(s) to DIRECTORY.\n",
    "\n",
    "    -r    copy directories recursively\n",
    "    -v    explain what is being done\n",
};

enum Flags : unsigned {
    verbose = 1,
    recursive = 2,
    exact_destination = 8,  // the destination is the name to create, also for a directory
};

struct Destination {
    int dir;           // the open directory that the copy goes into, AT_FDCWD for an operand
    const char* name;  // its name there
    const char* path;  // as messages show it
};

bool fail(const char* path, const char* reason) {
    cli::error("cp: %s: %s\n", path, reason);
    return false;
}

bool copy_regular_file(const WalkEntry& source, const Destination& to) {
    // What a directory said to be a file is not followed elsewhere, and nothing is waited for, should it have
    // been replaced meanwhile.
    const bool was_link = source.status == nullptr || S_ISLNK(source.status->mode);
    const int in_flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | (was_link ? 0 : O_NOFOLLOW);
    UniqueFd in(openat(source.dir, source.name, in_flags));
    struct stat status, out_status;
    if (!in.valid() || fstat(in.get(), &status) != 0) return fail(source.path, gn_strerror(errno));
    if (!S_ISREG(status.st_mode)) return fail(source.path, gn_strerror_ENOTFILE());

    const mode_t mode = status.st_mode & 07777;
    const int out_flags = O_WRONLY | O_CREAT | O_CLOEXEC;
    UniqueFd out;
    if (to.dir != AT_FDCWD) {
        // In a directory that was just made the file is new, which saves a look at what was opened.
        out = UniqueFd(openat(to.dir, to.name, out_flags | O_EXCL, mode));
        out_status.st_mode = S_IFREG;
    }
    if (!out.valid()) {
        // A link that stands there nevertheless is somebody's trap.
        const int link_flag = to.dir == AT_FDCWD ? 0 : O_NOFOLLOW;
        out = UniqueFd(openat(to.dir, to.name, out_flags | O_TRUNC | link_flag, mode));
        if (!out.valid() || fstat(out.get(), &out_status) != 0) return fail(to.path, gn_strerror(errno));
    }
    if (copy_file(in.get(), status, out.get(), out_status) != CopyResult::write_failed && out.close())
        return true;
    // A device that takes no more is not to be removed for it.
    if (S_ISREG(out_status.st_mode)) unlinkat(to.dir, to.name, 0);
    return fail(source.path, gn_strerror_EIO());
}

// The base name, but all of a path that ends in a separator.
const char* base_name_or_path(const char* path) {
    const char* base = base_name(path);
    return *base != '\0' ? base : path;
}

// One copy of an operand, and of everything below it.
class Copy {
  public:
    explicit Copy(unsigned flags) : flags_(flags) {}

    bool run(const char* source, const char* destination) {
        bool ok = gn_cp_copy(WalkEntry::operand(source), {AT_FDCWD, destination, destination});
        while (walk_.depth() != 0) {
            WalkEntry entry;
            if (!walk_.next(&entry)) {
                (void)walk_.leave();
                directories_.pop();
                made_.pop_back();
                path_.pop();
            } else if (entry.path == nullptr || !path_.push(entry.name)) {
                ok = false;
            } else {
                const size_t depth = walk_.depth();
                ok &= gn_cp_copy(entry, {directories_.top(), entry.name, path_.text()});
                // A directory that was entered keeps its name there until it is left.
                if (walk_.depth() == depth) path_.pop();
            }
        }
        return ok;
    }

  private:
    struct Identity {
        dev_t dev;
        ino_t ino;
    };

    // Copies a file, or enters a directory, whose entries follow.
    bool gn_cp_copy(const WalkEntry& source, const Destination& to) {
        if ((flags_ & verbose) != 0) printf("'%s' -> '%s'\n", source.path, to.path);
        struct stat status {};
        if (source.status == nullptr || S_ISLNK(source.status->mode)) {
            const bool examined = source.status == nullptr ? stat(source.name, &status) == 0
                                                           : walk_.examine(source.name, &status);
            if (!examined) return fail(source.path, gn_strerror(errno));
        } else {
            status.st_mode = source.status->mode;
            status.st_dev = static_cast<dev_t>(source.status->dev);
            status.st_ino = source.status->ino;
        }
        if (S_ISDIR(status.st_mode) && (flags_ & recursive) != 0) return gn_cp_dircopy(source, status, to);
        if (!S_ISREG(status.st_mode)) return fail(source.path, gn_strerror_ENOTFILE());
        return copy_regular_file(source, to);
    }

    // Makes a directory and enters both. Only the status tells of a failure.
    bool gn_cp_dircopy(const WalkEntry& source, const struct stat& status, Destination to) {
        if (source.status == nullptr) {
            root_ = root_path(source.name, to.path);
            if (!root_ || !path_.push(root_.get())) return false;
            to.name = root_.get();
        } else if (is_being_made(status)) {
            return fail(source.path, "cannot copy a directory into itself");
        }
        if (!walk_.enter(source, platform::Links::follow)) return false;
        if (mkdirat(to.dir, to.name, 0755) == 0) {
            UniqueFd made(platform::open_passage(to.dir, to.name, platform::Links::keep));
            struct stat made_status;
            if (made.valid() && fstat(made.get(), &made_status) == 0 &&
                made_.push_back({made_status.st_dev, made_status.st_ino})) {
                if (directories_.push(std::move(made), to.name)) return true;
                made_.pop_back();
            }
        }
        (void)walk_.leave();
        return false;
    }

    // True for a directory whose copy would grow for ever: the copies around it would be found in it.
    [[nodiscard]] bool is_being_made(const struct stat& status) const {
        return std::any_of(made_.begin(), made_.end(), [&](const Identity& made) {
            return made.dev == status.st_dev && made.ino == status.st_ino;
        });
    }

    // Where the copy of a directory operand goes: among several operands, the last component of the
    // destination is replaced by the operand's own name.
    [[nodiscard]] CString root_path(const char* source, const char* destination) const {
        CString path(garnel_strndup(destination, strlen(destination)));
        if (!path || (flags_ & exact_destination) != 0) return path;
        char* slash = strrchr(path.get(), '/');
        if (slash == path.get()) slash++;  // the root stays
        if (slash != nullptr) *slash = '\0';
        return CString(gn_joinpath(path.get(), base_name_or_path(source)));
    }

    unsigned flags_;
    TreeWalk walk_{EntryOrder::unsorted, false, EntryDetail::type};
    DirectoryStack directories_;  // what was made for the directories that are walked
    PathStack path_;              // of the copy
    Vector<Identity> made_;       // the same, for links may lead to any of them
    CString root_;                // the path of what was made for an operand
};

int copy_to_one(const char* source, const char* destination, unsigned flags) {
    struct stat status;
    const bool into = stat(destination, &status) == 0 && S_ISDIR(status.st_mode);
    CString to(into ? gn_joinpath(destination, base_name(source))
                    : garnel_strndup(destination, strlen(destination)));
    if (!to) {
        fail(source, "out of memory");
        return 2;
    }
    return Copy(flags | exact_destination).run(source, to.get()) ? 0 : 1;
}

int copy_into(std::span<char*> sources, const char* target, unsigned flags) {
    struct stat status;
    if (stat(target, &status) != 0) {
        fail(target, "failed to stat");
        return 2;
    }
    if (!S_ISDIR(status.st_mode)) {
        fail(target, "target is not a directory");
        return 2;
    }
    bool ok = true;
    for (const char* source : sources) {
        CString to(gn_joinpath(target, base_name(source)));
        ok &= to ? Copy(flags).run(source, to.get()) : fail(source, "out of memory");
    }
    return ok ? 0 : 1;
}

}  // namespace

int gn_cp(int argc, char** argv) {
    unsigned flags = 0;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'r': flags |= recursive; break;
        case 'v': flags |= verbose; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }
    if (argc < 2) return cli::help(usage);

    const auto operands = std::span(argv, static_cast<size_t>(argc));
    const int status = argc == 2 ? copy_to_one(argv[0], argv[1], flags)
                                 : copy_into(operands.first(operands.size() - 1), operands.back(), flags);
    return output::finish("cp", status);
}
