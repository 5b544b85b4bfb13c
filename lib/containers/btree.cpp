// btree: a B+ tree whose nodes keep pointers to their keys and values in order, so that an insertion or a
// removal shuffles pointers; the bytes move only when a node is split or united with another.

#include "lib/containers/btree.h"

#include <cstring>
#include <initializer_list>

namespace {

constexpr size_t slots = btree_node_slots;

// At this number of entries or fewer, a removal tries to unite a node with a neighbour. It is well under half
// of the slots, so that a node that was just split is not united again at once.
constexpr size_t sparse = slots / 4;

struct Place {
    btree_node* leaf;
    size_t index;
};

// Cannot overflow: btree_new_ex checks the size of a leaf.
btree_node* new_node(btree* t, bool leaf) {
    const size_t entry_size = t->key_size + (leaf ? t->value_size : 0);
    auto* node = static_cast<btree_node*>(t->alloc(t->context, sizeof(btree_node) + slots * entry_size));
    if (node == nullptr) return nullptr;
    *node = {t, nullptr, nullptr, nullptr, 0, leaf, {}, {}};
    auto* keys = reinterpret_cast<unsigned char*>(node + 1);
    unsigned char* values = keys + slots * t->key_size;
    for (size_t i = 0; i < slots; ++i) {
        node->keys[i] = keys + i * t->key_size;
        if (leaf) node->children[i] = values + i * t->value_size;
    }
    return node;
}

void free_node(btree_node* node) {
    const btree* t = node->tree;
    t->release(t->context, node);
}

btree_node* child(const btree_node* node, size_t index) {
    return static_cast<btree_node*>(node->children[index]);
}

size_t index_in_parent(const btree_node* node) {
    size_t index = 0;
    while (node->parent->children[index] != node) ++index;
    return index;
}

btree_node* edge_leaf(const btree* t, bool last) {
    btree_node* node = t->root;
    while (!node->leaf) node = child(node, last ? node->count - 1 : 0);
    return node;
}

// The first slot at or after `from` whose key is greater than the searched one.
size_t first_greater(const btree_node* node, const void* key, size_t from) {
    size_t end = node->count;
    while (from < end) {
        const size_t middle = from + (end - from) / 2;
        if (node->tree->less(key, node->keys[middle])) {
            end = middle;
        } else {
            from = middle + 1;
        }
    }
    return from;
}

// Finds the place of the key, or where it would be inserted; true if it is present.
bool search(const btree* t, const void* key, Place* at) {
    btree_node* node = t->root;
    while (!node->leaf) node = child(node, first_greater(node, key, 1) - 1);
    *at = {node, first_greater(node, key, 0)};
    if (at->index == 0 || !t->equal(key, node->keys[at->index - 1])) return false;
    --at->index;
    return true;
}

// Gives the slot at index the storage of the first free slot; the slots behind it move up.
void open_slot(btree_node* node, size_t index) {
    for (auto* row : {node->keys, node->children}) {
        void* storage = row[node->count];
        memmove(row + index + 1, row + index, (node->count - index) * sizeof(void*));
        row[index] = storage;
    }
    ++node->count;
}

void close_slot(btree_node* node, size_t index) {
    --node->count;
    for (auto* row : {node->keys, node->children}) {
        void* storage = row[index];
        memmove(row + index, row + index + 1, (node->count - index) * sizeof(void*));
        row[node->count] = storage;
    }
}

// Moves the entries of a node from a slot on behind those of another node of the same level.
void move_tail(btree_node* from, size_t first, btree_node* to) {
    const btree* t = from->tree;
    for (size_t i = first; i < from->count; ++i, ++to->count) {
        memcpy(to->keys[to->count], from->keys[i], t->key_size);
        if (from->leaf) {
            memcpy(to->children[to->count], from->children[i], t->value_size);
        } else {
            to->children[to->count] = from->children[i];
            child(to, to->count)->parent = to;
        }
    }
    from->count = first;
}

void unchain(const btree_node* leaf) {
    if (leaf->prev != nullptr) leaf->prev->next = leaf->next;
    if (leaf->next != nullptr) leaf->next->prev = leaf->prev;
}

// Splits a full node to make room at *index: the upper entries move to `right`, which is new. Returns the
// node that takes the coming entry and sets *index to the slot in it. Appending leaves the full node as it
// is, so that keys that arrive in order fill their leaves.
btree_node* split(btree_node* node, btree_node* right, size_t* index) {
    const size_t keep = *index == slots ? slots : slots / 2;
    move_tail(node, keep, right);
    if (node->leaf) {
        right->prev = node;
        right->next = node->next;
        if (node->next != nullptr) node->next->prev = right;
        node->next = right;
    }
    if (*index < keep) return node;
    *index -= keep;
    return right;
}

btree_node* take(btree_node** list) {
    btree_node* node = *list;
    *list = node->next;
    node->next = nullptr;
    return node;
}

// Allocates all nodes that an insertion into the leaf needs, the new leaf first, chained by their next links.
// False when there is no memory.
bool reserve_nodes(btree* t, const btree_node* leaf, btree_node** list) {
    bool is_leaf = true;
    btree_node** tail = list;
    for (const btree_node* node = leaf; node == nullptr || node->count == slots; node = node->parent) {
        *tail = new_node(t, is_leaf);
        if (*tail == nullptr) {
            while (*list != nullptr) free_node(take(list));
            return false;
        }
        tail = &(*tail)->next;
        is_leaf = false;
        if (node == nullptr) break;  // that one is the new root
    }
    return true;
}

// Enters `right`, which was split off from `node`, into the parent, splitting upwards.
void insert_above(btree* t, btree_node* node, btree_node* right, btree_node** reserve) {
    while (right != nullptr) {
        if (node->parent == nullptr) {
            t->root = take(reserve);
            t->root->children[0] = node;
            t->root->count = 1;
            node->parent = t->root;
        }
        btree_node* parent = node->parent;
        size_t index = index_in_parent(node) + 1;
        btree_node* parent_right = parent->count == slots ? take(reserve) : nullptr;
        btree_node* target = parent_right != nullptr ? split(parent, parent_right, &index) : parent;
        open_slot(target, index);
        memcpy(target->keys[index], right->keys[0], t->key_size);
        target->children[index] = right;
        right->parent = target;
        node = parent;
        right = parent_right;
    }
}

// Unites the child at index with the one behind it.
void _btree_unite2(btree_node* parent, size_t index) {
    btree_node* left = child(parent, index);
    btree_node* right = child(parent, index + 1);
    const size_t seam = left->count;
    move_tail(right, 0, left);
    if (left->leaf) {
        unchain(right);
    } else {
        memcpy(left->keys[seam], parent->keys[index + 1], parent->tree->key_size);
    }
    close_slot(parent, index + 1);
    free_node(right);
}

bool fit_together(const btree_node* parent, size_t index) {
    return child(parent, index)->count + child(parent, index + 1)->count <= slots;
}

// Sets the separator that stands for the leaf's smallest key.
void renew_separator(const btree_node* leaf) {
    const btree_node* node = leaf;
    size_t index = 0;
    while (node->parent != nullptr && (index = index_in_parent(node)) == 0) node = node->parent;
    if (node->parent != nullptr) memcpy(node->parent->keys[index], leaf->keys[0], leaf->tree->key_size);
}

// Removes the entry and returns the place of the one that followed; its leaf is null at the end.
Place remove_at(btree* t, Place at) {
    const bool smallest = at.index == 0;
    close_slot(at.leaf, at.index);
    --t->count;
    btree_node* node = at.leaf;
    while (node->parent != nullptr && node->count <= sparse) {
        btree_node* parent = node->parent;
        const size_t index = index_in_parent(node);
        if (node->count == 0) {
            if (node->leaf) {
                at = {node->next, 0};
                unchain(node);
            }
            close_slot(parent, index);
            free_node(node);
        } else if (index > 0 && fit_together(parent, index - 1)) {
            if (node->leaf) at = {child(parent, index - 1), child(parent, index - 1)->count + at.index};
            _btree_unite2(parent, index - 1);
        } else if (index + 1 < parent->count && fit_together(parent, index)) {
            _btree_unite2(parent, index);
        } else {
            break;
        }
        node = parent;
    }
    while (!t->root->leaf && t->root->count == 1) {
        btree_node* old_root = t->root;
        t->root = child(old_root, 0);
        t->root->parent = nullptr;
        free_node(old_root);
    }
    // The removed key may still be the separator of the leaf that now begins with the entry that followed.
    // Nothing has compared keys since.
    if (smallest && at.leaf != nullptr && at.leaf->count > 0) renew_separator(at.leaf);
    if (at.leaf != nullptr && at.index == at.leaf->count) at = {at.leaf->next, 0};
    return at;
}

// Frees all nodes below and including this one but `keep`.
void free_nodes(btree_node* node, const btree_node* keep) {
    if (!node->leaf) {
        for (size_t i = 0; i < node->count; ++i) free_nodes(child(node, i), keep);
    }
    if (node != keep) free_node(node);
}

bool set_iterator(btree_it* it, btree* t, Place at) {
    if (at.leaf == nullptr || at.index >= at.leaf->count) {
        *it = {nullptr, nullptr, false, t, nullptr, 0};
        return false;
    }
    *it = {at.leaf->keys[at.index], at.leaf->children[at.index], true, t, at.leaf, at.index};
    return true;
}

}  // namespace

