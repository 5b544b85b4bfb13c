// Any text as a size, and any size as a text.

#include <regex>

#include "common/sizes.h"
#include "lib/option/option.h"
#include "tests/fuzz/words.h"

namespace {

// The factor of a suffix modulo 2^64; false for none.
bool factor_of(const std::string& suffix, bool dd_units, uint64_t* factor) {
    static const std::regex form("([kKMGTPEZY])(|[bB]|iB)");
    static const std::string letters = "KMGTPEZY";
    *factor = suffix == "c" ? 1 : suffix == "w" ? 2 : 512;
    if (dd_units && (suffix == "c" || suffix == "w" || suffix == "b")) return true;
    *factor = 1;
    if (suffix.empty()) return true;
    std::smatch found;
    if (!std::regex_match(suffix, found, form)) return false;
    const size_t power = suffix[0] == 'k' ? 1 : letters.find(suffix[0]) + 1;
    const bool thousands = found[2] == "b" || found[2] == "B";
    for (size_t i = 0; i < power; i++) *factor *= thousands ? 1000 : 1024;
    return true;
}

void print(uint64_t size, int width) {
    const std::string printed = fuzz::printed([&] { gn_printsize(width, size); });
    if (width < 1) return fuzz::require(printed == "??", "no width");

    const size_t unit = std::string_view("kMGTP").find(printed.back());
    fuzz::require(unit < 5 && std::stoull(printed) == size >> (10 * (unit + 1)), "the number");
    const bool fits = printed.size() == static_cast<size_t>(width) + 1;
    fuzz::require(fits || unit == 4, "the width");
    const bool smaller_fits =
        unit > 0 && std::to_string(size >> (10 * unit)).size() <= static_cast<size_t>(width);
    fuzz::require(!smaller_fits, "the unit");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text = fuzz::split(data, size)[0];
    const bool dd_units = size % 2 != 0;
    uint64_t factor;
    char* end;

    fuzz::Arguments sizes({text, text});
    uint64_t number = strtoull(text.c_str(), &end, 0);
    const bool known = factor_of(end, dd_units, &factor);
    uint64_t value = 4711;
    fuzz::require(gn_parse_size(sizes.argv[0], &value, dd_units) == known, "what is a size");
    fuzz::require(value == (known ? number * factor : 4711), "the value");

    number = static_cast<uint64_t>(strtoll(text.c_str(), &end, 0));
    const bool option_known = factor_of(end, false, &factor);
    fuzz::Arguments operand({"-s", text});
    e_option state;
    e_initoption(&state, &operand.argc, &operand.argv, true);
    int64_t option = 0;
    fuzz::require(e_getoption(&state) == 's', "the option");
    fuzz::require(e_opt_getsize(&state, &option) == (option_known ? e_opt_ok : e_opt_bad_suffix),
                  "a size option");
    fuzz::require(!option_known || static_cast<uint64_t>(option) == number * factor, "its value");

    print(value, static_cast<int>(size) % 24 - 1);
    return 0;
}
