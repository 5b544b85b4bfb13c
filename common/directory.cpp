#include "common/directory.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>

#include "common/bytes.h"
#include "lib/containers/btree.h"
#include "lib/containers/container_deque.h"

namespace {

// A small directory should cost little; a large one few blocks. Blocks double in size in between.
constexpr size_t smallest_block = size_t{4} << 10;
constexpr size_t largest_block = size_t{1} << 20;

bool is_dots(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

int64_t widen_id(uint32_t id) {
    return static_cast<int32_t>(id);
}

EntryStatus to_entry_status(const struct stat& status, const timespec& birth) {
    return {
        .dev = static_cast<int64_t>(status.st_dev),
        .ino = status.st_ino,
        .mode = status.st_mode,
        .nlink = static_cast<int32_t>(status.st_nlink),
        .uid = widen_id(status.st_uid),
        .gid = widen_id(status.st_gid),
        .rdev = static_cast<int64_t>(status.st_rdev),
        .size = status.st_size,
        .blksize = static_cast<uint32_t>(status.st_blksize),
        .blocks = status.st_blocks,
        .atime = status.st_atim,
        .ctime = status.st_ctim,
        .mtime = status.st_mtim,
        .btime = birth,
    };
}

// The orders: negative, zero or positive, as strcmp.

template <typename Number>
int compare(Number a, Number b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

int compare_dates(const EntryStatus& a, const EntryStatus& b) {
    const int order = compare(a.mtime.tv_sec, b.mtime.tv_sec);
    return order != 0 ? order : compare(a.mtime.tv_nsec, b.mtime.tv_nsec);
}

int compare_sizes(const EntryStatus& a, const EntryStatus& b) {
    return compare(a.size, b.size);
}

// What stands in for the orders while places are sorted: whole numbers that are smaller where the entry comes
// first. Among equal ones a look at the entries tells.

uint64_t signed_key(int64_t value) {
    return static_cast<uint64_t>(value) ^ (uint64_t{1} << 63);
}

uint64_t name_key(const char* name) {
    uint64_t key = 0;
    for (int shift = 56; shift >= 0 && *name != '\0'; shift -= 8)
        key |= uint64_t{static_cast<unsigned char>(*name++)} << shift;
    return key;
}

// Nanoseconds, which reach from 1677 to 2262; times further out share their key with the ends.
uint64_t date_key(const timespec& time) {
    int64_t key = 0;
    if (__builtin_mul_overflow(time.tv_sec, int64_t{1000000000}, &key) ||
        __builtin_add_overflow(key, time.tv_nsec, &key)) {
        key = time.tv_sec < 0 ? INT64_MIN : INT64_MAX;
    }
    return signed_key(key);
}

size_t common_prefix_length(const char* a, const char* b, size_t most) {
    size_t length = 0;
    while (length < most && a[length] == b[length]) length++;
    return length;
}

}  // namespace

// Entries live and die together, so they are cut from a few blocks, each behind the other.
struct DirectoryListing::Block {
    Block* older;
    size_t size;  // without this header
};

DirectoryListing::DirectoryListing(DirectoryListing&& other) noexcept
    : places_(std::move(other.places_)),
      newest_(std::exchange(other.newest_, nullptr)),
      position_(std::exchange(other.position_, nullptr)),
      room_(std::exchange(other.room_, 0)) {}

DirectoryListing& DirectoryListing::operator=(DirectoryListing&& other) noexcept {
    if (this != &other) {
        release();
        places_ = std::move(other.places_);
        newest_ = std::exchange(other.newest_, nullptr);
        position_ = std::exchange(other.position_, nullptr);
        room_ = std::exchange(other.room_, 0);
    }
    return *this;
}

DirectoryListing::~DirectoryListing() {
    release();
}

// Keeps the newest block: a walk through many directories of a usual size then allocates next to nothing.
void DirectoryListing::clear() {
    places_.clear();
    if (newest_ == nullptr) return;
    while (newest_->older != nullptr) {
        Block* older = newest_->older;
        newest_->older = older->older;
        free(older);
    }
    position_ = reinterpret_cast<char*>(newest_ + 1);
    room_ = newest_->size;
}

void DirectoryListing::release() {
    clear();
    free(std::exchange(newest_, nullptr));
    position_ = nullptr;
    room_ = 0;
}

void* DirectoryListing::allocate(size_t size) {
    size = (size + alignof(DirectoryEntry) - 1) / alignof(DirectoryEntry) * alignof(DirectoryEntry);
    if (size > room_) {
        size_t block_size = newest_ == nullptr ? smallest_block : std::min(newest_->size * 2, largest_block);
        block_size = std::max(block_size, size);
        auto* block = static_cast<Block*>(malloc(sizeof(Block) + block_size));
        if (block == nullptr) return nullptr;
        *block = {newest_, block_size};
        newest_ = block;
        position_ = reinterpret_cast<char*>(block + 1);
        room_ = block_size;
    }
    void* result = position_;
    position_ += size;
    room_ -= size;
    return result;
}

const DirectoryEntry* DirectoryListing::append(const struct stat& status, const timespec& birth,
                                               const char* name) {
    const size_t name_size = strlen(name) + 1;
    auto* entry = static_cast<DirectoryEntry*>(allocate(sizeof(DirectoryEntry) + name_size));
    if (entry == nullptr) return nullptr;
    auto* copy = reinterpret_cast<char*>(entry + 1);
    bytes::copy(copy, name, name_size);
    *entry = {to_entry_status(status, birth), copy};
    return places_.push_back({0, entry}) ? entry : nullptr;
}

bool DirectoryListing::read(int dir, EntryOrder order, bool reverse, bool dots, EntryDetail detail) {
    clear();
    platform::DirectoryNames names(dir);
    size_t common_prefix = 0;
    bool memory_short = false;
    while (const char* name = names.next()) {
        if (!dots && is_dots(name)) continue;
        struct stat status;
        timespec birth;
        const mode_t type = names.type();
        if (detail == EntryDetail::type && !empty() && type != 0 && !S_ISDIR(type) && !S_ISLNK(type)) {
            status = {};
            status.st_mode = type;
            birth = {};
        } else if (!platform::file_status(dir, name, platform::Links::keep, &status, &birth)) {
            // Where one entry cannot be examined, the directory's word is not enough for the others.
            if (errno != ENOENT) detail = EntryDetail::status;
            continue;
        }
        const DirectoryEntry* entry = append(status, birth, name);
        if (entry == nullptr) {
            memory_short = true;
        } else if (size() == 1) {
            common_prefix = strlen(entry->name);
        } else {
            common_prefix = common_prefix_length((*this)[0].name, entry->name, common_prefix);
        }
    }
    if (empty() && memory_short) errno = ENOMEM;
    if (empty() && (memory_short || errno == ENOTDIR || errno == EBADF)) return false;
    if (order == EntryOrder::unsorted) return true;
    sort(order, common_prefix);
    if (reverse) std::reverse(places_.begin(), places_.end());
    return true;
}

// Keys decide almost always. Of equal ones, the numbers themselves do where the key could not hold them, or, in
// an order without numbers, the names behind the prefix that all have in common.
struct DirectoryListing::Precedes {
    int (*compare_numbers)(const EntryStatus&, const EntryStatus&);
    size_t common_prefix;

    bool operator()(const Place& a, const Place& b) const {
        if (a.key != b.key) return a.key < b.key;
        if (compare_numbers == nullptr)
            return strcmp(a.entry->name + common_prefix, b.entry->name + common_prefix) < 0;
        return (a.key == 0 || a.key == UINT64_MAX) && compare_numbers(*a.entry, *b.entry) < 0;
    }
};

// common_prefix bytes of all names are equal: looking behind them makes the keys of numbered files differ.
void DirectoryListing::sort(EntryOrder order, size_t common_prefix) {
    auto behind_prefix = [=](const Place& place) { return place.entry->name + common_prefix; };
    auto sort_places = [](Place* first, Place* last, Precedes precedes) { std::sort(first, last, precedes); };
    Precedes by_number{nullptr, 0};
    if (order == EntryOrder::date) by_number.compare_numbers = compare_dates;
    if (order == EntryOrder::size) by_number.compare_numbers = compare_sizes;
    if (by_number.compare_numbers != nullptr) {
        for (Place& place : places_) {
            place.key =
                order == EntryOrder::date ? date_key(place.entry->mtime) : signed_key(place.entry->size);
        }
        sort_places(places_.begin(), places_.end(), by_number);
    }
    // Names come in among equal numbers only, of which a directory may be full.
    for (Place *first = places_.begin(), *last; first != places_.end(); first = last) {
        last = by_number.compare_numbers == nullptr ? places_.end() : first + 1;
        while (last != places_.end() && !by_number(*first, *last)) last++;
        if (last - first == 1) continue;
        for (Place* place = first; place != last; place++) place->key = name_key(behind_prefix(*place));
        sort_places(first, last, {nullptr, common_prefix});
    }
    // A directory that changes while it is read may deliver an entry twice; an order holds it once.
    auto* end = std::unique(places_.begin(), places_.end(), [=](const Place& a, const Place& b) {
        return a.key == b.key && strcmp(behind_prefix(a), behind_prefix(b)) == 0;
    });
    (void)places_.resize(static_cast<size_t>(end - places_.begin()));
}

const char* shorten_path(const char* path, UniqueFd* start) {
    while (strnlen(path, PATH_MAX) == PATH_MAX) {
        char piece[PATH_MAX];
        memcpy(piece, path, sizeof piece);
        piece[sizeof piece - 1] = '\0';
        char* slash = strrchr(piece, '/');
        if (slash == nullptr) {
            errno = ENAMETOOLONG;
            return nullptr;
        }
        slash[1] = '\0';
        UniqueFd next(platform::open_passage(start->valid() ? start->get() : AT_FDCWD, piece));
        if (!next.valid()) return nullptr;
        *start = std::move(next);
        path += slash + 1 - piece;
        path += strspn(path, "/");
    }
    return start->valid() && *path == '\0' ? "." : path;
}

UniqueFd open_directory(const char* path, platform::Links links) {
    UniqueFd start;
    const char* rest = shorten_path(path, &start);
    if (rest == nullptr) return {};
    return open_directory(start.valid() ? start.get() : AT_FDCWD, rest, links);
}

UniqueFd open_directory(int dir, const char* name, platform::Links links) {
    const int link_flag = links == platform::Links::keep ? O_NOFOLLOW : 0;
    return UniqueFd(openat(dir, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC | link_flag));
}

deque* gn_readdir(const char* path, int sort, bool reverse, bool dots) {
    if (sort < static_cast<int>(EntryOrder::unsorted) || sort > static_cast<int>(EntryOrder::size)) {
        errno = EINVAL;
        return nullptr;
    }
    UniqueFd directory = open_directory(path);
    DirectoryListing listing;
    Deque<gn_dirent> result;
    if (!directory.valid() || !listing.read(directory.get(), static_cast<EntryOrder>(sort), reverse, dots) ||
        !result.create()) {
        return nullptr;
    }
    for (const DirectoryEntry& entry : listing) {
        gn_dirent record{entry, {}};
        const size_t name_size = strlen(entry.name) + 1;
        if (name_size > sizeof record.name) continue;
        memcpy(record.name, entry.name, name_size);
        (void)result.push_back(record);  // a record that finds no room is left out
    }
    return result.release();
}

deque* gn_readdir_flatten(btree* tree, bool reverse) {
    Deque<gn_dirent> result;
    if (result.create()) {
        btree_it it;
        for (bool on = btree_begin(&it, tree); on; on = btree_next(&it)) {
            const void* record = it.key;
            (void)(reverse ? deque_push_front(result.raw(), record) : deque_push_back(result.raw(), record));
        }
    }
    btree_release(tree);
    return result.release();
}

void gn_stat_to_gn_dirent(const struct stat* status, const char* name, gn_dirent* record) {
    static_cast<EntryStatus&>(*record) = to_entry_status(*status, {});
    const size_t length = strnlen(name, sizeof record->name - 1);
    memcpy(record->name, name, length);
    record->name[length] = '\0';
}

namespace {

const gn_dirent& record_of(const void* element) {
    return *static_cast<const gn_dirent*>(element);
}

int order_by_name(const void* a, const void* b) {
    return strcmp(record_of(a).name, record_of(b).name);
}

int order_by_date(const void* a, const void* b) {
    const int order = compare_dates(record_of(a), record_of(b));
    return order != 0 ? order : order_by_name(a, b);
}

int order_by_size(const void* a, const void* b) {
    const int order = compare_sizes(record_of(a), record_of(b));
    return order != 0 ? order : order_by_name(a, b);
}

}  // namespace

bool gn_direntsort_name_lt(const void* a, const void* b) {
    return order_by_name(a, b) < 0;
}

bool gn_direntsort_name_eq(const void* a, const void* b) {
    return order_by_name(a, b) == 0;
}

bool gn_direntsort_date_lt(const void* a, const void* b) {
    return order_by_date(a, b) < 0;
}

bool gn_direntsort_date_eq(const void* a, const void* b) {
    return order_by_date(a, b) == 0;
}

bool gn_direntsort_size_lt(const void* a, const void* b) {
    return order_by_size(a, b) < 0;
}

bool gn_direntsort_size_eq(const void* a, const void* b) {
    return order_by_size(a, b) == 0;
}

int cmp_SZ(const void* a, const void* b) {
    return strcmp(*static_cast<const char* const*>(a), *static_cast<const char* const*>(b));
}
