// What head and tail share: options, operands, headers, and printing parts of a file line by line. Lines are
// the pieces of common/pieces.h.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "common/output.h"
#include "common/pieces.h"

namespace head_tail {

struct Settings {
    int byte_count = 0;    // -c: every line is cut; 0: none is
    int line_count = 10;   // -n
    int header_mode = -1;  // 1 after -q, 0 after -v
    int status = 0;
    bool print_headers = false;
};

// Prints one line, which may have a newline at its end, cut as the byte count says.
using PrintLine = void (*)(output::Block& out, std::string_view line, int byte_count);

struct Command {
    const char* name;
    std::span<const char* const> usage;
    // Prints what is wanted of an open file, from its present place on. Returns 0, or the error number of
    // what kept it from the rest; ENOMEM says that lines could not be held.
    int (*print_file)(const Settings& settings, int fd);
};

// The command but for its name: returns the exit status.
int run(const Command& command, int argc, char** argv);

// Where the pieces that are printed go.
class Printer {
  public:
    Printer(const Settings& settings, PrintLine print_line)
        : print_line_(settings.byte_count != 0 ? print_line : nullptr), byte_count_(settings.byte_count) {}

    // Prints what follows in the file. Parts may end anywhere.
    void print(const char* data, const char* end);

    // Prints at most `most` bytes from the file's present place on. Returns 0 or an error number.
    [[nodiscard]] int print_from(int fd, uint64_t most);

    // To be called when there is no more.
    void end_file();

  private:
    PrintLine print_line_;  // null when lines are printed whole, so that their ends do not matter
    int byte_count_;
    size_t held_ = 0;  // of the piece that is not complete
    char hold_[pieces::longest_piece];
};

// What became of passing over the first pieces of a file.
struct Passed {
    int error = 0;
    bool all = false;         // there were as many
    std::string_view behind;  // what was read of what follows them, valid until a file is read again
};

// The first `count` pieces of a file go to the printer, or nowhere when it is null.
[[nodiscard]] Passed pass_first(int fd, uint64_t count, Printer* printer);

// Prints the last `count` pieces of what follows in a file, or what comes before them, as soon as it is known
// to be that. Returns 0 or an error number.
enum class Wanted { last, all_but_last };
[[nodiscard]] int print_by_end(int fd, uint64_t count, Wanted wanted, Printer& printer);

}  // namespace head_tail
