// The tree walker in real directories, also while others move and replace what it stands in.

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/paths.h"
#include "common/tree_walk.h"
#include "tests/unit/helpers.h"

namespace {

namespace fs = std::filesystem;

class Tree : public testing::Test {
  protected:
    TemporaryDirectory top;
    fs::path dir = top.path();

    void make_file(const std::string& name) { std::ofstream file(dir / name); }
};

TEST(PathStack, FollowsJoinpath) {
    std::mt19937_64 random = seeded_random();
    const char* names[] = {"a", "bc", "\\d", "\\", "e\\", "", "/", "long name", "n\nl"};
    PathStack path;
    std::vector<std::string> model;
    for (int step = 0; step < 5000; step++) {
        if (random() % 5 < 2 && !model.empty()) {
            path.pop();
            model.pop_back();
        } else {
            const char* name = names[random() % std::size(names)];
            ASSERT_TRUE(path.push(name));
            model.emplace_back(model.empty() ? name : CString(gn_joinpath(model.back().c_str(), name)).get());
        }
        ASSERT_EQ(path.text(), model.empty() ? "" : model.back()) << "step " << step;
    }
}

// What is moved away with the walk in it is walked to its end, and so is what it was moved out of, unless
// that was moved as well; a link in an old place is no way back.
TEST_F(Tree, MovedWhileWalked) {
    constexpr size_t depth = 60, inner_move = 30, outer_move = 10;
    std::vector<fs::path> at{dir};
    while (at.size() <= depth) {
        at.push_back(at.back() / "d");
        fs::create_directory(at.back());
        std::ofstream(at.back() / "f");
    }
    for (bool move_outer : {false, true}) {
        SCOPED_TRACE(move_outer);
        TreeWalk walk(EntryOrder::name);
        ASSERT_TRUE(walk.enter(WalkEntry::operand(dir.c_str()), Links::keep));
        WalkEntry entry;
        while (walk.depth() <= depth) ASSERT_TRUE(walk.next(&entry) && walk.enter(entry, Links::keep));
        auto move = [&](size_t level, const char* name) {
            fs::rename(at[level], dir / name);
            fs::create_directory_symlink("/", at[level]);
        };
        move(inner_move, "inner");
        if (move_outer) move(outer_move, "outer");

        size_t lost = 0;
        while (walk.depth() > 1) {
            ASSERT_TRUE(walk.next(&entry));
            EXPECT_STREQ(entry.name, "f");
            EXPECT_EQ(entry.path, at[walk.depth() - 1] / "f");
            EXPECT_FALSE(walk.next(&entry));
            if (entry.dir < 0) {
                lost++;
                EXPECT_EQ(walk.depth() - 1, inner_move - lost);
            } else {
                struct stat status;
                EXPECT_EQ(fstatat(entry.dir, "f", &status, 0), 0);
                EXPECT_EQ(status.st_ino, entry.status->ino);
            }
            entry = walk.leave();
            EXPECT_STREQ(entry.name, "d");
            EXPECT_EQ(entry.path, at[walk.depth()]);
        }
        EXPECT_EQ(lost, move_outer ? inner_move - outer_move : 0);

        if (move_outer) break;
        fs::remove(at[inner_move]);
        fs::rename(dir / "inner", at[inner_move]);
    }
}

TEST_F(Tree, LinksAreEnteredOnRequestOnly) {
    fs::create_directories(dir / "a");
    make_file("a/f");
    fs::create_directory_symlink("a", dir / "link");
    fs::create_symlink("a/f", dir / "to-file");
    TreeWalk walk(EntryOrder::name);
    EXPECT_FALSE(walk.enter(WalkEntry::operand((dir / "link").c_str()), Links::keep));
    EXPECT_FALSE(walk.enter(WalkEntry::operand((dir / "nothing").c_str()), Links::keep));
    ASSERT_TRUE(walk.enter(WalkEntry::operand(dir.c_str()), Links::keep));

    // A link that takes a directory's place after it was examined is refused even where links are followed.
    WalkEntry entry;
    ASSERT_TRUE(walk.next(&entry));
    fs::rename(dir / "a", dir / "b");
    fs::create_directory_symlink("b", dir / "a");
    EXPECT_FALSE(walk.enter(entry, Links::follow));
    fs::remove(dir / "a");
    fs::rename(dir / "b", dir / "a");

    // A link is, on request, under its own path; one to a file never.
    ASSERT_TRUE(walk.next(&entry));
    EXPECT_FALSE(walk.enter(entry, Links::keep));
    ASSERT_TRUE(walk.enter(entry, Links::follow) && walk.next(&entry));
    EXPECT_EQ(entry.path, dir / "link/f");
    walk.leave();
    ASSERT_TRUE(walk.next(&entry));
    EXPECT_FALSE(walk.enter(entry, Links::follow));
    EXPECT_TRUE(walk.at_end());
}

// A directory that may be read but not searched holds nothing that can be examined, whatever it says of
// types.
TEST_F(Tree, TypesAlone) {
    fs::create_directory(dir / "d");
    make_file("d/f");
    make_file("d/g");
    ASSERT_EQ(mkfifo((dir / "d/p").c_str(), 0600), 0);
    auto types = [&] {
        std::string letters;
        TreeWalk walk(EntryOrder::name, false, EntryDetail::type);
        EXPECT_TRUE(walk.enter(WalkEntry::operand((dir / "d").c_str()), Links::keep));
        for (WalkEntry entry; walk.next(&entry);) letters += S_ISFIFO(entry.status->mode) ? 'p' : '-';
        return letters;
    };
    EXPECT_EQ(types(), "--p");

    chmod(dir.c_str(), 0755);
    chmod((dir / "d").c_str(), 0444);
    const uid_t user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    EXPECT_EQ(types(), "");
    ASSERT_EQ(seteuid(user), 0);
    chmod((dir / "d").c_str(), 0755);
}

}  // namespace
