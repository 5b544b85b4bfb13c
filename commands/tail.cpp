// tail: prints the last lines of files.
// Scripts rely on: -c does not count bytes of the file but cuts every line, and "-c K" leaves one byte more
// than K; "-n -K" begins behind line K, not with it; a line goes on as another one behind 2046 bytes; an
// empty line stands between the output of two files, with -q too; a file that cannot be opened is passed over
// without a word; "-" is a file's name; bad counts show the usage.

#include <string_view>

#include "app/tools.h"
#include "commands/head_tail.h"

namespace {

constexpr const char* usage[] = {
    "Usage: tail [OPTION]... [FILE]...\n",
    "Print the last 10 lines of each FILE to standard output.\n",
    "\n",
    "    -c    output the last K bytes; with the leading '-', print from the Kth bytes of each file\n",
    ("    -n    output the last K lines instead of the last 10; with the leading '-', "
     "print from the Kth lines of each file\n"),
    "    -q    never print tailers giving file names\n",
    "    -v    always print tailers giving file names\n",
};

void gn_tail_print(output::Block& out, std::string_view line, int byte_count) {
    const bool newline = line.ends_with('\n');
    const auto length = static_cast<int64_t>(line.size()) - (newline ? 1 : 0);
    const int64_t count = byte_count;
    // The cut is at the beginning, so that the newline stays where it is.
    if (count > 0 && count < length) {
        line.remove_prefix(static_cast<size_t>(length - count - 1));
    } else if (count < 0 && -count < length) {
        line.remove_prefix(static_cast<size_t>(-count));
    }
    out.write(line);
}

int gn_tail_tail(const head_tail::Settings& settings, int fd) {
    head_tail::Printer printer(settings, gn_tail_print);
    const int64_t lines = settings.line_count;
    int error = 0;
    if (lines >= 0) {
        error = head_tail::print_by_end(fd, static_cast<uint64_t>(lines), head_tail::Wanted::last, printer);
    } else {
        const head_tail::Passed passed = head_tail::pass_first(fd, static_cast<uint64_t>(-lines), nullptr);
        error = passed.error;
        if (passed.all) {
            printer.print(passed.behind.data(), passed.behind.data() + passed.behind.size());
            error = printer.print_from(fd, UINT64_MAX);
        }
    }
    printer.end_file();
    return error;
}

}  // namespace

int gn_tail(int argc, char** argv) {
    return head_tail::run({"tail", usage, gn_tail_tail}, argc, argv);
}
