// The mount table in its corners, each in a mount namespace of its own.

#include "common/mounts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <set>
#include <vector>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "lib/containers/deque.h"
#include "platform/mounts.h"
#include "tests/unit/helpers.h"
#include "tests/unit/system_calls.h"

namespace {

void mount_tmpfs(const std::string& path, const char* source = "none") {
    ASSERT_EQ(mount(source, path.c_str(), "tmpfs", 0, nullptr), 0) << path << ": " << strerror(errno);
}

// Runs a body in another process, in an empty directory of a new namespace.
class Mounts : public testing::Test {
  protected:
    void SetUp() override {
        if (run([] {}) != 0) GTEST_SKIP() << "nothing can be mounted here";
    }

    template <class Body>
    int run(Body body) {
        return in_child([&] {
            if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
                mount("base", dir_.name(), "tmpfs", 0, nullptr) != 0 || chdir(dir_.name()) != 0)
                return 1;
            body();
            return HasFailure() ? 1 : 0;
        });
    }
    template <class Body>
    void in_namespace(Body body) {
        EXPECT_EQ(run(body), 0) << "see above, or a crash";
    }

    std::string path(const std::string& name) const { return dir_.path() / name; }

    // The mount point that holds a path.
    static std::string holder(const std::string& name) {
        FileSystem record;
        char found[4096];
        return statfsmnt(name.c_str(), &record, found, sizeof found) != nullptr ? found : strerror(errno);
    }

    TemporaryDirectory dir_;
};

TEST_F(Mounts, ListIsSorted) {
    in_namespace([&] {
        for (const char* name : {"c", "a", "a/x", "a-x", "\xff"}) {
            mkdir(name, 0755);
            mount_tmpfs(name);
        }
        deque* list = gn_mntlist();
        ASSERT_NE(list, nullptr);
        std::vector<std::string> listed;
        for (size_t i = 0; i < list->count; i++) listed.emplace_back(*static_cast<char**>(deque_at(list, i)));
        EXPECT_TRUE(std::is_sorted(listed.begin(), listed.end()));
        EXPECT_EQ(gn_free_mntlist(list), 0);
    });
}

std::set<std::string> mounts_of(uint32_t handle) {
    std::set<std::string> seen;
    char buffer[4096];
    while (e_readmnt(handle, buffer, sizeof buffer) != nullptr) seen.insert(buffer);
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(e_readmnt(handle, buffer, sizeof buffer), nullptr);
    return seen;
}

TEST_F(Mounts, IterationsStandAlone) {
    in_namespace([&] {
        const uint32_t first = e_openmnt();
        mkdir("late", 0755);
        mount_tmpfs("late");
        const uint32_t second = e_openmnt();
        ASSERT_TRUE(first != 0 && second != 0 && first != second);

        // Each shows the moment at which it was opened. What does not fit is not lost.
        char byte;
        EXPECT_EQ(e_readmnt(first, &byte, 1), nullptr);
        EXPECT_EQ(errno, ERANGE);
        std::set<std::string> after = mounts_of(second), before = mounts_of(first);
        EXPECT_EQ(after.erase(path("late")), 1U);
        EXPECT_EQ(before, after);

        // An iteration from before the mount does not keep it from being found.
        e_closemnt(second);
        EXPECT_EQ(holder("late"), path("late"));
        e_closemnt(first);
        e_closemnt(first);
        EXPECT_EQ(e_readmnt(first, &byte, 1), nullptr);
        EXPECT_EQ(errno, EBADF);
    });
}

TEST_F(Mounts, HolderIsFoundWithAndWithoutStatx) {
    for (const bool statx : {true, false}) {
        in_namespace([&] {
            ASSERT_TRUE(statx || refuse_statx(ENOSYS));
            for (const char* name : {"low", "bound", "base"}) mkdir(name, 0755);
            mount_tmpfs("low", "low");
            mkdir("low/in", 0755);
            ASSERT_EQ(mount("low/in", "bound", nullptr, MS_BIND, nullptr), 0);
            const int covered = open("low/in", O_RDONLY | O_DIRECTORY);
            mount_tmpfs(path("low"), "high");
            EXPECT_EQ(holder("base"), dir_.path());
            EXPECT_EQ(holder("low"), path("low"));
            EXPECT_EQ(holder("low/in"), strerror(ENOENT));

            // The id tells file systems apart, not mounts.
            FileSystem low, high, bound, below;
            char name[4096];
            ASSERT_NE(statfsmnt("low", &high, name, sizeof name), nullptr);
            ASSERT_NE(statfsmnt("bound", &bound, name, sizeof name), nullptr);
            EXPECT_EQ(name, path("bound"));
            ASSERT_EQ(fchdir(covered), 0);
            ASSERT_NE(statfsmnt(".", &low, name, sizeof name), nullptr);
            EXPECT_EQ(name, path("low"));
            EXPECT_STREQ(low.device_name, "low");
            EXPECT_STREQ(high.device_name, "high");
            ASSERT_NE(platform::holding_mount(".", &below, name, sizeof name), nullptr);
            EXPECT_TRUE(low.id == bound.id && low.id == below.id && low.id != high.id);
            EXPECT_EQ(below.blocks, 0U);
        });
    }
}

TEST_F(Mounts, ChangedRootAndDetachedMounts) {
    in_namespace([&] {
        for (const char* name : {"root", "root/proc", "root/in", "gone"}) mkdir(name, 0755);
        ASSERT_EQ(mount("proc", "root/proc", "proc", 0, nullptr), 0);
        mount_tmpfs("root/in");
        mount_tmpfs("gone");
        const int gone = open("gone", O_RDONLY | O_DIRECTORY);
        ASSERT_EQ(umount2("gone", MNT_DETACH), 0);
        ASSERT_EQ(chroot("root"), 0);
        ASSERT_EQ(chdir("/"), 0);

        // The mount that holds the root directory is not in the table.
        EXPECT_EQ(holder("in"), "/in");
        EXPECT_EQ(holder("."), "/");
        EXPECT_EQ(holder("proc/.."), "/");
        // A detached mount is nowhere.
        ASSERT_EQ(fchdir(gone), 0);
        EXPECT_EQ(holder("."), strerror(ENOENT));
    });
}

}  // namespace
