// mv: renames files and directory trees, or moves them where renaming cannot reach.
// Scripts rely on: the status is 0 whether or not a move succeeded (the messages tell), except for a target
// that is no directory; an existing file is only replaced with -f, and then by copying; a directory that
// exists at the destination is moved into, under the base name, as often as that exists; links are moved as
// what they lead to when renaming fails; nobody is ever prompted; an unknown switch is reported on standard
// output.
//
// Whatever fails, every byte is still at the source or at the destination: a source is removed only when its
// copy is complete and closed.

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
    "Usage: mv [OPTION]... SOURCE DEST\n",
    "  or:  mv [OPTION]... SOURCE... DIRECTORY\n",
    "Rename SOURCE to DEST, or move SOURCE(s) to DIRECTORY.\n",
    "\n",
    "    -f    do not prompt before overwriting\n",
    "    -v    explain what is being done\n",
};

struct Options {
    bool force = false;
    bool verbose = false;
};

bool fail(const char* path, const char* reason) {
    cli::error("mv: %s: %s\n", path, reason);
    return false;
}

// New: the last component of a path that is not empty. Null after a message for one that names no entry of a
// directory ("." and ".." and the root).
CString entry_name(const char* path) {
    CString name(garnel_strndup(path, strlen(path)));
    if (!name) {
        fail(path, "out of memory.");
        return name;
    }
    const char* base = base_name(name.get());
    for (size_t size = strlen(name.get()); size > 0 && base[0] == '\0'; base = base_name(name.get())) {
        name.get()[--size] = '\0';
    }
    if (base[0] == '\0' || strcmp(base, ".") == 0 || strcmp(base, "..") == 0) {
        fail(path, gn_strerror(path[0] == '\0' ? ENOENT : EINVAL));
        return CString();
    }
    return CString(garnel_strndup(base, strlen(base)));
}

