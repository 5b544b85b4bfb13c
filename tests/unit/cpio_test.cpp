// The cpio reader on archives built byte by byte: the four layouts and their oddities. The fuzzing target shows
// that it survives any bytes.

#include "cpio/cpio.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <string>
#include <vector>

#include "tests/fuzz/cpio_walk.h"

namespace {

using cpio_walk::walk;
using Entries = std::vector<cpio_walk::Entry>;
using namespace std::string_literals;

// A header's numbers, distinct so that none is taken for another.
struct Header {
    uint32_t ino = 0x111, mode = 0100644, uid = 0x222, gid = 0x333, nlink = 5, mtime = 0x5F5E1234;
    uint64_t file_size = 0;
    uint32_t name_size = 0;
};

using MakeEntry = std::string (*)(const Header&, const std::string& name, const std::string& data);

std::string digits(uint64_t value, unsigned base, int width) {
    std::string text;
    for (; width > 0; width--, value /= base) text.insert(text.begin(), "0123456789ABCDEF"[value % base]);
    return text;
}

std::string padded(std::string text, size_t unit) {
    text.resize((text.size() + unit - 1) / unit * unit);
    return text;
}

std::string newc(const Header& h, const std::string& name, const std::string& data) {
    std::string entry = "070701";
    for (uint64_t value : {uint64_t{h.ino}, uint64_t{h.mode}, uint64_t{h.uid}, uint64_t{h.gid},
                           uint64_t{h.nlink}, uint64_t{h.mtime}, h.file_size, uint64_t{8}, uint64_t{9},
                           uint64_t{10}, uint64_t{11}, uint64_t{h.name_size}, uint64_t{0}}) {
        entry += digits(value, 16, 8);
    }
    return padded(entry + name, 4) + padded(data, 4);
}

std::string odc(const Header& h, const std::string& name, const std::string& data) {
    std::string entry = "070707";
    for (uint32_t value : {0x809U, h.ino, h.mode, h.uid, h.gid, h.nlink, 0x777U})
        entry += digits(value, 8, 6);
    return entry + digits(h.mtime, 8, 11) + digits(h.name_size, 8, 6) + digits(h.file_size, 8, 11) + name +
           data;
}

template <bool swap>
std::string bin(const Header& h, const std::string& name, const std::string& data) {
    std::string entry;
    const auto time = h.mtime;
    const auto size = static_cast<uint32_t>(h.file_size);
    for (uint32_t value : {070707U, 0x809U, h.ino, h.mode, h.uid, h.gid, h.nlink, 0x777U, time >> 16, time,
                           h.name_size, size >> 16, size}) {
        const char low = static_cast<char>(value), high = static_cast<char>(value >> 8);
        entry += swap ? std::string{high, low} : std::string{low, high};
    }
    return padded(entry + name, 2) + padded(data, 2);
}

// An entry whose sizes are right. The name ends with a NUL.
std::string entry(MakeEntry make, const std::string& name, const std::string& data = "", Header header = {}) {
    header.name_size = static_cast<uint32_t>(name.size() + 1);
    header.file_size = data.size();
    return make(header, name + '\0', data);
}

std::string trailer(MakeEntry make) {
    return entry(make, "TRAILER!!!");
}

const char* const names[] = {"newc", "odc", "bin", "swapped"};

class CpioFormat : public testing::TestWithParam<MakeEntry> {};
INSTANTIATE_TEST_SUITE_P(All, CpioFormat, testing::Values(newc, odc, bin<false>, bin<true>),
                         [](const auto& format) { return names[format.index]; });

TEST_P(CpioFormat, WalksAndFinds) {
    const MakeEntry make = GetParam();
    const Entries sample = {{"x", "hello"}, {"a/b", ""}, {"dir/odd", "123"}, {"./a/b", std::string(9, '\0')}};
    std::string image;
    for (const auto& [name, data] : sample) image += entry(make, name, data);
    image += trailer(make) + std::string(512, '\0');
    EXPECT_EQ(walk(image).entries, sample);
    EXPECT_EQ(walk(image).violation, nullptr);

    cpioread_ctx reader;
    ASSERT_EQ(cpioread_init(&reader, image.data()), &reader);
    cpio_entity e, other;
    EXPECT_EQ(cpioread_next(&reader, &e), nullptr) << "not begun";
    ASSERT_EQ(cpioread_first(&reader, &e), &e);
    ASSERT_EQ(cpioread_find(&reader, &other, "./a/b"), &other);
    EXPECT_EQ(other.file_size, 9U);
    for (const char* name : {"", "a", "a/b/", "/a/b", "TRAILER!!!"}) {
        EXPECT_EQ(cpioread_find(&reader, &other, name), nullptr) << name;
    }
    // The walk has not moved, and can be begun again.
    ASSERT_EQ(cpioread_next(&reader, &e), &e);
    EXPECT_STREQ(e.name, "a/b");
    EXPECT_EQ(cpioread_first(&reader, &e), &e);
    EXPECT_STREQ(e.name, "x");

    ASSERT_NE(cpioread_init(&reader, trailer(make).data()), nullptr);
    EXPECT_EQ(reader.count, 0U);
}

TEST_P(CpioFormat, FillsRecords) {
    const MakeEntry make = GetParam();
    const Header numbers;
    const std::string first = entry(make, "first", "12345");
    const std::string image = first + entry(make, "name", "hello", numbers) + trailer(make);
    cpioread_ctx reader;
    ASSERT_NE(cpioread_init(&reader, image.data()), nullptr);
    cpio_entity e;
    ASSERT_NE(cpioread_find(&reader, &e, "name"), nullptr);
    EXPECT_EQ(e.mtime, numbers.mtime);
    EXPECT_EQ(e.mode, numbers.mode);
    EXPECT_EQ(std::string(e.data, e.file_size), "hello");

    const char* header = image.data() + first.size();
    char name[5];
    cpio_entity_ext all{};
    all.user = 42;
    all.name = name;
    all.name_buffer_size = 4;
    EXPECT_EQ(reader.ops->fill_extended_entity(header, &all, first.size()), nullptr);
    EXPECT_EQ(all.ino, numbers.ino);
    all.name_buffer_size = 5;
    ASSERT_EQ(reader.ops->fill_extended_entity(header, &all, first.size()), &all);
    EXPECT_STREQ(name, "name");
    EXPECT_EQ(image.data() + all.data_offset, e.data);
    EXPECT_EQ(all.user, 42U);
    EXPECT_EQ(all.header_offset, first.size());
    const bool is_newc = make == MakeEntry(newc), is_odc = make == MakeEntry(odc);
    EXPECT_EQ(all.data_end_offset - all.data_offset, is_newc ? 8U : is_odc ? 5U : 6U);
    using Numbers = std::vector<uint64_t>;
    EXPECT_EQ((Numbers{all.mode, all.file_size, all.mtime, all.uid, all.gid, all.nlink, all.name_size}),
              (Numbers{numbers.mode, 5, numbers.mtime, numbers.uid, numbers.gid, numbers.nlink, 5}));
    // Device 0x809 is major 8, minor 9.
    EXPECT_EQ((Numbers{all.dev_major, all.dev_minor, all.rdev_major, all.rdev_minor}),
              (is_newc ? Numbers{8, 9, 10, 11} : Numbers{8, 9, 0, 0}));
}

TEST_P(CpioFormat, TakesOddNamesAndEnds) {
    const MakeEntry make = GetParam();
    const std::string one = entry(make, "one", "data");
    const Entries only_one = {{"one", "data"}};
    const std::string other_format = make == newc ? trailer(odc) : trailer(newc);
    for (const std::string& rest : {""s, "junk"s, "0707"s, std::string(1, '\0'), other_format}) {
        EXPECT_EQ(walk(one + rest).entries, only_one) << rest;
        EXPECT_EQ(walk(one + rest).violation, nullptr);
    }
    // A name that is shorter than its size is shown, but never found.
    const std::string odd = entry(make, "x\0y"s, "data") + trailer(make);
    EXPECT_EQ(walk(odd).entries, (Entries{{"x", "data"}}));
    cpioread_ctx reader;
    cpio_entity e;
    ASSERT_NE(cpioread_init(&reader, odd.data()), nullptr);
    EXPECT_EQ(cpioread_find(&reader, &e, "x"), nullptr);
    // Whatever begins like the trailer ends the archive; what stands behind it does not count.
    EXPECT_EQ(walk(one + entry(make, "TRAILER!!!x", "data") + one).entries, only_one);
    EXPECT_EQ(walk(one + entry(make, "TRAILER!!", "") + one).entries.size(), 3U);
}

TEST_P(CpioFormat, RefusesWhatRunsOverTheEnd) {
    const MakeEntry make = GetParam();
    auto accepted = [&](const Header& header, const std::string& name = "abc\0"s) {
        const auto result = walk(entry(make, "good", "12") + make(header, name, "1234"));
        EXPECT_EQ(result.violation, nullptr);
        return result.accepted;
    };
    const uint32_t most = make == MakeEntry(odc) ? 0777777 : make == MakeEntry(newc) ? 0xFFFFFFFF : 0xFFFF;
    EXPECT_TRUE(accepted({.file_size = 4, .name_size = 4}));
    EXPECT_TRUE(accepted({.file_size = 4, .name_size = 4}, "a\0bc"s));
    EXPECT_FALSE(accepted({.file_size = 0, .name_size = 11}, "TRAILER!!!"));
    for (const auto& [file_size, name_size] : {std::pair{4U, 3U}, {4U, 0U}, {5U, 4U}, {4U, most}, {~0U, 4U}})
        EXPECT_FALSE(accepted({.file_size = file_size, .name_size = name_size}))
            << file_size << ' ' << name_size;
}

TEST(Cpio, NumbersAreNotChecked) {
    const std::tuple<MakeEntry, const char*, uint32_t> rows[] = {
        {newc, "aBfF", 0xABFF},
        {newc, "001G", 0x10 + 'G' - '0'},
        {newc, "00:0", 0xA0},
        {newc, "0 00", uint32_t{0} - 0x1000},
        {newc, "000\xFF", 0xFF - '0'},
        {odc, "0019", 8 + 9},
        {odc, "0a00", ('a' - '0') * 64},
        {odc, "000 ", uint32_t{0} - 16},
    };
    for (const auto& [make, digits, value] : rows) {
        std::string image = entry(make, "x", "", {.mtime = 0}) + std::string(cpio_image_slack, '\0');
        image.replace(make == MakeEntry(newc) ? 50 : 55, 4, digits);  // the time's last ones
        cpioread_ctx reader;
        cpio_entity e;
        ASSERT_NE(cpioread_init(&reader, image.data()), nullptr);
        ASSERT_NE(cpioread_first(&reader, &e), nullptr);
        EXPECT_EQ(e.mtime, value) << digits;
    }
}

TEST(Cpio, EveryBinaryHeaderHasItsOwnByteOrder) {
    const std::string image = entry(bin<false>, "one", "1") + entry(bin<true>, "two", "22") +
                              entry(bin<false>, "three") + trailer(bin<true>);
    EXPECT_EQ(walk(image).entries, (Entries{{"one", "1"}, {"two", "22"}, {"three", ""}}));
}

// The 33rd bit would be lost in the record.
TEST(Cpio, RefusesDataOf4GiB) {
    // Pages that are not looked at cost nothing.
    constexpr size_t size = (size_t{1} << 32) + 4096;
    void* const image = mmap(nullptr, size + cpio_image_slack, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(image, MAP_FAILED);
    auto accepted = [&](uint64_t file_size) {
        const std::string header = odc({.file_size = file_size, .name_size = 2}, "x\0"s, "");
        memcpy(image, header.data(), header.size());
        return cpioread_check(image, size);
    };
    EXPECT_TRUE(accepted(0xFFFFFFFF));
    EXPECT_FALSE(accepted(0x100000000));
    munmap(image, size + cpio_image_slack);
}

TEST(Cpio, TakesNullAndForeignImages) {
    cpioread_ctx reader{.ops = &cpio_ops__odc, .image = "", .count = 7, .current = nullptr};
    EXPECT_EQ(cpioread_init(&reader, "this is no archive"), nullptr);
    EXPECT_EQ(reader.ops, nullptr);
    EXPECT_EQ(reader.image, nullptr);
    EXPECT_EQ(reader.count, 0U);
    cpio_entity e;
    EXPECT_EQ(cpioread_first(&reader, &e), nullptr);
    EXPECT_EQ(cpioread_next(&reader, &e), nullptr);
}

}  // namespace
