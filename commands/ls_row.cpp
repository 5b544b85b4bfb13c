#include "commands/ls_row.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/bytes.h"
#include "common/colors.h"
#include "common/paths.h"
#include "common/text.h"

namespace ls {

// User names

UserNames::~UserNames() {
    if (names_.raw() == nullptr) return;
    for (auto entry : names_) free(entry.value);
}

// The first name of an id wins.
const char* UserNames::insert(int64_t id, const char* name) {
    CString copy(strdup(name));
    if (!copy || !names_.insert(id, copy.get())) return nullptr;
    return copy.release();
}

void UserNames::read_users() {
    users_read_ = true;
    setpwent();
    while (const passwd* user = getpwent()) {
        (void)insert(static_cast<int32_t>(user->pw_uid), user->pw_name);
    }
    endpwent();
}

const char* UserNames::find(int64_t id) {
    Recent& recent = recent_[static_cast<uint64_t>(id) % std::size(recent_)];
    if (recent.name != nullptr && recent.id == id) return recent.name;
    if (!users_read_) read_users();

    const char* name = nullptr;
    if (char* const* known = names_.find(id); known != nullptr) {
        name = *known;
    } else {
        char number[16];
        *std::to_chars(number, number + sizeof number, static_cast<uint32_t>(id)).ptr = '\0';
        name = insert(id, number);
    }
    recent = {id, name};
    return name;
}

const char* resolve_uid(UserNames& names, int64_t id) {
    return names.find(id);
}

// The name buffer

bool NameBuffer::create() {
    capacity_ = 8202;
    data_ = CString(static_cast<char*>(malloc(capacity_)));
    return static_cast<bool>(data_);
}

void NameBuffer::append(std::string_view piece) {
    if (capacity_ - size_ <= piece.size()) {
        size_t wanted = 0;
        char* larger = nullptr;
        if (!__builtin_add_overflow(piece.size(), capacity_ * 2, &wanted))
            larger = static_cast<char*>(realloc(data_.get(), wanted));
        if (larger == nullptr) {
            memory_short_ = true;
            return;
        }
        (void)data_.release();
        data_ = CString(larger);
        capacity_ = wanted;
    }
    bytes::copy(data_.get() + size_, piece.data(), piece.size());
    size_ += piece.size();
}

std::optional<std::string_view> NameBuffer::text() const {
    if (memory_short_) return std::nullopt;
    return std::string_view(data_.get(), size_);
}

namespace {

// Links

// A longer target is left out.
constexpr int64_t longest_target = 4000;

// A path as seen from an open directory or AT_FDCWD.
struct Place {
    int dir;
    const char* path;
};

bool examine(const Place& place, struct stat* status) {
    return platform::file_status(place.dir, place.path, platform::Links::keep, status, nullptr);
}

mode_t target_mode(const EntryDirectory& directory, const char* target) {
    CString joined;
    Place place{directory.fd, target};
    if (target[0] == '/' || target[0] == '\\') {
        place.dir = AT_FDCWD;
    } else if (directory.fd < 0) {
        joined = CString(concatenate({directory.path, "/", target}));
        place = {AT_FDCWD, joined.get()};
    }
    struct stat status;
    return place.path != nullptr && examine(place, &status) ? status.st_mode : mode_t{S_IFREG};
}

void append_colored(RowWriter& writer, mode_t mode, const char* name) {
    const Switches& switches = writer.switches;
    if (switches.color) writer.name.append(gn_begin_color(mode));
    if (switches.quote) writer.name.append("\"");
    writer.name.append(name);
    if (switches.quote) writer.name.append("\"");
    if (switches.color) writer.name.append(gn_end_color());
    if (switches.indicator) writer.name.append(gn_getprintfiletype(mode));
}

void append_target(RowWriter& writer, const EntryDirectory& directory, const Place& link, int64_t size) {
    char target[longest_target];
    const auto room = static_cast<size_t>(std::clamp(size, int64_t{0}, longest_target - 1));
    const ssize_t length = readlinkat(link.dir, link.path, target, room);
    if (length < 1) return;
    target[length] = '\0';
    const bool mode_shows = writer.switches.color || writer.switches.indicator;
    const mode_t mode = mode_shows ? target_mode(directory, target) : mode_t{S_IFREG};
    writer.name.append(" -> ");
    append_colored(writer, mode, target);
}

// Columns

// Collects the first error of the calls that fill a row.
class Cells {
  public:
    explicit Cells(colp_table* table) : table_(table), status_(colp_beginrow(table)) {}

