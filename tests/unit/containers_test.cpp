// The containers against simple models with random operations, also while allocations fail. GARNEL_TEST_SEED
// repeats a run.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "lib/containers/container_btree.h"
#include "lib/containers/container_deque.h"
#include "lib/containers/container_vector.h"

namespace {

// An allocator that counts its blocks and can be told to refuse.
struct Memory {
    int live = 0;
    int calls_until_refusal = -1;  // -1: never
    bool refused = false;

    static void* alloc(void* context, size_t size) {
        auto* self = static_cast<Memory*>(context);
        self->refused = self->calls_until_refusal == 0;
        if (self->refused) return nullptr;
        if (self->calls_until_refusal > 0) --self->calls_until_refusal;
        ++self->live;
        return malloc(size);
    }
    static void release(void* context, void* memory) {
        --static_cast<Memory*>(context)->live;
        free(memory);
    }
};

class Containers : public testing::Test {
  protected:
    Memory memory;
    const char* fixed_seed = getenv("GARNEL_TEST_SEED");
    const unsigned seed =
        fixed_seed != nullptr ? unsigned(strtoul(fixed_seed, nullptr, 10)) : std::random_device{}();
    std::mt19937 random{seed};

    void SetUp() override { std::cout << "GARNEL_TEST_SEED=" << seed << '\n'; }
    void TearDown() override { EXPECT_EQ(memory.live, 0); }

    size_t below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }

    // One operation in eight meets an allocator that refuses soon.
    void maybe_refuse() {
        memory.refused = false;
        memory.calls_until_refusal = below(8) == 0 ? int(below(3)) : -1;
    }

    // Expects failure if it is not possible or memory was refused; otherwise the model changes too.
    template <class Change>
    void tried(bool possible, int result, int failure, Change change_model) {
        possible &= !memory.refused;
        EXPECT_EQ(result, possible ? 0 : failure);
        if (possible) change_model();
    }
};

constexpr auto int_of = [](const void* element) { return *static_cast<const int*>(element); };
constexpr auto compare_int = [](const void* a, const void* b) { return int_of(a) - int_of(b); };

TEST_F(Containers, VectorFollowsModel) {
    vector* v = vector_new_ex(sizeof(int), 5, &memory, Memory::alloc, Memory::release);
    std::vector<int> model;
    for (int round = 0; round < 6000; ++round) {
        const int x = int(below(20));
        const size_t i = below(model.size() * 5 / 4 + 3);
        const bool present = i < model.size();
        const std::vector<int> copy = model;
        const std::vector<int> more(1 + below(20), x);
        const auto append = [&](const auto& list) { model.insert(model.end(), list.begin(), list.end()); };
        maybe_refuse();
        switch (below(10)) {
        case 0: tried(true, vector_pushback(v, &x), -3, [&] { model.push_back(x); }); break;
        case 1:  // an element of the vector itself, whose block may move
            tried(present, vector_pushback(v, vector_at(v, i)), present ? -3 : -1,
                  [&] { model.push_back(copy[i]); });
            break;
        case 2: tried(true, vector_pushmulti(v, more.data(), more.size()), -2, [&] { append(more); }); break;
        case 3:
            if (copy.size() < 200) {
                tried(true, vector_concat(v, v), -3, [&] { append(copy); });
            } else {
                tried(true, vector_clear(v), 0, [&] { model.clear(); });
            }
            break;
        case 4:
            tried(true, vector_resize(v, i), -2, [&] { model.resize(i, x); });
            for (size_t k = copy.size(); k < v->count; ++k) vector_set(v, k, &x);
            break;
        case 5: tried(!copy.empty(), vector_popback(v), 0, [&] { model.pop_back(); }); break;
        case 6: tried(present, vector_set(v, i, &x), -2, [&] { model[i] = x; }); break;
        case 7: tried(present, vector_remove(v, i), -2, [&] { model.erase(model.begin() + long(i)); }); break;
        case 8: tried(true, vector_reverse(v), 0, [&] { std::reverse(model.begin(), model.end()); }); break;
        default: tried(true, vector_sort(v, compare_int), 0, [&] { std::sort(model.begin(), model.end()); });
        }
        const auto found = std::find(model.begin(), model.end(), x);
        EXPECT_EQ(vector_find(v, &x), found == model.end() ? -1 : found - model.begin());
        const int* data = static_cast<int*>(v->data);
        ASSERT_TRUE(std::equal(model.begin(), model.end(), data, data + v->count)) << "round " << round;
        ASSERT_TRUE(std::has_single_bit(v->capacity) && v->capacity >= v->count);
        ASSERT_EQ(vector_back(v), model.empty() ? nullptr : vector_at(v, model.size() - 1));
        ASSERT_EQ(memory.live, 2);
    }
    vector_release(v);
}

