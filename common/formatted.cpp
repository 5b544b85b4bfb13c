#include "common/formatted.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

// Puts pieces together, so that a message reaches an unbuffered stream at once.
class Pieces {
  public:
    explicit Pieces(FILE* stream) : stream_(stream) {}

    void add(const char* text, size_t size) {
        if (size == 0) return;
        total_ += size;
        if (size > sizeof buffer_ - used_) flush();
        if (size > sizeof buffer_) {
            fwrite(text, 1, size, stream_);
        } else {
            memcpy(buffer_ + used_, text, size);
            used_ += size;
        }
    }
    void fill(char byte, size_t count) {
        for (; count > 0; count--) add(&byte, 1);
    }
    // The number of bytes added.
    size_t flush() {
        fwrite(buffer_, 1, used_, stream_);
        used_ = 0;
        return total_;
    }

  private:
    FILE* stream_;
    size_t total_ = 0;
    size_t used_ = 0;
    char buffer_[1024];
};

// How a value is to look.
struct Field {
    bool left = false;
    bool padded = false;     // with zeros
    bool alternate = false;  // 0x, or an octal 0
    char sign = '\0';        // in front of what is not negative
    size_t width = 0;

    // A prefix, zeros and the text.
    void add(Pieces* out, std::string_view prefix, size_t zeros, std::string_view text) const {
        const size_t size = prefix.size() + zeros + text.size();
        const size_t padding = width > size ? width - size : 0;
        if (!left && !padded) out->fill(' ', padding);
        out->add(prefix.data(), prefix.size());
        out->fill('0', zeros + (padded && !left ? padding : 0));
        out->add(text.data(), text.size());
        if (left) out->fill(' ', padding);
    }
};

// Saturates at what is too much in any case.
size_t read_number(const char** at) {
    size_t number = 0;
    for (; **at >= '0' && **at <= '9'; ++*at) {
        number = std::min(number * 10 + static_cast<size_t>(**at - '0'), size_t{INT_MAX} + 1);
    }
    return number;
}

}  // namespace

int print_formatted(FILE* stream, const char* format, va_list arguments) {
    Pieces out(stream);
    for (;;) {
        const char* begin = strchr(format, '%');
        if (begin == nullptr) break;
        out.add(format, static_cast<size_t>(begin - format));
        format = begin + 1;

        Field field;
        for (; *format != '\0' && strchr("-0#+ '", *format) != nullptr; format++) {
            field.left |= *format == '-';
            field.padded |= *format == '0';
            field.alternate |= *format == '#';
            if (*format == '+' || (*format == ' ' && field.sign == '\0')) field.sign = *format;
        }
        if (*format == '*') {
            format++;
            const int width = va_arg(arguments, int);
            field.left |= width < 0;
            field.width = width < 0 ? -static_cast<size_t>(width) : static_cast<size_t>(width);
        } else {
            field.width = read_number(&format);
        }
        constexpr size_t none = SIZE_MAX;
        size_t precision = none;
        if (*format == '.') {
            format++;
            if (*format == '*') {
                format++;
                const int given = va_arg(arguments, int);
                if (given >= 0) precision = static_cast<size_t>(given);
            } else {
                precision = read_number(&format);
            }
        }
        if (field.width > INT_MAX || (precision > INT_MAX && precision != none)) {
            errno = EOVERFLOW;
            return -1;
        }
        // All of the larger types are of the same size.
        bool large = false;
        int halves = 0;
        for (; *format != '\0' && strchr("lzjth", *format) != nullptr; format++) {
            large |= *format != 'h';
            halves += *format == 'h' ? 1 : 0;
        }

        const char kind = *format;
        char digits[24];
        unsigned base = 0;
        switch (kind) {
        case 's': {
            const char* text = va_arg(arguments, const char*);
            field.padded = false;
            field.add(&out, {}, 0, {text, strnlen(text, precision)});
            break;
        }
        case 'c':
            digits[0] = static_cast<char>(va_arg(arguments, int));
            field.padded = false;
            field.add(&out, {}, 0, {digits, 1});
            break;
        case 'd':
        case 'i':
        case 'u': base = 10; break;
        case 'x':
        case 'X': base = 16; break;
        case 'o': base = 8; break;
        case '%': out.add("%", 1); break;
        default: out.add(begin, static_cast<size_t>(format - begin)); continue;
        }
        format++;
        if (base == 0) continue;

        uint64_t value = large ? va_arg(arguments, uint64_t) : va_arg(arguments, unsigned);
        char prefix[2] = {'0', kind};
        size_t prefix_size = 0;
        if (kind == 'd' || kind == 'i') {
            int64_t number = large ? static_cast<int64_t>(value) : static_cast<int>(value);
            if (halves == 1) number = static_cast<short>(number);
            if (halves > 1) number = static_cast<int64_t>(value << 56) >> 56;
            prefix[0] = number < 0 ? '-' : field.sign;
            prefix_size = prefix[0] != '\0' ? 1 : 0;
            value = number < 0 ? -static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
        } else {
            if (halves > 0) value &= halves == 1 ? USHRT_MAX : UCHAR_MAX;
            if (field.alternate && base == 16 && value != 0) prefix_size = 2;
        }
        const bool zero = value == 0;
        char* const end = digits + sizeof digits;
        char* first = end;
        const char* const figures = kind == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
        for (; value != 0 || (first == end && precision != 0); value /= base)
            *--first = figures[value % base];
        if (field.alternate && base == 8 && (!zero || first == end)) *--first = '0';
        const auto size = static_cast<size_t>(end - first);
        field.padded &= precision == none;
        field.add(&out, {prefix, prefix_size}, precision != none && precision > size ? precision - size : 0,
                  {first, size});
    }
    out.add(format, strlen(format));
    const size_t total = out.flush();
    return ferror(stream) != 0 ? -1 : static_cast<int>(std::min(total, size_t{INT_MAX}));
}

// A static executable would carry the C library's, which brings along floating point, wide characters and a second
// set of error texts: a twentieth of the whole that nothing here ever uses.
#ifndef __GLIBC__
extern "C" int vfprintf(FILE* stream, const char* format, va_list arguments) {
    return print_formatted(stream, format, arguments);
}
#endif
