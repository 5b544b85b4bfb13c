#pragma once

// What the header formats share.

#include <algorithm>
#include <cstring>

#include "cpio/cpio.h"

namespace cpio {

// A number in a header. The width counts what the format's numbers are made of: digits or words.
struct Field {
    uint64_t offset;
    unsigned width;
};

// Where a header holds what all formats have. The name is right behind it.
struct Layout {
    uint64_t header_size;
    uint64_t padding;  // header with name, and data, are each filled up to a multiple of this power of two
    Field name_size;
    Field mtime;
    Field mode;
    Field file_size;
    Field gid;
    Field uid;
    Field nlink;
    Field ino;
};

inline const char* at(const void* header, uint64_t offset) {
    return static_cast<const char*>(header) + offset;
}

constexpr uint64_t padded(const Layout& layout, uint64_t size) {
    return (size + layout.padding - 1) & ~(layout.padding - 1);
}

constexpr uint64_t data_offset(const Layout& layout, uint32_t name_size) {
    return padded(layout, layout.header_size + name_size);
}

inline bool begins_as_trailer(const char* name) {
    return *name == 'T' && strncmp(name, "TRAILER!!!", 10) == 0;
}

// read(header, field) is the format's way to read a number.
template <class Read>
void fill_simple(const void* header, const Layout& layout, Read read, cpio_entity* entity) {
    entity->name = at(header, layout.header_size);
    entity->name_size = read(header, layout.name_size);
    entity->mtime = read(header, layout.mtime);
    entity->mode = read(header, layout.mode);
    entity->file_size = read(header, layout.file_size);
    entity->data = at(header, data_offset(layout, entity->name_size));
    // A walk mostly waits for the next header, which begins about there and takes up to three cache lines.
    const char* end = entity->data + entity->file_size;
    for (size_t line = 0; line < 3; line++) __builtin_prefetch(end + 64 * line);
}

// Fills in everything but the device numbers. False when the name does not fit.
template <class Read>
bool fill_extended(const void* header, const Layout& layout, Read read, uint64_t offset,
                   cpio_entity_ext* entity) {
    entity->name_size = read(header, layout.name_size);
    entity->mtime = read(header, layout.mtime);
    entity->mode = read(header, layout.mode);
    entity->file_size = read(header, layout.file_size);
    entity->gid = read(header, layout.gid);
    entity->uid = read(header, layout.uid);
    entity->nlink = read(header, layout.nlink);
    entity->ino = read(header, layout.ino);
    entity->header_offset = offset;
    entity->data_offset = offset + data_offset(layout, entity->name_size);
    entity->data_end_offset = entity->data_offset + padded(layout, entity->file_size);

    if (entity->name == nullptr) return true;
    if (entity->name_size > entity->name_buffer_size) return false;
    if (entity->name_buffer_size == 0) return true;
    // A name without NUL in its size must not run over the buffer.
    size_t length = std::min(entity->name_size, entity->name_buffer_size - 1);
    length = strnlen(at(header, layout.header_size), length);
    memcpy(entity->name, at(header, layout.header_size), length);
    entity->name[length] = '\0';
    return true;
}

}  // namespace cpio
