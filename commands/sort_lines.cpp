#include "commands/sort_lines.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sorting {

char Writer::buffer[capacity];

bool Reader::open_stream(int fd, size_t buffer_size) {
    fd_ = fd;
    return buffer_.reserve(buffer_size + slack);
}

bool Reader::open_part(int fd, uint64_t offset, uint64_t size, size_t buffer_size) {
    piece_ = piece_of_run;
    by_position_ = true;
    offset_ = offset;
    left_ = size;
    return open_stream(fd, std::min<uint64_t>(buffer_size, size + 1));
}

bool Reader::open_file(const char* path, size_t buffer_size) {
    own_ = UniqueFd(open(path, O_RDONLY | O_CLOEXEC));
    struct stat status;
    if (!own_.valid() || fstat(own_.get(), &status) != 0) return false;
    if (S_ISREG(status.st_mode)) {
        path_ = path;
        by_position_ = true;
    }
    return open_stream(own_.get(), buffer_size);
}

bool Reader::close_for_now() {
    if (path_ == nullptr || !own_.valid()) return false;
    own_ = UniqueFd();
    return true;
}

void Reader::close() {
    own_ = UniqueFd();
    buffer_.clear();
    begin_ = end_ = 0;
    at_end_ = true;
}

void Reader::end_with(int error) {
    at_end_ = true;
    error_ = error;
}

ssize_t Reader::read_some(int fd, size_t room) {
    char* to = buffer_.data() + end_;
    for (;;) {
        const ssize_t count =
            by_position_ ? pread(fd, to, room, static_cast<off_t>(offset_)) : read(fd, to, room);
        if (count >= 0 || (errno != EINTR && errno != EAGAIN)) return count;
        pollfd waiting{fd, POLLIN, 0};
        if (errno == EAGAIN) poll(&waiting, 1, -1);
    }
}

// Called with less than a piece in the buffer: gets more of it, or finds the end.
void Reader::refill() {
    if (begin_ != end_) memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    // With very many runs the buffers begin smaller than a long line.
    if (end_ + slack == buffer_.size() && !buffer_.reserve(buffer_.size() * 2)) return end_with(ENOMEM);
    const uint64_t room = std::min<uint64_t>(buffer_.size() - slack - end_, left_);
    if (room == 0) return end_with(0);

    int fd = fd_;
    UniqueFd again;
    if (path_ != nullptr && !own_.valid()) {
        again = UniqueFd(open(path_, O_RDONLY | O_CLOEXEC));
        if (!again.valid()) return end_with(errno);
        fd = again.get();
    }
    const ssize_t count = read_some(fd, room);
    if (count <= 0) return end_with(count < 0 ? errno : 0);
    end_ += static_cast<size_t>(count);
    offset_ += static_cast<size_t>(count);
    left_ -= static_cast<size_t>(count);
}

}  // namespace sorting
