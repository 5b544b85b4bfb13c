#include "app/tools.h"

#define GARNEL_ROW(name, entry) {name, entry},
const u_tool u_tools[] = {GARNEL_TOOLS(GARNEL_ROW){nullptr, nullptr}};
