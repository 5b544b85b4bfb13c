// Linux: the mount table of this process, /proc/self/mountinfo (see proc(5)), what sysfs tells of block
// devices, and the calls around them.
//
// A mount is found by its number, which the kernel gives for every open file: paths can lie (mounts are
// stacked on one another, and directories are shown in several places), and so do device numbers.

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <span>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux_statx.h"
#include "platform/mounts.h"
#include "platform/platform.h"

namespace {

// How long a file system may take to answer before it counts as hung.
constexpr uint32_t patience_ms = 3000;

// File systems that are served by this kernel alone, from memory or from its own disks: asking them cannot
// hang. Every other one may wait for a server or another process, as overlays do that lie upon such a one.
constexpr char local_types[] =
    "bcachefs\0bdev\0binfmt_misc\0bpf\0btrfs\0cgroup\0cgroup2\0configfs\0cpuset\0cramfs\0debugfs\0"
    "devpts\0devtmpfs\0efivarfs\0erofs\0exfat\0ext2\0ext3\0ext4\0f2fs\0fusectl\0hfs\0hfsplus\0"
    "hugetlbfs\0iso9660\0jffs2\0jfs\0minix\0mqueue\0msdos\0nilfs2\0nsfs\0ntfs3\0proc\0pstore\0ramfs\0"
    "reiserfs\0rootfs\0securityfs\0squashfs\0sysfs\0tmpfs\0udf\0selinuxfs\0tracefs\0ubifs\0vfat\0xfs\0"
    "zfs\0";

bool is_local(const char* type) {
    const char* local = local_types;
    while (*local != '\0' && strcmp(local, type) != 0) local += strlen(local) + 1;
    return *local != '\0';
}

class Fd {
  public:
    explicit Fd(int fd) : fd_(fd) {}
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    ~Fd() {
        if (fd_ < 0) return;
        const int error = errno;
        close(fd_);
        errno = error;
    }
    [[nodiscard]] int get() const { return fd_; }
    [[nodiscard]] bool valid() const { return fd_ >= 0; }

  private:
    int fd_;
};

// ---- the mount table

struct Mount {
    uint64_t id;
    uint64_t parent_id;
    uint32_t device_major;
    uint32_t device_minor;
    const char* point;
    const char* source;
    const char* type;
    const char* root;
    const char* options;
    const char* own_options;
    const Mount* parent;  // null when it lies outside the root directory of this process
    bool local;           // of a type that answers for itself
    bool covered;         // by a mount further up in its parent
};

// Takes the text up to the next blank off the front, and undoes its escapes: the kernel writes blanks, line
// ends and backslashes as a backslash and three octal digits.
char* take_field(char** rest) {
    char* field = *rest;
    char* end = field + strcspn(field, " ");
    *rest = *end != '\0' ? end + 1 : end;
    *end = '\0';
    char* to = field;
    for (const char* from = field; *from != '\0';) {
        unsigned byte = 0;
        int digits = 0;
        if (*from == '\\') {
            while (digits < 3 && from[1 + digits] >= '0' && from[1 + digits] <= '7')
                byte = byte * 8 + static_cast<unsigned>(from[1 + digits++] - '0');
        }
        *to++ = digits == 3 ? static_cast<char>(byte) : *from;
        from += digits == 3 ? 4 : 1;
    }
    *to = '\0';
    return field;
}

// 36 35 98:0 /root /mount/point options [tag:value...] - type source options
bool parse_mount(char* line, Mount* mount) {
    char* end = nullptr;
    mount->id = strtoull(line, &end, 10);
    if (*end != ' ') return false;
    mount->parent_id = strtoull(end, &end, 10);
    if (*end != ' ') return false;
    mount->device_major = static_cast<uint32_t>(strtoul(end, &end, 10));
    if (*end != ':') return false;
    mount->device_minor = static_cast<uint32_t>(strtoul(end + 1, &end, 10));
    if (*end != ' ') return false;
    char* rest = end + 1;
    mount->root = take_field(&rest);
    mount->point = take_field(&rest);
    mount->options = take_field(&rest);
    const char* field = take_field(&rest);
    while (field[0] != '\0' && strcmp(field, "-") != 0) field = take_field(&rest);
    if (field[0] == '\0') return false;
    mount->type = take_field(&rest);
    mount->local = is_local(mount->type);
    mount->source = take_field(&rest);
    mount->own_options = take_field(&rest);
    mount->parent = nullptr;
    mount->covered = false;
    return true;
}

// Memory from malloc for elements that need no construction.
template <class T>
class Array {
  public:
    Array() = default;
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    ~Array() { free(data_); }

