// chown: changes owner and group of files.
// Scripts rely on: a link itself is changed unless --dereference is given, whatever the usage text says; a
// dangling link always fails; a number must belong to a user or group of the database; each of -H, -L and -P
// recurses; the words "chown" and "chmod" in messages are the same for chgrp.
//
// Ids have 16 bits here. The system's may have more: an owner or group that is not named is left alone by the
// system itself rather than set to a shortened id, and one that does not fit is refused.

#include "commands/chown.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <span>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "common/text.h"
#include "common/tree_walk.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* chown_usage[] = {
    "Usage: chown [OPTION]... [OWNER][:[GROUP]] FILE...\n",
    "Change file owner and group\n",
};

constexpr const char* chgrp_usage[] = {
    "Usage: chgrp [OPTION]... GROUP FILE...\n",
    "Change group ownership\n",
};

constexpr const char* common_usage[] = {
    "\n",
    "  -c, --changes         like verbose but report only when a change is made\n",
    "  -f, --silent          suppress most error messages\n",
    "  --dereference         affect the referent of each symlink (default)\n",
    "  -h, --no-dereference  affect symlinks instead of any referenced file\n",
    "  -R, --recursive       change files and directories recursively\n",
    "  -H                    (-R only) if a command line argument is a symlink to a directory, traverse it\n",
    "  -L                    (-R only) traverse every symlink to a directory encountered\n",
    "  -P                    (-R only) do not traverse any symlinks (default)\n",
    "  -v, --verbose         output a diagnostic for every file processed\n",
};

constexpr int dereference_code = 1000;

constexpr e_longoption long_options[] = {
    {"--changes", 'c'},
    {"--silent", 'f'},
    {"--quiet", 'f'},
    {"--recursive", 'R'},
    {"--verbose", 'v'},
    {"--no-dereference", 'h'},
    {"--dereference", dereference_code},
    {nullptr, 0},
};

using Id = uint16_t;

struct Change {
    bool is_chown;
    bool verbose = false;
    bool dereference = false;
    bool silent = false;
    bool changes = false;
    char traversal = 0;  // 0 (no recursion), 'H', 'L' or 'P'
    std::optional<Id> owner = std::nullopt;
    std::optional<Id> group = std::nullopt;
};

struct Owner {
    Id user;
    Id group;
};

// The name of a user or group, or its number. Names are cut to the room that reports have for them.
class IdText {
  public:
    IdText(Id id, const char* name) {
        if (name != nullptr) {
            snprintf(text_, sizeof text_, "%s", name);
        } else {
            snprintf(text_, sizeof text_, "%llu", static_cast<unsigned long long>(id));
        }
    }
    [[nodiscard]] const char* get() const { return text_; }

  private:
    char text_[64];
};

IdText user_text(Id id) {
    const passwd* user = getpwuid(id);
    return {id, user != nullptr ? user->pw_name : nullptr};
}

IdText group_text(Id id) {
    const group* entry = getgrgid(id);
    return {id, entry != nullptr ? entry->gr_name : nullptr};
}

// "VERB ownership of 'PATH' from OLD:OLD to NEW:NEW", or chgrp's half of it.
void print_change(const Change& change, const char* path, bool changed, Owner before, Owner after) {
    const char* verb = changed ? "changed" : "failed to change";
    IdText old_group = group_text(before.group), new_group = group_text(after.group);
    if (change.is_chown) {
        printf("%s ownership of '%s' from %s:%s to %s:%s\n", verb, path, user_text(before.user).get(),
               old_group.get(), user_text(after.user).get(), new_group.get());
    } else {
        printf("%s group of '%s' from %s to %s\n", verb, path, old_group.get(), new_group.get());
    }
}

void print_retained(const Change& change, const char* path, Owner owner) {
    if (change.is_chown) {
        printf("ownership of '%s' retained as %s:%s\n", path, user_text(owner.user).get(),
               group_text(owner.group).get());
    } else {
        printf("group of '%s' retained as %s\n", path, group_text(owner.group).get());
    }
}

bool cannot_access(const Change& change, const char* path) {
    if (!change.silent) cli::error("chmod: cannot access '%s': %s\n", path, gn_strerror(errno));
    return false;
}

// Examines an entry: itself and what it leads to.
bool examine(const Change& change, const TreeWalk& walk, const WalkEntry& entry, struct stat* followed,
             struct stat* link) {
    // What the directory said of a child will do where nothing is reported: its owner is not needed then.
    if (entry.status != nullptr && !change.verbose && !change.changes && !S_ISLNK(entry.status->mode)) {
        followed->st_mode = link->st_mode = entry.status->mode;
        return true;
    }
    if (!platform::file_status(entry.dir, entry.name, platform::Links::keep, link, nullptr)) return false;
    if (!S_ISLNK(link->st_mode)) {
        *followed = *link;
        return true;
    }
    return entry.status != nullptr ? walk.examine(entry.name, followed) : stat(entry.name, followed) == 0;
}

