// Any bytes at all as an archive: the check and, where it is content, the reader.

#include <cstdio>

#include "tests/fuzz/cpio_walk.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto result = cpio_walk::walk({reinterpret_cast<const char*>(data), size});
    if (result.violation != nullptr) {
        fprintf(stderr, "cpio: %s\n", result.violation);
        abort();
    }
    return 0;
}
