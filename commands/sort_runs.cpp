#include "commands/sort_runs.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "common/cli.h"
#include "common/temporary.h"

namespace sorting {

namespace {

constexpr size_t input_buffer = size_t{1} << 17;

// The C library's mktemp asks for as many X's; a name that did not fit has fewer.
constexpr size_t fewest_xs = 6;

bool keep(Buffer<char>* buffer, size_t* size, Line line) {
    if (!buffer->reserve(line.size() + slack)) return false;
    bytes::copy(buffer->data(), line.data(), line.size());
    *size = line.size();
    return true;
}

// How many bytes two lines begin with alike.
size_t common_size(Line a, Line b, bool fold_case) {
    const size_t most = std::min(a.size(), b.size());
    size_t at = 0;
    while (at + sizeof(uint64_t) <= most && word_at(a, at, fold_case) == word_at(b, at, fold_case))
        at += sizeof(uint64_t);
    return at;
}

// Takes note of what the merge wants to know about all runs. False when there is no memory.
bool describe_run(Context& context) {
    const Order& order = context.order;
    TemporaryRuns& runs = context.runs;
    const Line first = context.held.first();
    const Line last = context.held.last();
    runs.longest = std::max(runs.longest, context.held.longest());

    const bool is_first = runs.last.data() == nullptr;
    if (!is_first && runs.in_order) {
        const int order_of_both = compare({runs.last.data(), runs.last_size}, first, order);
        runs.in_order = order_of_both < 0 || (order_of_both == 0 && order.is_plain());
    }
    if (!keep(&runs.last, &runs.last_size, last)) return false;

    const Line compared_first = order.ignore_blanks ? skip_blanks(first) : first;
    const Line compared_last = order.ignore_blanks ? skip_blanks(last) : last;
    if (is_first && !keep(&runs.common, &runs.common_size, compared_first)) return false;
    for (const Line line : {compared_first, compared_last})
        runs.common_size = common_size({runs.common.data(), runs.common_size}, line, order.fold_case);
    return true;
}

// Ends the last run where the file ends now; after a failure takes the run back.
bool end_run(Context& context, int error) {
    TemporaryRuns& runs = context.runs;
    Run& run = *runs.list.back();
    const off_t end = lseek(runs.file.get(), 0, SEEK_CUR);
    if (error == 0 && end >= 0) {
        run.size = static_cast<uint64_t>(end) - run.offset;
        runs.file_size += run.size;
        return true;
    }
    cli::error("sort: %s: I/O error\n", runs.name);
    (void)ftruncate(runs.file.get(), static_cast<off_t>(runs.file_size));
    return false;
}

void forget_held(Context& context) {
    context.memory_used -= context.held.cost();
    context.held.clear();
}

// Writes the held lines to the end of the runs.
int dump_to_runs(Context& context) {
    if (!make_file(context)) {
        cli::error("sort: %s: %s\n", context.runs.name, gn_strerror(errno));
        return exit_trouble;
    }
    if (context.held.empty()) return 0;
    Writer writer(context.runs.file.get());
    if (!context.held.sort() || !describe_run(context) || !context.held.write(writer)) {
        cli::error("sort: %s: %s\n", context.runs.name, gn_strerror(ENOMEM));
        return exit_trouble;
    }
    writer.flush();
    const bool ok = end_run(context, writer.error());
    forget_held(context);
    return ok ? 0 : 1;
}

// False when the name does not fit.
bool name_file(Context& context) {
    TemporaryRuns& runs = context.runs;
    snprintf(runs.name, sizeof runs.name, "%s/sort.%i.XXXXXXXXXXXX", context.directory,
             static_cast<int>(getpid()));
    return temporary::trailing_xs(runs.name, strlen(runs.name)).size() >= fewest_xs;
}

}  // namespace

const char* gn_sort_tempname(Context& context) {
    TemporaryRuns& runs = context.runs;
    if (!runs.file.valid() && !name_file(context)) {
        cli::error("sort: failed to make temp filename\n");
        return nullptr;
    }
    if (!runs.list.push_back({runs.file_size, 0})) {
        cli::error("sort: out of memory: failed to store temp filename\n");
        return nullptr;
    }
    return runs.name;
}

bool make_file(Context& context) {
    TemporaryRuns& runs = context.runs;
    if (runs.file.valid()) return lseek(runs.file.get(), static_cast<off_t>(runs.file_size), SEEK_SET) >= 0;
    // No signal may end the command while the file has a name.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
    runs.file = temporary::create_file(runs.name);
    const int error = errno;
    if (runs.file.valid()) (void)unlink(runs.name);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return runs.file.valid();
}

bool try_file(Context& context) {
    TemporaryRuns& runs = context.runs;
    if (!runs.file.valid()) runs.refused = !name_file(context) || !make_file(context);
    return !runs.refused;
}

int gn_sort_dump(const char* file_name, Context& context) {
    if (file_name == context.runs.name) return dump_to_runs(context);

    UniqueFd file;
    if (file_name != nullptr) {
        file = UniqueFd(open(file_name, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
        if (!file.valid()) {
            cli::error("sort: %s: %s\n", file_name, gn_strerror(errno));
            return exit_trouble;
        }
    }
    if (context.held.empty()) return 0;
    Writer writer(file_name != nullptr ? file.get() : STDOUT_FILENO);
    if (!context.held.sort() || !context.held.write(writer)) {
        cli::error("sort: out of memory\n");
        return exit_trouble;
    }
    writer.flush();
    forget_held(context);
    if (writer.error() == 0) return 0;
    if (file_name != nullptr) {
        cli::error("sort: %s: I/O error\n", file_name);
        return 1;
    }
    cli::error("sort: write error: %s\n", gn_strerror(writer.error()));
    return exit_trouble;
}

bool make_run(Context& context) {
    const char* name = gn_sort_tempname(context);
    if (name == nullptr) return false;
    if (gn_sort_dump(name, context) == 0) return true;
    cli::error("sort: %s: could not create temporary file\n", name);
    context.runs.list.pop_back();
    return false;
}

bool make_run_of_stdin(Context& context) {
    const char* name = gn_sort_tempname(context);
    Reader reader;
    if (name == nullptr) return false;
    if (!reader.open_stream(STDIN_FILENO, input_buffer)) {
        cli::error("sort: -: out of memory\n");
        return false;
    }
    if (!make_file(context)) {
        cli::error("sort: -: failed to open temporary file\n");
        return false;
    }
    Writer writer(context.runs.file.get());
    Line line;
    for (Got got; (got = gn_sort_getln(reader, context, &line)) != Got::end;) {
        if (got == Got::no_memory) {
            cli::error("sort: -: out of memory\n");
            return false;
        }
        context.memory_used -= cost(line.size());
        context.runs.longest = std::max(context.runs.longest, line.size());
        writer.write_line(line);
    }
    writer.flush();
    if (reader.error() != 0) {
        cli::error("sort: -: %s\n", gn_strerror(reader.error()));
        return false;
    }
    return end_run(context, writer.error());
}

}  // namespace sorting
