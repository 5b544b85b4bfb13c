#include "commands/head_tail.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/bytes.h"
#include "common/cli.h"
#include "common/io.h"
#include "common/own.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace head_tail {

namespace {

char buffer[size_t{1} << 17];

// The first step is short: often it is all that is wanted.
constexpr size_t first_step = size_t{1} << 12;

// What is shorter is soon read, and not lent to a pipe, whose reader would see what happens to the file.
constexpr uint64_t least_copied_in_system = uint64_t{1} << 20;

// A file whose end can be looked at first: regular, and so large that this is worth it. Short files are read
// forwards also because some of those that the system makes up claim a size that they do not have.
struct Range {
    uint64_t begin, end;
};

std::optional<Range> find_range(int fd) {
    constexpr off_t least = off_t{1} << 16;
    struct stat file;
    if (fstat(fd, &file) != 0 || !S_ISREG(file.st_mode)) return std::nullopt;
    const off_t begin = lseek(fd, 0, SEEK_CUR);
    if (begin < 0 || file.st_size - least < begin) return std::nullopt;
    return Range{static_cast<uint64_t>(begin), static_cast<uint64_t>(file.st_size)};
}

bool seek(int fd, uint64_t place) {
    return lseek(fd, static_cast<off_t>(place), SEEK_SET) >= 0;
}

// The last pieces of a range.
struct LastPieces {
    uint64_t start;
    std::string_view text;  // they themselves, when they were read in one step, until a file is read again
};

// Nothing when they cannot be read.
std::optional<LastPieces> find_last_pieces(int fd, Range range, uint64_t count) {
    pieces::Backward backward(range.end, count);
    uint64_t step = first_step;
    for (uint64_t place = range.end; place > range.begin; step = sizeof buffer) {
        const uint64_t end = place;
        const auto size = static_cast<size_t>(std::min(step, place - range.begin));
        place -= size;
        if (!seek(fd, place) || gn_full_read(fd, buffer, size, nullptr) != size) return std::nullopt;
        if (!backward.look(buffer, size, place)) continue;
        const uint64_t start = backward.start(range.begin);
        if (end != range.end) return LastPieces{start, {}};
        return LastPieces{start, {buffer + (start - place), static_cast<size_t>(end - start)}};
    }
    return LastPieces{backward.start(range.begin), {}};
}

// The end of a stream as far as it was read, in one run of memory.
class HeldText {
  public:
    HeldText() = default;
    HeldText(const HeldText&) = delete;
    HeldText& operator=(const HeldText&) = delete;
    ~HeldText() { free(data_); }

    // Reads on; false at the end of the stream, and with *error for a failure.
    bool read(int fd, int* error) {
        *error = 0;
        if (!make_room()) {
            *error = ENOMEM;
            return false;
        }
        const ptrdiff_t count = read_some(fd, data_ + end_, capacity_ - end_);
        if (count <= 0) {
            if (count < 0) *error = errno;
            // What the end of the stream cut off is a piece, too.
            if (counter_.open() != 0) pieces_++;
            return false;
        }
        uint64_t left = UINT64_MAX;
        const char* data = data_ + end_;
        counter_.pass(data, data + count, &left);
        pieces_ += UINT64_MAX - left;
        end_ += static_cast<size_t>(count);
        return true;
    }

    // Gives up the oldest pieces, all but the last `count`; valid until the next call.
    std::string_view give_all_but(uint64_t count) {
        uint64_t left = pieces_ > count ? pieces_ - count : 0;
        pieces_ -= left;
        const char* begin = data_ + begin_;
        const char* stop = pieces::Forward().pass(begin, data_ + end_, &left);
        begin_ = static_cast<size_t>(stop - data_);
        return {begin, static_cast<size_t>(stop - begin)};
    }

  private:
    static constexpr size_t least_room = size_t{1} << 16;

    bool make_room() {
        if (capacity_ - end_ >= least_room) return true;
        const size_t size = end_ - begin_;
        // Moving is worth it when it makes as much room as it takes work.
        if (begin_ >= size && begin_ >= least_room) {
            memcpy(data_, data_ + begin_, size);
        } else {
            size_t larger = 0;
            if (__builtin_mul_overflow(std::max(capacity_, least_room), 2, &larger)) return false;
            auto* moved = static_cast<char*>(realloc(data_, larger));
            if (moved == nullptr) return false;
            data_ = moved;
            capacity_ = larger;
            return true;
        }
        begin_ = 0;
        end_ = size;
        return true;
    }

    char* data_ = nullptr;
    size_t capacity_ = 0;
    size_t begin_ = 0, end_ = 0;  // what is held
    uint64_t pieces_ = 0;         // how many that is; one that is not complete is left out
    pieces::Forward counter_;
};

// What became of an operand: one that the system refuses to open is passed over without a word.
enum class Operand { ready, refused, failed };

Operand open_operand(const char* command, const char* name, UniqueFd* file) {
    struct stat status;
    if (stat(name, &status) != 0) {
        cli::error("%s: %s: %s\n", command, name, gn_strerror(errno));
        return Operand::failed;
    }
    if (!S_ISFIFO(status.st_mode) && !S_ISCHR(status.st_mode) && !S_ISREG(status.st_mode)) {
        cli::error("%s: %s: %s\n", command, name, gn_strerror_ENOTFILE());
        return Operand::failed;
    }
    *file = UniqueFd(open(name, O_RDONLY | O_CLOEXEC));
    return file->valid() ? Operand::ready : Operand::refused;
}

// False when there was no memory.
bool print_file(const Command& command, Settings* settings, int fd, const char* name) {
    if (settings->print_headers) printf("==> %s <==\n", name);
    const int error = command.print_file(*settings, fd);
    if (error == 0) return true;
    settings->status = 1;
    if (error == ENOMEM) return false;
    cli::error("%s: %s: %s\n", command.name, name, gn_strerror(error));
    return true;
}

}  // namespace

