// What the toolbox needs from a system beyond ISO C and POSIX. A port replaces the source beside this header
// (linux.cpp) and touches nothing else.

#pragma once

#include <cstddef>
#include <cstdint>

struct iovec;
struct stat;
struct timespec;

// A counter of milliseconds that only moves forward; its start is arbitrary and it wraps after about 49 days.
[[nodiscard]] uint32_t TickGetCount();

// Sleeps for at least the given number of milliseconds, however often a signal handler interrupts it.
void TickSleep(uint32_t milliseconds);

namespace platform {

// Asks the terminal on a descriptor for its window size in characters. False when it is no terminal.
[[nodiscard]] bool terminal_size(int fd, unsigned* columns, unsigned* rows);

// Tells the terminal on a descriptor its window size, each below 65536. False with errno.
[[nodiscard]] bool set_terminal_size(int fd, unsigned columns, unsigned rows);

// Sees to it that writing to a pipe or terminal waits until there is room, without changing that for other
// processes that share it.
void make_blocking(int fd);

// Raises the capacity of a pipe as far as the system lets an ordinary user. Nothing happens when the
// descriptor is no pipe or the system refuses: this only saves switches between writer and reader.
void enlarge_pipe(int fd);

// Copies at most that many bytes from one descriptor to another inside the system, without their passing through
// this process, and moves both file offsets on. It goes as far as the system can with this pair and returns the
// number of bytes; whoever wants more goes on with an ordinary read and write loop from the present offsets, which
// finds the end of the input, or meets the error again. Terminals, devices and sockets are left to that loop, which
// waits for them better. What a large file lends to a pipe changes there with the file until it is read.
uint64_t copy_in_system(int in, int out, uint64_t most = UINT64_MAX);

// Makes one regular file share the other's blocks, where the file system can do that. False when it cannot.
[[nodiscard]] bool share_blocks(int in, int out);

// Copies up to size bytes at an offset of one regular file to the same offset of another, inside the system.
// Returns the number of bytes copied, 0 at the end of the input, -1 with errno when the system cannot do it.
[[nodiscard]] ptrdiff_t copy_range(int in, int out, int64_t offset, size_t size);

// Where the first data at or behind an offset of a file begins, and where they end; blocks that were never
// written are no data. False at the end of the file, and when the file system cannot tell, with errno ENXIO and
// any other.
[[nodiscard]] bool find_data(int fd, int64_t offset, int64_t* begin, int64_t* end);

// Hands the bytes of constant memory to a pipe without copying them: the memory must never change afterwards,
// as the reader sees it later. Returns the number of bytes taken (fewer than asked for is usual), or -1 with
// errno; EINVAL and EBADF also when the descriptor is no pipe.
[[nodiscard]] ptrdiff_t lend_to_pipe(int pipe, const void* data, size_t size);

// What a symbolic link in the last place of a path stands for: its target or itself.
enum class Links { follow, keep };

// The status of the file name as seen from the open directory dir (AT_FDCWD: the current one), and when it
// came into being (zero where the file system does not keep that; birth may be null). False with errno.
[[nodiscard]] bool file_status(int dir, const char* name, Links links, struct stat* status, timespec* birth);

// Opens a directory for nothing but going on from it, which needs no right to read it. -1 with errno.
[[nodiscard]] int open_passage(int dir, const char* path, Links links = Links::follow);

// Starts a child that borrows the memory of this process, which stands still until the child has executed another
// program or ended: nothing is copied, and what the child writes to variables stays. It ends with the status that run
// returns. The caller blocks all signals meanwhile: handlers would run in both. A child that a terminal stops before
// that is sent on. Returns the child's process id, or -1 with errno.
[[nodiscard]] int start_child(int (*run)(void*), void* argument);

// Delivers the names in an open directory, in the system's order, from the first one on; in larger steps than
// readdir, so that the system is seldom asked. All of them share one buffer: a directory must be done with before
// the next one is begun.
class DirectoryNames {
  public:
    explicit DirectoryNames(int dir);

    // The next name, valid until the next call. Null at the end with errno 0, or for a read error with errno.
    [[nodiscard]] const char* next();

    // What the directory itself says about the last name: the type bits of a mode, 0 where it does not know.
    [[nodiscard]] uint32_t type() const { return type_; }

  private:
    int dir_;
    uint32_t type_ = 0;
    size_t position_ = 0;
    size_t filled_ = 0;
};

}  // namespace platform
