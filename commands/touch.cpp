// touch: sets the times of files.
// Scripts rely on: STAMP is UTC; its parts are not checked against the calendar, so that month 13 is January
// of the next year; -Y changes nothing without -t, and the later of it and a STAMP with a year wins.

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/own.h"
#include "common/times.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: touch [OPTION]... FILE...\n",
    "Change file timestamp.\n",
    "\n",
    "    -c    do not create any files\n",
    "    -t    use [YYYY]MMDDhhmm[.ss] instead of current time\n",
    "    -Y    use this YEAR (can be more/less than 4 digits, affected only with -t)\n",
};

// The last year but a few that the C library's calendar holds. Later ones are taken for it: few file systems
// keep a time beyond the year 2500 anyway.
constexpr int64_t last_year = 2147480000;

int64_t current_year() {
    const time_t now = time(nullptr);
    tm date{};
    return gmtime_wrap(&now, &date) == 0 ? int64_t{date.tm_year} + 1900 : 1970;
}

int number(const char* digits, int count) {
    int value = 0;
    for (int i = 0; i < count; i++) value = value * 10 + (digits[i] - '0');
    return value;
}

// Takes a STAMP. The year stays when it holds none; the date gets everything else. False, with nothing
// changed, for one of another form.
bool parse_stamp(const char* text, int64_t* year, tm* date) {
    constexpr const char* digits = "0123456789";
    const size_t size = strspn(text, digits);
    if (size != 8 && size != 12) return false;
    const char* seconds = text + size;
    if (*seconds == '.' ? strspn(seconds + 1, digits) != 2 || seconds[3] != '\0' : *seconds != '\0') {
        return false;
    }

    if (size == 12) {
        *year = number(text, 4);
        text += 4;
    }
    date->tm_mon = number(text, 2) - 1;
    date->tm_mday = number(text + 2, 2);
    date->tm_hour = number(text + 4, 2);
    date->tm_min = number(text + 6, 2);
    date->tm_sec = *seconds == '.' ? number(seconds + 1, 2) : 0;
    return true;
}

// False after a message. Null times are the current one.
bool touch(const char* name, const timespec* times, bool create) {
    const auto failed = [name](const char* what) {
        cli::error("touch: '%s': failed to %s: %s\n", name, what, gn_strerror(errno));
        return false;
    };
    // A file that is made here and now has the current time. mknod makes it without opening it.
    if (create && times == nullptr && mknod(name, S_IFREG | 0644, 0) == 0) return true;
    if (utimensat(AT_FDCWD, name, times, 0) == 0) return true;

    const int error = errno;
    struct stat status;
    if (stat(name, &status) == 0) {
        errno = error;
        return failed("change timestamp");
    }
    if (!create) return true;
    // Should there be a file by now, it keeps its contents.
    UniqueFd file(open(name, O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0644));
    if (!file.valid()) return failed("create");
    return futimens(file.get(), times) == 0 || failed("change timestamp");
}

}  // namespace

int gn_touch(int argc, char** argv) {
    bool create = true;
    bool stamp_given = false;
    tm date{};
    int64_t year = current_year();

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'c': create = false; break;
        case 't': {
            const char* stamp = e_opt_getstr(&state);
            if (stamp == nullptr) return cli::fail("touch: missing -%c operand\n", c);
            if (!parse_stamp(stamp, &year, &date)) return cli::fail("touch: bad time stamp format\n");
            stamp_given = true;
            break;
        }
        case 'Y':
            if (e_opt_getrangeint(&state, &year, 0, INT64_MAX) != e_opt_ok) {
                return cli::fail("touch: bad time stamp format\n");
            }
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "touch: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("touch: missing file operand\n");

    timespec times[2] = {};
    if (stamp_given) {
        date.tm_year = static_cast<int>(std::min(year, last_year) - 1900);
        times[0].tv_sec = timegm(&date);
        times[1] = times[0];
    }
    bool ok = true;
    for (const char* name : std::span(argv, static_cast<size_t>(argc))) {
        ok &= touch(name, stamp_given ? times : nullptr, create);
    }
    return ok ? 0 : 1;
}
