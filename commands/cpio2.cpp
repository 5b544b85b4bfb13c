// cpio2: lists a cpio archive, prints an entry's data, or writes it to a file.
// Scripts rely on: an entry is found by its name as stored, "./" and all; modes show no set-id and sticky
// letters, and '?' for devices, FIFOs and sockets; exporting an empty entry fails and leaves no file, since a
// write of nothing counts as failed; an exported file gets nothing of the entry's mode, owner and time; -v
// changes nothing; nothing is ever created or extracted, whatever the usage says.

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/bytes.h"
#include "common/cli.h"
#include "common/io.h"
#include "common/output.h"
#include "common/own.h"
#include "common/text.h"
#include "common/times.h"
#include "cpio/cpio.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: cpio2 list [OPTION]... IMAGE\n",
    "  or:  cpio2 cat [OPTION]... IMAGE ENTITYNAME\n",
    "  or:  cpio2 export [OPTION]... IMAGE ENTITYNAME [EXPORTNAME]\n",
    "Create and extract cpio archives.\n",
    "\n",
    "Commands:\n",
    "list     list the content of the archive\n",
    "cat      print the content of an entry in the archive\n",
    "export   export an entry from the archive to the filesystem\n",
    "\n",
    "    -l    use long listing format in \"list\" command\n",
    "    -v    verbose mode\n",
};

constexpr int exit_bad_archive = 2;

// An archive with its image in memory. A small one is read. A larger one is mapped: then only what is looked
// at costs anything, which is the headers for a list and one entry's data for the rest.
//
// What was read stays as it was checked; a mapped file may change. One that is cut off takes its pages away
// (SIGBUS), and one that is rewritten may lead out of the image by headers that were checked before
// (SIGSEGV). Both end the command as other read errors do.
struct Archive {
    const char* path = nullptr;
    struct stat file {};
    size_t size = 0;
    CString memory;  // of an image that was read
    const char* image = nullptr;
    cpioread_ctx reader{};

    [[nodiscard]] bool is_mapped() const { return !memory; }
};

constexpr size_t largest_to_read = size_t{4} << 20;

int fail_to_allocate(const Archive& archive) {
    cli::error("cpio2: %s: could not allocate memory: %s\n", archive.path, gn_strerror(errno));
    return exit_bad_archive;
}

int fail_to_read(const Archive& archive, const char* reason) {
    cli::error("cpio2: %s: failed to read file: %s\n", archive.path, reason);
    return exit_bad_archive;
}

char* message_of_loss = nullptr;

// Of a signal handler: neither streams nor exit().
void end_after_loss(int) {
    [[maybe_unused]] ssize_t written = write(STDERR_FILENO, message_of_loss, strlen(message_of_loss));
    _exit(exit_bad_archive);
}

// Returns 0, or a status after a message.
int read_image(Archive& archive, int fd) {
    archive.memory = CString(static_cast<char*>(malloc(archive.size + cpio_image_slack)));
    if (!archive.memory) return fail_to_allocate(archive);
    bool eof = false;
    if (gn_full_read(fd, archive.memory.get(), archive.size, &eof) != archive.size) {
        return fail_to_read(archive, eof ? gn_strerror_EIO() : gn_strerror(errno));
    }
    memset(archive.memory.get() + archive.size, 0, cpio_image_slack);
    archive.image = archive.memory.get();
    return 0;
}

