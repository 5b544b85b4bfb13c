// Whole printed tables, and every state error of the table printer.

#include "colprint/colprint.h"

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "colprint/records.h"
#include "tests/fuzz/words.h"

namespace {

using colprint::Table;
using Text = const char*;

void ok(unsigned status) {
    ASSERT_EQ(status, COLP_OK) << colp_strerror(status);
}

std::string print(const Table& table, unsigned parts = COLP_PRINT_ALLPARTS) {
    return fuzz::printed([&] { ok(colp_print(table.get(), parts, stdout)); });
}

struct Column {
    unsigned type = COLP_STRING;
    unsigned cells = COLP_JUST_LEFT;
    Text title = "";
    Text suffix = nullptr;
    int width = 0;
    bool total = false;
    unsigned title_just = COLP_JUST_LEFT;
    char character = '.';
    bool zeros = false;
    unsigned hex_case = COLP_CASE_LOWER;
};

Column column(unsigned type, unsigned cells, Column rest = {}) {
    rest.type = type;
    rest.cells = cells;
    return rest;
}

using Cell = std::variant<Text, int, uint64_t>;
using Row = std::vector<Cell>;

void add(const Table& table, const Cell& cell) {
    colp_table* const t = table.get();
    ASSERT_NE(t->cursor_column, nullptr);
    if (const Text* text = std::get_if<Text>(&cell)) return ok(colp_addcell_string(t, *text));
    const int* const small = std::get_if<int>(&cell);
    const int64_t value = small != nullptr ? *small : static_cast<int64_t>(std::get<uint64_t>(cell));
    switch (t->cursor_column->type) {
    case COLP_INT: return ok(colp_addcell_int(t, value));
    case COLP_UINT: return ok(colp_addcell_uint(t, static_cast<uint64_t>(value)));
    default: return ok(colp_addcell_hex(t, static_cast<uint64_t>(value)));
    }
}

void fill(const Table& table, const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        ok(colp_beginrow(table.get()));
        for (const Cell& cell : row) add(table, cell);
        ok(colp_endrow(table.get()));
    }
}

Table make(unsigned style, const std::vector<Column>& columns, const std::vector<Row>& rows) {
    Table table(colp_new());
    colp_table* const t = table.get();
    ok(colp_setstyle(t, style));
    for (const Column& c : columns) {
        for (const unsigned status :
             {colp_begincolumn(t, c.type), colp_setcolumn_celljust(t, c.cells),
              colp_setcolumn_title(t, c.title), colp_setcolumn_suffix(t, c.suffix),
              colp_setcolumn_minwidth(t, c.width), colp_setcolumn_summarize(t, c.total),
              colp_setcolumn_titlejust(t, c.title_just), colp_setcolumn_justchar(t, c.character),
              colp_setcolumn_leadingzero(t, c.zeros), colp_setcolumn_hexcase(t, c.hex_case),
              colp_endcolumn(t)})
            ok(status);
    }
    ok(colp_endheader(t));
    fill(table, rows);
    return table;
}

