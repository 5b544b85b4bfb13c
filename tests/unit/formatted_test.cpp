#include "common/formatted.h"

#include <climits>
#include <string>

#include <gtest/gtest.h>

namespace {

// What is printed into a file, with what the call returns.
std::string written(int (*print)(FILE*, const char*, va_list), const char* format, ...) {
    char* text = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&text, &size);
    va_list arguments;
    va_start(arguments, format);
    const int count = print(stream, format, arguments);
    va_end(arguments);
    fclose(stream);
    const std::string result = std::string(text, size) + " " + std::to_string(count);
    free(text);
    return result;
}

template <typename... Values>
void same(const char* format, Values... values) {
    EXPECT_EQ(written(print_formatted, format, values...), written(vfprintf, format, values...)) << format;
}

TEST(formatted, prints_as_the_c_library_does) {
    same("");
    same("a%%b");
    same("%s|%5s|%-5s|%.2s|%-*.*s|%*s|%s", "", "abc", "abc", "abc", 4, 1, "xyz", -4, "x", "abcdef");
    same("%.*s|%.0s|%3s", -1, "all", "none", "longer");
    same("%c%c%3c|%-3c|", '\0', 'a', 'b', 'c');
    // The fuzzing target for seq compares the numbers.
    same("%d %i %u %x %X %o %hhd|%04X", INT_MIN, INT_MAX, UINT_MAX, 0xabcdefU, 0xabcdefU, 0777U, 200, 0xfU);
    same("%lld %llu %ld %zu %*llu|%*d", LLONG_MIN, ULLONG_MAX, LONG_MIN, size_t{0}, 20, 1ULL, -6, 1);
    same(std::string("%99999999999d").c_str(), 1);
    const std::string large(5000, 'x');
    same("%s: %s: %s", large.c_str(), "middle", large.c_str());
    same("%2000s%s", "far", std::string(1024, 'y').c_str());
}

}  // namespace
