// sort: sorts lines, merges sorted files, or checks an order.
// Scripts rely on: -r is accepted and does nothing; under -b and -f equal lines come in the order that binary
// insertion into runs, and a merge that prefers the lower slot, leaves them in, which changes with -S; a line
// longer than 2047 bytes counts as several; carriage returns at line ends are dropped; the output file is
// removed before anything is read, so that an operand of the same name is missing; a bad value of -S and a
// missing one of -o show the usage with status 0; a file of -m that is empty is an error.
//
// The lines are held (sort_held) until the budget is used up, and then written as a run (sort_runs); in the
// end the runs are merged (sort_merge).

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "commands/sort_runs.h"
#include "common/cli.h"
#include "common/own.h"
#include "lib/option/option.h"

namespace {

using namespace sorting;

constexpr const char* usage[] = {
    "Usage: sort [OPTION]... [FILE]...\n",
    "Sort lines of text files.\n",
    "\n",
    "    -b    ignore leading blanks\n",
    "    -c    check for sorted input; do not sort\n",
    "    -C    like -c, but do not report first bad line\n",
    "    -f    fold lower case to upper case characters\n",
    "    -m    merge already sorted files; do not sort\n",
    "    -o    FILE -- write result to FILE instead of standard output\n",
    "    -r    reverse the result of comparisons\n",
    "    -S    SIZE -- use SIZE for main memory buffer\n",
};

constexpr size_t input_buffer = size_t{1} << 17;

int trouble_with(const char* name, int error) {
    cli::error("sort: %s: %s\n", name, gn_strerror(error));
    return exit_trouble;
}

// 0, or the exit status after a message.
int gn_sort_sort(const char* name, int fd, Context& context) {
    Reader reader;
    if (!reader.open_stream(fd, input_buffer)) return trouble_with(name, ENOMEM);
    Line line;
    for (Got got; (got = gn_sort_getln(reader, context, &line)) != Got::end;) {
        if (context.run_is_large_enough() && try_file(context) && !make_run(context)) return exit_trouble;
        if (got == Got::no_memory) {
            if (!make_run(context)) return exit_trouble;
            if (context.memory_is_used_up()) {
                cli::error("sort: %s: out of memory\n", name);
                return exit_trouble;
            }
            context.memory_used += cost(line.size());
        }
        if (!context.held.add(line)) {
            context.memory_used -= cost(line.size());
            cli::error("sort: %s: out of memory\n", name);
            return exit_trouble;
        }
    }
    return reader.error() == 0 ? 0 : trouble_with(name, reader.error());
}

// False after a message.
bool sort_file(const char* name, Context& context) {
    struct stat status;
    if (stat(name, &status) != 0) {
        cli::error("sort: %s: %s\n", name, gn_strerror(errno));
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        cli::error("sort: %s: not a regular file\n", name);
        return false;
    }
    UniqueFd file(open(name, O_RDONLY | O_CLOEXEC));
    if (!file.valid()) {
        cli::error("sort: %s: failed to open file\n", name);
        return false;
    }
    return gn_sort_sort(name, file.get(), context) == 0;
}

int sort_all(std::span<const char* const> files, Context& context) {
    bool ok = true;
    if (files.empty()) ok = gn_sort_sort("-", STDIN_FILENO, context) == 0;
    for (const char* name : files) ok &= sort_file(name, context);
    if (!context.held.empty() && !make_run(context)) {
        cli::error("sort: failed to store temp\n");
        ok = false;
    }
    if (context.held.empty()) context.held.release_memory();
    // More runs than the budget asked for must not use it up with their first lines.
    if (context.prefers_small_runs()) context.memory_limit = std::numeric_limits<uint64_t>::max();
    int status = merge(context, {}, ok ? 0 : 1);
    // Lines that found no temporary file are not lost.
    if (!context.held.empty()) status = std::max(status, gn_sort_dump(nullptr, context));
    return status;
}

int merge_all(std::span<const char* const> files, Context& context) {
    if (files.empty() && !make_run_of_stdin(context)) return cli::fail("sort: failed to redirect stdin\n");
    return merge(context, files, 0);
}

// 0 for lines in order; 1 at the first line that is not.
int gn_sort_check(const char* name, int fd, Context& context) {
    Reader reader;
    Buffer<char> previous;
    if (!reader.open_stream(fd, input_buffer) || !previous.reserve(longest_line + slack))
        return trouble_with(name, ENOMEM);
    size_t previous_size = 0;
    Line line;
    long long number = 0;
    for (Got got; (got = gn_sort_getln(reader, context, &line)) != Got::end;) {
        if (got == Got::no_memory) {
            cli::error("sort: %s: out of memory\n", name);
            return exit_trouble;
        }
        number++;
        if (number > 1) {
            if (gn_sort_less(line, {previous.data(), previous_size}, context.order)) {
                if (context.quiet_check) return 1;
                cli::error("sort: %s:%lli: disorder: ", name, number);
                fwrite(line.data(), 1, line.size(), stderr);
                fputc('\n', stderr);
                return 1;
            }
            context.memory_used -= cost(previous_size);
        }
        bytes::copy(previous.data(), line.data(), line.size());
        previous_size = line.size();
    }
    return reader.error() == 0 ? 0 : trouble_with(name, reader.error());
}

int check(std::span<const char* const> files, Context& context) {
    if (files.size() > 1) {
        cli::error("sort: extra operand not allowed with -c\n");
        return exit_trouble;
    }
    if (files.empty()) return gn_sort_check("-", STDIN_FILENO, context);
    UniqueFd file(open(files[0], O_RDONLY | O_CLOEXEC));
    if (!file.valid()) return trouble_with(files[0], errno);
    return gn_sort_check(files[0], file.get(), context);
}

const char* temporary_directory() {
    for (const char* variable : {"TEMP", "TMP"}) {
        const char* value = getenv(variable);
        if (value != nullptr) return value;
    }
    return "/tmp";
}

}  // namespace

int gn_sort(int argc, char** argv) {
    Context context;
    bool check_given = false;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'b': context.order.ignore_blanks = true; break;
        case 'c': check_given = true; break;
        case 'C': context.quiet_check = true; break;
        case 'f': context.order.fold_case = true; break;
        case 'm': context.merge_only = true; break;
        case 'r': context.reverse = true; break;
        case 'S': {
            int64_t limit = 0;
            if (e_opt_getsize(&state, &limit) != e_opt_ok) return cli::help(usage);
            context.memory_limit = static_cast<uint64_t>(limit);
            break;
        }
        case 'o':
            context.output = e_opt_getstr(&state);
            if (context.output == nullptr) return cli::help(usage);
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "sort: unknown switch: -%c\n", c);
        }
    }
    if (check_given && context.quiet_check) {
        cli::error("sort: options '-cC' are incompatible\n");
        return exit_trouble;
    }
    context.check = check_given || context.quiet_check;
    context.directory = temporary_directory();
    if (context.output != nullptr) (void)unlink(context.output);

    const std::span<const char* const> files(argv, static_cast<size_t>(argc));
    if (context.check) return check(files, context);
    if (context.merge_only) return merge_all(files, context);
    return sort_all(files, context);
}
