// Any operands: what -e makes of them, by an expression that says what an escape is.

#include <regex>

#include "app/tools.h"
#include "tests/fuzz/words.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::regex escape(R"(\\(x([0-9A-Fa-f]{2})|[\s\S]|$))");
    fuzz::Words words = fuzz::split(data, size);
    std::string joined;
    for (const std::string& word : words) joined += (&word == words.data() ? "" : " ") + word;

    // A backslash at the end of an operand would join it to the next, so the model takes them one by one.
    std::string interpreted;
    for (const std::string& word : words) {
        if (&word != words.data()) interpreted += ' ';
        std::string rest = word;
        for (std::smatch found; std::regex_search(rest, found, escape); rest = found.suffix()) {
            constexpr std::string_view letters = "\\abenrtv", bytes = "\\\a\b\033\n\r\t\v";
            interpreted += found.prefix();
            const std::string code = found[1];
            if (found[2].matched) {
                interpreted += static_cast<char>(std::stoi(found[2], nullptr, 16));
            } else if (!code.empty()) {
                const size_t known = letters.find(code[0]);
                interpreted += known == letters.npos ? '\\' + code : std::string(1, bytes[known]);
            }
        }
        interpreted += rest;
    }

    words.insert(words.begin(), {"-e", ""});
    fuzz::require(fuzz::run(gn_echo, words).text == ' ' + interpreted + '\n', "echo -e");
    words[0] = "-En";
    fuzz::require(fuzz::run(gn_echo, words).text == ' ' + joined, "echo -E");
    return 0;
}
