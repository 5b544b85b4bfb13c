#pragma once

// Lets the checked reader loose on bytes that may be anything, as the tests and the fuzzer do.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cpio/cpio.h"

namespace cpio_walk {

struct Entry {
    std::string name;
    std::string data;
    bool operator==(const Entry&) const = default;
};

struct Result {
    bool accepted = false;
    const char* violation = nullptr;  // what the reader must never do
    std::vector<Entry> entries;
};

inline bool lies_in(std::string_view bytes, const char* data, uint64_t size) {
    const auto offset = static_cast<uint64_t>(data - bytes.data());
    return offset <= bytes.size() && size <= bytes.size() - offset;
}

inline Result walk(std::string_view bytes) {
    // A buffer of its own, so that the sanitizer sees every step beyond it.
    const std::unique_ptr<char, decltype(&free)> memory(
        static_cast<char*>(calloc(bytes.size() + cpio_image_slack, 1)), free);
    if (!bytes.empty()) memcpy(memory.get(), bytes.data(), bytes.size());
    const std::string_view image(memory.get(), bytes.size());

    Result result;
    cpioread_ctx reader;
    result.accepted = cpioread_init_checked(&reader, image.data(), image.size()) != nullptr;
    if (cpioread_check(image.data(), image.size()) != result.accepted) result.violation = "check differs";
    if (!result.accepted) return result;

    cpioread_ctx trusting;
    if (cpioread_init(&trusting, image.data()) == nullptr || trusting.count != reader.count) {
        result.violation = "count differs";
    }
    cpio_entity entity;
    for (const cpio_entity* e = cpioread_first(&reader, &entity); e != nullptr;
         e = cpioread_next(&reader, &entity)) {
        if (!lies_in(image, e->name, e->name_size))
            result.violation = "name outside";
        else if (memchr(e->name, '\0', e->name_size) == nullptr)
            result.violation = "name without end";
        else if (!lies_in(image, e->data, e->file_size))
            result.violation = "data outside";
        if (result.violation != nullptr) return result;
        result.entries.push_back({e->name, {e->data, e->file_size}});

        // The other ways to the same entry.
        cpio_entity found;
        const bool exact = e->name_size == strlen(e->name) + 1;
        if (exact && *e->name != '\0' && cpioread_find(&reader, &found, e->name) == nullptr) {
            result.violation = "not found";
        }
        std::vector<char> name(e->name_size);
        cpio_entity_ext all{};
        all.name = name.data();
        all.name_buffer_size = e->name_size;
        const auto offset = static_cast<uint64_t>(static_cast<const char*>(reader.current) - image.data());
        if (reader.ops->fill_extended_entity(reader.current, &all, offset) == nullptr ||
            strcmp(all.name, e->name) != 0 || image.data() + all.data_offset != e->data ||
            all.data_end_offset - all.data_offset - e->file_size > 3 || all.mode != e->mode) {
            result.violation = "extended record differs";
        }
    }
    if (result.entries.size() != reader.count) result.violation = "walk and count differ";
    if (cpioread_next(&reader, &entity) != nullptr) result.violation = "goes on behind the end";
    return result;
}

}  // namespace cpio_walk
