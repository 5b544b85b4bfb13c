// A library that is loaded in front of the executable (LD_PRELOAD) and makes chosen calls fail.
//
// GARNEL_FAULTS holds a plan, entries separated by blanks, each ROUTINE:N:WHAT or ROUTINE:N+:WHAT. The Nth call
// of the routine (N+: that one and all behind it) does not happen; WHAT is what comes of it:
//   5          it fails with error number 5
//   =7         it is said to have returned 7
//   short      it happens, for one byte only
// When the process ends or becomes another program, the file that GARNEL_FAULTS_REPORT names gets lines
// "calls ROUTINE COUNT", "met ENTRY" for each entry that came about, and "open NUMBER NAME" for each descriptor
// above 2 that was still open.
//
// System calls are caught where they enter the kernel (system call user dispatch), so that those which the C
// library makes for itself count like those of the executable; "memory" is the malloc family. A look into the
// user, group and host data bases is one call of "database", and nothing counts inside: the C library ends by a
// signal where memory is short in there. Counting begins before main and covers this process alone: neither its
// children nor a program that takes its place.

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include <dlfcn.h>
#include <fcntl.h>
#include <grp.h>
#include <netdb.h>
#include <pwd.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <ucontext.h>
#include <unistd.h>

#include <linux/prctl.h>

// The system calls in here are the ones that are not caught.
asm(R"(
    .text
shim_gate_begin:
shim_call:                      # as the C library's syscall(), but the error stays in the result
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
    ret
shim_return_from:               # returns from the signal whose frame is at the address given
    mov %rdi, %rsp
shim_restore:
    mov $15, %eax
    syscall
    ud2                         # what counts is the address behind the system call
shim_gate_end:
)");

extern "C" {
extern const char shim_gate_begin[] __attribute__((visibility("hidden")));
extern const char shim_gate_end[] __attribute__((visibility("hidden")));
long shim_call(long number, long a, long b, long c, long d, long e, long f)
    __attribute__((visibility("hidden")));
void shim_restore() __attribute__((visibility("hidden")));
[[noreturn]] void shim_return_from(long frame) __attribute__((visibility("hidden")));

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* old, size_t size);
}

