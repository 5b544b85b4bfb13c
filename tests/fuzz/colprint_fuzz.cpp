// Any sequence of calls: their codes against a model of the table's state, and the printed rows against their cells.

#include <utility>

#include "colprint/colprint.h"
#include "tests/fuzz/words.h"

namespace {

struct Model {
    bool ended = false, in_column = false, in_row = false;
    std::vector<unsigned> types = {};
    std::vector<std::string> rows = {};  // their cells without what is between them
    size_t cells = SIZE_MAX;             // of the row that takes them; SIZE_MAX: there is none

    unsigned in_header(bool column) const {
        if (ended) return COLP_EHEADERENDED;
        return column == in_column ? COLP_OK : in_column ? COLP_ECOLUMNOPEN : COLP_ENOCOLUMN;
    }
    unsigned behind_header() const { return !ended ? COLP_ENOHEADER : in_row ? COLP_EROWOPEN : COLP_OK; }
    unsigned add_cell(unsigned type, const std::string& text) {
        if (cells >= types.size()) return COLP_ENOMORECOLUMNS;
        if (types[cells] != type) return COLP_ECELLTYPE;
        rows.back() += text;
        cells++;
        return COLP_OK;
    }
    void remove_rows() {
        rows.clear();
        in_row = false;
        cells = SIZE_MAX;
    }
};

using Setter = unsigned (*)(colp_table*, unsigned);
constexpr Setter setters[] = {
    [](auto* table, unsigned value) { return colp_setcolumn_celljust(table, value % 5 + 1); },
    [](auto* table, unsigned value) { return colp_setcolumn_titlejust(table, value % 5 + 1); },
    [](auto* table, unsigned value) { return colp_setcolumn_minwidth(table, static_cast<int>(value) - 8); },
    [](auto* table, unsigned value) { return colp_setcolumn_summarize(table, value % 2); },
    [](auto* table, unsigned value) {
        return colp_setcolumn_justchar(table, static_cast<char>(value % 64 + '!'));
    },
    [](auto* table, unsigned) { return colp_setcolumn_title(table, "a.title"); },
};

// Adds a cell of a type; what it is to look like.
std::string cell(colp_table* table, unsigned type, unsigned value, unsigned* code) {
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

void print(colp_table* table, const Model& model) {
    for (const unsigned parts : {unsigned{COLP_PRINT_ALLPARTS}, unsigned{COLP_PRINT_ROWS}}) {
        unsigned code = COLP_OK;
        std::string printed = fuzz::printed([&] { code = colp_print(table, parts, stdout); });
        fuzz::require(code == model.behind_header(), "the code of colp_print");
        if (parts != COLP_PRINT_ROWS || code != COLP_OK) continue;
        std::erase_if(printed, [](char ch) { return ch == ' ' || ch == '|'; });
        std::string rows;
        for (const std::string& row : model.rows) rows += row + '\n';
        fuzz::require(printed == rows, "the rows");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const colprint::Table owner(colp_new());
    colp_table* const table = owner.get();
    Model model;
    for (size_t i = 0; i + 1 < size; i += 2) {
        const unsigned call = data[i] % 18, value = data[i + 1];
        unsigned code = COLP_OK, expected = COLP_OK;
        switch (call) {
        case 0:
            code = colp_begincolumn(table, value % 4 + 1);
            expected = model.in_header(false);
            if (expected != COLP_OK) break;
            model.types.push_back(value % 4 + 1);
            model.in_column = true;
            break;
        case 1:
            code = colp_endcolumn(table);
            expected = model.in_header(true);
            model.in_column = false;
            break;
        case 8:
            code = colp_endheader(table);
            expected = model.in_header(false);
            model.ended |= expected == COLP_OK;
            break;
        case 9:
        case 10:
            code = colp_beginrow(table);
            expected = model.behind_header();
            if (expected != COLP_OK) break;
            model.rows.emplace_back();
            model.in_row = true;
            model.cells = 0;
            break;
        case 11:
        case 12:
        case 13:
        case 14: {
            const std::string text = cell(table, call - 10, value, &code);
            expected = model.add_cell(call - 10, text);
            break;
        }
        case 15:
            code = colp_endrow(table);
            expected = std::exchange(model.in_row, false) ? COLP_OK : COLP_ENOROW;
            break;
        case 16:
            code = colp_setstyle(table, value % 4);
            if (value < 40) {
                model.remove_rows();
                colp_removerows(table);
            } else if (value < 48) {
                model = {};
                colp_clean(table);
            }
            break;
        case 17: print(table, model); break;
        default: code = setters[call - 2](table, value); expected = model.in_header(true);
        }
        fuzz::require(code == expected, "a code");
    }
    return 0;
}
