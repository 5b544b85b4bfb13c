// Linux.

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/times.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux_statx.h"
#include "platform/platform.h"

// times() is a plain system call, while a precise clock first has to be found in the page of code that the kernel
// lends: every start of a command would pay for that.
uint32_t TickGetCount() {
    const auto ticks = static_cast<uint64_t>(times(nullptr));
    return static_cast<uint32_t>(ticks * 1000 / static_cast<uint64_t>(sysconf(_SC_CLK_TCK)));
}

void TickSleep(uint32_t milliseconds) {
    timespec left{static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000};
    while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
    }
}

namespace platform {

namespace {

// Linux lets an unprivileged pipe grow to this size by default (/proc/sys/fs/pipe-max-size).
constexpr int large_pipe = 1 << 20;

// A pipe is lent the pages of a file, so that its reader sees what is written to the file until it gets there. That
// is worth it for large files; up to this size, a file is copied into the pipe as it is.
constexpr off_t lent_size = large_pipe;

// Large enough to make the calls rare, small enough to stay interruptible.
constexpr size_t copy_step = size_t{1} << 30;

// Repeats a copying call of (size) while it makes progress; returns the number of bytes copied.
template <typename Copy>
uint64_t repeat(uint64_t most, Copy copy) {
    uint64_t done = 0;
    while (done < most) {
        const ssize_t count = copy(static_cast<size_t>(std::min<uint64_t>(most - done, copy_step)));
        if (count > 0) done += static_cast<uint64_t>(count);
        if (count == 0 || (count < 0 && errno != EINTR)) break;
    }
    return done;
}

}  // namespace

bool terminal_size(int fd, unsigned* columns, unsigned* rows) {
    winsize size{};
    if (ioctl(fd, TIOCGWINSZ, &size) != 0) return false;
    *columns = size.ws_col;
    *rows = size.ws_row;
    return true;
}

bool set_terminal_size(int fd, unsigned columns, unsigned rows) {
    winsize size{};
    if (ioctl(fd, TIOCGWINSZ, &size) != 0) return false;
    size.ws_col = static_cast<unsigned short>(columns);
    size.ws_row = static_cast<unsigned short>(rows);
    return ioctl(fd, TIOCSWINSZ, &size) == 0;
}

void make_blocking(int fd) {
    const int flags = fcntl(fd, F_GETFL);
    struct stat status;
    if (flags < 0 || (flags & O_NONBLOCK) == 0 || fstat(fd, &status) != 0 || S_ISREG(status.st_mode)) return;
    // The flag belongs to everybody who shares the open file: a second opening of it has one of its own. The opening
    // itself must not wait for the reader of a FIFO that has gone away.
    char path[sizeof "/proc/self/fd/" + 3 * sizeof fd];
    snprintf(path, sizeof path, "/proc/self/fd/%d", fd);
    const int own = open(path, (flags & O_ACCMODE) | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    // There is none of a socket, nor of a FIFO without a reader.
    fcntl(own >= 0 ? own : fd, F_SETFL, flags & ~O_NONBLOCK);
    if (own < 0) return;
    dup2(own, fd);
    close(own);
}

void enlarge_pipe(int fd) {
    (void)fcntl(fd, F_SETPIPE_SZ, large_pipe);
}

uint64_t copy_in_system(int in, int out, uint64_t most) {
    struct stat in_stat, out_stat;
    if (fstat(in, &in_stat) != 0 || fstat(out, &out_stat) != 0) return 0;
    const bool in_file = S_ISREG(in_stat.st_mode), out_file = S_ISREG(out_stat.st_mode);
    const bool in_pipe = S_ISFIFO(in_stat.st_mode), out_pipe = S_ISFIFO(out_stat.st_mode);
    // Nothing but files and pipes: splice holds the pipe while a terminal or socket keeps it waiting, and every
    // other user of the pipe with it.
    if (in_file && out_file) {
        return repeat(most, [&](size_t size) { return copy_file_range(in, nullptr, out, nullptr, size, 0); });
    }
    // What is thrown away need not be copied first.
    if (in_file && S_ISCHR(out_stat.st_mode) && out_stat.st_rdev == makedev(1, 3))
        return repeat(most, [&](size_t size) { return sendfile(out, in, nullptr, size); });
    if ((in_pipe && (out_pipe || out_file)) || (out_pipe && in_file && in_stat.st_size > lent_size)) {
        if (out_pipe) enlarge_pipe(out);
        return repeat(most,
                      [&](size_t size) { return splice(in, nullptr, out, nullptr, size, SPLICE_F_MOVE); });
    }
    return 0;
}

bool share_blocks(int in, int out) {
    constexpr unsigned long clone_request = _IOW(0x94, 9, int);  // FICLONE of <linux/fs.h>
    return ioctl(out, clone_request, in) == 0;
}

ptrdiff_t copy_range(int in, int out, int64_t offset, size_t size) {
    off_t from = offset, to = offset;
    return copy_file_range(in, &from, out, &to, size, 0);
}

bool find_data(int fd, int64_t offset, int64_t* begin, int64_t* end) {
    *begin = lseek(fd, offset, SEEK_DATA);
    if (*begin < 0) return false;
    *end = lseek(fd, *begin, SEEK_HOLE);
    return *end >= 0;
}

ptrdiff_t lend_to_pipe(int pipe, const void* data, size_t size) {
    iovec part{const_cast<void*>(data), size};
    return vmsplice(pipe, &part, 1, 0);
}

namespace {

// getdents64(2) with its record as the kernel lays it out: musl does not declare it in the version that we build
// with.
struct KernelEntry {
    uint64_t inode;
    int64_t offset;
    uint16_t size;
    uint8_t type;
    char name[1];
};

// Too large for a stack that may be limited to as much.
alignas(KernelEntry) char names[size_t{1} << 16];

timespec to_timespec(const KernelTime& time) {
    return {static_cast<time_t>(time.seconds), static_cast<long>(time.nanoseconds)};
}

void to_stat(const KernelStatus& from, struct stat* status) {
    status->st_dev = makedev(from.device_major, from.device_minor);
    status->st_ino = from.inode;
    status->st_mode = from.mode;
    status->st_nlink = from.links;
    status->st_uid = from.user;
    status->st_gid = from.group;
    status->st_rdev = makedev(from.device_represented_major, from.device_represented_minor);
    status->st_size = static_cast<off_t>(from.size);
    status->st_blksize = static_cast<blksize_t>(from.block_size);
    status->st_blocks = static_cast<blkcnt_t>(from.blocks);
    status->st_atim = to_timespec(from.access);
    status->st_mtim = to_timespec(from.modification);
    status->st_ctim = to_timespec(from.change);
}

}  // namespace

bool file_status(int dir, const char* name, Links links, struct stat* status, timespec* birth) {
    const int link_flag = links == Links::keep ? AT_SYMLINK_NOFOLLOW : 0;
    static bool statx_refused = false;
    if (!statx_refused) {
        KernelStatus found;
        // Looking at a mount point must not mount anything, with statx as with fstatat.
        if (syscall(SYS_statx, dir, name, link_flag | AT_NO_AUTOMOUNT, basic_status | birth_time, &found) ==
            0) {
            to_stat(found, status);
            if (birth != nullptr)
                *birth = (found.mask & birth_time) != 0 ? to_timespec(found.birth) : timespec{};
            return true;
        }
        // Old kernels do not know it, and some sandboxes forbid it.
        if (errno != ENOSYS && errno != EPERM) return false;
    }
    if (birth != nullptr) *birth = {};
    if (fstatat(dir, name, status, link_flag) != 0) return false;
    statx_refused = true;
    return true;
}

int open_passage(int dir, const char* path, Links links) {
    return openat(dir, path, O_PATH | O_DIRECTORY | O_CLOEXEC | (links == Links::keep ? O_NOFOLLOW : 0));
}

namespace {

// Waits until a child has let go of the memory, which the system tells by clearing the number. Sends the child on when
// a terminal stopped it before.
void get_memory_back(pid_t child, const pid_t* borrowed) {
    while (__atomic_load_n(borrowed, __ATOMIC_ACQUIRE) != 0) {
        constexpr int futex_wait = 0;  // FUTEX_WAIT of <linux/futex.h>
        const timespec patience{0, 100'000'000};
        if (syscall(SYS_futex, borrowed, futex_wait, 1, &patience, nullptr, 0) == 0) continue;
        siginfo_t state{};
        if (waitid(P_PID, static_cast<id_t>(child), &state, WEXITED | WSTOPPED | WNOHANG | WNOWAIT) != 0)
            return;
        if (state.si_pid == 0) continue;
        if (state.si_code == CLD_EXITED || state.si_code == CLD_KILLED || state.si_code == CLD_DUMPED) return;
        kill(child, SIGCONT);
    }
}

}  // namespace

int start_child(int (*run)(void*), void* argument) {
    constexpr size_t stack_size = size_t{1} << 16;
    auto* const stack = static_cast<char*>(malloc(stack_size));
    if (stack == nullptr) return -1;
    // As vfork, but for a child that is stopped while it borrows the memory: whoever waits for that in the system
    // cannot be stopped, and a shell would wait for both.
    pid_t borrowed = 1;
    const int child = clone(run, stack + stack_size, CLONE_VM | CLONE_CHILD_CLEARTID | SIGCHLD, argument,
                            nullptr, nullptr, &borrowed);
    const int error = errno;
    if (child > 0) get_memory_back(child, &borrowed);
    free(stack);
    errno = error;
    return child;
}

DirectoryNames::DirectoryNames(int dir) : dir_(dir) {
    lseek(dir, 0, SEEK_SET);
}

const char* DirectoryNames::next() {
    if (position_ == filled_) {
        errno = 0;
        const long count = syscall(SYS_getdents64, dir_, names, sizeof names);
        if (count <= 0) return nullptr;
        position_ = 0;
        filled_ = static_cast<size_t>(count);
    }
    const char* entry = names + position_;
    uint16_t size;
    memcpy(&size, entry + offsetof(KernelEntry, size), sizeof size);
    position_ += size;
    type_ = uint32_t{static_cast<uint8_t>(entry[offsetof(KernelEntry, type)])} << 12;
    return entry + offsetof(KernelEntry, name);
}

}  // namespace platform
