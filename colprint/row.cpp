// Rows, and the memory that they and their cells are cut from.

#include "colprint/records.h"

#include <algorithm>
#include <cstdlib>

namespace {

// A small table should cost little; a large one few blocks. Blocks double in size in between.
constexpr size_t smallest_block = size_t{4} << 10;
constexpr size_t largest_block = size_t{1} << 20;

static_assert(alignof(colp_cell) <= colprint::RowMemory::alignment);
static_assert(alignof(colp_row) <= colprint::RowMemory::alignment);

}  // namespace

struct colprint::RowMemory::Block {
    Block* older;
    size_t size;  // without this header
};
static_assert(sizeof(colprint::RowMemory::Block) % colprint::RowMemory::alignment == 0);

bool colprint::RowMemory::add_block(size_t least) {
    size_t usual = smallest_block;
    if (newest != nullptr) usual = newest->size < largest_block / 2 ? newest->size * 2 : largest_block;
    const size_t block_size = std::max(usual, least);
    size_t total;
    if (__builtin_add_overflow(block_size, sizeof(Block), &total)) return false;
    auto* const block = static_cast<Block*>(malloc(total));
    if (block == nullptr) return false;
    block->older = newest;
    block->size = block_size;
    newest = block;
    position = reinterpret_cast<char*>(block + 1);
    room = block_size;
    return true;
}

void colprint::RowMemory::clear() {
    Block* kept = nullptr;
    for (Block* block = newest; block != nullptr;) {
        Block* const older = block->older;
        // Blocks grow, so the newest is the best to keep, unless it was made for one huge text.
        if (kept == nullptr && block->size <= largest_block) {
            kept = block;
        } else {
            free(block);
        }
        block = older;
    }
    newest = kept;
    position = nullptr;
    room = 0;
    if (kept != nullptr) {
        kept->older = nullptr;
        position = reinterpret_cast<char*>(kept + 1);
        room = kept->size;
    }
}

void colprint::RowMemory::release() {
    clear();
    free(newest);
    *this = {};
}

unsigned colp_beginrow(colp_table* table) {
    if (table == nullptr) return COLP_EINVAL;
    if (!table->header_ended) return COLP_ENOHEADER;
    if (table->open_row != nullptr) return COLP_EROWOPEN;
    auto* const row = static_cast<colp_row*>(table->row_memory.allocate(sizeof(colp_row)));
    if (row == nullptr) return COLP_ENOMEM;
    row->next = nullptr;
    row->first_cell = nullptr;

    (table->last_row == nullptr ? table->first_row : table->last_row->next) = row;
    table->last_row = row;
    table->open_row = row;
    table->cursor_column = table->first_column;
    table->cell_slot = &row->first_cell;
    table->layout_dirty = true;
    return COLP_OK;
}

// Leaves the cursor alone: cells may still be added to the row until the next one begins.
unsigned colp_endrow(colp_table* table) {
    if (table == nullptr) return COLP_EINVAL;
    if (table->open_row == nullptr) return COLP_ENOROW;
    table->row_count++;
    table->open_row = nullptr;
    return COLP_OK;
}

uint64_t colp_getrowcount(const colp_table* table) {
    return table->row_count;
}

// Leaves the layout alone: a table that is printed without rows keeps its widths and totals.
unsigned colp_removerows(colp_table* table) {
    table->row_memory.clear();
    table->first_row = nullptr;
    table->last_row = nullptr;
    table->open_row = nullptr;
    table->cursor_column = nullptr;
    table->cell_slot = nullptr;
    table->row_count = 0;
    return COLP_OK;
}
