// Lines as head and tail take them. A line, its newline included, ends after at most longest_piece bytes, and
// what is left of it is the next line. Such lines are called pieces here. NUL is an ordinary byte.

#pragma once

#include <cstddef>
#include <cstdint>

namespace pieces {

inline constexpr size_t longest_piece = 2046;

// Counts pieces from the beginning of a text that comes in stretches.
class Forward {
  public:
    // Passes over pieces that end between data and end, at most *left of them, and takes their number off
    // *left. Returns where the last one ends when that makes *left 0; otherwise end, and the text goes on
    // with the next call.
    const char* pass(const char* data, const char* end, uint64_t* left);

    // The length so far of the piece whose end was not seen yet; 0 between two pieces.
    [[nodiscard]] size_t open() const { return open_; }

  private:
    size_t open_ = 0;
};

// Finds the beginning of the last `wanted` pieces of a text whose stretches are looked at from the last to
// the first. Places are offsets from wherever the caller likes.
class Backward {
  public:
    // `end` is the place behind the text's last byte.
    Backward(uint64_t end, uint64_t wanted) : line_end_(end), left_(wanted), start_(end) {}

    // Looks at a stretch, whose first byte has this place and whose end is the stretch looked at before, or
    // the text's end. True when the beginning is found.
    [[nodiscard]] bool look(const char* data, size_t size, uint64_t place);

    // The beginning; `begin` is that of the text, for when all of it was looked at.
    [[nodiscard]] uint64_t start(uint64_t begin);

  private:
    bool end_line(uint64_t start);

    uint64_t line_end_;  // of the line whose beginning is looked for, with its newline
    uint64_t left_;      // pieces to be found
    uint64_t start_;     // the beginning, once left_ is 0
};

}  // namespace pieces
