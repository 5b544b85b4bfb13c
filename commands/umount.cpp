// umount: detaches file systems.
// Scripts rely on: the lines about the steps, failures to detach and to remove the directory among them, go
// to standard output, messages about the operand to standard error; a failure to remove the directory is told
// with -v only, and never counts.

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/mounts.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "lib/containers/deque.h"
#include "lib/option/option.h"
#include "platform/mounts.h"

namespace {

constexpr const char* usage[] = {
    "Usage: umount [OPTION]... MOUNTPOINT...\n",
    "Unmount or cleanup filesystems.\n",
    "\n",
    "    -D    delete mountpoint directory\n",
    "    -f    force unmount\n",
    "    -R    recursive\n",
    "    -v    verbose mode\n",
};

enum Flags : unsigned {
    verbose = 1,
    keep_directory = 2,
    recursive = 4,
    force = 8,
};

enum Result : int {
    detached = 0,
    not_a_mount_point = 1,
    no_mount_list = 2,
    detaching_failed = 6,
    contains_mount_points = 8,
};

class MountList {
  public:
    MountList() = default;
    MountList(const MountList&) = delete;
    MountList& operator=(const MountList&) = delete;
    ~MountList() { gn_free_mntlist(list_); }

    // Makes the list, or makes it anew. False after a message about the path.
    [[nodiscard]] bool read(const char* path) {
        gn_free_mntlist(list_);
        list_ = gn_mntlist();
        if (list_ == nullptr) cli::error("umount: %s: failed to get mount list\n", path);
        return list_ != nullptr;
    }

    // The last of the mount points below a directory, which nothing is mounted below. Null if there is none.
    [[nodiscard]] const char* last_below(const char* directory) const {
        // Below the root directory, the separator is part of it already.
        const size_t length = strcmp(directory, "/") == 0 ? 0 : strlen(directory);
        for (size_t i = list_->count; i > 0; i--) {
            const char* entry = *static_cast<char**>(deque_at(list_, i - 1));
            if (strncmp(entry, directory, length) == 0 && entry[length] == '/' && entry[length + 1] != '\0')
                return entry;
        }
        return nullptr;
    }

  private:
    deque* list_ = nullptr;
};

// False after a message. Not inlined, so that its large records do not burden each step of a recursion.
[[gnu::noinline]] bool is_mount_point(const char* path, bool tell) {
    if (tell) printf("umount: %s: stat filesystem\n", path);
    FileSystem fs;
    char mount_point[PATH_MAX];
    if (platform::holding_mount(path, &fs, mount_point, sizeof mount_point) == nullptr) {
        cli::error("umount: %s: failed to stat filesystem\n", path);
        return false;
    }
    if (strcmp(mount_point, path) != 0) {
        cli::error("umount: %s: not mounted\n", path);
        return false;
    }
    if (tell)
        printf("umount: %s: filesystem=%s, unit=%i\n", path, fs.device_name,
               static_cast<int>(fs.device_unit));
    return true;
}

int gn_umount_umount(const char* path, unsigned flags) {
    const bool tell = (flags & verbose) != 0;
    MountList list;
    if (!list.read(path)) return no_mount_list;
    if (!is_mount_point(path, tell)) return not_a_mount_point;
    while (const char* nested = list.last_below(path)) {
        if ((flags & recursive) == 0) {
            printf("umount: %s: this mountpoint contains mountpoints.\n", path);
            return contains_mount_points;
        }
        const int result = gn_umount_umount(nested, flags);
        if (result != detached) return result;
        // Anew, as others may have gone with it, when mounts are shared, or come to light from under it.
        if (!list.read(path)) return no_mount_list;
    }

    if (tell) printf("umount: %s: umount from vfs\n", path);
    if (platform::umount(path, (flags & force) != 0) != 0) {
        printf("umount: %s: failed to umount from vfs\n", path);
        return detaching_failed;
    }
    if ((flags & keep_directory) != 0) {
        if (tell) printf("umount: %s: umounted from vfs\n", path);
        return detached;
    }
    if (tell) printf("umount: %s: umounted from vfs, removing mount directory\n", path);
    if (rmdir(path) != 0 && tell) printf("umount: %s: failed to remove mount directory\n", path);
    return detached;
}

}  // namespace

int gn_umount(int argc, char** argv) {
    unsigned flags = keep_directory;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'D': flags &= ~keep_directory; break;
        case 'f': flags |= force; break;
        case 'R': flags |= recursive; break;
        case 'v': flags |= verbose; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "umount: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("umount: missing operand\n");

    sync();
    const CString resolved(static_cast<char*>(malloc(PATH_MAX)));
    if (!resolved) return cli::fail("umount: out of memory\n");
    bool ok = true;
    for (const char* operand : std::span(argv, static_cast<size_t>(argc))) {
        if (realpath_wrap(operand, resolved.get()) == nullptr) {
            cli::error("umount: %s: %s\n", operand, gn_strerror(errno));
            ok = false;
            continue;
        }
        ok &= gn_umount_umount(resolved.get(), flags) == detached;
    }
    return output::finish("umount", ok ? 0 : 1);
}
