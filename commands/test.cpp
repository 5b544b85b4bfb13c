// test: tells by its status whether an expression is true.
// Scripts rely on: without an expression it shows the help and is true; a lone word is an error, not a test;
// errors are silent, their statuses the low eight bits of negative results (255 and below); -h and -L follow
// links, so that hardly anything is one; files of one age are newer as well as older than each other.

#include <cstring>

#include "app/tools.h"
#include "commands/test_expression.h"
#include "common/cli.h"

namespace {

constexpr const char* usage[] = {
    "Usage: test EXPRESSION\n",
    "  or   [ EXPRESSION ]\n",
    "Exit with the status determined by EXPRESSION.\n",
    "\n",
    "( EXPRESSION )\n",
    "    EXPRESSION is true\n",
    "! EXPRESSION\n",
    "    EXPRESSION is false\n",
    "EXPRESSION1 -a EXPRESSION2\n",
    "    both EXPRESSION1 and EXPRESSION2 are true\n",
    "EXPRESSION1 -o EXPRESSION2\n",
    "    either EXPRESSION1 or EXPRESSION2 is true\n",
    "INTEGER1 -eq INTEGER2\n",
    "    INTEGER1 is equal to INTEGER2\n",
    "INTEGER1 -ge INTEGER2\n",
    "    INTEGER1 is greater than or equal to INTEGER2\n",
    "INTEGER1 -gt INTEGER2\n",
    "    INTEGER1 is greater than INTEGER2\n",
    "INTEGER1 -le INTEGER2\n",
    "    INTEGER1 is less than or equal to INTEGER2\n",
    "INTEGER1 -lt INTEGER2\n",
    "    INTEGER1 is less than INTEGER2\n",
    "INTEGER1 -ne INTEGER2\n",
    "    INTEGER1 is not equal to INTEGER2\n",
    "-n STRING\n",
    "    the length of STRING is nonzero\n",
    "-z STRING\n",
    "    the length of STRING is zero\n",
    "STRING1 = STRING2\n",
    "    the strings are equal\n",
    "STRING1 != STRING2\n",
    "    the strings are not equal\n",
    "FILE1 -ef FILE2\n",
    "    FILE1 and FILE2 have the same device and inode numbers\n",
    "FILE1 -nt FILE2\n",
    "    FILE1 is newer (modification date) than FILE2\n",
    "FILE1 -ot FILE2\n",
    "    FILE1 is older than FILE2\n",
    "-b FILE\n",
    "    FILE exists and is block special\n",
    "-c FILE\n",
    "    FILE exists and is character special\n",
    "-d FILE\n",
    "    FILE exists and is a directory\n",
    "-e FILE\n",
    "    FILE exists\n",
    "-f FILE\n",
    "    FILE exists and is a regular file\n",
    "-h FILE\n",
    "    FILE exists and is a symbolic link (same as -L)\n",
    "-L FILE\n",
    "    FILE exists and is a symbolic link (same as -h)\n",
    "-p FILE\n",
    "    FILE exists and is a named pipe\n",
    "-r FILE\n",
    "    FILE exists and read permission is granted\n",
    "-s FILE\n",
    "    FILE exists and has a size greater than zero\n",
    "-S FILE\n",
    "    FILE exists and is a socket\n",
    "-w FILE\n",
    "    FILE exists and write permission is granted\n",
    "-x FILE\n",
    "    FILE exists and execute (or search) permission is granted\n",
    "\n",
    "INTEGER may also be -l STRING, which evaluates to the length of STRING.\n",
};

}  // namespace

int gn_test(int argc, char** argv) {
    if (argc == 0 || strcmp(argv[0], "--help") == 0) return cli::help(usage);
    return gn_test_eval(&argc, &argv);
}
