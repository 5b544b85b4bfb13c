#include "commands/watch_screen.h"

#include <algorithm>
#include <span>

#include "common/output.h"

namespace {

struct Range {
    uint32_t first;
    uint32_t last;
};

// The C libraries know the width of a character in the locale alone, or in their own opinion. Being wrong about a
// rare one shifts the rest of its line and no more, as terminals are told not to wrap lines.
constexpr Range combining[] = {
    {0x300, 0x36f},   {0x483, 0x489},   {0x591, 0x5bd},   {0x610, 0x61a},
    {0x64b, 0x65f},   {0x93c, 0x93c},   {0x1ab0, 0x1aff}, {0x1dc0, 0x1dff},
    {0x200b, 0x200f}, {0x20d0, 0x20ff}, {0xfe00, 0xfe0f}, {0xfe20, 0xfe2f},
};
constexpr Range wide[] = {
    {0x1100, 0x115f},   {0x2e80, 0x303e},   {0x3041, 0xa4cf},   {0xac00, 0xd7a3},
    {0xf900, 0xfaff},   {0xfe30, 0xfe6f},   {0xff01, 0xff60},   {0xffe0, 0xffe6},
    {0x1f300, 0x1f64f}, {0x1f680, 0x1f6ff}, {0x1f900, 0x1f9ff}, {0x20000, 0x3fffd},
};

bool lies_in(std::span<const Range> ranges, uint32_t character) {
    for (const Range& range : ranges) {
        if (range.first <= character && character <= range.last) return true;
    }
    return false;
}

// Line ends, and what changes the direction of a line, are no better than control characters.
bool is_control(uint32_t character) {
    return character < 0x20 || (character >= 0x7f && character < 0xa0) ||
           (character >= 0x2028 && character <= 0x202e) || (character >= 0x2066 && character <= 0x2069);
}

uint64_t encode(uint32_t character) {
    if (character < 0x80) return character;
    uint64_t tail = 0;
    uint32_t lead = 0xffffff80;  // as many bits from the left as there are bytes
    unsigned bytes = 1;
    for (; bytes == 1 || (character >> (7 - bytes)) != 0; bytes++) {
        tail = tail << 8 | 0x80 | (character & 0x3f);
        character >>= 6;
        lead = lead >> 1 | 0x80000000;
    }
    return tail << 8 | (lead & 0xff) | character;
}

unsigned size_of(uint64_t cell) {
    return cell == 0 ? 0 : (71U - static_cast<unsigned>(__builtin_clzll(cell))) / 8;
}

void write_cell(uint64_t cell) {
    char bytes[sizeof cell];
    const unsigned size = size_of(cell);
    for (unsigned i = 0; i < size; i++) bytes[i] = static_cast<char>(cell >> (8 * i));
    output::write({bytes, size});
}

}  // namespace

bool Screen::resize(unsigned columns, unsigned rows) {
    if (!cells_.resize(size_t{columns} * rows)) return false;
    std::fill(cells_.begin(), cells_.end(), blank);
    columns_ = columns;
    rows_ = rows;
    column_ = row_ = missing_ = 0;
    return true;
}

void Screen::put(std::string_view text) {
    for (const char byte : text) {
        // Most output is larger than the window only by mistake, but then much larger.
        if (row_ >= rows_) return;
        put_byte(static_cast<unsigned char>(byte));
    }
}

void Screen::end() {
    if (missing_ > 0) put_cell('?', 1);
    missing_ = 0;
}

void Screen::put_byte(unsigned char byte) {
    if (missing_ > 0 && (byte & 0xc0) == 0x80) {
        character_ = character_ << 6 | (byte & 0x3f);
        if (--missing_ > 0) return;
        const bool valid = character_ >= least_ && character_ < 0x110000 && (character_ & ~0x7ffU) != 0xd800;
        put_character(valid ? character_ : 0);
        return;
    }
    end();
    if (byte < 0x80) {
        put_character(byte);
    } else if (byte >= 0xc0 && byte < 0xf8) {
        missing_ = byte < 0xe0 ? 1 : byte < 0xf0 ? 2 : 3;
        character_ = byte & (0x3fU >> missing_);
        least_ = missing_ == 1 ? 0x80 : missing_ == 2 ? 0x800 : 0x10000;
    } else {
        put_cell('?', 1);
    }
}

void Screen::put_character(uint32_t character) {
    if (character == '\n') {
        row_++;
        column_ = 0;
    } else if (character == '\t') {
        column_ += 8 - column_ % 8;
        column_ = std::min(column_, columns_);
    } else if (character == '\r') {
        // The line end that follows does the same.
    } else if (is_control(character)) {
        put_cell('?', 1);
    } else if (lies_in(combining, character)) {
        put_cell(encode(character), 0);
    } else {
        put_cell(encode(character), lies_in(wide, character) ? 2 : 1);
    }
}

void Screen::put_cell(Cell cell, unsigned width) {
    if (row_ >= rows_ || column_ > columns_) return;
    Cell* at = cells_.data() + size_t{row_} * columns_ + column_;
    if (width == 0) {
        if (column_ == 0) return;
        // It joins what stands before it; a second one has no room.
        if (*--at == 0) at--;
        if (size_of(*at) <= 4) *at |= cell << (8 * size_of(*at));
        return;
    }
    // What does not fit wholly ends the line, and so does what follows.
    if (width > columns_ - column_) {
        column_ = columns_ + 1;
        return;
    }
    at[0] = cell;
    if (width == 2) at[1] = 0;
    column_ += width;
}

unsigned Screen::used(unsigned number) const {
    const Cell* cells = row(number);
    unsigned count = columns_;
    while (count > 0 && cells[count - 1] == blank) count--;
    return count;
}

void Screen::draw(const Screen* before) const {
    // A window may change without a signal to who is in the background.
    if (before != nullptr && (before->columns_ != columns_ || before->rows_ != rows_)) before = nullptr;
    for (unsigned r = 0; r < rows_; r++) {
        bool reversed = false;
        const unsigned columns = before != nullptr ? std::max(used(r), before->used(r)) : used(r);
        for (unsigned c = 0; c < columns; c++) {
            const Cell cell = row(r)[c];
            const bool differs = before != nullptr && before->row(r)[c] != cell;
            // The second half of a wide character goes with the first.
            if (cell != 0 && differs != reversed) {
                output::write(differs ? "\033[7m" : "\033[27m");
                reversed = differs;
            }
            write_cell(cell);
        }
        if (reversed) output::write("\033[27m");
        // At the right edge, the cursor still stands on the last character.
        if (columns < columns_) output::write("\033[K");
        if (r + 1 < rows_) output::write("\r\n");
    }
}

void Screen::print() const {
    unsigned rows = rows_;
    while (rows > 0 && used(rows - 1) == 0) rows--;
    for (unsigned r = 0; r < rows; r++) {
        for (unsigned c = 0; c < used(r); c++) write_cell(row(r)[c]);
        output::write("\n");
    }
}