// False when the file cannot be mapped, which may still be read.
bool map_image(Archive& archive, int fd) {
    message_of_loss =
        concatenate({"cpio2: ", archive.path, ": failed to read file: ", gn_strerror_EIO(), "\n"});
    if (message_of_loss == nullptr) return false;
    // The file is laid over the beginning of zeros, of which the end is left for the slack.
    const size_t whole = archive.size + cpio_image_slack;
    void* zeros = mmap(nullptr, whole, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (zeros == MAP_FAILED) return false;
    void* image = mmap(zeros, archive.size, PROT_READ, MAP_PRIVATE | MAP_FIXED, fd, 0);
    if (image == MAP_FAILED) {
        munmap(zeros, whole);
        return false;
    }
    signal(SIGBUS, end_after_loss);
    signal(SIGSEGV, end_after_loss);
    archive.image = static_cast<const char*>(image);
    return true;
}

// Returns 0, or a status after a message.
int _gn_cpio2_loadimage(Archive& archive) {
    // Opening a FIFO would wait for somebody to write to it.
    const UniqueFd file(open(archive.path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.valid()) {
        cli::error("cpio2: could not open '%s' for reading: %s\n", archive.path, gn_strerror(errno));
        return exit_bad_archive;
    }
    if (fstat(file.get(), &archive.file) != 0) {
        cli::error("cpio2: %s: failed to stat file: %s\n", archive.path, gn_strerror(errno));
        return exit_bad_archive;
    }
    if (S_ISDIR(archive.file.st_mode)) return fail_to_read(archive, gn_strerror(EISDIR));
    if (!S_ISREG(archive.file.st_mode)) return fail_to_read(archive, gn_strerror_ENOTFILE());
    // To read nothing counts as failed, although the system sees no error in it.
    if (archive.file.st_size == 0) return fail_to_read(archive, gn_strerror(0));

    size_t whole;
    if (__builtin_add_overflow(archive.file.st_size, cpio_image_slack, &whole)) {
        errno = ENOMEM;
        return fail_to_allocate(archive);
    }
    archive.size = whole - cpio_image_slack;
    if (archive.size <= largest_to_read || !map_image(archive, file.get())) {
        if (int status = read_image(archive, file.get()); status != 0) return status;
    }
    if (cpioread_init_checked(&archive.reader, archive.image, archive.size) == nullptr) {
        cli::error("cpio2: %s: failed to initialize cpio reader (maybe not a cpio?)\n", archive.path);
        return exit_bad_archive;
    }
    return 0;
}

// Writes the columns of the long format, as "%c%c%c%c%c%c%c%c%c%c %10u %Y-%m-%d %T " would.
class LongFormat {
  public:
    static constexpr size_t size = 42;

    char* print(char* to, const cpio_entity& entity) {
        *to++ = type_letter(entity.mode);
        for (int shift = 6; shift >= 0; shift -= 3) {
            const uint32_t bits = entity.mode >> shift;
            *to++ = (bits & 4) != 0 ? 'r' : '-';
            *to++ = (bits & 2) != 0 ? 'w' : '-';
            *to++ = (bits & 1) != 0 ? 'x' : '-';
        }
        *to++ = ' ';
        to = print_number(to, 10, ' ', entity.file_size);
        *to++ = ' ';
        // Archives of built things often have one time for all.
        if (entity.mtime != time_ || !has_date_) print_date(entity.mtime);
        memcpy(to, date_, sizeof date_);
        return to + sizeof date_;
    }

  private:
    static char type_letter(uint32_t mode) {
        switch (mode & S_IFMT) {
        case S_IFREG: return '-';
        case S_IFLNK: return 'l';
        case S_IFDIR: return 'd';
        default: return '?';
        }
    }

    static char* print_number(char* to, int width, char fill, uint32_t number) {
        for (int i = width - 1; i >= 0; i--, number /= 10) {
            to[i] = number != 0 || i == width - 1 ? static_cast<char>('0' + number % 10) : fill;
        }
        return to + width;
    }

    void print_date(uint32_t mtime) {
        const time_t time = mtime;
        tm date{};
        if (localtime_wrap(&time, &date) != 0) date = {};
        auto number = [](int value) { return static_cast<uint32_t>(value); };
        char* to = print_number(date_, 4, '0', number(date.tm_year + 1900));
        *to++ = '-';
        to = print_number(to, 2, '0', number(date.tm_mon + 1));
        *to++ = '-';
        to = print_number(to, 2, '0', number(date.tm_mday));
        *to++ = ' ';
        to = print_number(to, 2, '0', number(date.tm_hour));
        *to++ = ':';
        to = print_number(to, 2, '0', number(date.tm_min));
        *to++ = ':';
        to = print_number(to, 2, '0', number(date.tm_sec));
        *to = ' ';
        time_ = mtime;
        has_date_ = true;
    }

    uint32_t time_ = 0;
    bool has_date_ = false;
    char date_[sizeof "YYYY-MM-DD hh:mm:ss"];  // with a blank in place of the NUL
};

struct Options {
    bool long_format = false;
};

// The subcommands. Their operands begin behind the archive. They return the exit status.

int list(Archive& archive, std::span<char*>, const Options& opt) {
    output::Block block;
    LongFormat format;
    cpio_entity entity;
    for (const cpio_entity* entry = cpioread_first(&archive.reader, &entity); entry != nullptr;
         entry = cpioread_next(&archive.reader, &entity)) {
        if (opt.long_format) block.advance(format.print(block.room(LongFormat::size), entity));
        const char* end = bytes::find(entity.name, entity.name + entity.name_size, '\0');
        block.write({entity.name, static_cast<size_t>(end - entity.name)});
        block.put('\n');
    }
    block.flush();
    return output::finish("cpio2", 0);
}

bool find(Archive& archive, const char* name, cpio_entity* entity) {
    if (cpioread_find(&archive.reader, entity, name) != nullptr) return true;
    cli::error("cpio2: %s: %s: entity not found\n", archive.path, name);
    return false;
}

// Returns 0 or an error number. The system does not signal a lost page of its source, but says EFAULT.
int write_data(int fd, const cpio_entity& entity) {
    errno = 0;
    if (gn_full_write(fd, entity.data, entity.file_size) == entity.file_size) return 0;
    return errno != 0 ? errno : EIO;
}

int cat(Archive& archive, std::span<char*> operands, const Options&) {
    cpio_entity entity;
    if (!find(archive, operands[0], &entity)) return 1;
    const int error = write_data(STDOUT_FILENO, entity);
    if (error == 0) return 0;
    if (error == EFAULT) return fail_to_read(archive, gn_strerror_EIO());
    return cli::fail("cpio2: write error: %s\n", gn_strerror(error));
}

int export_data(Archive& archive, std::span<char*> operands, const Options&) {
    const char* name = operands.back();
    cpio_entity entity;
    if (!find(archive, operands[0], &entity)) return 1;

    // The output may be the archive itself, which loses its data when it is opened.
    struct stat file;
    if (archive.is_mapped() && stat(name, &file) == 0 && file.st_dev == archive.file.st_dev &&
        file.st_ino == archive.file.st_ino) {
        archive.memory = CString(static_cast<char*>(malloc(size_t{entity.file_size} + 1)));
        if (!archive.memory) return fail_to_allocate(archive);
        memcpy(archive.memory.get(), entity.data, entity.file_size);
        entity.data = archive.memory.get();
    }

    UniqueFd output(open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (!output.valid()) {
        return cli::fail("cpio2: %s: failed to create file '%s': %s\n", archive.path, name,
                         gn_strerror(errno));
    }
    int error = write_data(output.get(), entity);
    if (!output.close() && error == 0) error = errno;
    if (error == 0 && entity.file_size != 0) return 0;
    unlink(name);
    if (error == EFAULT) return fail_to_read(archive, gn_strerror_EIO());
    return cli::fail("cpio2: %s: failed to write file '%s': %s\n", archive.path, name, gn_strerror(error));
}

struct Subcommand {
    const char* name;
    int least;  // operands, the archive among them
    int most;
    int (*run)(Archive& archive, std::span<char*> operands, const Options& opt);
};

constexpr Subcommand subcommands[] = {
    {"list", 1, 1, list},
    {"cat", 2, 2, cat},
    {"export", 2, 3, export_data},
};

}  // namespace

int gn_cpio2(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'l': opt.long_format = true; break;
        case 'v': break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "cpio2: unknown switch: -%c\n", c);
        }
    }

    if (argc == 0) return cli::fail("cpio2: no command specified\n");
    const char* word = argv[0];
    const std::span operands(argv + 1, static_cast<size_t>(argc) - 1);
    for (const Subcommand& command : subcommands) {
        if (strcmp(word, command.name) != 0) continue;
        if (argc - 1 < command.least) return cli::fail("cpio2: %s: missing operand\n", word);
        if (argc - 1 > command.most) {
            return cli::fail("cpio2: %s: %s: extra operand\n", word, argv[1 + command.most]);
        }
        Archive archive;
        archive.path = operands[0];
        if (int status = _gn_cpio2_loadimage(archive); status != 0) return status;
        return command.run(archive, operands.subspan(1), opt);
    }
    return cli::fail("cpio2: %s: unknown command\n", word);
}
