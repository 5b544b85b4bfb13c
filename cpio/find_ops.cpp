#include <initializer_list>

#include "cpio/cpio.h"

const cpio_ops* cpio_find_ops_for_img__(const void* image) {
    for (const cpio_ops* ops : {&cpio_ops__newc, &cpio_ops__odc, &cpio_ops__bin}) {
        if (ops->probe(image)) return ops;
    }
    return nullptr;
}
