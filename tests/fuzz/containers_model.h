#pragma once

// Any bytes as operations on a vector, a deque or a map, of which some meet an allocator that refuses soon: results
// and contents against those of the standard library, and the blocks and nodes against their own rules.

#include <algorithm>
#include <bit>
#include <deque>
#include <map>
#include <memory>
#include <span>

#include "lib/containers/container_btree.h"
#include "lib/containers/container_deque.h"
#include "lib/containers/container_vector.h"
#include "tests/fuzz/words.h"

namespace containers_model {

using fuzz::require;

// An allocator that counts its blocks and can be told to refuse.
struct Memory {
    size_t live = 0;
    size_t calls_until_refusal = SIZE_MAX;
    bool refused = false;

    static void* allocate(void* context, size_t size) {
        auto* self = static_cast<Memory*>(context);
        if (self->calls_until_refusal == 0) {
            self->refused = true;
            return nullptr;
        }
        self->calls_until_refusal--;
        self->live++;
        return malloc(size);
    }
    static void release(void* context, void* memory) {
        static_cast<Memory*>(context)->live--;
        free(memory);
    }

    // Expects failure if it is not possible or memory was refused; otherwise the model changes too.
    template <class Change>
    void tried(bool possible, int result, int failure, Change change_model) const {
        possible &= !refused;
        require(result == (possible ? 0 : failure), "a result");
        if (possible) change_model();
    }
};

struct Operation {
    unsigned code;   // below 8, from growing to shrinking
    unsigned value;  // below 1024
};

template <typename Step>
void each(std::span<const uint8_t> bytes, Memory* memory, Step step) {
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        memory->refused = false;
        memory->calls_until_refusal = bytes[i] >= 0xE0 ? bytes[i + 1] % 3 : SIZE_MAX;
        step(Operation{bytes[i] % 8U, bytes[i] / 8 % 4 * 256U + bytes[i + 1]});
    }
}

// Large ones are looked at from time to time.
inline bool is_examined(size_t count, unsigned value) {
    return count < 100 || value % 32 == 0;
}

inline void drive_vector(std::span<const uint8_t> bytes) {
    const auto compare = [](const void* a, const void* b) {
        return *static_cast<const int*>(a) - *static_cast<const int*>(b);
    };
    Memory memory;
    vector* v = vector_new_ex(sizeof(int), 5, &memory, Memory::allocate, Memory::release);
    std::vector<int> model;
    each(bytes, &memory, [&](Operation op) {
        const int x = static_cast<int>(op.value % 50);
        const size_t i = op.value % (model.size() * 5 / 4 + 3);
        const bool present = i < model.size();
        const auto place = model.begin() + static_cast<long>(present ? i : 0);
        const std::vector<int> copy = model, more(1 + op.value % 20, x);
        const auto append = [&](const auto& list) { model.insert(model.end(), list.begin(), list.end()); };
        switch (op.code) {
        case 0: memory.tried(true, vector_pushback(v, &x), -3, [&] { model.push_back(x); }); break;
        case 1:  // an element of the vector itself, whose block may move
            memory.tried(present, vector_pushback(v, vector_at(v, i)), present ? -3 : -1,
                         [&] { model.push_back(copy[i]); });
            break;
        case 2:
            memory.tried(true, vector_pushmulti(v, more.data(), more.size()), -2, [&] { append(more); });
            break;
        case 3:
            if (copy.size() < 200) {
                memory.tried(true, vector_concat(v, v), -3, [&] { append(copy); });
            } else {
                memory.tried(true, vector_clear(v), 0, [&] { model.clear(); });
            }
            break;
        case 4:
            memory.tried(true, vector_resize(v, i), -2, [&] { model.resize(i, x); });
            for (size_t k = copy.size(); k < v->count; k++) vector_set(v, k, &x);
            break;
        case 5: memory.tried(present, vector_set(v, i, &x), -2, [&] { *place = x; }); break;
        case 6: memory.tried(present, vector_remove(v, i), -2, [&] { model.erase(place); }); break;
        default:
            if (op.value % 3 == 0) {
                memory.tried(!copy.empty(), vector_popback(v), 0, [&] { model.pop_back(); });
            } else if (op.value % 3 == 1) {
                memory.tried(true, vector_reverse(v), 0, [&] { std::reverse(model.begin(), model.end()); });
            } else {
                memory.tried(true, vector_sort(v, compare), 0,
                             [&] { std::sort(model.begin(), model.end()); });
            }
        }
        const auto found = std::find(model.begin(), model.end(), x);
        require(vector_find(v, &x) == (found == model.end() ? -1 : found - model.begin()), "vector_find");
        const int* elements = static_cast<int*>(v->data);
        require(std::equal(model.begin(), model.end(), elements, elements + v->count), "the vector");
        require(std::has_single_bit(v->capacity) && v->capacity >= v->count, "the capacity");
        require(vector_back(v) == vector_at(v, model.size() - 1), "the last element");
        require(memory.live == 2, "the vector's blocks");
    });
    vector_release(v);
    require(memory.live == 0, "a vector was not freed");
}

