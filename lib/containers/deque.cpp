// deque: linked blocks of element slots. All blocks but the two at the ends are full, so an insertion or
// removal elsewhere moves one element across every block boundary between its place and the nearer end.

#include "lib/containers/deque.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t slot_bytes = 2016;
constexpr size_t least_slots = 4;

struct Place {
    deque_block* block;
    size_t index;  // within the block's used run
};

Place front_place(const deque* d) {
    return {d->first, 0};
}

Place back_place(const deque* d) {
    return {d->last, d->last->used - 1};
}

void* last_element(const deque* d, const deque_block* block) {
    return deque_element(d, block, block->used - 1);
}

deque_block* new_block(deque* d) {
    return static_cast<deque_block*>(d->alloc(d->context, d->block_size));
}

void free_block(deque* d, deque_block* block) {
    (block->prev != nullptr ? block->prev->next : d->first) = block->next;
    (block->next != nullptr ? block->next->prev : d->last) = block->prev;
    d->release(d->context, block);
}

// The place of the element at index, which is below count.
Place locate(const deque* d, size_t index) {
    if (index < d->count / 2) {
        deque_block* block = d->first;
        for (; index >= block->used; block = block->next) index -= block->used;
        return {block, index};
    }
    size_t rest = d->count - index;
    deque_block* block = d->last;
    for (; rest > block->used; block = block->prev) rest -= block->used;
    return {block, block->used - rest};
}

// The index of the iterator's element. The block is looked for rather than trusted, so that a stale iterator
// is refused. False if it is not there.
bool index_of(const deque* d, const deque_it* it, size_t* index) {
    if (!it->valid || it->owner != d || it->index < 0) return false;
    size_t before = 0;
    for (const deque_block* block = d->first; block != nullptr; block = block->next) {
        if (block == it->block) {
            const auto place = static_cast<size_t>(it->index);
            *index = before + place;
            return place < block->used;
        }
        before += block->used;
    }
    return false;
}

bool set_iterator(deque_it* it, deque* d, Place at) {
    if (at.block == nullptr) {
        *it = {nullptr, false, nullptr, nullptr, INT64_MAX};
        return false;
    }
    *it = {deque_element(d, at.block, at.index), true, d, at.block, static_cast<int64_t>(at.index)};
    return true;
}

// Moves n neighbouring elements of a block.
void move_run(const deque* d, const deque_block* block, size_t to, size_t from, size_t n) {
    memmove(deque_element(d, block, to), deque_element(d, block, from), n * d->elem_size);
}

// Moves the elements behind the hole, up to and including the one at `until`, one place towards the front.
void shift_towards_front(const deque* d, Place hole, Place until) {
    for (; hole.block != until.block; hole = {hole.block->next, 0}) {
        move_run(d, hole.block, hole.index, hole.index + 1, hole.block->used - 1 - hole.index);
        memcpy(last_element(d, hole.block), deque_element(d, hole.block->next, 0), d->elem_size);
    }
    move_run(d, hole.block, hole.index, hole.index + 1, until.index - hole.index);
}

// Moves the elements before the hole, down to and including the one at `until`, one place towards the back.
void shift_towards_back(const deque* d, Place hole, Place until) {
    for (; hole.block != until.block; hole = {hole.block->prev, hole.block->prev->used - 1}) {
        move_run(d, hole.block, 1, 0, hole.index);
        memcpy(deque_element(d, hole.block, 0), last_element(d, hole.block->prev), d->elem_size);
    }
    move_run(d, hole.block, until.index + 1, until.index, hole.index - until.index);
}

}  // namespace

deque* deque_new_ex(size_t elem_size, void* context, container_alloc alloc, container_release release) {
    if (elem_size == 0 || alloc == nullptr || release == nullptr) return nullptr;
    const size_t slots = std::max(slot_bytes / elem_size, least_slots);
    size_t block_size = 0;
    if (__builtin_mul_overflow(elem_size, slots, &block_size)) return nullptr;
    if (__builtin_add_overflow(block_size, sizeof(deque_block), &block_size)) return nullptr;
    auto* d = static_cast<deque*>(alloc(context, sizeof(deque)));
    if (d == nullptr) return nullptr;
    *d = {0, elem_size, block_size, slots, nullptr, nullptr, context, alloc, release};
    return d;
}

deque* deque_new(size_t elem_size) {
    return deque_new_ex(elem_size, nullptr, container_malloc, container_free);
}

void* deque_push_back(deque* d, const void* element) {
    if (d == nullptr || element == nullptr) return nullptr;
    deque_block* block = d->last;
    if (block == nullptr || block->first + block->used == d->slots) {
        block = new_block(d);
        if (block == nullptr) return nullptr;
        *block = {nullptr, d->last, 0, 0};
        (d->last != nullptr ? d->last->next : d->first) = block;
        d->last = block;
    }
    ++block->used;
    ++d->count;
    return memcpy(last_element(d, block), element, d->elem_size);
}

