// dd: copies a descriptor to another in blocks.
// Scripts rely on: a file that is written is never truncated; a copy that fails says so and still ends with
// status 0; failures to position are ignored; a read error at the start of a block, or at any place when
// blocks are put together anew, only ends the copy. Nothing is counted or reported at the end.

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/bytes.h"
#include "common/cli.h"
#include "common/io.h"
#include "common/own.h"
#include "common/sizes.h"
#include "lib/containers/container_vector.h"
#include "platform/platform.h"

namespace {

constexpr unsigned default_block_size = 512;

struct Settings {
    uint64_t input_block = default_block_size;
    uint64_t output_block = default_block_size;
    uint64_t count = 0;
    bool count_given = false;
    uint64_t seek = 0;  // blocks of output and of input
    uint64_t skip = 0;
    const char* input = nullptr;  // paths; null for the standard streams
    const char* output = nullptr;
    bool dots = false;
    bool dashes = false;
};

int help() {
    printf(
        "Usage: dd [OPERAND]...\n"
        "  or:  dd --help\n"
        "Copy a file and formatting according to the operands.\n"
        "\n"
        "  bs=BYTES      read and write up to BYTES bytes at a time\n"
        "  count=N       copy only N input blocks\n"
        "  ibs=BYTES     read up to BYTES bytes at a time (default: %u)\n"
        "  if=FILE       read from FILE instead of stdin\n"
        "  obs=BYTES     write up to BYTES bytes at a time (default: %u)\n"
        "  of=FILE       write to FILE instead of stdout\n"
        "  seek=N        skip N obs-sized blocks at start of output\n"
        "  skip=N        skip N ibs-sized blocks at start of input\n"
        "  status=LEVEL  the LEVEL of information to print to stderr\n"
        "                'none': suppress all status message (default)\n"
        "                'dots': print a dot after every output blocks\n"
        "                'dashes': print a dash after every input blocks\n"
        "                'dnd': 'dots' and 'dashes'\n"
        "\n"
        "N and BYTES may be followed by the following multiplicative suffixes:\n"
        "c =1, w =2, b =512, kB =1000, K =1024, MB =1000*1000, M =1024*1024, MiB =M\n"
        "GB =1000*1000*1000, G =1024*1024*1024, and so on for T, P, E, Z, Y.\n",
        default_block_size, default_block_size);
    return 0;
}

// A copy is converted, because the conversion writes to its text and messages show the word as it was given.
bool parse_number(const char* text, uint64_t* value) {
    CString copy(strdup(text));
    return copy && gn_parse_size(copy.get(), value, true);
}

bool parse_block_size(const char* text, uint64_t* value) {
    uint64_t size = 0;
    if (!parse_number(text, &size) || size == 0 || size > std::numeric_limits<int64_t>::max()) return false;
    *value = size;
    return true;
}

bool parse_status(std::string_view level, Settings* settings) {
    if (level == "dots" || level == "dnd") settings->dots = true;
    if (level == "dashes" || level == "dnd") settings->dashes = true;
    return level == "none" || level == "dots" || level == "dashes" || level == "dnd";
}

// False for a word that is not understood.
bool take_operand(const char* word, Settings* settings) {
    const char* equals = strchr(word, '=');
    if (equals == nullptr) return false;
    const std::string_view name(word, static_cast<size_t>(equals - word));
    const char* value = equals + 1;
    if (name == "bs") {
        if (!parse_block_size(value, &settings->input_block)) return false;
        settings->output_block = settings->input_block;
        return true;
    }
    if (name == "count") {
        settings->count_given = true;
        return parse_number(value, &settings->count);
    }
    if (name == "ibs") return parse_block_size(value, &settings->input_block);
    if (name == "obs") return parse_block_size(value, &settings->output_block);
    if (name == "seek") return parse_number(value, &settings->seek);
    if (name == "skip") return parse_number(value, &settings->skip);
    if (name == "status") return parse_status(value, settings);
    if (name == "if") {
        settings->input = value;
    } else if (name == "of") {
        settings->output = value;
    } else {
        return false;
    }
    return true;
}

// A place that no file can have is one more failure to position.
void position(int fd, uint64_t blocks, uint64_t block_size) {
    uint64_t bytes = 0;
    if (blocks == 0 || __builtin_mul_overflow(blocks, block_size, &bytes)) return;
    (void)lseek(fd, static_cast<off_t>(bytes), SEEK_SET);
}

// Shows progress on standard error, where every mark is seen at once; errno stays what it was.
void show(char mark, uint64_t count) {
    const int error = errno;
    char marks[256];
    memset(marks, mark, sizeof marks);
    while (count > 0) {
        const size_t step = count < sizeof marks ? static_cast<size_t>(count) : sizeof marks;
        gn_full_write(STDERR_FILENO, marks, step);
        count -= step;
    }
    errno = error;
}

// The system copies fastest from and to the start of a page.
constexpr size_t page = 4096;

class BlockBuffer {
  public:
    // False when there is no memory.
    [[nodiscard]] bool create(uint64_t size) { return memory_.resize(size + page); }
    [[nodiscard]] char* data() const {
        const auto address = reinterpret_cast<uintptr_t>(memory_.data());
        return memory_.data() + (page - address % page) % page;
    }

