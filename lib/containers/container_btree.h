#pragma once

// BTree<Key, Value, Less, Equal>: the typed front end of btree; Value may be void for a set of keys. Less and
// Equal are stateless function objects on two keys that agree with each other. A default-constructed tree
// holds nothing; the first entry creates it.

#include "lib/containers/btree.h"
#include "lib/containers/container_vector.h"

enum class Existing { keep, replace };

template <class Key, class Value, class Less, class Equal>
class BTree : public ContainerHandle<btree, btree_release> {
    static constexpr bool is_set = std::is_void_v<Value>;
    using Stored = std::conditional_t<is_set, std::byte, Value>;
    static constexpr size_t value_size = is_set ? 0 : sizeof(Stored);
    static_assert(is_container_element<Key> && is_container_element<Stored>);
    static_assert(std::is_empty_v<Less> && std::is_empty_v<Equal>, "the predicates cannot carry state");

  public:
    struct Entry {
        const Key& key;
        Stored& value;
    };

    // Visits the entries in key order: as Entry, or in a set as const Key&.
    class Iterator {
      public:
        explicit Iterator(btree_node* leaf) : leaf_(leaf) {}
        decltype(auto) operator*() const {
            const auto* key = static_cast<const Key*>(leaf_->keys[index_]);
            if constexpr (is_set) {
                return (*key);
            } else {
                return Entry{*key, *static_cast<Stored*>(leaf_->children[index_])};
            }
        }
        Iterator& operator++() {
            if (++index_ == leaf_->count) *this = Iterator(leaf_->next);
            return *this;
        }
        bool operator==(const Iterator&) const = default;

      private:
        btree_node* leaf_;
        size_t index_ = 0;
    };

    // Takes over an untyped tree of such keys and values (or null); its own predicates stay.
    [[nodiscard]] static BTree adopt(btree* raw) {
        assert(raw == nullptr || (raw->key_size == sizeof(Key) && raw->value_size == value_size));
        BTree result;
        result.reset(raw);
        return result;
    }

    // Starts afresh, empty. False when there is no memory (nothing changes).
    [[nodiscard]] bool create() {
        btree* fresh = btree_new(sizeof(Key), value_size, test_keys<Less>, test_keys<Equal>);
        if (fresh != nullptr) reset(fresh);
        return fresh != nullptr;
    }

    // False if the key is present and to be kept, or when there is no memory (nothing changes).
    [[nodiscard]] bool insert(const Key& key) requires is_set {
        return exists() && btree_insert(raw(), &key, nullptr, false);
    }
    [[nodiscard]] bool insert(const Key& key, const Stored& value,
                              Existing existing = Existing::keep) requires(!is_set) {
        return exists() && btree_insert(raw(), &key, &value, existing == Existing::replace);
    }

    // The value stored under the key; null if the key is absent.
    [[nodiscard]] Stored* find(const Key& key) const requires(!is_set) {
        return static_cast<Stored*>(btree_find(raw(), &key));
    }
    [[nodiscard]] bool contains(const Key& key) const { return btree_find(raw(), &key) != nullptr; }

    // False if the key is absent.
    bool remove(const Key& key) { return btree_remove(raw(), &key); }
    void clear() { btree_clear(raw()); }

    [[nodiscard]] Iterator begin() const {
        btree_it it;
        btree_begin(&it, raw());
        return Iterator(it.leaf);
    }
    [[nodiscard]] Iterator end() const { return Iterator(nullptr); }

  private:
    template <class Predicate>
    static bool test_keys(const void* a, const void* b) {
        return Predicate{}(*static_cast<const Key*>(a), *static_cast<const Key*>(b));
    }

    bool exists() { return raw() != nullptr || create(); }
};