    // Makes room for at least that many elements, or for twice as many as before. False with errno.
    [[nodiscard]] bool grow(size_t least) {
        const size_t wanted = std::max(least, capacity_ * 2);
        size_t bytes;
        if (__builtin_mul_overflow(wanted, sizeof(T), &bytes)) {
            errno = ENOMEM;
            return false;
        }
        T* larger = static_cast<T*>(realloc(data_, bytes));
        if (larger == nullptr) return false;
        data_ = larger;
        capacity_ = wanted;
        return true;
    }

    [[nodiscard]] size_t capacity() const { return capacity_; }
    [[nodiscard]] T* data() const { return data_; }
    [[nodiscard]] T& operator[](size_t index) const { return data_[index]; }

  private:
    T* data_ = nullptr;
    size_t capacity_ = 0;
};

struct Numbered {
    uint64_t id;
    const Mount* mount;
};

int compare_ids(const void* left, const void* right) {
    const auto* a = static_cast<const Numbered*>(left);
    const auto* b = static_cast<const Numbered*>(right);
    return a->id < b->id ? -1 : a->id > b->id ? 1 : 0;
}

// A copy of the table at one moment.
class MountTable {
  public:
    // False with errno.
    [[nodiscard]] bool load() { return read_text() && parse() && connect(); }

    // Finds out which mounts are covered. False with errno.
    [[nodiscard]] bool look_for_covered();

    [[nodiscard]] std::span<const Mount> mounts() const { return all(); }

    // Null if there is none.
    [[nodiscard]] const Mount* find(uint64_t id) const {
        const Numbered wanted{id, nullptr};
        const void* found = bsearch(&wanted, order_.data(), count_, sizeof wanted, compare_ids);
        return found != nullptr ? static_cast<const Numbered*>(found)->mount : nullptr;
    }

    // What is mounted on top at a path.
    [[nodiscard]] const Mount* find(const char* point) const {
        for (size_t i = count_; i > 0; i--) {
            if (strcmp(mounts_[i - 1].point, point) == 0) return &mounts_[i - 1];
        }
        return nullptr;
    }

  private:
    bool read_text();
    bool parse();
    bool connect();

    [[nodiscard]] std::span<Mount> all() const { return {mounts_.data(), count_}; }

