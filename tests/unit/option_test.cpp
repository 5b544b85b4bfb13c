// The option scanner against its model, and what it makes of numbers.

#include <gtest/gtest.h>

#include "tests/fuzz/option_model.h"
#include "tests/unit/helpers.h"

namespace {

TEST(Option, FollowsModel) {
    std::mt19937_64 random = seeded_random();
    const char* const pieces[] = {
        "-", "-", "--a", "--ab", "--a=", "--ab=", "--help", "=", "o", "x", "\xff", "\xfe"};
    for (int round = 0; round < 20000; round++) {
        fuzz::Words words(1 + random() % 6);
        for (char& letter : words[0].assign(random() % 8, ' ')) letter = static_cast<char>(random());
        for (size_t i = 1; i < words.size(); i++)
            for (size_t n = random() % 4; n > 0; n--) words[i] += pieces[random() % std::size(pieces)];
        option_model::compare(words);
    }
}

// What a getter makes of operands, each on its own: the numbers, or in brackets the reason why there is none.
template <typename Getter>
std::string numbers(Getter get, const fuzz::Words& texts) {
    std::string seen;
    for (const std::string& text : texts) {
        fuzz::Arguments arguments(text == "missing" ? fuzz::Words{} : fuzz::Words{text});
        e_option state;
        e_initoption(&state, &arguments.argc, &arguments.argv, true);
        constexpr int64_t untouched = 4711;
        int64_t value = untouched;
        const int result = get(&state, &value);
        EXPECT_TRUE(result == e_opt_ok || result == e_opt_bad_suffix || value == untouched);
        seen += (result == e_opt_ok ? std::to_string(value) : "(" + std::to_string(result) + ")") + " ";
    }
    return seen;
}

TEST(Option, Numbers) {
    auto ranged = [](e_option* state, int64_t* value) { return e_opt_getrangeint(state, value, 1, 10); };
    EXPECT_EQ(numbers(e_opt_getint, {"10", "0x1F", "-010", "12abc", "", "missing"}), "10 31 -8 12 0 (1) ");
    EXPECT_EQ(numbers(ranged, {"0", "1", "10", "11", "10K", "missing"}), "(3) 1 10 (3) 10 (1) ");
    EXPECT_EQ(numbers(e_opt_getsize, {"10", "", "K", "-1K", "4kB", "8E", "1Ki", "1KiBx", "2b", "missing"}),
              "10 0 0 -1024 4000 -9223372036854775808 (2) (2) (2) (1) ");
}

}  // namespace