TEST_F(Containers, VectorEdges) {
    for (auto [asked, given] : std::map<size_t, size_t>{{0, 1}, {1, 1}, {5, 8}, {8, 8}, {9, 16}}) {
        EXPECT_EQ(Vector<int>::adopt(vector_new(sizeof(int), asked)).raw()->capacity, given);
    }
    auto owner = Vector<int>::adopt(vector_new(sizeof(int), 8));
    vector* v = owner.raw();
    for (int i = 0; i < 9; ++i) EXPECT_EQ(vector_pushback(v, &i), 0);
    EXPECT_EQ(v->capacity, 16U);
    for (size_t count : {SIZE_MAX, SIZE_MAX / 4}) EXPECT_EQ(vector_resize(v, count), -2);
    EXPECT_EQ(vector_pushmulti(v, v->data, SIZE_MAX), -2);
    EXPECT_EQ(vector_pushmulti(v, v->data, 0), 0);
    EXPECT_EQ(vector_concat(v, Vector<char>::adopt(vector_new(1, 1)).raw()), -2);
    EXPECT_EQ(vector_reverse(nullptr), 1);
    v->count = 17;
    EXPECT_EQ(vector_pushback(v, &v->count), -2);
}

// Elements are as many copies of one int as their size holds.
void check_deque(deque* d, const std::deque<int>& model, int live) {
    ASSERT_EQ(d->count, model.size());
    auto expected = model.begin();
    deque_it it;
    for (deque_begin(&it, d); it.valid; deque_next(&it)) {
        const int* ints = static_cast<int*>(it.element);
        ASSERT_TRUE(ints[0] == *expected && ints[d->elem_size / sizeof(int) - 1] == *expected);
        ++expected;
    }
    ASSERT_EQ(expected, model.end());
    ASSERT_EQ(deque_front(d), deque_at(d, 0));
    ASSERT_EQ(deque_back(d), deque_at(d, d->count - 1));
    const deque_block* prev = nullptr;
    for (const deque_block* b = d->first; b != nullptr; prev = b, b = b->next, --live) {
        ASSERT_EQ(b->prev, prev);
        ASSERT_TRUE(b->used > 0 && b->first + b->used <= d->slots);
        ASSERT_TRUE((b == d->first || b->first == 0) && (b == d->last || b->first + b->used == d->slots));
    }
    ASSERT_EQ(d->last, prev);
    ASSERT_EQ(live, 1) << "blocks that are not linked";
}

TEST_F(Containers, DequeFollowsModel) {
    for (size_t size : {4U, 100U, 1000U}) {
        memory.calls_until_refusal = -1;
        deque* d = deque_new_ex(size, &memory, Memory::alloc, Memory::release);
        std::deque<int> model;
        for (int round = 0; round < 3000; ++round) {
            const int x = int(below(1000));
            const std::vector<int> e(size / sizeof(int), x);
            const size_t i = below(model.size() + 1);
            const bool present = i < model.size();
            const auto place = model.begin() + long(i);
            const auto insert = [&] { model.insert(place, x); };
            deque_it it;
            deque_begin(&it, d);
            EXPECT_EQ(deque_advance(&it, i / 2) && deque_advance(&it, i - i / 2), present);
            EXPECT_EQ(it.element, deque_at(d, i));
            maybe_refuse();
            switch (below(6) + (round / 300 % 2 == 0 ? 0 : 3)) {  // growing and shrinking by turns
            case 0: tried(true, !deque_push_back(d, e.data()), 1, [&] { model.push_back(x); }); break;
            case 1: tried(true, !deque_push_front(d, e.data()), 1, [&] { model.push_front(x); }); break;
            case 2: tried(true, !deque_insert(d, i, e.data()), 1, insert); break;
            case 3:
                tried(true, !deque_insertit(d, &it, e.data()), 1, insert);
                EXPECT_EQ(it.element, deque_at(d, i));
                break;
            case 4: tried(!model.empty(), deque_pop_back(d), 0, [&] { model.pop_back(); }); break;
            case 5: tried(!model.empty(), deque_pop_front(d), 0, [&] { model.pop_front(); }); break;
            default:
                tried(present, deque_removeit(d, &it), -1, [&] { model.erase(place); });
                EXPECT_EQ(it.element, deque_at(d, i));
            }
            ASSERT_NO_FATAL_FAILURE(check_deque(d, model, memory.live)) << size << ", round " << round;
        }
        EXPECT_EQ(deque_clear(d), 0);
        check_deque(d, {}, memory.live);
        EXPECT_EQ(deque_release(d), 0);
    }
}

