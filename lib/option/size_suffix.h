// The multiplier at the end of a size such as "4K", "4kB" or "4KiB".

#pragma once

#include <cstdint>

// The letters of the powers: 'K' is the first power of the base, 'Y' the eighth.
inline constexpr char _e_opt_suffixes[] = "KMGTPEZY";

// Multiplies a number by the power that a suffix names. The suffix is one letter (base 1024), a letter and
// 'B' or 'b' (base 1000), or a letter and "iB" (base 1024); an empty one multiplies by 1. A leading 'k' is
// changed to 'K' in the text itself. Products wrap modulo 2^64. False, with the number unchanged, for any
// other text.
[[nodiscard]] bool e_apply_size_suffix(char* suffix, uint64_t* number);
