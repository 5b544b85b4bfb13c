#include "commands/sort_held.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>

#include "commands/sort_tournament.h"

namespace sorting {

namespace {

constexpr size_t word_size = sizeof(uint64_t);

// So few entries are sorted by insertion.
constexpr size_t few_entries = 20;

void insertion_sort(Entry* entries, size_t count) {
    for (size_t i = 1; i < count; i++) {
        const Entry entry = entries[i];
        size_t to = i;
        for (; to > 0 && entry.key < entries[to - 1].key; to--) entries[to] = entries[to - 1];
        entries[to] = entry;
    }
}

void sort_by_key(Entry* entries, size_t count) {
    std::sort(entries, entries + count, [](const Entry& a, const Entry& b) { return a.key < b.key; });
}

// Sorts by eight bits of the keys. All bits above them are alike.
void distribute(Entry* entries, size_t count, unsigned shift, Entry* spare) {
    size_t ends[256] = {};
    for (size_t i = 0; i < count; i++) ends[(entries[i].key >> shift) & 0xff]++;
    size_t end = 0;
    for (size_t& start : ends) end += std::exchange(start, end);
    for (size_t i = 0; i < count; i++) spare[ends[(entries[i].key >> shift) & 0xff]++] = entries[i];
    memcpy(entries, spare, count * sizeof(Entry));
}

// Counters of which sums up to a place are taken (a Fenwick tree). Places count from 1.
class Sums {
  public:
    Sums(uint32_t* counters, size_t count) : counters_(counters - 1), count_(count) {}

    void set_all(uint32_t value) {
        for (size_t place = 1; place <= count_; place++)
            counters_[place] = value * static_cast<uint32_t>(place & -place);
    }
    void add(size_t place, uint32_t value) {
        for (; place <= count_; place += place & -place) counters_[place] += value;
    }
    [[nodiscard]] uint32_t up_to(size_t place) const {
        uint32_t sum = 0;
        for (; place > 0; place &= place - 1) sum += counters_[place];
        return sum;
    }
    // The first place up to which the sum is more than this.
    [[nodiscard]] size_t find(uint32_t sum) const {
        size_t before = 0;
        for (size_t step = std::bit_floor(count_); step > 0; step /= 2) {
            if (before + step > count_ || counters_[before + step] > sum) continue;
            before += step;
            sum -= counters_[before];
        }
        return before + 1;
    }

  private:
    uint32_t* counters_;
    size_t count_;
};

// Where a binary insertion puts a line among count others, of which those from `equal` on, up to `greater`,
// are equal to it.
size_t insertion_place(size_t count, size_t equal, size_t greater) {
    if (count == 0) return 0;
    size_t low = 0;
    size_t high = count - 1;
    for (;;) {
        const size_t middle = (low + high + 1) / 2;
        if (middle < equal) {
            low = middle + 1;
            if (high < low) return low;
        } else {
            if (middle < greater || middle == 0 || middle - 1 < low) return middle;
            high = middle - 1;
        }
    }
}

}  // namespace

// Sorts lines that are equal before `at`, and whose keys are their words there.
void HeldLines::sort_entries(Entry* entries, size_t count, size_t at) {
    unsigned shift = 0;
    if (count <= few_entries) {
        insertion_sort(entries, count);
    } else {
        uint64_t differing = 0;
        for (size_t i = 1; i < count; i++) differing |= entries[i].key ^ entries[0].key;
        if (differing == 0) {
            sort_equal(entries, count, at);
            return;
        }
        const auto bits = static_cast<unsigned>(std::bit_width(differing));
        shift = bits > 8 ? bits - 8 : 0;
        distribute(entries, count, shift, spare_);
    }
    const bool is_sorted = count <= few_entries;
    for (size_t first = 0, next = 1; first < count; first = next++) {
        while (next < count && entries[next].key >> shift == entries[first].key >> shift) next++;
        if (next - first == 1) continue;
        if (is_sorted) {
            sort_equal(entries + first, next - first, at);
        } else {
            sort_entries(entries + first, next - first, at);
        }
    }
}

// Sorts lines that are equal before `at` and whose words there are equal, too. Those that end within them
// come first.
void HeldLines::sort_equal(Entry* entries, size_t count, size_t at) {
    at += word_size;
    size_t ended = 0;
    for (size_t i = 0; i < count; i++) {
        const Line line = compared(entries[i].line);
        if (line.size() <= at) {
            entries[i].key = line.size();
            std::swap(entries[i], entries[ended++]);
        } else {
            entries[i].key = word_at(line, at, order_.fold_case);
        }
    }
    sort_by_key(entries, ended);
    if (count - ended > 1) sort_entries(entries + ended, count - ended, at);
}

void HeldLines::sort_chunk(std::span<Reference> lines) {
    Entry* entries = entries_.data();
    for (size_t i = 0; i < lines.size(); i++)
        entries[i] = {word_at(compared(lines[i]), 0, order_.fold_case), lines[i]};
    sort_entries(entries, lines.size(), 0);
    for (size_t i = 0; i < lines.size(); i++) lines[i] = entries[i].line;
}

// All lines in order, after each chunk was sorted.
class HeldLines::InOrder {
  public:
    explicit InOrder(const HeldLines& lines)
        : lines_(lines), tournament_(CompareHeads{&heads_, lines.order_.fold_case}) {}

