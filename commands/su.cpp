// su: runs a shell as another user.
// Scripts rely on: only the superuser may do so; everybody else is refused without being asked for anything, and no
// right that the executable's owner could lend changes that. Options end at the first operand; what stands behind the
// user are arguments of the shell. The status is the shell's, 126 or 127 when that cannot be run (as env has it),
// and otherwise 1.

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <span>

#include <pwd.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/start.h"
#include "common/text.h"
#include "common/users.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"

namespace {

constexpr const char* usage[] = {
    "Usage: su [OPTION]... [-] [USER [ARG]...]\n",
    "Run the shell of USER (default: root) as that user. Only the superuser may do so.\n",
    "\n",
    "  -, -l, --login              make it a login shell, in the home directory\n",
    "  -c, --command COMMAND       run COMMAND in the shell\n",
    "  -s, --shell SHELL           run SHELL instead of the user's own\n",
    "  -m, --preserve-environment  keep the environment\n",
};

constexpr e_longoption long_options[] = {
    {"--login", 'l'}, {"--command", 'c'}, {"--shell", 's'}, {"--preserve-environment", 'm'}, {nullptr, 0},
};

constexpr const char* user_path = "/usr/local/bin:/usr/bin:/bin";
constexpr const char* superuser_path = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";

struct Options {
    bool login = false;
    bool keep_environment = false;
    char* command = nullptr;
    const char* shell = nullptr;
};

int no_memory() {
    return cli::fail("su: out of memory\n");
}

// What a session needs, and nothing else from here but the kind of terminal.
bool make_environment(e_environment* environment, const passwd& user, const char* shell) {
    const char* terminal = getenv("TERM");
    return (terminal == nullptr || e_env_set(environment, "TERM", terminal)) &&
           e_env_set(environment, "HOME", user.pw_dir) && e_env_set(environment, "SHELL", shell) &&
           e_env_set(environment, "USER", user.pw_name) && e_env_set(environment, "LOGNAME", user.pw_name) &&
           e_env_set(environment, "PATH", user.pw_uid == 0 ? superuser_path : user_path);
}

// Home is seen with the user's own rights; without one, a session begins in the root.
void go_home(const char* home) {
    if (chdir(home) == 0) return;
    cli::error("su: %s: %s\n", home, gn_strerror(errno));
    (void)!chdir("/");
}

// The shell's arguments.
bool make_arguments(Vector<char*>* arguments, char* name, const Options& opt, std::span<char* const> rest) {
    static char command_switch[] = "-c";
    if (!arguments->push_back(name)) return false;
    if (opt.command != nullptr) {
        if (!arguments->push_back(command_switch) || !arguments->push_back(opt.command)) return false;
    }
    return arguments->append(rest) && arguments->push_back(nullptr);
}

// Returns only after a failure, with the status.
int run_shell(const passwd& user, const Options& opt, std::span<char* const> rest) {
    const char* shell = opt.shell;
    if (shell == nullptr || shell[0] == '\0') shell = user.pw_shell;
    if (shell == nullptr || shell[0] == '\0') shell = e_shell;

    // The database is read again for the groups, and what is known of the user is gone then.
    CString shell_name(strdup(shell)), home(strdup(user.pw_dir)), name(strdup(user.pw_name));
    CString program_name(gn_strcata(opt.login ? "-" : "", base_name(shell)));
    e_environment environment;
    Vector<char*> arguments;
    Vector<gid_t> groups;
    if (!shell_name || !home || !name || !program_name ||
        !make_arguments(&arguments, program_name.get(), opt, rest)) {
        return no_memory();
    }
    if (!opt.keep_environment && !make_environment(&environment, user, shell)) return no_memory();
    e_identity identity{.user = user.pw_uid, .group = user.pw_gid, .groups = {}};
    if (!groups_of(name.get(), identity.group, &groups)) return no_memory();
    identity.groups = groups.span();

    e_program program{.arguments = arguments.data(), .file = shell_name.get()};
    if (!opt.keep_environment) {
        program.environment = e_env_list(&environment);
        if (program.environment == nullptr) return no_memory();
    }
    if (!e_become(identity)) return cli::fail("su: %s: %s\n", name.get(), gn_strerror(errno));
    if (opt.login) go_home(home.get());
    e_failure failure;
    e_exec(program, &failure);
    return cannot_start("su", program, failure);
}

}  // namespace

int gn_su(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case '\0':
        case 'l': opt.login = true; break;
        case 'm': opt.keep_environment = true; break;
        case 'c':
            opt.command = e_opt_getstr(&state);
            if (opt.command == nullptr) return cli::fail("su: missing -%c operand\n", c);
            break;
        case 's':
            opt.shell = e_opt_getstr(&state);
            if (opt.shell == nullptr) return cli::fail("su: missing -%c operand\n", c);
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "su: unknown switch: -%c\n", c);
        }
    }
    if (geteuid() != 0) return cli::fail("su: permission denied\n");

    const std::span<char* const> operands(argv, static_cast<size_t>(argc));
    const char* who = argc > 0 ? argv[0] : "root";
    const passwd* user = find_user(who);
    if (user == nullptr) return cli::fail("su: %s: unknown user\n", who);
    return run_shell(*user, opt, argc > 0 ? operands.subspan(1) : operands);
}
