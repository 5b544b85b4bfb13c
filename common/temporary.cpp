#include "common/temporary.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace temporary {

namespace {

constexpr char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr unsigned letter_count = sizeof letters - 1;

// Bytes from here on would make the first letters likelier than the others.
constexpr unsigned first_unfair = 256 / letter_count * letter_count;

}  // namespace

std::span<char> trailing_xs(char* name, size_t size) {
    size_t first = size;
    while (first > 0 && name[first - 1] == 'X') first--;
    return {name + first, size - first};
}

bool fill(std::span<char> part) {
    unsigned char random[64];
    for (size_t done = 0; done < part.size();) {
        if (getentropy(random, sizeof random) != 0) return false;
        for (unsigned byte : random) {
            if (byte < first_unfair && done < part.size()) part[done++] = letters[byte % letter_count];
        }
    }
    return true;
}

UniqueFd create_file(char* name) {
    const std::span<char> part = trailing_xs(name, strlen(name));
    if (part.empty()) {
        errno = EINVAL;
        return {};
    }
    for (int attempt = 0; attempt < most_attempts && fill(part); attempt++) {
        UniqueFd file(open(name, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (file.valid() || errno != EEXIST) return file;
    }
    return {};
}

}  // namespace temporary
