#pragma once

// Prints tables: columns are declared first, then rows of typed cells are added, then the table is written to
// a stream with its columns aligned. All state is in the table; a table is used by one thread at a time.
//
//     colp_table* table = colp_new();
//     colp_begincolumn(table, COLP_STRING);                      // one such group a column
//     colp_setcolumn_title(table, "name");
//     colp_endcolumn(table);
//     colp_endheader(table);
//     colp_beginrow(table);                                      // one such group a row
//     colp_addcell_string(table, "a.txt");
//     colp_endrow(table);
//     colp_print_all(table, stdout);
//     colp_delete(table);
//
// Calls return an error code, COLP_OK (0) for success, unless said otherwise. A call that fails leaves the
// table as it was. Null pointers are checked first (COLP_EINVAL), then the table's state, then the other
// arguments. Texts are bytes that end with a NUL; a width counts bytes.

#include <cstddef>
#include <cstdint>
#include <cstdio>

struct colp_table;
struct colp_column;
struct colp_row;
struct colp_cell;

/// Column types.
enum : unsigned {
    COLP_STRING = 1,  // a copy of a text
    COLP_INT = 2,     // signed 64-bit integer
    COLP_UINT = 3,    // unsigned 64-bit integer
    COLP_HEX = 4,     // unsigned 64-bit integer, printed as hexadecimal with "0x"
};

/// Justifications of titles and cells.
enum : unsigned {
    COLP_JUST_LEFT = 1,
    COLP_JUST_RIGHT = 2,
    COLP_JUST_CENTER = 3,
    COLP_JUST_CHAR = 4,       // texts are aligned on the first occurrence of the justification character
    COLP_JUST_CHAR_LAST = 5,  // on its last occurrence
};

/// Letter case of hexadecimal digits.
enum : unsigned {
    COLP_CASE_LOWER = 1,
    COLP_CASE_UPPER = 2,
};

/// Styles. The fancy ones have rules and draw a line between columns.
enum : unsigned {
    COLP_STYLE_SIMPLE = 0,  // aligned, one space between columns
    COLP_STYLE_RAW = 1,     // not aligned, one space between columns
    COLP_STYLE_FANCY = 2,   // "|" between columns
    COLP_STYLE_FANCYW = 3,  // " | " between columns
};

/// Sort mode of a column, a bit set.
enum : unsigned {
    COLP_SORT_LENGTH = 2,  // shorter texts come first
};

/// What colp_print writes, a bit set; always in this order.
enum : unsigned {
    COLP_PRINT_TITLE = 1,
    COLP_PRINT_TITLERULE = 2,  // fancy styles only
    COLP_PRINT_ROWS = 4,
    COLP_PRINT_SUMRULE = 8,  // fancy styles only
    COLP_PRINT_SUM = 16,
    COLP_PRINT_ALLPARTS = 31,
};

/// Error codes; colp_strerror has their texts.
enum : unsigned {
    COLP_OK = 0,
    COLP_EINVAL = 1,
    COLP_ENOMEM = 2,
    COLP_EPARSE = 3,
    COLP_ESTYLE = 4,
    COLP_ECOLTYPE = 5,
    COLP_ECASE = 6,
    COLP_EJUST = 7,
    COLP_ECELLTYPE = 8,
    COLP_ENOHEADER = 9,
    COLP_EHEADERENDED = 10,
    COLP_ENOCOLUMN = 11,
    COLP_ECOLUMNOPEN = 12,
    COLP_ENOMORECOLUMNS = 13,
    COLP_ENOROW = 14,
    COLP_EROWOPEN = 15,
    COLP_ENOCOLUMNID = 16,
    COLP_ECOMPARE = 17,    // of row sorting: no call returns it
    COLP_ESORTORDER = 18,  // likewise
};

/// Makes the title of a column that is `width` bytes wide. The text stays the caller's.
using colp_titlefunc = const char* (*)(void* argument, int32_t width);

/// Orders two cells: negative, 0 or positive.
using colp_cellcmp = int (*)(const colp_cell* a, const colp_cell* b);

// Tables

/// A new table in the simple style, or null when memory is short. The caller ends it with colp_delete.
[[nodiscard]] colp_table* colp_new();
/// Removes all rows and columns and opens the header again. The style settings stay, and column ids go on
/// counting.
unsigned colp_clean(colp_table* table);
/// Frees the table with all it owns; null is fine.
void colp_delete(colp_table* table);

// Styles, at any time

/// COLP_ESTYLE: no such style.
[[nodiscard]] unsigned colp_setstyle(colp_table* table, unsigned style);
/// Sets the style by its name; COLP_EPARSE: no such name.
[[nodiscard]] unsigned colp_setstylestr(colp_table* table, const char* name);
/// The style names, ended by a null.
[[nodiscard]] const char* const* colp_getstylelist();
/// Whether the style is one of the fancy ones. The table must not be null.
[[nodiscard]] bool colp_isfancy(const colp_table* table);
/// Sets the character that stands in the summary line below columns without a sum. Every style has its own,
/// but the fancy ones share theirs. COLP_EINVAL: not printable; COLP_ESTYLE: no such style.
[[nodiscard]] unsigned colp_setsumreplace(colp_table* table, unsigned style, char ch);

/// The text of an error code, "<unknown error>" for all others; static.
[[nodiscard]] const char* colp_strerror(unsigned code);

// Columns, while the header is open (otherwise COLP_EHEADERENDED)

/// Appends a column and opens it. COLP_ECOLUMNOPEN: the one before is still open; COLP_ECOLTYPE: no such
/// type; COLP_ENOMEM.
[[nodiscard]] unsigned colp_begincolumn(colp_table* table, unsigned type);
/// The same, and stores the column's id.
[[nodiscard]] unsigned colp_begincolumn_columnid(colp_table* table, unsigned type, unsigned* id);
/// Closes the open column; COLP_ENOCOLUMN: there is none.
[[nodiscard]] unsigned colp_endcolumn(colp_table* table);

