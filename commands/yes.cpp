// yes: repeats a line for ever.
// Scripts rely on: options are looked for in front of and between the words; a closed output ends it with
// status 0 and without a message, also when a pipe's reader goes away.

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <span>

#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/io.h"
#include "common/own.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: yes [STRING]...\n",
    "  or:  yes OPTION\n",
    "Repeatedly output a line with all specified STRING(s), or \"y\"\n",
};

// The words joined by blanks and closed by a newline; null when memory ran out.
CString join_line(std::span<char*> words, size_t* size) {
    *size = words.size();  // what follows each word
    for (const char* word : words) *size += strlen(word);
    CString line(static_cast<char*>(malloc(*size)));
    if (!line) return line;
    char* end = line.get();
    for (const char* word : words) {
        size_t length = strlen(word);
        memcpy(end, word, length);
        end[length] = ' ';
        end += length + 1;
    }
    end[-1] = '\n';
    return line;
}

// Writes a text of whole lines again and again, until that fails.
void repeat(const char* text, size_t size) {
    platform::enlarge_pipe(STDOUT_FILENO);
    // The text never changes, so that a pipe can take it as it lies there.
    for (size_t done = 0;;) {
        ptrdiff_t taken = platform::lend_to_pipe(STDOUT_FILENO, text + done, size - done);
        if (taken <= 0) {
            if (gn_full_write(STDOUT_FILENO, text + done, size - done) != size - done) return;
            break;
        }
        done = (done + static_cast<size_t>(taken)) % size;
    }
    while (gn_full_write(STDOUT_FILENO, text, size) == size) {
    }
}

// Fills a block with copies of a line, as far as whole ones fit, so that one call writes many.
void repeat_line(const char* line, size_t size) {
    alignas(4096) static char block[size_t{1} << 18];
    size_t lines = sizeof block / size;
    if (lines < 2) return repeat(line, size);
    for (size_t i = 0; i < lines; i++) memcpy(block + i * size, line, size);
    repeat(block, lines * size);
}

}  // namespace

int gn_yes(int argc, char** argv) {
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    int c = e_getoption(&state);
    if (c == e_help) return cli::help(usage);
    if (c != e_end) return cli::unknown_switch(stderr, "yes: unknown switch: -%c\n", c);

    char yes[] = "y";
    char* only_word = yes;
    std::span<char*> words =
        argc != 0 ? std::span(argv, static_cast<size_t>(argc)) : std::span(&only_word, 1);
    size_t size = 0;
    CString line = join_line(words, &size);
    if (!line) return cli::fail("yes: out of memory\n");

    signal(SIGPIPE, SIG_IGN);
    repeat_line(line.get(), size);
    return 0;
}
