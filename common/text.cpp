#include "common/text.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "lib/containers/vector.h"

char* concatenate(std::initializer_list<std::string_view> parts) {
    size_t size = 1;
    for (std::string_view part : parts) {
        if (__builtin_add_overflow(size, part.size(), &size)) {
            errno = ENOMEM;
            return nullptr;
        }
    }
    auto* text = static_cast<char*>(malloc(size));
    if (text == nullptr) return nullptr;
    char* end = text;
    for (std::string_view part : parts) {
        memcpy(end, part.data(), part.size());
        end += part.size();
    }
    *end = '\0';
    return text;
}

char* gn_strcata(const char* a, const char* b) {
    return concatenate({a, b});
}

wchar_t* gn_towcs(const char* text) {
    size_t count = mbstowcs(nullptr, text, 0);
    if (count == static_cast<size_t>(-1)) return nullptr;
    size_t size = 0;
    if (__builtin_mul_overflow(count + 1, sizeof(wchar_t), &size)) return nullptr;
    auto* wide = static_cast<wchar_t*>(malloc(size));
    if (wide != nullptr) mbstowcs(wide, text, count + 1);
    return wide;
}

size_t garnel_strnlen(const char* text, size_t max) {
    return strnlen(text, max);
}

char* garnel_strndup(const char* text, size_t max) {
    return strndup(text, max);
}

void gn_vector_release_charptr(vector* texts) {
    while (void* last = vector_back(texts)) {
        free(*static_cast<char**>(last));
        vector_popback(texts);
    }
    vector_release(texts);
}

int gn_hexcharval(int c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 0;
}

char gn_hexchar(int v) {
    int low = v & 0xFF;
    return low < 16 ? "0123456789abcdef"[low] : '0';
}
