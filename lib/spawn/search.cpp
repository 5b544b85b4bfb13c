#include "lib/spawn/search.h"

#include <cerrno>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Whether a file can be run. Sets errno, also for what is found but never runs.
bool is_program(const char* path) {
    struct stat status;
    if (stat(path, &status) != 0) return false;
    if (S_ISREG(status.st_mode)) return access(path, X_OK) == 0;
    errno = EACCES;
    return false;
}

}  // namespace

void e_initsearch(e_search* search, const char* name, const char* path) {
    search->name = name;
    search->error = ENOENT;
    search->rest = path != nullptr ? path : e_default_path;
    if (strchr(name, '/') != nullptr) search->rest = name;
    if (name[0] == '\0') search->rest = nullptr;
}

char* next_candidate(e_search* search) {
    const size_t name_size = strlen(search->name) + 1;
    char* const path = search->path + 2;
    while (search->rest != nullptr) {
        const char* directory = search->rest;
        size_t size = 0;
        if (directory != search->name) {
            size = strcspn(directory, ":");
            search->rest = directory[size] == ':' ? directory + size + 1 : nullptr;
            // "./" also keeps a name that begins with '-' from being taken for an option.
            if (size == 0) {
                directory = ".";
                size = 1;
            }
        } else {
            search->rest = nullptr;
        }
        const size_t slash = size != 0 && directory[size - 1] != '/' ? 1 : 0;
        // The system takes no longer paths: nothing can be there.
        if (size >= PATH_MAX || name_size > PATH_MAX - size - slash) {
            if (directory == search->name) search->error = ENAMETOOLONG;
            continue;
        }
        memcpy(path, directory, size);
        memcpy(path + size, "/", slash);
        memcpy(path + size + slash, search->name, name_size);
        return path;
    }
    return nullptr;
}

const char* e_nextfound(e_search* search) {
    const bool is_path = search->rest == search->name;
    while (const char* path = next_candidate(search)) {
        if (is_program(path)) return path;
        if (is_path || errno == EACCES) search->error = errno;
    }
    errno = search->error;
    return nullptr;
}

char* e_find(const char* name, const char* path) {
    e_search search;
    e_initsearch(&search, name, path);
    const char* found = e_nextfound(&search);
    return found != nullptr ? strdup(found) : nullptr;
}