    Array<char> text_;
    Array<Mount> mounts_;
    Array<Numbered> order_;  // by number
    size_t count_ = 0;
};

bool MountTable::read_text() {
    Fd file(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    if (!file.valid()) return false;
    for (size_t used = 0;;) {
        if (text_.capacity() - used < 4096 && !text_.grow(16384)) return false;
        const ssize_t got = read(file.get(), text_.data() + used, text_.capacity() - used - 1);
        if (got < 0 && errno != EINTR) return false;
        if (got > 0) used += static_cast<size_t>(got);
        if (got == 0) {
            text_[used] = '\0';
            return true;
        }
    }
}

bool MountTable::parse() {
    for (char* line = text_.data(); *line != '\0';) {
        char* end = line + strcspn(line, "\n");
        char* next = *end != '\0' ? end + 1 : end;
        *end = '\0';
        if (count_ == mounts_.capacity() && !mounts_.grow(64)) return false;
        if (parse_mount(line, &mounts_[count_])) count_++;
        line = next;
    }
    return true;
}

bool MountTable::connect() {
    if (!order_.grow(count_ + 1)) return false;
    for (size_t i = 0; i < count_; i++) order_[i] = {mounts_[i].id, &mounts_[i]};
    qsort(order_.data(), count_, sizeof(Numbered), compare_ids);
    for (Mount& mount : all()) {
        // The first mount of all is its own parent.
        if (mount.parent_id != mount.id) mount.parent = find(mount.parent_id);
    }
    // The kernel gives a long table in pieces: mounts that are moved meanwhile may seem to lie in each other.
    for (Mount& mount : all()) {
        size_t steps = 0;
        for (const Mount* at = &mount; at != nullptr && steps <= count_; at = at->parent) steps++;
        if (steps > count_) mount.parent = nullptr;
    }
    return true;
}

struct Place {
    uint64_t parent_id;
    std::string_view point;
};

int compare_places(const void* left, const void* right) {
    const auto* a = static_cast<const Place*>(left);
    const auto* b = static_cast<const Place*>(right);
    if (a->parent_id != b->parent_id) return a->parent_id < b->parent_id ? -1 : 1;
    return a->point.compare(b->point);
}

// A mount that stands in the same parent on a directory above hides what is mounted below that directory. Not
// so one on the root directory: paths begin below it.
bool MountTable::look_for_covered() {
    Array<Place> places;
    if (!places.grow(count_ + 1)) return false;
    for (size_t i = 0; i < count_; i++) places[i] = {mounts_[i].parent_id, mounts_[i].point};
    qsort(places.data(), count_, sizeof(Place), compare_places);
    for (Mount& mount : all()) {
        const std::string_view point = mount.point;
        for (size_t end = 1; end < point.size() && !mount.covered; end++) {
            if (point[end] != '/') continue;
            const Place above{mount.parent_id, {point.data(), end}};
            mount.covered = bsearch(&above, places.data(), count_, sizeof above, compare_places) != nullptr;
        }
    }
    return true;
}

bool is_hidden(const Mount* mount) {
    while (mount != nullptr && !mount->covered) mount = mount->parent;
    return mount != nullptr;
}

bool may_hang(const Mount& mount) {
    const Mount* at = &mount;
    while (at != nullptr && at->local) at = at->parent;
    return at != nullptr;
}

// ---- iterations

struct Iteration {
    uint32_t handle;
    Iteration* next;
    size_t position;
    MountTable table;
};

// The open ones, the newest first.
Iteration* iterations = nullptr;
uint32_t newest_handle = 0;

// Null with errno.
Iteration* find_iteration(uint32_t handle) {
    Iteration* at = iterations;
    while (at != nullptr && at->handle != handle) at = at->next;
    if (at == nullptr) errno = EBADF;
    return at;
}

// The table to look in: that of an open iteration, so that who visits all mounts does not read the table
// again for each of them; otherwise one of its own.
class CurrentTable {
  public:
    [[nodiscard]] bool load() {
        if (iterations == nullptr) return own_.load();
        shared_ = &iterations->table;
        return true;
    }
    // Null with errno if there is none, or a table cannot be read.
    [[nodiscard]] const Mount* find(uint64_t id) {
        const Mount* mount = table().find(id);
        if (mount == nullptr && shared_ != nullptr) {
            shared_ = nullptr;
            if (!own_.load()) return nullptr;
            mount = own_.find(id);
        }
        if (mount == nullptr) errno = ENOENT;
        return mount;
    }
    [[nodiscard]] const MountTable& table() const { return shared_ != nullptr ? *shared_ : own_; }

  private:
    MountTable own_;
    const MountTable* shared_ = nullptr;
};

// ---- asking about a path

struct Answer {
    int error;
    uint64_t mount_id;
    struct statfs numbers;
};

// Before Linux 5.8, and where a sandbox forbids statx: "mnt_id:" among what proc tells of a descriptor.
bool mount_id_from_proc(int fd, uint64_t* id) {
    char text[64];
    snprintf(text, sizeof text, "/proc/self/fdinfo/%d", fd);
    Fd file(open(text, O_RDONLY | O_CLOEXEC));
    char info[1024];
    const ssize_t got = file.valid() ? read(file.get(), info, sizeof info - 1) : -1;
    if (got < 0) return false;
    info[got] = '\0';
    const char* line = strstr(info, "mnt_id:");
    if (line == nullptr) {
        errno = ENOSYS;
        return false;
    }
    *id = strtoull(line + strlen("mnt_id:"), nullptr, 10);
    return true;
}

bool mount_id_of(int fd, uint64_t* id) {
    platform::KernelStatus status{};
    const unsigned flags = AT_EMPTY_PATH | platform::without_asking;
    if (syscall(SYS_statx, fd, "", flags, platform::mount_id, &status) != 0 ||
        (status.mask & platform::mount_id) == 0)
        return mount_id_from_proc(fd, id);
    *id = status.mount_id;
    return true;
}

// Opens a path of any length as a mere place: no right to the file is needed, and neither a device nor a pipe
// notices. -1 with errno.
int open_place(const char* path) {
    int dir = AT_FDCWD;
    // The kernel takes less than PATH_MAX bytes at a time.
    while (dir != -1 && strlen(path) >= PATH_MAX) {
        const Fd above(dir);
        char part[PATH_MAX];
        size_t cut = sizeof part - 1;
        while (cut > 0 && path[cut] != '/') cut--;
        memcpy(part, path, cut);
        part[cut] = '\0';
        dir = openat(dir, cut > 0 ? part : path, O_PATH | O_DIRECTORY | O_CLOEXEC);
        path += cut;
        while (*path == '/') path++;
    }
    if (dir == -1) return -1;
    const Fd above(dir);
    return openat(dir, dir != AT_FDCWD && *path == '\0' ? "." : path, O_PATH | O_CLOEXEC);
}

enum class Numbers { wanted, unwanted };

Answer ask(const char* path, Numbers numbers) {
    Answer answer{};
    const Fd fd(open_place(path));
    if (!fd.valid() || !mount_id_of(fd.get(), &answer.mount_id) ||
        (numbers == Numbers::wanted && fstatfs(fd.get(), &answer.numbers) != 0)) {
        answer.error = errno;
    }
    return answer;
}

// Reads the answer from the pipe, but waits no longer than patience lasts. False when there was none.
bool await(int pipe, Answer* answer) {
    const uint32_t start = TickGetCount();
    size_t filled = 0;
    while (filled < sizeof *answer) {
        const uint32_t waited = TickGetCount() - start;
        pollfd event{pipe, POLLIN, 0};
        const int ready = waited < patience_ms ? poll(&event, 1, static_cast<int>(patience_ms - waited)) : 0;
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) {
            answer->error = ready == 0 ? ETIMEDOUT : errno;
            return false;
        }
        const ssize_t got = read(pipe, reinterpret_cast<char*>(answer) + filled, sizeof *answer - filled);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {
            answer->error = EIO;
            return false;
        }
        filled += static_cast<size_t>(got);
    }
    return true;
}

// The same through another process, which is left behind when it hangs: what waits inside the kernel for a
// server cannot be interrupted, only killed, and sometimes not even that.
Answer ask_with_patience(const char* path) {
    Answer answer{};
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        answer.error = errno;
        return answer;
    }
    const Fd from(ends[0]);
    const pid_t child = fork();
    if (child == 0) {
        // Who waits for the end of our output must not wait for this process.
        for (int fd = 0; fd <= STDERR_FILENO; fd++) {
            if (fd != ends[1]) close(fd);
        }
        answer = ask(path, Numbers::wanted);
        const ssize_t written = write(ends[1], &answer, sizeof answer);
        _exit(written == sizeof answer ? 0 : 1);
    }
    if (child < 0) answer.error = errno;
    close(ends[1]);
    if (child < 0) return answer;
    const bool answered = await(from.get(), &answer);
    if (!answered) kill(child, SIGKILL);
    while (waitpid(child, nullptr, answered ? 0 : WNOHANG) < 0 && errno == EINTR) {
    }
    return answer;
}

