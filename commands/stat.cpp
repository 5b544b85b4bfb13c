// stat: prints the status of files.
// Scripts rely on: the set-id and sticky bits are not shown; sockets have a device type; a FIFO has the
// letter 'f'; -L follows at most 15 links, itself, so that a target that begins with a backslash is a path of
// its own; a link whose size is 0, as in /proc, shows the first byte of its target; the empty line between
// two files comes also when one of them failed.

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <string_view>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/io.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/times.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

using platform::Links;

constexpr const char* usage[] = {
    "Usage: stat [OPTION]... FILE...\n",
    "Display file status.\n",
    "\n",
    "    -L    follow links\n",
    "    -U    display time in UTC instead of local time\n",
};

constexpr unsigned most_links = 16;  // that many are too many

struct FileType {
    char letter;
    const char* name;
};

FileType type_of(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFBLK: return {'b', "block device"};
    case S_IFCHR: return {'c', "character device"};
    case S_IFDIR: return {'d', "directory"};
    case S_IFIFO: return {'f', "fifo"};
    case S_IFREG: return {'-', "regular file"};
    case S_IFLNK: return {'l', "symbolic link"};
    case S_IFSOCK: return {'s', "socket"};
    default: return {'?', "??"};
    }
}

// The names of the last user and group are remembered: each question reads the whole database, and the files
// of one call mostly have the same owners. The C library keeps an answer until the next question of its kind.
struct Owner {
    bool known;
    unsigned id;
    const char* name;  // null when there is none
};

const char* user_name(uid_t uid) {
    static Owner last;
    if (!last.known || last.id != uid) {
        const passwd* user = getpwuid(uid);
        last = {true, uid, user != nullptr ? user->pw_name : nullptr};
    }
    return last.name;
}

const char* group_name(gid_t gid) {
    static Owner last;
    if (!last.known || last.id != gid) {
        const group* found = getgrgid(gid);
        last = {true, gid, found != nullptr ? found->gr_name : nullptr};
    }
    return last.name;
}

// What follows does printf's work, which would take longer for a file than everything else.

constexpr size_t most_digits = 20;

char* put_digits(char* to, uint64_t number, int base = 10) {
    return std::to_chars(to, to + most_digits, number, base).ptr;
}

// Fills up what was put into the room at start.
void advance_padded(output::Block& out, const char* start, char* end, size_t width) {
    while (static_cast<size_t>(end - start) < width) *end++ = ' ';
    out.advance(end);
}

void put_figure(output::Block& out, std::string_view label, uint64_t number, size_t width) {
    out.write(label);
    char* start = out.room(most_digits);
    advance_padded(out, start, put_digits(start, number), width);
}

void put_device(output::Block& out, uint64_t number) {
    char* start = out.room(2 * most_digits + 3);
    char* end = put_digits(start, number, 16);
    *end++ = 'h';
    *end++ = '/';
    end = put_digits(end, number);
    *end++ = 'd';
    advance_padded(out, start, end, 10);
}

void put_right(output::Block& out, std::string_view text, size_t width) {
    for (size_t size = text.size(); size < width; size++) out.put(' ');
    out.write(text);
}

// The permission bits as an octal number and as letters.
void put_mode(output::Block& out, mode_t mode, char type) {
    char text[] = "Access: (0000/-rwxrwxrwx)  ";
    constexpr size_t last_digit = 12;
    for (unsigned digit = 0; digit < 3; digit++) {
        text[last_digit - digit] = static_cast<char>('0' + (mode >> 3 * digit & 7));
    }
    text[14] = type;
    for (unsigned bit = 0; bit < 9; bit++) {
        if ((mode & (0400U >> bit)) == 0) text[15 + bit] = '-';
    }
    out.write(text);
}

void put_owner(output::Block& out, std::string_view label, unsigned id, const char* name) {
    char text[most_digits];
    out.write(label);
    put_right(out, {text, static_cast<size_t>(put_digits(text, id) - text)}, 5);
    if (name == nullptr) return;
    out.put('/');
    put_right(out, name, 8);
}

