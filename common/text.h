// Small texts. Those that are returned as new come from malloc and belong to the caller; null means that
// memory ran out.

#pragma once

#include <cstddef>
#include <cwchar>
#include <initializer_list>
#include <string_view>

struct vector;

// New: all parts one behind the other.
[[nodiscard]] char* concatenate(std::initializer_list<std::string_view> parts);

// New: a followed by b.
[[nodiscard]] char* gn_strcata(const char* a, const char* b);

// New: a multibyte text as wide characters; null also when it is not valid in the current locale.
[[nodiscard]] wchar_t* gn_towcs(const char* text);

// The length of a text, but at most max; bytes from max on are not looked at.
[[nodiscard]] size_t garnel_strnlen(const char* text, size_t max);

// New: a copy of at most max bytes of a text.
[[nodiscard]] char* garnel_strndup(const char* text, size_t max);

// For a vector of owned char*: frees the texts, from the back, and the vector.
void gn_vector_release_charptr(vector* texts);

// The value of a hexadecimal digit of either case; 0 for any other character.
[[nodiscard]] int gn_hexcharval(int c);

// The lower-case hexadecimal digit of the low byte of v; '0' when that is above 15.
[[nodiscard]] char gn_hexchar(int v);
