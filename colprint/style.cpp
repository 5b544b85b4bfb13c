// Styles and what depends on them.

#include "colprint/records.h"

#include <cctype>
#include <cstring>

namespace {

constexpr const char* style_list[] = {"raw", "simple", "fancy", "fancyw", nullptr};
constexpr unsigned style_map[] = {COLP_STYLE_RAW, COLP_STYLE_SIMPLE, COLP_STYLE_FANCY, COLP_STYLE_FANCYW};

}  // namespace

unsigned colp_setstyle(colp_table* table, unsigned style) {
    if (table == nullptr) return COLP_EINVAL;
    if (style > COLP_STYLE_FANCYW) return COLP_ESTYLE;
    table->style = style;
    table->fancy = style == COLP_STYLE_FANCY || style == COLP_STYLE_FANCYW;
    if (table->fancy) {
        table->column_separator = style == COLP_STYLE_FANCY ? "|" : " | ";
        table->rule_crossing = style == COLP_STYLE_FANCY ? "+" : "-+-";
    }
    return COLP_OK;
}

unsigned colp_setstylestr(colp_table* table, const char* name) {
    if (table == nullptr || name == nullptr) return COLP_EINVAL;
    for (size_t i = 0; style_list[i] != nullptr; i++) {
        if (strcmp(style_list[i], name) == 0) return colp_setstyle(table, style_map[i]);
    }
    return COLP_EPARSE;
}

const char* const* colp_getstylelist() {
    return style_list;
}

bool colp_isfancy(const colp_table* table) {
    return table->fancy;
}

unsigned colp_setsumreplace(colp_table* table, unsigned style, char ch) {
    if (table == nullptr || isprint(static_cast<unsigned char>(ch)) == 0) return COLP_EINVAL;
    switch (style) {
    case COLP_STYLE_RAW: table->raw_replacement[0] = ch; return COLP_OK;
    case COLP_STYLE_SIMPLE: table->simple_replacement[0] = ch; return COLP_OK;
    case COLP_STYLE_FANCY:
    case COLP_STYLE_FANCYW: table->fancy_replacement[0] = ch; return COLP_OK;
    default: return COLP_ESTYLE;
    }
}
