// Any sequence of calls: their codes against a model of the table's state, and whatever is printed against its
// cells and, in the fancy styles, against its own lines.

#include <utility>

#include "colprint/colprint.h"
#include "tests/fuzz/words.h"

namespace {

struct Model {
    enum class Header { open, in_column, ended } header = Header::open;
    std::vector<unsigned> types = {};
    std::vector<std::string> rows = {};  // their cells without what is between them
    bool in_row = false;
    size_t cells = SIZE_MAX;  // of the row that takes them; SIZE_MAX: there is none

    unsigned begin_column(unsigned type) {
        if (header == Header::ended) return COLP_EHEADERENDED;
        if (header == Header::in_column) return COLP_ECOLUMNOPEN;
        if (type < 1 || type > 4) return COLP_ECOLTYPE;
        types.push_back(type);
        header = Header::in_column;
        return COLP_OK;
    }
    unsigned set_column() const {
        return header == Header::ended       ? COLP_EHEADERENDED
               : header == Header::in_column ? COLP_OK
                                             : COLP_ENOCOLUMN;
    }
    unsigned end_header() {
        if (header == Header::ended) return COLP_EHEADERENDED;
        if (header == Header::in_column) return COLP_ECOLUMNOPEN;
        header = Header::ended;
        return COLP_OK;
    }
    unsigned begin_row() {
        if (header != Header::ended) return COLP_ENOHEADER;
        if (in_row) return COLP_EROWOPEN;
        rows.emplace_back();
        in_row = true;
        cells = 0;
        return COLP_OK;
    }
    unsigned add_cell(unsigned type, const std::string& text) {
        if (cells >= types.size()) return COLP_ENOMORECOLUMNS;
        if (types[cells] != type) return COLP_ECELLTYPE;
        rows.back() += text;
        cells++;
        return COLP_OK;
    }
    unsigned end_row() { return std::exchange(in_row, false) ? COLP_OK : COLP_ENOROW; }
    unsigned print() const {
        return header != Header::ended ? COLP_ENOHEADER : in_row ? COLP_EROWOPEN : COLP_OK;
    }
    void remove_rows() {
        rows.clear();
        in_row = false;
        cells = SIZE_MAX;
    }
};

void check_lines(const std::string& text, const Model& model) {
    size_t begin = 0;
    for (const std::string& row : model.rows) {
        const size_t end = text.find('\n', begin);
        std::string line = text.substr(begin, end - begin);
        std::erase_if(line, [](char ch) { return ch == ' ' || ch == '|'; });
        fuzz::require(end != text.npos && line == row, "a row");
        begin = end + 1;
    }
    fuzz::require(begin == text.size(), "more rows");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const colprint::Table owner(colp_new());
    colp_table* const table = owner.get();
    Model model;
    const auto step = [](unsigned result, unsigned expected) { fuzz::require(result == expected, "a code"); };
    for (size_t i = 0; i + 1 < size; i += 2) {
        const unsigned value = data[i + 1];
        const std::string text(value % 40, static_cast<char>('!' + value % 64));
        const bool justifies = value % 7 >= 1 && value % 7 <= 5;
        switch (data[i] % 18) {
        case 0: step(colp_begincolumn(table, value % 6), model.begin_column(value % 6)); break;
        case 1:
            step(colp_endcolumn(table), model.set_column());
            if (model.header == Model::Header::in_column) model.header = Model::Header::open;
            break;
        case 2:
            step(colp_setcolumn_celljust(table, value % 7),
                 model.set_column() != COLP_OK || justifies ? model.set_column() : COLP_EJUST);
            break;
        case 3:
            step(colp_setcolumn_titlejust(table, value % 7),
                 model.set_column() != COLP_OK || justifies ? model.set_column() : COLP_EJUST);
            break;
        case 4: step(colp_setcolumn_minwidth(table, static_cast<int>(value) - 8), model.set_column()); break;
        case 5: step(colp_setcolumn_summarize(table, value % 2), model.set_column()); break;
        case 6:
            step(colp_setcolumn_justchar(table, static_cast<char>('!' + value % 64)), model.set_column());
            break;
        case 7: step(colp_setcolumn_title(table, "a.title"), model.set_column()); break;
        case 8: step(colp_endheader(table), model.end_header()); break;
        case 9:
        case 10: step(colp_beginrow(table), model.begin_row()); break;
        case 11: step(colp_addcell_string(table, text.c_str()), model.add_cell(COLP_STRING, text)); break;
        case 12: {
            const int64_t number =
                value % 2 != 0 ? INT64_MIN + static_cast<int>(value) : static_cast<int>(value) - 9;
            step(colp_addcell_int(table, number), model.add_cell(COLP_INT, std::to_string(number)));
            break;
        }
        case 13: {
            const uint64_t number = UINT64_MAX >> value % 64;
            step(colp_addcell_uint(table, number), model.add_cell(COLP_UINT, std::to_string(number)));
            break;
        }
        case 14: {
            char hex[24];
            (void)snprintf(hex, sizeof hex, "0x%x", value);
            step(colp_addcell_hex(table, value), model.add_cell(COLP_HEX, hex));
            break;
        }
        case 15: step(colp_endrow(table), model.end_row()); break;
        case 16:
            step(colp_setstyle(table, value % 5), value % 5 < 4 ? COLP_OK : COLP_ESTYLE);
            if (value < 40) {
                model.remove_rows();
                colp_removerows(table);
            } else if (value < 48) {
                model = {};
                colp_clean(table);
            }
            break;
        default:
            for (const unsigned parts : {unsigned{COLP_PRINT_ALLPARTS}, unsigned{COLP_PRINT_ROWS}}) {
                char* printed = nullptr;
                size_t length = 0;
                FILE* const stream = open_memstream(&printed, &length);
                step(colp_print(table, parts, stream), model.print());
                fclose(stream);
                const std::string lines(printed, length);
                free(printed);
                if (parts == COLP_PRINT_ROWS && model.print() == COLP_OK) check_lines(lines, model);
            }
        }
    }
    return 0;
}