void put_time(output::Block& out, std::string_view label, const timespec& time, bool utc) {
    out.write(label);
    out.advance(format_timespec(out.room(longest_timespec), &time, utc));
    out.put('\n');
}

// Prints a file's block under the operand's name. The target of a link is null when it could not be read.
void print_status(const char* name, const char* target, const struct stat& file, const timespec& birth,
                  bool utc) {
    output::Block out;
    const FileType type = type_of(file.st_mode);
    out.write("  File: '");
    out.write(name);
    out.put('\'');
    if (target != nullptr) {
        out.write(" -> '");
        out.write(target);
        out.put('\'');
    } else if (S_ISLNK(file.st_mode)) {
        out.write(" -> ??");
    }

    put_figure(out, "\n  Size: ", static_cast<uint64_t>(file.st_size), 10);
    put_figure(out, " Blocks: ", static_cast<uint64_t>(gn_safe_st_blocks(&file)), 8);
    put_figure(out, " IO Block: ", gn_safe_st_blksize(&file), 8);
    out.put(' ');
    out.write(type.name);

    out.write("\nDevice: ");
    put_device(out, file.st_dev);
    put_figure(out, " Inode: ", file.st_ino, 10);
    put_figure(out, " Links: ", file.st_nlink, 5);
    if (S_ISCHR(file.st_mode) || S_ISBLK(file.st_mode) || S_ISSOCK(file.st_mode)) {
        put_figure(out, " Device type: ", major(file.st_rdev), 0);
        put_figure(out, ",", minor(file.st_rdev), 0);
    }
    out.put('\n');

    put_mode(out, file.st_mode, type.letter);
    put_owner(out, "Uid: (", file.st_uid, user_name(file.st_uid));
    put_owner(out, ") Gid: (", file.st_gid, group_name(file.st_gid));
    out.write(")\n");
    put_time(out, "Access: ", file.st_atim, utc);
    put_time(out, "Change: ", file.st_ctim, utc);
    put_time(out, "Modify: ", file.st_mtim, utc);
    put_time(out, " Birth: ", birth, utc);
}

// Prints one file's block under the operand's name. The path is what is examined in its place; depth counts
// the links that led there. Returns 0, or what failed (after a message): 1 the path, 2 to 4 the link behind
// it.
int stat_impl(const char* name, const char* path, Links links, bool utc, unsigned depth) {
    CString followed;
    for (;; depth++) {
        if (depth == most_links) {
            cli::error("stat: %s: too many levels of symbolic links\n", name);
            return 1;
        }
        struct stat file;
        timespec birth;
        if (!platform::file_status(AT_FDCWD, path, Links::keep, &file, &birth)) {
            cli::error("stat: %s: %s\n", name, gn_strerror(errno));
            return 1;
        }
        if (!S_ISLNK(file.st_mode)) {
            print_status(name, nullptr, file, birth, utc);
            return 0;
        }

        CString target(read_link(AT_FDCWD, path, static_cast<size_t>(file.st_size) + 1));
        if (links == Links::keep) {
            print_status(name, target.get(), file, birth, utc);
            return 0;
        }
        if (!target) {
            bool no_memory = errno == ENOMEM;
            cli::error("stat: %s: %s\n", name, no_memory ? "out of memory" : "cannot read link content");
            return no_memory ? 2 : 3;
        }
        followed = CString(gn_substlink(path, target.get()));
        if (!followed) {
            cli::error("stat: %s: out of memory\n", name);
            return 4;
        }
        path = followed.get();
    }
}

}  // namespace

int gn_stat(int argc, char** argv) {
    Links links = Links::keep;
    bool utc = false;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'L': links = Links::follow; break;
        case 'U': utc = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "stat: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("stat: missing operand\n");

    bool ok = true;
    for (int i = 0; i < argc; i++) {
        if (i > 0) output::write("\n");
        ok &= stat_impl(argv[i], argv[i], links, utc, 0) == 0;
    }
    return output::finish("stat", ok ? 0 : 1);
}
