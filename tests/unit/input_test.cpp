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

// Of two, the one that is intact stays so.
TEST_F(InputTest, SurvivesAFileThatIsCutOffMeanwhile) {
    const std::string text = random_text(4 * MIB);
    write(text);
    FILE* const other_file = tmpfile();
    ASSERT_EQ(fwrite(text.data(), 1, text.size(), other_file), text.size());
    rewind(other_file);
    char other_buffer[Input::buffer_size];
    Input cut_off(fd_, buffer_, Input::Access::map),
        intact(fileno(other_file), other_buffer, Input::Access::map);
    ASSERT_GT(cut_off.look().size(), Input::buffer_size) << "was not mapped";
    cut_off.take(100);
    ASSERT_EQ(intact.look(), text);
    ASSERT_EQ(ftruncate(fd_, 5000), 0);
    const std::string_view part = cut_off.look();
    EXPECT_EQ(std::count(part.end() - 10, part.end(), '\0'), 10);
    EXPECT_FALSE(cut_off.confirm());
    EXPECT_TRUE(rest(cut_off, 1000) == text.substr(100, 4900));
    EXPECT_TRUE(intact.confirm());
    EXPECT_TRUE(rest(intact, MIB) == text);
    fclose(other_file);
}

TEST_F(InputTest, ReadsNoFurtherThanTheEnd) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "ab", 2), 2);
    close(ends[1]);
    Input from_pipe(ends[0], buffer_, Input::Access::map);
    EXPECT_EQ(rest(from_pipe, 1), "ab");
    close(ends[0]);
    EXPECT_TRUE(from_pipe.look().empty());
    EXPECT_EQ(from_pipe.error(), 0) << "it was read behind its end";
}

}  // namespace
