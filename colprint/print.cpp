// Measuring the columns and writing the table.
//
// Scripts rely on: titles do not widen their columns unless they are justified on a character; the last
// column is not padded on its right, but a number justified left is, because its suffix stands at the
// column's right edge.

#include "colprint/records.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

constexpr size_t run_length = 32;
constexpr char spaces[run_length + 1] = "                                ";
constexpr char dashes[run_length + 1] = "--------------------------------";

// The longest number is -2^63 or 2^64 - 1 in decimal.
constexpr size_t longest_number = 20;

/// Collects what is printed and hands it to the stream in large pieces: a stdio call for every cell would
/// cost more than the cell itself.
class Output {
  public:
    explicit Output(FILE* stream) : stream_(stream) {}

    void put(const char* text, size_t length) {
        if (length > sizeof buffer_ - used_) {
            flush();
            if (length > sizeof buffer_) {
                fwrite(text, 1, length, stream_);
                return;
            }
        }
        colprint::copy_bytes(buffer_ + used_, text, length);
        used_ += length;
    }
    void put(std::string_view text) { put(text.data(), text.size()); }
    void put(char ch) {
        if (used_ == sizeof buffer_) flush();
        buffer_[used_++] = ch;
    }

    /// Writes a text and blanks behind it.
    void put_padded(const char* text, size_t length, uint64_t blanks) {
        if (length + run_length > sizeof buffer_ - used_ || blanks > run_length) {
            put(text, length);
            return repeat(spaces, blanks);
        }
        colprint::copy_bytes(buffer_ + used_, text, length);
        memcpy(buffer_ + used_ + length, spaces, run_length);
        used_ += length + blanks;
    }

    /// Writes `count` bytes of a run of equal characters.
    [[gnu::noinline]] void repeat(const char (&run)[run_length + 1], uint64_t count) {
        while (count != 0) {
            if (sizeof buffer_ - used_ < run_length) flush();
            memcpy(buffer_ + used_, run, run_length);  // in full, as a copy of fixed length is the cheapest
            const size_t piece = count < run_length ? static_cast<size_t>(count) : run_length;
            used_ += piece;
            count -= piece;
        }
    }

    [[gnu::noinline]] void flush() {
        if (used_ != 0) fwrite(buffer_, 1, used_, stream_);
        used_ = 0;
    }

  private:
    FILE* stream_;
    size_t used_ = 0;
    char buffer_[8192];
};

uint64_t width_of(const colp_column& column) {
    return uint64_t{column.left_width} + column.right_width;
}

bool on_character(uint32_t justification) {
    return justification == COLP_JUST_CHAR || justification == COLP_JUST_CHAR_LAST;
}

/// The length of the text's left part, up to and including the character that it is aligned on; 0: none.
size_t left_part(uint32_t justification, const char* text, size_t length, char ch) {
    const void* const found =
        justification == COLP_JUST_CHAR ? memchr(text, ch, length) : colp_memrchr__(text, ch, length);
    return found == nullptr ? 0 : static_cast<size_t>(static_cast<const char*>(found) - text) + 1;
}

const char* title_of(const colp_column& column, uint64_t width) {
    if (column.title_function == nullptr) return nullptr;
    return column.title_function(column.title_argument, static_cast<int32_t>(width));
}

// Measuring

void widen(colp_column& column, size_t left, size_t right) {
    column.left_width = std::max(column.left_width, static_cast<uint32_t>(left));
    column.right_width = std::max(column.right_width, static_cast<uint32_t>(right));
}

void measure_text(colp_column& column, uint32_t justification, const char* text, size_t length) {
    if (length > INT32_MAX) return;
    if (!on_character(justification)) return widen(column, length, 0);
    const size_t left = left_part(justification, text, length, column.justification_character);
    // A text without the character stands as if the character followed it.
    if (left == 0) return widen(column, length + 1, 0);
    widen(column, left, length - left);
}

