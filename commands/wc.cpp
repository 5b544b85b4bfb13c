// wc: counts newlines, words and bytes.
// Scripts rely on: the columns are newlines, words, bytes and the longest line, in this order whatever order
// the options are given in; without options the first three. All numbers of a run are right-aligned in the
// width of its largest one, with a blank between two of them, so that a single number stands alone; the rows
// are therefore printed at the end. A word is a run of bytes that are not space, \t, \n, \v, \f or \r; the
// length of a line is its number of bytes, without the newline. A file that fails has a message instead of a
// row, and no part in the total. A last line without a newline is not counted by -l.

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/bytes.h"
#include "common/cli.h"
#include "common/input.h"
#include "common/output.h"
#include "common/own.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: wc [OPTION]... [FILE]...\n",
    "Print newline, word and byte counts of FILE(s), or of standard input, and a total.\n",
    "\n",
    "    -c    print the number of bytes\n",
    "    -l    print the number of newlines\n",
    "    -L    print the length of the longest line\n",
    "    -w    print the number of words\n",
};

struct Options {
    bool newlines = false;
    bool words = false;
    bool bytes = false;
    bool longest_line = false;
};

struct Counts {
    uint64_t newlines = 0;
    uint64_t words = 0;
    uint64_t bytes = 0;
    uint64_t longest_line = 0;
};

struct Row {
    Counts counts;
    const char* name;  // null: none is shown
};

// Finds the longest of the lines of a text that comes in parts. A line that is not longer than the longest
// one so far need not be found: only the place where it would begin to be longer is looked at, and from there
// back to the last newline.
class LongestLine {
  public:
    [[nodiscard]] uint64_t length() const { return longest_; }

    void add(const char* data, const char* end) {
        for (;;) {
            const uint64_t may_follow = longest_ - open_;
            const bool is_short = static_cast<uint64_t>(end - data) <= may_follow;
            const char* stop = is_short ? end : data + may_follow + 1;
            const char* newline = bytes::find_last(data, stop, '\n');
            if (newline != stop) {
                data = newline + 1;
                open_ = 0;
            } else if (is_short) {
                open_ += static_cast<uint64_t>(end - data);
                return;
            } else {
                newline = bytes::find(stop, end, '\n');
                longest_ = open_ + static_cast<uint64_t>(newline - data);
                open_ = newline == end ? longest_ : 0;
                if (newline == end) return;
                data = newline + 1;
            }
        }
    }

  private:
    uint64_t longest_ = 0;
    uint64_t open_ = 0;  // the length so far of a line that goes on in the next part; at most longest_
};

// The number of bytes behind the present place, where the system knows it without reading.
bool find_size(int fd, uint64_t* size) {
    // What the system makes up on reading claims to be empty, or a page long, and takes no blocks.
    constexpr off_t page = 4096;
    struct stat file;
    if (fstat(fd, &file) != 0 || !S_ISREG(file.st_mode)) return false;
    if (file.st_blocks == 0 && file.st_size <= page) return false;
    const off_t place = lseek(fd, 0, SEEK_CUR);
    if (place < 0) return false;
    *size = static_cast<uint64_t>(std::max<off_t>(file.st_size - place, 0));
    return true;
}

// Counts what the options want. Returns 0 or the error number of a failed read.
int count(int fd, const Options& opt, Counts* counts) {
    static char buffer[Input::buffer_size];
    if (!opt.newlines && !opt.words && !opt.longest_line && find_size(fd, &counts->bytes)) return 0;

    bytes::WordCount words;
    LongestLine longest;
    Input in(fd, buffer, Input::Access::map);
    for (;;) {
        const std::string_view part = in.look();
        if (part.empty()) break;
        const char *data = part.data(), *end = data + part.size();
        bytes::WordCount more_words = words;
        LongestLine longer = longest;
        if (opt.words) {
            bytes::count_words(data, end, &more_words);
        } else if (opt.newlines) {
            more_words.newlines += bytes::count(data, end, '\n');
        }
        if (opt.longest_line) longer.add(data, end);
        if (!in.confirm()) continue;
        words = more_words;
        longest = longer;
        counts->bytes += part.size();
        in.take(part.size());
    }
    counts->newlines = words.newlines;
    counts->words = words.words;
    counts->longest_line = longest.length();
    return in.error();
}

// The row of a file; false after a message.
bool count_file(const char* name, const Options& opt, Row* row) {
    *row = {.counts = {}, .name = name};
    const bool is_standard_input = strcmp(name, "-") == 0;
    UniqueFd file;
    if (!is_standard_input) file = UniqueFd(open(name, O_RDONLY | O_CLOEXEC));
    int error = 0;
    if (is_standard_input || file.valid()) {
        error = count(is_standard_input ? STDIN_FILENO : file.get(), opt, &row->counts);
    } else {
        error = errno;
    }
    if (error != 0) cli::error("wc: %s: %s\n", name, gn_strerror(error));
    return error == 0;
}

Row total_of(std::span<const Row> rows) {
    Row total{.counts = {}, .name = "total"};
    for (const Row& row : rows) {
        total.counts.newlines += row.counts.newlines;
        total.counts.words += row.counts.words;
        total.counts.bytes += row.counts.bytes;
        total.counts.longest_line = std::max(total.counts.longest_line, row.counts.longest_line);
    }
    return total;
}

// The columns of a row that are shown; returns how many.
size_t select(const Counts& counts, const Options& opt, uint64_t (&columns)[4]) {
    size_t count = 0;
    if (opt.newlines) columns[count++] = counts.newlines;
    if (opt.words) columns[count++] = counts.words;
    if (opt.bytes) columns[count++] = counts.bytes;
    if (opt.longest_line) columns[count++] = counts.longest_line;
    return count;
}

void print(std::span<const Row> rows, const Options& opt) {
    uint64_t columns[4];
    int width = 1;
    for (const Row& row : rows) {
        for (uint64_t number : std::span(columns, select(row.counts, opt, columns))) {
            int digits = 1;
            while (number >= 10) {
                number /= 10;
                digits++;
            }
            width = std::max(width, digits);
        }
    }
    for (const Row& row : rows) {
        const char* blank = "";
        for (const uint64_t number : std::span(columns, select(row.counts, opt, columns))) {
            printf("%s%*llu", blank, width, static_cast<unsigned long long>(number));
            blank = " ";
        }
        if (row.name != nullptr) printf(" %s", row.name);
        output::write("\n");
    }
}

}  // namespace

int gn_wc(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'c': opt.bytes = true; break;
        case 'l': opt.newlines = true; break;
        case 'L': opt.longest_line = true; break;
        case 'w': opt.words = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "wc: unknown switch: -%c\n", c);
        }
    }
    if (!opt.bytes && !opt.newlines && !opt.longest_line && !opt.words)
        opt.newlines = opt.words = opt.bytes = true;

    Vector<Row> rows;
    // One for each operand and one for the total, so that nothing can fail later.
    if (!rows.create(static_cast<size_t>(argc) + 1)) {
        cli::error("wc: out of memory\n");
        return cli::exit_no_memory;
    }
    bool ok = true;
    Row row;
    if (argc == 0) {
        ok = count_file("-", opt, &row);
        row.name = nullptr;
        if (ok) ok = rows.push_back(row);
    }
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) {
        const bool counted = count_file(name, opt, &row);
        if (counted) ok &= rows.push_back(row);
        ok &= counted;
    }
    if (argc > 1) ok &= rows.push_back(total_of(rows.span()));
    print(rows.span(), opt);
    return output::finish("wc", ok ? 0 : 1);
}
