// Finds the least of many lines again and again, with one comparison per round of the tournament that decides
// it when one of them is replaced. Internal to sort.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "commands/sort_lines.h"

namespace sorting {

// Compare is a three-way comparison of the lines of two slots whose keys are equal. Of equal lines, that in
// the lower slot wins.
template <class Compare>
class Tournament {
  public:
    explicit Tournament(Compare compare) : compare_(compare) {}

    // Makes room for slots 0 to count - 1, all empty. False when there is no memory.
    [[nodiscard]] bool create(size_t count) {
        leaves_ = std::bit_ceil(std::max<size_t>(count, 1));
        if (!nodes_.reserve(leaves_ * 2)) return false;
        std::fill_n(nodes_.data(), leaves_ * 2, empty);
        return true;
    }

    // Fills a slot before the first round.
    void enter(size_t slot, uint64_t key) { nodes_[leaves_ + slot] = {key, static_cast<uint32_t>(slot)}; }
    void start() {
        for (size_t at = leaves_ - 1; at > 0; at--) nodes_[at] = better(nodes_[at * 2], nodes_[at * 2 + 1]);
    }

    // The slot with the least line, while any is filled.
    [[nodiscard]] size_t winner() const { return nodes_[1].slot; }
    [[nodiscard]] bool is_over() const { return nodes_[1].slot == no_slot; }

    void replace(size_t slot, uint64_t key) { set(slot, {key, static_cast<uint32_t>(slot)}); }
    void remove(size_t slot) { set(slot, empty); }

  private:
    struct Node {
        uint64_t key;
        uint32_t slot;
    };
    static constexpr uint32_t no_slot = std::numeric_limits<uint32_t>::max();
    static constexpr Node empty = {std::numeric_limits<uint64_t>::max(), no_slot};

    void set(size_t slot, Node node) {
        size_t at = leaves_ + slot;
        nodes_[at] = node;
        for (; at > 1; at /= 2) {
            node = better(node, nodes_[at ^ 1]);
            nodes_[at / 2] = node;
        }
    }

    [[nodiscard]] Node better(const Node& a, const Node& b) {
        if (a.key == b.key) [[unlikely]]
            return is_better(a.slot, b.slot) ? a : b;
        // Which one it is cannot be guessed: a choice without a jump.
        const bool first = a.key < b.key;
        return {first ? a.key : b.key, first ? a.slot : b.slot};
    }
    [[nodiscard]] bool is_better(uint32_t a, uint32_t b) {
        if (a == no_slot || b == no_slot) return b == no_slot;
        const int order = compare_(a, b);
        return order < 0 || (order == 0 && a < b);
    }

    Compare compare_;
    size_t leaves_ = 0;
    Buffer<Node> nodes_;
};

}  // namespace sorting
