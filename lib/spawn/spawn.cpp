#include "lib/spawn/spawn.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include "lib/spawn/search.h"
#include "platform/platform.h"

namespace {

// The arguments of the shell that runs a script: room for them is made before a child shares this process's memory.
class ScriptArguments {
  public:
    explicit ScriptArguments(char* const* arguments) : arguments_(arguments) {
        size_t count = 0;
        while (arguments != nullptr && arguments[count] != nullptr) count++;
        // The shell's name, the script, and the null at the end.
        script_ = static_cast<char**>(calloc(count + 3, sizeof(char*)));
    }
    ScriptArguments(const ScriptArguments&) = delete;
    ScriptArguments& operator=(const ScriptArguments&) = delete;
    ~ScriptArguments() { free(script_); }

    [[nodiscard]] bool valid() const { return script_ != nullptr; }

    // The path lies in a search, which leaves room in front of it.
    char** with(char* path) {
        // What begins like an option would be one for the shell.
        if (path[0] == '-' || path[0] == '+') {
            *--path = '/';
            *--path = '.';
        }
        script_[0] = const_cast<char*>("sh");
        script_[1] = path;
        char** end = script_ + 2;
        if (arguments_[0] != nullptr) {
            for (char* const* argument = arguments_ + 1; *argument != nullptr; argument++) *end++ = *argument;
        }
        return script_;
    }

  private:
    char* const* arguments_;
    char** script_;
};

bool take_descriptors(std::span<const e_descriptor> descriptors) {
    int copies[e_most_descriptors] = {};
    int above = 0;
    for (const e_descriptor& descriptor : descriptors) above = std::max(above, descriptor.to);
    for (size_t i = 0; i < descriptors.size(); i++) {
        if (descriptors[i].from < 0) continue;
        // Out of the way of all targets first.
        copies[i] = fcntl(descriptors[i].from, F_DUPFD_CLOEXEC, above + 1);
        if (copies[i] < 0) return false;
    }
    for (size_t i = 0; i < descriptors.size(); i++) {
        if (descriptors[i].from < 0) {
            close(descriptors[i].to);
        } else if (dup2(copies[i], descriptors[i].to) < 0) {
            return false;
        }
    }
    return true;
}

bool take_root(const char* root) {
    return chroot(root) == 0 && chdir("/") == 0;
}

// What a terminal stops a job with. A child that stops before it is another program would hold its parent, too, which
// could then not stop itself: the shell would wait for both. So it forgets what came until then, and the parent, to
// which that came as well, tells it again.
constexpr int stop_signals[] = {SIGTSTP, SIGTTIN, SIGTTOU};

// Handlers are functions of this program, which must not run in a child that shares its memory.
void take_signals(const e_program& program, bool child) {
    for (int signal = 1; signal < NSIG; signal++) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0) continue;
        const bool wanted = program.defaults != nullptr && sigismember(program.defaults, signal) == 1;
        const bool handled = action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN;
        bool stops = false;
        for (const int other : stop_signals)
            stops |= child && signal == other && action.sa_handler != SIG_IGN;
        if (!wanted && !stops && !(child && handled)) continue;
        action = {};
        action.sa_handler = SIG_IGN;
        if (stops) sigaction(signal, &action, nullptr);
        action.sa_handler = SIG_DFL;
        sigaction(signal, &action, nullptr);
    }
}

// Executes the program, with another mask of signals unless that is null. Returns only with errno.
void execute(const e_program& program, e_search* search, ScriptArguments* script, const sigset_t* mask) {
    char* const* environment = program.environment != nullptr ? program.environment : environ;
    const bool is_path = search->rest == search->name;
    while (char* path = next_candidate(search)) {
        // Signals must not get in before the last moment.
        if (access(path, F_OK) == 0) {
            if (mask != nullptr) sigprocmask(SIG_SETMASK, mask, nullptr);
            execve(path, program.arguments, environment);
            if (errno == ENOEXEC) execve(e_shell, script->with(path), environment);
        }
        if (is_path) return;
        switch (errno) {
        case EACCES: search->error = EACCES; break;
        case ENOENT:
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
        case ENODEV:
        case ESTALE:
        case ETIMEDOUT: break;
        default: return;
        }
    }
    errno = search->error;
}

// A start under way, in this process or in the child that borrows its memory.
struct Start {
    const e_program& program;
    e_failure* failure;
    ScriptArguments script;
    const char* file = nullptr;
    bool in_child = false;
    const sigset_t* mask = nullptr;                  // to be set, or null
    const struct sigaction* child_signal = nullptr;  // SIGCHLD's for the program, or null

