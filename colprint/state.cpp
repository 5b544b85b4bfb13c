// Making, emptying and deleting a table.

#include "colprint/records.h"

#include <cstdlib>

colp_table* colp_new() {
    auto* const table = static_cast<colp_table*>(calloc(1, sizeof(colp_table)));
    if (table == nullptr) return nullptr;
    table->style = COLP_STYLE_SIMPLE;
    table->next_column_id = 1;
    table->raw_replacement[0] = '-';
    table->simple_replacement[0] = ' ';
    table->fancy_replacement[0] = ' ';
    table->default_justification_character = '.';
    table->default_title_justification = COLP_JUST_LEFT;
    table->default_cell_justification = COLP_JUST_LEFT;
    table->default_hex_case = COLP_CASE_LOWER;
    return table;
}

unsigned colp_clean(colp_table* table) {
    if (table == nullptr) return COLP_EINVAL;
    colp_removerows(table);
    for (colp_column* column = table->first_column; column != nullptr;) {
        colp_column* const next = column->next;
        free(column);
        column = next;
    }
    table->first_column = nullptr;
    table->last_column = nullptr;
    table->open_column = nullptr;
    table->header_ended = false;
    return COLP_OK;
}

void colp_delete(colp_table* table) {
    if (table == nullptr) return;
    colp_clean(table);
    table->row_memory.release();
    free(table->work_buffer);
    free(table);
}
