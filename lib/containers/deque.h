#pragma once

// deque: a double-ended queue of elements of one size, copied in and out as bytes and kept in linked blocks
// of about 2 KiB. What an element points to stays the caller's. C++ code uses the typed front end in
// container_deque.h.
//
// Pushing and popping at the ends leaves the other elements where they are; insertion and removal elsewhere
// moves the elements between the place and the nearer end, and invalidates pointers and iterators to them. A
// failed call leaves the deque as it was. Elements are aligned as far as their size allows: a block's slots
// begin at an address aligned for any type.

#include <cstddef>
#include <cstdint>

#include "lib/containers/vector.h"  // the allocator pair

// Header of a block; the element slots follow it. The used slots are one run. Only the first block has free
// slots before its run and only the last block has free slots behind it.
struct alignas(std::max_align_t) deque_block {
    deque_block* next;
    deque_block* prev;
    size_t first;  // index of the first used slot
    size_t used;   // number of used slots, never 0
};
static_assert(sizeof(void*) != 8 || sizeof(deque_block) == 32);

struct deque {
    size_t count;       // elements
    size_t elem_size;   // bytes
    size_t block_size;  // bytes, header included
    size_t slots;       // per block: as many as fit into 2016 bytes, but at least 4
    deque_block* first;
    deque_block* last;
    void* context;
    container_alloc alloc;
    container_release release;
};

// Iterator record. At the end: not valid, all pointers null, index INT64_MAX.
struct deque_it {
    void* element;
    bool valid;
    deque* owner;
    deque_block* block;
    int64_t index;  // within the block's used run
};

// The element at a position of a block's used run.
inline void* deque_element(const deque* d, const deque_block* block, size_t index) {
    auto* slots = const_cast<deque_block*>(block) + 1;
    return reinterpret_cast<unsigned char*>(slots) + (block->first + index) * d->elem_size;
}

// A new empty deque. Null for an element size of 0, a null function or no memory. deque_release frees it.
[[nodiscard]] deque* deque_new_ex(size_t elem_size, void* context, container_alloc alloc,
                                  container_release release);
[[nodiscard]] deque* deque_new(size_t elem_size);

// Adds a copy of the element at an end and returns it; null for a null argument or when there is no memory.
[[nodiscard]] void* deque_push_back(deque* d, const void* element);
[[nodiscard]] void* deque_push_front(deque* d, const void* element);

// Drops the element at an end, if there is one. A block that becomes empty is freed at once. 0; -1 for null.
int deque_pop_front(deque* d);
int deque_pop_back(deque* d);

// The element at an end or at an index; null if there is none. deque_at walks the blocks from the nearer end.
void* deque_front(const deque* d);
void* deque_back(const deque* d);
void* deque_at(const deque* d, size_t index);

// Inserts a copy before the element at index (count: at the back) and returns it; null for a null argument,
// an index above count, or no memory. The element must not lie in the deque.
[[nodiscard]] void* deque_insert(deque* d, size_t index, const void* element);

// The same before the iterator's element; an iterator at the end means the back. The iterator then stands on
// the new element. Null also for an iterator that is not on an element of this deque.
[[nodiscard]] void* deque_insertit(deque* d, deque_it* it, const void* element);

// Removes the iterator's element; the iterator then stands on the element that followed, or at the end. 0; -1
// for a null argument or an iterator that is not on an element of this deque.
int deque_removeit(deque* d, deque_it* it);

// Places the iterator on the first element; moves it on by one; moves it on by any number of steps. True
// while the iterator is on an element. At the end an iterator stays there.
bool deque_begin(deque_it* it, deque* d);
bool deque_next(deque_it* it);
bool deque_advance(deque_it* it, size_t steps);

// Reorders in place by rounds of selection that never look at the place they fill, so the result is not in
// general sorted: 1 2 3 becomes 3 1 2, and two elements always change places. Quadratic. 0; -1 for null.
int deque_sort(deque* d, container_compare compare);

// Frees every block. 0; -1 for null.
int deque_clear(deque* d);

// Frees the deque, not what its elements point to. 0; -1 for null.
int deque_release(deque* d);
