#include "lib/spawn/spawn.h"

#include <cstdlib>
#include <cstring>

namespace {

// Bytes that mean nothing to a shell wherever they stand.
bool is_plain(const char* text) {
    constexpr const char* plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./:@%+,-";
    return text[0] != '\0' && text[strspn(text, plain)] == '\0';
}

}  // namespace

char* e_escape(std::span<char* const> arguments) {
    size_t size = 1;
    for (const char* argument : arguments) {
        size_t most = 0;
        if (__builtin_mul_overflow(strlen(argument), size_t{4}, &most) ||
            __builtin_add_overflow(size, most, &size) || __builtin_add_overflow(size, size_t{3}, &size)) {
            return nullptr;
        }
    }
    auto* const text = static_cast<char*>(malloc(size));
    if (text == nullptr) return nullptr;

    char* end = text;
    for (const char* const& argument : arguments) {
        const bool first = &argument == arguments.data();
        if (!first) *end++ = ' ';
        // A command's name could be one of the shell's own words ("if"), or an alias, unless it is quoted. With a
        // '/' it is neither.
        if (is_plain(argument) && (!first || strchr(argument, '/') != nullptr)) {
            end = stpcpy(end, argument);
            continue;
        }
        *end++ = '\'';
        for (const char* byte = argument; *byte != '\0'; byte++) {
            if (*byte == '\'') {
                end = stpcpy(end, "'\\''");
            } else {
                *end++ = *byte;
            }
        }
        *end++ = '\'';
    }
    *end = '\0';
    return text;
}