bool same_file(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// The last component of a path, and the status of the directory that holds it; null when that cannot be told.
const char* examine_parent(const char* path, struct stat* parent) {
    const char* slash = strrchr(path, '/');
    CString directory(slash != nullptr ? garnel_strndup(path, static_cast<size_t>(slash + 1 - path))
                                       : garnel_strndup(".", 1));
    if (!directory || stat(directory.get(), parent) != 0) return nullptr;
    return slash != nullptr ? slash + 1 : path;
}

// True when two paths of files name one and the same entry of a directory.
bool same_entry(const char* a, const char* b) {
    struct stat parent_a, parent_b;
    const char* name_a = examine_parent(a, &parent_a);
    const char* name_b = examine_parent(b, &parent_b);
    return name_a != nullptr && name_b != nullptr && strcmp(name_a, name_b) == 0 &&
           same_file(parent_a, parent_b);
}

struct Destination {
    int dir;           // the open directory that the source goes into, AT_FDCWD for an operand
    const char* name;  // its name or path there
    const char* path;  // as messages show it
};

// The move of an operand, and of everything below it.
class Move {
  public:
    explicit Move(const Options& options) : options_(options) {}
    Move(Move&&) = delete;
    ~Move() {
        while (!targets_.empty()) drop_target();
    }

    bool run(const char* source, const char* destination) {
        bool ok = gn_mv_move(WalkEntry::operand(source), destination);
        while (walk_.depth() != 0) {
            WalkEntry entry;
            if (!walk_.next(&entry)) {
                ok = leave();
            } else if (entry.path == nullptr) {
                fail(walk_.path(), "out of memory");
                ok = false;
            } else {
                ok = gn_mv_move(entry, entry.name);
            }
            // What is left in a directory keeps it and everything around it.
            if (!ok) failed_depth_ = std::max(failed_depth_, walk_.depth());
        }
        return ok;
    }

  private:
    // Moves an entry at once, or enters a directory whose entries are moved one by one. name is where it goes
    // in the directory that was made last.
    bool gn_mv_move(const WalkEntry& source, const char* name) {
        struct stat status {};
        if (!examine(source, &status)) return fail(source.path, gn_strerror(errno));

        Destination to{directories_.top(), name, nullptr};
        CString target(garnel_strndup(name, strlen(name)));  // from the directory that was made last
        UniqueFd found;
        struct stat existing;
        bool exists = false;
        auto look = [&] {
            // In a directory that was just made, a link that stands there already is somebody's trap.
            exists =
                fstatat(to.dir, to.name, &existing, source.status != nullptr ? AT_SYMLINK_NOFOLLOW : 0) == 0;
            return exists && S_ISDIR(existing.st_mode);
        };
        // The destination's directories, each inside the other, under the source's own name.
        while (target && look()) {
            if (source.status != nullptr) {
                found = UniqueFd(platform::open_passage(to.dir, to.name, platform::Links::keep));
                to.dir = found.get();
                target = CString(concatenate({target.get(), "/", source.name}));
                continue;
            }
            CString base = entry_name(source.name);
            if (!base) return false;
            CString inner(gn_joinpath(target.get(), base.get()));
            // A name that begins with a backslash is no way further in.
            if (inner && strcmp(inner.get(), target.get()) == 0)
                return fail(source.path, gn_strerror(EINVAL));
            target = std::move(inner);
            to.name = target.get();
        }
        if (!target || !path_.push(target.get())) return fail(source.path, "out of memory.");
        to.path = path_.text();
        const size_t depth = walk_.depth();
        const bool ok = move_to(source, status, to, exists ? &existing : nullptr, &target);
        if (walk_.depth() == depth) path_.pop();
        return ok;
    }

    bool move_to(const WalkEntry& source, const struct stat& status, const Destination& to,
                 const struct stat* existing, CString* target) {
        if (existing == nullptr) {
            announce(source, to);
            if (renameat(source.dir, source.name, to.dir, to.name) == 0) return true;
            if (errno == EINVAL && S_ISDIR(status.st_mode)) {
                return fail(source.path, "cannot move a directory into itself");
            }
        } else if (!S_ISREG(existing->st_mode)) {
            return fail(source.path, gn_strerror_ENOTFILE());
        } else if (!options_.force) {
            return fail(source.path, "destination exists.");
        } else {
            if (is_same(source, to, *existing)) {
                return fail(source.path, "source and destination are the same file");
            }
            if (unlinkat(to.dir, to.name, 0) != 0) return fail(source.path, "cannot write destination.");
            announce(source, to);
        }
        return S_ISDIR(status.st_mode) ? enter(source, status, to, target) : copy_and_delete(source, to);
    }

    bool enter(const WalkEntry& source, const struct stat& status, const Destination& to, CString* target) {
        if (!walk_.enter(source, platform::Links::follow))
            return fail(source.path, "failed to read directory");
        const bool made = mkdirat(to.dir, to.name, status.st_mode & 0777) == 0;
        if (!made && !options_.force) {
            cli::error("mv: %s: failed to make directory: %s\n", to.path, gn_strerror(errno));
        } else if (!targets_.push_back(target->get())) {
            fail(source.path, "out of memory");
        } else {
            UniqueFd directory(platform::open_passage(to.dir, to.name, platform::Links::keep));
            if (directories_.push(std::move(directory), target->release())) return true;
            fail(source.path, "out of memory");
            drop_target();
        }
        (void)walk_.leave();
        return false;
    }

    // Leaves a directory, whose own removal is not looked at.
    bool leave() {
        const bool ok = failed_depth_ < walk_.depth();
        const WalkEntry directory = walk_.leave();
        failed_depth_ = std::min(failed_depth_, walk_.depth());
        directories_.pop();
        drop_target();
        path_.pop();
        if (ok) unlinkat(directory.dir, directory.name, AT_REMOVEDIR);
        return ok;
    }

    static bool copy_and_delete(const WalkEntry& source, const Destination& to) {
        // What a directory said to be a file is not followed elsewhere, should it have been replaced
        // meanwhile.
        const bool was_link = source.status == nullptr || S_ISLNK(source.status->mode);
        UniqueFd in(openat(source.dir, source.name, O_RDONLY | O_CLOEXEC | (was_link ? 0 : O_NOFOLLOW)));
        struct stat in_status, out_status;
        if (!in.valid() || fstat(in.get(), &in_status) != 0) {
            return fail(source.path, "failed to open source file.");
        }
        const int out_flags =
            O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | (to.dir == AT_FDCWD ? 0 : O_NOFOLLOW);
        UniqueFd out(openat(to.dir, to.name, out_flags, in_status.st_mode & 07777));
        if (!out.valid() || fstat(out.get(), &out_status) != 0) {
            return fail(source.path, "failed to open destination file.");
        }

        const CopyResult result = copy_file(in.get(), in_status, out.get(), out_status);
        const char* reason = gn_strerror_EIO();
        if (result == CopyResult::read_failed) reason = gn_strerror(errno);
        // Some file systems tell only now that the data found no room.
        if (result == CopyResult::complete && out.close()) {
            unlinkat(source.dir, source.name, 0);
            return true;
        }
        unlinkat(to.dir, to.name, 0);
        return fail(source.path, reason);
    }

    // True when removing the destination would remove what is to be moved there.
    static bool is_same(const WalkEntry& source, const Destination& to, const struct stat& existing) {
        struct stat followed, link, target;
        if (fstatat(source.dir, source.name, &followed, 0) != 0 || !same_file(followed, existing) ||
            fstatat(source.dir, source.name, &link, AT_SYMLINK_NOFOLLOW) != 0 ||
            fstatat(to.dir, to.name, &target, AT_SYMLINK_NOFOLLOW) != 0) {
            return false;
        }
        // Where case does not count, for example, an entry has more than one name, but still one link.
        const bool one_link = link.st_nlink == 1 && !S_ISLNK(target.st_mode);
        return S_ISLNK(link.st_mode) || one_link || same_entry(source.path, to.path);
    }

    // The type and permissions of a source; the type alone for files that a directory has delivered.
    bool examine(const WalkEntry& source, struct stat* status) const {
        if (source.status == nullptr) return stat(source.name, status) == 0;
        if (S_ISLNK(source.status->mode)) return walk_.examine(source.name, status);
        status->st_mode = source.status->mode;
        return true;
    }

    void announce(const WalkEntry& source, const Destination& to) const {
        if (options_.verbose) printf("'%s' -> '%s'\n", source.path, to.path);
    }

    void drop_target() {
        CString last(*targets_.back());
        targets_.pop_back();
    }

    Options options_;
    TreeWalk walk_{EntryOrder::unsorted, false, EntryDetail::type};
    DirectoryStack directories_;  // what was made for the directories that are walked
    Vector<char*> targets_;       // the names that they were made by, owned
    PathStack path_;              // of the destination
    size_t failed_depth_ = 0;     // directories up to this depth hold something that could not be moved
};

int move_into(std::span<char*> sources, const char* target, const Options& options) {
    struct stat status;
    if (stat(target, &status) != 0 || !S_ISDIR(status.st_mode)) {
        cli::error("mv: %s\n", "target is not a directory");
        return 2;
    }
    int failures = 0;
    for (const char* source : sources) {
        CString base = entry_name(source);
        CString to(base ? gn_joinpath(target, base.get()) : nullptr);
        if (base && !to) {
            cli::error("mv: %s\n", "out of memory");
            return 2;
        }
        if (!to || !Move(options).run(source, to.get())) failures++;
    }
    if (failures != 0) cli::error("mv: %i failed.\n", failures);
    return 0;
}

}  // namespace

int gn_mv(int argc, char** argv) {
    Options options;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'f': options.force = true; break;
        case 'v': options.verbose = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }
    if (argc < 2) return cli::help(usage);

    int status = 0;
    if (argc == 2) {
        if (!Move(options).run(argv[0], argv[1])) cli::error("mv: %s: failed.\n", argv[0]);
    } else {
        const auto operands = std::span(argv, static_cast<size_t>(argc));
        status = move_into(operands.first(operands.size() - 1), operands.back(), options);
    }
    return output::finish("mv", status);
}