    // False when there is no memory.
    [[nodiscard, gnu::noinline]] bool start() {
        const size_t chunks = lines_.chunk_count();
        if (chunks == 1) {
            next_ = lines_.lines_.data();
            end_ = next_ + lines_.count_;
            return true;
        }
        if (!heads_.reserve(chunks) || !tournament_.create(chunks)) return false;
        for (size_t i = 0; i < chunks; i++) {
            const std::span<Reference> lines = lines_.chunk(i);
            heads_[i] = {lines.data(), lines.data() + lines.size(), {}};
            tournament_.enter(i, look_at(heads_[i]));
        }
        tournament_.start();
        return true;
    }

    // False when there is no line left.
    [[nodiscard, gnu::noinline]] bool next(Reference* reference) {
        if (next_ != end_) {
            *reference = *next_++;
            return true;
        }
        if (heads_.size() == 0 || tournament_.is_over()) return false;
        const size_t winner = tournament_.winner();
        Head& head = heads_[winner];
        *reference = *head.line++;
        if (head.line != head.end) {
            tournament_.replace(winner, look_at(head));
        } else {
            tournament_.remove(winner);
        }
        return true;
    }

  private:
    struct Head {
        const Reference* line;
        const Reference* end;
        Line compared;
    };
    struct CompareHeads {
        const Buffer<Head>* heads;
        bool fold_case;
        int operator()(size_t a, size_t b) const {
            return compare_from((*heads)[a].compared, (*heads)[b].compared, word_size, fold_case);
        }
    };

    [[nodiscard]] uint64_t look_at(Head& head) const {
        // A chunk's lines lie apart, and there are more chunks than a cache holds.
        constexpr ptrdiff_t ahead = 4;
        if (head.end - head.line > ahead)
            __builtin_prefetch(lines_.text_.data() + (head.line[ahead] >> size_bits));
        head.compared = lines_.compared(*head.line);
        return word_at(head.compared, 0, lines_.order_.fold_case);
    }

