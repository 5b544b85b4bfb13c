// What the commands that run another command share.

#pragma once

#include "lib/spawn/spawn.h"

// The status of such a command when it fails by itself, which differs from those of most commands that it runs.
inline constexpr int exit_not_started = 125;

// Says "NAME: WHAT: REASON" of a program that could not be started, WHAT being the step's directory, user (for a
// program with an identity) or file. Returns the status: 127 when there is no such file, 126 when it cannot be
// executed, exit_not_started when it never came to that.
[[nodiscard]] int cannot_start(const char* name, const e_program& program, const e_failure& failure,
                               const char* user = nullptr);
