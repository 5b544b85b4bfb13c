// Temporary files are made under new names only, and every name is possible.

#include "common/temporary.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <cerrno>

#include "tests/unit/helpers.h"

namespace {

TEST(Temporary, TakesEveryNewNameAndNoOther) {
    const TemporaryDirectory dir;
    const std::string prefix = dir.path() / "";
    std::filesystem::create_symlink("victim", prefix + "A");

    for (int letter = 1; letter < 62; letter++) {
        std::string name = prefix + "X";
        UniqueFd file = temporary::create_file(name.data());
        ASSERT_TRUE(file.valid());
        struct stat status;
        ASSERT_EQ(fstat(file.get(), &status), 0);
        EXPECT_EQ(status.st_mode, S_IFREG | 0600U);
        EXPECT_EQ(status.st_nlink, 1U);
        EXPECT_EQ(fcntl(file.get(), F_GETFD), FD_CLOEXEC);
    }
    std::string name = prefix + "X";
    EXPECT_FALSE(temporary::create_file(name.data()).valid());
    EXPECT_EQ(errno, EEXIST);
    EXPECT_FALSE(std::filesystem::exists(prefix + "victim"));
    EXPECT_EQ(std::filesystem::remove_all(dir.path()), 63U);

    char plain[] = "XXa";
    EXPECT_FALSE(temporary::create_file(plain).valid());
    EXPECT_EQ(errno, EINVAL);
}

}  // namespace
