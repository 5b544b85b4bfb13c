#include "common/io.h"

#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// After a failed call: true when it is worth repeating, once the descriptor is ready.
bool try_again(int fd, short event) {
    if (errno == EINTR) return true;
    if (errno != EAGAIN) return false;
    pollfd waiting{fd, event, 0};
    poll(&waiting, 1, -1);
    return true;
}

}  // namespace

ptrdiff_t read_some(int fd, void* buffer, size_t count) {
    for (;;) {
        ssize_t step = read(fd, buffer, count);
        if (step >= 0 || !try_again(fd, POLLIN)) return step;
    }
}

size_t gn_full_read(int fd, void* buffer, size_t count, bool* eof) {
    if (eof != nullptr) *eof = false;
    size_t done = 0;
    while (done < count) {
        ssize_t step = read_some(fd, static_cast<char*>(buffer) + done, count - done);
        if (step == 0 && eof != nullptr) *eof = true;
        if (step <= 0) break;
        done += static_cast<size_t>(step);
    }
    return done;
}

size_t gn_full_write(int fd, const void* buffer, size_t count) {
    size_t done = 0;
    while (done < count) {
        ssize_t step = write(fd, static_cast<const char*>(buffer) + done, count - done);
        if (step < 0 && try_again(fd, POLLOUT)) continue;
        if (step <= 0) break;
        done += static_cast<size_t>(step);
    }
    return done;
}

size_t gn_safe_st_blksize(const struct stat* file) {
    return static_cast<size_t>(std::clamp<blksize_t>(file->st_blksize, 512, 262144));
}

long long gn_safe_st_blocks(const struct stat* file) {
    return file->st_blocks;
}
