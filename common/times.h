// Time stamps as texts.

#pragma once

#include <cstddef>
#include <cstdio>
#include <ctime>

// Prints a time stamp as "YYYY-MM-DD hh:mm:ss.nnnnnnnnn" in UTC or local time; "-" for second 0 of the epoch
// and for a time that no calendar holds. Returns fprintf's result.
int gn_print_timespec(FILE* stream, const timespec* time, bool utc);

// Writes that text, without a NUL, to a place with room for longest_timespec bytes. Returns its end.
inline constexpr size_t longest_timespec = 64;
[[nodiscard]] char* format_timespec(char* to, const timespec* time, bool utc);

// The broken-down time in UTC and in local time: 0, or -1 when the year does not fit.
[[nodiscard]] int gmtime_wrap(const time_t* time, tm* broken_down);
[[nodiscard]] int localtime_wrap(const time_t* time, tm* broken_down);
