// arch: prints the name of the machine's kind.
// Scripts rely on: all arguments are ignored, "--help" too; the message is that of uname.

#include <cerrno>

#include <sys/utsname.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"

int gn_arch(int, char**) {
    utsname names;
    if (uname(&names) < 0) return cli::fail("uname: Could not get info: %s\n", gn_strerror(errno));
    puts(names.machine);
    return output::finish("arch", 0);
}
