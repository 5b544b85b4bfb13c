// Sizes as texts.

#pragma once

#include <cstdint>

// Converts a number (decimal, "0x" hexadecimal, leading-0 octal; 0 for no digits) with an optional size
// suffix (lib/option/size_suffix.h), whose leading 'k' becomes 'K' in the text. With dd_units the suffixes
// "c" (1), "w" (2) and "b" (512) are known as well. False, with *value untouched, for any other suffix.
[[nodiscard]] bool gn_parse_size(char* text, uint64_t* value, bool dd_units);

// Prints a byte count on standard output as a right-aligned number of the given width and a unit letter (k,
// M, G, T or P; powers of 1024, truncated): the first unit in which the number fits the width, at most P.
// "??" for a width below 1. There is no unit for single bytes.
void gn_printsize(int width, uint64_t size);
