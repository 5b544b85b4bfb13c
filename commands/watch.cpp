// watch: runs a command again and again and shows what it prints.
// Scripts rely on: without a terminal (or on one without a cursor), the output of each round is passed on as it is.
// The interval lies between the end of a round and the beginning of the next one. What -e and -g stopped at is left
// standing on the ordinary screen.

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <span>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include "app/tools.h"
#include "commands/watch_screen.h"
#include "common/cli.h"
#include "common/io.h"
#include "common/output.h"
#include "common/own.h"
#include "common/terminal.h"
#include "common/times.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"

namespace {

constexpr const char* usage[] = {
    "Usage: watch [OPTION]... COMMAND [ARG]...\n",
    "Run COMMAND (the words joined, by /bin/sh -c) again and again and show its output,\n",
    "cut to the window; without a terminal, all of it each time, without a title.\n",
    "\n",
    "    -n    wait SECONDS between the rounds (default: 2, at least: 0.1)\n",
    "    -t    no title\n",
    "    -d    mark what changed\n",
    "    -e    stop when COMMAND fails, with its status\n",
    "    -g    stop when the output changes\n",
    "    -x    run COMMAND without a shell\n",
};

struct Options {
    const char* seconds = "2";
    int interval = 2000;  // milliseconds
    bool title = true;
    bool differences = false;
    bool stop_at_failure = false;
    bool stop_at_change = false;
    bool direct = false;
};

constexpr int shortest_interval = 100;
constexpr int longest_seconds = 2'000'000;

// Digits, and a fraction behind a point.
bool parse_interval(const char* text, int* milliseconds) {
    if (text[strspn(text, "0123456789.")] != '\0' || strpbrk(text, "0123456789") == nullptr) return false;
    int64_t value = 0;
    for (; *text != '\0' && *text != '.'; text++) {
        value = value * 10 + (*text - '0');
        if (value > longest_seconds) return false;
    }
    value *= 1000;
    if (*text == '.') {
        text++;
        int unit = 100;
        for (; *text != '\0' && *text != '.'; text++, unit /= 10) value += int64_t{*text - '0'} * unit;
    }
    if (*text != '\0') return false;
    *milliseconds = static_cast<int>(std::max<int64_t>(value, shortest_interval));
    return true;
}

// ---- signals

// A handler only passes the signal's number on, to where it is waited for together with other things.
int signal_entry = -1;

void pass_on(int signal) {
    const int error = errno;
    const auto byte = static_cast<unsigned char>(signal);
    // The pipe is full only when there is more than enough to be done.
    (void)!write(signal_entry, &byte, 1);
    errno = error;
}

void handle(int signal) {
    struct sigaction action {};
    action.sa_handler = pass_on;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

// Those that end this process, or stop it: the terminal must be put back first.
constexpr int handled_signals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP, SIGWINCH};

class Signals {
  public:
    Signals() = default;
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    // From here on they are caught. False with errno.
    [[nodiscard]] bool start() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return false;
        exit_ = UniqueFd(ends[0]);
        signal_entry = ends[1];  // for the rest of the process: a signal may come at any time
        for (const int signal : handled_signals) {
            struct sigaction action {};
            sigaction(signal, nullptr, &action);
            if (action.sa_handler != SIG_IGN) handle(signal);
        }
        return true;
    }

    // Waits until there is something to read from fd (which may be -1), or until the time is over (-1: never).
    // Returns the number of a signal that came instead, otherwise 0.
    [[nodiscard]] int wait(int fd, int milliseconds) const {
        pollfd events[] = {{exit_.get(), POLLIN, 0}, {fd, POLLIN, 0}};
        // An interruption is a signal: it can be read now.
        const int ready = poll(events, 2, milliseconds);
        unsigned char signal = 0;
        if (ready == 0 || read(exit_.get(), &signal, 1) != 1) return 0;
        return signal;
    }

  private:
    UniqueFd exit_;
};

// ---- rounds

class Watch {
  public:
    Watch(const Options& opt, char* const* arguments, const char* command)
        : opt_(opt), arguments_(arguments), command_(command) {}

    // Returns the status.
    [[nodiscard]] int run();

