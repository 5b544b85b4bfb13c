#pragma once

// The records of a table; only the library itself looks into them.

#include "colprint/colprint.h"

#include <cstring>

namespace colprint {

/// Copies bytes that do not overlap. Cells are short, and a C library's memcpy of a length that is not known
/// when compiling can cost many times the copy (musl's does): two copies of fixed length that meet in the
/// middle do not.
inline void copy_bytes(char* to, const char* from, size_t length) {
    if (length > 32) {
        memcpy(to, from, length);
    } else if (length >= 16) {
        memcpy(to, from, 16);
        memcpy(to + length - 16, from + length - 16, 16);
    } else if (length >= 8) {
        memcpy(to, from, 8);
        memcpy(to + length - 8, from + length - 8, 8);
    } else if (length >= 4) {
        memcpy(to, from, 4);
        memcpy(to + length - 4, from + length - 4, 4);
    } else if (length != 0) {
        to[0] = from[0];
        to[length / 2] = from[length / 2];
        to[length - 1] = from[length - 1];
    }
}

/// Holds the rows and cells. They live and die together, so they are cut from a few large blocks instead of
/// being allocated one by one: a million rows cost some hundred allocations, and removing them as few.
struct RowMemory {
    static constexpr size_t alignment = alignof(uint64_t);
    struct Block;

    /// Aligned for every record; null when memory is short.
    [[nodiscard]] void* allocate(size_t size) {
        size_t needed;
        if (__builtin_add_overflow(size, alignment - 1, &needed)) return nullptr;
        needed -= needed % alignment;
        if (needed > room && !add_block(needed)) return nullptr;
        void* const result = position;
        position += needed;
        room -= needed;
        return result;
    }
    /// Makes room for that many bytes. False when memory is short.
    [[nodiscard]] bool add_block(size_t least);
    /// Takes everything back. One block is kept, so that filling and emptying a table again and again needs
    /// no allocation as long as the rows fit in it.
    void clear();
    void release();

    Block* newest;
    char* position;  // the unused rest of the newest block
    size_t room;
};

}  // namespace colprint

struct colp_cell {
    colp_cell* next;  // in the following column
    union {
        uint64_t value;    // signed ones as their bit pattern
        const char* text;  // stands directly behind the record
    };
    uint32_t text_length;  // 0 for numbers
};

struct colp_row {
    colp_row* next;
    colp_cell* first_cell;
};

struct colp_column {
    colp_column* next;
    uint32_t type;
    uint32_t minimum_width;
    // The column's width is the sum of both. Justified on a character, a text has its left part up to and
    // including that character and its right part behind it; all others are a left part alone.
    uint32_t left_width;
    uint32_t right_width;
    colp_titlefunc title_function;
    void* title_argument;
    uint32_t title_justification;
    uint32_t cell_justification;
    uint32_t hex_case;
    uint32_t sort_mode;
    const char* suffix;
    uint32_t suffix_length;
    uint32_t leading_zero;
    uint32_t summarize;
    uint64_t sum;
    uint32_t id;
    char justification_character;
};

struct colp_table {
    bool header_ended;
    bool layout_dirty;
    bool fancy;
    uint32_t style;
    colp_column* first_column;
    colp_column* last_column;
    colp_column* open_column;
    colp_row* first_row;
    colp_row* last_row;
    colp_row* open_row;
    colp_column* cursor_column;  // of the next cell
    colp_cell** cell_slot;       // where the next cell is linked
    uint32_t next_column_id;
    uint64_t row_count;
    char* work_buffer;
    const char* column_separator;  // both of the fancy styles only
    const char* rule_crossing;
    char raw_replacement[2];  // a character and a NUL
    char simple_replacement[2];
    char fancy_replacement[2];
    char default_justification_character;
    uint32_t default_title_justification;
    uint32_t default_cell_justification;
    uint32_t default_hex_case;
    uint32_t default_sort_mode;
    colprint::RowMemory row_memory;
};