btree* btree_new_ex(size_t key_size, size_t value_size, btree_predicate less, btree_predicate equal,
                    void* context, container_alloc alloc, container_release release) {
    if (key_size == 0 || less == nullptr || equal == nullptr || alloc == nullptr || release == nullptr)
        return nullptr;
    size_t bytes = 0;
    if (__builtin_add_overflow(key_size, value_size, &bytes) ||
        __builtin_mul_overflow(bytes, slots, &bytes) ||
        __builtin_add_overflow(bytes, sizeof(btree_node), &bytes)) {
        return nullptr;
    }
    auto* t = static_cast<btree*>(alloc(context, sizeof(btree)));
    if (t == nullptr) return nullptr;
    *t = {key_size, value_size, 0, nullptr, less, equal, context, alloc, release};
    t->root = new_node(t, true);
    if (t->root == nullptr) {
        release(context, t);
        return nullptr;
    }
    return t;
}

btree* btree_new(size_t key_size, size_t value_size, btree_predicate less, btree_predicate equal) {
    return btree_new_ex(key_size, value_size, less, equal, nullptr, container_malloc, container_free);
}

bool btree_insert(btree* t, const void* key, const void* value, bool replace) {
    if (t == nullptr || key == nullptr || (value == nullptr && t->value_size > 0)) return false;
    Place at;
    if (search(t, key, &at)) {
        if (replace && value != nullptr) memmove(at.leaf->children[at.index], value, t->value_size);
        return replace;
    }
    btree_node* reserve = nullptr;
    if (!reserve_nodes(t, at.leaf, &reserve)) return false;
    btree_node* right = reserve != nullptr ? take(&reserve) : nullptr;
    btree_node* target = right != nullptr ? split(at.leaf, right, &at.index) : at.leaf;
    open_slot(target, at.index);
    memmove(target->keys[at.index], key, t->key_size);
    if (value != nullptr) memmove(target->children[at.index], value, t->value_size);
    ++t->count;
    insert_above(t, at.leaf, right, &reserve);
    return true;
}

