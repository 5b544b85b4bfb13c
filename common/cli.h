// What every command says in the same way: its usage text, an unknown switch, a diagnostic. Wording, stream
// and status stay visible at the call, because they differ from command to command.

#pragma once

#include <cstdio>
#include <span>

#include "common/error_text.h"

namespace cli {

// Exit statuses that all commands share.
inline constexpr int exit_unknown_switch = 100;
inline constexpr int exit_no_memory = 101;  // the first work buffer or table could not be allocated

// Prints a usage text on standard output and returns 0, the status of "--help".
int help(std::span<const char* const> lines);

// Prints a diagnostic on standard error, after everything that was printed on standard output before it.
[[gnu::format(printf, 1, 2)]] void error(const char* format, ...);

// The same, and returns 1.
[[gnu::format(printf, 1, 2)]] int fail(const char* format, ...);

// Prints the message about an option that a command does not know, whose format holds one "%c", and returns
// exit_unknown_switch.
[[gnu::format(printf, 2, 3)]] int unknown_switch(FILE* stream, const char* format, ...);

}  // namespace cli
