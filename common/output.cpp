#include "common/output.h"

#include <cerrno>

#include <unistd.h>

#include "common/cli.h"
#include "platform/platform.h"

namespace output {

namespace {

char buffer[size_t{1} << 16];

// The stream only remembers that writing failed; this is why, at the first time.
int first_error = 0;

void remember_error() {
    if (first_error == 0) first_error = errno;
}

}  // namespace

void prepare() {
    // A stream gives up what it cannot write at once.
    platform::make_blocking(STDOUT_FILENO);
    // isatty says "no" through errno, where no command expects anything yet.
    setvbuf(stdout, buffer, isatty(STDOUT_FILENO) != 0 ? _IOLBF : _IOFBF, sizeof buffer);
    errno = 0;
}

void write(std::string_view text) {
    if (fwrite(text.data(), 1, text.size(), stdout) != text.size()) remember_error();
}

void flush() {
    if (fflush(stdout) != 0) remember_error();
}

bool failed() {
    return ferror(stdout) != 0;
}

int finish(const char* name, int status) {
    flush();
    if (!failed() && first_error == 0) return status;
    cli::error("%s: write error: %s\n", name, gn_strerror(first_error != 0 ? first_error : EIO));
    return status != 0 ? status : 1;
}

}  // namespace output
