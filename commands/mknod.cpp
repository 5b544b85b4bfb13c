// mknod: makes device files and FIFOs.
// Scripts rely on: MODE is decimal unless it begins with "0"; 'u' is a character device; the numbers of a
// FIFO are not looked at; exactly three operands are one too few, whatever the type.

#include <cerrno>
#include <cstdint>
#include <cstdlib>

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "app/tools.h"
#include "common/cli.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: mknod [OPTION]... NAME TYPE [MAJOR MINOR]\n",
    "Create the special file NAME of the given TYPE.\n",
    "\n",
    "    -m    set file permission bits to MODE\n",
    "\n",
    "TYPE may be:\n",
    "  b      create a block special file (MAJOR MINOR is mandatory)\n",
    "  c, u   create a character special file (MAJOR MINOR is mandatory)\n",
    "  p      create a FIFO (MAJOR MINOR is omitted)\n",
};

uint32_t device_part(const char* text) {
    return static_cast<uint32_t>(strtoul(text, nullptr, 0));
}

// The system takes 32 bits; one of the C libraries would drop the rest and make another device.
bool make(const char* name, mode_t mode, dev_t device) {
    if (device > UINT32_MAX) {
        errno = EINVAL;
        return false;
    }
    return mknod(name, mode, device) == 0;
}

}  // namespace

int gn_mknod(int argc, char** argv) {
    int64_t mode = 0777;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'm':
            if (e_opt_getint(&state, &mode) != e_opt_ok) {
                cli::error("mknod: missing or invalid operand of -%c\n", c);
                return 2;
            }
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "mknod: unknown switch: -%c\n", c);
        }
    }
    if (mode < 0 || mode > 0777) return cli::fail("mknod: invalid mode\n");

    if (argc < 2) return cli::fail("mknod: missing operand\n");
    if (argc == 3) return cli::fail("mknod: missing operand after '%s'\n", argv[2]);
    if (argc > 4) return cli::fail("mknod: extra operand '%s'\n", argv[4]);
    const char* type_text = argv[1];
    if (type_text[0] != '\0' && type_text[1] != '\0') {
        return cli::fail("mknod: type specifier too long\n");
    }

    mode_t type = 0;
    switch (type_text[0]) {
    case 'b': type = S_IFBLK; break;
    case 'c':
    case 'u': type = S_IFCHR; break;
    case 'p': type = S_IFIFO; break;
    default: return cli::fail("mknod: invalid type\n");
    }
    dev_t device = 0;
    if (type != S_IFIFO) {
        if (argc != 4) return cli::fail("mknod: missing operand\n");
        device = makedev(device_part(argv[2]), device_part(argv[3]));
    }

    if (!make(argv[0], type | static_cast<mode_t>(mode), device)) {
        return cli::fail("mknod: %s: %s\n", argv[0], gn_strerror(errno));
    }
    return 0;
}
