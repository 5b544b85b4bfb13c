#include "common/mounts.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "common/directory.h"
#include "common/own.h"
#include "lib/containers/container_deque.h"
#include "platform/mounts.h"

namespace {

constexpr size_t usual_path_size = 1024;

// Strings that the vector owns.
class Paths {
  public:
    Paths() = default;
    Paths(const Paths&) = delete;
    Paths& operator=(const Paths&) = delete;
    ~Paths() {
        for (char* path : paths_) free(path);
    }

    // False when memory runs out.
    [[nodiscard]] bool add(const char* path) {
        CString copy(strdup(path));
        if (!copy || !paths_.push_back(copy.get())) return false;
        (void)copy.release();
        return true;
    }

    // Hands the strings over to a deque, in order. Null, with nothing handed over, when memory runs out.
    [[nodiscard]] deque* release_sorted() {
        // Not deque_sort, which is quadratic and does not deliver the order that callers rely on.
        vector_sort(paths_.raw(), cmp_SZ);
        Deque<char*> list;
        if (!list.create()) return nullptr;
        for (char* path : paths_) {
            if (!list.push_back(path)) return nullptr;
        }
        paths_.clear();
        return list.release();
    }

  private:
    Vector<char*> paths_;
};

}  // namespace

deque* gn_mntlist() {
    Paths paths;
    MountPoints mount_points;
    if (!mount_points.opened()) return nullptr;
    while (const char* path = mount_points.next()) {
        if (!paths.add(path)) return nullptr;
    }
    return errno == 0 ? paths.release_sorted() : nullptr;
}

int gn_free_mntlist(deque* list) {
    if (list == nullptr) return -1;
    while (list->count > 0) {
        free(*static_cast<char**>(deque_back(list)));
        deque_pop_back(list);
    }
    return deque_release(list);
}

MountPoints::MountPoints() : handle_(e_openmnt()) {}

MountPoints::~MountPoints() {
    if (opened()) e_closemnt(handle_);
}

const char* MountPoints::next() {
    if (buffer_.empty() && !buffer_.resize(usual_path_size)) {
        errno = ENOMEM;
        return nullptr;
    }
    const char* path;
    while ((path = e_readmnt(handle_, buffer_.data(), buffer_.size())) == nullptr && errno == ERANGE) {
        if (!buffer_.resize(buffer_.size() * 2)) {
            errno = ENOMEM;
            return nullptr;
        }
    }
    return path;
}
