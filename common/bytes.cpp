#include "common/bytes.h"

#include <algorithm>

namespace bytes {

namespace portable {

namespace {

// The same byte in all places of a word.
constexpr uint64_t repeat(unsigned char byte) {
    return ~uint64_t{0} / 0xFF * byte;
}

uint64_t load(const char* data) {
    uint64_t word;
    memcpy(&word, data, sizeof word);
    return word;
}

bool is_blank(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

}  // namespace

const char* find_last(const char* data, const char* end, char byte) {
    const uint64_t wanted = repeat(static_cast<unsigned char>(byte));
    const char* place = end;
    for (; place - data >= 8; place -= 8) {
        // Exact as to whether there is a zero, not as to where: a borrow can pretend more of them.
        const uint64_t zeros = load(place - 8) ^ wanted;
        if (((zeros - repeat(0x01)) & ~zeros & repeat(0x80)) != 0) break;
    }
    while (place != data) {
        if (*--place == byte) return place;
    }
    return end;
}

size_t count(const char* data, const char* end, char byte) {
    const uint64_t wanted = repeat(static_cast<unsigned char>(byte));
    size_t total = 0;
    while (end - data >= 8) {
        // Every byte of a word counts for itself, until it is full.
        auto steps = std::min<ptrdiff_t>((end - data) / 8, 255);
        uint64_t counts = 0;
        for (; steps > 0; steps--, data += 8) {
            const uint64_t zeros = load(data) ^ wanted;
            const uint64_t others = ((zeros & repeat(0x7F)) + repeat(0x7F)) | zeros;
            counts += (~others & repeat(0x80)) >> 7;
        }
        for (; counts != 0; counts >>= 8) total += counts & 0xFF;
    }
    for (; data != end; data++) total += *data == byte ? 1 : 0;
    return total;
}

size_t mismatch(const char* a, const char* b, size_t size) {
    size_t place = 0;
    while (size - place >= 8 && load(a + place) == load(b + place)) place += 8;
    while (place < size && a[place] == b[place]) place++;
    return place;
}

void count_words(const char* data, const char* end, WordCount* counts) {
    WordCount sum = *counts;
    for (; data != end; data++) {
        const bool in_word = !is_blank(*data);
        sum.words += in_word && !sum.in_word ? 1 : 0;
        sum.newlines += *data == '\n' ? 1 : 0;
        sum.in_word = in_word;
    }
    *counts = sum;
}

}  // namespace portable

#ifdef __x86_64__  // where SSE2 is always there

namespace {

// A row of byte counters can take this many ones.
constexpr ptrdiff_t most_steps = 255;

// The processor fetches ahead by itself, but stops at the end of every page.
constexpr ptrdiff_t ahead = 1024;

// From four times this size on, a run is not in the cache.
constexpr ptrdiff_t least_quarter = ptrdiff_t{1} << 18;

__m128i load(const char* data) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

unsigned hits(__m128i found) {
    return static_cast<unsigned>(_mm_movemask_epi8(found));
}

// The sum of a row of byte counters, in its two halves.
__m128i sum(__m128i counters) {
    return _mm_sad_epu8(counters, _mm_setzero_si128());
}

__m128i sum(__m128i a, __m128i b, __m128i c, __m128i d) {
    return _mm_add_epi64(_mm_add_epi64(sum(a), sum(b)), _mm_add_epi64(sum(c), sum(d)));
}

uint64_t total_of(__m128i halves) {
    return static_cast<uint64_t>(
        _mm_cvtsi128_si64(_mm_add_epi64(halves, _mm_unpackhi_epi64(halves, halves))));
}

// All ones where there is a blank.
__m128i find_blanks(__m128i text) {
    const __m128i last_control = _mm_set1_epi8('\r' - '\t');
    const __m128i above_tab = _mm_sub_epi8(text, _mm_set1_epi8('\t'));
    return _mm_or_si128(_mm_cmpeq_epi8(text, _mm_set1_epi8(' ')),
                        _mm_cmpeq_epi8(_mm_min_epu8(above_tab, last_control), above_tab));
}

}  // namespace

const char* find_last(const char* data, const char* end, char byte) {
    const __m128i wanted = _mm_set1_epi8(byte);
    const char* place = end;
    for (; place - data >= 16; place -= 16) {
        const unsigned found = hits(_mm_cmpeq_epi8(load(place - 16), wanted));
        if (found != 0) return place - 16 + (31 - std::countl_zero(found));
    }
    const char* last = portable::find_last(data, place, byte);
    return last != place ? last : end;
}

size_t count(const char* data, const char* end, char byte) {
    const __m128i wanted = _mm_set1_epi8(byte);
    auto add = [&](__m128i* counters, const char* at) {
        *counters = _mm_sub_epi8(*counters, _mm_cmpeq_epi8(load(at), wanted));
    };
    __m128i total = _mm_setzero_si128();

    // Memory delivers more when it is asked in several places at once.
    const ptrdiff_t quarter = (end - data) / 4 / 64 * 64;
    if (quarter >= least_quarter) {
        for (ptrdiff_t done = 0; done < quarter;) {
            auto steps = std::min((quarter - done) / 64, most_steps / 4);
            __m128i a = _mm_setzero_si128(), b = a, c = a, d = a;
            for (; steps > 0; steps--, done += 64) {
                const char* at = data + done;
                for (int i = 0; i < 4; i++, at += quarter) {
                    _mm_prefetch(at + ahead, _MM_HINT_T0);
                    add(&a, at);
                    add(&b, at + 16);
                    add(&c, at + 32);
                    add(&d, at + 48);
                }
            }
            total = _mm_add_epi64(total, sum(a, b, c, d));
        }
        data += 4 * quarter;
    }

    while (end - data >= 64) {
        auto steps = std::min((end - data) / 64, most_steps);
        __m128i a = _mm_setzero_si128(), b = a, c = a, d = a;
        for (; steps > 0; steps--, data += 64) {
            add(&a, data);
            add(&b, data + 16);
            add(&c, data + 32);
            add(&d, data + 48);
        }
        total = _mm_add_epi64(total, sum(a, b, c, d));
    }
    return total_of(total) + portable::count(data, end, byte);
}

size_t mismatch(const char* a, const char* b, size_t size) {
    size_t place = 0;
    auto equal = [&](size_t at) { return _mm_cmpeq_epi8(load(a + place + at), load(b + place + at)); };
    for (; size - place >= 64; place += 64) {
        _mm_prefetch(a + place + ahead, _MM_HINT_T0);
        _mm_prefetch(b + place + ahead, _MM_HINT_T0);
        const __m128i all =
            _mm_and_si128(_mm_and_si128(equal(0), equal(16)), _mm_and_si128(equal(32), equal(48)));
        if (hits(all) != 0xFFFF) break;
    }
    for (; size - place >= 16; place += 16) {
        const unsigned found = hits(equal(0));
        if (found != 0xFFFF) return place + static_cast<size_t>(std::countr_one(found));
    }
    return place + portable::mismatch(a + place, b + place, size - place);
}

void count_words(const char* data, const char* end, WordCount* counts) {
    const __m128i newline = _mm_set1_epi8('\n');
    // Only the last byte counts: whether a blank stood in front of the data.
    __m128i blanks_before = _mm_set1_epi8(counts->in_word ? 0 : -1);
    __m128i newlines = _mm_setzero_si128(), words = newlines;
    while (end - data >= 16) {
        auto steps = std::min((end - data) / 16, most_steps);
        __m128i some_newlines = _mm_setzero_si128(), some_words = some_newlines;
        for (; steps > 0; steps--, data += 16) {
            _mm_prefetch(data + ahead, _MM_HINT_T0);
            const __m128i text = load(data);
            const __m128i blanks = find_blanks(text);
            const __m128i behind_blanks =
                _mm_or_si128(_mm_slli_si128(blanks, 1), _mm_srli_si128(blanks_before, 15));
            some_words = _mm_sub_epi8(some_words, _mm_andnot_si128(blanks, behind_blanks));
            some_newlines = _mm_sub_epi8(some_newlines, _mm_cmpeq_epi8(text, newline));
            blanks_before = blanks;
        }
        newlines = _mm_add_epi64(newlines, sum(some_newlines));
        words = _mm_add_epi64(words, sum(some_words));
    }
    counts->newlines += total_of(newlines);
    counts->words += total_of(words);
    counts->in_word = (hits(blanks_before) & 0x8000) == 0;
    portable::count_words(data, end, counts);
}

#else

const char* find_last(const char* data, const char* end, char byte) {
    return portable::find_last(data, end, byte);
}

size_t count(const char* data, const char* end, char byte) {
    return portable::count(data, end, byte);
}

size_t mismatch(const char* a, const char* b, size_t size) {
    return portable::mismatch(a, b, size);
}

void count_words(const char* data, const char* end, WordCount* counts) {
    portable::count_words(data, end, counts);
}

#endif

}  // namespace bytes