TEST_F(Containers, DequeEdges) {
    for (auto [size, slots] : std::map<size_t, size_t>{{1, 2016}, {8, 252}, {504, 4}, {505, 4}, {1000, 4}}) {
        deque* d = deque_new(size);
        EXPECT_TRUE(d->slots == slots && d->block_size == size * slots + sizeof(deque_block));
        const std::vector<char> e(size);
        EXPECT_TRUE(deque_push_front(d, e.data()) && d->first->first == slots - 1);
        EXPECT_TRUE(deque_push_back(d, e.data()) && d->first != d->last && d->last->first == 0);
        EXPECT_EQ(deque_insert(d, 3, e.data()), nullptr);
        deque_it it;
        EXPECT_FALSE(deque_begin(&it, d) && deque_advance(&it, SIZE_MAX));
        EXPECT_TRUE(!it.valid && !it.element && !it.owner && !it.block && it.index == INT64_MAX);
        deque_begin(&it, d);
        deque_pop_front(d);
        EXPECT_EQ(deque_removeit(d, &it), -1) << "the iterator's block is gone";
        deque_release(d);
    }
}

std::vector<std::pair<int, int>> compared;

int compare_and_note(const void* a, const void* b) {
    compared.emplace_back(int_of(a), int_of(b));
    return int_of(a) % 50 - int_of(b) % 50;
}

struct Wide {
    int first;
    char middle[150];
    int last;
};

// The comparisons, their order and the result, across several blocks too.
TEST_F(Containers, DequeSortRule) {
    for (int n : {0, 1, 2, 3, 4, 10, 60, 600}) {
        std::vector<int> model;
        Deque<Wide> d;
        for (int i = 1; i <= n; ++i) {
            model.push_back(n == 3 ? i : int(below(1000)));
            EXPECT_TRUE(d.push_back({model.back(), {}, model.back()}));
        }
        compared.clear();
        EXPECT_EQ(deque_sort(d.raw(), compare_and_note), n == 0 ? -1 : 0);  // nothing was created for none
        const auto seen = std::exchange(compared, {});
        for (size_t last = model.size(); last-- > 1;) {
            size_t m = 0;
            for (size_t i = 1; i < last; ++i) {
                if (compare_and_note(&model[m], &model[i]) < 0) m = i;
            }
            std::swap(model[m], model[last]);
        }
        EXPECT_EQ(seen, compared);
        for (size_t i = 0; i < model.size(); ++i)
            EXPECT_TRUE(d[i].first == model[i] && d[i].last == model[i]);
        EXPECT_TRUE(n != 3 || (model == std::vector<int>{3, 1, 2}));
    }
}

// Keys are compared through a pointer, whose target goes away as soon as the key is removed.
struct Key {
    const int* number;
    unsigned char tail[24];
};

constexpr auto number_of = [](const void* key) { return *static_cast<const Key*>(key)->number; };
constexpr auto less = [](const void* a, const void* b) { return number_of(a) < number_of(b); };
constexpr auto equal = [](const void* a, const void* b) { return number_of(a) == number_of(b); };

// Links, separators and equal depth below a node; counts the nodes and returns the height.
size_t check_node(const btree_node* node, int* nodes) {
    ++*nodes;
    size_t height = 0;
    for (size_t i = 0; i < node->count && !node->leaf; ++i) {
        const auto* child = static_cast<btree_node*>(node->children[i]);
        EXPECT_TRUE(child->parent == node && child->count > 0);
        const size_t child_height = check_node(child, nodes);
        EXPECT_TRUE(i == 0 || child_height == height);
        height = child_height;
        while (!child->leaf) child = static_cast<btree_node*>(child->children[0]);
        EXPECT_TRUE(i == 0 || memcmp(node->keys[i], child->keys[0], sizeof(Key)) == 0) << "separator";
    }
    return height + 1;
}

