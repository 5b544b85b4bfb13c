#pragma once

// Deque<T>: the typed front end of deque. Default construction takes no memory; the first element does.

#include "lib/containers/container_vector.h"
#include "lib/containers/deque.h"

template <class T>
class Deque : public ContainerHandle<deque, deque_release> {
    static_assert(is_container_element<T>);

  public:
    class Iterator {
      public:
        explicit Iterator(deque_block* block) : block_(block) {}
        T& operator*() const { return reinterpret_cast<T*>(block_ + 1)[block_->first + index_]; }
        Iterator& operator++() {
            if (++index_ == block_->used) *this = Iterator(block_->next);
            return *this;
        }
        bool operator==(const Iterator&) const = default;

      private:
        deque_block* block_;
        size_t index_ = 0;
    };

    // Takes over an untyped deque of T (or null).
    [[nodiscard]] static Deque adopt(deque* raw) {
        assert(raw == nullptr || raw->elem_size == sizeof(T));
        Deque result;
        result.reset(raw);
        return result;
    }

    // Starts afresh, empty. False when there is no memory (nothing changes).
    [[nodiscard]] bool create() {
        deque* fresh = deque_new(sizeof(T));
        if (fresh != nullptr) reset(fresh);
        return fresh != nullptr;
    }

    // False when there is no memory (nothing changes); insert also for an index above size().
    [[nodiscard]] bool push_back(const T& value) {
        return exists() && deque_push_back(raw(), &value) != nullptr;
    }
    [[nodiscard]] bool push_front(const T& value) {
        return exists() && deque_push_front(raw(), &value) != nullptr;
    }
    [[nodiscard]] bool insert(size_t index, const T& value) {
        const T copy = value;  // the value may be an element that moves
        return exists() && deque_insert(raw(), index, &copy) != nullptr;
    }

    void pop_back() { deque_pop_back(raw()); }
    void pop_front() { deque_pop_front(raw()); }
    void clear() { deque_clear(raw()); }
    // False if there is no such element.
    bool remove(size_t index) {
        deque_it it;
        deque_begin(&it, raw());
        return deque_advance(&it, index) && deque_removeit(raw(), &it) == 0;
    }

    // Null if there is no such element.
    [[nodiscard]] T* at(size_t index) const { return static_cast<T*>(deque_at(raw(), index)); }
    [[nodiscard]] T* front() const { return static_cast<T*>(deque_front(raw())); }
    [[nodiscard]] T* back() const { return static_cast<T*>(deque_back(raw())); }
    // The index must be below size(). Walks the blocks: use the iterator to visit all elements.
    [[nodiscard]] T& operator[](size_t index) const { return *at(index); }

    [[nodiscard]] Iterator begin() const { return Iterator(raw() != nullptr ? raw()->first : nullptr); }
    [[nodiscard]] Iterator end() const { return Iterator(nullptr); }

    // deque_sort with a three-way comparator of two T: the result is not in general sorted.
    template <class Compare>
    void sort(Compare) {
        deque_sort(raw(), compare_elements<T, Compare>);
    }

  private:
    bool exists() { return raw() != nullptr || create(); }
};
