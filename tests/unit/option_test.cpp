// The option scanner by examples; the fuzzing target compares it with a model on any arguments. Every argument lies
// in memory of exactly its own size, so that the address sanitizer sees a look beside it.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include "lib/option/option.h"
#include "tests/fuzz/words.h"

namespace {

using fuzz::Words;

// The words between blanks; '' is the empty one.
Words split(const std::string& text) {
    std::istringstream stream(text);
    Words words(std::istream_iterator<std::string>(stream), {});
    std::replace(words.begin(), words.end(), std::string("''"), std::string());
    return words;
}

enum Mode : bool { stop = false, mixed = true };  // operands end the options, or stand among them

constexpr e_longoption longs[] = {{"--append", 'a'}, {"--output", 'o'}, {"--only", 1000}, {nullptr, 0}};

// Scans as a command would whose option 'o' takes an operand: "x o(value) | operand operand".
std::string scan(Mode mode, const e_longoption* table, const Words& words) {
    fuzz::Arguments arguments(words);
    e_option state;
    e_initoption(&state, &arguments.argc, &arguments.argv, mode);
    e_setlongoption(&state, table);
    std::string seen;
    for (int c; (c = e_getoption(&state)) != e_end; seen += ' ') {
        seen += c > ' ' && c <= '~' ? std::string(1, static_cast<char>(c)) : std::to_string(c);
        if (c != 'o') continue;
        const char* operand = e_opt_getstr(&state);
        seen += operand == nullptr ? "-missing" : "(" + std::string(operand) + ")";
    }
    // Once over, always over.
    int64_t number = 7;
    EXPECT_EQ(e_getoption(&state), e_end);
    EXPECT_EQ(e_opt_getstr(&state), nullptr);
    EXPECT_EQ(e_opt_getint(&state, &number), e_opt_past_end);
    EXPECT_EQ(e_opt_getsize(&state, &number), e_opt_past_end);
    seen += '|';
    for (char* const* operand = arguments.argv; *operand != nullptr; operand++)
        seen += std::string(" ") + (**operand != '\0' ? *operand : "''");
    return seen;
}

TEST(Option, Scanning) {
    const struct {
        Mode mode;
        const char *words, *seen;
    } rows[] = {
        {mixed, "a -x b -abc - '' --help c -y", "x a b c -2 y | a b - '' c"},
        {mixed, "-\x80 -\x7f -append", "-128 127 a p p e n d |"},
        // Operands of options are arguments of their own, and end a cluster.
        {mixed, "-o -x y -nov 5 -o6 7 8 -o '' -o --help a -o",
         "o(-x) n o(5) o(7) o() o(--help) o-missing | y 8 a"},
        {mixed, "--output v w --output=v --output= --output=a=b", "o(v) o(v) o() o(a=b) | w"},
        // Long options match as whole names only; others are clusters that begin with '-'.
        {mixed, "--append b --only --appendx --app", "a 1000 - a p p e n d x - a p p | b"},
        // A value that nobody fetches.
        {mixed, "--append=1 b --append= --only=xo c d", "a = 1 a = 1000 = x o(c) | b d"},
        // The first operand ends the scan.
        {stop, "-x cmd -y", "x | cmd -y"},
        {stop, "'' -x", "| '' -x"},
        {stop, "- --output=1 -o v --only -", "0 o(1) o(v) 1000 0 |"},
        // The bytes that coincide with the results.
        {mixed, "a -x\xffy b", "x | a"},
        {stop, "-x\xffy b", "x | -x\xffy b"},
    };
    for (const auto& row : rows) EXPECT_EQ(scan(row.mode, longs, split(row.words)), row.seen) << row.words;
    EXPECT_EQ(scan(mixed, nullptr, {"--append=1"}), "- a p p e n d = 1 |");
}

// What a getter makes of operands, each on its own: the numbers, or in brackets the reason why there is none.
template <typename Getter>
std::string numbers(Getter get, const char* texts) {
    std::string seen;
    for (const std::string& text : split(texts)) {
        fuzz::Arguments arguments(text == "missing" ? Words{} : Words{text});
        e_option state;
        e_initoption(&state, &arguments.argc, &arguments.argv, true);
        constexpr int64_t untouched = 4711;
        int64_t value = untouched;
        const int result = get(&state, &value);
        EXPECT_TRUE(result == e_opt_ok || result == e_opt_bad_suffix || value == untouched);
        seen += (result == e_opt_ok ? std::to_string(value) : "(" + std::to_string(result) + ")") + " ";
    }
    return seen;
}

TEST(Option, Numbers) {
    auto ranged = [](e_option* state, int64_t* value) { return e_opt_getrangeint(state, value, 1, 10); };
    EXPECT_EQ(numbers(e_opt_getint, "10 0x1F -010 12abc abc '' missing"), "10 31 -8 12 0 0 (1) ");
    EXPECT_EQ(numbers(ranged, "-1 0 1 10 11 10K missing"), "(3) (3) 1 10 (3) 10 (1) ");
    EXPECT_EQ(numbers(e_opt_getsize, "10 '' K -1K 4kB 8E missing"),
              "10 0 0 -1024 4000 -9223372036854775808 (1) ");
    EXPECT_EQ(numbers(e_opt_getsize, "1Ki 1KIB 1KiBx 2b 1KK"), "(2) (2) (2) (2) (2) ");
}

}  // namespace
