// Users and groups that a command is told by name or number.

#pragma once

#include <optional>

#include <sys/types.h>

#include "lib/containers/container_vector.h"

struct passwd;

// A number that can be an id: decimal digits alone, and not the number that means "no id".
[[nodiscard]] std::optional<id_t> parse_id(const char* text);

// The entry of a user given by name, or else by number. Null when there is none. It is valid until the next such
// call.
[[nodiscard]] const passwd* find_user(const char* text);

// The id of a group given by name, or else by number, which need not have an entry.
[[nodiscard]] std::optional<gid_t> find_group(const char* text);

// Fills in all groups of a user whose first group is the given one. False without memory.
[[nodiscard]] bool groups_of(const char* user, gid_t group, Vector<gid_t>* groups);
