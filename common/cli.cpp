#include "common/cli.h"

#include <cstdarg>

#include "common/output.h"

namespace cli {

namespace {

[[gnu::format(printf, 2, 0)]] void print(FILE* stream, const char* format, va_list arguments) {
    if (stream == stderr) output::flush();
    vfprintf(stream, format, arguments);
}

}  // namespace

int help(std::span<const char* const> lines) {
    for (const char* line : lines) fputs(line, stdout);
    return 0;
}

void error(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    print(stderr, format, arguments);
    va_end(arguments);
}

int fail(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    print(stderr, format, arguments);
    va_end(arguments);
    return 1;
}

int unknown_switch(FILE* stream, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    print(stream, format, arguments);
    va_end(arguments);
    return exit_unknown_switch;
}

}  // namespace cli