namespace {

// Which argument of a call is its byte count, for calls that can come short.
enum class Count { none, third, fourth, fifth, vector };

struct Routine {
    const char* name;
    std::initializer_list<long> numbers;
    Count count = Count::none;
};

constexpr Routine routines[] = {
    {"memory", {}},
    {"fork", {}},
    {"database", {}},
    {"open", {SYS_open, SYS_openat}},
    {"read", {SYS_read, SYS_pread64}, Count::third},
    {"write", {SYS_write, SYS_pwrite64}, Count::third},
    {"write", {SYS_writev}, Count::vector},
    {"close", {SYS_close}},
    {"stat", {SYS_stat, SYS_lstat, SYS_fstat, SYS_newfstatat, SYS_statx}},
    {"statfs", {SYS_statfs, SYS_fstatfs}},
    {"list", {SYS_getdents64}},
    {"seek", {SYS_lseek}},
    {"rename", {SYS_rename, SYS_renameat, SYS_renameat2}},
    {"unlink", {SYS_unlink, SYS_unlinkat, SYS_rmdir}},
    {"mkdir", {SYS_mkdir, SYS_mkdirat}},
    {"mknod", {SYS_mknod, SYS_mknodat}},
    {"link", {SYS_link, SYS_linkat, SYS_symlink, SYS_symlinkat}},
    {"readlink", {SYS_readlink, SYS_readlinkat}},
    {"chmod", {SYS_chmod, SYS_fchmod, SYS_fchmodat}},
    {"chown", {SYS_chown, SYS_lchown, SYS_fchown, SYS_fchownat}},
    {"times", {SYS_utimensat}},
    {"truncate", {SYS_truncate, SYS_ftruncate}},
    {"copy", {SYS_copy_file_range}, Count::fifth},
    {"splice", {SYS_splice}, Count::fifth},
    {"splice", {SYS_sendfile}, Count::fourth},
    {"splice", {SYS_tee}, Count::third},
    {"splice", {SYS_vmsplice}, Count::vector},
    {"map", {SYS_mmap, SYS_brk}},
    {"advise", {SYS_madvise, SYS_fadvise64}},
    {"control", {SYS_fcntl}},
    {"device", {SYS_ioctl}},
    {"access", {SYS_access, SYS_faccessat}},
    {"pipe", {SYS_pipe2}},
    {"duplicate", {SYS_dup, SYS_dup2, SYS_dup3}},
    {"wait", {SYS_wait4}},
    {"exec", {SYS_execve}},
    {"poll", {SYS_poll}},
    {"nap", {SYS_clock_nanosleep, SYS_nanosleep}},
    {"limit", {SYS_prlimit64}},
    {"directory", {SYS_getcwd, SYS_chdir, SYS_fchdir}},
    {"random", {SYS_getrandom}},
    {"identity", {SYS_setresuid, SYS_setresgid, SYS_setuid, SYS_setgid, SYS_setgroups}},
    {"system", {SYS_uname, SYS_sethostname}},
    {"root", {SYS_chroot}},
    {"mount", {SYS_mount, SYS_umount2}},
    {"sync", {SYS_sync, SYS_fsync, SYS_fdatasync, SYS_syncfs}},
    {"handler", {SYS_rt_sigaction}},
    {"socket", {SYS_socket, SYS_connect}},
};

struct Fault {
    char text[64];
    const char* routine;
    unsigned first;
    bool stays;
    bool shortened;
    long result;
    bool met;
};

constexpr unsigned most_faults = 8;

Fault plan[most_faults];
unsigned planned = 0;
// By the index of the first row of the name.
unsigned counts[sizeof routines / sizeof *routines];
char report_path[4096];
volatile char selector = SYSCALL_DISPATCH_FILTER_ALLOW;

template <class... Arguments>
long call(long number, Arguments... arguments) {
    // Numbers and addresses alike are what a register takes.
    const long all[6] = {(long)arguments...};
    return shim_call(number, all[0], all[1], all[2], all[3], all[4], all[5]);
}

[[noreturn]] void stop(const char* why) {
    call(SYS_write, 2, "shim: ", 6);
    call(SYS_write, 2, why, strlen(why));
    call(SYS_write, 2, "\n", 1);
    call(SYS_exit_group, 125);
    __builtin_unreachable();
}

const Routine* find(long number) {
    for (const Routine& routine : routines) {
        for (const long known : routine.numbers) {
            if (known == number) return &routine;
        }
    }
    return nullptr;
}

// Counts one call; the entry that strikes it, or null.
const Fault* count_call(const char* name) {
    if (selector != SYSCALL_DISPATCH_FILTER_BLOCK) return nullptr;
    size_t at = 0;
    while (strcmp(routines[at].name, name) != 0) at++;
    const unsigned now = ++counts[at];
    for (unsigned i = 0; i < planned; i++) {
        Fault& fault = plan[i];
        if (strcmp(fault.routine, name) != 0 || now < fault.first || (now > fault.first && !fault.stays))
            continue;
        fault.met = true;
        return &fault;
    }
    return nullptr;
}

// Those of a process that never has many.
void report_descriptors(int report, bool at_exec) {
    for (int fd = 3; fd < 1024; fd++) {
        const long flags = call(SYS_fcntl, fd, F_GETFD);
        if (flags < 0 || fd == report || (at_exec && (flags & FD_CLOEXEC) != 0)) continue;
        char link[64];
        char name[256] = "?";
        char line[400];
        snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
        const long length = call(SYS_readlink, link, name, sizeof name - 1);
        if (length > 0) name[length] = 0;
        call(SYS_write, report, line, snprintf(line, sizeof line, "open %d %s\n", fd, name));
    }
}

void write_report(bool at_exec) {
    const int report = (int)call(SYS_open, report_path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (report < 0) return;
    char line[128];
    for (size_t i = 0; i < sizeof counts / sizeof *counts; i++) {
        if (counts[i] == 0) continue;
        call(SYS_write, report, line,
             snprintf(line, sizeof line, "calls %s %u\n", routines[i].name, counts[i]));
    }
    for (unsigned i = 0; i < planned; i++) {
        if (plan[i].met) call(SYS_write, report, line, snprintf(line, sizeof line, "met %s\n", plan[i].text));
    }
    report_descriptors(report, at_exec);
    call(SYS_close, report);
}

// The mask that counts is the one that comes back when the handler returns. SIGSYS stays out of it: blocked,
// it would end the process.
long change_mask(ucontext_t* context, const greg_t* regs) {
    uint64_t* mask = reinterpret_cast<uint64_t*>(&context->uc_sigmask);
    const uint64_t before = *mask;
    if (regs[REG_RSI] != 0) {
        const uint64_t given = *reinterpret_cast<const uint64_t*>(regs[REG_RSI]);
        if (regs[REG_RDI] == SIG_BLOCK) *mask |= given;
        if (regs[REG_RDI] == SIG_UNBLOCK) *mask &= ~given;
        if (regs[REG_RDI] == SIG_SETMASK) *mask = given;
        *mask &= ~(uint64_t{1} << (SIGSYS - 1));
    }
    if (regs[REG_RDX] != 0) *reinterpret_cast<uint64_t*>(regs[REG_RDX]) = before;
    return 0;
}

void shorten(Count count, greg_t* regs, iovec* single) {
    static constexpr int registers[] = {0, REG_RDX, REG_R10, REG_R8};
    if (count == Count::vector) {
        const iovec* vector = reinterpret_cast<const iovec*>(regs[REG_RSI]);
        *single = {vector->iov_base, vector->iov_len > 0 ? 1u : 0u};
        regs[REG_RSI] = reinterpret_cast<greg_t>(single);
        regs[REG_RDX] = 1;
    } else if (count != Count::none) {
        greg_t& bytes = regs[registers[static_cast<int>(count)]];
        if (bytes > 1) bytes = 1;
    }
}

void on_call(int, siginfo_t* info, void* raw) {
    ucontext_t* context = static_cast<ucontext_t*>(raw);
    greg_t* regs = context->uc_mcontext.gregs;
    const long number = info->si_syscall;
    greg_t& result = regs[REG_RAX];

    switch (number) {
    case SYS_rt_sigreturn: shim_return_from(regs[REG_RSP]);
    case SYS_rt_sigprocmask: result = change_mask(context, regs); return;
    case SYS_clone:
    case SYS_clone3:
    case SYS_vfork:
        // A new stack or a shared one cannot pass through here: the call is repeated unseen, and so is the rest.
        selector = SYSCALL_DISPATCH_FILTER_ALLOW;
        result = number;
        regs[REG_RIP] -= 2;
        return;
    case SYS_exit_group:
    case SYS_exit: write_report(false); break;
    default: break;
    }

    const Routine* routine = find(number);
    const Fault* fault = routine != nullptr ? count_call(routine->name) : nullptr;
    greg_t given[NGREG];
    memcpy(given, regs, sizeof given);
    iovec single;
    if (fault != nullptr && fault->shortened) {
        shorten(routine->count, given, &single);
    } else if (fault != nullptr) {
        // A close that fails has closed all the same.
        if (number == SYS_close) call(SYS_close, regs[REG_RDI]);
        // A break that cannot be moved is given as it is.
        result = number == SYS_brk ? call(SYS_brk, 0) : fault->result;
        return;
    }
    if (number == SYS_execve) write_report(true);
    result = call(number, given[REG_RDI], given[REG_RSI], given[REG_RDX], given[REG_R10], given[REG_R8],
                  given[REG_R9]);
}

void read_plan(const char* text) {
    while (*text != 0) {
        const size_t length = strcspn(text, " ");
        if (length > 0) {
            if (planned == most_faults) stop("too many faults");
            Fault& fault = plan[planned++];
            if (length >= sizeof fault.text) stop("a fault with too many words");
            memcpy(fault.text, text, length);
            char name[16] = "";
            char sign[2] = "";
            char what[32] = "";
            if (sscanf(fault.text, "%15[a-z]:%u%1[+:]", name, &fault.first, sign) != 3) stop("unknown fault");
            fault.stays = *sign == '+';
            strncpy(what, strrchr(fault.text, ':') + 1, sizeof what - 1);
            fault.shortened = strcmp(what, "short") == 0;
            fault.result = *what == '=' ? atol(what + 1) : -atol(what);
            for (const Routine& routine : routines) {
                if (strcmp(routine.name, name) == 0) fault.routine = routine.name;
            }
            if (fault.routine == nullptr) stop("unknown routine");
        }
        text += length;
        text += strspn(text, " ");
    }
}

struct KernelAction {
    void (*handler)(int, siginfo_t*, void*);
    unsigned long flags;
    void (*restorer)();
    uint64_t mask;
};

__attribute__((constructor)) void begin() {
    const char* faults = getenv("GARNEL_FAULTS");
    const char* path = getenv("GARNEL_FAULTS_REPORT");
    if (faults == nullptr || path == nullptr) return;
    read_plan(faults);
    snprintf(report_path, sizeof report_path, "%s", path);
    // Whatever is started from here on is none of ours, and "env" shows what it would show without us.
    for (const char* name : {"GARNEL_FAULTS", "GARNEL_FAULTS_REPORT", "LD_PRELOAD"}) unsetenv(name);

    constexpr unsigned long sa_restorer = 0x04000000;
    const KernelAction action{on_call, SA_SIGINFO | SA_NODEFER | sa_restorer, shim_restore, 0};
    if (call(SYS_rt_sigaction, SIGSYS, &action, nullptr, 8) != 0) stop("no handler");
    if (call(SYS_prctl, PR_SET_SYSCALL_USER_DISPATCH, PR_SYS_DISPATCH_ON, shim_gate_begin,
             shim_gate_end - shim_gate_begin, &selector) != 0) {
        stop("this kernel has no system call user dispatch");
    }
    selector = SYSCALL_DISPATCH_FILTER_BLOCK;
}

// Lets everything pass as long as it lives.
class Pause {
  public:
    Pause() : before_(selector) { selector = SYSCALL_DISPATCH_FILTER_ALLOW; }
    ~Pause() { selector = before_; }
    Pause(const Pause&) = delete;

  private:
    char before_;
};

bool fails(const char* routine) {
    const Fault* fault = count_call(routine);
    if (fault == nullptr) return false;
    errno = static_cast<int>(-fault->result);
    return true;
}

// Calls the C library's routine of this name, or fails as it fails.
template <class Result, class... Arguments>
Result* look_up(const char* name, Arguments... arguments) {
    if (fails("database")) return nullptr;
    const Pause pause;
    return reinterpret_cast<Result* (*)(Arguments...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

void open_or_close(const char* name) {
    const Pause pause;
    reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, name))();
}

}  // namespace

extern "C" {

#define LOOK_UP(result, routine, argument)     \
    result* routine(argument key) {            \
        return look_up<result>(#routine, key); \
    }
LOOK_UP(passwd, getpwnam, const char*)
LOOK_UP(passwd, getpwuid, uid_t)
LOOK_UP(group, getgrnam, const char*)
LOOK_UP(group, getgrgid, gid_t)
LOOK_UP(hostent, gethostbyname, const char*)

passwd* getpwent() {
    return look_up<passwd>("getpwent");
}

void setpwent() {
    open_or_close("setpwent");
}

void endpwent() {
    open_or_close("endpwent");
}

void* malloc(size_t size) {
    return fails("memory") ? nullptr : __libc_malloc(size);
}

void* calloc(size_t count, size_t size) {
    return fails("memory") ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* old, size_t size) {
    return fails("memory") ? nullptr : __libc_realloc(old, size);
}

// Children run free of faults.
pid_t _Fork() noexcept;
pid_t fork() noexcept {
    if (fails("fork")) return -1;
    const char before = selector;
    selector = SYSCALL_DISPATCH_FILTER_ALLOW;
    const pid_t child = _Fork();
    if (child != 0) selector = before;
    return child;
}

int clone(int (*run)(void*), void* stack, int flags, void* argument, ...) noexcept {
    if (fails("fork")) return -1;
    va_list more;
    va_start(more, argument);
    auto* const parent_id = va_arg(more, pid_t*);
    void* const storage = va_arg(more, void*);
    auto* const child_id = va_arg(more, pid_t*);
    va_end(more);
    const Pause pause;
    using Clone = int (*)(int (*)(void*), void*, int, void*, ...);
    return reinterpret_cast<Clone>(dlsym(RTLD_NEXT, "clone"))(run, stack, flags, argument, parent_id, storage,
                                                              child_id);
}
}
