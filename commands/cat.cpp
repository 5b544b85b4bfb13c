// cat: copies files to standard output, one behind the other.
// Scripts rely on: read and write errors are silent and do not change the status; numbering goes on from one
// file to the next, also within a line that the first file did not end; numbers are followed by two blanks;
// -N adds its newline whatever came before it; FIFOs are accepted, sockets and block devices are not.

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/bytes.h"
#include "common/cli.h"
#include "common/decimal_counter.h"
#include "common/io.h"
#include "common/output.h"
#include "common/own.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: cat [OPTION]... [FILE]...\n",
    "Concatenate FILE(s), or standard input, to standard output.\n",
    "\n",
    "    -n    number all output lines\n",
    "    -N    newline after last character\n",
};

struct Copy {
    DecimalCounter line{1, 6, ' '};
    bool number_lines = false;
    bool at_line_start = true;  // over the whole run, not per file
    char* buffer;
    size_t size;
};

// Prints a piece of input with a number in front of every line that begins in it.
void print_numbered(Copy& copy, const char* data, size_t size) {
    output::Block block;
    for (const char* end = data + size; data != end;) {
        if (copy.at_line_start) {
            char* end_of_number = copy.line.copy(block.room(DecimalCounter::copy_room));
            *end_of_number++ = ' ';
            *end_of_number++ = ' ';
            block.advance(end_of_number);
            copy.line.add(1);
        }
        const char* next = bytes::find(data, end, '\n');
        copy.at_line_start = next != end;
        if (copy.at_line_start) next++;
        block.write({data, static_cast<size_t>(next - data)});
        data = next;
    }
}

// Copies an open file; returns what the last read returned.
ssize_t _gn_cat_doit(Copy& copy, int fd) {
    if (!copy.number_lines) platform::copy_in_system(fd, STDOUT_FILENO);
    ssize_t count = 0;
    while ((count = read_some(fd, copy.buffer, copy.size)) > 0) {
        auto size = static_cast<size_t>(count);
        if (copy.number_lines) {
            print_numbered(copy, copy.buffer, size);
        } else {
            gn_full_write(STDOUT_FILENO, copy.buffer, size);
        }
    }
    return count;
}

// Copying a file behind itself would go on until the disk is full, and numbers alone push the output there.
bool is_output_ahead(const Copy& copy, int fd) {
    struct stat in, out;
    if (fstat(fd, &in) != 0 || !S_ISREG(in.st_mode) || fstat(STDOUT_FILENO, &out) != 0) return false;
    if (out.st_dev != in.st_dev || out.st_ino != in.st_ino) return false;
    const int flags = fcntl(STDOUT_FILENO, F_GETFL);
    if ((flags & O_ACCMODE) == O_RDONLY)
        return false;  // with standard output closed, the file took its place
    const off_t write_at = (flags & O_APPEND) != 0 ? out.st_size : lseek(STDOUT_FILENO, 0, SEEK_CUR);
    const off_t read_at = lseek(fd, 0, SEEK_CUR);
    return read_at < in.st_size && (read_at < write_at || (copy.number_lines && read_at == write_at));
}

// Copies what is open under a name. False after a message.
bool copy_open(Copy& copy, int fd, const char* name) {
    if (is_output_ahead(copy, fd)) {
        cli::error("cat: %s: input file is output file\n", name);
        return false;
    }
    _gn_cat_doit(copy, fd);
    return true;
}

// False after a message.
bool copy_file(Copy& copy, const char* name) {
    UniqueFd file(open(name, O_RDONLY | O_CLOEXEC));
    struct stat status;
    if (!file.valid() || fstat(file.get(), &status) != 0) {
        cli::error("cat: %s: %s\n", name, gn_strerror(errno));
        return false;
    }
    if (!S_ISREG(status.st_mode) && !S_ISCHR(status.st_mode) && !S_ISFIFO(status.st_mode)) {
        cli::error("cat: %s: Not a regular file nor a character device\n", name);
        return false;
    }
    return copy_open(copy, file.get(), name);
}

}  // namespace

int gn_cat(int argc, char** argv) {
    static char buffer[size_t{1} << 17];
    Copy copy{.buffer = buffer, .size = sizeof buffer};
    bool trailing_newline = false;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'N': trailing_newline = true; break;
        case 'n': copy.number_lines = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "cat: Unknown switch: -%c\n", c);
        }
    }

    bool ok = true;
    if (argc == 0) ok &= copy_open(copy, STDIN_FILENO, "-");
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) {
        ok &= strcmp(name, "-") == 0 ? copy_open(copy, STDIN_FILENO, name) : copy_file(copy, name);
    }
    if (trailing_newline) output::write("\n");
    return ok ? 0 : 1;
}
