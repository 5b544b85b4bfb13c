// Declaring columns.

#include "colprint/records.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr char empty_string[] = "";

const char* title_ident(void* argument, int32_t) {
    return static_cast<const char*>(argument);
}

void set_fixed_title(colp_column& column, const char* title) {
    column.title_function = title_ident;
    column.title_argument = const_cast<char*>(title);  // title_ident only hands it back
}

unsigned check_header_open(const colp_table* table) {
    if (table == nullptr) return COLP_EINVAL;
    return table->header_ended ? COLP_EHEADERENDED : COLP_OK;
}

unsigned check_column_open(const colp_table* table) {
    if (const unsigned status = check_header_open(table); status != COLP_OK) return status;
    return table->open_column == nullptr ? COLP_ENOCOLUMN : COLP_OK;
}

bool is_justification(unsigned value) {
    return value >= COLP_JUST_LEFT && value <= COLP_JUST_CHAR_LAST;
}

}  // namespace

unsigned colp_begincolumn(colp_table* table, unsigned type) {
    if (const unsigned status = check_header_open(table); status != COLP_OK) return status;
    if (table->open_column != nullptr) return COLP_ECOLUMNOPEN;
    if (type < COLP_STRING || type > COLP_HEX) return COLP_ECOLTYPE;
    auto* const column = static_cast<colp_column*>(calloc(1, sizeof(colp_column)));
    if (column == nullptr) return COLP_ENOMEM;
    column->type = type;
    set_fixed_title(*column, empty_string);
    column->title_justification = table->default_title_justification;
    column->cell_justification = table->default_cell_justification;
    column->hex_case = table->default_hex_case;
    column->sort_mode = table->default_sort_mode;
    column->suffix = empty_string;
    column->id = table->next_column_id++;
    column->justification_character = table->default_justification_character;

    (table->last_column == nullptr ? table->first_column : table->last_column->next) = column;
    table->last_column = column;
    table->open_column = column;
    return COLP_OK;
}

unsigned colp_begincolumn_columnid(colp_table* table, unsigned type, unsigned* id) {
    if (id == nullptr) return COLP_EINVAL;
    const unsigned status = colp_begincolumn(table, type);
    if (status == COLP_OK) *id = table->open_column->id;
    return status;
}

unsigned colp_endcolumn(colp_table* table) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column = nullptr;
    return COLP_OK;
}

unsigned colp_setcolumn_title(colp_table* table, const char* title) {
    if (title == nullptr) return COLP_EINVAL;
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    set_fixed_title(*table->open_column, title);
    return COLP_OK;
}

unsigned colp_setcolumn_titlefunc(colp_table* table, colp_titlefunc function, void* argument) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column->title_function = function;
    table->open_column->title_argument = argument;
    return COLP_OK;
}

unsigned colp_setcolumn_titlejust(colp_table* table, unsigned justification) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    if (!is_justification(justification)) return COLP_EJUST;
    table->open_column->title_justification = justification;
    return COLP_OK;
}

unsigned colp_setcolumn_celljust(colp_table* table, unsigned justification) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    if (!is_justification(justification)) return COLP_EJUST;
    table->open_column->cell_justification = justification;
    return COLP_OK;
}

unsigned colp_setcolumn_minwidth(colp_table* table, int width) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column->minimum_width = width < 0 ? 0 : static_cast<uint32_t>(width);
    return COLP_OK;
}

unsigned colp_setcolumn_summarize(colp_table* table, unsigned flag) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column->summarize = table->open_column->type == COLP_STRING ? 0 : flag;
    return COLP_OK;
}

unsigned colp_setcolumn_hexcase(colp_table* table, unsigned letter_case) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    if (letter_case != COLP_CASE_LOWER && letter_case != COLP_CASE_UPPER) return COLP_ECASE;
    table->open_column->hex_case = letter_case;
    return COLP_OK;
}

unsigned colp_setcolumn_leadingzero(colp_table* table, unsigned flag) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column->leading_zero = table->open_column->type == COLP_HEX ? flag : 0;
    return COLP_OK;
}

unsigned colp_setcolumn_suffix(colp_table* table, const char* suffix) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    if (suffix == nullptr) suffix = empty_string;
    const size_t length = strlen(suffix);
    table->open_column->suffix = suffix;
    table->open_column->suffix_length = length < UINT32_MAX ? static_cast<uint32_t>(length) : UINT32_MAX;
    return COLP_OK;
}

unsigned colp_setcolumn_sortmode(colp_table* table, unsigned mode) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column->sort_mode = mode;
    return COLP_OK;
}

unsigned colp_setcolumn_justchar(colp_table* table, char ch) {
    if (const unsigned status = check_column_open(table); status != COLP_OK) return status;
    table->open_column->justification_character = ch;
    return COLP_OK;
}

unsigned colp_endheader(colp_table* table) {
    if (const unsigned status = check_header_open(table); status != COLP_OK) return status;
    if (table->open_column != nullptr) return COLP_ECOLUMNOPEN;
    table->header_ended = true;
    table->layout_dirty = true;
    return COLP_OK;
}

unsigned colp_getcolumnid(const colp_table* table, size_t index, unsigned* id) {
    if (table == nullptr || id == nullptr) return COLP_EINVAL;
    if (!table->header_ended) return COLP_ENOHEADER;
    const colp_column* column = table->first_column;
    while (column != nullptr && index-- != 0) column = column->next;
    if (column == nullptr) return COLP_ENOCOLUMNID;
    *id = column->id;
    return COLP_OK;
}
