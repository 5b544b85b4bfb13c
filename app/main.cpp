// garnel: one executable, many commands.
//
// The name under which it was started chooses the command (usually a link named after it). Started under its
// own name, the first argument chooses, or asks the toolbox for something of its own.

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "app/tools.h"
#include "app/version.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/paths.h"
#include "platform/platform.h"

namespace {

constexpr const char* own_name = "garnel";

constexpr const char* usage[] = {
    "Utility toolbox.\n",
    "Use \"help\" to list all commands.\n",
    "Use \"--install\" to create symlinks in current directory.\n",
    "Use \"--uninstall\" to remove symlinks in current directory.\n",
    "  Additional \"--verbose\" will display the progress.\n",
    "Use \"--list\" to list all tools.\n",
    "Use \"--version\" to print version number.\n",
};

int misused() {
    cli::help(usage);
    return 1;
}

// The commands were never meant to lend their caller somebody else's rights.
bool drop_privileges() {
    uid_t uid = getuid();
    gid_t gid = getgid();
    if (geteuid() == uid && getegid() == gid) return true;
    // The group first: without the user's rights it could no longer be given up.
    return setresgid(gid, gid, gid) == 0 && setresuid(uid, uid, uid) == 0 && getegid() == gid &&
           geteuid() == uid;
}

// A file that a command opens must not take the number of a standard stream that the caller closed: messages
// would be written into it. What holds the number instead answers as if it were closed.
void hold_standard_streams() {
    pollfd streams[] = {{STDIN_FILENO, 0, 0}, {STDOUT_FILENO, 0, 0}, {STDERR_FILENO, 0, 0}};
    if (poll(streams, 3, 0) <= 0) return;
    for (const pollfd& stream : streams) {
        if ((stream.revents & POLLNVAL) != 0) (void)platform::open_passage(AT_FDCWD, "/");
    }
}

// Links are made and removed in the current directory. A link that is there already, or missing, is no reason
// to stop or to complain.
void install(bool verbose) {
    for (const u_tool* tool = u_tools; tool->name != nullptr; tool++) {
        if (verbose) printf("Create symlink '%s'\n", tool->name);
        (void)symlink_wrap(own_name, tool->name);
    }
}

void uninstall(bool verbose) {
    for (const u_tool* tool = u_tools; tool->name != nullptr; tool++) {
        if (verbose) printf("Remove symlink '%s'\n", tool->name);
        (void)unlink(tool->name);
    }
}

unsigned list(const char* indent) {
    unsigned count = 0;
    for (const u_tool* tool = u_tools; tool->name != nullptr; tool++, count++)
        printf("%s%s\n", indent, tool->name);
    return count;
}

// Does what the toolbox itself is asked for; false when the word asks for nothing of the kind.
bool serve_itself(int argc, char** argv) {
    const char* word = argv[1];
    bool verbose = argc > 2 && strcmp(argv[2], "--verbose") == 0;
    if (strcmp(word, "--install") == 0) {
        install(verbose);
    } else if (strcmp(word, "--uninstall") == 0) {
        uninstall(verbose);
    } else if (strcmp(word, "--list") == 0) {
        list("");
    } else if (strcmp(word, "--version") == 0) {
        printf("garnel v%s\n", garnel_version);
    } else if (strcmp(word, "help") == 0) {
        printf("Utility toolbox commands:\n");
        unsigned count = list("    ");
        printf("%u commands.\n", count);
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (!drop_privileges()) return cli::fail("garnel: cannot drop privileges: %s\n", gn_strerror(errno));
    hold_standard_streams();
    output::prepare();
    if (argc < 1) return misused();

    const char* name = base_name(argv[0]);
    int skip = 1;
    // Renamed executables (garnel.elf, my-garnel-2) still are the toolbox.
    if (strstr(name, own_name) != nullptr) {
        if (argc == 1) return misused();
        if (serve_itself(argc, argv)) return output::finish(own_name, 0);
        name = argv[1];
        skip = 2;
    }

    srand(TickGetCount());
    for (const u_tool* tool = u_tools; tool->name != nullptr; tool++) {
        if (strcmp(tool->name, name) == 0) return tool->entry(argc - skip, argv + skip);
    }
    cli::error("Unknown command: \"%s\".\n", name);
    return misused();
}
