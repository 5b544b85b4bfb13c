#include "app/tools.h"

#include "common/cli.h"

#define GARNEL_NOTHING(name, entry)
#define GARNEL_NOT_BUILT(name, entry)                  \
    int entry(int, char**) {                           \
        return cli::fail("%s: not built yet\n", name); \
    }
GARNEL_TOOLS(GARNEL_NOTHING, GARNEL_NOT_BUILT)

#define GARNEL_ROW(name, entry) {name, entry},
const u_tool u_tools[] = {GARNEL_TOOLS(GARNEL_ROW, GARNEL_ROW){nullptr, nullptr}};
