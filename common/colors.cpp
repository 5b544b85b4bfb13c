#include "common/colors.h"

#include <sys/stat.h>

namespace {

constexpr size_t executable_row = 16;

constexpr gn_color_indicator none = {0, nullptr};
constexpr gn_color_indicator device = {8, "\033[01;33m"};

bool is_executable_file(mode_t mode) {
    return (mode & (S_IFMT | S_IXUSR)) == (S_IFREG | S_IXUSR);
}

}  // namespace

constexpr std::array<gn_color_indicator, 17> gn_color_indicators = {{
    {4, "\033[0m"},      // no type: reset
    {5, "\033[33m"},     // FIFO
    device,              // character device
    none,                //
    {8, "\033[01;34m"},  // directory
    none,                //
    device,              // block device
    none,                //
    none,                // regular file
    none,                //
    {8, "\033[01;36m"},  // symbolic link
    none,                //
    {8, "\033[01;35m"},  // socket
    none,                //
    none,                //
    none,                //
    {8, "\033[01;32m"},  // executable regular file
}};

const char* gn_begin_color(mode_t mode) {
    size_t row = is_executable_file(mode) ? executable_row : (mode & S_IFMT) >> 12;
    const char* sequence = gn_color_indicators[row].sequence;
    return sequence == nullptr ? "" : sequence;
}

const char* gn_end_color() {
    return gn_color_indicators[0].sequence;
}

const char* gn_getprintfiletype(mode_t mode) {
    if (is_executable_file(mode)) return "*";
    switch (mode & S_IFMT) {
    case S_IFDIR: return "/";
    case S_IFIFO: return "|";
    case S_IFLNK: return "@";
    case S_IFSOCK: return "=";
    default: return "";
    }
}
