// Colours and marks of file types, as listings show them.

#pragma once

#include <array>
#include <cstddef>

#include <sys/types.h>

// An ANSI escape sequence; null with size 0 where a type has no colour.
struct gn_color_indicator {
    size_t length;
    const char* sequence;
};

// By the file-type bits of a mode, (mode & 0xF000) >> 12; the last row is for executable regular files.
extern const std::array<gn_color_indicator, 17> gn_color_indicators;

// The sequence that starts the colour of a file of this mode: the reset sequence for a mode without a type,
// an empty text where there is no colour.
[[nodiscard]] const char* gn_begin_color(mode_t mode);

// The sequence that ends a colour.
[[nodiscard]] const char* gn_end_color();

// The mark behind a name: "*" for a regular file that its owner may execute, "/" directory, "|" FIFO, "@" link,
// "=" socket, otherwise empty.
[[nodiscard]] const char* gn_getprintfiletype(mode_t mode);
