#include "common/terminal.h"

#include <unistd.h>

#include "platform/platform.h"

int garnel_getwinsize(unsigned* columns, unsigned* rows) {
    unsigned width = 0, height = 0;
    bool answered = platform::terminal_size(STDOUT_FILENO, &width, &height);
    if (columns != nullptr) *columns = width != 0 ? width : 80;
    if (rows != nullptr) *rows = height != 0 ? height : 24;
    return answered ? 0 : 1;
}