    const HeldLines& lines_;
    Buffer<Head> heads_;
    Tournament<CompareHeads> tournament_;
    const Reference* next_ = nullptr;  // of one chunk, which needs no tournament
    const Reference* end_ = nullptr;
};

bool HeldLines::has_ties(bool* found) const {
    *found = false;
    Line previous;
    size_t visited = 0;
    InOrder all(*this);
    if (!all.start()) return false;
    for (Reference reference; !*found && all.next(&reference);) {
        const Line next = line(reference);
        *found = visited++ > 0 && compare(previous, next, order_) == 0 && !is_same(previous, next);
        previous = next;
    }
    return true;
}

// Puts equal lines into the order of binary insertion. Where an insertion ends depends on nothing but the
// numbers of lines that are less, equal and greater at that time: they are counted, in the order in which the
// lines arrived. A line's place among its equals is then found from the last one backwards, as the place that
// had so many free ones before it.
bool HeldLines::place_ties() {
    if (count_ >= std::numeric_limits<uint32_t>::max()) return false;
    Buffer<uint32_t> first;   // line of each class of equal lines, in order
    Buffer<uint32_t> size;    // of each class, as far as it has arrived
    Buffer<uint32_t> sums;    // of these, then of the places that are still free
    Buffer<uint32_t> places;  // where each line was inserted among its equals
    if (!entries_.reserve(count_) || !first.reserve(count_) || !size.reserve(count_) ||
        !sums.reserve(count_) || !places.reserve(count_))
        return false;

    size_t classes = 0;
    uint32_t visited = 0;
    Line previous;
    InOrder all(*this);
    if (!all.start()) return false;
    for (Reference reference; all.next(&reference);) {
        const Line next = compared(reference);
        if (visited == 0 || compare_from(previous, next, 0, order_.fold_case) != 0) {
            size[classes] = 0;
            first[classes++] = visited;
        }
        previous = next;
        entries_[visited++] = {reference, classes - 1};
    }
    // Back into the order in which they arrived, each with its class.
    Entry* arrivals = entries_.data();
    sort_by_key(arrivals, count_);
    auto class_of = [&](size_t i) { return static_cast<size_t>(arrivals[i].line); };

    Sums arrived(sums.data(), classes);
    arrived.set_all(0);
    for (size_t i = 0; i < count_; i++) {
        const size_t own = class_of(i);
        const size_t less = arrived.up_to(own);
        places[i] = static_cast<uint32_t>(insertion_place(i, less, less + size[own]) - less);
        size[own]++;
        arrived.add(own + 1, 1);
    }

    auto free_places = [&](size_t own) { return Sums(sums.data() + first[own], size[own]); };
    for (size_t own = 0; own < classes; own++) free_places(own).set_all(1);
    for (size_t i = count_; i-- > 0;) {
        const size_t own = class_of(i);
        Sums free = free_places(own);
        const size_t place = free.find(places[i]);
        free.add(place, ~uint32_t{0});
        lines_[first[own] + place - 1] = arrivals[i].key;
    }
    is_whole_ = true;
    return true;
}

bool HeldLines::sort() {
    if (in_order_ || is_whole_) return true;
    const size_t most = std::min(chunk_lines, count_);
    if (!entries_.reserve(2 * most)) return false;
    spare_ = entries_.data() + most;
    const size_t chunks = chunk_count();
    for (size_t i = 0; i < chunks; i++) sort_chunk(chunk(i));

    bool ties = false;
    if (!order_.is_plain() && !has_ties(&ties)) return false;
    return !ties || place_ties();
}

Line HeldLines::first() const {
    Line least = line(lines_[0]);
    for (size_t i = 1; i < chunk_count(); i++) {
        const Line other = line(chunk(i).front());
        if (gn_sort_less(other, least, order_)) least = other;
    }
    return least;
}

Line HeldLines::last() const {
    if (chunk_count() == 1) return line(lines_[count_ - 1]);
    Line greatest = line(chunk(0).back());
    for (size_t i = 1; i < chunk_count(); i++) {
        const Line other = line(chunk(i).back());
        if (gn_sort_less(greatest, other, order_)) greatest = other;
    }
    return greatest;
}

bool HeldLines::write(Writer& writer) const {
    if (in_order_) {
        writer.write({text_.data(), text_size_});
        return true;
    }
    InOrder all(*this);
    if (!all.start()) return false;
    for (Reference reference; all.next(&reference);) {
        const Line next = line(reference);
        writer.write({next.data(), next.size() + 1});
    }
    return true;
}

void HeldLines::clear() {
    text_size_ = 0;
    count_ = 0;
    in_order_ = true;
    is_whole_ = false;
}

void HeldLines::release_memory() {
    clear();
    text_.clear();
    lines_.clear();
    entries_.clear();
}

}  // namespace sorting
