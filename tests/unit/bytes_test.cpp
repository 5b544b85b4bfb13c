#include "common/bytes.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// The routines for this processor, and those for every processor.
struct Routines {
    const char* name;
    decltype(&bytes::find_last) find_last;
    decltype(&bytes::count) count;
    decltype(&bytes::mismatch) mismatch;
    decltype(&bytes::count_words) count_words;

    friend void PrintTo(const Routines& routines, std::ostream* out) { *out << routines.name; }
};

class Bytes : public testing::TestWithParam<Routines> {};

INSTANTIATE_TEST_SUITE_P(
    , Bytes,
    testing::Values(Routines{"vector", bytes::find_last, bytes::count, bytes::mismatch, bytes::count_words},
                    Routines{"portable", bytes::portable::find_last, bytes::portable::count,
                             bytes::portable::mismatch, bytes::portable::count_words}),
    [](const auto& made) { return made.param.name; });

constexpr size_t alignments = 16;
constexpr size_t longest = 150;  // several steps of every loop, and every rest

// Memory of exactly this size, so that the sanitizer sees a byte too many.
std::vector<char> from_alphabet(std::mt19937& draw, const std::string& alphabet, size_t size) {
    std::vector<char> text(size);
    for (char& byte : text) byte = alphabet[draw() % alphabet.size()];
    return text;
}

TEST_P(Bytes, CountsAndFindsLikeTheObviousLoops) {
    std::mt19937 draw(1);
    for (size_t start = 0; start < alignments; start++) {
        for (size_t size = 0; size <= longest; size++) {
            // Neighbours of the byte in every bit that matters, more or less of the byte itself.
            const std::string others =
                std::string("\x0b\x09\x8a\x00\x0aq", 6) + std::string(draw() % 60, 'x');
            const std::vector<char> text = from_alphabet(draw, others, start + size);
            const char *data = text.data() + start, *end = data + size, *last = end;
            while (last != data && last[-1] != '\n') last--;
            ASSERT_EQ(GetParam().count(data, end, '\n'), static_cast<size_t>(std::count(data, end, '\n')));
            ASSERT_EQ(GetParam().find_last(data, end, '\n'), last == data ? end : last - 1)
                << start << ' ' << size;
            ASSERT_EQ(bytes::find(data, end, '\n'), std::find(data, end, '\n')) << start << ' ' << size;
        }
    }
}

TEST_P(Bytes, CountsMoreThanAByteCounterHolds) {
    for (const size_t size : {size_t{3} * 64 * 256 + 77, (size_t{5} << 18) + 77}) {
        std::vector<char> text(size, '\xff');
        const char *data = text.data(), *end = data + size;
        EXPECT_EQ(GetParam().count(data, end, '\xff'), size);
        for (size_t place = 0; place < size; place += 1 + place / 1000) text[place] = 'x';
        EXPECT_EQ(GetParam().count(data, end, 'x'), static_cast<size_t>(std::count(data, end, 'x')));
    }
    std::string words;
    for (int i = 0; i < 10000; i++) words += "\n.";
    bytes::WordCount counts;
    GetParam().count_words(words.data(), words.data() + words.size(), &counts);
    EXPECT_EQ(counts.newlines, 10000U);
    EXPECT_EQ(counts.words, 10000U);
}

TEST_P(Bytes, FindsTheFirstDifferenceOnAllAlignments) {
    std::mt19937 draw(1);
    for (size_t start = 0; start < alignments; start++) {
        for (size_t size = 0; size <= longest; size++) {
            const std::vector<char> a = from_alphabet(draw, std::string("\x00\x80\xff", 3), size);
            // Another alignment for the other run; what lies in front of it must not matter.
            std::vector<char> b(start, 'x');
            b.insert(b.end(), a.begin(), a.end());
            size_t first = size;
            for (int differences = 0; differences < 3; differences++) {
                ASSERT_EQ(GetParam().mismatch(a.data(), b.data() + start, size), first)
                    << start << ' ' << size;
                if (size == 0) break;
                const size_t place = draw() % size;
                b[start + place] = static_cast<char>(a[place] ^ 0x80);
                first = std::min(first, place);
            }
        }
    }
}

TEST_P(Bytes, CountsWordsAcrossRuns) {
    std::mt19937 draw(1);
    std::string every_byte;
    for (int byte = 0; byte < 256; byte++) every_byte += static_cast<char>(byte);
    for (int round = 0; round < 1000; round++) {
        const std::string alphabet = round % 3 == 0   ? every_byte
                                     : round % 3 == 1 ? "a b"
                                                      : " \t\n\v\f\r\x08\x0e\x1f\x21";
        const size_t size = draw() % (2 * longest);
        const std::vector<char> text = from_alphabet(draw, alphabet, size);
        bytes::WordCount expected;
        for (char byte : text) {
            const bool blank = std::string(" \t\n\v\f\r").find(byte) != std::string::npos;
            if (!blank && !expected.in_word) expected.words++;
            if (byte == '\n') expected.newlines++;
            expected.in_word = !blank;
        }
        bytes::WordCount counts;
        for (size_t done = 0, step; done < size; done += step) {
            step = std::min<size_t>(size - done, 1 + draw() % 100);
            GetParam().count_words(text.data() + done, text.data() + done + step, &counts);
        }
        ASSERT_EQ(counts.newlines, expected.newlines) << round;
        ASSERT_EQ(counts.words, expected.words) << round;
        ASSERT_EQ(counts.in_word, expected.in_word) << round;
    }
}

}  // namespace
