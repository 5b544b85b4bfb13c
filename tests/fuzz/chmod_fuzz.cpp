// Any word as a mode: what it sets and what it leaves alone, bit by bit.

#include <regex>

#include "app/tools.h"
#include "tests/fuzz/words.h"

namespace {

// What a mode makes of the nine bits, which are '?' as long as they are left alone; empty for no mode.
std::string bits_of(std::string mode) {
    static const std::regex octal("0*[0-7]{1,3}"), symbolic("([ugoa]*[-+=][rwx]*)(,[ugoa]*[-+=][rwx]*)*");
    std::string bits = "?????????";
    if (std::regex_match(mode, octal)) {
        const unsigned long value = std::stoul(mode, nullptr, 8);
        for (size_t i = 0; i < 9; i++) bits[i] = static_cast<char>('0' + (value >> (8 - i)) % 2);
        return bits;
    }
    if (!std::regex_match(mode, symbolic)) return {};
    mode += ',';
    for (size_t end; (end = mode.find(',')) != mode.npos; mode.erase(0, end + 1)) {
        const size_t sign = mode.find_first_of("-+=");
        const std::string who = mode.substr(0, sign), what = mode.substr(sign, end - sign);
        for (size_t i = 0; i < 9; i++) {
            const bool meant = who.empty() || who.find("ugo"[i / 3]) != who.npos || who.find('a') != who.npos;
            const bool named = what.find("rwx"[i % 3]) != what.npos;
            if (meant && named) bits[i] = what[0] == '-' ? '0' : '1';
            if (meant && !named && what[0] == '=') bits[i] = '0';
        }
    }
    return bits;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // One free word alone can be mode, option or file: nothing that exists is ever changed.
    const std::string mode = fuzz::split(data, size)[0];
    const auto run = fuzz::run(gn_chmod, {"-fM", mode, "no/such/file"});
    unsigned attr = 0, mask = 0;
    const bool taken = sscanf(run.text.c_str(), "chmod: attr=%o\nchmod: mask=%o", &attr, &mask) == 2;
    fuzz::require(taken ? run.status == 1 : run.status <= 2, "the status");
    fuzz::require((attr & ~mask) == 0 && mask <= 0777, "bits beyond the mask");
    if (mode.find_first_of("ugoa+=01234567") != 0) return 0;

    const std::string wanted = bits_of(mode);
    fuzz::require(taken == !wanted.empty(), "what is a mode");
    for (size_t i = 0; taken && i < 9; i++) {
        const unsigned bit = 0400U >> i;
        fuzz::require(wanted[i] == ((mask & bit) == 0 ? '?' : (attr & bit) == 0 ? '0' : '1'), "a bit");
    }
    return 0;
}
