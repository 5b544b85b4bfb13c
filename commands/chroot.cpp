// chroot: runs a command in another root directory.
// Scripts rely on: options end at the first operand; the command's statuses are its own, and 125, 126 and 127 are
// those of env. Names of users and groups are those of the system outside: what lies in the new root is not trusted
// before the rights over it have been given up.

#include <cstring>

#include <pwd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/start.h"
#include "common/users.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"

namespace {

constexpr const char* usage[] = {
    "Usage: chroot [OPTION]... NEWROOT [COMMAND [ARG]...]\n",
    "Run COMMAND (default: /bin/sh -i) with NEWROOT as its root directory.\n",
    "\n",
    "  -u, --user USER[:GROUP]  run it as that user, with the user's groups\n",
};

constexpr e_longoption long_options[] = {
    {"--user", 'u'},
    {nullptr, 0},
};

int fail(const char* what, const char* reason) {
    cli::error("chroot: %s: %s\n", what, reason);
    return exit_not_started;
}

// USER[:GROUP]. Cuts the text at the colon. A number that belongs to no user needs a group. Returns why it cannot be,
// or null.
const char* find_identity(char* text, e_identity* identity, Vector<gid_t>* groups) {
    char* colon = strchr(text, ':');
    if (colon != nullptr) *colon = '\0';
    const passwd* user = find_user(text);
    const auto number = user != nullptr ? std::optional(user->pw_uid) : parse_id(text);
    if (!number) return "unknown user";
    identity->user = *number;
    if (colon != nullptr) {
        const auto group = find_group(colon + 1);
        if (!group) return "unknown group";
        identity->group = *group;
    } else {
        if (user == nullptr) return "unknown user";
        identity->group = user->pw_gid;
    }
    const bool known = user != nullptr ? groups_of(user->pw_name, identity->group, groups)
                                       : groups->append({&identity->group, 1});
    identity->groups = groups->span();
    return known ? nullptr : "out of memory";
}

}  // namespace

int gn_chroot(int argc, char** argv) {
    char* who = nullptr;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'u':
            who = e_opt_getstr(&state);
            if (who != nullptr) break;
            cli::error("chroot: missing -%c operand\n", c);
            return exit_not_started;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "chroot: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) {
        cli::error("chroot: missing operand\n");
        return exit_not_started;
    }

    char shell[] = "/bin/sh", interactive[] = "-i";
    char* default_command[] = {shell, interactive, nullptr};
    e_program program{.arguments = argc > 1 ? argv + 1 : default_command, .root = argv[0]};
    e_identity identity{};
    Vector<gid_t> groups;
    if (who != nullptr) {
        const char* reason = find_identity(who, &identity, &groups);
        if (reason != nullptr) return fail(who, reason);
        program.identity = &identity;
    }
    e_failure failure;
    e_exec(program, &failure);
    return cannot_start("chroot", program, failure, who);
}