    void add(std::string_view text) {
        if (status_ == COLP_OK) status_ = colp_addcell_text(table_, text.data(), text.size());
    }
    void add(uint64_t number) {
        if (status_ == COLP_OK) status_ = colp_addcell_uint(table_, number);
    }
    [[nodiscard]] unsigned end() { return status_ == COLP_OK ? colp_endrow(table_) : status_; }

  private:
    colp_table* table_;
    unsigned status_;
};

char type_letter(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFBLK: return 'b';
    case S_IFLNK: return 'l';
    case S_IFSOCK: return 's';
    case S_IFREG: return '-';
    case S_IFCHR: return 'c';
    case S_IFDIR: return 'd';
    case S_IFIFO: return 'f';
    default: return '?';
    }
}

void add_mode(Cells& cells, mode_t mode) {
    char text[] = "?rwxrwxrwx";
    text[0] = type_letter(mode);
    for (unsigned bit = 0; bit < 9; bit++) {
        if ((mode >> (8 - bit) & 1) == 0) text[1 + bit] = '-';
    }
    cells.add({text, sizeof text - 1});
}

void add_name(Cells& cells, const char* name) {
    cells.add(name != nullptr ? name : "?");
}

// The next unit comes above 256 of it, not above one.
void add_size(Cells& cells, int64_t size, bool human) {
    char text[24];
    char suffix = '\0';
    if (human) {
        constexpr char suffixes[] = {'k', 'M', 'G', 'T', 'P'};
        for (int unit = 5; unit >= 1; unit--) {
            if (static_cast<uint64_t>(size) > uint64_t{1} << (unit * 10 + 8)) {
                size >>= unit * 10;
                suffix = suffixes[unit - 1];
                break;
            }
        }
    }
    char* end = std::to_chars(text, text + sizeof text, static_cast<uint64_t>(size)).ptr;
    if (suffix != '\0') *end++ = suffix;
    cells.add({text, static_cast<size_t>(end - text)});
}

void add_long_columns(Cells& cells, RowWriter& writer, const EntryStatus& status) {
    const Switches& switches = writer.switches;
    if (switches.entry_id) cells.add(status.ino);
    if (switches.mode) add_mode(cells, status.mode);
    cells.add(uint64_t{static_cast<uint32_t>(status.nlink)});
    add_name(cells, resolve_uid(writer.users, status.uid));
    add_name(cells, resolve_gid(writer.users, status.gid));
    add_size(cells, status.size, switches.human);
    if (switches.date) cells.add(writer.dates.text(status.mtime.tv_sec));
}

}  // namespace

unsigned render_item(RowWriter& writer, const EntryDirectory& directory, const DirectoryEntry& entry,
                     NameForm form) {
    const Switches& switches = writer.switches;
    const EntryStatus* status = &entry;
    CString joined;
    gn_dirent joined_entry;
    Place link{directory.fd, entry.name};
    bool shows_target = switches.link_target && S_ISLNK(entry.mode);
    if (shows_target && directory.fd < 0) {
        struct stat found;
        joined = CString(gn_joinpath(directory.path, entry.name));
        link = {AT_FDCWD, joined.get()};
        shows_target = joined && examine(link, &found);
        if (shows_target) {
            gn_stat_to_gn_dirent(&found, "", &joined_entry);
            status = &joined_entry;
            shows_target = S_ISLNK(status->mode);
        }
    }

    Cells cells(writer.table);
    if (switches.long_format) add_long_columns(cells, writer, *status);

    const char* shown = form == NameForm::operand ? directory.path : entry.name;
    if (!shows_target && !switches.color && !switches.quote && !switches.indicator) {
        cells.add(shown);
        return cells.end();
    }
    writer.name.clear();
    append_colored(writer, status->mode, shown);
    if (shows_target && status->size < longest_target) append_target(writer, directory, link, status->size);
    const std::optional<std::string_view> name = writer.name.text();
    if (!name) return COLP_ENOMEM;
    cells.add(*name);
    return cells.end();
}

}  // namespace ls
