// The texts of the error codes.

#include "colprint/colprint.h"

namespace {

constexpr const char* error_texts[] = {
    "Success",
    "Invalid argument",
    "Out of memory",
    "Parse error",
    "Invalid style",
    "Invalid column type",
    "Invalid letter casing",
    "Invalid justification",
    "Cell type mismatch with column type",
    "No header",
    "Header is ended",
    "No column is open",
    "Column is still open",
    "No more columns specified",
    "No row is open",
    "Row is still open",
    "No such column ID",
    "Could not compare values in the specified column",
    "Invalid sort order",
};
static_assert(sizeof error_texts / sizeof *error_texts == COLP_ESORTORDER + 1);

}  // namespace

const char* colp_strerror(unsigned code) {
    return code <= COLP_ESORTORDER ? error_texts[code] : "<unknown error>";
}
