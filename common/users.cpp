#include "common/users.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <grp.h>
#include <pwd.h>

std::optional<id_t> parse_id(const char* text) {
    if (text[0] == '\0' || text[strspn(text, "0123456789")] != '\0') return std::nullopt;
    errno = 0;
    const unsigned long long number = strtoull(text, nullptr, 10);
    if (errno != 0 || number >= std::numeric_limits<id_t>::max()) return std::nullopt;
    return static_cast<id_t>(number);
}

const passwd* find_user(const char* text) {
    const passwd* user = getpwnam(text);
    if (user != nullptr) return user;
    const auto id = parse_id(text);
    return id ? getpwuid(*id) : nullptr;
}

std::optional<gid_t> find_group(const char* text) {
    const group* entry = getgrnam(text);
    return entry != nullptr ? std::optional(entry->gr_gid) : parse_id(text);
}

bool groups_of(const char* user, gid_t group, Vector<gid_t>* groups) {
    // The system's limit; more could not be set.
    constexpr int most = 65536;
    for (int count = 64; count <= most; count *= 4) {
        if (!groups->resize(static_cast<size_t>(count))) return false;
        int found = count;
        if (getgrouplist(user, group, groups->data(), &found) >= 0) {
            return groups->resize(static_cast<size_t>(std::max(found, 0)));
        }
    }
    return false;
}
