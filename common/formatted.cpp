#include "common/formatted.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

namespace {

// Puts pieces together, so that a message reaches an unbuffered stream at once.
class Pieces {
  public:
    explicit Pieces(FILE* stream) : stream_(stream) {}

    void add(const char* text, size_t size) {
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
    bool zeros = false;
    bool negative = false;
    size_t width = 0;

    void add(Pieces* out, const char* text, size_t size) const {
        const size_t sign = negative ? 1 : 0;
        const size_t padding = width > size + sign ? width - size - sign : 0;
        if (!left && !zeros) out->fill(' ', padding);
        out->add("-", sign);
        if (!left && zeros) out->fill('0', padding);
        out->add(text, size);
        if (left) out->fill(' ', padding);
    }
};

size_t read_number(const char** at) {
    size_t number = 0;
    for (; **at >= '0' && **at <= '9'; ++*at) number = number * 10 + static_cast<size_t>(**at - '0');
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
        for (; *format == '-' || *format == '0'; format++) (*format == '-' ? field.left : field.zeros) = true;
        if (*format == '*') {
            format++;
            const int width = va_arg(arguments, int);
            field.left |= width < 0;
            field.width = width < 0 ? -static_cast<size_t>(width) : static_cast<size_t>(width);
        } else {
            field.width = read_number(&format);
        }
        size_t most = SIZE_MAX;
        if (*format == '.') {
            format++;
            if (*format == '*') {
                format++;
                const int precision = va_arg(arguments, int);
                if (precision >= 0) most = static_cast<size_t>(precision);
            } else {
                most = read_number(&format);
            }
        }
        // All of the larger types are of the same size.
        bool large = false;
        for (; *format == 'l' || *format == 'z' || *format == 'j' || *format == 't'; format++) large = true;

        const char kind = *format;
        char digits[24];
        unsigned base = 0;
        switch (kind) {
        case 's': {
            const char* text = va_arg(arguments, const char*);
            field.zeros = false;
            field.add(&out, text, strnlen(text, most));
            break;
        }
        case 'c':
            digits[0] = static_cast<char>(va_arg(arguments, int));
            field.add(&out, digits, 1);
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
        if (kind == 'd' || kind == 'i') {
            const int64_t number = large ? static_cast<int64_t>(value) : static_cast<int>(value);
            field.negative = number < 0;
            value = number < 0 ? -static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
        }
        char* const end = digits + sizeof digits;
        char* first = end;
        const char* const figures = kind == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
        for (; value != 0 || first == end; value /= base) *--first = figures[value % base];
        field.add(&out, first, static_cast<size_t>(end - first));
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