// The last column is not padded; a short row is drawn to its end in the fancy styles only.
TEST(Colprint, FourStyles) {
    Table table = make(
        COLP_STYLE_SIMPLE,
        {{.title = "name", .total = true},
         column(COLP_UINT, COLP_JUST_RIGHT, {.title = "size", .total = true}),
         column(COLP_INT, COLP_JUST_CENTER, {.title = "change", .suffix = "%", .width = 8, .total = true}),
         {.title = "note"}},
        {{"a.txt", 12, -5, "new"}, {"b", 3400, 130, ""}, {"c"}, {}, {"dd", 7, 4}});
    ok(colp_setsumreplace(table.get(), COLP_STYLE_SIMPLE, '='));
    ok(colp_setsumreplace(table.get(), COLP_STYLE_FANCYW, '#'));
    EXPECT_EQ(print(table),
              "name  size change   note\n"
              "a.txt   12   -5%    new\n"
              "b     3400   130%   \n"
              "c\n"
              "\n"
              "dd       7    4%\n"
              "=     3419   129%   =\n");
    ok(colp_setstylestr(table.get(), "fancy"));
    EXPECT_EQ(print(table),
              "name |size|change  |note\n"
              "-----+----+--------+---\n"
              "a.txt|  12|  -5%   |new\n"
              "b    |3400|  130%  |\n"
              "c    |    |        |\n"
              "     |    |        |\n"
              "dd   |   7|   4%   |\n"
              "-----+----+--------+---\n"
              "#    |3419|  129%  |#\n");
    ok(colp_setstylestr(table.get(), "fancyw"));
    EXPECT_EQ(print(table, COLP_PRINT_TITLE | COLP_PRINT_TITLERULE | COLP_PRINT_SUM),
              "name  | size | change   | note\n"
              "------+------+----------+----\n"
              "#     | 3419 |   129%   | #\n");
    ok(colp_setstyle(table.get(), COLP_STYLE_RAW));
    EXPECT_FALSE(colp_isfancy(table.get()));
    EXPECT_EQ(print(table, COLP_PRINT_TITLERULE | COLP_PRINT_SUMRULE), "");
}

TEST(Colprint, TablesWithoutRowsOrColumns) {
    EXPECT_EQ(print(make(COLP_STYLE_FANCY, {}, {{}, {}})), "\n\n\n\n\n\n");
    // A text column justified on a character is one wide for the character, a total of nothing is 0.
    Table table = make(COLP_STYLE_SIMPLE,
                       {{.title = "a", .width = 3},
                        {.cells = COLP_JUST_CHAR, .title = "b"},
                        column(COLP_HEX, COLP_JUST_RIGHT, {.suffix = "h", .total = true}),
                        {.title = "c", .width = -3}},
                       {});
    EXPECT_EQ(print(table), "a   b      c\n       0x0h  \n");
}

TEST(Colprint, AlignsTextsOnACharacter) {
    const std::vector<Row> rows = {{"1.5", "a.b.c"}, {"10.25", ".x"}, {"7", "plain"}, {"", "end."}};
    const Column first{.cells = COLP_JUST_CHAR, .title = "t"};
    const Column last{.cells = COLP_JUST_CHAR_LAST, .title = "left.r", .title_just = COLP_JUST_CHAR};
    EXPECT_EQ(print(make(COLP_STYLE_FANCY, {first, last}, rows)),
              "t    | left.r\n"
              "-----+-------\n"
              " 1.5 |  a.b.c\n"
              "10.25|     .x\n"
              " 7   |plain\n"
              "     |  end.\n"
              "-----+-------\n"
              "     |     \n");
    // A summary replacement can be the character itself, bytes above 127 too can be aligned on, and a number
    // is searched together with its suffix, but never measured by parts.
    Table odd = make(COLP_STYLE_SIMPLE,
                     {{.cells = COLP_JUST_CHAR, .character = '.'},
                      {.cells = COLP_JUST_CHAR_LAST, .character = '\xe9'},
                      column(COLP_UINT, COLP_JUST_CHAR, {.suffix = ".s", .width = 8}),
                      {}},
                     {{"ab.c", "\xe9\xe9x", 5, "|"}, {"b", "long", 123456, "|"}});
    ok(colp_setsumreplace(odd.get(), COLP_STYLE_SIMPLE, '.'));
    EXPECT_EQ(print(odd, COLP_PRINT_ROWS | COLP_PRINT_SUM),
              "ab.c    \xe9\xe9x       5.s |\n"
              " b   long   123456.s |\n"
              "  .     .          . .\n");
}

