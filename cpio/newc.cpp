// The header in hexadecimal digits (SVR4 without checksums): what initial RAM disks are made of.

#include <array>

#include "cpio/driver.h"

namespace {

using cpio::at;
using cpio::Field;

constexpr unsigned digits = 8;

constexpr cpio::Layout layout = {
    .header_size = 110,
    .padding = 4,
    .name_size = {94, digits},
    .mtime = {46, digits},
    .mode = {14, digits},
    .file_size = {54, digits},
    .gid = {30, digits},
    .uid = {22, digits},
    .nlink = {38, digits},
    .ino = {6, digits},
};
constexpr Field dev_major = {62, digits};
constexpr Field dev_minor = {70, digits};
constexpr Field rdev_major = {78, digits};
constexpr Field rdev_minor = {86, digits};

// Digits are not checked: any other byte counts as its distance from '0'.
constexpr auto digit_values = [] {
    std::array<uint32_t, 256> values{};
    for (uint32_t c = 0; c != values.size(); c++) {
        values[c] = c - '0';
        if (c >= 'A' && c <= 'F') values[c] = c - 'A' + 10;
        if (c >= 'a' && c <= 'f') values[c] = c - 'a' + 10;
    }
    return values;
}();

// Each digit is shifted by itself, so that none waits for the one before it.
uint32_t read_field(const void* header, Field field) {
    const char* text = at(header, field.offset);
    auto digit = [text](unsigned i) {
        return digit_values[static_cast<unsigned char>(text[i])] << 4 * (digits - 1 - i);
    };
    static_assert(digits == 8);
    return digit(0) + digit(1) + digit(2) + digit(3) + digit(4) + digit(5) + digit(6) + digit(7);
}

bool newc_probe(const void* header) {
    return memcmp(header, "070701", 6) == 0;
}

bool newc_is_valid_hdr(const void* header) {
    return newc_probe(header);
}

const char* newc_get_name(const void* header) {
    return at(header, layout.header_size);
}

bool newc_is_trailer(const void* header) {
    return cpio::begins_as_trailer(newc_get_name(header));
}

uint64_t newc_get_data_offs(const void* header) {
    return cpio::data_offset(layout, read_field(header, layout.name_size));
}

uint64_t newc_get_entry_size(const void* header) {
    return newc_get_data_offs(header) + cpio::padded(layout, read_field(header, layout.file_size));
}

bool newc_name_equal(const void* header, const char* name, size_t length) {
    return read_field(header, layout.name_size) == length && memcmp(newc_get_name(header), name, length) == 0;
}

void newc_fill_simple_entity(const void* header, cpio_entity* entity) {
    cpio::fill_simple(header, layout, read_field, entity);
}

cpio_entity_ext* newc_fill_extended_entity(const void* header, cpio_entity_ext* entity, uint64_t offset) {
    entity->dev_major = read_field(header, dev_major);
    entity->dev_minor = read_field(header, dev_minor);
    entity->rdev_major = read_field(header, rdev_major);
    entity->rdev_minor = read_field(header, rdev_minor);
    return cpio::fill_extended(header, layout, read_field, offset, entity) ? entity : nullptr;
}

}  // namespace

constexpr cpio_ops cpio_ops__newc = {
    .probe = newc_probe,
    .is_valid_hdr = newc_is_valid_hdr,
    .is_trailer = newc_is_trailer,
    .get_name = newc_get_name,
    .get_entry_size = newc_get_entry_size,
    .get_data_offs = newc_get_data_offs,
    .name_equal = newc_name_equal,
    .fill_simple_entity = newc_fill_simple_entity,
    .fill_extended_entity = newc_fill_extended_entity,
};