void* deque_push_front(deque* d, const void* element) {
    if (d == nullptr || element == nullptr) return nullptr;
    deque_block* block = d->first;
    if (block == nullptr || block->first == 0) {
        block = new_block(d);
        if (block == nullptr) return nullptr;
        *block = {d->first, nullptr, d->slots, 0};
        (d->first != nullptr ? d->first->prev : d->last) = block;
        d->first = block;
    }
    --block->first;
    ++block->used;
    ++d->count;
    return memcpy(deque_element(d, block, 0), element, d->elem_size);
}

int deque_pop_front(deque* d) {
    if (d == nullptr) return -1;
    if (d->count == 0) return 0;
    ++d->first->first;
    --d->count;
    if (--d->first->used == 0) free_block(d, d->first);
    return 0;
}

int deque_pop_back(deque* d) {
    if (d == nullptr) return -1;
    if (d->count == 0) return 0;
    --d->count;
    if (--d->last->used == 0) free_block(d, d->last);
    return 0;
}

void* deque_front(const deque* d) {
    return d != nullptr && d->count > 0 ? deque_element(d, d->first, 0) : nullptr;
}

void* deque_back(const deque* d) {
    return d != nullptr && d->count > 0 ? last_element(d, d->last) : nullptr;
}

void* deque_at(const deque* d, size_t index) {
    if (d == nullptr || index >= d->count) return nullptr;
    const Place at = locate(d, index);
    return deque_element(d, at.block, at.index);
}

void* deque_insert(deque* d, size_t index, const void* element) {
    if (d == nullptr || element == nullptr || index > d->count) return nullptr;
    // The push makes room at the nearer end; the element it leaves there is overwritten by the shift.
    const bool near_front = index < d->count / 2;
    void* pushed = near_front ? deque_push_front(d, element) : deque_push_back(d, element);
    if (pushed == nullptr) return nullptr;
    const Place at = locate(d, index);
    if (near_front) {
        shift_towards_front(d, front_place(d), at);
    } else {
        shift_towards_back(d, back_place(d), at);
    }
    return memmove(deque_element(d, at.block, at.index), element, d->elem_size);
}

void* deque_insertit(deque* d, deque_it* it, const void* element) {
    if (d == nullptr || it == nullptr) return nullptr;
    size_t index = d->count;
    if (it->valid && !index_of(d, it, &index)) return nullptr;
    void* stored = deque_insert(d, index, element);
    if (stored == nullptr) return nullptr;
    set_iterator(it, d, locate(d, index));
    return stored;
}

int deque_removeit(deque* d, deque_it* it) {
    size_t index = 0;
    if (d == nullptr || it == nullptr || !index_of(d, it, &index)) return -1;
    const Place at = {it->block, static_cast<size_t>(it->index)};
    if (index < d->count / 2) {
        shift_towards_back(d, at, front_place(d));
        deque_pop_front(d);
    } else {
        shift_towards_front(d, at, back_place(d));
        deque_pop_back(d);
    }
    set_iterator(it, d, index < d->count ? locate(d, index) : Place{});
    return 0;
}

bool deque_begin(deque_it* it, deque* d) {
    return it != nullptr && set_iterator(it, d, d != nullptr ? front_place(d) : Place{});
}

bool deque_next(deque_it* it) {
    return deque_advance(it, 1);
}

bool deque_advance(deque_it* it, size_t steps) {
    if (it == nullptr || !it->valid) return false;
    Place at = {it->block, static_cast<size_t>(it->index)};
    while (at.block != nullptr && steps >= at.block->used - at.index) {
        steps -= at.block->used - at.index;
        at = {at.block->next, 0};
    }
    at.index += steps;
    return set_iterator(it, it->owner, at);
}

int deque_sort(deque* d, container_compare compare) {
    if (d == nullptr || compare == nullptr) return -1;
    if (d->count <= 1) return 0;
    for (size_t last = d->count - 1; last >= 1; --last) {
        deque_it it;
        deque_begin(&it, d);
        void* selected = it.element;
        deque_next(&it);
        for (size_t i = 1; i < last; ++i, deque_next(&it)) {
            if (compare(selected, it.element) < 0) selected = it.element;
        }
        container_swap(selected, it.element, d->elem_size);
    }
    return 0;
}

int deque_clear(deque* d) {
    if (d == nullptr) return -1;
    while (d->first != nullptr) free_block(d, d->first);
    d->count = 0;
    return 0;
}

int deque_release(deque* d) {
    if (deque_clear(d) != 0) return -1;
    d->release(d->context, d);
    return 0;
}
