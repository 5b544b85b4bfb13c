// The containers against their models with random operations, and in their corners. GARNEL_TEST_SEED repeats a run.

#include <gtest/gtest.h>

#include <vector>

#include "tests/fuzz/containers_model.h"
#include "tests/unit/helpers.h"

namespace {

using containers_model::Memory;

// Growing and shrinking by turns.
TEST(Containers, FollowModels) {
    std::mt19937_64 random = seeded_random();
    for (const auto drive : containers_model::drivers) {
        std::vector<uint8_t> bytes;
        for (unsigned i = 0; i < 12000; i++) {
            const bool growing = i / 1500 % 2 == 0;
            bytes.push_back(static_cast<uint8_t>(random() % 32 * 8 + random() % 6 + (growing ? 0 : 2)));
            bytes.push_back(static_cast<uint8_t>(random()));
        }
        drive(bytes);
    }
}

TEST(Containers, VectorEdges) {
    for (auto [asked, given] : std::map<size_t, size_t>{{0, 1}, {1, 1}, {5, 8}, {8, 8}, {9, 16}}) {
        EXPECT_EQ(Vector<int>::adopt(vector_new(sizeof(int), asked)).raw()->capacity, given);
    }
    auto owner = Vector<int>::adopt(vector_new(sizeof(int), 8));
    vector* v = owner.raw();
    EXPECT_EQ(vector_resize(v, 9), 0);
    EXPECT_EQ(v->capacity, 16U);
    for (size_t count : {SIZE_MAX, SIZE_MAX / 4}) EXPECT_EQ(vector_resize(v, count), -2);
    EXPECT_EQ(vector_pushmulti(v, v->data, SIZE_MAX), -2);
    EXPECT_EQ(vector_pushmulti(v, v->data, 0), 0);
    EXPECT_EQ(vector_concat(v, Vector<char>::adopt(vector_new(1, 1)).raw()), -2);
    EXPECT_EQ(vector_reverse(nullptr), 1);
    v->count = 17;
    EXPECT_EQ(vector_pushback(v, &v->count), -2);
}

TEST(Containers, DequeEdges) {
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
        EXPECT_EQ(deque_insertit(d, &it, e.data()), nullptr);
        deque_release(d);
    }
}

struct Wide {
    int first;
    char middle[150];
    int last;
};

std::vector<std::pair<int, int>> compared;

int compare_and_note(const void* a, const void* b) {
    const int left = *static_cast<const int*>(a), right = *static_cast<const int*>(b);
    compared.emplace_back(left, right);
    return left % 50 - right % 50;
}

// The comparisons, their order and the result, across several blocks too.
TEST(Containers, DequeSortRule) {
    std::mt19937_64 random = seeded_random();
    for (int n : {0, 1, 2, 3, 4, 10, 60, 600}) {
        std::vector<int> model;
        Deque<Wide> d;
        for (int i = 1; i <= n; ++i) {
            model.push_back(n == 3 ? i : static_cast<int>(random() % 1000));
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

TEST(Containers, Refusals) {
    const btree_predicate any = [](const void*, const void*) { return true; };
    EXPECT_FALSE(vector_new(0, 1) || vector_new(1, SIZE_MAX) || vector_new(SIZE_MAX / 4, 8));
    EXPECT_FALSE(deque_new(0) || deque_new(SIZE_MAX / 4) || deque_new(SIZE_MAX / 4 - 1));
    EXPECT_FALSE(btree_new(SIZE_MAX / 16, 0, any, any) || btree_new(0, 2, any, any));
    Memory memory;
    const auto refused = [&](container_alloc alloc, container_release release) {
        return !vector_new_ex(1, 1, &memory, alloc, release) && !deque_new_ex(1, &memory, alloc, release) &&
               !btree_new_ex(1, 0, any, any, &memory, alloc, release);
    };
    EXPECT_TRUE(refused(nullptr, Memory::release) && refused(Memory::allocate, nullptr));
    for (size_t calls : {0, 1}) {  // no header, or nothing behind it
        memory = {.calls_until_refusal = calls};
        EXPECT_EQ(vector_new_ex(1, 1, &memory, Memory::allocate, Memory::release), nullptr);
        memory = {.calls_until_refusal = calls};
        EXPECT_EQ(btree_new_ex(1, 0, any, any, &memory, Memory::allocate, Memory::release), nullptr);
        EXPECT_EQ(memory.live, 0U);
    }
}

}  // namespace
