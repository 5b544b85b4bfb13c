// cmp: compares two files byte by byte.
// Scripts rely on: -n checks its number and limits nothing; the message about a file that cannot be opened
// has no newline, while differences and early ends are told on standard output; a skip that passes the end of
// a file is an early end of it; byte and line numbers begin behind the skipped bytes; FILE1 is always a
// file's name, "-" too; a read error is the end of that file; a bad -n shows the usage.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/bytes.h"
#include "common/cli.h"
#include "common/decimal_counter.h"
#include "common/input.h"
#include "common/output.h"
#include "common/own.h"
#include "common/sizes.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: cmp [OPTION]... FILE1 [FILE2 [SKIP1 [SKIP2]]]\n",
    "Compare two files byte by byte. FILE2 can be -.\n",
    "\n",
    "    -b    print differing bytes\n",
    "    -l    output byte numbers and values of all differing bytes\n",
    "    -n    LIMIT -- compare at most LIMIT bytes\n",
    "    -s    output nothing; yield exit status only\n",
};

constexpr int exit_different = 1;
constexpr int exit_trouble = 2;

struct Options {
    bool print_bytes = false;
    bool list = false;
    bool silent = false;
    const char* name1 = nullptr;
    const char* name2 = nullptr;
    uint64_t skip1 = 0;
    uint64_t skip2 = 0;
};

// What is compared at once: it is looked at twice, and shall still be near the processor then.
constexpr size_t step = size_t{1} << 14;

// A byte's value with a blank in front of it.
struct Number {
    char text[4];
    uint8_t size;
};

constexpr std::array<Number, 256> numbers = [] {
    std::array<Number, 256> table{};
    for (unsigned byte = 0; byte != table.size(); byte++) {
        char reversed[3] = {};
        int digits = 0;
        for (unsigned rest = byte; digits == 0 || rest != 0; rest /= 10)
            reversed[digits++] = static_cast<char>('0' + rest % 10);
        Number& number = table[byte];
        number.text[number.size++] = ' ';
        while (digits > 0) number.text[number.size++] = reversed[--digits];
    }
    return table;
}();

char* put_number(char* to, char byte) {
    const Number& number = numbers[static_cast<unsigned char>(byte)];
    memcpy(to, number.text, sizeof number.text);
    return to + number.size;
}

// Lists the differences of two runs, and counts their bytes. True when there were any.
bool list_differences(const char* a, const char* b, size_t size, DecimalCounter* byte_number) {
    bool any = false;
    output::Block block;
    size_t counted = 0;
    for (size_t place = 0; place < size; place++) {
        if (a[place] == b[place]) {
            place += bytes::mismatch(a + place, b + place, size - place);
            if (place == size) break;
        }
        byte_number->add(place - counted);
        counted = place;
        char* end = byte_number->copy(block.room(DecimalCounter::copy_room + 2 * sizeof(Number::text) + 1));
        end = put_number(end, a[place]);
        end = put_number(end, b[place]);
        *end++ = '\n';
        block.advance(end);
        any = true;
    }
    byte_number->add(size - counted);
    return any;
}

void print_difference(const Options& opt, uint64_t byte_number, uint64_t line_number, char a, char b) {
    printf("%s %s differ: byte %lli, line %lli", opt.name1, opt.name2, static_cast<long long>(byte_number),
           static_cast<long long>(line_number));
    if (opt.print_bytes) {
        const auto byte1 = static_cast<unsigned char>(a), byte2 = static_cast<unsigned char>(b);
        printf(" is %u %c %u %c", byte1, byte1, byte2, byte2);
    }
    output::write("\n");
}

// False when the file ends before that; nothing is then left of it.
bool skip(Input& in, uint64_t count) {
    for (;;) {
        const std::string_view part = in.look();
        if (part.empty()) return false;
        if (count == 0) return true;
        const auto size = static_cast<size_t>(std::min<uint64_t>(count, part.size()));
        in.take(size);
        count -= size;
    }
}

