#include "common/pieces.h"

#include <algorithm>

#include "common/bytes.h"

namespace pieces {

namespace {

size_t distance(const char* from, const char* to) {
    return static_cast<size_t>(to - from);
}

// Most texts have short lines only, which need not be found one by one: when each of two neighbouring windows
// holds a newline, no line that ends in the second one is longer than a piece.
constexpr size_t window = 960;
static_assert(2 * window <= longest_piece);

// This much of a line may lie beside a window when the line ends in it.
constexpr size_t most_beside = longest_piece - window;

}  // namespace

const char* Forward::pass(const char* data, const char* end, uint64_t* left) {
    while (*left != 0 && data != end) {
        const char* windows = data;
        while (distance(data, end) >= window && *left > window && (data != windows || open_ <= most_beside)) {
            const size_t newlines = bytes::count(data, data + window, '\n');
            if (newlines == 0) break;
            *left -= newlines;
            data += window;
        }
        if (data != windows) {
            open_ = distance(bytes::find_last(data - window, data, '\n'), data) - 1;
            continue;
        }
        const auto size = std::min(longest_piece - open_, distance(data, end));
        const char* newline = bytes::find(data, data + size, '\n');
        const bool ends = newline != data + size || open_ + size == longest_piece;
        const char* stop = newline != data + size ? newline + 1 : newline;
        open_ = ends ? 0 : open_ + size;
        *left -= ends ? 1 : 0;
        data = stop;
    }
    return data;
}

// The line from start to line_end_ is known in full.
bool Backward::end_line(uint64_t start) {
    const uint64_t count = (line_end_ - start + longest_piece - 1) / longest_piece;
    if (count >= left_) {
        start_ = start + (count - left_) * longest_piece;
        left_ = 0;
        return true;
    }
    left_ -= count;
    line_end_ = start;
    return false;
}

bool Backward::look(const char* data, size_t size, uint64_t place) {
    if (left_ == 0) return true;
    // A line's own newline is its last byte, and not the end of the one before it.
    const char* end = data + std::min<uint64_t>(size, line_end_ - 1 - place);
    while (end != data) {
        const uint64_t end_place = place + distance(data, end);
        if (distance(data, end) >= window && left_ > window && line_end_ - end_place <= most_beside) {
            const char* begin = end - window;
            const size_t newlines = bytes::count(begin, end, '\n');
            if (newlines != 0) {
                left_ -= newlines;
                line_end_ = end_place - window + 1 + distance(begin, bytes::find(begin, end, '\n'));
                end = begin;
                continue;
            }
        }
        const char* newline = bytes::find_last(data, end, '\n');
        if (newline == end) return false;
        if (end_line(place + distance(data, newline + 1))) return true;
        end = newline;
    }
    return false;
}

uint64_t Backward::start(uint64_t begin) {
    if (left_ != 0 && !end_line(begin)) start_ = begin;
    return start_;
}

}  // namespace pieces
