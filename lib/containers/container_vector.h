#pragma once

// Vector<T>: the typed front end of vector. Default construction takes no memory; the first element does.

#include <cassert>
#include <cstddef>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

#include "lib/containers/vector.h"

// What the typed containers share: sole ownership of an untyped container that may not exist yet. As with a
// span, a const handle does not make the elements const.
template <class Raw, auto release_raw>
class ContainerHandle {
  public:
    ContainerHandle() = default;
    ContainerHandle(ContainerHandle&& other) noexcept : raw_(other.release()) {}
    ContainerHandle& operator=(ContainerHandle&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }

    [[nodiscard]] size_t size() const { return raw_ != nullptr ? raw_->count : 0; }
    [[nodiscard]] bool empty() const { return size() == 0; }

    // The untyped container, null if there is none yet; release hands it over to the caller.
    [[nodiscard]] Raw* raw() const { return raw_; }
    [[nodiscard]] Raw* release() { return std::exchange(raw_, nullptr); }

  protected:
    ~ContainerHandle() { reset(nullptr); }

    void reset(Raw* raw) {
        Raw* old = std::exchange(raw_, raw);
        if (old != nullptr) release_raw(old);
    }

  private:
    Raw* raw_ = nullptr;
};

// Elements that the untyped containers can hold: bytes that may be copied, with no unusual alignment.
template <class T>
inline constexpr bool is_container_element = std::is_trivially_copyable_v<T> &&
                                             alignof(T) <= alignof(std::max_align_t);

// A comparator of two T as the untyped containers call it, which pass nothing but the elements: Compare must
// be stateless, such as a lambda without captures.
template <class T, class Compare>
int compare_elements(const void* a, const void* b) {
    static_assert(std::is_empty_v<Compare>, "the comparator cannot carry state");
    return Compare{}(*static_cast<const T*>(a), *static_cast<const T*>(b));
}

template <class T>
class Vector : public ContainerHandle<vector, vector_release> {
    static_assert(is_container_element<T>);

  public:
    // Takes over an untyped vector of T (or null).
    [[nodiscard]] static Vector adopt(vector* raw) {
        assert(raw == nullptr || raw->elem_size == sizeof(T));
        Vector result;
        result.reset(raw);
        return result;
    }

    // Starts afresh with room for `capacity` elements. False when there is no memory (nothing changes).
    [[nodiscard]] bool create(size_t capacity = 0) {
        vector* fresh = vector_new(sizeof(T), capacity);
        if (fresh != nullptr) reset(fresh);
        return fresh != nullptr;
    }

    // False when there is no memory (nothing changes).
    [[nodiscard]] bool push_back(const T& value) {
        vector* v = raw();
        if (v != nullptr && v->count < v->capacity) {
            memcpy(data() + v->count, &value, sizeof(T));
            ++v->count;
            return true;
        }
        return (v != nullptr || create()) && vector_pushback(raw(), &value) == 0;
    }
    [[nodiscard]] bool append(std::span<const T> values) {
        return values.empty() ||
               ((raw() != nullptr || create()) && vector_pushmulti(raw(), values.data(), values.size()) == 0);
    }
    // New elements are uninitialised.
    [[nodiscard]] bool resize(size_t count) {
        return (raw() != nullptr || create()) && vector_resize(raw(), count) == 0;
    }

    void pop_back() { vector_popback(raw()); }
    void clear() { vector_clear(raw()); }
    // False if there is no such element.
    bool remove(size_t index) { return vector_remove(raw(), index) == 0; }

    // Null if there is no such element.
    [[nodiscard]] T* at(size_t index) const { return index < size() ? data() + index : nullptr; }
    [[nodiscard]] T* front() const { return at(0); }
    [[nodiscard]] T* back() const { return empty() ? nullptr : data() + size() - 1; }
    // The index must be below size().
    [[nodiscard]] T& operator[](size_t index) const { return data()[index]; }

    [[nodiscard]] T* data() const { return raw() != nullptr ? static_cast<T*>(raw()->data) : nullptr; }
    [[nodiscard]] std::span<T> span() const { return {data(), size()}; }
    [[nodiscard]] T* begin() const { return data(); }
    [[nodiscard]] T* end() const { return data() + size(); }

    // Three-way comparator of two T; see vector_sort.
    template <class Compare>
    void sort(Compare) {
        vector_sort(raw(), compare_elements<T, Compare>);
    }
};
