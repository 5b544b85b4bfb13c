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
    same("%d %i %u %x %X %o", INT_MIN, INT_MAX, UINT_MAX, 0xabcdefU, 0xabcdefU, 0777U);
    same("%05d|%-5d|%5d|%02d|%04X|%-05d|%3u|%*d", -42, -42, -42, 7, 0xfU, 3, 12345U, -6, 1);
    same("%lld %llu %ld %zu %llx %llo %*llu", LLONG_MIN, ULLONG_MAX, LONG_MIN, size_t{0}, ULLONG_MAX,
         ULLONG_MAX, 20, 1ULL);
    same("%+d|% d|%+ d|%'d|%#x|%#X|%#o|%#x|%#o|%+u", 1, 1, -1, 12345, 255U, 255U, 8U, 0U, 0U, 1U);
    same("%8.3d|%-8.3d|%08.3d|%.0d|%.0d|%#.0o|%#.3o|%#08x|%#-8x|%+.3lld", -5, 5, 5, 0, 1, 0U, 8U, 10U, 10U,
         7LL);
    same("%hd|%hhd|%hu|%hhu|%hhx|%ho", 70000, 200, 70000U, 511U, 0x1ffU, 0x1ffffU);
    same(std::string("%99999999999d").c_str(), 1);
    const std::string large(5000, 'x');
    same("%s: %s: %s", large.c_str(), "middle", large.c_str());
    same("%2000s%s", "far", std::string(1024, 'y').c_str());
}

}  // namespace