void check_tree(btree* t, const std::map<int, int>& model, int live) {
    ASSERT_EQ(t->count, model.size());
    int nodes = 0;
    check_node(t->root, &nodes);
    ASSERT_EQ(nodes + 1, live) << "nodes that are not linked";
    btree_it it;
    auto entry = model.begin();
    for (btree_begin(&it, t); it.valid; btree_next(&it), ++entry) {
        ASSERT_EQ(number_of(it.key), entry->first);
        ASSERT_TRUE(t->value_size == 0 || *static_cast<int*>(it.value) == entry->second);
    }
    ASSERT_EQ(entry, model.end());
    btree_it end;
    for (btree_end(&end, t), it = end; btree_prev(&it);) ASSERT_EQ(number_of(it.key), (--entry)->first);
    ASSERT_TRUE(entry == model.begin() && btree_it_equal(&it, &end) && !btree_next(&it));
    ASSERT_TRUE(model.empty() || (btree_rbegin(&it, t) && !btree_it_equal(&it, &end) && !btree_next(&it)));
}

TEST_F(Containers, BTreeFollowsModel) {
    constexpr int phase_length = 2500;
    for (size_t value_size : {sizeof(int), size_t{0}}) {
        memory.calls_until_refusal = -1;
        btree* t =
            btree_new_ex(sizeof(Key), value_size, less, equal, &memory, Memory::alloc, Memory::release);
        std::map<int, int> model;
        std::map<int, std::unique_ptr<int>> targets;
        for (int round = 0; round < 8 * phase_length; ++round) {
            // Ascending, descending and random numbers; growing and shrinking.
            const int phase = round / phase_length;
            int number = int(below(phase_length));
            if (phase == 1 || phase == 2) number = phase == 1 ? round % phase_length : -round % phase_length;
            Key key = {&number, {}};
            auto found = model.find(number);
            const bool present = found != model.end();
            btree_it it;
            ASSERT_EQ(btree_findit(&it, t, &key), present);
            ASSERT_EQ(btree_find(t, &key), it.value);
            maybe_refuse();
            if (phase == 1 || below(10) < (phase % 2 == 0 ? 7U : 2U)) {
                const bool replace = below(2) == 0;
                auto target = std::make_unique<int>(number);
                key.number = target.get();
                const bool inserted = btree_insert(t, &key, value_size > 0 ? &round : nullptr, replace);
                ASSERT_EQ(inserted, present ? replace : !memory.refused);
                if (inserted) model[number] = round;
                if (inserted && !present) targets[number] = std::move(target);
            } else if (phase % 2 == 0 || below(4) > 0) {
                ASSERT_EQ(btree_remove(t, &key), present);
                model.erase(number);
                targets.erase(number);
            } else {  // a run of entries from there on
                found = model.lower_bound(number);
                key.number = found != model.end() ? &found->first : &number;
                btree_findit(&it, t, &key);
                for (size_t n = below(8); n > 0 && found != model.end(); --n) {
                    ASSERT_TRUE(btree_removeit(&it));
                    targets.erase(found->first);
                    found = model.erase(found);
                    ASSERT_TRUE(found == model.end() ? !it.valid : number_of(it.key) == found->first);
                }
            }
            if (round % 7000 == 6000) {
                btree_clear(t);
                model.clear();
                targets.clear();
            }
            if (round % 50 != 0 && !memory.refused) continue;
            ASSERT_NO_FATAL_FAILURE(check_tree(t, model, memory.live)) << "round " << round;
        }
        btree_release(t);
    }
}

TEST_F(Containers, Refusals) {
    EXPECT_FALSE(vector_new(0, 1) || vector_new(1, SIZE_MAX) || vector_new(SIZE_MAX / 4, 8));
    EXPECT_FALSE(deque_new(0) || deque_new(SIZE_MAX / 4) || deque_new(SIZE_MAX / 4 - 1));
    EXPECT_FALSE(btree_new(SIZE_MAX / 16, 0, less, equal) || btree_new(0, 2, less, equal));
    const auto refused = [&](container_alloc alloc, container_release release) {
        return !vector_new_ex(1, 1, &memory, alloc, release) && !deque_new_ex(1, &memory, alloc, release) &&
               !btree_new_ex(1, 0, less, equal, &memory, alloc, release);
    };
    EXPECT_TRUE(refused(nullptr, Memory::release) && refused(Memory::alloc, nullptr));
    for (int calls : {0, 1}) {  // no header, or nothing behind it
        memory.calls_until_refusal = calls;
        EXPECT_EQ(vector_new_ex(1, 1, &memory, Memory::alloc, Memory::release), nullptr);
        memory.calls_until_refusal = calls;
        EXPECT_EQ(btree_new_ex(1, 0, less, equal, &memory, Memory::alloc, Memory::release), nullptr);
    }
}

}  // namespace
