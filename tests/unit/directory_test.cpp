// The directory reader against real directories and a model of its orders. GARNEL_TEST_SEED repeats a run.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/directory.h"
#include "lib/containers/btree.h"
#include "lib/containers/container_deque.h"
#include "tests/unit/system_calls.h"

namespace {

namespace fs = std::filesystem;

class Directory : public testing::Test {
  protected:
    fs::path outer;
    fs::path dir;  // nobody else changes what ".." stands for here

    Directory() {
        std::string name = fs::temp_directory_path() / "garnel.XXXXXX";
        outer = mkdtemp(name.data());
        dir = outer / "dir";
        fs::create_directory(dir);
        chmod(outer.c_str(), 0755);
    }
    ~Directory() override { fs::remove_all(outer); }

    void make(const std::string& name, size_t size = 0, timespec time = {}) {
        std::ofstream(dir / name) << std::string(size, 'x');
        const timespec times[] = {time, time};
        ASSERT_EQ(utimensat(AT_FDCWD, (dir / name).c_str(), times, 0), 0) << name;
    }
};

std::vector<std::string> names_of(const DirectoryListing& listing) {
    std::vector<std::string> names;
    for (const DirectoryEntry& entry : listing) names.emplace_back(entry.name);
    return names;
}

std::vector<std::string> names_of(deque* raw) {
    std::vector<std::string> names;
    const auto records = Deque<gn_dirent>::adopt(raw);
    for (const gn_dirent& record : records) names.emplace_back(record.name);
    return names;
}

struct Known {
    std::string name;
    struct stat status;
};

bool precedes(int order, const Known& a, const Known& b) {
    auto key = [order](const Known& k) {
        const auto& time = k.status.st_mtim;
        return std::make_tuple(order == 2 ? time.tv_sec : 0, order == 2 ? time.tv_nsec : 0,
                               order == 3 ? k.status.st_size : 0, k.name);
    };
    return key(a) < key(b);
}

constexpr btree_predicate pairs[][2] = {
    {},
    {gn_direntsort_name_lt, gn_direntsort_name_eq},
    {gn_direntsort_date_lt, gn_direntsort_date_eq},
    {gn_direntsort_size_lt, gn_direntsort_size_eq},
};

TEST_F(Directory, OrdersFollowModel) {
    const char* fixed = getenv("GARNEL_TEST_SEED");
    const unsigned seed = fixed != nullptr ? unsigned(atol(fixed)) : std::random_device{}();
    std::cout << "GARNEL_TEST_SEED=" << seed << '\n';
    std::mt19937 random(seed);
    auto below = [&](unsigned limit) { return unsigned(random()) % limit; };

    // Few different sizes and times, so that ties are the rule; times on both sides of what fits into a
    // 64-bit number of nanoseconds; names that differ late, early, by length and by bytes above 127.
    const time_t seconds[] = {0, 1, 1700000000, -1, 10000000000, 20000000000, -10000000000};
    for (const std::string prefix : {"", "a common beginning-"}) {
        for (int i = 0; i < 400; i++) {
            std::string name = prefix;
            for (unsigned n = 1 + below(12); n > 0; n--) name += "ab\n\\\x80\xff .-"[below(9)];
            if (name.find_first_not_of('.') == std::string::npos) name += 'x';
            make(name, below(3), {seconds[below(std::size(seconds))], long(below(3))});
        }
        make(std::string(255, 'n'));
        fs::create_directory_symlink("/", dir / "link");

        std::vector<Known> known;
        for (const auto& entry : fs::directory_iterator(dir)) known.push_back({entry.path().filename(), {}});
        const size_t without_dots = known.size();
        known.push_back({".", {}});
        known.push_back({"..", {}});
        for (Known& k : known) ASSERT_EQ(lstat((dir / k.name).c_str(), &k.status), 0);

        const UniqueFd fd = open_directory(dir.c_str());
        DirectoryListing listing;
        for (int order = 1; order <= 3; order++) {
            for (bool dots : {true, false}) {
                std::vector<Known> model(known.begin(),
                                         known.begin() + long(dots ? known.size() : without_dots));
                std::sort(model.begin(), model.end(),
                          [&](const Known& a, const Known& b) { return precedes(order, a, b); });
                for (bool reverse : {false, true}) {
                    SCOPED_TRACE(testing::Message() << "order " << order << dots << reverse);
                    std::vector<std::string> expected;
                    for (const Known& k : model) expected.push_back(k.name);
                    if (reverse) std::reverse(expected.begin(), expected.end());
                    ASSERT_TRUE(listing.read(fd.get(), EntryOrder(order), reverse, dots));
                    EXPECT_EQ(names_of(listing), expected);
                    EXPECT_EQ(names_of(gn_readdir(dir.c_str(), order, reverse, dots)), expected);

                    btree* tree = btree_new(sizeof(gn_dirent), 0, pairs[order][0], pairs[order][1]);
                    for (const Known& k : known) {
                        gn_dirent record;
                        gn_stat_to_gn_dirent(&k.status, k.name.c_str(), &record);
                        if (!dots && k.name.find_first_not_of('.') == std::string::npos) continue;
                        ASSERT_TRUE(btree_insert(tree, &record, nullptr, false));
                    }
                    EXPECT_EQ(names_of(gn_readdir_flatten(tree, reverse)), expected);
                }
            }
        }

        // Unsorted: each once, in the same order every time.
        ASSERT_TRUE(listing.read(fd.get(), EntryOrder::unsorted, true, true));
        std::vector<std::string> unsorted = names_of(listing);
        EXPECT_EQ(names_of(gn_readdir(dir.c_str(), 0, false, true)), unsorted);
        std::sort(unsorted.begin(), unsorted.end());
        std::sort(known.begin(), known.end(), [](const Known& a, const Known& b) { return a.name < b.name; });
        EXPECT_TRUE(std::equal(unsorted.begin(), unsorted.end(), known.begin(), known.end(),
                               [](const std::string& name, const Known& k) { return name == k.name; }));
        fs::remove_all(dir);
        fs::create_directory(dir);
    }
}

TEST_F(Directory, RecordsHoldWhatFits) {
    struct stat plain {};
    plain.st_uid = 0xFFFFFFFE;
    gn_dirent record;
    gn_stat_to_gn_dirent(&plain, std::string(300, 'x').c_str(), &record);
    EXPECT_EQ(strlen(record.name), 255U);
    EXPECT_EQ(record.uid, -2);
}

TEST_F(Directory, WhatCannotBeRead) {
    make("file");
    fs::create_directories(dir / "empty");
    fs::create_directory_symlink("empty", dir / "link");
    const struct {
        std::string path;
        int sort;
        int error;
    } failures[] = {
        {dir, -1, EINVAL},
        {dir, 4, EINVAL},
        {dir / "file", 1, ENOTDIR},
        {std::string(5000, 'x'), 0, ENAMETOOLONG},
    };
    for (const auto& [path, sort, error] : failures) {
        errno = 0;
        EXPECT_EQ(gn_readdir(path.c_str(), sort, false, false), nullptr) << path;
        EXPECT_EQ(errno, error) << path;
    }
    EXPECT_FALSE(open_directory((dir / "link").c_str(), platform::Links::keep).valid());
    EXPECT_TRUE(open_directory((dir / "link").c_str()).valid());

    // An empty directory, also one that is removed while it is open, is no failure.
    DirectoryListing listing;
    UniqueFd empty = open_directory((dir / "empty").c_str());
    for (bool removed : {false, true}) {
        if (removed) fs::remove(dir / "empty");
        EXPECT_TRUE(listing.read(empty.get(), EntryOrder::date, true, false));
        EXPECT_TRUE(listing.empty());
    }
    // Entries that cannot be examined are left out: who may only read the directory sees none.
    chmod(dir.c_str(), 0444);
    ASSERT_EQ(seteuid(getuid() == 0 ? 65534 : getuid()), 0);
    deque* seen = gn_readdir(dir.c_str(), 1, false, false);
    ASSERT_EQ(seteuid(getuid()), 0);
    chmod(dir.c_str(), 0700);
    ASSERT_NE(seen, nullptr);
    EXPECT_TRUE(names_of(seen).empty());
}

TEST_F(Directory, DeepPathsAreOpened) {
    const std::string component(200, 'd');
    const UniqueFd start(open(".", O_RDONLY | O_CLOEXEC));
    std::string path = dir;
    ASSERT_EQ(chdir(dir.c_str()), 0);
    for (int i = 0; i < 60; i++) {
        ASSERT_EQ(mkdir(component.c_str(), 0700), 0);
        ASSERT_EQ(chdir(component.c_str()), 0);
        path += '/' + component;
    }
    std::ofstream("bottom");
    ASSERT_EQ(chdir(dir.c_str()), 0);
    const std::string relative = path.substr(dir.native().size() + 1);

    const std::vector<std::string> bottom{"bottom"};
    const std::string slashes(9000, '/');
    for (const std::string& deep : {path, relative, path + slashes, relative + slashes + '.'})
        EXPECT_EQ(names_of(gn_readdir(deep.c_str(), 1, false, false)), bottom);
    // Around the length from which on a path is too long for one call.
    for (size_t length = 4090; length < 4100; length++) {
        const std::string padded = '.' + std::string(length - 1 - component.size(), '/') + component;
        EXPECT_TRUE(open_directory(padded.c_str()).valid()) << length;
    }
    const struct {
        std::string path;
        int error;
    } failures[] = {{path + "/missing", ENOENT},
                    {path + "/bottom", ENOTDIR},
                    {path + '/' + std::string(5000, 'x'), ENAMETOOLONG}};
    for (const auto& failure : failures) {
        EXPECT_FALSE(open_directory(failure.path.c_str()).valid());
        EXPECT_EQ(errno, failure.error);
    }
    ASSERT_EQ(fchdir(start.get()), 0);
}

TEST_F(Directory, StatusWithoutStatx) {
    make("file", 7, {1600000000, 5});
    fs::create_symlink("missing", dir / "link");
    for (unsigned error : {unsigned{ENOSYS}, unsigned{EPERM}}) {
        const pid_t child = fork();
        if (child == 0) {
            if (!refuse_statx(error)) _exit(80);
            const auto records = Deque<gn_dirent>::adopt(gn_readdir(dir.c_str(), 1, false, false));
            _exit(records.size() == 2 && records[0].size == 7 && records[0].mtime.tv_nsec == 5 &&
                          records[0].btime.tv_sec == 0 && S_ISLNK(records[1].mode)
                      ? 0
                      : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFEXITED(status));
        if (WEXITSTATUS(status) == 80) GTEST_SKIP() << "this system has no system call filters";
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
}

}  // namespace
