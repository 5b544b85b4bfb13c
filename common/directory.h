// Reading directories: all entries of one with their status, in a chosen order.
//
// gn_readdir hands out self-contained records in a deque. DirectoryListing is the leaner form that listings
// and tree walkers use: it reads an open directory, so that neither the length of a path nor a rename on the
// way matters, and a name takes no more room than it needs.

#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

#include "common/own.h"
#include "lib/containers/container_vector.h"
#include "platform/platform.h"

struct stat;
struct deque;
struct btree;

// The status of a directory entry, as lstat gives it: a symbolic link stands for itself.
struct EntryStatus {
    int64_t dev;
    uint64_t ino;
    uint32_t mode;
    int32_t nlink;
    int64_t uid;  // 32 bits widened with their sign, like gid
    int64_t gid;
    int64_t rdev;
    int64_t size;
    uint32_t blksize;
    int64_t blocks;
    timespec atime;
    timespec ctime;
    timespec mtime;
    timespec btime;  // zero where the file system keeps none
};

// A directory entry by value.
struct gn_dirent : EntryStatus {
    char name[256];
};

// A directory entry whose name belongs to the listing that it stands in.
struct DirectoryEntry : EntryStatus {
    const char* name;
};

enum class EntryOrder {
    unsorted = 0,  // as the directory delivers them
    name = 1,      // by strcmp
    date = 2,      // by modification time, oldest first, then name
    size = 3,      // smallest first, then name
};

// How much is wanted about the entries.
enum class EntryDetail {
    status,  // everything
    type,    // of entries that are neither directories nor symbolic links, the type bits of the mode alone
};

// The entries of one directory. Entries that vanish or cannot be examined while it is read are left out.
//
// An entry takes the 144 bytes of its record, its name rounded up to whole words, and at most 32 bytes for
// its place in the order (another 16 while their number grows). Sorting moves the places only, so that every
// order costs n log n.
class DirectoryListing {
  public:
    class Iterator;

    DirectoryListing() = default;
    DirectoryListing(DirectoryListing&& other) noexcept;
    DirectoryListing& operator=(DirectoryListing&& other) noexcept;
    ~DirectoryListing();

    // Reads the open directory dir, from its first entry whatever was read of it before; dir stays the
    // caller's. reverse turns an order round (names within equal dates and sizes too), and does nothing to
    // unsorted ones.
    // "." and ".." are left out unless dots. Replaces what was read before and uses its memory again. False
    // with errno when dir is no directory, or when memory runs out for all entries; an entry for which it
    // runs out later is left out. A read error ends the reading as if the directory had ended.
    // EntryDetail::type saves most of the time, as files are only examined where the directory does not know
    // their types; what is not known of them then is zero, and no order but that by name means anything.
    [[nodiscard]] bool read(int dir, EntryOrder order, bool reverse, bool dots,
                            EntryDetail detail = EntryDetail::status);

    [[nodiscard]] size_t size() const { return places_.size(); }
    [[nodiscard]] bool empty() const { return places_.empty(); }
    // The index must be below size(). Entries and their names stay where they are until the next read.
    [[nodiscard]] const DirectoryEntry& operator[](size_t index) const { return *places_[index].entry; }
    [[nodiscard]] inline Iterator begin() const;
    [[nodiscard]] inline Iterator end() const;

  private:
    struct Block;
    struct Place {
        uint64_t key;  // orders most entries without a look at them
        const DirectoryEntry* entry;
    };

    void clear();
    void release();
    [[nodiscard]] void* allocate(size_t size);
    [[nodiscard]] const DirectoryEntry* append(const struct stat& status, const timespec& birth,
                                               const char* name);
    struct Precedes;
    void sort(EntryOrder order, size_t common_prefix);

    Vector<Place> places_;
    Block* newest_ = nullptr;
    char* position_ = nullptr;  // the unused rest of the newest block
    size_t room_ = 0;
};

// Visits the entries in order, as const DirectoryEntry&.
class DirectoryListing::Iterator {
  public:
    Iterator(const Place* place, const Place* end) : place_(place), end_(end) {}
    const DirectoryEntry& operator*() const { return *place_->entry; }
    const DirectoryEntry* operator->() const { return place_->entry; }
    Iterator& operator++() {
        // An order leads all over the memory: entries soon to be visited are called for in time.
        if (end_ - place_ > ahead) {
            const auto* entry = reinterpret_cast<const char*>(place_[ahead].entry);
            for (size_t line = 0; line <= sizeof(DirectoryEntry); line += 64)
                __builtin_prefetch(entry + line);
        }
        place_++;
        return *this;
    }
    bool operator==(const Iterator& other) const { return place_ == other.place_; }

  private:
    static constexpr ptrdiff_t ahead = 8;

    const Place* place_;
    const Place* end_;
};

DirectoryListing::Iterator DirectoryListing::begin() const {
    return {places_.begin(), places_.end()};
}

DirectoryListing::Iterator DirectoryListing::end() const {
    return {places_.end(), places_.end()};
}

// Opens a directory for reading its entries, whatever the length of its path. With Links::keep a symbolic
// link in the last place is refused (ENOTDIR or ELOOP). Empty with errno on failure.
[[nodiscard]] UniqueFd open_directory(const char* path, platform::Links links = platform::Links::follow);

// The same for a name (or a path that the system takes in one piece) below the open directory dir or
// AT_FDCWD.
[[nodiscard]] UniqueFd open_directory(int dir, const char* name, platform::Links links);

// Goes along a path that is too long for one call of the system, until the rest is short enough for one: that
// rest, a pointer into path or ".", is returned, and *start holds the directory from which it goes on (empty:
// start from AT_FDCWD). Null with errno when that fails. A short path costs nothing and is returned as it is.
[[nodiscard]] const char* shorten_path(const char* path, UniqueFd* start);

// New: the entries of a directory as a deque of gn_dirent, which the caller releases with deque_release. sort
// holds the number of an EntryOrder. Null with errno when the directory cannot be opened, memory runs out, or
// sort is none of these numbers. Names above 255 bytes, which few file systems have, are left out.
[[nodiscard]] deque* gn_readdir(const char* path, int sort, bool reverse, bool dots);

// New: the keys of a tree of gn_dirent in its order, or the other way round, as gn_readdir gives them;
// records for which memory runs out are left out. Releases the tree, also when it returns null for no memory.
[[nodiscard]] deque* gn_readdir_flatten(btree* tree, bool reverse);

// Fills a record; the name is cut off after 255 bytes and the birth time, which a stat does not hold, is
// zero.
void gn_stat_to_gn_dirent(const struct stat* status, const char* name, gn_dirent* record);

// The orders as pairs of predicates on two gn_dirent, for an ordered tree.
[[nodiscard]] bool gn_direntsort_name_lt(const void* a, const void* b);
[[nodiscard]] bool gn_direntsort_name_eq(const void* a, const void* b);
[[nodiscard]] bool gn_direntsort_date_lt(const void* a, const void* b);
[[nodiscard]] bool gn_direntsort_date_eq(const void* a, const void* b);
[[nodiscard]] bool gn_direntsort_size_lt(const void* a, const void* b);
[[nodiscard]] bool gn_direntsort_size_eq(const void* a, const void* b);

// Orders an array of strings (const char* elements) by strcmp.
[[nodiscard]] int cmp_SZ(const void* a, const void* b);
