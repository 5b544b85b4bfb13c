#include <cstring>

#include "cpio/cpio.h"

namespace {

const void* next_header(const cpio_ops* ops, const void* header) {
    return static_cast<const char*>(header) + ops->get_entry_size(header);
}

}  // namespace

cpioread_ctx* cpioread_init(cpioread_ctx* reader, const void* image) {
    *reader = {};
    const cpio_ops* ops = cpio_find_ops_for_img__(image);
    if (ops == nullptr) return nullptr;
    reader->ops = ops;
    reader->image = image;
    for (const void* header = image; ops->is_valid_hdr(header) && !ops->is_trailer(header);
         header = next_header(ops, header)) {
        reader->count++;
    }
    return reader;
}

cpio_entity* cpioread_first(cpioread_ctx* reader, cpio_entity* entity) {
    if (reader == nullptr || entity == nullptr || reader->count == 0) return nullptr;
    reader->current = reader->image;
    reader->ops->fill_simple_entity(reader->current, entity);
    return entity;
}

cpio_entity* cpioread_next(cpioread_ctx* reader, cpio_entity* entity) {
    if (reader == nullptr || entity == nullptr || reader->current == nullptr) return nullptr;
    const cpio_ops* ops = reader->ops;
    const void* header = next_header(ops, reader->current);
    if (!ops->is_valid_hdr(header) || ops->is_trailer(header)) {
        reader->current = nullptr;
        return nullptr;
    }
    reader->current = header;
    ops->fill_simple_entity(header, entity);
    return entity;
}

cpio_entity* cpioread_find(const cpioread_ctx* reader, cpio_entity* entity, const char* name) {
    if (reader == nullptr || entity == nullptr || name == nullptr || *name == '\0') return nullptr;
    const size_t length = strlen(name) + 1;
    const void* header = reader->image;
    for (size_t i = 0; i < reader->count; i++) {
        if (i != 0) header = next_header(reader->ops, header);
        if (reader->ops->name_equal(header, name, length)) {
            reader->ops->fill_simple_entity(header, entity);
            return entity;
        }
    }
    return nullptr;
}
