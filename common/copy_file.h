// Copying what a file holds.

#pragma once

struct stat;

enum class CopyResult {
    complete,
    read_failed,   // with errno; everything in front of the fault is copied
    write_failed,  // with errno
};

// Copies a file from its beginning to one that was just created or cut to nothing; both stay open. The
// statuses are what fstat says of the two. Between regular files the system does the work where it can, and
// what was never written in the one (a hole) is not written in the other.
[[nodiscard]] CopyResult copy_file(int in, const struct stat& in_status, int out,
                                   const struct stat& out_status);
