// chmod: changes the nine permission bits of files.
// Scripts rely on: a mode may look like an option ("-w"); files may stand in front of the mode; every change
// clears the set-id and sticky bits, which are no part of a mode here; the umask does not matter; links are
// followed, in a recursion too; a directory is changed before its entries are read, so that a mode without
// read permission ends the recursion there.

#include <cerrno>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/tree_walk.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: chmod [OPTION]... MODE[,MODE]... FILE...\n",
    "Change permissions of a file. MODE can be an octal number (e.g 777)\n",
    "or a modification command '[ugoa]*[+-=][rwx]+'.\n",
    "\n",
    "  -c, --changes    like verbose but report only when a change is made\n",
    "  -f, --silent     suppress most error messages\n",
    "  -M, --showmode   display the resultant mode and mask to work with\n",
    "  -R, --recursive  change files and directories recursively\n",
    "  -v, --verbose    output a diagnostic for every file processed\n",
};

constexpr unsigned all_bits = 0777;

struct Settings {
    bool verbose = false;
    bool silent = false;
    bool changes = false;
    bool recursive = false;
    bool show_mode = false;
    bool mode_seen = false;
    unsigned attr = 0;  // the value of the bits that
    unsigned mask = 0;  // the mode affects
};

constexpr size_t mode_text_size = 10;

const char* render_mode(char* buffer, unsigned mode) {
    for (unsigned i = 0; i < 9; i++) buffer[i] = (mode & (0400U >> i)) != 0 ? "rwx"[i % 3] : '-';
    buffer[9] = '\0';
    return buffer;
}

// Reads [ugoa]*[-+=][rwx]* clauses between commas, each changing what those before it have settled. False for
// anything else.
bool parse_symbolic(Settings& settings, const char* text) {
    for (;;) {
        unsigned who = strchr("+-=", *text) != nullptr && *text != '\0' ? all_bits : 0;
        for (;; text++) {
            if (*text == 'u') {
                who |= 0700;
            } else if (*text == 'g') {
                who |= 070;
            } else if (*text == 'o') {
                who |= 07;
            } else if (*text == 'a') {
                who = all_bits;
            } else {
                break;
            }
        }

        const char operation = *text;
        if (operation != '+' && operation != '-' && operation != '=') return false;
        unsigned permissions = 0;
        for (text++;; text++) {
            if (*text == 'r') {
                permissions |= 0444;
            } else if (*text == 'w') {
                permissions |= 0222;
            } else if (*text == 'x') {
                permissions |= 0111;
            } else {
                break;
            }
        }
        permissions &= who;

        if (operation == '+') {
            settings.attr |= permissions;
            settings.mask |= permissions;
        } else if (operation == '-') {
            settings.attr &= ~permissions;
            settings.mask |= permissions;
        } else {
            settings.attr = permissions | (settings.attr & ~who);
            settings.mask |= who;
        }
        if (*text == '\0') return true;
        if (*text != ',') return false;
        text++;
    }
}

// Both take the mode from an argument: 0, or a status after a message.

int take_symbolic(Settings& settings, const char* argument) {
    settings.mode_seen = true;
    if (parse_symbolic(settings, argument)) return 0;
    cli::error("chmod: MODE sytax error\n");
    return 2;
}

int take_octal(Settings& settings, const char* argument) {
    unsigned value = 0;
    for (const char* digit = argument; *digit != '\0'; digit++) {
        if (*digit < '0' || *digit > '7') {
            cli::error("chmod: non-octal digit found in MODE\n");
            return 2;
        }
        // A value that is too large once stays so.
        value = value > all_bits ? value : value * 8 + static_cast<unsigned>(*digit - '0');
    }
    if (value > all_bits) {
        cli::error("chmod: invalid mode: %s\n", argument);
        return 2;
    }
    settings.mode_seen = true;
    settings.attr = value;
    settings.mask = all_bits;
    return 0;
}

bool set_option(Settings& settings, char letter) {
    switch (letter) {
    case 'c': settings.changes = true; return true;
    case 'f': settings.silent = true; return true;
    case 'M': settings.show_mode = true; return true;
    case 'R': settings.recursive = true; return true;
    case 'v': settings.verbose = true; return true;
    default: return false;
    }
}

// The letter of a long option; 0 for one that is not known.
char long_option(const char* argument) {
    struct Row {
        const char* name;
        char letter;
    };
    constexpr Row rows[] = {
        {"--changes", 'c'},  {"--recursive", 'R'}, {"--verbose", 'v'},
        {"--showmode", 'M'}, {"--silent", 'f'},    {"--quiet", 'f'},
    };
    for (const Row& row : rows) {
        if (strcmp(row.name, argument) == 0) return row.letter;
    }
    return 0;
}

