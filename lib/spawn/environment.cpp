// Changes are only noted down one behind the other. The list is made from them by sorting them by name, so that
// many changes to a large environment stay cheap.

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#include "lib/spawn/spawn.h"

namespace {

using Entry = e_environment::Entry;
using Kind = e_environment::Kind;

bool add(e_environment* environment, char* text, Kind kind, bool owned) {
    return environment->entries.push_back({text, strcspn(text, "="), kind, owned});
}

// Entries of the same name stand together, in the order in which they were added.
int compare(const void* left, const void* right) {
    const auto* a = *static_cast<const Entry* const*>(left);
    const auto* b = *static_cast<const Entry* const*>(right);
    const int order = memcmp(a->text, b->text, std::min(a->name_size, b->name_size));
    if (order != 0) return order;
    if (a->name_size != b->name_size) return a->name_size < b->name_size ? -1 : 1;
    return a < b ? -1 : 1;
}

bool same_name(const Entry& a, const Entry& b) {
    return a.name_size == b.name_size && memcmp(a.text, b.text, a.name_size) == 0;
}

// Puts what is left of a name's entries into their places of the list.
void settle(std::span<Entry*> group, const Entry* first_entry, std::span<char*> list) {
    size_t begin = 0;
    const Entry* last_set = nullptr;
    for (size_t i = 0; i < group.size(); i++) {
        if (group[i]->kind == Kind::unset) {
            begin = i + 1;
            last_set = nullptr;
        } else if (group[i]->kind == Kind::set) {
            last_set = group[i];
        }
    }
    for (const Entry* entry : group.subspan(begin)) {
        list[static_cast<size_t>(entry - first_entry)] = last_set != nullptr ? last_set->text : entry->text;
        if (last_set != nullptr) return;
    }
}

}  // namespace

e_environment::~e_environment() {
    e_env_empty(this);
}

bool e_env_inherit(e_environment* environment) {
    for (char** text = environ; text != nullptr && *text != nullptr; text++) {
        if (!add(environment, *text, Kind::inherited, false)) return false;
    }
    return true;
}

bool e_env_put(e_environment* environment, char* text) {
    return add(environment, text, Kind::set, false);
}

bool e_env_set(e_environment* environment, const char* name, const char* value) {
    const size_t name_size = strlen(name), value_size = strlen(value);
    size_t size = 2;
    if (__builtin_add_overflow(size, name_size, &size) || __builtin_add_overflow(size, value_size, &size)) {
        return false;
    }
    auto* text = static_cast<char*>(malloc(size));
    if (text == nullptr) return false;
    stpcpy(stpcpy(stpcpy(text, name), "="), value);
    if (add(environment, text, Kind::set, true)) return true;
    free(text);
    return false;
}

bool e_env_unset(e_environment* environment, char* name) {
    return add(environment, name, Kind::unset, false);
}

void e_env_empty(e_environment* environment) {
    for (const Entry& entry : environment->entries) {
        if (entry.owned) free(entry.text);
    }
    environment->entries.clear();
}

char* const* e_env_list(e_environment* environment) {
    Vector<char*>& list = environment->list;
    Vector<Entry*> sorted;
    const size_t count = environment->entries.size();
    if (!list.create(count + 1) || !sorted.create(count)) return nullptr;
    Entry* const entries = environment->entries.data();
    for (size_t i = 0; i < count; i++) {
        if (!sorted.push_back(entries + i) || !list.push_back(nullptr)) return nullptr;
    }
    if (!list.push_back(nullptr)) return nullptr;
    if (count == 0) return list.data();

    qsort(sorted.data(), count, sizeof(Entry*), compare);
    const std::span<Entry*> all(sorted.data(), count);
    for (size_t begin = 0, end = 0; begin < count; begin = end) {
        while (end < count && same_name(*all[begin], *all[end])) end++;
        settle(all.subspan(begin, end - begin), entries, {list.data(), count});
    }
    *std::remove(list.data(), list.data() + count, nullptr) = nullptr;
    return list.data();
}

const char* e_env_value(char* const* list, const char* name) {
    const size_t size = strlen(name);
    for (; list != nullptr && *list != nullptr; list++) {
        if (strncmp(*list, name, size) == 0 && (*list)[size] == '=') return *list + size + 1;
    }
    return nullptr;
}