size_t decimal_length(uint64_t value) {
    size_t length = 1;
    for (; value >= 1000; value /= 1000) length += 3;
    return length + (value >= 10) + (value >= 100);
}

size_t number_length(uint32_t type, uint64_t value) {
    switch (type) {
    case COLP_INT:
        return static_cast<int64_t>(value) < 0 ? 1 + decimal_length(0 - value) : decimal_length(value);
    case COLP_UINT: return decimal_length(value);
    default: return 2 + (static_cast<size_t>(std::bit_width(value | 1)) + 3) / 4;
    }
}

void measure_number(colp_column& column, uint64_t value) {
    const uint64_t length = uint64_t{column.suffix_length} + number_length(column.type, value);
    if (length <= INT32_MAX) widen(column, static_cast<size_t>(length), 0);
}

void measure_cell(colp_column& column, const colp_cell& cell) {
    if (column.type == COLP_STRING) {
        measure_text(column, column.cell_justification, cell.text, cell.text_length);
    } else {
        if (column.summarize != 0) column.sum += cell.value;
        measure_number(column, cell.value);
    }
}

/// False when memory is short; the layout is still to be done then.
[[nodiscard]] bool lay_out(colp_table& table) {
    for (colp_column* column = table.first_column; column != nullptr; column = column->next) {
        column->sum = 0;
        column->left_width = 0;
        column->right_width = 0;
    }
    for (const colp_row* row = table.first_row; row != nullptr; row = row->next) {
        colp_column* column = table.first_column;
        for (const colp_cell* cell = row->first_cell; cell != nullptr && column != nullptr;
             cell = cell->next) {
            measure_cell(*column, *cell);
            column = column->next;
        }
    }

    uint64_t longest = 0;
    for (colp_column* column = table.first_column; column != nullptr; column = column->next) {
        if (column->type == COLP_STRING) {
            measure_text(*column, column->cell_justification, "", 0);
        } else if (column->summarize != 0) {
            measure_number(*column, column->sum);
        }
        if (on_character(column->title_justification)) {
            const char* const title = title_of(*column, width_of(*column));
            if (title != nullptr) measure_text(*column, column->title_justification, title, strlen(title));
        }
        if (width_of(*column) < column->minimum_width) {
            column->left_width = column->minimum_width - column->right_width;
        }
        // A cell that is added to the last row after this is not measured, but its number must fit in the
        // work buffer, too: in a column narrower than the suffix it can take twice the suffix's length.
        longest =
            std::max({longest, width_of(*column), 2 * uint64_t{column->suffix_length} + longest_number});
    }

    const uint64_t size = longest + 5;
    if (size > SIZE_MAX) return false;
    auto* const buffer = static_cast<char*>(realloc(table.work_buffer, static_cast<size_t>(size)));
    if (buffer == nullptr) return false;
    table.work_buffer = buffer;
    table.layout_dirty = false;
    return true;
}

// Writing

/// Writes a text within the column's width; a longer one overruns it.
[[gnu::noinline]] void print_justified(Output& out, uint32_t justification, std::string_view text,
                                       const colp_column& column, bool pad_right) {
    const uint64_t length = text.size();
    const uint64_t surplus = width_of(column) > length ? width_of(column) - length : 0;
    uint64_t before = 0;
    uint64_t behind = 0;
    switch (justification) {
    case COLP_JUST_LEFT: behind = surplus; break;
    case COLP_JUST_RIGHT: before = surplus; break;
    case COLP_JUST_CENTER:
        before = surplus / 2;
        behind = surplus - before;
        break;
    case COLP_JUST_CHAR:
    case COLP_JUST_CHAR_LAST: {
        const uint64_t left =
            left_part(justification, text.data(), text.size(), column.justification_character);
        if (left != 0) {
            before = column.left_width > left ? column.left_width - left : 0;
            behind = column.right_width > length - left ? column.right_width - (length - left) : 0;
        } else {
            before = column.left_width > length + 1 ? column.left_width - (length + 1) : 0;
            behind = uint64_t{column.right_width} + 1;
        }
        break;
    }
    default: abort();
    }
    out.repeat(spaces, before);
    out.put_padded(text.data(), text.size(), pad_right ? behind : 0);
}