TEST(Colprint, JustifiesNumbers) {
    auto table = [](unsigned style, unsigned just, Text suffix) {
        const Column decimal = column(COLP_UINT, just, {.suffix = suffix, .width = 8});
        const Column plain = column(COLP_INT, just, {.width = 5});
        const Column hex = column(COLP_HEX, just, {.suffix = suffix, .width = 10, .zeros = true});
        Column upper = hex;
        upper.hex_case = COLP_CASE_UPPER;
        const Row row{12, 12, 12, 255, 255, 12};
        return print(make(style, {decimal, decimal, plain, hex, upper, decimal}, {row}), COLP_PRINT_ROWS);
    };
    EXPECT_EQ(table(COLP_STYLE_FANCY, COLP_JUST_LEFT, "k"),
              "12     k|12     k|12   |0x00000ffk|0x00000FFk|12     k\n");
    EXPECT_EQ(table(COLP_STYLE_SIMPLE, COLP_JUST_CENTER, "k"),
              "  12k      12k     12   0x00000ffk 0x00000FFk   12k\n");
    EXPECT_EQ(table(COLP_STYLE_RAW, COLP_JUST_LEFT, "k"), "12k 12k 12 0xffk 0xFFk 12k\n");

    const uint64_t most = UINT64_MAX;
    const uint64_t least = uint64_t{1} << 63;
    const auto numbers = [](unsigned type) { return column(type, COLP_JUST_RIGHT, {.total = true}); };
    EXPECT_EQ(print(make(COLP_STYLE_FANCY, {numbers(COLP_INT), numbers(COLP_UINT), numbers(COLP_HEX)},
                         {{least, most, most}, {-1, 2, 1}, {10, 1000, 16}, {99, 9999, 15}}),
                    COLP_PRINT_ROWS | COLP_PRINT_SUM),
              "-9223372036854775808|18446744073709551615|0xffffffffffffffff\n"
              "                  -1|                   2|               0x1\n"
              "                  10|                1000|              0x10\n"
              "                  99|                9999|               0xf\n"
              "-9223372036854775700|               11000|              0x1f\n");
}

const char* width_title(void* seen, int32_t width) {
    static_cast<std::vector<int>*>(seen)->push_back(width);
    return width == 5 ? "five" : width == 0 ? nullptr : "";
}

TEST(Colprint, Titles) {
    // A title function is asked while its column is measured, if that depends on it, and for the full width.
    std::vector<int> seen;
    Table table(colp_new());
    for (const unsigned justification : {COLP_JUST_CHAR, COLP_JUST_RIGHT}) {
        ok(colp_begincolumn(table.get(), COLP_STRING));
        ok(colp_setcolumn_titlefunc(table.get(), width_title, &seen));
        ok(colp_setcolumn_titlejust(table.get(), justification));
        ok(colp_setcolumn_minwidth(table.get(), 7));
        ok(colp_endcolumn(table.get()));
    }
    ok(colp_endheader(table.get()));
    fill(table, {{"abcde", "xxxxxxxxx"}});
    EXPECT_EQ(print(table), "                 \nabcde   xxxxxxxxx\n         \n");
    ok(colp_setstyle(table.get(), COLP_STYLE_RAW));
    EXPECT_EQ(print(table, COLP_PRINT_TITLE), " \n");
    EXPECT_EQ(seen, (std::vector<int>{5, 7, 9, 7, 7}));
}

TEST(Colprint, WidthsAndTotalsLastUntilARowIsBegun) {
    Table table = make(COLP_STYLE_SIMPLE,
                       {column(COLP_UINT, COLP_JUST_RIGHT, {.total = true}),
                        column(COLP_UINT, COLP_JUST_LEFT, {.suffix = "seconds"}),
                        {}},
                       {{1000}, {234}});
    EXPECT_EQ(print(table), "      \n1000\n 234\n1234    \n");
    // The last row takes cells after its end; they are not measured before the next row.
    add(table, 5);
    EXPECT_EQ(print(table, COLP_PRINT_ROWS), "1000\n 234       5seconds\n");
    add(table, "text");
    EXPECT_EQ(colp_addcell_string(table.get(), "more"), COLP_ENOMORECOLUMNS);
    EXPECT_EQ(colp_getrowcount(table.get()), 2u);

    colp_removerows(table.get());
    EXPECT_EQ(colp_getrowcount(table.get()), 0u);
    EXPECT_EQ(print(table), "      \n1234    \n");
    fill(table, {{7, 8, "x"}});
    EXPECT_EQ(print(table), "            \n7 8seconds x\n7           \n");
}

