#include "lib/option/size_suffix.h"

#include <cstring>

bool e_apply_size_suffix(char* suffix, uint64_t* number) {
    if (suffix[0] == '\0') return true;

    uint64_t base = 1024;
    if (suffix[1] == '\0') {
        base = 1024;
    } else if ((suffix[1] == 'B' || suffix[1] == 'b') && suffix[2] == '\0') {
        base = 1000;
    } else if (strcmp(suffix + 1, "iB") != 0) {
        return false;
    }

    if (suffix[0] == 'k') suffix[0] = 'K';
    const char* letter = strchr(_e_opt_suffixes, suffix[0]);
    if (letter == nullptr) return false;
    for (const char* power = _e_opt_suffixes; power <= letter; power++) *number *= base;
    return true;
}