  private:
    Vector<char> memory_;
};

struct Copy {
    int in;
    int out;
    char* input;
    char* output;
    size_t input_size;
    size_t output_size;
    uint64_t blocks_left;  // of input
    bool dots;
    bool dashes;
    uint64_t begun;  // how much of the first block the system has copied already
    bool end_of_input = false;

    // Reads input blocks: how much was read of them, 0 at the end and for an error.
    size_t read(char* to, size_t blocks) {
        const size_t size = gn_full_read(in, to, blocks * input_size, &end_of_input);
        if (size > 0 && dashes) show('-', 1);
        return size;
    }

    // Writes what makes up to this many output blocks. False is an error.
    bool write(const char* data, size_t size, size_t blocks) {
        if (gn_full_write(out, data, size) != size) return false;
        if (dots) show('.', blocks);
        return true;
    }

    // Every input block makes one or several whole output blocks and goes out in one write. False is an
    // error.
    bool copy_directly() {
        const size_t blocks = input_size / output_size;
        while (!end_of_input && blocks_left-- > 0) {
            const size_t size = read(input, 1);
            if (size == 0) return end_of_input || begun == 0;
            begun = 0;
            const bool is_cut = size < input_size && !end_of_input;
            const int error = errno;
            if (!write(input, size, is_cut ? 0 : blocks)) return false;
            errno = error;
            if (is_cut) return false;
        }
        return true;
    }

    // Output blocks are put together from input blocks of any size. False is an error.
    bool copy_reblocking() {
        size_t filled = 0;
        while (!end_of_input && blocks_left > 0) {
            // Nobody sees where one input block ends and the next begins, but for the dashes.
            const uint64_t fitting = std::min<uint64_t>((output_size - filled) / input_size, blocks_left);
            const size_t blocks = fitting > 1 && !dashes ? fitting : 1;
            blocks_left -= blocks;
            char* to = fitting > 0 ? output + filled : input;
            size_t size = read(to, blocks);
            if (size == 0) break;
            while (size > 0) {
                const size_t part = std::min(size, output_size - filled);
                if (fitting == 0) bytes::copy(output + filled, to, part);
                to += part;
                size -= part;
                filled += part;
                if (filled == output_size && !write(output, std::exchange(filled, 0), 1)) return false;
            }
        }
        return filled == 0 || write(output, filled, 1);
    }
};

// Between two different files, or towards a device, nobody sees the blocks of a copy that shows no progress, as
// far as the system does it by itself.
bool hides_blocks(const Settings& settings, int in, int out) {
    struct stat from;
    struct stat to;
    return !settings.dots && !settings.dashes && !settings.count_given && fstat(in, &from) == 0 &&
           fstat(out, &to) == 0 && S_ISREG(from.st_mode) && (S_ISREG(to.st_mode) || S_ISCHR(to.st_mode)) &&
           (from.st_dev != to.st_dev || from.st_ino != to.st_ino);
}

int gn_dd_run(int argc, char** argv) {
    Settings settings;
    for (const char* word : std::span(argv, static_cast<size_t>(argc))) {
        if (!take_operand(word, &settings)) return cli::fail("dd: invalid argument: '%s'\n", word);
    }

    BlockBuffer input;
    BlockBuffer output;
    if (!input.create(settings.input_block) || !output.create(settings.output_block))
        return cli::fail("dd: no memory to allocate buffer\n");

    UniqueFd input_file;
    UniqueFd output_file;
    if (settings.input != nullptr) {
        input_file = UniqueFd(open(settings.input, O_RDONLY | O_CLOEXEC));
        if (!input_file.valid()) return cli::fail("dd: %s: %s\n", settings.input, gn_strerror(errno));
    }
    if (settings.output != nullptr) {
        output_file = UniqueFd(open(settings.output, O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        if (!output_file.valid()) return cli::fail("dd: %s: %s\n", settings.output, gn_strerror(errno));
    }
    const int in = input_file.valid() ? input_file.get() : STDIN_FILENO;
    const int out = output_file.valid() ? output_file.get() : STDOUT_FILENO;
    position(out, settings.seek, settings.output_block);
    position(in, settings.skip, settings.input_block);
    if (settings.count_given && settings.count == 0) return 0;

    const uint64_t copied = hides_blocks(settings, in, out) ? platform::copy_in_system(in, out) : 0;
    Copy copy{
        .in = in,
        .out = out,
        .input = input.data(),
        .output = output.data(),
        .input_size = settings.input_block,
        .output_size = settings.output_block,
        .blocks_left = settings.count_given ? settings.count : std::numeric_limits<uint64_t>::max(),
        .dots = settings.dots,
        .dashes = settings.dashes,
        .begun = copied % settings.input_block,
    };
    const bool ok =
        settings.input_block % settings.output_block == 0 ? copy.copy_directly() : copy.copy_reblocking();
    const int error = errno;
    if (settings.dots || settings.dashes) show('\n', 1);
    if (!ok) cli::error("dd: %s\n", gn_strerror(error));
    return 0;
}

}  // namespace

int gn_dd(int argc, char** argv) {
    if (argc > 0 && strcmp(argv[0], "--help") == 0) return help();
    return gn_dd_run(argc, argv);
}
