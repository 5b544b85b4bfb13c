// Lines as sort sees them: how they are read, compared and written. Internal to sort.

#pragma once

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

#include "common/bytes.h"
#include "common/io.h"
#include "common/own.h"

namespace sorting {

// A line without its end. Behind it, `slack` more bytes can be read, whatever they are: lines are compared in
// words.
using Line = std::string_view;
inline constexpr size_t slack = 8;

inline constexpr size_t longest_line = 2047;

// What a line takes of the memory budget.
inline uint64_t cost(size_t line_size) {
    return line_size + 9;
}

struct Order {
    bool ignore_blanks = false;
    bool fold_case = false;

    // Lines that are equal are then the same bytes, and nobody can tell one from the other.
    [[nodiscard]] bool is_plain() const { return !ignore_blanks && !fold_case; }
};

// Memory from malloc for trivially copyable elements; contents are kept when it grows.
template <class T>
class Buffer {
  public:
    Buffer() = default;
    Buffer(Buffer&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    Buffer& operator=(Buffer&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~Buffer() { free(data_); }

    // Makes room for at least count elements. False when there is no memory (nothing changes).
    [[nodiscard]] bool reserve(size_t count) {
        if (count <= size_) return true;
        // Doubling costs nothing but addresses: memory is only taken where it is touched.
        const size_t wanted = std::max(count, size_ * 2);
        size_t bytes = 0;
        if (__builtin_mul_overflow(wanted, sizeof(T), &bytes)) return false;
        void* data = realloc(data_, bytes);
        if (data == nullptr) return false;
        data_ = static_cast<T*>(data);
        size_ = wanted;
        return true;
    }
    void clear() {
        free(std::exchange(data_, nullptr));
        size_ = 0;
    }

    [[nodiscard]] T* data() const { return data_; }
    [[nodiscard]] size_t size() const { return size_; }
    [[nodiscard]] T& operator[](size_t index) const { return data_[index]; }

  private:
    T* data_ = nullptr;
    size_t size_ = 0;
};

// Whether a byte is a blank to isspace in the C locale.
inline bool is_blank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline Line skip_blanks(Line line) {
    size_t skipped = 0;
    while (skipped < line.size() && is_blank(line[skipped])) skipped++;
    line.remove_prefix(skipped);
    return line;
}

// Eight bytes as a number that orders as they do.
inline uint64_t load_word(const char* data) {
    uint64_t word;
    memcpy(&word, data, sizeof word);
    if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap64(word);
    return word;
}

// Makes upper-case letters of the lower-case ones among eight bytes.
inline uint64_t fold_word(uint64_t word) {
    constexpr uint64_t every = 0x0101010101010101;
    const uint64_t low_bits = word & (every * 0x7f);
    const uint64_t from_a = low_bits + every * (0x80 - 'a');
    const uint64_t above_z = low_bits + every * (0x7f - 'z');
    const uint64_t is_lower = from_a & ~above_z & ~word & (every * 0x80);
    return word - (is_lower >> 2);
}

// The eight bytes of a line from a place on (at most its end); zeros stand for those behind its end.
inline uint64_t word_at(Line line, size_t at, bool fold_case) {
    const size_t left = line.size() - at;
    uint64_t word = load_word(line.data() + at);
    if (left < sizeof word) word &= ~(~uint64_t{0} >> (8 * left));
    return fold_case ? fold_word(word) : word;
}

// Three-way, from a place before which the lines are equal: byte by byte as unsigned numbers, a line before
// those that it begins. Blanks are skipped already where they are to be ignored.
inline int compare_from(Line a, Line b, size_t at, bool fold_case) {
    const size_t common = std::min(a.size(), b.size());
    for (; at < common; at += sizeof(uint64_t)) {
        const uint64_t word_a = word_at(a, at, fold_case);
        const uint64_t word_b = word_at(b, at, fold_case);
        if (word_a != word_b) return word_a < word_b ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

inline int compare(Line a, Line b, const Order& order) {
    if (order.ignore_blanks) {
        a = skip_blanks(a);
        b = skip_blanks(b);
    }
    return compare_from(a, b, 0, order.fold_case);
}

// True when line a stands strictly before line b.
inline bool gn_sort_less(Line a, Line b, const Order& order) {
    return compare(a, b, order) < 0;
}

// Whether the lines are the same bytes.
inline bool is_same(Line a, Line b) {
    return a.size() == b.size() && compare_from(a, b, 0, false) == 0;
}

// What a line is ordered by before anything else: its first word behind the blanks and behind `skip` bytes
// that all lines are known to have in common.
inline uint64_t key_of(Line line, size_t skip, const Order& order) {
    if (order.ignore_blanks) line = skip_blanks(line);
    return word_at(line, skip, order.fold_case);
}

// Hands out the lines of a stream or of a part of a file. A line of more bytes than a piece holds comes as
// several. The newline at the end and carriage returns before it are taken off.
class Reader {
  public:
    Reader() = default;
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    // Reads what a descriptor of somebody else still holds. False when there is no memory.
    [[nodiscard]] bool open_stream(int fd, size_t buffer_size);

    // Reads a part of a file that sort wrote: whole lines, none longer than longest_line.
    [[nodiscard]] bool open_part(int fd, uint64_t offset, uint64_t size, size_t buffer_size);

    // Opens a file of its own. False with errno.
    [[nodiscard]] bool open_file(const char* path, size_t buffer_size);

    // Closes a file of its own until more of it is needed. False when that cannot be.
    [[nodiscard]] bool close_for_now();

    // Gives everything back; there are no more lines.
    void close();

    // The next line, valid until the next call. False at the end and after an error.
    [[nodiscard]] bool next(Line* line) {
        for (;;) {
            const char* data = buffer_.data() + begin_;
            const size_t size = std::min(end_ - begin_, piece_);
            const char* end = data + size;
            const char* newline = bytes::find(data, end, '\n');
            if (newline != end) {
                end = newline;
                begin_ += static_cast<size_t>(newline + 1 - data);
            } else if (size == piece_ || (at_end_ && size > 0)) {
                begin_ += size;
            } else if (at_end_) {
                return false;
            } else {
                refill();
                continue;
            }
            while (end != data && end[-1] == '\r') end--;
            *line = {data, static_cast<size_t>(end - data)};
            return true;
        }
    }

    // The error that ended reading; 0 for none.
    [[nodiscard]] int error() const { return error_; }

  private:
    // In what sort wrote itself, every newline ends a line: a longest line is not a piece of a longer one.
    static constexpr size_t piece_of_input = longest_line;
    static constexpr size_t piece_of_run = longest_line + 1;

    void refill();
    [[nodiscard]] ssize_t read_some(int fd, size_t room);
    void end_with(int error);

    int fd_ = -1;
    UniqueFd own_;
    const char* path_ = nullptr;  // of a file that can be opened again
    bool by_position_ = false;
    bool at_end_ = false;
    int error_ = 0;
    size_t piece_ = piece_of_input;
    size_t begin_ = 0;  // of what is not handed out yet
    size_t end_ = 0;
    uint64_t offset_ = 0;  // of what is not read yet, and how much that is
    uint64_t left_ = std::numeric_limits<uint64_t>::max();
    Buffer<char> buffer_;
};

// Collects what goes to a descriptor. The first error is kept, and nothing is written after it.
class Writer {
  public:
    explicit Writer(int fd) : fd_(fd) {}
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void write(std::string_view data) {
        if (data.size() > capacity - used_) {
            flush();
            if (data.size() >= capacity) {
                send(data);
                return;
            }
        }
        bytes::copy(buffer + used_, data.data(), data.size());
        used_ += data.size();
    }
    // A line and the newline that it was given without.
    void write_line(Line line) {
        if (line.size() + 1 > capacity - used_) flush();
        bytes::copy(buffer + used_, line.data(), line.size());
        used_ += line.size();
        buffer[used_++] = '\n';
    }
    void flush() {
        send({buffer, used_});
        used_ = 0;
    }

    // 0, or the error number of the first write that failed.
    [[nodiscard]] int error() const { return error_; }

  private:
    void send(std::string_view data) {
        if (error_ == 0 && gn_full_write(fd_, data.data(), data.size()) != data.size())
            error_ = errno != 0 ? errno : EIO;
    }

    static constexpr size_t capacity = size_t{1} << 17;
    static char buffer[capacity];  // one for all: there is never more than one writer at work

    int fd_;
    int error_ = 0;
    size_t used_ = 0;
};

}  // namespace sorting