// Changes one entry, and enters a directory that is to be changed with its entries.
bool do_change(const Change& change, TreeWalk& walk, const WalkEntry& entry) {
    const bool top_level = walk.depth() == 0;
    struct stat followed {
    }, link{};
    if (!examine(change, walk, entry, &followed, &link)) return cannot_access(change, entry.path);

    const struct stat& reference = change.dereference ? followed : link;
    const Owner before{static_cast<Id>(reference.st_uid), static_cast<Id>(reference.st_gid)};
    const Owner after{change.owner.value_or(before.user), change.group.value_or(before.group)};
    constexpr auto unchanged = static_cast<uid_t>(-1);
    const int no_follow = change.dereference ? 0 : AT_SYMLINK_NOFOLLOW;
    if (fchownat(entry.dir, entry.name, change.owner ? uid_t{*change.owner} : unchanged,
                 change.group ? gid_t{*change.group} : unchanged, no_follow) != 0) {
        if (errno == ENOENT) return cannot_access(change, entry.path);
        if (!change.silent) {
            cli::error("chown: changing ownership of '%s': %s\n", entry.path, gn_strerror(errno));
        }
        if (change.verbose) print_change(change, entry.path, false, before, after);
        return false;
    }
    const bool same = after.user == before.user && after.group == before.group;
    if (same && change.verbose) {
        print_retained(change, entry.path, before);
    } else if (!same && (change.changes || change.verbose)) {
        print_change(change, entry.path, true, before, after);
    }

    if (change.traversal == 0 || !S_ISDIR(followed.st_mode)) return true;
    auto links = platform::Links::keep;
    if (S_ISLNK(link.st_mode)) {
        if (change.traversal != 'L' && (change.traversal != 'H' || !top_level)) return true;
        links = platform::Links::follow;
    }
    if (walk.enter(entry, links)) return true;
    cli::error("chmod: out of memory\n");
    return false;
}

bool change_operand(const Change& change, const char* path) {
    TreeWalk walk(EntryOrder::unsorted, false, EntryDetail::type);
    bool ok = do_change(change, walk, WalkEntry::operand(path));
    while (walk.depth() != 0) {
        WalkEntry entry;
        if (!walk.next(&entry)) {
            (void)walk.leave();
        } else if (entry.path != nullptr) {
            ok &= do_change(change, walk, entry);
        } else {
            cli::error("chmod: out of memory\n");
            (void)walk.leave();
            ok = false;
        }
    }
    return ok;
}

// An id, if it fits: a shortened one could be anybody's, root's for 65536.
std::optional<Id> fitting(unsigned long id) {
    return id <= UINT16_MAX ? std::optional(static_cast<Id>(id)) : std::nullopt;
}

// A number that stands for an id; nothing for a text that is not all digits.
std::optional<Id> parse_id(const char* text) {
    if (text[0] == '\0' || text[strspn(text, "0123456789")] != '\0') return std::nullopt;
    return fitting(strtoul(text, nullptr, 10));
}

std::optional<Id> find_owner(const char* text) {
    const passwd* user = getpwnam(text);
    if (user == nullptr) {
        if (auto id = parse_id(text)) user = getpwuid(*id);
    }
    return user != nullptr ? fitting(user->pw_uid) : std::nullopt;
}

std::optional<Id> find_group(const char* text) {
    const group* entry = getgrnam(text);
    if (entry == nullptr) {
        if (auto id = parse_id(text)) entry = getgrgid(*id);
    }
    return entry != nullptr ? fitting(entry->gr_gid) : std::nullopt;
}

bool take_owner(Change* change, const char* text) {
    change->owner = find_owner(text);
    if (!change->owner) cli::error("chown: invalid owner: '%s'\n", text);
    return change->owner.has_value();
}

bool take_group(Change* change, char* text) {
    change->group = find_group(text);
    if (!change->group) cli::error("chown: invalid group: '%s'\n", text);
    return change->group.has_value();
}

// chown's [OWNER][:[GROUP]]. Cuts the text at its first colon.
bool take_owner_and_group(Change* change, char* text) {
    char* colon = strchr(text, ':');
    if (colon != nullptr) *colon = '\0';
    if (colon != text && !take_owner(change, text)) return false;
    return colon == nullptr || colon[1] == '\0' || take_group(change, colon + 1);
}

int help(bool is_chown) {
    cli::help(is_chown ? chown_usage : chgrp_usage);
    return cli::help(common_usage);
}

}  // namespace

int garnel_chown_chgrp_main(int argc, char** argv, bool is_chown) {
    const char* name = is_chown ? "chown" : "chgrp";
    Change change{.is_chown = is_chown};
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'c': change.changes = true; break;
        case 'f': change.silent = true; break;
        case 'h': change.dereference = false; break;
        case 'v': change.verbose = true; break;
        case 'R': change.traversal = 'P'; break;
        case 'H':
        case 'L':
        case 'P': change.traversal = static_cast<char>(c); break;
        case dereference_code: change.dereference = true; break;
        case e_help: return help(is_chown);
        default: return cli::unknown_switch(stderr, "%s: Unknown switch: -%c\n", name, c);
        }
    }
    if (argc < 2) return cli::fail("%s: missing operand\n", name);

    CString owner_text(garnel_strndup(argv[0], strlen(argv[0])));
    if (!owner_text) return cli::fail("%s: out of memory\n", name);
    if (!(is_chown ? take_owner_and_group : take_group)(&change, owner_text.get())) return 1;

    bool ok = true;
    for (const char* path : std::span(argv, static_cast<size_t>(argc)).subspan(1)) {
        ok &= change_operand(change, path);
    }
    return output::finish(name, ok ? 0 : 1);
}

int gn_chown(int argc, char** argv) {
    return garnel_chown_chgrp_main(argc, argv, true);
}
