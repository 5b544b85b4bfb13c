#include "common/sizes.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "lib/option/size_suffix.h"

bool gn_parse_size(char* text, uint64_t* value, bool dd_units) {
    char* suffix = nullptr;
    uint64_t number = strtoull(text, &suffix, 0);
    if (dd_units && suffix[0] != '\0' && suffix[1] == '\0') {
        const uint64_t unit = suffix[0] == 'c' ? 1 : suffix[0] == 'w' ? 2 : suffix[0] == 'b' ? 512 : 0;
        if (unit != 0) {
            *value = number * unit;
            return true;
        }
    }
    if (!e_apply_size_suffix(suffix, &number)) return false;
    *value = number;
    return true;
}

void gn_printsize(int width, uint64_t size) {
    if (width < 1) {
        fputs("??", stdout);
        return;
    }
    constexpr int most_digits = 19;  // more than any size shifted right by 10 has
    uint64_t limit = 1;
    for (int digit = 0; digit < width && digit < most_digits; digit++) limit *= 10;
    limit--;

    const char* unit = "kMGTP";
    uint64_t number = size >> 10;
    while (number > limit && *unit != 'P') {
        number >>= 10;
        unit++;
    }
    printf("%*llu%c", width, static_cast<unsigned long long>(number), *unit);
}