// An argument that begins with "-", "--help" excepted, in front of the mode: 0, or a status after a message.
int take_dashed(Settings& settings, const char* argument) {
    bool known = true;
    if (argument[1] == '\0') return take_symbolic(settings, argument);
    if (argument[1] == '-') {
        known = set_option(settings, long_option(argument));
    } else {
        for (const char* letter = argument + 1; *letter != '\0' && known; letter++) {
            // "-w" and the like take permissions away.
            if (strchr("rwx", *letter) != nullptr) return take_symbolic(settings, argument);
            known = set_option(settings, *letter);
        }
    }
    return known ? 0 : cli::fail("chmod: unknown argument: '%s'\n", argument);
}

bool report_failure(const Settings& settings, const char* what, const char* path) {
    if (!settings.silent) cli::error("chmod: %s '%s': %s\n", what, path, gn_strerror(errno));
    return false;
}

// "WHAT 'PATH' VERB from OLD to NEW", modes as number and text.
void report_change(const char* what, const char* path, const char* verb, unsigned before, unsigned after) {
    char old_text[mode_text_size], new_text[mode_text_size];
    printf("%s '%s' %s from 0%o (%s) to 0%o (%s)\n", what, path, verb, before, render_mode(old_text, before),
           after, render_mode(new_text, after));
}

// Applies the mode to one file, and enters a directory that is to be changed with its entries.
bool change(const Settings& settings, TreeWalk& walk, const WalkEntry& entry) {
    // Reports tell the mode as it is now: the file may have been changed under another name meanwhile.
    const bool reports = settings.verbose || settings.changes;
    struct stat status {};
    bool examined = true;
    if (entry.status != nullptr && !S_ISLNK(entry.status->mode) && !reports) {
        status.st_mode = entry.status->mode;
    } else if (entry.status != nullptr) {
        examined = walk.examine(entry.name, &status);
    } else {
        examined = stat(entry.name, &status) == 0;
    }
    if (!examined) return report_failure(settings, "cannot access", entry.path);

    const unsigned before = status.st_mode & all_bits;
    const unsigned after = (before & ~settings.mask) | settings.attr;
    if (fchmodat(entry.dir, entry.name, after, 0) != 0) {
        if (errno == ENOENT) return report_failure(settings, "cannot access", entry.path);
        report_failure(settings, "changing permissions of", entry.path);
        if (settings.verbose) report_change("failed to change mode of", entry.path, "changes", before, after);
        return false;
    }
    if (after != before && reports) report_change("mode of", entry.path, "changed", before, after);
    if (after == before && settings.verbose) {
        char text[mode_text_size];
        printf("mode of '%s' retained as 0%o (%s)\n", entry.path, before, render_mode(text, before));
    }

    if (!settings.recursive || !S_ISDIR(status.st_mode)) return true;
    if (walk.enter(entry, platform::Links::follow)) return true;
    cli::error("chmod: out of memory\n");
    return false;
}

bool do_chmod(const Settings& settings, const char* path) {
    // The old mode matters where the new one keeps some of it; reports look it up anew.
    const bool keeps_some = settings.mask != all_bits;
    TreeWalk walk(EntryOrder::unsorted, false, keeps_some ? EntryDetail::status : EntryDetail::type);
    bool ok = change(settings, walk, WalkEntry::operand(path));
    while (walk.depth() != 0) {
        WalkEntry entry;
        if (!walk.next(&entry)) {
            (void)walk.leave();
        } else if (entry.path != nullptr) {
            ok &= change(settings, walk, entry);
        } else {
            cli::error("chmod: out of memory\n");
            (void)walk.leave();
            ok = false;
        }
    }
    return ok;
}

}  // namespace

int gn_chmod(int argc, char** argv) {
    Settings settings;
    const auto arguments = std::span(argv, static_cast<size_t>(argc));
    size_t files = 0;  // gathered at the front of the arguments
    for (char* argument : arguments) {
        int status = 0;
        const char first = argument[0];
        const bool is_mode = strchr("ugoa+=01234567", first) != nullptr;
        if (settings.mode_seen || first == '\0' || (first != '-' && !is_mode)) {
            arguments[files++] = argument;
        } else if (strcmp(argument, "--help") == 0) {
            return cli::help(usage);
        } else if (first == '-') {
            status = take_dashed(settings, argument);
        } else {
            const bool octal = first >= '0' && first <= '7';
            status = (octal ? take_octal : take_symbolic)(settings, argument);
        }
        if (status != 0) return status;
    }
    if (files == 0) return cli::fail("chmod: missing operand\n");
    if (!settings.mode_seen) {
        cli::error("chmod: invalid mode: %s\n", arguments[0]);
        return 2;
    }

    if (settings.show_mode) {
        printf("chmod: attr=0%o\n", settings.attr);
        printf("chmod: mask=0%o\n", settings.mask);
    }
    bool ok = true;
    for (const char* path : arguments.first(files)) ok &= do_chmod(settings, path);
    return output::finish("chmod", ok ? 0 : 1);
}
