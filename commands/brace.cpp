// [: test, whose last word must be "]".

#include <cstring>

#include "app/tools.h"
#include "common/cli.h"

int gn_brace(int argc, char** argv) {
    if (argc == 0 || strcmp(argv[argc - 1], "]") != 0) return cli::fail("[: missing ']'\n");
    return gn_test(argc - 1, argv);
}