    // Whether the program can be tried.
    [[nodiscard]] bool prepare() {
        *failure = {e_step_none, 0};
        mask = program.mask;
        file = program.file;
        if (file == nullptr && program.arguments != nullptr) file = program.arguments[0];
        bool sound = program.arguments != nullptr && file != nullptr &&
                     program.descriptors.size() <= e_most_descriptors;
        for (const e_descriptor& descriptor : program.descriptors) {
            sound &= descriptor.to >= 0 && descriptor.to < INT_MAX;
        }
        if (!script.valid()) *failure = {e_step_start, ENOMEM};
        if (!sound) *failure = {e_step_start, EINVAL};
        return failure->step == e_step_none;
    }

    // Takes all steps. Returns only after a failure.
    void become_program() {
        e_search search;
        char* const* environment = program.environment != nullptr ? program.environment : environ;
        e_initsearch(&search, file, e_env_value(environment, "PATH"));

        auto fail = [this](e_step step) { *failure = {step, errno}; };
        if (!take_descriptors(program.descriptors)) return fail(e_step_descriptors);
        if (program.root != nullptr && !take_root(program.root)) return fail(e_step_root);
        if (program.identity != nullptr && !e_become(*program.identity)) return fail(e_step_identity);
        if (program.directory != nullptr && chdir(program.directory) != 0) return fail(e_step_directory);
        if (child_signal != nullptr) sigaction(SIGCHLD, child_signal, nullptr);
        if (in_child || program.defaults != nullptr) take_signals(program, in_child);
        execute(program, &search, &script, mask);
        fail(e_step_program);
    }
};

int run_child(void* start) {
    static_cast<Start*>(start)->become_program();
    return 127;
}

// Without this a child's status is lost. What the child is given is what was here before.
bool hear_of_children(struct sigaction* before) {
    if (sigaction(SIGCHLD, nullptr, before) != 0) return false;
    if (before->sa_handler != SIG_IGN && (before->sa_flags & SA_NOCLDWAIT) == 0) return false;
    struct sigaction action = *before;
    if (action.sa_handler == SIG_IGN) action.sa_handler = SIG_DFL;
    action.sa_flags &= ~SA_NOCLDWAIT;
    return sigaction(SIGCHLD, &action, nullptr) == 0;
}

}  // namespace

pid_t e_spawn(const e_program& program, e_failure* failure) {
    Start start{.program = program, .failure = failure, .script = ScriptArguments(program.arguments)};
    if (!start.prepare()) return -1;

    struct sigaction child_signal {};
    if (hear_of_children(&child_signal)) start.child_signal = &child_signal;
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &before);
    start.in_child = true;
    if (start.mask == nullptr) start.mask = &before;
    const pid_t child = platform::start_child(run_child, &start);
    const int error = errno;
    sigset_t pending;
    sigpending(&pending);
    for (const int signal : stop_signals) {
        const bool came = sigismember(&pending, signal) == 1 && sigismember(&before, signal) == 0;
        if (came && child > 0 && failure->step == e_step_none) kill(child, signal);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    if (child < 0) *failure = {e_step_start, error};
    if (failure->step == e_step_none) return child;

    e_result result;
    if (child >= 0) (void)e_wait(child, &result);
    return -1;
}

void e_exec(const e_program& program, e_failure* failure) {
    Start start{.program = program, .failure = failure, .script = ScriptArguments(program.arguments)};
    if (start.prepare()) start.become_program();
}

int e_failure_status(int error) {
    return error == ENOENT || error == ENOTDIR ? 127 : 126;
}

bool e_become(const e_identity& identity) {
    const auto [user, group, groups] = identity;
    constexpr auto unchanged = static_cast<uid_t>(-1);
    // To the system this number means "leave it as it is".
    if (user == unchanged || group == static_cast<gid_t>(-1)) {
        errno = EINVAL;
        return false;
    }
    // The user last: the right to change the others goes with it.
    if (setgroups(groups.size(), groups.data()) != 0 || setresgid(group, group, group) != 0 ||
        setresuid(user, user, user) != 0) {
        return false;
    }
    uid_t users[3];
    gid_t gids[3];
    if (getresuid(users, users + 1, users + 2) != 0 || getresgid(gids, gids + 1, gids + 2) != 0) return false;
    bool done = getgroups(0, nullptr) == static_cast<int>(groups.size());
    for (const uid_t id : users) done &= id == user;
    for (const gid_t id : gids) done &= id == group;
    const bool regained = user != 0 && (setresuid(unchanged, 0, unchanged) == 0 ||
                                        (group != 0 && setresgid(unchanged, 0, unchanged) == 0));
    if (done && !regained) return true;
    errno = EPERM;
    return false;
}

bool e_wait(pid_t child, e_result* result) {
    int status = 0;
    while (wait4(child, &status, 0, &result->usage) < 0) {
        if (errno != EINTR) return false;
    }
    result->signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    result->status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return true;
}