// Settings of the open column (COLP_ENOCOLUMN: none is open). Titles, title arguments and suffixes are not
// copied: the caller keeps them as long as the table.

[[nodiscard]] unsigned colp_setcolumn_title(colp_table* table, const char* title);
[[nodiscard]] unsigned colp_setcolumn_titlefunc(colp_table* table, colp_titlefunc function, void* argument);
/// COLP_EJUST: no such justification. Only titles justified on a character widen their column: all others
/// overrun it.
[[nodiscard]] unsigned colp_setcolumn_titlejust(colp_table* table, unsigned justification);
[[nodiscard]] unsigned colp_setcolumn_celljust(colp_table* table, unsigned justification);
/// In bytes; a negative width is 0.
[[nodiscard]] unsigned colp_setcolumn_minwidth(colp_table* table, int width);
/// Not 0: the summary line shows the column's total. Has no effect on a column of texts.
[[nodiscard]] unsigned colp_setcolumn_summarize(colp_table* table, unsigned flag);
/// COLP_ECASE: no such letter case.
[[nodiscard]] unsigned colp_setcolumn_hexcase(colp_table* table, unsigned letter_case);
/// Not 0: the numbers are filled up with zeros to the column's width. Has no effect on columns that are not
/// COLP_HEX.
[[nodiscard]] unsigned colp_setcolumn_leadingzero(colp_table* table, unsigned flag);
/// A text behind every number and the total; null for none.
[[nodiscard]] unsigned colp_setcolumn_suffix(colp_table* table, const char* suffix);
[[nodiscard]] unsigned colp_setcolumn_sortmode(colp_table* table, unsigned mode);
/// The character of COLP_JUST_CHAR and COLP_JUST_CHAR_LAST; '.' if not set.
[[nodiscard]] unsigned colp_setcolumn_justchar(colp_table* table, char ch);

/// Ends the header, which may be without columns; COLP_ECOLUMNOPEN: a column is still open.
[[nodiscard]] unsigned colp_endheader(colp_table* table);
/// Stores the id of the column at a position, counted from 0. COLP_ENOHEADER: the header is still open;
/// COLP_ENOCOLUMNID: no such column.
[[nodiscard]] unsigned colp_getcolumnid(const colp_table* table, size_t index, unsigned* id);

// Rows, after the header

/// Appends a row and opens it. COLP_ENOHEADER: the header is still open; COLP_EROWOPEN: a row is;
/// COLP_ENOMEM.
[[nodiscard]] unsigned colp_beginrow(colp_table* table);
/// Adds a cell for the row's next column. COLP_ENOMORECOLUMNS: there is none left, or there is no row;
/// COLP_ECELLTYPE: the column has another type; COLP_ENOMEM. A row that has been ended still takes cells,
/// until the next one begins.
[[nodiscard]] unsigned colp_addcell_string(colp_table* table, const char* text);
/// The same with the first `length` bytes of a text, none of which is a NUL.
[[nodiscard]] unsigned colp_addcell_text(colp_table* table, const char* text, size_t length);
[[nodiscard]] unsigned colp_addcell_int(colp_table* table, int64_t value);
[[nodiscard]] unsigned colp_addcell_uint(colp_table* table, uint64_t value);
[[nodiscard]] unsigned colp_addcell_hex(colp_table* table, uint64_t value);
/// Ends the row, which may have fewer cells than there are columns; COLP_ENOROW: none is open.
[[nodiscard]] unsigned colp_endrow(colp_table* table);
/// How many rows have been ended. The table must not be null.
[[nodiscard]] uint64_t colp_getrowcount(const colp_table* table);
/// Removes all rows, also an open one; the columns stay, and so do their widths and totals until a row is
/// begun. The table must not be null. Always COLP_OK.
unsigned colp_removerows(colp_table* table);

// Printing

/// Writes the given parts and flushes the stream. COLP_ENOHEADER: the header is still open; COLP_EROWOPEN: a
/// row is; COLP_ENOMEM; nothing is written then. Write errors are left to the caller, in the stream's error
/// flag. Cells are never cut off. The widths are measured when rows have been begun since the last print.
[[nodiscard]] unsigned colp_print(colp_table* table, unsigned parts, FILE* out);
[[nodiscard]] unsigned colp_print_all(colp_table* table, FILE* out);
/// Writes all parts but the given ones.
[[nodiscard]] unsigned colp_print_except(colp_table* table, unsigned parts, FILE* out);

// For ordering rows, which the library does not do itself

/// The order that suits the column's type and sort mode; null for an unknown type.
[[nodiscard]] colp_cellcmp colp_get_cell_cmp__(const colp_column* column);
/// The last byte equal to `ch` among the first `length` bytes of `text`, or null.
[[nodiscard]] const char* colp_memrchr__(const char* text, char ch, size_t length);

namespace colprint {

/// Owns a table.
class Table {
  public:
    Table() = default;
    explicit Table(colp_table* table) : table_(table) {}
    Table(Table&& other) noexcept : table_(other.table_) { other.table_ = nullptr; }
    Table& operator=(Table&& other) noexcept {
        colp_table* const taken = other.table_;
        other.table_ = nullptr;
        colp_delete(table_);
        table_ = taken;
        return *this;
    }
    ~Table() { colp_delete(table_); }

    [[nodiscard]] colp_table* get() const { return table_; }
    explicit operator bool() const { return table_ != nullptr; }

  private:
    colp_table* table_ = nullptr;
};

}  // namespace colprint
