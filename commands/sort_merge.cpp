// The merge of sorted runs or files. Which of equal lines comes first is seen by scripts under -b and -f:
// that of the run in the lower slot, where a slot whose run is exhausted is taken over by the last slot.

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "commands/sort_runs.h"
#include "commands/sort_tournament.h"
#include "common/cli.h"
#include "platform/platform.h"

namespace sorting {

namespace {

// A run or a file, and its first line that is not written yet.
struct Source {
    Reader reader;
    const char* name;
    Line line;
    Line compared;  // without blanks, where they are to be ignored
};

// The sources of a merge, by slots.
class Sources {
  public:
    Sources() = default;
    Sources(const Sources&) = delete;
    Sources& operator=(const Sources&) = delete;
    ~Sources() {
        for (; made_ > 0; made_--) all_[made_ - 1].~Source();
        free(all_);
    }

    // False when there is no memory.
    [[nodiscard]] bool create(size_t count) {
        all_ = static_cast<Source*>(calloc(std::max<size_t>(count, 1), sizeof(Source)));
        if (all_ == nullptr || !slots_.reserve(count)) return false;
        for (; made_ < count; made_++) slots_[made_] = new (&all_[made_]) Source();
        return true;
    }
    [[nodiscard]] Source& at(size_t slot) const { return *slots_[slot]; }
    void move(size_t from, size_t to) { slots_[to] = slots_[from]; }

  private:
    Source* all_ = nullptr;
    size_t made_ = 0;
    Buffer<Source*> slots_;
};

class Merge {
  public:
    Merge(Context& context, std::span<const char* const> files)
        : context_(context),
          files_(files),
          skip_(files.empty() ? context.runs.common_size : 0),
          tournament_(CompareSlots{sources_, context.order.fold_case, skip_ + sizeof(uint64_t)}) {}

    // Opens everything and reads the first lines. False after a message.
    [[nodiscard]] bool open();

    // True when all was read.
    [[nodiscard]] bool write(Writer& writer);

  private:
    struct CompareSlots {
        const Sources& sources;
        bool fold_case;
        size_t from;
        int operator()(size_t a, size_t b) const {
            return compare_from(sources.at(a).compared, sources.at(b).compared, from, fold_case);
        }
    };

    // All buffers together; the budget alone may be too small for any merge.
    static constexpr size_t all_buffers = size_t{5} << 20;
    static constexpr size_t smallest_buffer = 256;
    static constexpr size_t largest_buffer = size_t{1} << 17;

    [[nodiscard]] bool open_file(size_t index, size_t buffer_size);
    [[nodiscard]] Got read(Source& source);
    [[nodiscard]] uint64_t key(const Source& source) const {
        return word_at(source.compared, skip_, context_.order.fold_case);
    }

