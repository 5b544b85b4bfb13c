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

void print_interpreted(const char* text) {
    for (;;) {
        size_t plain = strcspn(text, "\\");
        output::write({text, plain});
        text += plain;
        if (text[0] == '\0' || text[1] == '\0') return;

        text++;
        char byte = single_byte_escape(*text);
        if (byte != 0 || (*text == 'x' && gn_echo_hex(&text, &byte))) {
            output::write({&byte, 1});
        } else {
            output::write({text - 1, 2});
        }
        text++;
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

    const char* space = "";
    for (const char* operand : std::span(argv, static_cast<size_t>(argc))) {
        output::write(space);
        space = " ";
        if (interpret) {
            print_interpreted(operand);
        } else {
            output::write(operand);
        }
    }
    if (newline) output::write("\n");
    return 0;
}
