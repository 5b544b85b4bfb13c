// Temporary files: names that nobody can guess, and files that are made under names that nobody had before.

#pragma once

#include <cstddef>
#include <span>

#include "common/own.h"

namespace temporary {

// How often a name is tried that turns out to be taken before the caller should give up: enough for a
// directory that is nearly full of names of two letters.
inline constexpr int most_attempts = 10000;

// The X's at the end of the first size bytes of a template: a part of that memory, empty when there are none.
[[nodiscard]] std::span<char> trailing_xs(char* name, size_t size);

// Fills a part of a name with random letters and digits from the system's own source. False with errno when
// the system has none to give.
[[nodiscard]] bool fill(std::span<char> part);

// Makes a file of its own (mode 0600, open for reading and writing, closed on exec) under a name from a
// template, whose X's at the end are replaced in place. What bears a name already, a link too, is never
// opened. Empty with errno on failure: EINVAL for a template without an X at its end, EEXIST when every name
// tried was taken.
[[nodiscard]] UniqueFd create_file(char* name);

}  // namespace temporary