// Emptied and filled again with few and many rows around one long text, so that the memory of the rows and
// the buffer of the lines end in all places. Any byte but NUL is printed as it is.
TEST(Colprint, RefillsWithTextsOfAnySize) {
    std::string bytes;
    for (int byte = 1; byte < 256; byte++) bytes += static_cast<char>(byte);
    Table table = make(COLP_STYLE_SIMPLE, {{}, {}}, {});
    const size_t cases[][2] = {{9000, 300},  {3, 8191},  {3, 8192}, {3, 8193},
                               {3, 3 << 20}, {300, 600}, {3, 300}};
    for (const auto& [rows, longest] : cases) {
        std::string expected;
        for (size_t i = 0; i < rows; i++) {
            const std::string text = i == 1 ? std::string(longest, 'x') : bytes.substr(0, i % 256);
            fill(table, {{text.c_str(), bytes.c_str()}});
            expected += text + std::string(longest - text.size() + 1, ' ') + bytes + '\n';
        }
        EXPECT_TRUE(print(table, COLP_PRINT_ROWS) == expected) << rows << " rows, a text of " << longest;
        colp_removerows(table.get());
    }
}

// A table of a text and a number column in one of the states: no table, header, open column, ended header, open
// row, ended row.
constexpr size_t states = 6;

Table in_state(size_t state) {
    Table table = state >= 3   ? make(COLP_STYLE_SIMPLE, {{}, {.type = COLP_INT}}, {})
                  : state >= 1 ? Table(colp_new())
                               : Table();
    if (state == 2) ok(colp_begincolumn(table.get(), COLP_STRING));
    if (state >= 4) ok(colp_beginrow(table.get()));
    if (state == 5) ok(colp_endrow(table.get()));
    return table;
}

TEST(Colprint, StateErrors) {
    static unsigned id;
    using Call = unsigned (*)(colp_table*);
    struct Calls {
        Text name;
        Call call;
        unsigned expected[states];
    };
#define CALL(expression) #expression, [](colp_table * t) -> unsigned { return expression; }
    const Calls table[] = {
        {CALL(colp_begincolumn(t, COLP_HEX)), {1, 0, 12, 10, 10, 10}},
        {CALL(colp_begincolumn_columnid(t, COLP_INT, &id)), {1, 0, 12, 10, 10, 10}},
        {CALL(colp_begincolumn_columnid(t, COLP_INT, nullptr)), {1, 1, 1, 1, 1, 1}},
        {CALL(colp_endcolumn(t)), {1, 11, 0, 10, 10, 10}},
        {CALL(colp_setcolumn_title(t, nullptr)), {1, 1, 1, 1, 1, 1}},
        {CALL(colp_setcolumn_titlejust(t, 6)), {1, 11, 7, 10, 10, 10}},
        {CALL(colp_setcolumn_hexcase(t, 3)), {1, 11, 6, 10, 10, 10}},
        {CALL(colp_setcolumn_justchar(t, '\0')), {1, 11, 0, 10, 10, 10}},
        {CALL(colp_endheader(t)), {1, 0, 12, 10, 10, 10}},
        {CALL(colp_getcolumnid(t, 1, &id)), {1, 9, 9, 0, 0, 0}},
        {CALL(colp_getcolumnid(t, 99, nullptr)), {1, 1, 1, 1, 1, 1}},
        {CALL(colp_beginrow(t)), {1, 9, 9, 0, 15, 0}},
        {CALL(colp_addcell_string(t, "a")), {1, 13, 13, 13, 0, 0}},
        {CALL(colp_addcell_string(t, nullptr)), {1, 1, 1, 1, 1, 1}},
        {CALL(colp_addcell_int(t, 1)), {1, 13, 13, 13, 8, 8}},
        {CALL(colp_endrow(t)), {1, 14, 14, 14, 0, 14}},
        {CALL(colp_print(t, 0, stdout)), {1, 9, 9, 0, 15, 0}},
        {CALL(colp_print_all(t, nullptr)), {1, 1, 1, 1, 1, 1}},
        {CALL(colp_setstyle(t, 4)), {1, 4, 4, 4, 4, 4}},
        {CALL(colp_setstylestr(t, "Fancy")), {1, 3, 3, 3, 3, 3}},
        {CALL(colp_setstylestr(t, nullptr)), {1, 1, 1, 1, 1, 1}},
        {CALL(colp_setsumreplace(t, 7, 'x')), {1, 4, 4, 4, 4, 4}},
        {CALL(colp_setsumreplace(t, 0, '\t')), {1, 1, 1, 1, 1, 1}},
    };
#undef CALL
    for (const Calls& row : table) {
        for (size_t state = 0; state < states; state++) {
            SCOPED_TRACE(std::string(row.name) + " in state " + std::to_string(state));
            Table t = in_state(state);
            colp_table before = {};
            if (t) memcpy(&before, t.get(), sizeof before);
            EXPECT_EQ(row.call(t.get()), row.expected[state]);
            if (!t || row.expected[state] == COLP_OK) continue;
            EXPECT_EQ(memcmp(&before, t.get(), sizeof before), 0) << "a call that failed changed something";
        }
    }
}