void* btree_find(const btree* t, const void* key) {
    Place at;
    return t != nullptr && key != nullptr && search(t, key, &at) ? at.leaf->children[at.index] : nullptr;
}

bool btree_findit(btree_it* it, btree* t, const void* key) {
    if (it == nullptr) return false;
    Place at;
    const bool found = t != nullptr && key != nullptr && search(t, key, &at);
    return set_iterator(it, t, found ? at : Place{});
}

bool btree_remove(btree* t, const void* key) {
    Place at;
    if (t == nullptr || key == nullptr || !search(t, key, &at)) return false;
    remove_at(t, at);
    return true;
}

bool btree_removeit(btree_it* it) {
    if (it == nullptr || !it->valid) return false;
    set_iterator(it, it->tree, remove_at(it->tree, {it->leaf, it->index}));
    return true;
}

bool btree_begin(btree_it* it, btree* t) {
    return it != nullptr && set_iterator(it, t, t != nullptr ? Place{edge_leaf(t, false), 0} : Place{});
}

bool btree_rbegin(btree_it* it, btree* t) {
    if (it == nullptr) return false;
    Place at = {};
    if (t != nullptr && t->count > 0) {
        at.leaf = edge_leaf(t, true);
        at.index = at.leaf->count - 1;
    }
    return set_iterator(it, t, at);
}

bool btree_end(btree_it* it, btree* t) {
    return it != nullptr && set_iterator(it, t, {});
}

bool btree_next(btree_it* it) {
    if (it == nullptr || !it->valid) return false;
    const bool in_leaf = it->index + 1 < it->leaf->count;
    return set_iterator(it, it->tree, in_leaf ? Place{it->leaf, it->index + 1} : Place{it->leaf->next, 0});
}

bool btree_prev(btree_it* it) {
    if (it == nullptr) return false;
    if (!it->valid) return btree_rbegin(it, it->tree);
    if (it->index > 0) return set_iterator(it, it->tree, {it->leaf, it->index - 1});
    btree_node* leaf = it->leaf->prev;
    return set_iterator(it, it->tree, leaf != nullptr ? Place{leaf, leaf->count - 1} : Place{});
}

bool btree_it_equal(const btree_it* a, const btree_it* b) {
    if (a == nullptr || b == nullptr) return a == b;
    return a->tree == b->tree && a->leaf == b->leaf && a->index == b->index;
}

void btree_clear(btree* t) {
    if (t == nullptr) return;
    // One leaf stays as the new root, because a new one might not be had.
    btree_node* leaf = edge_leaf(t, false);
    free_nodes(t->root, leaf);
    leaf->parent = nullptr;
    leaf->next = nullptr;
    leaf->count = 0;
    t->root = leaf;
    t->count = 0;
}

void btree_release(btree* t) {
    if (t == nullptr) return;
    free_nodes(t->root, nullptr);
    t->release(t->context, t);
}
