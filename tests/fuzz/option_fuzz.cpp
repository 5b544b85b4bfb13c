#include "tests/fuzz/option_model.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    option_model::compare(fuzz::split(data, size));
    return 0;
}
