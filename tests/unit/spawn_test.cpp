// Programs are found, started and waited for as they should be, with everything that a program gets from its parent.

#include "lib/spawn/spawn.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <tuple>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/fuzz/words.h"
#include "tests/unit/helpers.h"

namespace {

using fuzz::Arguments;
using fuzz::Words;

std::string text_of(char* text) {
    std::string copy = text != nullptr ? text : "(null)";
    free(text);
    return copy;
}

// A directory with odd things in it, which is the current one.
class Spawn : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(chdir(directory_.name()), 0);
        for (const char* name : {"plain", "first", "second", "first/tool", "first/only"}) mkdir(name, 0755);
        const std::tuple<const char*, mode_t, const char*> files[] = {
            {"plain/tool", 0644, "exit 1\n"},
            {"second/tool", 0755, "#!/bin/sh\nexit 7\n"},
            {"-tool", 0755, "exit $#\n"},
            {"second/nothing", 0755, "#!/nowhere/interpreter\n"},
        };
        for (const auto& [name, mode, text] : files) {
            std::ofstream(name) << text;
            ASSERT_EQ(chmod(name, mode), 0);
        }
    }
    void TearDown() override { ASSERT_EQ(chdir("/"), 0); }

    // Runs a program; what it prints is kept. The status, or -1 with failure_.
    int run(e_program program, const Words& words) {
        const Arguments arguments(words);
        int ends[2];
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        const e_descriptor descriptors[] = {{ends[1], STDOUT_FILENO}};
        program.arguments = arguments.argv;
        if (program.descriptors.empty()) program.descriptors = descriptors;
        const pid_t child = e_spawn(program, &failure_);
        close(ends[1]);
        output_.clear();
        char buffer[512];
        for (ssize_t size; (size = read(ends[0], buffer, sizeof buffer)) > 0;) {
            output_.append(buffer, static_cast<size_t>(size));
        }
        close(ends[0]);
        if (child < 0) return -1;
        EXPECT_TRUE(e_wait(child, &result_));
        return result_.status;
    }

    TemporaryDirectory directory_;
    e_failure failure_{};
    e_result result_{};
    std::string output_;
};

TEST_F(Spawn, FindsProgramsInOddPaths) {
    EXPECT_EQ(text_of(e_find("tool", "none:-tool/x:second//")), "second//tool");
    EXPECT_EQ(text_of(e_find("-tool", "none:")), "./-tool");
    for (const auto& [name, error] : {std::pair{"tool", EACCES}, {"-tool/x", ENOTDIR}, {"", ENOENT}}) {
        EXPECT_EQ(e_find(name, "plain:none"), nullptr);
        EXPECT_EQ(errno, error) << name;
    }
    // Paths at the limit of what the system takes, and beyond.
    for (size_t size : {PATH_MAX - 7, PATH_MAX - 6, PATH_MAX - 5, PATH_MAX - 1, PATH_MAX, 100000}) {
        const std::string path = std::string(size, '/') + ":second";
        EXPECT_EQ(text_of(e_find("tool", path.c_str())), "second/tool") << size;
        EXPECT_EQ(e_find(std::string(size, '/').c_str(), "second"), nullptr);
        EXPECT_EQ(errno, size < PATH_MAX ? EACCES : ENAMETOOLONG) << size;
    }
    e_search search;
    e_initsearch(&search, "tool", "second:plain:./second:first");
    EXPECT_STREQ(e_nextfound(&search), "second/tool");
    EXPECT_STREQ(e_nextfound(&search), "./second/tool");
    EXPECT_EQ(e_nextfound(&search), nullptr);
    EXPECT_EQ(e_nextfound(&search), nullptr);
}

TEST_F(Spawn, RunsWhatItFindsAndTellsWhyNot) {
    const Arguments odd({"PATH=plain:first:second:"}), here({"PATH="}), nothing({"PATH=first:plain"});
    EXPECT_EQ(run({.environment = odd.argv}, {"tool"}), 7);
    EXPECT_EQ(run({.environment = here.argv}, {"-tool", "a", "b c", ""}), 3);
    EXPECT_EQ(run({.file = "-tool", .environment = here.argv}, {}), 0);
    EXPECT_EQ(run({}, {"sh", "-c", "kill -9 $$"}), 128 + 9);
    EXPECT_EQ(result_.signal, 9);

    auto fails = [&](e_program program, const Words& words, e_step step, int error) {
        EXPECT_EQ(run(program, words), -1);
        EXPECT_EQ(failure_.step, step);
        EXPECT_EQ(failure_.error, error);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left";
    };
    fails({.environment = nothing.argv}, {"tool"}, e_step_program, EACCES);
    fails({.environment = odd.argv}, {"nothing"}, e_step_program, ENOENT);
    fails({}, {""}, e_step_program, ENOENT);
    fails({}, {}, e_step_start, EINVAL);
    fails({.root = "none"}, {"sh"}, e_step_root, geteuid() == 0 ? ENOENT : EPERM);
    fails({.directory = "none"}, {"sh"}, e_step_directory, ENOENT);
    const e_descriptor bad[] = {{STDIN_FILENO, 100}, {99, 98}};
    fails({.descriptors = bad}, {"sh"}, e_step_descriptors, EBADF);
    EXPECT_EQ(fcntl(100, F_GETFD), -1);
    const std::string long_text(size_t{1} << 18, 'x');
    fails({}, {"sh", "-c", long_text}, e_step_program, E2BIG);
}