// ---- describing a file system

// Reads a small file of sysfs as text. False if it cannot be read.
bool read_attribute(int dir, const char* name, char* text, size_t size) {
    Fd file(openat(dir, name, O_RDONLY | O_CLOEXEC));
    const ssize_t got = file.valid() ? read(file.get(), text, size - 1) : -1;
    text[std::max(got, ssize_t{0})] = '\0';
    return got >= 0;
}

// A block device as its uevent file tells of it, in lines of KEY=VALUE.
class Uevent {
  public:
    // The file of the directory dir, or of the one above. False if there is none.
    [[nodiscard]] bool read(int dir, const char* file) {
        return read_attribute(dir, file, text_, sizeof text_);
    }

    // Empty if it is not there.
    [[nodiscard]] std::string_view value(std::string_view key) const {
        for (const char* line = text_; *line != '\0';) {
            const char* end = line + strcspn(line, "\n");
            const auto length = static_cast<size_t>(end - line);
            if (length > key.size() && memcmp(line, key.data(), key.size()) == 0 && line[key.size()] == '=')
                return {line + key.size() + 1, length - key.size() - 1};
            line = *end != '\0' ? end + 1 : end;
        }
        return {};
    }

    [[nodiscard]] int32_t unit() const {
        const std::string_view minor_number = value("MINOR");
        return minor_number.empty() ? 0 : static_cast<int32_t>(strtol(minor_number.data(), nullptr, 10));
    }

