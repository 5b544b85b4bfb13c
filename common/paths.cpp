#include "common/paths.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <unistd.h>

#include "common/text.h"

namespace {

bool is_separator(char c) {
    return c == '/' || c == '\\';
}

}  // namespace

char* gn_joinpath(const char* dir, const char* name) {
    size_t size = strlen(dir);
    if (is_separator(name[0]) || size == 0) return strdup(name);
    return concatenate({{dir, size}, {"/", is_separator(dir[size - 1]) ? size_t{0} : size_t{1}}, name});
}

char* gn_substlink(const char* linkpath, const char* target) {
    const char* slash = strrchr(linkpath, '/');
    if (is_separator(target[0]) || slash == nullptr) return strdup(target);
    return concatenate({{linkpath, static_cast<size_t>(slash + 1 - linkpath)}, target});
}

char* read_link(int dir, const char* link, size_t most) {
    constexpr size_t longest = size_t{1} << 16;  // no file system stores more, whatever the size says
    most = std::min(most, longest);
    auto* target = static_cast<char*>(malloc(most + 1));
    if (target == nullptr) return nullptr;
    ssize_t count = readlinkat(dir, link, target, most);
    if (count < 1) {
        int error = count < 0 ? errno : EINVAL;
        free(target);
        errno = error;
        return nullptr;
    }
    target[count] = '\0';
    return target;
}

char* gn_mkabs(const char* path) {
    return realpath_wrap(path, nullptr);
}

void gn_normalize_separators(char* path) {
    while ((path = strchr(path, '\\')) != nullptr) *path = '/';
}

const char* base_name(const char* path) {
    const char* separator = strrchr(path, '/');
    if (separator == nullptr) separator = strrchr(path, '\\');
    return separator == nullptr ? path : separator + 1;
}

int symlink_wrap(const char* target, const char* linkpath) {
    return symlink(target, linkpath);
}

int link_wrap(const char* from, const char* to) {
    return link(from, to);
}

char* realpath_wrap(const char* path, char* resolved) {
    // The system takes no path that long, but one of the C libraries does.
    if (strnlen(path, PATH_MAX) == PATH_MAX) {
        errno = ENAMETOOLONG;
        return nullptr;
    }
    char* result = realpath(path, resolved);
    // POSIX allows two leading slashes a meaning of their own, and one of the C libraries keeps them.
    if (result != nullptr && result[0] == '/' && result[1] == '/')
        memmove(result, result + 1, strlen(result));
    return result;
}
