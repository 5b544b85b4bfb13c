// Any output in a window of any size: nothing of it reaches the terminal that could move the cursor, whatever it
// is cut into, and what is shown looks the same when it is shown again.

#include "commands/watch_screen.h"
#include "tests/fuzz/words.h"

namespace {

std::string shown(std::string_view text, size_t piece, unsigned columns, unsigned rows) {
    Screen screen;
    if (!screen.resize(columns, rows)) return {};
    for (; text.size() > piece; text.remove_prefix(piece)) screen.put({text.data(), piece});
    screen.put(text);
    screen.end();
    (void)fuzz::printed([&] { screen.draw(&screen); });
    return fuzz::printed([&] { screen.print(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 3) return 0;
    const unsigned columns = data[0] % 24U + 1, rows = data[1] % 6U + 1;
    const std::string_view text(reinterpret_cast<const char*>(data + 2), size - 2);
    const std::string once = shown(text, text.size(), columns, rows);
    fuzz::require(shown(text, data[2] % 5U + 1, columns, rows) == once, "cut into pieces");
    fuzz::require(shown(once, once.size() + 1, columns, rows) == once, "shown again");

    unsigned lines = 0, width = 0;
    for (const char ch : once) {
        const auto byte = static_cast<unsigned char>(ch);
        lines += byte == '\n' ? 1U : 0U;
        fuzz::require(byte == '\n' || (byte >= ' ' && byte != 0x7f), "a control character");
        width = byte == '\n' ? 0 : width + (byte < 0x80 ? 1U : 0U);
        fuzz::require(width <= columns && lines <= rows, "outside the window");
    }
    return 0;
}
