// What printf and its like come down to, in a small form of our own.

#pragma once

#include <cstdarg>
#include <cstdio>

// Does what vfprintf(3) does, for what this toolbox prints: %s %c %d %i %u %x %X %o %% with "-", "0", a width, and a
// precision of text, for any integers. Others are printed as they stand in the format. Returns the number of bytes, or
// -1 when the stream has failed.
[[gnu::format(printf, 2, 0)]] int print_formatted(FILE* stream, const char* format, va_list arguments);
