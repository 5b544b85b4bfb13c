// What is mounted where, and unmounting.

#pragma once

#include <cstddef>
#include <cstdint>

// A file system, as df shows it.
struct FileSystem {
    uint32_t type;        // the system's number for its kind
    uint32_t block_size;  // bytes; the unit of the two numbers of blocks that follow
    uint64_t blocks;
    uint64_t free_blocks;  // all of them, whoever may use them
    uint64_t inodes;
    uint64_t free_inodes;
    uint64_t id;           // two mount points show the same file system exactly when this is the same
    uint64_t first_block;  // where it lies on the device that holds it; both 0 when that is not known
    uint64_t block_count;
    int32_t device_unit;
    int32_t host_unit;
    char device_name[4096];  // cut off there
    char host_name[256];     // the device that holds the device; empty when there is none
};

// An iteration over the mount points of this process, in the system's order, as they were at the call. One
// that lies hidden under another mount is left out until it comes to light; where mounts are stacked on the
// same place, it is delivered once for each. A handle that e_closemnt takes back, or 0 with errno.
[[nodiscard]] uint32_t e_openmnt();

// The path of the next mount point, whatever bytes it holds, put into the buffer; returns the buffer. Null at
// the end, with errno 0; null with ERANGE when the buffer is too small: the next call delivers the same path.
[[nodiscard]] char* e_readmnt(uint32_t handle, char* buffer, size_t size);

void e_closemnt(uint32_t handle);

// Describes the file system that holds a path, and puts the path of its mount point into name, which is
// returned. Null with errno; ETIMEDOUT when a server or another process that must answer for it does not.
[[nodiscard]] char* statfsmnt(const char* path, FileSystem* record, char* name, size_t size);

namespace platform {

// The same for a mount point, which is known already: 0, or -1 with errno.
[[nodiscard]] int statfs(const char* mount_path, FileSystem* record);

// The same as statfsmnt, except that the file system itself is not asked: type, sizes and numbers stay 0.
// That way it also finds one that no longer answers.
[[nodiscard]] char* holding_mount(const char* path, FileSystem* record, char* name, size_t size);

// Detaches what is mounted on top at a mount point, which must be no symbolic link. With force, requests that
// a server does not answer are given up; what is in use stays attached all the same. 0, or -1 with errno.
[[nodiscard]] int umount(const char* mount_path, bool force);

}  // namespace platform
