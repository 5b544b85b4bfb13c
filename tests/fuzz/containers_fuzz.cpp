// Any sequence of operations on a container; the first byte tells on which.

#include "tests/fuzz/containers_model.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using containers_model::drivers;
    if (size > 0) drivers[data[0] % std::size(drivers)]({data + 1, size - 1});
    return 0;
}
