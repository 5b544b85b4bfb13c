#include "common/pieces.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// The offsets where the pieces of a text end, by the rule itself; the last piece may lack its end.
std::vector<size_t> ends_of_pieces(const std::string& text) {
    std::vector<size_t> ends;
    size_t start = 0;
    for (size_t place = 0; place < text.size(); place++) {
        if (text[place] == '\n' || place + 1 - start == 2046) {
            start = place + 1;
            ends.push_back(start);
        }
    }
    if (start != text.size()) ends.push_back(text.size());
    return ends;
}

// Texts of short lines only, of some lines around the longest piece, and of lines of many pieces.
std::string draw_text(std::mt19937& draw) {
    std::string text;
    const size_t most = std::vector<size_t>{3, 80, 300, 1200, 2500, 9000}[draw() % 6];
    const size_t odds_of_long = std::vector<size_t>{8, 100, 1000000}[draw() % 3];
    for (size_t lines = draw() % 5000; lines > 0 && text.size() < 60000; lines--) {
        const size_t size = draw() % odds_of_long == 0 ? 2046 * (draw() % 4) + draw() % 5 : draw() % most;
        text += std::string(size, draw() % 2 == 0 ? '\0' : 'x') + "\n";
    }
    if (draw() % 2 == 0) text += std::string(draw() % 5000, 'y');
    return text;
}

constexpr int rounds = 500;

TEST(Pieces, FindsTheLastOnesLikeTheRule) {
    std::mt19937 draw(1);
    for (int round = 0; round < rounds; round++) {
        const std::string text = draw_text(draw);
        const std::vector<size_t> ends = ends_of_pieces(text);
        const uint64_t wanted = draw() % (ends.size() + 3);
        const size_t base = 1000;  // places need not begin at 0

        pieces::Backward backward(base + text.size(), wanted);
        for (size_t place = text.size(), size; place > 0;) {
            size = std::min<size_t>(place, 1 + draw() % (draw() % 2 == 0 ? 50 : 20000));
            place -= size;
            if (backward.look(text.data() + place, size, base + place)) break;
        }
        const uint64_t start = wanted >= ends.size() ? 0 : ends[ends.size() - wanted - 1];
        ASSERT_EQ(backward.start(base), base + start) << round;
    }
}

}  // namespace
