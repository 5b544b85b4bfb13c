#pragma once

// vector: a growable array of elements of one size, copied in and out as bytes. What an element points to
// stays the caller's. C++ code uses the typed front end in container_vector.h.
//
// Returned element pointers are valid until the vector changes. A failed call leaves the vector as it was.

#include <cstddef>
#include <cstdint>

// The allocator pair that every container gets at creation and keeps; `context` is passed through untouched.
// The memory must be aligned as malloc's is; alloc returns null when there is none.
using container_alloc = void* (*)(void* context, size_t size);
using container_release = void (*)(void* context, void* memory);

// The pair of the plain constructors: malloc and free; the context is ignored.
void* container_malloc(void* context, size_t size);
void container_free(void* context, void* memory);

// Orders two elements as qsort's comparator does: negative, zero or positive.
using container_compare = int (*)(const void* a, const void* b);

// Exchanges the bytes of two elements, which must not overlap. Takes no memory.
void container_swap(void* a, void* b, size_t size);

struct vector {
    size_t elem_size;  // bytes
    size_t capacity;   // elements; a power of two, at least 1
    size_t count;      // elements; at most capacity
    void* data;
    void* context;
    container_alloc alloc;
    container_release release;
};

// A new empty vector with room for `capacity` elements (0 counts as 1), rounded up to a power of two. Null
// for an element size of 0, a null function or no memory. vector_release frees it.
[[nodiscard]] vector* vector_new_ex(size_t elem_size, size_t capacity, void* context, container_alloc alloc,
                                    container_release release);
[[nodiscard]] vector* vector_new(size_t elem_size, size_t capacity);

// Appends one element, which may lie in the vector itself. 0; -1 for a null argument; -2 for a corrupt header
// (count above capacity); -3 when there is no memory.
[[nodiscard]] int vector_pushback(vector* v, const void* element);

// Appends n elements, which may lie in the vector itself. 0; -1 for a null argument (even when n is 0); -2
// when there is no memory or the header is corrupt.
[[nodiscard]] int vector_pushmulti(vector* v, const void* elements, size_t n);

// Appends all elements of src, which may be dst. 0; -1 for a null argument; -2 for different element sizes;
// -3 when there is no memory or a header is corrupt.
[[nodiscard]] int vector_concat(vector* dst, const vector* src);

// Sets the count; new elements are uninitialised, and shrinking keeps the memory. 0; -1 for null; -2 when
// there is no memory.
[[nodiscard]] int vector_resize(vector* v, size_t count);

// Drops the last element, if there is one. 0; -1 for null.
int vector_popback(vector* v);

// The element at an index or the last one; null if there is none.
void* vector_at(const vector* v, size_t index);
void* vector_back(const vector* v);

// Copies an element over the one at index; removes the one at index. 0; -1 for null; -2 for a bad index.
int vector_set(vector* v, size_t index, const void* element);
int vector_remove(vector* v, size_t index);

// Reverses the order. 0; 1 (positive, unlike the others) for null.
int vector_reverse(vector* v);

// The index of the first element with the same bytes, padding included; -1 if there is none or for null.
int64_t vector_find(const vector* v, const void* element);

// Sorts with qsort: equal elements end in any order. 0; -1 for a null argument.
int vector_sort(vector* v, container_compare compare);

// Count 0, the memory is kept. 0; -1 for null.
int vector_clear(vector* v);

// Frees the vector, not what its elements point to. 0; -1 for null.
int vector_release(vector* v);
