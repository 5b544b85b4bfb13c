// The header in octal digits (POSIX.1-1988).

#include <sys/sysmacros.h>

#include "cpio/driver.h"

namespace {

using cpio::at;
using cpio::Field;

constexpr cpio::Layout layout = {
    .header_size = 76,
    .padding = 1,
    .name_size = {59, 6},
    .mtime = {48, 11},
    .mode = {18, 6},
    .file_size = {65, 11},
    .gid = {30, 6},
    .uid = {24, 6},
    .nlink = {36, 6},
    .ino = {12, 6},
};
constexpr Field dev = {6, 6};

// Digits are not checked: any byte counts as its distance from '0'. Eleven digits make 33 bits.
uint64_t read_wide_field(const void* header, Field field) {
    uint64_t value = 0;
    for (unsigned i = 0; i < field.width; i++) {
        value = value * 8 + static_cast<unsigned char>(*at(header, field.offset + i)) - '0';
    }
    return value;
}

uint32_t read_field(const void* header, Field field) {
    return static_cast<uint32_t>(read_wide_field(header, field));
}

bool odc_probe(const void* header) {
    return memcmp(header, "070707", 6) == 0;
}

bool odc_is_valid_hdr(const void* header) {
    return odc_probe(header);
}

const char* odc_get_name(const void* header) {
    return at(header, layout.header_size);
}

bool odc_is_trailer(const void* header) {
    return cpio::begins_as_trailer(odc_get_name(header));
}

uint64_t odc_get_data_offs(const void* header) {
    return cpio::data_offset(layout, read_field(header, layout.name_size));
}

// Of the whole size, also where that is more than a record can hold: the next header is there.
uint64_t odc_get_entry_size(const void* header) {
    return odc_get_data_offs(header) + read_wide_field(header, layout.file_size);
}

bool odc_name_equal(const void* header, const char* name, size_t length) {
    return read_field(header, layout.name_size) == length && memcmp(odc_get_name(header), name, length) == 0;
}

void odc_fill_simple_entity(const void* header, cpio_entity* entity) {
    cpio::fill_simple(header, layout, read_field, entity);
}

cpio_entity_ext* odc_fill_extended_entity(const void* header, cpio_entity_ext* entity, uint64_t offset) {
    uint32_t device = read_field(header, dev);
    entity->dev_major = static_cast<uint32_t>(major(device));
    entity->dev_minor = static_cast<uint32_t>(minor(device));
    entity->rdev_major = 0;
    entity->rdev_minor = 0;
    return cpio::fill_extended(header, layout, read_field, offset, entity) ? entity : nullptr;
}

}  // namespace

constexpr cpio_ops cpio_ops__odc = {
    .probe = odc_probe,
    .is_valid_hdr = odc_is_valid_hdr,
    .is_trailer = odc_is_trailer,
    .get_name = odc_get_name,
    .get_entry_size = odc_get_entry_size,
    .get_data_offs = odc_get_data_offs,
    .name_equal = odc_name_equal,
    .fill_simple_entity = odc_fill_simple_entity,
    .fill_extended_entity = odc_fill_extended_entity,
};
