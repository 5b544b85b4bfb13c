// What a command printed, cut to a window.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lib/containers/container_vector.h"

// The characters of a window of fixed size. Text goes into it line by line; what does not fit is dropped.
class Screen {
  public:
    // Starts with all blanks. False without memory.
    [[nodiscard]] bool resize(unsigned columns, unsigned rows);

    // Takes output as it comes, cut anywhere. Tabs are expanded, and whatever could move the cursor or is no valid
    // UTF-8 becomes a '?'; only a carriage return is simply left out, as it stands before line ends.
    void put(std::string_view text);

    // Completes what the text ended within.
    void end();

    // Prints the rows on standard output: onto a terminal from the cursor on, with the rest of each line cleared;
    // what differs from before is reversed (nothing when before is null or of another size).
    void draw(const Screen* before) const;

    // Prints the lines as mere text, down to the last that is not empty.
    void print() const;

  private:
    // A character and one that combines with it, as up to 8 bytes of UTF-8, the first in the lowest byte: 0 behind
    // a wide character.
    using Cell = uint64_t;
    static constexpr Cell blank = ' ';

    void put_byte(unsigned char byte);
    void put_character(uint32_t character);
    void put_cell(Cell cell, unsigned width);
    [[nodiscard]] const Cell* row(unsigned number) const { return cells_.data() + size_t{number} * columns_; }
    [[nodiscard]] unsigned used(unsigned number) const;

    Vector<Cell> cells_;
    unsigned columns_ = 0;
    unsigned rows_ = 0;
    unsigned column_ = 0;
    unsigned row_ = 0;
    uint32_t character_ = 0;  // the beginning of one that is not complete yet,
    uint32_t least_ = 0;      // the least that it may become,
    unsigned missing_ = 0;    // and the number of bytes that it lacks
};
