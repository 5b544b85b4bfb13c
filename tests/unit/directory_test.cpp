// The directory reader against real directories and a model of its orders.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <tuple>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/directory.h"
#include "lib/containers/btree.h"
#include "lib/containers/container_deque.h"
#include "tests/unit/helpers.h"
#include "tests/unit/system_calls.h"

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class Directory : public testing::Test {
  protected:
    TemporaryDirectory outer;
    fs::path dir = outer.path() / "dir";  // nobody else changes what ".." stands for here

    Directory() {
        fs::create_directory(dir);
        chmod(outer.name(), 0755);
    }

    void make(const std::string& name, size_t size = 0, timespec time = {}) {
        std::ofstream(dir / name) << std::string(size, 'x');
        const timespec times[] = {time, time};
        ASSERT_EQ(utimensat(AT_FDCWD, (dir / name).c_str(), times, 0), 0) << name;
    }
};

template <typename Entries>
Names names_in(const Entries& entries) {
    Names names;
    for (const auto& entry : entries) names.emplace_back(entry.name);
    return names;
}

Names names_of(deque* records) {
    return names_in(Deque<gn_dirent>::adopt(records));
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
    std::mt19937_64 random = seeded_random();
    auto below = [&](unsigned limit) { return unsigned(random() % limit); };

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

        std::vector<Known> known = {{".", {}}, {"..", {}}};
        for (const auto& entry : fs::directory_iterator(dir)) known.push_back({entry.path().filename(), {}});
        for (Known& k : known) ASSERT_EQ(lstat((dir / k.name).c_str(), &k.status), 0);

        const UniqueFd fd = open_directory(dir.c_str());
        DirectoryListing listing;
        for (int way = 0; way < 12; way++) {
            const int order = way / 4 + 1;
            const bool dots = way % 4 >= 2, reverse = way % 2 == 1;
            SCOPED_TRACE(testing::Message() << "order " << order << dots << reverse);
            std::vector<Known> model(known.begin() + (dots ? 0 : 2), known.end());
            std::sort(model.begin(), model.end(),
                      [&](const Known& a, const Known& b) { return precedes(order, a, b); });
            if (reverse) std::reverse(model.begin(), model.end());
            const Names expected = names_in(model);
            ASSERT_TRUE(listing.read(fd.get(), EntryOrder(order), reverse, dots));
            EXPECT_EQ(names_in(listing), expected);
            EXPECT_EQ(names_of(gn_readdir(dir.c_str(), order, reverse, dots)), expected);

            btree* tree = btree_new(sizeof(gn_dirent), 0, pairs[order][0], pairs[order][1]);
            for (const Known& k : model) {
                gn_dirent record;
                gn_stat_to_gn_dirent(&k.status, k.name.c_str(), &record);
                ASSERT_TRUE(btree_insert(tree, &record, nullptr, false));
            }
            EXPECT_EQ(names_of(gn_readdir_flatten(tree, reverse)), expected);
        }

        // Unsorted: each once, in the same order every time.
        ASSERT_TRUE(listing.read(fd.get(), EntryOrder::unsorted, true, true));
        Names unsorted = names_in(listing), all = names_in(known);
        EXPECT_EQ(names_of(gn_readdir(dir.c_str(), 0, false, true)), unsorted);
        std::sort(unsorted.begin(), unsorted.end());
        std::sort(all.begin(), all.end());
        EXPECT_EQ(unsorted, all);
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
    const std::tuple<std::string, int, int> failures[] = {
        {dir, -1, EINVAL}, {dir, 4, EINVAL}, {dir / "file", 1, ENOTDIR}};
    for (const auto& [path, sort, error] : failures) {
        EXPECT_EQ(gn_readdir(path.c_str(), sort, false, false), nullptr) << path;
        EXPECT_EQ(errno, error) << path;
    }
    // Entries that cannot be examined are left out: who may only read the directory sees none.
    chmod(dir.c_str(), 0444);
    ASSERT_EQ(seteuid(getuid() == 0 ? 65534 : getuid()), 0);
    deque* seen = gn_readdir(dir.c_str(), 1, false, false);
    ASSERT_EQ(seteuid(getuid()), 0);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(names_of(seen), Names{});

    // An empty directory, also one that is removed while it is open, is no failure.
    DirectoryListing listing;
    const UniqueFd open = open_directory(dir.c_str());
    fs::remove_all(dir);
    EXPECT_TRUE(listing.read(open.get(), EntryOrder::date, true, false));
    EXPECT_TRUE(listing.empty());
}

TEST_F(Directory, DeepPathsAreOpened) {
    const std::string component(200, 'd');
    std::string path = dir;
    ASSERT_EQ(chdir(dir.c_str()), 0);
    UniqueFd at = open_directory(".");
    for (int i = 0; i < 60; i++) {
        ASSERT_EQ(mkdirat(at.get(), component.c_str(), 0700), 0);
        at = open_directory(at.get(), component.c_str(), platform::Links::keep);
        path += '/' + component;
    }
    // Around the length from which on a path is too long for one call; and those behind which nothing is left.
    for (size_t length : {4090, 4094, 4095, 4096, 4097, 9000}) {
        const std::string slashes(length - 1 - component.size(), '/');
        EXPECT_TRUE(open_directory(('.' + slashes + component).c_str()).valid()) << length;
        EXPECT_TRUE(open_directory((path + slashes).c_str()).valid()) << length;
    }
    EXPECT_FALSE(open_directory((path + "/missing").c_str()).valid());
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(open_directory((path + '/' + std::string(5000, 'x')).c_str()).valid());
    EXPECT_EQ(errno, ENAMETOOLONG);
    ASSERT_EQ(chdir("/"), 0);
}

TEST_F(Directory, StatusWithoutStatx) {
    make("file", 7, {1600000000, 5});
    fs::create_symlink("missing", dir / "link");
    for (unsigned error : {unsigned{ENOSYS}, unsigned{EPERM}}) {
        const int status = in_child([&] {
            if (!refuse_statx(error)) return 80;
            const auto records = Deque<gn_dirent>::adopt(gn_readdir(dir.c_str(), 1, false, false));
            return records.size() == 2 && records[0].size == 7 && records[0].mtime.tv_nsec == 5 &&
                           records[0].btime.tv_sec == 0 && S_ISLNK(records[1].mode)
                       ? 0
                       : 1;
        });
        if (status == 80) GTEST_SKIP() << "this system has no system call filters";
        EXPECT_EQ(status, 0);
    }
}

}  // namespace
