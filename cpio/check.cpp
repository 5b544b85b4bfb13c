#include <cstring>

#include "cpio/cpio.h"

namespace {

// Most names end where their size says.
bool is_ended(const char* name, uint32_t size) {
    return size != 0 && (name[size - 1] == '\0' || memchr(name, '\0', size) != nullptr);
}

enum class Entry { good, last, bad };

// Checks the entry whose header is `left` bytes before the end of the image. Whatever a header adds is
// compared with what is left before it is used: no sum here can pass the end of an integer.
Entry check_entry(const cpio_ops& ops, const char* header, uint64_t left, uint64_t* entry_size) {
    const auto header_size = static_cast<uint64_t>(ops.get_name(header) - header);
    if (header_size > left) return Entry::bad;
    cpio_entity entity;
    ops.fill_simple_entity(header, &entity);
    if (entity.name_size > left - header_size || !is_ended(entity.name, entity.name_size)) return Entry::bad;
    if (ops.is_trailer(header)) return Entry::last;

    const auto to_data = static_cast<uint64_t>(entity.data - header);
    if (to_data > left || entity.file_size > left - to_data) return Entry::bad;
    // More than padding behind the data: the record could not hold its size. Behind the last entry the
    // padding itself may be missing, since nothing is lost with it.
    *entry_size = ops.get_entry_size(header);
    return *entry_size - to_data - entity.file_size <= 3 ? Entry::good : Entry::bad;
}

}  // namespace

bool cpioread_check(const void* image, size_t size) {
    cpioread_ctx reader;
    return cpioread_init_checked(&reader, image, size) != nullptr;
}

cpioread_ctx* cpioread_init_checked(cpioread_ctx* reader, const void* image, size_t size) {
    *reader = {};
    const cpio_ops* ops = size != 0 ? cpio_find_ops_for_img__(image) : nullptr;
    if (ops == nullptr) return nullptr;
    size_t count = 0;
    for (uint64_t offset = 0; offset < size; count++) {
        const char* header = static_cast<const char*>(image) + offset;
        if (!ops->is_valid_hdr(header)) break;
        uint64_t entry_size = 0;
        const Entry entry = check_entry(*ops, header, size - offset, &entry_size);
        if (entry == Entry::bad) return nullptr;
        if (entry == Entry::last) break;
        offset += entry_size;
    }
    *reader = {.ops = ops, .image = image, .count = count, .current = nullptr};
    return reader;
}
