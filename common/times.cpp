#include "common/times.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace {

// A number of at least the given digits.
char* put_number(char* to, uint64_t number, int digits, char fill) {
    char text[20];
    const char* end = std::to_chars(text, text + sizeof text, number).ptr;
    for (auto missing = digits - (end - text); missing > 0; missing--) *to++ = fill;
    return std::copy(static_cast<const char*>(text), end, to);
}

}  // namespace

char* format_timespec(char* to, const timespec* time, bool utc) {
    tm date{};
    if (time->tv_sec == 0 || (utc ? gmtime_wrap : localtime_wrap)(&time->tv_sec, &date) != 0) {
        *to++ = '-';
        return to;
    }
    to = put_number(to, static_cast<unsigned>(date.tm_year) + 1900U, 4, ' ');
    const struct {
        int64_t number;
        int digits;
        char separator;
    } parts[] = {
        {date.tm_mon + 1, 2, '-'}, {date.tm_mday, 2, '-'}, {date.tm_hour, 2, ' '},
        {date.tm_min, 2, ':'},     {date.tm_sec, 2, ':'},  {time->tv_nsec, 9, '.'},
    };
    for (const auto& part : parts) {
        *to++ = part.separator;
        to = put_number(to, static_cast<uint64_t>(part.number), part.digits, '0');
    }
    return to;
}

int gn_print_timespec(FILE* stream, const timespec* time, bool utc) {
    char text[longest_timespec];
    return fprintf(stream, "%.*s", static_cast<int>(format_timespec(text, time, utc) - text), text);
}

int gmtime_wrap(const time_t* time, tm* broken_down) {
    return gmtime_r(time, broken_down) != nullptr ? 0 : -1;
}

int localtime_wrap(const time_t* time, tm* broken_down) {
    return localtime_r(time, broken_down) != nullptr ? 0 : -1;
}
