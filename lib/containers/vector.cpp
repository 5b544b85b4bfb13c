// vector: a growable array whose capacity is always a power of two.

#include "lib/containers/vector.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

unsigned char* slot(const vector* v, size_t index) {
    return static_cast<unsigned char*>(v->data) + index * v->elem_size;
}

// The smallest power of two at or above count and its size in bytes; false if either cannot be represented.
bool room_for(size_t count, size_t elem_size, size_t* capacity, size_t* bytes) {
    constexpr size_t largest = std::numeric_limits<size_t>::max() / 2 + 1;
    if (count > largest) return false;
    *capacity = std::bit_ceil(count);
    return !__builtin_mul_overflow(*capacity, elem_size, bytes);
}

// Moves the elements to a larger block. The old block is handed back unreleased, because what is about to be
// appended may lie in it. Null when there is no memory.
void* move_to_larger(vector* v, size_t count) {
    size_t capacity = 0;
    size_t bytes = 0;
    if (!room_for(count, v->elem_size, &capacity, &bytes)) return nullptr;
    void* data = v->alloc(v->context, bytes);
    if (data == nullptr) return nullptr;
    memcpy(data, v->data, std::min(v->count, v->capacity) * v->elem_size);
    void* old = v->data;
    v->data = data;
    v->capacity = capacity;
    return old;
}

bool append(vector* v, const void* elements, size_t n) {
    size_t count = 0;
    if (v->count > v->capacity || __builtin_add_overflow(v->count, n, &count)) return false;
    void* old = nullptr;
    if (count > v->capacity) {
        old = move_to_larger(v, count);
        if (old == nullptr) return false;
    }
    memmove(slot(v, v->count), elements, n * v->elem_size);
    v->count = count;
    if (old != nullptr) v->release(v->context, old);
    return true;
}

}  // namespace

void* container_malloc(void*, size_t size) {
    return malloc(size);
}

void container_free(void*, void* memory) {
    free(memory);
}

void container_swap(void* a, void* b, size_t size) {
    auto* left = static_cast<unsigned char*>(a);
    auto* right = static_cast<unsigned char*>(b);
    while (size > 0) {
        unsigned char chunk[64];
        const size_t n = std::min(size, sizeof chunk);
        memcpy(chunk, left, n);
        memcpy(left, right, n);
        memcpy(right, chunk, n);
        left += n;
        right += n;
        size -= n;
    }
}

vector* vector_new_ex(size_t elem_size, size_t capacity, void* context, container_alloc alloc,
                      container_release release) {
    if (elem_size == 0 || alloc == nullptr || release == nullptr) return nullptr;
    size_t bytes = 0;
    if (!room_for(std::max<size_t>(capacity, 1), elem_size, &capacity, &bytes)) return nullptr;
    auto* v = static_cast<vector*>(alloc(context, sizeof(vector)));
    if (v == nullptr) return nullptr;
    void* data = alloc(context, bytes);
    if (data == nullptr) {
        release(context, v);
        return nullptr;
    }
    *v = {elem_size, capacity, 0, data, context, alloc, release};
    return v;
}

vector* vector_new(size_t elem_size, size_t capacity) {
    return vector_new_ex(elem_size, capacity, nullptr, container_malloc, container_free);
}

int vector_pushback(vector* v, const void* element) {
    if (v == nullptr || element == nullptr) return -1;
    if (v->count > v->capacity) return -2;
    return append(v, element, 1) ? 0 : -3;
}

int vector_pushmulti(vector* v, const void* elements, size_t n) {
    if (v == nullptr || elements == nullptr) return -1;
    return append(v, elements, n) ? 0 : -2;
}

int vector_concat(vector* dst, const vector* src) {
    if (dst == nullptr || src == nullptr) return -1;
    if (dst->elem_size != src->elem_size) return -2;
    if (src->count > src->capacity) return -3;
    return append(dst, src->data, src->count) ? 0 : -3;
}

int vector_resize(vector* v, size_t count) {
    if (v == nullptr) return -1;
    if (count > v->capacity) {
        void* old = move_to_larger(v, count);
        if (old == nullptr) return -2;
        v->release(v->context, old);
    }
    v->count = count;
    return 0;
}

int vector_popback(vector* v) {
    if (v == nullptr) return -1;
    if (v->count > 0) --v->count;
    return 0;
}

void* vector_at(const vector* v, size_t index) {
    return v != nullptr && index < v->count ? slot(v, index) : nullptr;
}

void* vector_back(const vector* v) {
    return v != nullptr && v->count > 0 ? slot(v, v->count - 1) : nullptr;
}

int vector_set(vector* v, size_t index, const void* element) {
    if (v == nullptr || element == nullptr) return -1;
    if (index >= v->count) return -2;
    memmove(slot(v, index), element, v->elem_size);
    return 0;
}

int vector_remove(vector* v, size_t index) {
    if (v == nullptr) return -1;
    if (index >= v->count) return -2;
    memmove(slot(v, index), slot(v, index + 1), (v->count - index - 1) * v->elem_size);
    --v->count;
    return 0;
}

int vector_reverse(vector* v) {
    if (v == nullptr) return 1;
    for (size_t low = 0, high = v->count; low + 1 < high; ++low) {
        --high;
        container_swap(slot(v, low), slot(v, high), v->elem_size);
    }
    return 0;
}

int64_t vector_find(const vector* v, const void* element) {
    if (v == nullptr || element == nullptr) return -1;
    for (size_t i = 0; i < v->count; ++i) {
        if (memcmp(slot(v, i), element, v->elem_size) == 0) return static_cast<int64_t>(i);
    }
    return -1;
}

int vector_sort(vector* v, container_compare compare) {
    if (v == nullptr || compare == nullptr) return -1;
    if (v->count >= 2) qsort(v->data, v->count, v->elem_size, compare);
    return 0;
}

int vector_clear(vector* v) {
    if (v == nullptr) return -1;
    v->count = 0;
    return 0;
}

int vector_release(vector* v) {
    if (v == nullptr) return -1;
    v->release(v->context, v->data);
    v->release(v->context, v);
    return 0;
}