  private:
    char text_[4096];
};

uint64_t read_number(int dir, const char* name) {
    char text[64];
    return read_attribute(dir, name, text, sizeof text) ? strtoull(text, nullptr, 10) : 0;
}

void set_text(char* to, size_t size, std::string_view from) {
    const size_t length = std::min(from.size(), size - 1);
    memcpy(to, from.data(), length);
    to[length] = '\0';
}

// Name, unit and location from sysfs. False, with nothing filled in, when this is no block device.
bool describe_block_device(uint32_t major_number, uint32_t minor_number, FileSystem* record) {
    char path[64];
    snprintf(path, sizeof path, "/sys/dev/block/%u:%u", major_number, minor_number);
    const Fd dir(platform::open_passage(AT_FDCWD, path));
    Uevent device;
    if (!dir.valid() || !device.read(dir.get(), "uevent") || device.value("DEVNAME").empty()) return false;
    set_text(record->device_name, sizeof record->device_name, device.value("DEVNAME"));
    record->device_unit = device.unit();
    record->first_block = read_number(dir.get(), "start");  // only partitions have one
    record->block_count = read_number(dir.get(), "size");
    // The directory of a partition lies in that of its disk.
    Uevent host;
    if (device.value("DEVTYPE") == "partition" && host.read(dir.get(), "../uevent")) {
        set_text(record->host_name, sizeof record->host_name, host.value("DEVNAME"));
        record->host_unit = host.unit();
    }
    return true;
}

void describe_device(const Mount& mount, FileSystem* record) {
    record->id = uint64_t{mount.device_major} << 32 | mount.device_minor;
    if (describe_block_device(mount.device_major, mount.device_minor, record)) return;
    // Some file systems on disks (btrfs) show a device number of their own. Their source is the block device.
    struct stat source;
    if (strncmp(mount.source, "/dev/", 5) == 0 && stat(mount.source, &source) == 0 &&
        S_ISBLK(source.st_mode) &&
        describe_block_device(major(source.st_rdev), minor(source.st_rdev), record))
        return;
    set_text(record->device_name, sizeof record->device_name, mount.source);
}

// The mount of a number. In a changed root directory that is no mount point, the one that it lies in is not
// in the table; all that there is to know of it is the device. False with errno, ENOENT for a detached mount.
bool find_mount(uint64_t id, CurrentTable* table, Mount* mount) {
    const Mount* listed = table->find(id);
    if (listed != nullptr) {
        *mount = *listed;
        return true;
    }
    const int error = errno;
    const Answer root = ask("/", Numbers::unwanted);
    struct stat status;
    if (root.error != 0 || root.mount_id != id || stat("/", &status) != 0) {
        errno = error;
        return false;
    }
    *mount = {};
    mount->point = "/";
    mount->source = "none";
    mount->device_major = major(status.st_dev);
    mount->device_minor = minor(status.st_dev);
    return true;
}