TEST(Colprint, CleanKeepsTheStyleAndCountsColumnsOn) {
    Table table = make(COLP_STYLE_FANCY, {{}, {}, {}}, {{"a", "b", "c"}});
    ok(colp_beginrow(table.get()));
    ok(colp_clean(table.get()));
    unsigned id = 0;
    for (const unsigned expected : {4u, 5u}) {
        ok(colp_begincolumn_columnid(table.get(), COLP_STRING, &id));
        EXPECT_EQ(id, expected);
        ok(colp_endcolumn(table.get()));
    }
    ok(colp_endheader(table.get()));
    ok(colp_getcolumnid(table.get(), 0, &id));
    EXPECT_EQ(id, 4u);
    EXPECT_EQ(colp_getcolumnid(table.get(), 2, &id), COLP_ENOCOLUMNID);
    EXPECT_EQ(colp_addcell_string(table.get(), "a"), COLP_ENOMORECOLUMNS);
    fill(table, {{"x", "y"}});
    EXPECT_EQ(print(table, COLP_PRINT_ROWS), "x|y\n");
}

TEST(Colprint, ComparesCells) {
    Table table = make(COLP_STYLE_SIMPLE, {{}, {.type = COLP_INT}, {.type = COLP_UINT}, {.type = COLP_HEX}},
                       {{"b", -1, -1, -1}, {"aa", 1, 1, 1}, {"ab", 1, 1, 1}});
    colp_column* const text = table.get()->first_column;
    const auto orders = [&] {
        std::string signs;
        const colp_cell *a = table.get()->first_row->first_cell,
                        *b = table.get()->first_row->next->first_cell,
                        *c = table.get()->first_row->next->next->first_cell;
        for (const colp_column* at = text; at != nullptr;
             at = at->next, a = a->next, b = b->next, c = c->next) {
            const colp_cellcmp compare = colp_get_cell_cmp__(at);
            for (const int order : {compare(a, b), compare(b, b), compare(c, b)})
                signs += "<=>"[(order > 0) - (order < 0) + 1];
        }
        return signs;
    };
    EXPECT_EQ(orders(), ">=><==>==>==");
    text->sort_mode = COLP_SORT_LENGTH;
    EXPECT_EQ(orders(), "<=><==>==>==");
    const colp_column unknown{};
    EXPECT_EQ(colp_get_cell_cmp__(&unknown), nullptr);
}

}  // namespace
