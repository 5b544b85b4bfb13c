// One line of a listing.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "colprint/colprint.h"
#include "commands/ls_date.h"
#include "common/directory.h"
#include "lib/containers/container_btree.h"

namespace ls {

struct Switches {
    bool long_format = false;
    bool human = false;
    bool link_target = false;
    bool quote = false;
    bool date = false;
    bool indicator = false;
    bool color = false;
    bool mode = false;
    bool inverse = false;
    bool utc = false;
    bool recursive = false;
    bool entry_id = false;
    bool dots = false;
    bool hidden = false;
};

// Ids are widened with their sign, as in directory entries, and shown as unsigned 32-bit numbers.
struct _uidmap_lt {
    bool operator()(int64_t a, int64_t b) const { return a < b; }
};
struct _uidmap_eq {
    bool operator()(int64_t a, int64_t b) const { return a == b; }
};
using _gidmap_lt = _uidmap_lt;
using _gidmap_eq = _uidmap_eq;

// Names by user id. The users' list is read when the first name is asked for.
class UserNames {
  public:
    UserNames() = default;
    UserNames(UserNames&& other) = delete;
    ~UserNames();

    // False when memory is short.
    [[nodiscard]] bool create() { return names_.create(); }

    // The name; for an id without one, the id as a number. Null when memory is short.
    [[nodiscard]] const char* find(int64_t id);

  private:
    struct Recent {
        int64_t id;
        const char* name;
    };

    void read_users();
    [[nodiscard]] const char* insert(int64_t id, const char* name);

    BTree<int64_t, char*, _uidmap_lt, _uidmap_eq> names_;  // owns the texts
    bool users_read_ = false;
    Recent recent_[16] = {};
};

[[nodiscard]] const char* resolve_uid(UserNames& names, int64_t id);
// Looks among the users, too: a group shows the name of the user that has its number.
inline constexpr auto& resolve_gid = resolve_uid;

// A text that is put together piece by piece and grows as needed.
class NameBuffer {
  public:
    // False when memory is short.
    [[nodiscard]] bool create();

    void clear() { size_ = 0; }
    void append(std::string_view piece);

    // The text, nothing when memory was short for a piece of it.
    [[nodiscard]] std::optional<std::string_view> text() const;

  private:
    CString data_;
    size_t capacity_ = 0;
    size_t size_ = 0;
    bool memory_short_ = false;
};

// What rows are made with: one for the run.
struct RowWriter {
    const Switches& switches;
    colp_table* table;
    NameBuffer name;
    UserNames users;
    DateWriter dates;
};

// The directory that an entry is in: its path, and its descriptor. An operand that is no directory passes for
// its own directory, with descriptor -1: what is joined to its path names nothing as a rule, so that its
// target is not shown.
struct EntryDirectory {
    const char* path;
    int fd;
};

enum class NameForm { entry, operand };  // the entry's name, or the path that was given

// Adds the row of an entry; returns the table's error code.
[[nodiscard]] unsigned render_item(RowWriter& writer, const EntryDirectory& directory,
                                   const DirectoryEntry& entry, NameForm form);

}  // namespace ls