// Fills the record, and name (which may be null) with the mount point. False with errno.
bool describe(const Answer& answer, CurrentTable* table, FileSystem* record, char* name, size_t size) {
    if (answer.error != 0) {
        errno = answer.error;
        return false;
    }
    Mount mount;
    if (!find_mount(answer.mount_id, table, &mount)) return false;
    if (name != nullptr) {
        const size_t length = strlen(mount.point) + 1;
        if (length > size) {
            errno = ENAMETOOLONG;
            return false;
        }
        memcpy(name, mount.point, length);
    }
    const struct statfs& numbers = answer.numbers;
    *record = {};
    record->type = static_cast<uint32_t>(numbers.f_type);
    record->block_size = static_cast<uint32_t>(numbers.f_frsize != 0 ? numbers.f_frsize : numbers.f_bsize);
    record->blocks = numbers.f_blocks;
    record->free_blocks = numbers.f_bfree;
    record->inodes = numbers.f_files;
    record->free_inodes = numbers.f_ffree;
    describe_device(mount, record);
    return true;
}

// File systems on disks have the number of their device, and others have the major number 0, except for those that
// may spread over several devices.
uint64_t device_of(const Mount& mount) {
    if (mount.device_major != 0) return makedev(mount.device_major, mount.device_minor);
    struct stat source;
    const bool known = mount.source[0] == '/' && stat(mount.source, &source) == 0 && S_ISBLK(source.st_mode);
    return known ? source.st_rdev : 0;
}

// ---- attaching

struct MountOption {
    char name[12];
    unsigned flag;
};

// What mount(2) takes as a flag; everything else is for the file system. Among its own options, the kernel also
// shows one that it does not take back.
constexpr MountOption mount_options[] = {
    {"rw", 0},
    {"seclabel", 0},
    {"ro", MS_RDONLY},
    {"nosuid", MS_NOSUID},
    {"nodev", MS_NODEV},
    {"noexec", MS_NOEXEC},
    {"noatime", MS_NOATIME},
    {"nodiratime", MS_NODIRATIME},
    {"relatime", MS_RELATIME},
    {"nosymfollow", 256},
    {"sync", MS_SYNCHRONOUS},
    {"dirsync", MS_DIRSYNC},
    {"mand", MS_MANDLOCK},
    {"lazytime", 1U << 25},
};

// Adds the flags among options to *flags, and the rest to the text in data, unless that is null. False when there is
// no room for it.
bool sort_options(const char* options, unsigned long* flags, char* data, size_t size) {
    while (*options != '\0') {
        const std::string_view option(options, strcspn(options, ","));
        options += option.size();
        options += *options == ',' ? 1 : 0;
        const MountOption* known = nullptr;
        for (const MountOption& other : mount_options) {
            if (other.name == option) known = &other;
        }
        if (known != nullptr) {
            *flags |= known->flag;
        } else if (data != nullptr) {
            const size_t used = strlen(data);
            if (size - used < option.size() + 2) return false;
            char* end = data + used;
            if (used > 0) *end++ = ',';
            memcpy(end, option.data(), option.size());
            end[option.size()] = '\0';
        }
    }
    return true;
}

}  // namespace

uint32_t e_openmnt() {
    void* memory = malloc(sizeof(Iteration));
    if (memory == nullptr) return 0;
    auto* opened = new (memory) Iteration{};
    if (!opened->table.load() || !opened->table.look_for_covered()) {
        const int error = errno;
        opened->~Iteration();
        free(memory);
        errno = error;
        return 0;
    }
    if (++newest_handle == 0) ++newest_handle;
    opened->handle = newest_handle;
    opened->next = iterations;
    iterations = opened;
    return opened->handle;
}

char* e_readmnt(uint32_t handle, char* buffer, size_t size) {
    Iteration* at = find_iteration(handle);
    if (at == nullptr) return nullptr;
    const std::span<const Mount> mounts = at->table.mounts();
    while (at->position < mounts.size() && is_hidden(&mounts[at->position])) at->position++;
    if (at->position == mounts.size()) {
        errno = 0;
        return nullptr;
    }
    const char* point = mounts[at->position].point;
    const size_t length = strlen(point) + 1;
    if (length > size) {
        errno = ERANGE;
        return nullptr;
    }
    at->position++;
    return static_cast<char*>(memcpy(buffer, point, length));
}

void e_closemnt(uint32_t handle) {
    Iteration** link = &iterations;
    while (*link != nullptr && (*link)->handle != handle) link = &(*link)->next;
    Iteration* closed = *link;
    if (closed == nullptr) return;
    *link = closed->next;
    closed->~Iteration();
    free(closed);
}