/// Formats a number and the column's suffix into the table's work buffer. False: the result is longer than
/// any text that can be measured, and nothing is printed for it.
bool format_number(const colp_table& table, const colp_column& column, uint64_t value, size_t& length) {
    const bool raw = table.style == COLP_STYLE_RAW;
    const bool hex = column.type == COLP_HEX;
    const auto room = static_cast<int64_t>(width_of(column)) - int64_t{column.suffix_length};

    char digits[longest_number];
    char* end = digits + sizeof digits;
    std::string_view prefix;
    int64_t field = 0;  // as in printf: the number's least width, negative to fill up on its right
    char filler = ' ';
    if (hex) {
        prefix = "0x";
        end = std::to_chars(digits, end, value, 16).ptr;
        if (column.hex_case == COLP_CASE_UPPER) {
            std::transform(digits, end, digits, [](char digit) {
                return static_cast<char>(digit >= 'a' ? digit - 'a' + 'A' : digit);
            });
        }
        if (column.leading_zero != 0 && !raw) {
            field = room - 2;
            filler = field > 0 ? '0' : ' ';
        }
    } else {
        end = column.type == COLP_INT ? std::to_chars(digits, end, static_cast<int64_t>(value)).ptr
                                      : std::to_chars(digits, end, value).ptr;
        if (!raw && column.cell_justification == COLP_JUST_LEFT) field = -room;
        if (!raw && column.cell_justification == COLP_JUST_RIGHT) field = room;
    }

    const auto count = end - digits;
    const int64_t before = std::max(field - count, int64_t{0});
    const int64_t behind = std::max(-field - count, int64_t{0});
    const int64_t total =
        static_cast<int64_t>(prefix.size()) + before + count + behind + int64_t{column.suffix_length};
    if (total > INT32_MAX) return false;

    char* to = std::copy(prefix.begin(), prefix.end(), table.work_buffer);
    to = std::fill_n(to, before, filler);
    to = std::copy(digits, end, to);
    to = std::fill_n(to, behind, ' ');
    colprint::copy_bytes(to, column.suffix, column.suffix_length);
    length = static_cast<size_t>(total);
    return true;
}

/// Writes what a cell or a summary shows.
inline void put_in_column(Output& out, const colp_table& table, const colp_column& column, const char* text,
                          size_t length, bool ends_line) {
    const uint64_t width = width_of(column);
    if (table.style == COLP_STYLE_RAW || length >= width) return out.put(text, length);
    // As nearly all texts of long listings are: not worth a call.
    if (column.cell_justification == COLP_JUST_LEFT)
        return out.put_padded(text, length, ends_line ? 0 : width - length);
    print_justified(out, column.cell_justification, {text, length}, column, !ends_line);
}

[[gnu::noinline]] void put_number(Output& out, const colp_table& table, const colp_column& column,
                                  uint64_t value, bool ends_line) {
    size_t length = 0;
    if (!format_number(table, column, value, length)) return;
    put_in_column(out, table, column, table.work_buffer, length, ends_line);
}

void print_titles(Output& out, const colp_table& table, std::string_view separator) {
    for (const colp_column* column = table.first_column; column != nullptr; column = column->next) {
        const bool raw = table.style == COLP_STYLE_RAW;
        out.flush();  // the title function may write to the stream itself
        const char* const title = title_of(*column, raw ? column->minimum_width : width_of(*column));
        const std::string_view text = title == nullptr ? "" : title;
        if (raw) {
            out.put(text);
        } else if (text.empty()) {
            out.repeat(spaces, width_of(*column));
        } else {
            print_justified(out, column->title_justification, text, *column, column->next != nullptr);
        }
        if (column->next != nullptr) out.put(separator);
    }
    out.put('\n');
}

