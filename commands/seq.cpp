// seq: prints a run of unsigned 64-bit numbers.
// Scripts rely on: the separator follows every number, the last one too; only LAST sets the width of -w,
// which -f overrules; an increment of 0, and a LAST that the sum jumps over by wrapping, never end; a misused
// -f or -s, or a wrong number of operands, shows the usage with status 0; messages go to standard output.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "app/tools.h"
#include "common/bytes.h"
#include "common/cli.h"
#include "common/decimal_counter.h"
#include "common/output.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: seq [OPTION]... [FIRST [INCREMENT]] LAST\n",
    "Print numbers from FIRST to LAST, in steps of INCREMENT.\n",
    "\n",
    "    -f    use printf style unsigned-long-long FORMAT\n",
    "    -s    use STRING to separate numbers (default: \\n)\n",
    "    -w    equalize width by padding with leading zeroes\n",
};

struct Options {
    char* format = nullptr;
    std::string_view separator = "\n";
    bool equal_width = false;
    uint64_t first = 1;
    uint64_t increment = 1;
    uint64_t last = 0;
};

// The integer type that a conversion takes its argument from.
enum class Argument { none, as_int, as_long, as_long_long };

// Decides whether a format may go to printf with a number: every '%' must be a "%%", or the one conversion of
//     % [-+ #0']* [digits] [. [digits]] [hh | h | l | ll | j | z | t] (d | i | u | o | x | X | c)
// Everything else would have printf look for arguments that are not there. A length in front of a 'c', on which C
// libraries do not agree, is taken out.
bool accept_format(char* format, Argument* argument) {
    *argument = Argument::none;
    constexpr const char* digits = "0123456789";
    while ((format = strchr(format, '%')) != nullptr) {
        format++;
        if (*format == '%') {
            format++;
            continue;
        }
        if (*argument != Argument::none) return false;

        format += strspn(format, "-+ #0'");
        format += strspn(format, digits);
        if (*format == '.') format += 1 + strspn(format + 1, digits);

        char* length = format;
        *argument = Argument::as_int;
        if (strncmp(format, "ll", 2) == 0 || *format == 'j') {
            *argument = Argument::as_long_long;
            format += *format == 'j' ? 1 : 2;
        } else if (*format == 'l' || *format == 'z' || *format == 't') {
            *argument = Argument::as_long;
            format++;
        } else if (*format == 'h') {
            format += format[1] == 'h' ? 2 : 1;
        }
        if (*format == '\0' || strchr("diuoxXc", *format) == nullptr) return false;
        if (*format == 'c') {
            *argument = Argument::as_int;
            memmove(length, format, strlen(format) + 1);
            format = length;
        }
        format++;
    }
    return true;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"  // checked by accept_format

void print_formatted(const Options& opt, Argument argument) {
    uint64_t number = opt.first;
    do {
        switch (argument) {
        case Argument::none:
        case Argument::as_int: printf(opt.format, static_cast<unsigned>(number)); break;
        case Argument::as_long: printf(opt.format, static_cast<unsigned long>(number)); break;
        case Argument::as_long_long: printf(opt.format, static_cast<unsigned long long>(number)); break;
        }
        output::write(opt.separator);
        number += opt.increment;
    } while (number <= opt.last && !output::failed());
}

#pragma GCC diagnostic pop

void print_plain(const Options& opt) {
    int width = 1;
    for (uint64_t rest = opt.last; opt.equal_width && rest >= 10; rest /= 10) width++;
    DecimalCounter counter(opt.first, width, '0');
    output::Block block;

    // A short separator is copied as one block of fixed size, of which the next number overwrites the rest.
    constexpr size_t short_size = 8;
    const bool is_short = opt.separator.size() <= short_size;
    char separator[short_size] = {};
    if (is_short) bytes::copy(separator, opt.separator.data(), opt.separator.size());
    auto copy_separator = [&](char* end) {
        memcpy(end, separator, short_size);
        return end + opt.separator.size();
    };

    do {
        char* end = block.room(10 * (DecimalCounter::copy_room + short_size));
        if (!is_short) {
            block.advance(counter.copy(end));
            block.write(opt.separator);
        } else if (opt.increment == 1 && counter.value() % 10 == 0 && opt.last - counter.value() > 9) {
            // The numbers of a decade differ in their last digit only.
            for (char digit = '0'; digit <= '9'; digit++) {
                end = counter.copy(end);
                end[-1] = digit;
                end = copy_separator(end);
            }
            block.advance(end);
            counter.add(10);
            continue;
        } else {
            block.advance(copy_separator(counter.copy(end)));
        }
        counter.add(opt.increment);
    } while (counter.value() <= opt.last && !output::failed());
}

// False for a wrong number of operands. Nothing is checked in the texts.
bool take_operands(int argc, char** argv, Options* opt) {
    if (argc < 1 || argc > 3) return false;
    if (argc > 1) opt->first = strtoull(argv[0], nullptr, 0);
    if (argc > 2) opt->increment = strtoull(argv[1], nullptr, 0);
    opt->last = strtoull(argv[argc - 1], nullptr, 0);
    return true;
}

}  // namespace

int gn_seq(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'f':
            opt.format = e_opt_getstr(&state);
            if (opt.format == nullptr) return cli::help(usage);
            break;
        case 's': {
            const char* separator = e_opt_getstr(&state);
            if (separator == nullptr) return cli::help(usage);
            opt.separator = separator;
            break;
        }
        case 'w': opt.equal_width = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
        }
    }
    if (!take_operands(argc, argv, &opt)) return cli::help(usage);

    if (opt.format == nullptr) {
        if (opt.first <= opt.last) print_plain(opt);
        return 0;
    }
    Argument argument = Argument::none;
    if (strstr(opt.format, "%*") != nullptr || !accept_format(opt.format, &argument)) {
        printf("seq: invalid format string.\n");
        return 1;
    }
    if (opt.first <= opt.last) print_formatted(opt, argument);
    return 0;
}
