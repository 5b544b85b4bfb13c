// The paths at which file systems are mounted.

#pragma once

#include <cstdint>

#include "lib/containers/container_vector.h"

struct deque;

// New: all mount points as a deque of char* in strcmp order, which gn_free_mntlist frees. Null on any
// failure.
[[nodiscard]] deque* gn_mntlist();

// Frees a mount list and its strings. 0; -1 for null.
int gn_free_mntlist(deque* list);

// A walk over the mount points in the system's order, whatever their length.
class MountPoints {
  public:
    MountPoints();
    MountPoints(const MountPoints&) = delete;
    MountPoints& operator=(const MountPoints&) = delete;
    ~MountPoints();

    // False when the system did not give them.
    [[nodiscard]] bool opened() const { return handle_ != 0; }

    // The next path, valid until the next call. Null with errno, which is 0 at the end.
    [[nodiscard]] const char* next();

  private:
    uint32_t handle_;
    Vector<char> buffer_;
};