volatile sig_atomic_t caught = 0;

// Two descriptors change places, one is closed, one stays where it is although it would be closed.
TEST_F(Spawn, GivesDescriptors) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(dup3(null, 50, O_CLOEXEC), 50);
    ASSERT_EQ(dup3(ends[1], 51, O_CLOEXEC), 51);
    const e_descriptor swapped[] = {{50, 51}, {51, 50}, {-1, STDIN_FILENO}, {ends[1], ends[1]}};
    const std::string script = "echo a >&51; echo b >&50; echo c >&" + std::to_string(ends[1]) +
                               "; [ -e /proc/self/fd/0 ] || echo d >&50";
    EXPECT_EQ(run({.descriptors = swapped}, {"bash", "-c", script}), 0);
    char buffer[16] = "";
    EXPECT_EQ(read(ends[0], buffer, sizeof buffer), 6);
    EXPECT_STREQ(buffer, "b\nc\nd\n");
    for (int fd : {ends[0], ends[1], null, 50, 51}) close(fd);
}

// Handlers go, what is ignored stays unless it is given back, and so do blocked signals. A child whose end is
// ignored has a status nevertheless, and goes on ignoring it.
TEST_F(Spawn, GivesSignals) {
    (void)signal(SIGUSR1, [](int) { caught = 1; });
    (void)signal(SIGUSR2, SIG_IGN);
    (void)signal(SIGCHLD, SIG_IGN);
    sigset_t blocked, none, defaults, now;
    for (sigset_t* set : {&blocked, &none, &defaults}) sigemptyset(set);
    sigaddset(&blocked, SIGWINCH);
    sigaddset(&defaults, SIGUSR2);
    sigprocmask(SIG_SETMASK, &blocked, nullptr);
    const Words show{"sed", "-nE", "s/^Sig(Blk|Ign|Cgt).*0([0-9a-f]{8})$/\\1 \\2/p", "/proc/self/status"};
    EXPECT_EQ(run({}, show), 0);
    EXPECT_EQ(output_, "Blk 08000000\nIgn 00010800\nCgt 00000000\n");
    EXPECT_EQ(run({.defaults = &defaults, .mask = &none}, show), 0);
    EXPECT_EQ(output_, "Blk 00000000\nIgn 00000000\nCgt 00000000\n");
    sigprocmask(SIG_SETMASK, &none, &now);
    EXPECT_TRUE(sigismember(&now, SIGWINCH) == 1 && sigismember(&now, SIGTERM) == 0);
    raise(SIGUSR1);
    EXPECT_EQ(caught, 1);
    for (int changed : {SIGUSR1, SIGUSR2, SIGCHLD}) (void)signal(changed, SIG_DFL);
}

TEST(SpawnEnvironment, OwnsWhatItMakes) {
    char given[] = "A=3", name[] = "B";
    e_environment environment;
    ASSERT_TRUE(e_env_put(&environment, given));
    for (const char* value : {"2", "new=1"}) ASSERT_TRUE(e_env_set(&environment, name, value));
    ASSERT_TRUE(e_env_set(&environment, "AA", "long"));
    EXPECT_STREQ(e_env_value(e_env_list(&environment), name), "new=1");
    ASSERT_TRUE(e_env_unset(&environment, name));
    EXPECT_EQ(e_env_value(e_env_list(&environment), name), nullptr);
    EXPECT_STREQ(e_env_list(&environment)[1], "AA=long");
    e_env_empty(&environment);
    EXPECT_EQ(*e_env_list(&environment), nullptr);
}

std::string escaped(const Words& words) {
    const Arguments arguments(words);
    return text_of(e_escape({arguments.argv, words.size()}));
}

TEST_F(Spawn, EscapedWordsComeOutOfAShellUnchanged) {
    std::string every;
    for (int byte = 1; byte < 256; byte++) every += static_cast<char>(byte);
    const Words words{"printf",       "%s|",       "",    "'", "a'b''", "-n",
                      "$HOME `x` \\", "plain/a.b", "A=1", "~", "#",     every};
    EXPECT_EQ(run({}, {"sh", "-c", escaped(words)}), 0);
    EXPECT_EQ(output_, "|'|a'b''|-n|$HOME `x` \\|plain/a.b|A=1|~|#|" + every + "|");
    EXPECT_EQ(escaped({"if", "if"}), "'if' if");
    EXPECT_EQ(escaped({}), "");
}

}  // namespace
