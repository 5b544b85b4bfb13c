// Whole reads and writes on descriptors.

#pragma once

#include <cstddef>

struct stat;

// Reads until count bytes are in, or the stream ends or fails; an interrupted read is repeated, and one that
// would block is waited for. Returns the number of bytes read. *eof (which may be null) is true only when the
// end stopped it: a short count with *eof false means an error, named by errno.
size_t gn_full_read(int fd, void* buffer, size_t count, bool* eof);

// Reads what is at hand, at most count bytes, waiting until there is something; an interrupted read is
// repeated, and one that would block is waited for. Returns the number of bytes, 0 at the end of the stream,
// -1 with errno.
[[nodiscard]] ptrdiff_t read_some(int fd, void* buffer, size_t count);

// Writes until all bytes are out; an interrupted write is repeated, and one that would block is waited for.
// Returns the number of bytes written: a short count means an error (or a device that takes no more).
size_t gn_full_write(int fd, const void* buffer, size_t count);

// The preferred block size of a file, kept between 512 and 262144 bytes: a size for copy buffers.
[[nodiscard]] size_t gn_safe_st_blksize(const struct stat* file);

// The number of 512-byte blocks that a file takes.
[[nodiscard]] long long gn_safe_st_blocks(const struct stat* file);