// Both files are at the same distance from their beginnings: compares as long as both have bytes. Returns 0
// or exit_different.
int compare(const Options& opt, Input& in1, Input& in2) {
    DecimalCounter listed(1, 1, ' ');
    uint64_t byte_number = 1;
    uint64_t line_number = 1;
    int status = 0;
    for (;;) {
        const std::string_view part1 = in1.look(), part2 = in2.look();
        if (part1.empty() || part2.empty() || output::failed()) return status;
        const size_t size = std::min({part1.size(), part2.size(), step});
        const char *a = part1.data(), *b = part2.data();
        if (opt.list) {
            if (list_differences(a, b, size, &listed)) status = exit_different;
        } else {
            const size_t equal = bytes::mismatch(a, b, size);
            const size_t newlines = opt.silent ? 0 : bytes::count(a, a + equal, '\n');
            const char byte1 = equal < size ? a[equal] : '\0', byte2 = equal < size ? b[equal] : '\0';
            const bool confirmed1 = in1.confirm(), confirmed2 = in2.confirm();
            if (!confirmed1 || !confirmed2) continue;
            byte_number += equal;
            line_number += newlines;
            if (equal < size) {
                if (!opt.silent) print_difference(opt, byte_number, line_number, byte1, byte2);
                return exit_different;
            }
        }
        in1.take(size);
        in2.take(size);
    }
}

int compare_files(const Options& opt, int fd1, int fd2) {
    static char buffers[2][Input::buffer_size];
    // Differences are listed at once, and cannot be taken back.
    const Input::Access access = opt.list ? Input::Access::read : Input::Access::map;
    Input in1(fd1, buffers[0], access), in2(fd2, buffers[1], access);

    // The first bytes of both are read before anything is skipped.
    bool more1 = !in1.look().empty(), more2 = !in2.look().empty();
    int status = 0;
    if (more1 && more2) more1 = skip(in1, opt.skip1);
    if (more1 && more2) more2 = skip(in2, opt.skip2);
    if (more1 && more2) {
        status = compare(opt, in1, in2);
        if (status != 0 && !opt.list) return status;
        more1 = !in1.look().empty();
        more2 = !in2.look().empty();
    }
    if (more1 == more2 || output::failed()) return status;
    if (!opt.silent) printf("cmp: EOF on %s\n", more1 ? opt.name2 : opt.name1);
    return exit_different;
}

bool open_file(const char* name, UniqueFd* file) {
    *file = UniqueFd(open(name, O_RDONLY | O_CLOEXEC));
    if (!file->valid()) cli::error("cmp: Could not open '%s' for read: %s", name, gn_strerror(errno));
    return file->valid();
}

int refuse(const char* message) {
    cli::error("cmp: %s\n", message);
    return exit_trouble;
}

}  // namespace

int gn_cmp(int argc, char** argv) {
    Options opt;
    int64_t limit = 0;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'b': opt.print_bytes = true; break;
        case 'l': opt.list = true; break;
        case 'n':
            if (e_opt_getsize(&state, &limit) != e_opt_ok) return cli::help(usage);
            break;
        case 's': opt.silent = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "Unknown switch: -%c\n", c);
        }
    }

    if (opt.list && opt.silent) return refuse("options -l and -s are incompatible");
    if (argc < 1) return refuse("missing operand");
    opt.name1 = argv[0];
    opt.name2 = argc > 1 ? argv[1] : "-";
    if (argc > 2 && !gn_parse_size(argv[2], &opt.skip1, false)) return refuse("failed to parse SKIP1");
    if (argc > 3 && !gn_parse_size(argv[3], &opt.skip2, false)) return refuse("failed to parse SKIP2");
    if (argc > 4) return refuse("extra operand found");

    UniqueFd file1, file2;
    if (!open_file(opt.name1, &file1)) return exit_trouble;
    const bool is_standard_input = strcmp(opt.name2, "-") == 0;
    if (!is_standard_input && !open_file(opt.name2, &file2)) return exit_trouble;
    return output::finish("cmp",
                          compare_files(opt, file1.get(), is_standard_input ? STDIN_FILENO : file2.get()));
}
