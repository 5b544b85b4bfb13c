#include "common/copy_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include <sys/stat.h>
#include <unistd.h>

#include "common/io.h"
#include "platform/platform.h"

namespace {

char buffer[size_t{256} << 10];

// Up to this size, asking the system for anything better takes longer than to read and write.
constexpr int64_t small_size = int64_t{64} << 10;

// What the system copies with one call: much, but not so much that a signal waits for minutes.
constexpr int64_t largest_step = int64_t{64} << 20;

// From the present offsets on by reading and writing, as far as limit bytes or the end of the input.
CopyResult copy_through_memory(int in, int out, int64_t limit) {
    for (bool end = false; !end && limit > 0;) {
        const auto wanted = static_cast<size_t>(std::min(int64_t{sizeof buffer}, limit));
        const size_t count = gn_full_read(in, buffer, wanted, &end);
        const int read_error = errno;
        if (gn_full_write(out, buffer, count) != count) return CopyResult::write_failed;
        if (count < wanted && !end) {
            errno = read_error;
            return CopyResult::read_failed;
        }
        limit -= static_cast<int64_t>(count);
    }
    return CopyResult::complete;
}

CopyResult seek_both(int in, int out, int64_t offset) {
    // A place that is lost is no end of the input: what was copied so far must not pass for the whole.
    const bool found = lseek(in, offset, SEEK_SET) >= 0 && lseek(out, offset, SEEK_SET) >= 0;
    return found ? CopyResult::complete : CopyResult::write_failed;
}

// One run of data of a regular file, inside the system as far as that goes.
CopyResult copy_data(int in, int out, int64_t begin, int64_t end) {
    while (begin < end) {
        const auto step = static_cast<size_t>(std::min(end - begin, largest_step));
        const ptrdiff_t count = platform::copy_range(in, out, begin, step);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        begin += count;
    }
    if (begin == end) return CopyResult::complete;
    const CopyResult sought = seek_both(in, out, begin);
    return sought == CopyResult::complete ? copy_through_memory(in, out, end - begin) : sought;
}

// The data of a regular file, without its holes. Leaves both offsets where the rest, if there is one, is to
// be read and written: behind the last hole, or where the file system stops telling data and holes apart.
CopyResult copy_all_data(int in, int out) {
    int64_t begin = 0, end = 0, offset = 0;
    for (; platform::find_data(in, offset, &begin, &end); offset = end) {
        const CopyResult result = copy_data(in, out, begin, end);
        if (result != CopyResult::complete) return result;
    }
    // The size counts as it is now: opening the copy has emptied a file that is copied to itself.
    struct stat status;
    if (errno == ENXIO && fstat(in, &status) == 0 && offset < status.st_size) {
        if (ftruncate(out, status.st_size) != 0) return CopyResult::write_failed;
        offset = status.st_size;
    }
    return seek_both(in, out, offset);
}

}  // namespace

CopyResult copy_file(int in, const struct stat& in_status, int out, const struct stat& out_status) {
    const bool regular = S_ISREG(in_status.st_mode) && S_ISREG(out_status.st_mode);
    const bool has_holes = in_status.st_blocks < in_status.st_size / 512;
    // Files that the kernel makes up as they are read claim to be empty.
    if (regular && (in_status.st_size > small_size || has_holes)) {
        if (platform::share_blocks(in, out)) return CopyResult::complete;
        const CopyResult result = copy_all_data(in, out);
        if (result != CopyResult::complete) return result;
    }
    if (regular && !has_holes && in_status.st_blocks > 0 && in_status.st_size <= small_size) {
        // Where all is there that the size announces, and the system has no more to give, it need not be
        // asked for the end. Only the sizes of files that take blocks can be believed.
        const ssize_t count = read(in, buffer, sizeof buffer);
        if (count > 0 &&
            gn_full_write(out, buffer, static_cast<size_t>(count)) != static_cast<size_t>(count)) {
            return CopyResult::write_failed;
        }
        if (count == in_status.st_size) return CopyResult::complete;
    }
    return copy_through_memory(in, out, INT64_MAX);
}
