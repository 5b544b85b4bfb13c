#pragma once

// btree: an ordered map of keys of one size to values of one size, both copied in and out as bytes. What they
// point to stays the caller's. C++ code uses the typed front end in container_btree.h.
//
// A B+ tree: the entries are in the leaves, which are chained in key order; inner nodes hold copies of keys
// that separate their children. A separator is always the key of a present entry, so what a removed key
// points to may be freed. Insertion and removal invalidate iterators and pointers to keys and values. Keys
// and values are aligned as far as their sizes allow: each run of 16 begins at an address fit for any type.

#include <cstddef>

#include "lib/containers/vector.h"  // the allocator pair

// Compares two keys. For two keys exactly one of less(a, b), equal(a, b), less(b, a) must be true.
using btree_predicate = bool (*)(const void* a, const void* b);

inline constexpr size_t btree_node_slots = 16;

struct btree_node;

struct btree {
    size_t key_size;    // bytes
    size_t value_size;  // bytes, may be 0
    size_t count;       // entries
    btree_node* root;   // never null; an empty leaf in an empty tree
    btree_predicate less;
    btree_predicate equal;
    void* context;
    container_alloc alloc;
    container_release release;
};

// A node; the storage that its slots point to follows it: 16 keys, and in a leaf 16 values. The slots in use
// come first, in key order; those behind them point to the free storage. In an inner node, keys[i] for i >= 1
// is the smallest key below children[i], and keys[0] means nothing.
struct alignas(std::max_align_t) btree_node {
    btree* tree;
    btree_node* parent;  // null for the root
    btree_node* prev;    // leaves only, as next
    btree_node* next;
    size_t count;
    bool leaf;
    void* children[btree_node_slots];  // inner nodes: child nodes; leaves: values
    void* keys[btree_node_slots];
};

// Iterator record. At the end: not valid, key, value and leaf null, index 0; the tree is kept.
struct btree_it {
    const void* key;
    void* value;  // not to be read through when the value size is 0
    bool valid;
    btree* tree;
    btree_node* leaf;
    size_t index;  // within the leaf
};

// A new empty tree, which btree_release frees. Null for a key size of 0, a null predicate or function, or no
// memory.
[[nodiscard]] btree* btree_new_ex(size_t key_size, size_t value_size, btree_predicate less,
                                  btree_predicate equal, void* context, container_alloc alloc,
                                  container_release release);
[[nodiscard]] btree* btree_new(size_t key_size, size_t value_size, btree_predicate less,
                               btree_predicate equal);

// Inserts copies of the key and the value (which may be null when the value size is 0) and returns true. If
// an equal key is present: with replace, overwrites its value (the key stays) and returns true; else returns
// false. False also when there is no memory, which leaves the tree as it was, and for null arguments.
[[nodiscard]] bool btree_insert(btree* t, const void* key, const void* value, bool replace);

// The value stored under the key; null if the key is absent. With a value size of 0, a pointer that only
// tells that the key is present.
void* btree_find(const btree* t, const void* key);

// Places the iterator on the key, or at the end. True if the key is present.
bool btree_findit(btree_it* it, btree* t, const void* key);

// Removes the entry with the key; true if there was one.
bool btree_remove(btree* t, const void* key);

// Removes the iterator's entry; the iterator then stands on the entry that followed, or at the end. True if
// an entry was removed.
bool btree_removeit(btree_it* it);

// Places the iterator on the smallest key, on the largest key, or at the end. True if it is on an entry.
bool btree_begin(btree_it* it, btree* t);
bool btree_rbegin(btree_it* it, btree* t);
bool btree_end(btree_it* it, btree* t);

// Moves to the next or previous entry; true if there is one, else the iterator is at the end. From the end,
// btree_next stays there and btree_prev goes to the largest key.
bool btree_next(btree_it* it);
bool btree_prev(btree_it* it);

// True if both stand on the same entry or at the end of the same tree.
bool btree_it_equal(const btree_it* a, const btree_it* b);

// Removes all entries and frees their nodes. The tree stays usable.
void btree_clear(btree* t);

// Frees the tree, not what its keys and values point to. Null is allowed.
void btree_release(btree* t);
