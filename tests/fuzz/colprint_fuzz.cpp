// Any sequence of calls, of which those that succeed make up the table: whatever is printed of its rows against
// their cells. In which state a call succeeds, the unit tests tell.

#include "colprint/colprint.h"
#include "tests/fuzz/words.h"

namespace {

using Setter = unsigned (*)(colp_table*, unsigned);
constexpr Setter setters[] = {
    [](auto* table, unsigned value) { return colp_setcolumn_celljust(table, value % 7); },
    [](auto* table, unsigned value) { return colp_setcolumn_titlejust(table, value % 7); },
    [](auto* table, unsigned value) { return colp_setcolumn_minwidth(table, static_cast<int>(value) - 8); },
    [](auto* table, unsigned value) { return colp_setcolumn_summarize(table, value % 2); },
    [](auto* table, unsigned value) {
        return colp_setcolumn_justchar(table, static_cast<char>(value % 64 + '!'));
    },
    [](auto* table, unsigned) { return colp_setcolumn_title(table, "a.title"); },
    [](auto* table, unsigned value) { return colp_setstyle(table, value % 5); },
    [](auto* table, unsigned) { return colp_endcolumn(table); },
    [](auto* table, unsigned) { return colp_endheader(table); },
};

// Adds a cell of a type; what it is to look like.
std::string add_cell(colp_table* table, unsigned type, unsigned value, unsigned* code) {
    const std::string text(value % 40, static_cast<char>('!' + value % 64));
    const auto small = static_cast<int>(value);
    const int64_t number = value % 2 != 0 ? INT64_MIN + small : small - 9;
    const uint64_t large = UINT64_MAX >> value % 64;
    char hex[24];
    (void)snprintf(hex, sizeof hex, "0x%x", value);
    switch (type) {
    case COLP_STRING: *code = colp_addcell_string(table, text.c_str()); return text;
    case COLP_INT: *code = colp_addcell_int(table, number); return std::to_string(number);
    case COLP_UINT: *code = colp_addcell_uint(table, large); return std::to_string(large);
    default: *code = colp_addcell_hex(table, value); return hex;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const colprint::Table owner(colp_new());
    colp_table* const table = owner.get();
    fuzz::Words rows;  // their cells without what is between them
    for (size_t i = 0; i + 1 < size; i += 2) {
        const unsigned call = data[i] % 18, value = data[i + 1];
        unsigned code = COLP_OK;
        if (call < std::size(setters)) {
            (void)setters[call](table, value);
        } else if (call == 9) {
            (void)colp_begincolumn(table, value % 6);
        } else if (call == 10) {
            (void)colp_endrow(table);
        } else if (call == 11 || call == 12) {
            if (colp_beginrow(table) == COLP_OK) rows.emplace_back();
        } else if (call <= 16) {
            const std::string text = add_cell(table, call - 12, value, &code);
            if (code == COLP_OK) rows.back() += text;
        } else if (value < 16) {
            rows.clear();
            (void)(value % 4 == 0 ? colp_clean(table) : colp_removerows(table));
        } else {
            (void)fuzz::printed([&] { (void)colp_print_all(table, stdout); });
            std::string printed = fuzz::printed([&] { code = colp_print(table, COLP_PRINT_ROWS, stdout); });
            std::erase_if(printed, [](char ch) { return ch == ' ' || ch == '|'; });
            std::string expected;
            for (const std::string& row : rows) expected += row + '\n';
            fuzz::require(printed == expected || (code != COLP_OK && printed.empty()), "the rows");
        }
    }
    return 0;
}
