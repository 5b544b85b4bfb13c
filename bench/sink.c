// sink [BYTES]: reads standard input to its end, or BYTES of it, as cheaply as the system allows, so that
// the reader of a pipe does not hide what the writer costs. The pipe keeps the size that the writer gives it.
// Status 1 when the input ends before BYTES: a writer that failed must not look like a fast one.

#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

static char buffer[1 << 20];

int main(int argc, char** argv) {
    unsigned long long wanted = argc > 1 ? strtoull(argv[1], NULL, 10) : 0;
    unsigned long long left = wanted != 0 ? wanted : ~0ULL;
    int nowhere = open("/dev/null", O_WRONLY);
    int can_splice = nowhere >= 0;
    while (left != 0) {
        size_t size = left < sizeof buffer ? (size_t)left : sizeof buffer;
        ssize_t count = can_splice ? splice(STDIN_FILENO, NULL, nowhere, NULL, size, 0)
                                   : read(STDIN_FILENO, buffer, size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && can_splice) {
            can_splice = 0;  // not a pipe
            continue;
        }
        if (count < 0) {
            perror("sink");
            return 1;
        }
        if (count == 0) break;
        left -= (unsigned long long)count;
    }
    if (wanted == 0 || left == 0) return 0;
    fprintf(stderr, "sink: the input ended %llu bytes early\n", left);
    return 1;
}
