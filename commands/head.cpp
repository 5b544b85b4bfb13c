// head: prints the first lines of files.
// Scripts rely on: -c does not count bytes of the file but cuts every line, "-c -K" one byte more than K; a
// line goes on as another one behind 2046 bytes; an empty line stands between the output of two files, with
// -q too; a file that cannot be opened is passed over without a word; "-" is a file's name; bad counts show
// the usage.

#include <string_view>

#include <unistd.h>

#include "app/tools.h"
#include "commands/head_tail.h"

namespace {

constexpr const char* usage[] = {
    "Usage: head [OPTION]... [FILE]...\n",
    "Print the first 10 lines of each FILE to standard output.\n",
    "\n",
    ("    -c    print the first K bytes of each file; with the leading '-', "
     "print all but the last K bytes of each file\n"),
    ("    -n    print the first K lines instead of the first 10; with the leading '-', "
     "print all but the last K lines of each file\n"),
    "    -q    never print headers giving file names\n",
    "    -v    always print headers giving file names\n",
};

void gn_head_print(output::Block& out, std::string_view line, int byte_count) {
    const bool newline = line.ends_with('\n');
    if (newline) line.remove_suffix(1);
    const auto length = static_cast<int64_t>(line.size());
    const int64_t count = byte_count;
    if (count > 0 && count < length) {
        line = {line.data(), static_cast<size_t>(count)};
    } else if (count < 0 && -count < length) {
        line = {line.data(), static_cast<size_t>(length + count - 1)};
    }
    out.write(line);
    if (newline) out.put('\n');
}

int gn_head_head(const head_tail::Settings& settings, int fd) {
    head_tail::Printer printer(settings, gn_head_print);
    const int64_t lines = settings.line_count;
    int error = 0;
    if (lines >= 0) {
        const head_tail::Passed passed = head_tail::pass_first(fd, static_cast<uint64_t>(lines), &printer);
        error = passed.error;
        // Who reads the same file behind us shall find what we did not print.
        if (!passed.behind.empty()) lseek(fd, -static_cast<off_t>(passed.behind.size()), SEEK_CUR);
    } else {
        error = head_tail::print_by_end(fd, static_cast<uint64_t>(-lines), head_tail::Wanted::all_but_last,
                                        printer);
    }
    printer.end_file();
    return error;
}

}  // namespace

int gn_head(int argc, char** argv) {
    return head_tail::run({"head", usage, gn_head_head}, argc, argv);
}
