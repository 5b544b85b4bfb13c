#include "common/input.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

constexpr size_t MIB = size_t{1} << 20;

class InputTest : public testing::Test {
  protected:
    ~InputTest() override { fclose(file_); }

    void write(const std::string& text) {
        ASSERT_EQ(pwrite(fd_, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    }

    // Everything from the present place on, in steps of at most this size.
    static std::string rest(Input& in, size_t step) {
        std::string text;
        for (std::string_view part; !(part = in.look()).empty(); in.take(part.size())) {
            part = part.substr(0, step);
            text += part;
            EXPECT_TRUE(in.confirm());
        }
        return text;
    }

    FILE* file_ = tmpfile();
    int fd_ = fileno(file_);
    char buffer_[Input::buffer_size];
};

std::string random_text(size_t size) {
    std::mt19937 draw(1);
    std::string text(size, '\0');
    for (size_t place = 0; place < size; place += 1 + place / 1000) text[place] = static_cast<char>(draw());
    return text;
}

TEST_F(InputTest, DeliversTheRestOfAFileWhateverItsSizeAndWay) {
    // The last one is longer than what is mapped at once.
    for (const size_t size :
         {size_t{0}, size_t{1}, Input::buffer_size + 1, MIB - 1, MIB, 3 * MIB + 7, 65 * MIB}) {
        const std::string text = random_text(size);
        write(text);
        for (const size_t start : {size_t{4097}, 2 * MIB + 1}) {
            for (const Input::Access access : {Input::Access::read, Input::Access::map}) {
                lseek(fd_, static_cast<off_t>(start), SEEK_SET);
                Input in(fd_, buffer_, access);
                ASSERT_TRUE(rest(in, 100000) == text.substr(std::min(start, size))) << size << ' ' << start;
                EXPECT_EQ(in.error(), 0);
                // Whoever reads on finds the end.
                EXPECT_EQ(lseek(fd_, 0, SEEK_CUR), static_cast<off_t>(std::max(start, size)));
            }
        }
    }
}

TEST_F(InputTest, SurvivesAFileThatIsCutOffMeanwhile) {
    const std::string text = random_text(4 * MIB);
    write(text);
    Input in(fd_, buffer_, Input::Access::map);
    ASSERT_GT(in.look().size(), Input::buffer_size) << "was not mapped";
    in.take(100);
    ASSERT_EQ(ftruncate(fd_, 5000), 0);
    const std::string_view part = in.look();
    EXPECT_EQ(std::count(part.end() - 10, part.end(), '\0'), 10);
    EXPECT_FALSE(in.confirm());
    EXPECT_TRUE(rest(in, 1000) == text.substr(100, 4900));

    // Two at once, of which the one that is intact stays so.
    write(text);
    FILE* other_file = tmpfile();
    const int other_fd = fileno(other_file);
    ASSERT_EQ(pwrite(other_fd, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    char other_buffer[Input::buffer_size];
    lseek(fd_, 0, SEEK_SET);
    Input first(fd_, buffer_, Input::Access::map), second(other_fd, other_buffer, Input::Access::map);
    const std::string_view part1 = first.look(), part2 = second.look();
    ASSERT_EQ(ftruncate(fd_, 0), 0);
    EXPECT_FALSE(part1 == part2);
    EXPECT_FALSE(first.confirm());
    EXPECT_TRUE(second.confirm());
    EXPECT_TRUE(first.look().empty());
    EXPECT_TRUE(rest(second, MIB) == text);
    fclose(other_file);
}

TEST_F(InputTest, ReadsNoFurtherThanTheEnd) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "ab", 2), 2);
    Input from_pipe(ends[0], buffer_, Input::Access::map);
    EXPECT_EQ(from_pipe.look(), "ab");
    from_pipe.take(1);
    EXPECT_EQ(from_pipe.look(), "b");
    from_pipe.take(1);
    close(ends[1]);
    EXPECT_TRUE(from_pipe.look().empty());
    close(ends[0]);
    EXPECT_TRUE(from_pipe.look().empty());
    EXPECT_EQ(from_pipe.error(), 0) << "it was read behind its end";
}

}  // namespace
