// The header in 16-bit words (Seventh Edition), in the byte order of the machine that wrote it.

#include <sys/sysmacros.h>

#include "cpio/driver.h"

namespace {

using cpio::at;
using cpio::Field;

constexpr cpio::Layout layout = {
    .header_size = 26,
    .padding = 2,
    .name_size = {20, 1},
    .mtime = {16, 2},
    .mode = {6, 1},
    .file_size = {22, 2},
    .gid = {10, 1},
    .uid = {8, 1},
    .nlink = {12, 1},
    .ino = {4, 1},
};
constexpr Field magic = {0, 1};
constexpr Field dev = {2, 1};

constexpr uint32_t native_magic = 070707;
constexpr uint32_t swapped_magic = 0xC771;

uint32_t read_word(const void* header, uint64_t offset) {
    uint16_t word;
    memcpy(&word, at(header, offset), sizeof word);
    return word;
}

// The more significant word comes first in either byte order.
uint32_t read_field_native(const void* header, Field field) {
    uint32_t value = 0;
    for (uint64_t i = 0; i < field.width; i++) value = value << 16 | read_word(header, field.offset + 2 * i);
    return value;
}

uint32_t read_field_swap(const void* header, Field field) {
    uint32_t value = 0;
    for (uint64_t i = 0; i < field.width; i++) {
        uint32_t word = read_word(header, field.offset + 2 * i);
        value = value << 16 | (word & 0xFF) << 8 | word >> 8;
    }
    return value;
}

// Every header decides for itself.
uint32_t read_field(const void* header, Field field) {
    return read_field_native(header, magic) == swapped_magic ? read_field_swap(header, field)
                                                             : read_field_native(header, field);
}

bool bin_probe(const void* header) {
    uint32_t word = read_field_native(header, magic);
    return word == native_magic || word == swapped_magic;
}

bool bin_is_valid_hdr(const void* header) {
    return bin_probe(header);
}

const char* bin_get_name(const void* header) {
    return at(header, layout.header_size);
}

bool bin_is_trailer(const void* header) {
    return cpio::begins_as_trailer(bin_get_name(header));
}

uint64_t bin_get_data_offs(const void* header) {
    return cpio::data_offset(layout, read_field(header, layout.name_size));
}

uint64_t bin_get_entry_size(const void* header) {
    return bin_get_data_offs(header) + cpio::padded(layout, read_field(header, layout.file_size));
}

bool bin_name_equal(const void* header, const char* name, size_t length) {
    return read_field(header, layout.name_size) == length && memcmp(bin_get_name(header), name, length) == 0;
}

void bin_fill_simple_entity(const void* header, cpio_entity* entity) {
    cpio::fill_simple(header, layout, read_field, entity);
}

cpio_entity_ext* bin_fill_extended_entity(const void* header, cpio_entity_ext* entity, uint64_t offset) {
    uint32_t device = read_field(header, dev);
    entity->dev_major = static_cast<uint32_t>(major(device));
    entity->dev_minor = static_cast<uint32_t>(minor(device));
    entity->rdev_major = 0;
    entity->rdev_minor = 0;
    return cpio::fill_extended(header, layout, read_field, offset, entity) ? entity : nullptr;
}

}  // namespace

constexpr cpio_ops cpio_ops__bin = {
    .probe = bin_probe,
    .is_valid_hdr = bin_is_valid_hdr,
    .is_trailer = bin_is_trailer,
    .get_name = bin_get_name,
    .get_entry_size = bin_get_entry_size,
    .get_data_offs = bin_get_data_offs,
    .name_equal = bin_name_equal,
    .fill_simple_entity = bin_fill_simple_entity,
    .fill_extended_entity = bin_fill_extended_entity,
};
