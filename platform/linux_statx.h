// statx(2) with its record as the kernel lays it out (<linux/stat.h>): musl does not declare it in the version
// that we build with.

#pragma once

#include <cstdint>

namespace platform {

struct KernelTime {
    int64_t seconds;
    uint32_t nanoseconds;
    int32_t reserved;
};

struct KernelStatus {
    uint32_t mask;
    uint32_t block_size;
    uint64_t attributes;
    uint32_t links;
    uint32_t user;
    uint32_t group;
    uint16_t mode;
    uint16_t reserved;
    uint64_t inode;
    uint64_t size;
    uint64_t blocks;
    uint64_t attributes_mask;
    KernelTime access;
    KernelTime birth;
    KernelTime change;
    KernelTime modification;
    uint32_t device_represented_major;
    uint32_t device_represented_minor;
    uint32_t device_major;
    uint32_t device_minor;
    uint64_t mount_id;
    uint64_t unused[13];
};
static_assert(sizeof(KernelStatus) == 256);

// What can be asked for, and a flag of the question.
constexpr unsigned basic_status = 0x7ff;     // STATX_BASIC_STATS
constexpr unsigned birth_time = 0x800;       // STATX_BTIME
constexpr unsigned mount_id = 0x1000;        // STATX_MNT_ID
constexpr unsigned without_asking = 0x4000;  // AT_STATX_DONT_SYNC: no server is asked

}  // namespace platform
