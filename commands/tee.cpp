// tee: copies standard input to files and to standard output.
// Scripts rely on: -a only keeps the files from being truncated and then writes over them from the first
// byte; every chunk that is read goes out in one write per file, and what a write did not take is lost to
// that file without a word.

#include <cerrno>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: tee [OPTION]... [FILE]...\n",
    "Copy standard input to each FILE, and also to standard output.\n",
    "\n",
    "    -a    --append     append to the given FILEs, do not overwrite\n",
};

constexpr e_longoption _gn_tee_longs[] = {
    {"--append", 'a'},
    {nullptr, 0},
};

constexpr size_t chunk_size = 8192;

// For copies of which nobody sees the chunks.
constexpr size_t large_chunk_size = size_t{1} << 17;

// The outputs in the order in which each chunk is written to them; -1 for a file that could not be opened.
class Outputs {
  public:
    [[nodiscard]] bool reserve(size_t count) { return fds_.create(count); }
    Outputs() = default;
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;
    ~Outputs() {
        for (int fd : fds_) {
            if (fd != STDOUT_FILENO) close(fd);
        }
    }

    [[nodiscard]] bool add(int fd) { return fds_.push_back(fd); }

    void write(const char* data, size_t size) {
        for (int fd : fds_) {
            // Only an interrupted write is repeated: nothing of it was taken.
            while (fd >= 0 && ::write(fd, data, size) < 0 && errno == EINTR) {
            }
        }
    }

    // Whether the outputs are different files, other than the input, that are not watched while they grow.
    // What goes to /dev/null is not seen at all.
    [[nodiscard]] bool hide_chunks_of(int input) const {
        struct stat null;
        if (stat("/dev/null", &null) != 0) return false;
        constexpr size_t most_files = 16;
        struct stat files[most_files + 1];
        size_t count = 0;
        if (fstat(input, &files[count++]) != 0 || !S_ISREG(files[0].st_mode)) return false;
        for (const int fd : fds_) {
            if (fd < 0) continue;
            if (count > most_files) return false;
            struct stat& file = files[count];
            if (fstat(fd, &file) != 0) return false;
            if (S_ISCHR(file.st_mode) && file.st_rdev == null.st_rdev) continue;
            for (const struct stat& other : std::span(files, count)) {
                if (other.st_dev == file.st_dev && other.st_ino == file.st_ino) return false;
            }
            if (!S_ISREG(file.st_mode)) return false;
            count++;
        }
        return true;
    }

  private:
    Vector<int> fds_;
};

// False after a message.
bool copy(std::span<char> buffer, Outputs& outputs) {
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count == 0) return true;
        if (count > 0) {
            outputs.write(buffer.data(), static_cast<size_t>(count));
        } else if (errno != EINTR) {
            cli::error("tee: read error: %s\n", gn_strerror(errno));
            return false;
        }
    }
}

}  // namespace

int gn_tee(int argc, char** argv) {
    int truncate = O_TRUNC;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    e_setlongoption(&state, _gn_tee_longs);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'a': truncate = 0; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "tee: unknown switch: -%c\n", c);
        }
    }

    Vector<char> buffer;
    if (!buffer.resize(chunk_size))
        return cli::fail("tee: could not allocate line buffer: %s\n", gn_strerror(ENOMEM));
    Outputs outputs;
    if (!outputs.reserve(static_cast<size_t>(argc) + 1))
        return cli::fail("tee: could not allocate fd buffer: %s\n", gn_strerror(ENOMEM));

    bool ok = true;
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) {
        const int fd = open(name, O_RDWR | O_CREAT | O_CLOEXEC | truncate, 0666);
        if (fd < 0) {
            cli::error("tee: %s: %s\n", name, gn_strerror(errno));
            ok = false;
        }
        ok &= outputs.add(fd);
    }
    ok &= outputs.add(STDOUT_FILENO);

    // Without the memory for large chunks the usual ones do.
    if (outputs.hide_chunks_of(STDIN_FILENO)) (void)buffer.resize(large_chunk_size);
    ok &= copy(buffer.span(), outputs);
    return ok ? 0 : 1;
}
