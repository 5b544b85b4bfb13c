#pragma once

// Reads cpio archives that are in memory ("images"), in three header formats: newc ("070701"), odc
// ("070707"), and the old binary one in both byte orders (cpio(5)). Nothing is copied or allocated: records
// point into the image, which stays the caller's and must outlive them.
//
//     cpioread_ctx reader;
//     if (cpioread_init_checked(&reader, image, size) == nullptr) return;   // no archive, or a damaged one
//     cpio_entity entity;
//     for (auto* e = cpioread_first(&reader, &entity); e != nullptr; e = cpioread_next(&reader, &entity)) ...
//
// The reader believes what headers say and does not know where the image ends, so that an image must be a
// whole archive, or have been checked.
//
// Where an archive has no trailer, the reader finds its end by looking for one more header: cpio_image_slack
// bytes of zero must stand behind the image.

#include <cstddef>
#include <cstdint>

inline constexpr size_t cpio_image_slack = 16;

/// An entry.
struct cpio_entity {
    const char* name;    // in the image, NUL-terminated as stored
    uint32_t name_size;  // as the header has it, with the NUL; the name may be shorter
    uint32_t mtime;      // seconds since the epoch
    uint32_t mode;       // file type and permission bits, as in st_mode
    uint32_t file_size;
    const char* data;  // in the image, file_size bytes
};

/// Everything that a header tells about an entry.
struct cpio_entity_ext {
    uint64_t user;  // the caller's: never read or written

    // Positions in the image. The data's end is padded as the format does it.
    uint64_t header_offset;
    uint64_t data_end_offset;
    uint64_t data_offset;

    // Supplied by the caller: where the name is copied to; null for nowhere.
    char* name;
    uint32_t name_buffer_size;

    uint32_t name_size;
    uint32_t mtime;
    uint32_t mode;
    uint32_t file_size;
    uint32_t gid;
    uint32_t uid;
    uint32_t nlink;
    uint32_t ino;
    uint32_t dev_major;
    uint32_t dev_minor;
    uint32_t rdev_major;  // 0 in odc and binary archives, as rdev_minor
    uint32_t rdev_minor;
};

/// What a header format can do. A header is a place in an image; it need not be aligned.
struct cpio_ops {
    /// Whether a header of this format is there: the first looks at an image, the second at an entry.
    bool (*probe)(const void* header);
    bool (*is_valid_hdr)(const void* header);
    /// Whether the entry ends the archive: its name begins with "TRAILER!!!".
    bool (*is_trailer)(const void* header);
    const char* (*get_name)(const void* header);
    /// Bytes from this header to the next one, and to the data.
    uint64_t (*get_entry_size)(const void* header);
    uint64_t (*get_data_offs)(const void* header);
    /// Whether the entry has this name; the length counts the NUL.
    bool (*name_equal)(const void* header, const char* name, size_t length);
    void (*fill_simple_entity)(const void* header, cpio_entity* entity);
    /// Takes the header's position in the image. Returns the record; null, with everything but the name
    /// filled in, when the name does not fit the caller's buffer.
    cpio_entity_ext* (*fill_extended_entity)(const void* header, cpio_entity_ext* entity, uint64_t offset);
};

extern const cpio_ops cpio_ops__newc;
extern const cpio_ops cpio_ops__odc;
extern const cpio_ops cpio_ops__bin;

/// The format of an image; null when it is none of them. Looks at up to 6 bytes.
[[nodiscard]] const cpio_ops* cpio_find_ops_for_img__(const void* image);

/// A walk over an image. Fields are for the reader alone.
struct cpioread_ctx {
    const cpio_ops* ops;
    const void* image;
    size_t count;         // entries before the trailer
    const void* current;  // header, or null: the walk has ended, or not begun
};

/// Recognises the format and counts the entries. Returns the reader; null when this is no cpio image.
[[nodiscard]] cpioread_ctx* cpioread_init(cpioread_ctx* reader, const void* image);

/// The same for an image of `size` bytes (the slack behind it not counted) that cannot be trusted: null also
/// when a header, a name with a NUL inside its size, or data is not wholly within the image, or when data is
/// larger than a record can say (odc has room for 8 GiB). The archive ends well at the trailer, at bytes that
/// are no header of the format, and at the end of the image. Takes one pass over headers and names, as
/// cpioread_init does; data is not looked at. As long as the image stays as it is, all that the reader hands
/// out lies in it.
[[nodiscard]] cpioread_ctx* cpioread_init_checked(cpioread_ctx* reader, const void* image, size_t size);

/// Whether cpioread_init_checked would accept the image.
[[nodiscard]] bool cpioread_check(const void* image, size_t size);

/// Starts a walk and fills the record with the first entry. Returns the record; null when there is none.
[[nodiscard]] cpio_entity* cpioread_first(cpioread_ctx* reader, cpio_entity* entity);

/// Goes on to the next entry. Null at the end, and from there on until the next cpioread_first.
[[nodiscard]] cpio_entity* cpioread_next(cpioread_ctx* reader, cpio_entity* entity);

/// The first entry of exactly this name: "a" does not find "./a". Null when there is none. A linear search
/// that leaves the walk where it is.
[[nodiscard]] cpio_entity* cpioread_find(const cpioread_ctx* reader, cpio_entity* entity, const char* name);
