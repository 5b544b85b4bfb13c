// The lines that sort holds in memory until they make a run. Internal to sort.

#pragma once

#include <cstdint>
#include <span>

#include "commands/sort_lines.h"

namespace sorting {

// A line among those held: where it begins, and its size in the lowest bits, so that references order as the
// lines arrived.
using Reference = uint64_t;

// A line while it is being sorted.
struct Entry {
    uint64_t key;
    Reference line;
};

class HeldLines {
  public:
    explicit HeldLines(const Order& order) : order_(order) {}

    [[nodiscard]] bool empty() const { return count_ == 0; }

    // False when there is no memory (nothing changes).
    [[nodiscard]] bool add(Line line) {
        if (!text_.reserve(text_size_ + line.size() + 1 + slack) || !lines_.reserve(count_ + 1)) return false;
        char* to = text_.data() + text_size_;
        bytes::copy(to, line.data(), line.size());
        to[line.size()] = '\n';
        const Line copy(to, line.size());
        in_order_ = in_order_ && may_follow(copy);
        lines_[count_++] = text_size_ << size_bits | line.size();
        text_size_ += line.size() + 1;
        longest_ = std::max(longest_, line.size());
        return true;
    }

    // Puts the lines in order: equal ones into that in which a binary insertion leaves them, which puts a new
    // line in front of the one that it was compared with. False when there is no memory for it; the lines are
    // still held.
    [[nodiscard]] bool sort();

    // The first and the last line in order; only after sort(), and only if there are lines.
    [[nodiscard]] Line first() const;
    [[nodiscard]] Line last() const;

    // The size of the longest line held since the memory was last given back.
    [[nodiscard]] size_t longest() const { return longest_; }

    // Writes the lines in order, after sort(). False when there is no memory for it.
    [[nodiscard]] bool write(Writer& writer) const;

    // What the lines take of the memory budget.
    [[nodiscard]] uint64_t cost() const { return text_size_ + count_ * (sorting::cost(0) - 1); }

    // Forgets the lines; the memory is kept for the next ones, or given back.
    void clear();
    void release_memory();

  private:
    static constexpr unsigned size_bits = 11;
    static_assert(longest_line < 1U << size_bits);

    // How many lines are sorted at once: what a processor's cache holds of them.
    static constexpr size_t chunk_lines = size_t{1} << 15;

    [[nodiscard]] Line line(Reference reference) const {
        return {text_.data() + (reference >> size_bits), reference & ((1U << size_bits) - 1)};
    }
    // Without blanks, where they are to be ignored.
    [[nodiscard]] Line compared(Reference reference) const {
        return order_.ignore_blanks ? skip_blanks(line(reference)) : line(reference);
    }
    [[nodiscard]] std::span<Reference> chunk(size_t number) const {
        const size_t first = number * chunk_lines;
        return {lines_.data() + first, std::min(chunk_lines, count_ - first)};
    }
    [[nodiscard]] size_t chunk_count() const {
        return in_order_ || is_whole_ ? 1 : (count_ + chunk_lines - 1) / chunk_lines;
    }

    // Whether a line behind the last one leaves the lines in order, without equal ones that must be told
    // apart.
    [[nodiscard]] bool may_follow(Line line) {
        const uint64_t key = key_of(line, 0, order_);
        const uint64_t previous = std::exchange(last_key_, key);
        if (count_ == 0 || key > previous) return true;
        if (key < previous) return false;
        const int order = compare(this->line(lines_[count_ - 1]), line, order_);
        return order < 0 || (order == 0 && order_.is_plain());
    }

    void sort_chunk(std::span<Reference> lines);
    void sort_entries(Entry* entries, size_t count, size_t at);
    void sort_equal(Entry* entries, size_t count, size_t at);
    class InOrder;
    [[nodiscard]] bool has_ties(bool* found) const;
    [[nodiscard]] bool place_ties();

    const Order& order_;
    Buffer<char> text_;
    size_t text_size_ = 0;
    Buffer<Reference> lines_;
    size_t count_ = 0;
    size_t longest_ = 0;
    uint64_t last_key_ = 0;
    bool in_order_ = true;   // as they arrived
    bool is_whole_ = false;  // in order as one chunk
    Buffer<Entry> entries_;  // for a chunk, and as many again
    Entry* spare_ = nullptr;
};

}  // namespace sorting