  private:
    bool start_round(pid_t* child, UniqueFd* from);
    bool run_round();
    bool take(std::string_view text);
    bool attend(int signal);
    bool prepare_screen();
    void enter();
    void leave();
    void draw();
    void stop_for_a_while();
    void fail(const char* what, int error, int status) {
        failed_ = what;
        error_ = error;
        status_ = status;
    }

    const Options& opt_;
    char* const* arguments_;
    const char* command_;  // as in the title
    bool on_terminal_ = false;
    Signals signals_;
    Screen screens_[2];
    Screen* screen_ = &screens_[0];
    Screen* before_ = &screens_[1];
    bool comparable_ = false;  // the screen before was of the same size
    bool again_ = false;       // the window is another than at the beginning of the round
    int fatal_ = 0;            // the signal that ends it all
    int status_ = 0;
    const char* failed_ =
        nullptr;     // what could not be done, for a message when the terminal is put back, and
    int error_ = 0;  // why
    bool titled_ = false;
    uint64_t hash_ = 0;
};

// On the other screen, so that this one comes back as it was. Wrapping is off: a character that is wider than it is
// taken for must not start a new line.
void Watch::enter() {
    output::write("\033[?1049h\033[?25l\033[?7l\033[2J");
    output::flush();
}

void Watch::leave() {
    output::write("\033[?7h\033[?25h\033[?1049l");
    output::flush();
}

void Watch::stop_for_a_while() {
    leave();
    signal(SIGTSTP, SIG_DFL);
    raise(SIGTSTP);
    handle(SIGTSTP);
    enter();
    again_ = true;
}

// False when the signal ends it all.
bool Watch::attend(int signal) {
    if (signal == SIGWINCH) {
        again_ = true;
    } else if (signal == SIGTSTP) {
        stop_for_a_while();
    } else if (signal != 0) {
        fatal_ = signal;
    }
    return fatal_ == 0;
}

bool Watch::prepare_screen() {
    // Windows beyond this are a mistake that would cost a lot of memory.
    constexpr unsigned largest = 1000;
    unsigned columns, rows;
    garnel_getwinsize(&columns, &rows);
    columns = std::min(columns, largest);
    rows = std::min(rows, largest);
    titled_ = opt_.title && rows > 2;
    if (!titled_) return screen_->resize(columns, rows);
    char title[64];
    tm now;
    const time_t seconds = time(nullptr);
    if (localtime_wrap(&seconds, &now) != 0) now = {};
    snprintf(title, sizeof title, "Every %.20ss, %02d:%02d:%02d: ", opt_.seconds, now.tm_hour, now.tm_min,
             now.tm_sec);
    Screen line;
    if (!line.resize(columns, 1) || !screen_->resize(columns, rows - 2)) return false;
    line.put(title);
    line.put(command_);
    line.end();
    output::write("\033[H");
    line.draw(nullptr);
    output::write("\r\n\033[K");
    return true;
}

// Shows the screen when a round is over. The title has been drawn at its beginning.
void Watch::draw() {
    output::write(titled_ ? "\033[3H" : "\033[H");
    screen_->end();
    screen_->draw(opt_.differences && comparable_ ? before_ : nullptr);
    output::flush();
    comparable_ = true;
}

bool Watch::start_round(pid_t* child, UniqueFd* from) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        fail(command_, errno, 1);
        return false;
    }
    *from = UniqueFd(ends[0]);
    const UniqueFd to(ends[1]);
    const e_descriptor descriptors[] = {{to.get(), STDOUT_FILENO}, {to.get(), STDERR_FILENO}};
    const e_program program{.arguments = arguments_, .environment = environ, .descriptors = descriptors};
    e_failure failure;
    *child = e_spawn(program, &failure);
    if (*child >= 0) return true;
    fail(arguments_[0], failure.error, failure.step == e_step_program ? e_failure_status(failure.error) : 1);
    return false;
}