void Printer::print(const char* data, const char* end) {
    if (print_line_ == nullptr) return output::write({data, static_cast<size_t>(end - data)});
    output::Block block;
    while (data != end) {
        const size_t size = std::min(sizeof hold_ - held_, static_cast<size_t>(end - data));
        const char* stop = bytes::find(data, data + size, '\n');
        const bool is_complete = stop != data + size || held_ + size == sizeof hold_;
        if (stop != data + size) stop++;
        const auto part = static_cast<size_t>(stop - data);
        if (!is_complete || held_ != 0) {
            bytes::copy(hold_ + held_, data, part);
            held_ += part;
            if (is_complete) {
                print_line_(block, {hold_, held_}, byte_count_);
                held_ = 0;
            }
        } else {
            print_line_(block, {data, part}, byte_count_);
        }
        data = stop;
    }
}

int Printer::print_from(int fd, uint64_t most) {
    if (print_line_ == nullptr && most >= least_copied_in_system) {
        output::flush();
        if (!output::failed()) most -= platform::copy_in_system(fd, STDOUT_FILENO, most);
    }
    while (most > 0 && !output::failed()) {
        const ptrdiff_t count =
            read_some(fd, buffer, static_cast<size_t>(std::min<uint64_t>(most, sizeof buffer)));
        if (count < 0) return errno;
        if (count == 0) break;
        print(buffer, buffer + count);
        most -= static_cast<uint64_t>(count);
    }
    return 0;
}

void Printer::end_file() {
    if (held_ == 0) return;
    output::Block block;
    print_line_(block, {hold_, held_}, byte_count_);
    held_ = 0;
}

Passed pass_first(int fd, uint64_t count, Printer* printer) {
    Passed result;
    pieces::Forward forward;
    for (size_t step = first_step; count > 0 && !output::failed(); step = sizeof buffer) {
        const ptrdiff_t size = read_some(fd, buffer, step);
        if (size <= 0) {
            if (size < 0) result.error = errno;
            return result;
        }
        const char* end = buffer + size;
        const char* stop = forward.pass(buffer, end, &count);
        if (printer != nullptr) printer->print(buffer, stop);
        result.behind = {stop, static_cast<size_t>(end - stop)};
    }
    result.all = true;
    return result;
}

int print_by_end(int fd, uint64_t count, Wanted wanted, Printer& printer) {
    const bool last = wanted == Wanted::last;
    if (const std::optional<Range> range = find_range(fd)) {
        const std::optional<LastPieces> found = find_last_pieces(fd, *range, count);
        if (found && last && !found->text.empty()) {
            printer.print(found->text.data(), found->text.data() + found->text.size());
            return 0;
        }
        if (!seek(fd, found && last ? found->start : range->begin)) return errno;
        if (found)
            return printer.print_from(fd, last ? range->end - found->start : found->start - range->begin);
    }

    HeldText text;
    int error = 0;
    for (bool more = true; more && !output::failed();) {
        more = text.read(fd, &error);
        if (error == ENOMEM) return error;
        const std::string_view others = text.give_all_but(count);
        if (!last) printer.print(others.data(), others.data() + others.size());
    }
    if (last) {
        const std::string_view rest = text.give_all_but(0);
        printer.print(rest.data(), rest.data() + rest.size());
    }
    return error;
}

int run(const Command& command, int argc, char** argv) {
    Settings settings;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'n':
        case 'c': {
            int64_t count = 0;
            if (e_opt_getsize(&state, &count) != e_opt_ok) return cli::help(command.usage);
            // Only the low 32 bits count.
            (c == 'n' ? settings.line_count : settings.byte_count) = static_cast<int>(count);
            break;
        }
        case 'q': settings.header_mode = 1; break;
        case 'v': settings.header_mode = 0; break;
        case e_help: return cli::help(command.usage);
        default: return cli::unknown_switch(stderr, "%s: unknown switch: -%c\n", command.name, c);
        }
    }
    settings.print_headers = settings.header_mode == 0 || (settings.header_mode != 1 && argc >= 2);

    bool enough_memory = true;
    if (argc == 0) enough_memory = print_file(command, &settings, STDIN_FILENO, "-");
    for (int i = 0; i < argc && enough_memory; i++) {
        UniqueFd file;
        const Operand operand = open_operand(command.name, argv[i], &file);
        if (operand == Operand::failed) settings.status = 1;
        if (operand != Operand::ready) continue;
        // An empty line separates, whatever became of the first operand.
        if (i > 0) output::write("\n");
        enough_memory = print_file(command, &settings, file.get(), argv[i]);
    }
    if (!enough_memory) {
        cli::error("%s: out of memory\n", command.name);
        settings.status = 2;
    }
    return output::finish(command.name, settings.status);
}

}  // namespace head_tail
