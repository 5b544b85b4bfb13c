// Paths as texts. Both '/' and '\\' separate components unless a call says otherwise. Texts that are returned
// as new come from malloc and belong to the caller; null means that memory ran out.

#pragma once

#include <cstddef>

// New: name itself when it begins with a separator, otherwise dir followed by name with one '/' between them
// where dir is neither empty nor ends in a separator.
[[nodiscard]] char* gn_joinpath(const char* dir, const char* name);

// New: the target of a symbolic link as seen from where the link's path is seen from: target itself when it
// begins with a separator, otherwise put behind the beginning of linkpath that ends with its last '/'. A
// backslash in linkpath separates nothing.
[[nodiscard]] char* gn_substlink(const char* linkpath, const char* target);

// New: the target of a symbolic link that the open directory dir (or AT_FDCWD) holds, at most its first
// `most` bytes: what a link's size says need not be true, and is 0 throughout /proc. Null with errno, which
// is ENOMEM when memory ran out, when nothing can be read.
[[nodiscard]] char* read_link(int dir, const char* link, size_t most);

// New: the absolute path without links and dots, as realpath gives it; null with errno on failure.
[[nodiscard]] char* gn_mkabs(const char* path);

// Replaces every '\\' by '/', in place.
void gn_normalize_separators(char* path);

// The base name as the toolbox takes it from the path it was started by: the text after the last '/'; without
// one, the text after the last '\\'; without either, all of it. A pointer into path.
[[nodiscard]] const char* base_name(const char* path);

// The C library's calls by the names that the system gives them.
[[nodiscard]] int symlink_wrap(const char* target, const char* linkpath);
[[nodiscard]] int link_wrap(const char* from, const char* to);
[[nodiscard]] char* realpath_wrap(const char* path, char* resolved);
