// What printf and its like come down to, in a small form of our own.

#pragma once

#include <cstdarg>
#include <cstdio>

// Does what vfprintf(3) does in the C locale, for text, single bytes and integers (%s %c %d %i %u %x %X %o %%) with all
// their flags, widths, precisions and sizes. Other conversions are printed as they stand in the format. Returns the number
// of bytes, or -1 when the stream has failed or, with EOVERFLOW, for a width or precision above INT_MAX.
[[gnu::format(printf, 2, 0)]] int print_formatted(FILE* stream, const char* format, va_list arguments);