// Elements are as many copies of one number as their size holds.
inline void check_deque(deque* d, const std::deque<unsigned>& model, size_t live) {
    deque_it it;
    deque_begin(&it, d);
    for (const unsigned value : model) {
        require(it.valid, "the deque's end");
        const auto* numbers = static_cast<unsigned*>(it.element);
        require(numbers[0] == value && numbers[d->elem_size / sizeof value - 1] == value, "the deque");
        deque_next(&it);
    }
    require(!it.valid && d->count == model.size(), "the deque's end");
    require(deque_front(d) == deque_at(d, 0) && deque_back(d) == deque_at(d, d->count - 1),
            "the deque's ends");
    const deque_block* prev = nullptr;
    for (const deque_block* b = d->first; b != nullptr; prev = b, b = b->next, live--) {
        require(b->prev == prev && b->used > 0 && b->first + b->used <= d->slots, "a block");
        require((b == d->first || b->first == 0) && (b == d->last || b->first + b->used == d->slots),
                "a gap");
    }
    require(d->last == prev && live == 1, "blocks that are not linked");
}

template <size_t size>
void drive_deque(std::span<const uint8_t> bytes) {
    Memory memory;
    deque* d = deque_new_ex(size, &memory, Memory::allocate, Memory::release);
    std::deque<unsigned> model;
    each(bytes, &memory, [&](Operation op) {
        const std::vector<unsigned> element(size / sizeof(unsigned), op.value);
        const size_t i = op.value % (model.size() + 1);
        const auto place = model.begin() + static_cast<long>(i);
        deque_it it;
        deque_begin(&it, d);
        deque_advance(&it, i / 2);
        require(deque_advance(&it, i - i / 2) == (i < model.size()) && it.element == deque_at(d, i),
                "deque_advance");
        const auto insert = [&] { model.insert(place, op.value); };
        const void* const e = element.data();
        switch (op.code) {
        case 0: memory.tried(true, !deque_push_back(d, e), 1, [&] { model.push_back(op.value); }); break;
        case 1: memory.tried(true, !deque_push_front(d, e), 1, [&] { model.push_front(op.value); }); break;
        case 2: memory.tried(true, !deque_insert(d, i, e), 1, insert); break;
        case 3:
            memory.tried(true, !deque_insertit(d, &it, e), 1, insert);
            require(it.element == deque_at(d, i), "the iterator at an insertion");
            break;
        case 6: memory.tried(!model.empty(), deque_pop_back(d), 0, [&] { model.pop_back(); }); break;
        case 7: memory.tried(!model.empty(), deque_pop_front(d), 0, [&] { model.pop_front(); }); break;
        default:
            memory.tried(i < model.size(), deque_removeit(d, &it), -1, [&] { model.erase(place); });
            require(it.element == deque_at(d, i), "the iterator at a removal");
        }
        if (is_examined(model.size(), op.value)) check_deque(d, model, memory.live);
    });
    deque_clear(d);
    check_deque(d, {}, memory.live);
    deque_release(d);
    require(memory.live == 0, "a deque was not freed");
}

// Keys are compared through a pointer, whose target goes away as soon as the key is removed.
struct Key {
    const unsigned* number;
    char tail[24];
};

inline unsigned number_of(const void* key) {
    return *static_cast<const Key*>(key)->number;
}

// The value last stored and what the tree's key points to.
struct Stored {
    size_t value;
    std::unique_ptr<unsigned> number;
};

