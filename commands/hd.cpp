// hd: shows the bytes of files in hexadecimal and as text.
// Scripts rely on: what one read delivers is a chunk, whose last line may be short in the middle of a dump;
// the offset behind the last byte ends every dump but one that failed; a negative skip or length counts as
// none.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: hd [OPTION]... FILE...\n",
    "ASCII and hexadecimal dump.\n",
    "\n",
    "    -n    Interpret only length bytes of input.\n",
    "    -s    Skip offset bytes from the beginning of the input (dec or hex).\n",
};

constexpr size_t chunk_size = 8192;
constexpr size_t bytes_per_line = 16;

constexpr size_t hex_width = 3 * bytes_per_line + 1;  // with a blank in the middle and one at the end
constexpr size_t most_digits = 16;
constexpr size_t longest_line = most_digits + 2 + hex_width + 2 + bytes_per_line + 2;

constexpr char hex_digits[] = "0123456789abcdef";

// What a byte looks like.
struct Look {
    char hex[4];  // and two blanks
    char text;
};

constexpr std::array<Look, 256> looks = [] {
    std::array<Look, 256> table{};
    for (unsigned byte = 0; byte != table.size(); byte++) {
        const bool is_printable = byte >= ' ' && byte <= '~';
        table[byte] = {{hex_digits[byte / 16], hex_digits[byte % 16], ' ', ' '},
                       is_printable ? static_cast<char>(byte) : '.'};
    }
    return table;
}();

// At least eight digits; returns their end.
char* put_offset(char* to, uint64_t offset) {
    unsigned shift = 32;
    while (shift < 64 && offset >> shift != 0) shift += 4;
    while (shift > 0) {
        shift -= 4;
        *to++ = hex_digits[offset >> shift & 0xF];
    }
    return to;
}

char* put_line(char* to, uint64_t offset, std::span<const unsigned char> line) {
    to = put_offset(to, offset);
    memset(to, ' ', 2 + hex_width + 1);
    char* hex = to + 2;
    char* text = hex + hex_width + 1;
    *text++ = '|';
    for (size_t i = 0; i < line.size(); i++) {
        const Look& look = looks[line[i]];
        memcpy(hex + 3 * i + (i < bytes_per_line / 2 ? 0 : 1), look.hex, sizeof look.hex);
        *text++ = look.text;
    }
    *text++ = '|';
    *text++ = '\n';
    return text;
}

void print_chunk(uint64_t offset, std::span<const unsigned char> chunk) {
    output::Block block;
    while (!chunk.empty()) {
        const size_t size = std::min(chunk.size(), bytes_per_line);
        block.advance(put_line(block.room(longest_line), offset, chunk.first(size)));
        offset += size;
        chunk = chunk.subspan(size);
    }
}

// False after a message.
bool _gn_hd_core(unsigned char* buffer, const char* name, int fd, int64_t skip, int64_t length) {
    uint64_t offset = 0;
    if (skip > 0) {
        if (lseek(fd, skip, SEEK_SET) < 0) {
            cli::error("hd: %s: %s\n", name, gn_strerror(errno));
            return false;
        }
        offset = static_cast<uint64_t>(skip);
    }
    while (length > 0 && !output::failed()) {
        const ssize_t count =
            read(fd, buffer, static_cast<size_t>(std::min(length, static_cast<int64_t>(chunk_size))));
        if (count == 0) break;
        if (count < 0) {
            cli::error("hd: %s: %s\n", name, gn_strerror(errno));
            return false;
        }
        const auto size = static_cast<size_t>(count);
        print_chunk(offset, {buffer, size});
        offset += size;
        length -= count;
    }
    char text[most_digits + 1];
    char* end = put_offset(text, offset);
    *end++ = '\n';
    output::write({text, static_cast<size_t>(end - text)});
    return true;
}

}  // namespace

int gn_hd(int argc, char** argv) {
    static unsigned char buffer[chunk_size];
    int64_t skip = 0;
    int64_t length = INT64_MAX;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'n':
        case 's':
            if (e_opt_getsize(&state, c == 'n' ? &length : &skip) != e_opt_ok)
                return cli::fail("hd: -%c: missing or invalid operand\n", c);
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "hd: unknown switch: -%c\n", c);
        }
    }

    bool ok = true;
    if (argc == 0) ok = _gn_hd_core(buffer, "stdin", STDIN_FILENO, skip, length);
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) {
        const UniqueFd file(open(name, O_RDONLY | O_CLOEXEC));
        if (!file.valid()) {
            cli::error("hd: %s: %s\n", name, gn_strerror(errno));
            ok = false;
        } else {
            ok &= _gn_hd_core(buffer, name, file.get(), skip, length);
        }
    }
    return output::finish("hd", ok ? 0 : 3);
}