void print_rule(Output& out, const colp_table& table) {
    for (const colp_column* column = table.first_column; column != nullptr; column = column->next) {
        out.repeat(dashes, width_of(*column));
        if (column->next != nullptr) out.put(table.rule_crossing);
    }
    out.put('\n');
}

void print_row(Output& out, const colp_table& table, const colp_row& row, std::string_view separator) {
    const colp_column* column = table.first_column;
    for (const colp_cell* cell = row.first_cell; cell != nullptr; cell = cell->next) {
        if (column != table.first_column) {
            if (separator.size() == 1)
                out.put(separator.front());
            else
                out.put(separator);
        }
        const bool ends_line = column->next == nullptr || (!table.fancy && cell->next == nullptr);
        if (column->type == COLP_STRING)
            put_in_column(out, table, *column, cell->text, cell->text_length, ends_line);
        else
            put_number(out, table, *column, cell->value, ends_line);
        column = column->next;
    }
    // The fancy styles draw the columns to the end of a short row.
    if (table.fancy) {
        for (; column != nullptr; column = column->next) {
            if (column != table.first_column) out.put(separator);
            if (column->next != nullptr) out.repeat(spaces, width_of(*column));
        }
    }
    out.put('\n');
}

void print_summary(Output& out, const colp_table& table, std::string_view separator) {
    for (const colp_column* column = table.first_column; column != nullptr; column = column->next) {
        if (column->summarize != 0) {
            put_number(out, table, *column, column->sum, column->next == nullptr);
        } else {
            const char* replacement;
            switch (table.style) {
            case COLP_STYLE_RAW: replacement = table.raw_replacement; break;
            case COLP_STYLE_SIMPLE: replacement = table.simple_replacement; break;
            case COLP_STYLE_FANCY:
            case COLP_STYLE_FANCYW: replacement = table.fancy_replacement; break;
            default: abort();
            }
            if (table.style == COLP_STYLE_RAW) {
                out.put(replacement);
            } else {
                print_justified(out, column->cell_justification, replacement, *column,
                                column->next != nullptr);
            }
        }
        if (column->next != nullptr) out.put(separator);
    }
    out.put('\n');
}

}  // namespace

unsigned colp_print(colp_table* table, unsigned parts, FILE* out) {
    if (table == nullptr || out == nullptr) return COLP_EINVAL;
    if (!table->header_ended) return COLP_ENOHEADER;
    if (table->open_row != nullptr) return COLP_EROWOPEN;
    if (table->layout_dirty && !lay_out(*table)) return COLP_ENOMEM;

    Output output(out);
    const std::string_view separator = table->fancy ? table->column_separator : " ";
    if ((parts & COLP_PRINT_TITLE) != 0) print_titles(output, *table, separator);
    if ((parts & COLP_PRINT_TITLERULE) != 0 && table->fancy) print_rule(output, *table);
    if ((parts & COLP_PRINT_ROWS) != 0) {
        for (const colp_row* row = table->first_row; row != nullptr; row = row->next) {
            print_row(output, *table, *row, separator);
        }
    }
    if ((parts & COLP_PRINT_SUMRULE) != 0 && table->fancy) print_rule(output, *table);
    if ((parts & COLP_PRINT_SUM) != 0) print_summary(output, *table, separator);
    output.flush();
    fflush(out);
    return COLP_OK;
}

unsigned colp_print_all(colp_table* table, FILE* out) {
    return colp_print(table, COLP_PRINT_ALLPARTS, out);
}

unsigned colp_print_except(colp_table* table, unsigned parts, FILE* out) {
    return colp_print(table, ~parts & COLP_PRINT_ALLPARTS, out);
}