// Links, separators and equal depth below a node; counts the nodes and returns the height.
inline size_t check_node(const btree_node* node, size_t* nodes) {
    ++*nodes;
    size_t height = 0;
    for (size_t i = 0; i < node->count && !node->leaf; i++) {
        const auto* child = static_cast<btree_node*>(node->children[i]);
        require(child->parent == node && child->count > 0, "a child");
        const size_t child_height = check_node(child, nodes);
        require(i == 0 || child_height == height, "the depth");
        height = child_height;
        while (!child->leaf) child = static_cast<btree_node*>(child->children[0]);
        require(i == 0 || memcmp(node->keys[i], child->keys[0], sizeof(Key)) == 0, "a separator");
    }
    return height + 1;
}

inline void check_btree(btree* t, const std::map<unsigned, Stored>& model, size_t live) {
    size_t nodes = 0;
    check_node(t->root, &nodes);
    require(nodes + 1 == live && t->count == model.size(), "nodes that are not linked");
    btree_it it, back;
    btree_begin(&it, t);
    for (const auto& [number, stored] : model) {
        require(it.valid && number_of(it.key) == number, "a key");
        require(t->value_size == 0 || *static_cast<size_t*>(it.value) == stored.value, "a value");
        btree_next(&it);
    }
    btree_end(&back, t);
    require(btree_it_equal(&it, &back) && !btree_next(&it), "the end");
    for (auto entry = model.rbegin(); entry != model.rend(); ++entry)
        require(btree_prev(&back) && number_of(back.key) == entry->first, "the way back");
    require(!btree_prev(&back) && btree_it_equal(&it, &back), "the end of the way back");
    require(model.empty() || (btree_rbegin(&it, t) && !btree_it_equal(&it, &back) && !btree_next(&it)),
            "the last");
}

template <size_t value_size>
void drive_btree(std::span<const uint8_t> bytes) {
    const auto less = [](const void* a, const void* b) { return number_of(a) < number_of(b); };
    const auto equal = [](const void* a, const void* b) { return number_of(a) == number_of(b); };
    Memory memory;
    btree* t = btree_new_ex(sizeof(Key), value_size, less, equal, &memory, Memory::allocate, Memory::release);
    std::map<unsigned, Stored> model;
    size_t round = 0;
    const auto insert = [&](unsigned number, bool replace) {
        const bool present = model.contains(number);
        auto target = std::make_unique<unsigned>(number);
        const Key key = {target.get(), {}};
        memory.refused = false;
        const bool inserted = btree_insert(t, &key, value_size > 0 ? &round : nullptr, replace);
        require(inserted == (present ? replace : !memory.refused), "an insertion");
        if (inserted) model[number].value = round;
        if (inserted && !present) model[number].number = std::move(target);
    };
    each(bytes, &memory, [&](Operation op) {
        round++;
        const Key key = {&op.value, {}};
        auto entry = model.find(op.value);
        btree_it it;
        require(btree_findit(&it, t, &key) == (entry != model.end()), "btree_findit");
        require(btree_find(t, &key) == it.value, "btree_find");
        switch (op.code) {
        case 0:
        case 1:  // runs in both directions, so that nodes split on either side
            for (unsigned i = 0; i < 20; i++) insert(op.code == 0 ? op.value + i : op.value - i, true);
            break;
        case 2:
        case 3: insert(op.value, op.code == 2); break;
        case 5:
            for (unsigned i = op.value % 32; i > 0 && entry != model.end(); i--) {
                require(btree_removeit(&it), "a removal at an iterator");
                entry = model.erase(entry);
                require(entry == model.end() ? !it.valid : number_of(it.key) == entry->first, "the next one");
            }
            break;
        default:
            require(btree_remove(t, &key) == (entry != model.end()), "a removal");
            if (entry != model.end()) model.erase(entry);
            if (op.code < 7 || op.value > 10) break;
            btree_clear(t);
            model.clear();
        }
        if (is_examined(model.size(), op.value) || memory.refused) check_btree(t, model, memory.live);
    });
    btree_release(t);
    require(memory.live == 0, "a tree was not freed");
}

inline constexpr void (*drivers[])(std::span<const uint8_t>) = {
    drive_vector,      drive_deque<4>, drive_deque<100>,
    drive_deque<1000>, drive_btree<0>, drive_btree<sizeof(size_t)>};

}  // namespace containers_model
