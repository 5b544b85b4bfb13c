// echo: prints its operands.
// Scripts rely on: options end at the first operand; there is no octal escape and none that stops the output;
// a backslash at the very end of an operand is dropped; an unknown switch, to which "--" and a lone "-"
// belong, is reported on standard output.

#include <cctype>
#include <cstring>
#include <span>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/text.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: echo [OPTION]... [STRING]...\n",
    "Echo the STRING(s) to standard output.\n",
    "\n",
    "    -e    enable interpretation of backslash escapes\n",
    "    -E    disable interpretation of backslash escapes (default)\n",
    "    -n    do not output the trailing newline\n",
    "\n",
    "  If -e is in effect, the following sequences are recognized:\n",
    "   \\\\     backslash\n",
    "   \\a     alert (BEL)\n",
    "   \\b     backspace\n",
    "   \\e     escape\n",
    "   \\n     new line\n",
    "   \\r     carriage return\n",
    "   \\t     horizontal tab\n",
    "   \\v     vertical tab\n",
    "   \\xHH   byte with hexadecimal value HH (exactly 2 digits)\n",
};

// Writes what a buffer holds, NUL bytes included.
void gn_echo_flush(const char* buffer, int, int count) {
    output::write({buffer, static_cast<size_t>(count)});
}

// Adds a byte to a buffer, which is written when that has filled it.
void gn_echo_put(char* buffer, int capacity, int* count, char byte) {
    buffer[(*count)++] = byte;
    if (*count != capacity) return;
    gn_echo_flush(buffer, capacity, *count);
    *count = 0;
}

// Reads the two digits behind the 'x' that *position points at, and moves on to the last of them. False, with
// nothing changed, when they are not two hexadecimal digits.
bool gn_echo_hex(const char** position, char* byte) {
    auto high = static_cast<unsigned char>((*position)[1]);
    if (isxdigit(high) == 0) return false;
    auto low = static_cast<unsigned char>((*position)[2]);
    if (isxdigit(low) == 0) return false;
    *byte = static_cast<char>(gn_hexcharval(high) * 16 + gn_hexcharval(low));
    *position += 2;
    return true;
}

// What a letter behind a backslash stands for; 0 for letters that stand for themselves.
char single_byte_escape(char letter) {
    switch (letter) {
    case '\\': return '\\';
    case 'a': return 7;
    case 'b': return 8;
    case 'e': return 27;
    case 'n': return 10;
    case 'r': return 13;
    case 't': return 9;
    case 'v': return 11;
    default: return 0;
    }
}

// The operands with one space between any two, escapes replaced.
void print_interpreted(std::span<char*> operands) {
    constexpr int capacity = 4096;
    char buffer[capacity];
    int count = 0;
    auto put = [&](char byte) { gn_echo_put(buffer, capacity, &count, byte); };
    for (size_t i = 0; i < operands.size(); i++) {
        if (i != 0) put(' ');
        for (const char* text = operands[i]; *text != '\0'; text++) {
            if (*text != '\\') {
                put(*text);
                continue;
            }
            text++;
            if (*text == '\0') break;
            char byte = single_byte_escape(*text);
            if (byte == 0 && (*text != 'x' || !gn_echo_hex(&text, &byte))) {
                put('\\');
                byte = *text;
            }
            put(byte);
        }
    }
    gn_echo_flush(buffer, capacity, count);
}

void print_as_they_are(std::span<char*> operands) {
    for (size_t i = 0; i < operands.size(); i++) {
        if (i != 0) output::write(" ");
        output::write(operands[i]);
    }
}

}  // namespace

int gn_echo(int argc, char** argv) {
    bool interpret = false;
    bool newline = true;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'e': interpret = true; break;
        case 'E': interpret = false; break;
        case 'n': newline = false; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }

    (interpret ? print_interpreted : print_as_they_are)(std::span(argv, static_cast<size_t>(argc)));
    if (newline) output::write("\n");
    return 0;
}
