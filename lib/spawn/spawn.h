// Starting other programs: finding them in PATH, running them as a child or in place of this process, waiting
// for them, and what goes with that: environments, and arguments as text for a shell.
//
//     e_environment environment;
//     if (!e_env_inherit(&environment) || !e_env_set(&environment, "TERM", "dumb")) ...
//     e_program program{.arguments = argv, .environment = e_env_list(&environment)};
//     e_failure failure;
//     pid_t child = e_spawn(program, &failure);
//     e_result result;
//     if (child < 0 || !e_wait(child, &result)) ...
//
// No shell stands in between, nothing is printed, and what is open elsewhere in the process goes to no program
// that did not ask for it, provided it was opened close-on-exec. Callers flush their streams first.

#pragma once

#include <csignal>
#include <cstddef>
#include <span>

#include <limits.h>
#include <sys/resource.h>
#include <sys/types.h>

#include "lib/containers/container_vector.h"

// Where programs are looked for when there is no PATH. The current directory is not among them.
inline constexpr const char* e_default_path = "/bin:/usr/bin";

// What runs scripts that name no interpreter.
inline constexpr const char* e_shell = "/bin/sh";

// A search through PATH, a local variable of the caller. Fields are for the search alone.
struct e_search {
    const char* name;
    const char* rest;  // what is left of PATH; null at the end
    int error;         // why nothing was found
    char path[PATH_MAX + 2];
};

// Starts a search for the program name in path, the value of a PATH variable (null: e_default_path). Directories
// are separated by ':', an empty one is the current directory. A name with a '/' is a path itself.
void e_initsearch(e_search* search, const char* name, const char* path);

// The next place where the program can be run from: a regular file with the right to execute it. It stays valid
// until the next call. Null at the end with errno: EACCES when something by that name was found that cannot be
// run, ENOENT otherwise (for a name with a '/', what the system says).
[[nodiscard]] const char* e_nextfound(e_search* search);

// New, from malloc: the first place. Null with errno as above, or ENOMEM.
[[nodiscard]] char* e_find(const char* name, const char* path);

// An environment in the making. Texts may be named twice in the one that was inherited: they are handed on like
// that until the name is set or unset here. No call costs more than the entry it adds.
struct e_environment {
    enum class Kind : unsigned char { inherited, set, unset };
    struct Entry {
        char* text;
        size_t name_size;
        Kind kind;
        bool owned;
    };

    e_environment() = default;
    e_environment(const e_environment&) = delete;
    e_environment& operator=(const e_environment&) = delete;
    ~e_environment();

    Vector<Entry> entries;  // for the calls below alone
    Vector<char*> list;
};

// Adds everything that this process has in its environment, whose texts must outlive the new one. False without
// memory, as all of these.
[[nodiscard]] bool e_env_inherit(e_environment* environment);

// Sets a variable by a text "NAME=VALUE", which must outlive the environment, or by name and value, which are
// copied. A variable that is there keeps its place. The name must not hold a '='.
[[nodiscard]] bool e_env_put(e_environment* environment, char* text);
[[nodiscard]] bool e_env_set(e_environment* environment, const char* name, const char* value);

// Removes a variable, if it is there. The name must outlive the environment.
[[nodiscard]] bool e_env_unset(e_environment* environment, char* name);

// Removes everything.
void e_env_empty(e_environment* environment);

// The environment as programs take it: ended by null, valid until the environment is changed or ends. Null without
// memory.
[[nodiscard]] char* const* e_env_list(e_environment* environment);

// The value of a variable in such a list, a pointer into it; null when it is not there.
[[nodiscard]] const char* e_env_value(char* const* list, const char* name);

// A descriptor of the new program: what is open here as from is open there as to; from -1 closes to. All are taken
// at the same time, so that two can change places.
struct e_descriptor {
    int from;
    int to;
};
inline constexpr size_t e_most_descriptors = 8;

// Whom a program runs as: its user, group and all supplementary groups.
struct e_identity {
    uid_t user;
    gid_t group;
    std::span<const gid_t> groups;
};

// What to run. What is left out stays as it is in this process, down to signals that are ignored; signals that
// have handlers here are at their default there.
struct e_program {
    char* const* arguments = nullptr;  // ended by null; the first is the program's own name
    const char* file =
        nullptr;  // a path, or without '/' a name to look for in PATH; null: the first argument
    char* const* environment = nullptr;              // its PATH is the one that is searched
    const char* root = nullptr;                      // a directory that becomes "/" and the current one
    const e_identity* identity = nullptr;            // after the root
    const char* directory = nullptr;                 // after the identity, and seen from the new root
    std::span<const e_descriptor> descriptors = {};  // at most e_most_descriptors
    const sigset_t* defaults = nullptr;              // signals to be given back their default
    const sigset_t* mask = nullptr;                  // signals to be blocked
};

// The step at which a start failed. Files are looked for last, after all changes.
enum e_step {
    e_step_none,
    e_step_start,  // no memory, no process, too many descriptors, no arguments
    e_step_descriptors,
    e_step_root,
    e_step_identity,
    e_step_directory,
    e_step_program,
};

struct e_failure {
    e_step step;
    int error;
};

// Runs a program as a child and returns its process id, or -1 with *failure, also when the program could not be
// executed: no child is left then. A file without a format that the system knows is run by e_shell. Signals that a
// child's end sends are no longer ignored afterwards, as its status would be lost.
[[nodiscard]] pid_t e_spawn(const e_program& program, e_failure* failure);

// Runs a program in place of this process. Returns only when that failed; the steps before the one that failed
// have been taken then.
void e_exec(const e_program& program, e_failure* failure);

// The status that a command ends with which could not run another, when that is the failure of the program's own
// step: 127 when there is no such program, 126 when it cannot be executed.
[[nodiscard]] int e_failure_status(int error);

// Makes this process that user for good: supplementary groups, group and user in this order, with no way back.
// False with errno when it is not wholly done: the process must not go on for that user then. EPERM also when rights
// could be regained.
[[nodiscard]] bool e_become(const e_identity& identity);

// How a child ended, and what it took.
struct e_result {
    int status;  // 0 to 255, or 128 and the signal
    int signal;  // 0 unless one killed it
    rusage usage;
};

// Waits for a child to end, however often a signal interrupts that. False with errno.
[[nodiscard]] bool e_wait(pid_t child, e_result* result);

// New, from malloc: the arguments as one text from which a POSIX shell makes the same words again, whatever bytes
// they hold, and nothing else: the first word is always a command's name. Null without memory.
[[nodiscard]] char* e_escape(std::span<char* const> arguments);
