// Adding cells, and comparing them.

#include "colprint/records.h"

#include <cstring>

namespace {

// Neither the header nor the open row is looked at: the cursor alone says whether a cell can be added, so
// that a row can be filled up after its end.
unsigned check_cursor(const colp_table* table, unsigned type) {
    if (table == nullptr) return COLP_EINVAL;
    if (table->cursor_column == nullptr) return COLP_ENOMORECOLUMNS;
    return table->cursor_column->type == type ? COLP_OK : COLP_ECELLTYPE;
}

void link_cell(colp_table* table, colp_cell* cell) {
    cell->next = nullptr;
    *table->cell_slot = cell;
    table->cell_slot = &cell->next;
    table->cursor_column = table->cursor_column->next;
}

unsigned add_number(colp_table* table, unsigned type, uint64_t value) {
    if (const unsigned status = check_cursor(table, type); status != COLP_OK) return status;
    auto* const cell = static_cast<colp_cell*>(table->row_memory.allocate(sizeof(colp_cell)));
    if (cell == nullptr) return COLP_ENOMEM;
    cell->value = value;
    cell->text_length = 0;
    link_cell(table, cell);
    return COLP_OK;
}

template <typename Number>
int compare(Number a, Number b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

int cell_cmp_int(const colp_cell* a, const colp_cell* b) {
    return compare(static_cast<int64_t>(a->value), static_cast<int64_t>(b->value));
}

int cell_cmp_uint(const colp_cell* a, const colp_cell* b) {
    return compare(a->value, b->value);
}

int cell_cmp_str(const colp_cell* a, const colp_cell* b) {
    return strcmp(a->text, b->text);
}

int cell_cmp_str_len(const colp_cell* a, const colp_cell* b) {
    if (const int order = compare(a->text_length, b->text_length); order != 0) return order;
    return strcmp(a->text, b->text);
}

}  // namespace

unsigned colp_addcell_string(colp_table* table, const char* text) {
    return text == nullptr ? COLP_EINVAL : colp_addcell_text(table, text, strlen(text));
}

unsigned colp_addcell_text(colp_table* table, const char* text, size_t length) {
    if (text == nullptr) return COLP_EINVAL;
    if (const unsigned status = check_cursor(table, COLP_STRING); status != COLP_OK) return status;
    size_t size;
    if (length > UINT32_MAX || __builtin_add_overflow(length, sizeof(colp_cell) + 1, &size))
        return COLP_ENOMEM;
    auto* const cell = static_cast<colp_cell*>(table->row_memory.allocate(size));
    if (cell == nullptr) return COLP_ENOMEM;
    auto* const copy = reinterpret_cast<char*>(cell + 1);
    colprint::copy_bytes(copy, text, length);
    copy[length] = '\0';
    cell->text = copy;
    cell->text_length = static_cast<uint32_t>(length);
    link_cell(table, cell);
    return COLP_OK;
}

unsigned colp_addcell_int(colp_table* table, int64_t value) {
    return add_number(table, COLP_INT, static_cast<uint64_t>(value));
}

unsigned colp_addcell_uint(colp_table* table, uint64_t value) {
    return add_number(table, COLP_UINT, value);
}

unsigned colp_addcell_hex(colp_table* table, uint64_t value) {
    return add_number(table, COLP_HEX, value);
}

colp_cellcmp colp_get_cell_cmp__(const colp_column* column) {
    switch (column->type) {
    case COLP_STRING: return (column->sort_mode & COLP_SORT_LENGTH) != 0 ? cell_cmp_str_len : cell_cmp_str;
    case COLP_INT: return cell_cmp_int;
    case COLP_UINT:
    case COLP_HEX: return cell_cmp_uint;
    default: return nullptr;
    }
}

const char* colp_memrchr__(const char* text, char ch, size_t length) {
    const char* last = nullptr;
    for (size_t i = 0; i < length; i++) {
        if (text[i] == ch) last = text + i;
    }
    return last;
}
