// Any format: only those with at most one integer conversion reach printf, with a number of the right type.

#include <regex>

#include "app/tools.h"
#include "tests/fuzz/words.h"

#pragma GCC diagnostic ignored "-Wformat-nonliteral"  // the expression below checks it

namespace {

// A number as a conversion with this length and letter sees it.
std::string expected(std::string flags, const std::string& length, char letter, uint64_t number) {
    char text[4096];
    const bool is_signed = letter == 'd' || letter == 'i';
    auto bits = static_cast<int64_t>(number);
    if (letter == 'c') {
        (void)snprintf(text, sizeof text, (flags + 'c').c_str(), static_cast<int>(number));
        return number % 256 != 0 ? text : "";
    }
    if (length == "hh") bits = is_signed ? int64_t{static_cast<int8_t>(bits)} : static_cast<uint8_t>(bits);
    if (length == "h") bits = is_signed ? int64_t{static_cast<int16_t>(bits)} : static_cast<uint16_t>(bits);
    if (length.empty()) bits = is_signed ? int64_t{static_cast<int32_t>(bits)} : static_cast<uint32_t>(bits);
    (void)snprintf(text, sizeof text, (flags + "ll" + letter).c_str(), bits);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::regex too_wide("[0-9]{4}");
    static const std::regex conversion(R"(%(%|([-+ #0']*[0-9]*([.][0-9]*)?)(hh|h|ll|l|j|z|t)?([diuoxXc])|))");
    if (size < 8) return 0;
    uint64_t number;
    memcpy(&number, data, sizeof number);
    const std::string format = fuzz::split(data + 8, size - 8)[0];
    if (number == UINT64_MAX || std::regex_search(format, too_wide))
        return 0;  // without an end, or with gigabytes

    int conversions = 0;
    bool valid = format.find("%*") == format.npos;
    std::string text;
    std::string rest = format;
    for (std::smatch found; std::regex_search(rest, found, conversion); rest = found.suffix()) {
        text += found.prefix();
        if (found[1] == "%") {
            text += '%';
        } else if (found[5].matched) {
            conversions++;
            text += expected('%' + found.str(2), found[4], found.str(5)[0], number);
        } else {
            valid = false;
        }
    }
    text += rest;

    const std::string digits = std::to_string(number);
    const auto run = fuzz::run(gn_seq, {"-s", ";", "-f", format, digits, "1", digits});
    if (!valid || conversions > 1) {
        fuzz::require(run.status == 1 && run.text == "seq: invalid format string.\n", "a bad format");
    } else if (run.text.find('\0') == run.text.npos) {
        fuzz::require(run.status == 0 && run.text == text + ';', "a number");
    }
    return 0;
}
