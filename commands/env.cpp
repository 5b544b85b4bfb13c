// env: runs a command in a changed environment, or prints the environment.
// Scripts rely on: options end at the first operand; the command is looked for in the PATH that it is given, after
// the change of directory; 127 means that there is no such command, 126 that it cannot be executed, 125 that it
// never came to that.

#include <cerrno>
#include <cstring>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/start.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"

namespace {

constexpr const char* usage[] = {
    "Usage: env [OPTION]... [-] [NAME=VALUE]... [COMMAND [ARG]...]\n",
    "Run COMMAND with each NAME set to VALUE, or print the environment.\n",
    "\n",
    "  -i, --ignore-environment  start with an empty environment; so does a lone -\n",
    "  -u, --unset NAME          remove a variable\n",
    "  -C, --chdir DIR           change to directory DIR first\n",
    "  -0, --null                end each line of output with a NUL byte\n",
};

constexpr e_longoption long_options[] = {
    {"--ignore-environment", 'i'}, {"--unset", 'u'}, {"--chdir", 'C'}, {"--null", '0'}, {nullptr, 0},
};

int fail(const char* what, int error) {
    cli::error("env: %s: %s\n", what, gn_strerror(error));
    return exit_not_started;
}

int no_memory() {
    cli::error("env: out of memory\n");
    return exit_not_started;
}

int print(char* const* list, char end) {
    for (; *list != nullptr; list++) {
        output::write(*list);
        output::write({&end, 1});
    }
    return output::finish("env", 0) == 0 ? 0 : exit_not_started;
}

}  // namespace

int gn_env(int argc, char** argv) {
    e_environment environment;
    if (!e_env_inherit(&environment)) return no_memory();
    const char* directory = nullptr;
    char end = '\n';
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case '\0':
        case 'i': e_env_empty(&environment); break;
        case 'u': {
            char* name = e_opt_getstr(&state);
            if (name == nullptr) {
                cli::error("env: missing -%c operand\n", c);
                return exit_not_started;
            }
            if (name[0] == '\0' || strchr(name, '=') != nullptr) return fail(name, EINVAL);
            if (!e_env_unset(&environment, name)) return no_memory();
            break;
        }
        case 'C':
            directory = e_opt_getstr(&state);
            if (directory == nullptr) {
                cli::error("env: missing -%c operand\n", c);
                return exit_not_started;
            }
            break;
        case '0': end = '\0'; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "env: unknown switch: -%c\n", c);
        }
    }
    for (; argc > 0 && strchr(*argv, '=') != nullptr; argc--, argv++) {
        if (**argv == '=') return fail(*argv, EINVAL);
        if (!e_env_put(&environment, *argv)) return no_memory();
    }
    char* const* list = e_env_list(&environment);
    if (list == nullptr) return no_memory();

    if (argc == 0) {
        if (directory == nullptr) return print(list, end);
        cli::error("env: -C: missing command\n");
        return exit_not_started;
    }
    if (end == '\0') {
        cli::error("env: -0: not with a command\n");
        return exit_not_started;
    }
    const e_program program{.arguments = argv, .environment = list, .directory = directory};
    e_failure failure;
    e_exec(program, &failure);
    return cannot_start("env", program, failure);
}