// FNV-1a: what counts is only whether two outputs are the same. False when it could not be passed on.
bool Watch::take(std::string_view text) {
    for (const char byte : text) hash_ = (hash_ ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    if (on_terminal_) {
        screen_->put(text);
        return true;
    }
    output::write(text);
    output::flush();
    return !output::failed();
}

// False when it could not be started, passed on or finished.
bool Watch::run_round() {
    pid_t child;
    UniqueFd from;
    if (!start_round(&child, &from)) return false;
    status_ = 0;
    hash_ = 0xcbf29ce484222325;
    bool good = true;
    for (;;) {
        if (!attend(signals_.wait(from.get(), -1))) break;
        pollfd event{from.get(), POLLIN, 0};
        const int ready = poll(&event, 1, 0);
        if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
        char buffer[8192];
        const ptrdiff_t got = read_some(from.get(), buffer, sizeof buffer);
        if (got <= 0) break;
        good = take({buffer, static_cast<size_t>(got)});
        if (!good) break;
    }
    // Only now and then is it still running after it closed its output. A signal must not have to wait for that.
    siginfo_t ended{};
    while (good && fatal_ == 0 &&
           waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0)
        attend(signals_.wait(-1, 20));
    if (!good || fatal_ != 0) {
        kill(child, fatal_ != 0 ? fatal_ : SIGPIPE);
        return false;
    }
    e_result result;
    status_ = e_wait(child, &result) ? result.status : 1;
    return true;
}

int Watch::run() {
    const char* terminal = getenv("TERM");
    on_terminal_ = isatty(STDOUT_FILENO) != 0 && terminal != nullptr && terminal[0] != '\0' &&
                   strcmp(terminal, "dumb") != 0;
    if (on_terminal_) {
        if (!signals_.start()) return cli::fail("watch: %s\n", gn_strerror(errno));
        enter();
    }
    bool stopped = false;
    uint64_t first_hash = 0;
    for (bool first = true; !stopped; first = false) {
        if (on_terminal_) {
            std::swap(screen_, before_);
            if (!prepare_screen()) {
                fail(command_, ENOMEM, 1);
                break;
            }
        }
        if (!run_round()) break;
        if (on_terminal_ && !again_) draw();
        // A terminal may go without a word to whoever ignores hang-ups.
        if (output::failed()) break;
        if (first) first_hash = hash_;
        const bool failed = opt_.stop_at_failure && status_ != 0;
        stopped = failed || (opt_.stop_at_change && hash_ != first_hash);
        if (stopped && !failed) status_ = 0;
        if (stopped) break;
        if (!again_ && !attend(signals_.wait(-1, opt_.interval))) break;
        if (again_) comparable_ = false;
        again_ = false;
    }
    if (on_terminal_) leave();
    if (on_terminal_ && stopped) screen_->print();
    if (failed_ != nullptr) cli::error("watch: %s: %s\n", failed_, gn_strerror(error_));
    if (fatal_ != 0) {
        output::flush();
        signal(fatal_, SIG_DFL);
        raise(fatal_);
        return 128 + fatal_;
    }
    return output::finish("watch", status_);
}

// New: the words with blanks between them. Null without memory.
char* join(std::span<char* const> words) {
    size_t size = 1;
    for (const char* word : words) size += strlen(word) + 1;
    auto* text = static_cast<char*>(malloc(size));
    if (text == nullptr) return nullptr;
    char* end = text;
    for (const char* word : words) {
        if (end != text) *end++ = ' ';
        end = stpcpy(end, word);
    }
    *end = '\0';
    return text;
}

}  // namespace

int gn_watch(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'n': {
            const char* seconds = e_opt_getstr(&state);
            if (seconds == nullptr || !parse_interval(seconds, &opt.interval))
                return cli::fail("watch: %s: invalid interval\n", seconds != nullptr ? seconds : "-n");
            opt.seconds = seconds;
            break;
        }
        case 't': opt.title = false; break;
        case 'd': opt.differences = true; break;
        case 'e': opt.stop_at_failure = true; break;
        case 'g': opt.stop_at_change = true; break;
        case 'x': opt.direct = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "watch: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("watch: missing operand\n");
    const CString command(join({argv, static_cast<size_t>(argc)}));
    if (!command) return cli::fail("watch: %s\n", gn_strerror(ENOMEM));
    char shell[] = "/bin/sh";
    char option[] = "-c";
    char* const by_shell[] = {shell, option, command.get(), nullptr};
    Watch watch(opt, opt.direct ? argv : by_shell, command.get());
    return watch.run();
}