char* statfsmnt(const char* path, FileSystem* record, char* name, size_t size) {
    CurrentTable current;
    if (!current.load()) return nullptr;
    // Which mounts the path leads through shows only on the way.
    const std::span<const Mount> mounts = current.table().mounts();
    const bool all_local = std::all_of(mounts.begin(), mounts.end(), [](const Mount& m) { return m.local; });
    const Answer answer = all_local ? ask(path, Numbers::wanted) : ask_with_patience(path);
    return describe(answer, &current, record, name, size) ? name : nullptr;
}

namespace platform {

int statfs(const char* mount_path, FileSystem* record) {
    CurrentTable current;
    if (!current.load()) return -1;
    const Mount* mount = current.table().find(mount_path);
    const bool patience = mount == nullptr || may_hang(*mount);
    const Answer answer = patience ? ask_with_patience(mount_path) : ask(mount_path, Numbers::wanted);
    return describe(answer, &current, record, nullptr, 0) ? 0 : -1;
}

char* holding_mount(const char* path, FileSystem* record, char* name, size_t size) {
    CurrentTable current;
    if (!current.load()) return nullptr;
    return describe(ask(path, Numbers::unwanted), &current, record, name, size) ? name : nullptr;
}

int umount(const char* mount_path, bool force) {
    return umount2(mount_path, UMOUNT_NOFOLLOW | (force ? MNT_FORCE : 0));
}

bool next_mount(uint32_t handle, MountRecord* record) {
    Iteration* at = find_iteration(handle);
    if (at == nullptr || at->position == at->table.mounts().size()) return false;
    const Mount& mount = at->table.mounts()[at->position++];
    *record = {.id = mount.id,
               .parent_id = mount.parent_id,
               .device = device_of(mount),
               .hidden = is_hidden(&mount),
               .point = mount.point,
               .source = mount.source,
               .type = mount.type,
               .root = mount.root,
               .options = mount.options,
               .own_options = mount.own_options};
    return true;
}

bool leads_to_mount(const char* path, uint64_t id) {
    const Answer answer = ask(path, Numbers::unwanted);
    return answer.error == 0 && answer.mount_id == id;
}

bool may_mount() {
    // capget(2), which the C libraries do not declare.
    struct {
        uint32_t version = 0x20080522;
        int32_t pid = 0;
    } header;
    struct {
        uint32_t effective, permitted, inheritable;
    } sets[2] = {};
    constexpr unsigned sys_admin = 21;
    if (syscall(SYS_capget, &header, sets) != 0) return false;
    if ((sets[0].effective >> sys_admin & 1) != 0) return true;
    errno = EPERM;
    return false;
}

bool mount_again(const MountRecord& record, const char* device, const char* type) {
    unsigned long flags = 0;
    char data[4096] = "";  // as much as the kernel takes
    const bool same_type = strcmp(type, record.type) == 0;
    if (!sort_options(record.options, &flags, nullptr, 0) ||
        !sort_options(record.own_options, &flags, same_type ? data : nullptr, sizeof data)) {
        errno = E2BIG;
        return false;
    }
    if ((flags & (MS_NOATIME | MS_RELATIME)) == 0) flags |= MS_STRICTATIME;
    return mount(device, record.point, type, flags, data) == 0;
}

bool sectors_written(uint64_t device, uint64_t* count) {
    char path[64];
    snprintf(path, sizeof path, "/sys/dev/block/%u:%u", major(device), minor(device));
    const Fd dir(open_passage(AT_FDCWD, path));
    char text[512];
    if (!dir.valid() || !read_attribute(dir.get(), "stat", text, sizeof text)) return false;
    // Partitions have the queue of their disk. It may be told not to count.
    if (read_number(dir.get(), "queue/iostats") + read_number(dir.get(), "../queue/iostats") == 0)
        return false;
    // The seventh number counts what was written, the fourteenth what was discarded, which is as lost.
    char* at = text;
    *count = 0;
    for (int field = 1; field <= 14; field++) {
        const uint64_t value = strtoull(at, &at, 10);
        if (field % 7 == 0) *count += value;
    }
    return true;
}

}  // namespace platform
