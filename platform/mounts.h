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

// A mount with what it takes to make it again.
struct MountRecord {
    uint64_t id;  // its own number, and that of the mount on which it stands
    uint64_t parent_id;
    uint64_t device;  // the number of the block device that holds the file system; 0 if there is none
    bool hidden;      // under a mount further up
    const char* point;
    const char* source;
    const char* type;
    const char* root;         // the directory of the file system that it shows: "/" for all of it
    const char* options;      // those of the mount, separated by commas,
    const char* own_options;  // and those of the file system
};

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

// The next mount of an iteration, hidden or not, at any place; its texts are valid until e_closemnt. False at the end.
[[nodiscard]] bool next_mount(uint32_t handle, MountRecord* record);

// Whether a path leads to the mount of a number, and to no other that lies upon it.
[[nodiscard]] bool leads_to_mount(const char* path, uint64_t id);

// Whether this process may attach and detach file systems. False with errno.
[[nodiscard]] bool may_mount();

// Attaches a file system of a type at the place of a mount that was detached, with its options; with those alone
// that every file system knows, when it was of another type. False with errno.
[[nodiscard]] bool mount_again(const MountRecord& record, const char* device, const char* type);

// How many sectors of a block device were written or discarded since it came into being. False when nobody counts
// them.
[[nodiscard]] bool sectors_written(uint64_t device, uint64_t* count);

}  // namespace platform