    Context& context_;
    std::span<const char* const> files_;
    size_t skip_;  // the bytes that all lines have in common
    size_t count_ = 0;
    bool keeps_open_ = true;
    Sources sources_;
    Tournament<CompareSlots> tournament_;
};

void raise_descriptor_limit() {
    rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    (void)setrlimit(RLIMIT_NOFILE, &limit);
}

// When there are more files than descriptors, those that can be opened again are closed while their buffers
// last.
bool Merge::open_file(size_t index, size_t buffer_size) {
    Reader& reader = sources_.at(index).reader;
    bool ok = reader.open_file(files_[index], buffer_size);
    if (!ok && keeps_open_ && errno == EMFILE) {
        raise_descriptor_limit();
        ok = reader.open_file(files_[index], buffer_size);
        if (!ok && errno == EMFILE) {
            keeps_open_ = false;
            for (size_t i = 0; i < index; i++) (void)sources_.at(i).reader.close_for_now();
            ok = reader.open_file(files_[index], buffer_size);
        }
    }
    return ok;
}

Got Merge::read(Source& source) {
    const Got got = gn_sort_getln(source.reader, context_, &source.line);
    if (got == Got::line)
        source.compared = context_.order.ignore_blanks ? skip_blanks(source.line) : source.line;
    return got;
}

bool Merge::open() {
    const TemporaryRuns& runs = context_.runs;
    count_ = files_.empty() ? runs.list.size() : files_.size();
    if (!sources_.create(count_) || !tournament_.create(count_)) {
        cli::error("sort: out of memory while merge\n");
        return false;
    }
    const size_t buffer_size = std::clamp(all_buffers / count_, smallest_buffer, largest_buffer);
    for (size_t i = 0; i < count_; i++) {
        Source& source = sources_.at(i);
        source.name = files_.empty() ? runs.name : files_[i];
        if (files_.empty()) {
            const Run& run = runs.list[i];
            if (!source.reader.open_part(runs.file.get(), run.offset, run.size, buffer_size)) {
                cli::error("sort: out of memory while merge\n");
                return false;
            }
        } else if (!open_file(i, buffer_size)) {
            cli::error("sort: %s: no such file or directory\n", source.name);
            return false;
        }
        if (read(source) != Got::line) {
            cli::error("sort: %s: failed to read file\n", source.name);
            return false;
        }
        if (!keeps_open_) (void)source.reader.close_for_now();
        tournament_.enter(i, key(source));
    }
    return true;
}

bool Merge::write(Writer& writer) {
    bool ok = true;
    for (tournament_.start(); !tournament_.is_over() && writer.error() == 0;) {
        const size_t slot = tournament_.winner();
        Source& source = sources_.at(slot);
        writer.write_line(source.line);
        context_.memory_used -= cost(source.line.size());
        const Got got = read(source);
        if (got == Got::line) [[likely]] {
            tournament_.replace(slot, key(source));
            continue;
        }
        if (got == Got::no_memory) {
            cli::error("sort: %s: out of memory while reading line\n", source.name);
            ok = false;
        } else if (source.reader.error() != 0) {
            cli::error("sort: %s: %s\n", source.name, gn_strerror(source.reader.error()));
            ok = false;
        }
        source.reader.close();
        count_--;
        if (slot != count_) {
            sources_.move(count_, slot);
            tournament_.replace(slot, key(sources_.at(slot)));
        }
        tournament_.remove(count_);
    }
    return ok;
}

// Whether the runs only have to be put one behind the other. A merge that would run out of memory is none.
bool is_concatenation(const Context& context) {
    const TemporaryRuns& runs = context.runs;
    uint64_t needed = 0;
    return runs.in_order && runs.file_size > 0 &&
           !__builtin_mul_overflow(runs.list.size() - 1, cost(runs.longest), &needed) &&
           !__builtin_add_overflow(needed, context.memory_used, &needed) && needed < context.memory_limit;
}

// Returns an error number, 0 for none.
int concatenate(const TemporaryRuns& runs, int out) {
    if (lseek(runs.file.get(), 0, SEEK_SET) < 0) return errno;
    platform::copy_in_system(runs.file.get(), out);
    Buffer<char> buffer;
    constexpr size_t size = size_t{1} << 17;
    if (!buffer.reserve(size)) return ENOMEM;
    for (;;) {
        bool end = false;
        const size_t count = gn_full_read(runs.file.get(), buffer.data(), size, &end);
        if (count == 0) return end ? 0 : errno;
        errno = 0;
        if (gn_full_write(out, buffer.data(), count) != count) return errno != 0 ? errno : EIO;
    }
}

}  // namespace

int merge(Context& context, std::span<const char* const> files, int status) {
    const bool from_runs = files.empty();
    if (from_runs && context.runs.list.empty()) {
        const int dumped = gn_sort_dump(context.output, context);
        return dumped != 0 ? dumped : status;
    }

    UniqueFd file;
    int out = STDOUT_FILENO;
    if (context.output != nullptr) {
        file = UniqueFd(open(context.output, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        if (!file.valid()) {
            cli::error("sort: %s: failed to open file for write\n", context.output);
            return exit_trouble;
        }
        out = file.get();
    }

    int error = 0;
    if (from_runs && is_concatenation(context)) {
        error = concatenate(context.runs, out);
    } else {
        Merge task(context, files);
        Writer writer(out);
        if (!task.open()) return exit_trouble;
        if (!task.write(writer)) status = exit_trouble;
        writer.flush();
        error = writer.error();
    }
    if (file.valid() && !file.close() && error == 0) error = errno;
    if (error != 0) {
        cli::error("sort: %s: %s\n", context.output != nullptr ? context.output : "write error",
                   gn_strerror(error));
        return exit_trouble;
    }
    return status;
}

}  // namespace sorting
