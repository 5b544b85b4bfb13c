// The shared routines: rules as tables, fast paths against the obvious loops.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/bytes.h"
#include "common/decimal_counter.h"
#include "common/error_text.h"
#include "common/io.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/sizes.h"
#include "common/text.h"
#include "common/times.h"
#include "lib/containers/vector.h"
#include "platform/platform.h"
#include "tests/fuzz/words.h"
#include "tests/unit/helpers.h"

namespace {

// Takes over a text that a routine returned as new.
std::string take(char* text) {
    CString owner(text);
    return owner ? owner.get() : "(null)";
}

TEST(Common, Paths) {
    const std::array<const char*, 3> joined[] = {{"dir", "file", "dir/file"},
                                                 {"dir/", "file", "dir/file"},
                                                 {"d\\", "file", "d\\file"},
                                                 {"dir", "\\f", "\\f"},
                                                 {"", "file", "file"},
                                                 {"dir", "", "dir/"},
                                                 {"/", "", "/"},
                                                 {"", "", ""}};
    for (auto [dir, name, path] : joined) EXPECT_EQ(take(gn_joinpath(dir, name)), path);
    const std::array<const char*, 3> substituted[] = {
        {"a/b/link", "t", "a/b/t"},      {"/link", "t", "/t"},    {"link", "t", "t"}, {"a\\link", "t", "t"},
        {"a/b\\link", "../t", "a/../t"}, {"a/link", "\\t", "\\t"}};
    for (auto [link, target, path] : substituted) EXPECT_EQ(take(gn_substlink(link, target)), path);
    char mixed[] = "\\a\\\\b/c\\";
    gn_normalize_separators(mixed);
    EXPECT_STREQ(mixed, "/a//b/c/");
}

TEST(Common, Texts) {
    wchar_t* wide = gn_towcs("abc");
    EXPECT_EQ(std::wstring(wide), L"abc");
    free(wide);

    // The sanitizer tells whether all were freed.
    vector* texts = vector_new(sizeof(char*), 1);
    for (const char* text : {"a", "b", "c"}) {
        char* copy = strdup(text);
        ASSERT_EQ(vector_pushback(texts, &copy), 0);
    }
    gn_vector_release_charptr(texts);

    for (int value = 0; value < 16; value++) EXPECT_EQ(gn_hexcharval(gn_hexchar(value)), value);
    EXPECT_EQ(gn_hexcharval('G'), 0);
    EXPECT_EQ(gn_hexchar(16), '0');
    EXPECT_EQ(gn_hexchar(0x10f), 'f');
}

std::string parsed(const char* text, bool dd_units) {
    CString copy(strdup(text));
    constexpr uint64_t untouched = 4711;
    uint64_t value = untouched;
    if (gn_parse_size(copy.get(), &value, dd_units)) return std::to_string(value);
    return value == untouched ? "bad" : "bad, but written";
}

std::string printed(int width, uint64_t size) {
    return fuzz::printed([&] { gn_printsize(width, size); });
}

TEST(Common, Sizes) {
    const std::array<const char*, 3> rows[] = {
        {"", "0", "0"},        {"0x1F", "31", "31"},  {"2kb", "2000", "2000"}, {"7c", "bad", "7"},
        {"3b", "bad", "1536"}, {"3bB", "bad", "bad"}, {"1x", "bad", "bad"}};
    for (auto [text, value, with_dd_units] : rows) {
        EXPECT_EQ(parsed(text, false), value) << text;
        EXPECT_EQ(parsed(text, true), with_dd_units) << text;
    }
    EXPECT_EQ(printed(4, 1536) + printed(4, 10239999) + printed(4, 10240000), "   1k9999k   9M");
    EXPECT_EQ(printed(1, UINT64_MAX) + printed(20, UINT64_MAX) + printed(0, 5),
              "16383P   18014398509481983k??");
}

TEST(Common, WholeReadsAndWrites) {
    std::string sent(300000, '\0'), got(sent.size() + 10, '\0');  // more than a pipe holds
    for (size_t i = 0; i < sent.size(); i++) sent[i] = static_cast<char>(i * 7 / 5);
    bool eof = true;
    for (int flags : {0, O_NONBLOCK}) {
        int ends[2];
        ASSERT_EQ(pipe2(ends, flags), 0);
        const UniqueFd from(ends[0]);
        std::thread writer([&] {
            const UniqueFd to(ends[1]);
            EXPECT_EQ(gn_full_write(to.get(), sent.data(), 3), 3U);
            usleep(20000);
            EXPECT_EQ(gn_full_write(to.get(), sent.data() + 3, sent.size() - 3), sent.size() - 3);
        });
        EXPECT_EQ(gn_full_read(from.get(), got.data(), 10, &eof), 10U) << "waits for the second piece";
        EXPECT_FALSE(eof);
        EXPECT_EQ(gn_full_read(from.get(), got.data() + 10, sent.size(), &eof), sent.size() - 10);
        EXPECT_TRUE(eof);
        writer.join();
        EXPECT_TRUE(got.starts_with(sent));
    }
    char byte = 0;
    EXPECT_EQ(gn_full_read(-1, &byte, 0, &eof), 0U) << "nothing to do is no error";
    const UniqueFd directory(open("/", O_RDONLY)), full(open("/dev/full", O_WRONLY));
    EXPECT_EQ(gn_full_read(directory.get(), &byte, 1, &eof), 0U);
    EXPECT_EQ(errno, EISDIR);
    EXPECT_FALSE(eof);
    EXPECT_EQ(gn_full_write(full.get(), &byte, 1), 0U);
    EXPECT_EQ(errno, ENOSPC);
}

// Others who share a pipe that does not block rely on that; of a socket there is no second opening.
TEST(Common, StreamsBlock) {
    const auto blocks = [](const UniqueFd& fd) { return (fcntl(fd.get(), F_GETFL) & O_NONBLOCK) == 0; };
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
    const UniqueFd from(ends[0]), to(ends[1]), shared(dup(to.get()));
    platform::make_blocking(to.get());
    EXPECT_TRUE(blocks(to) && !blocks(shared) && !blocks(from));
    EXPECT_EQ(write(to.get(), "x", 1) + read(from.get(), ends, 4), 2);

    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
    const UniqueFd here(ends[0]), there(ends[1]);
    platform::make_blocking(here.get());
    EXPECT_TRUE(blocks(here) && !blocks(there));

    const std::string fifo = testing::TempDir() + "fifo-without-reader";
    mkfifo(fifo.c_str(), 0600);
    UniqueFd reader(open(fifo.c_str(), O_RDONLY | O_NONBLOCK));
    const UniqueFd writer(open(fifo.c_str(), O_WRONLY | O_NONBLOCK));
    EXPECT_TRUE(reader.close() && unlink(fifo.c_str()) == 0);
    platform::make_blocking(writer.get());  // and does not wait for another reader
    EXPECT_TRUE(blocks(writer));
}

std::string printed(timespec time) {
    int length = 0;
    const std::string text = fuzz::printed([&] { length = gn_print_timespec(stdout, &time, true); });
    EXPECT_EQ(static_cast<size_t>(length), text.size());
    return text;
}

TEST(Common, Times) {
    EXPECT_EQ(printed({-1, 999999999}), "1969-12-31 23:59:59.999999999");
    EXPECT_EQ(printed({-62135596801, 0}), "   0-12-31 23:59:59.000000000");
    EXPECT_EQ(printed({253402300800, 5}), "10000-01-01 00:00:00.000000005");
    EXPECT_EQ(printed({0, 9}) + printed({INT64_MAX, 0}), "--");
}

// glibc is the model here; the transcripts see the texts from the other C library.
TEST(Common, ErrorTexts) {
    for (int error = -1; error <= 140; error++) EXPECT_STREQ(gn_strerror(error), strerror(error));
}

TEST(Common, DecimalCounter) {
    std::mt19937_64 random = seeded_random();
    for (int run = 0; run < 3000; run++) {
        // Numbers and increments of every length, those next to the end of the range among them.
        uint64_t value = random() >> random() % 64, increment = 1;
        if (random() % 4 == 0) value = ~value;
        const int width = static_cast<int>(random() % 21);
        const char fill = random() % 2 == 0 ? '0' : ' ';
        DecimalCounter counter(value, width, fill);
        for (int step = 0; step < 30; step++) {
            char expected[64], got[DecimalCounter::copy_room];
            snprintf(expected, sizeof expected, fill == '0' ? "%0*llu" : "%*llu", width,
                     static_cast<unsigned long long>(value));
            ASSERT_EQ(std::string(got, counter.copy(got)), expected) << "increment " << increment;
            ASSERT_EQ(counter.value(), value);
            if (random() % 16 == 0) increment = random() >> random() % 64;
            counter.add(increment);
            value += increment;
        }
    }
}

TEST(Common, CopiesBytes) {
    for (size_t size = 0; size <= 300; size++) {
        for (size_t offset : {0, 1, 7, 15}) {
            std::vector<char> from(offset + size, '#'), to = from;  // end where their memory ends
            std::iota(from.end() - static_cast<ptrdiff_t>(size), from.end(), '$');
            bytes::copy(to.data() + offset, from.data() + offset, size);
            ASSERT_EQ(to, from);
        }
    }
}

}  // namespace
