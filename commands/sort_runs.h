// The state of a sort, and the runs that it keeps in a temporary file. Internal to sort.
//
// All runs are parts of one file, which loses its name as soon as it is made: however sort ends, nothing is
// left behind, and there may be more runs than descriptors.

#pragma once

#include <cstdint>
#include <span>

#include "commands/sort_held.h"
#include "commands/sort_lines.h"
#include "common/own.h"
#include "lib/containers/container_vector.h"

namespace sorting {

// Exit statuses.
inline constexpr int exit_trouble = 2;

// A part of the temporary file: lines in order, each with a newline.
struct Run {
    uint64_t offset;
    uint64_t size;
};

// Everything that was written to the temporary file.
struct TemporaryRuns {
    Vector<Run> list;
    UniqueFd file;
    uint64_t file_size = 0;
    char name[256] = "";   // what the file was called
    bool refused = false;  // there was no file to be had when none was needed yet

    size_t longest = 0;    // line of all runs
    bool in_order = true;  // one behind the other
    Buffer<char> last;     // line of the last run
    size_t last_size = 0;  //
    Buffer<char> common;   // what all lines begin with, as they are compared
    size_t common_size = 0;
};

struct Context {
    Order order;
    bool check = false;
    bool quiet_check = false;
    bool merge_only = false;
    bool reverse = false;  // asked for, never done
    uint64_t memory_limit = uint64_t{1} << 20;
    uint64_t memory_used = 0;      // the cost of all lines at hand
    const char* output = nullptr;  // null for standard output
    const char* directory = nullptr;
    HeldLines held{order};
    TemporaryRuns runs;

    [[nodiscard]] bool memory_is_used_up() const { return memory_used >= memory_limit; }

    // Where equal lines are the same bytes, nobody sees where a run ends. A large budget is then better left
    // unused: what fits into a processor's cache is sorted faster.
    [[nodiscard]] bool prefers_small_runs() const {
        constexpr uint64_t large_limit = uint64_t{1} << 24;
        return order.is_plain() && memory_limit >= large_limit && !runs.refused;
    }
    [[nodiscard]] bool run_is_large_enough() const {
        constexpr uint64_t small_run = uint64_t{1} << 20;
        return memory_used >= small_run && prefers_small_runs();
    }
};

enum class Got { line, end, no_memory };

// The next line, which takes its cost of the budget. With no_memory the line is there but could not be paid.
[[nodiscard]] inline Got gn_sort_getln(Reader& reader, Context& context, Line* line) {
    if (!reader.next(line)) return Got::end;
    if (context.memory_is_used_up()) return Got::no_memory;
    context.memory_used += cost(line->size());
    return Got::line;
}

// Appends an empty run and returns the name of its file, which may not be made yet. Null after a message.
[[nodiscard]] const char* gn_sort_tempname(Context& context);

// Makes the file of the runs if there is none. False with errno.
[[nodiscard]] bool make_file(Context& context);

// The same without a message, for a run that could be made later as well.
[[nodiscard]] bool try_file(Context& context);

// Writes the held lines in order to a file or, without a name, to standard output, and forgets them. 0; 1
// after a write error; exit_trouble, with the lines still held, when the file cannot be opened. Says why.
[[nodiscard]] int gn_sort_dump(const char* file_name, Context& context);

// Makes a run of the held lines. False after messages; the lines may then still be held.
[[nodiscard]] bool make_run(Context& context);

// Copies all lines of standard input into a run as they are. False after messages.
[[nodiscard]] bool make_run_of_stdin(Context& context);

// Merges the runs, or if there are none these files, to where the output goes. Returns the exit status, given
// that of what was done before.
[[nodiscard]] int merge(Context& context, std::span<const char* const> files, int status);

}  // namespace sorting
