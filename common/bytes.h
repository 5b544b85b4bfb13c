// Work on runs of bytes, where the C library's routines are slow at the sizes that text tools meet.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bytes {

// memcpy for runs that are mostly short (words, lines, numbers): a C library may take longer to start a copy
// than to make it. Blocks of a fixed size become single moves; the last one overlaps the one before it.
inline void copy(char* to, const char* from, size_t size) {
    constexpr size_t longest = 256;
    if (size > longest) {
        memcpy(to, from, size);
    } else if (size >= 16) {
        for (size_t done = 0; done + 16 < size; done += 16) memcpy(to + done, from + done, 16);
        memcpy(to + size - 16, from + size - 16, 16);
    } else if (size >= 8) {
        memcpy(to, from, 8);
        memcpy(to + size - 8, from + size - 8, 8);
    } else if (size >= 4) {
        memcpy(to, from, 4);
        memcpy(to + size - 4, from + size - 4, 4);
    } else {
        for (size_t i = 0; i < size; i++) to[i] = from[i];
    }
}

// The first place of a byte in a run, or end when it is not there. Made for bytes that are soon found.
inline const char* find(const char* data, const char* end, char byte) {
#ifdef __SSE2__
    const __m128i wanted = _mm_set1_epi8(byte);
    for (; end - data >= 16; data += 16) {
        __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
        auto hits = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(block, wanted)));
        if (hits != 0) return data + std::countr_zero(hits);
    }
#endif
    if (data == end) return end;
    const void* found = memchr(data, byte, static_cast<size_t>(end - data));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

// The last place of a byte in a run, or end when it is not there.
[[nodiscard]] const char* find_last(const char* data, const char* end, char byte);

// How often a byte is in a run.
[[nodiscard]] size_t count(const char* data, const char* end, char byte);

// The length of what two runs of the same size have in common at their beginning: size when they are equal.
[[nodiscard]] size_t mismatch(const char* a, const char* b, size_t size);

// A count of lines and words that goes on from run to run. Blanks are space, \t, \n, \v, \f and \r; every
// other byte, NUL too, belongs to a word, which is counted where it begins.
struct WordCount {
    uint64_t newlines = 0;
    uint64_t words = 0;
    bool in_word = false;
};
void count_words(const char* data, const char* end, WordCount* counts);

// The same for processors whose vector instructions are not used here.
namespace portable {

[[nodiscard]] const char* find_last(const char* data, const char* end, char byte);
[[nodiscard]] size_t count(const char* data, const char* end, char byte);
[[nodiscard]] size_t mismatch(const char* a, const char* b, size_t size);
void count_words(const char* data, const char* end, WordCount* counts);

}  // namespace portable

}  // namespace bytes
