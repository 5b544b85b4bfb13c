// Any sequence of operations on a vector, a deque or a map, of which some meet an allocator that refuses,
// against those of the standard library.

#include <algorithm>
#include <deque>
#include <map>

#include "lib/containers/container_btree.h"
#include "lib/containers/container_deque.h"
#include "lib/containers/container_vector.h"
#include "tests/fuzz/words.h"

namespace {

bool refuses, refused;

void* allocate(void*, size_t size) {
    refused |= refuses;
    return refuses ? nullptr : malloc(size);
}
void release(void*, void* memory) {
    free(memory);
}

struct Operation {
    unsigned code, value;
};

// Whether an operation did what the model is to do, too; it must have unless memory was refused.
bool done(bool success, bool possible = true) {
    fuzz::require(success == (possible && !refused), "a result");
    return success;
}

template <typename Step>
void each(const uint8_t* data, size_t size, Step step) {
    for (size_t i = 0; i + 1 < size; i += 2) {
        refused = false;
        refuses = data[i] >= 0xE0;
        step(Operation{data[i] & 7U, data[i] / 8 % 4 * 256U + data[i + 1]});
    }
    refuses = false;
}

void drive_vector(const uint8_t* data, size_t size) {
    vector* v = vector_new_ex(sizeof(unsigned), 1, nullptr, allocate, release);
    std::vector<unsigned> model;
    each(data, size, [&](Operation op) {
        const size_t index = model.empty() ? op.value : op.value % (model.size() + 1);
        const bool present = index < model.size();
        const auto place = model.begin() + static_cast<long>(present ? index : 0);
        switch (op.code) {
        case 0:
        case 1:
            if (done(vector_pushback(v, &op.value) == 0)) model.push_back(op.value);
            break;
        case 2: {
            const std::vector<unsigned> copy(model.begin(),
                                             model.begin() + static_cast<long>(model.size() % 50));
            if (done(vector_pushmulti(v, v->data, copy.size()) == 0))
                model.insert(model.end(), copy.begin(), copy.end());
            break;
        }
        case 3:
            if (done(vector_remove(v, index) == 0, present)) model.erase(place);
            break;
        case 4:
            if (done(vector_set(v, index, &op.value) == 0, present)) *place = op.value;
            break;
        case 5:
            vector_reverse(v);
            std::reverse(model.begin(), model.end());
            break;
        case 6:
            if (done(vector_resize(v, index) == 0) && !present) {
                for (size_t i = model.size(); i < index; i++) done(vector_set(v, i, &op.value) == 0);
            }
            if (v->count == index) model.resize(index, op.value);
            break;
        default:
            vector_sort(v, [](const void* a, const void* b) {
                const auto left = *static_cast<const unsigned*>(a), right = *static_cast<const unsigned*>(b);
                return (left > right) - (left < right);
            });
            std::sort(model.begin(), model.end());
        }
        const auto* elements = static_cast<const unsigned*>(v->data);
        fuzz::require(std::equal(model.begin(), model.end(), elements, elements + v->count), "the vector");
    });
    vector_release(v);
}

void drive_deque(const uint8_t* data, size_t size) {
    struct Element {
        unsigned value;
        char filler[400];
    };
    deque* d = deque_new_ex(sizeof(Element), nullptr, allocate, release);
    std::deque<unsigned> model;
    each(data, size, [&](Operation op) {
        const Element element = {.value = op.value, .filler = {}};
        const size_t index = op.value % (model.size() + 1);
        const auto place = model.begin() + static_cast<long>(index);
        deque_it it;
        deque_begin(&it, d);
        deque_advance(&it, index);
        switch (op.code) {
        case 0:
            if (done(deque_push_back(d, &element) != nullptr)) model.push_back(op.value);
            break;
        case 1:
            if (done(deque_push_front(d, &element) != nullptr)) model.push_front(op.value);
            break;
        case 2:
            if (done(deque_insert(d, index, &element) != nullptr)) model.insert(place, op.value);
            break;
        case 3:
        case 4:
            if (done(deque_insertit(d, &it, &element) != nullptr)) model.insert(place, op.value);
            break;
        case 5:
            if (done(deque_removeit(d, &it) == 0, index < model.size())) model.erase(place);
            break;
        case 6:
            deque_pop_back(d);
            if (!model.empty()) model.pop_back();
            break;
        default:
            deque_pop_front(d);
            if (!model.empty()) model.pop_front();
        }
        deque_begin(&it, d);
        for (const unsigned value : model) {
            fuzz::require(it.valid && static_cast<Element*>(it.element)->value == value, "the deque");
            deque_next(&it);
        }
        fuzz::require(!it.valid && d->count == model.size(), "the deque's end");
    });
    deque_release(d);
}

void drive_btree(const uint8_t* data, size_t size) {
    const auto less = [](const void* a, const void* b) {
        return *static_cast<const unsigned*>(a) < *static_cast<const unsigned*>(b);
    };
    const auto equal = [](const void* a, const void* b) {
        return *static_cast<const unsigned*>(a) == *static_cast<const unsigned*>(b);
    };
    btree* t = btree_new_ex(sizeof(unsigned), sizeof(size_t), less, equal, nullptr, allocate, release);
    std::map<unsigned, size_t> model;
    size_t round = 0;
    each(data, size, [&](Operation op) {
        const bool present = model.contains(op.value);
        round++;
        btree_it it;
        switch (op.code) {
        case 0:
        case 1:
        case 2:  // a run of keys, so that nodes split
            for (unsigned key = op.value; key < op.value + 20 && !refuses; key += op.code + 1) {
                done(btree_insert(t, &key, &round, true));
                model[key] = round;
            }
            if (done(btree_insert(t, &op.value, &round, true))) model[op.value] = round;
            break;
        case 3:
            if (done(btree_insert(t, &op.value, &round, false), !present)) model[op.value] = round;
            break;
        case 4:
        case 5:
            done(btree_remove(t, &op.value), present);
            model.erase(op.value);
            break;
        default:
            done(btree_findit(&it, t, &op.value), present);
            for (unsigned i = 0; i < 30 && it.valid; i++) {
                model.erase(*static_cast<const unsigned*>(it.key));
                done(btree_removeit(&it));
            }
        }
        btree_begin(&it, t);
        for (const auto& [key, value] : model) {
            fuzz::require(it.valid && *static_cast<const unsigned*>(it.key) == key, "a key");
            fuzz::require(*static_cast<size_t*>(it.value) == value && btree_find(t, &key) == it.value,
                          "a value");
            btree_next(&it);
        }
        fuzz::require(!it.valid && t->count == model.size(), "the map's end");
    });
    btree_release(t);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    constexpr void (*drive[])(const uint8_t*, size_t) = {drive_vector, drive_deque, drive_btree};
    drive[data[0] % 3](data + 1, size - 1);
    return 0;
}
