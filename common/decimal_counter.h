// A counter that keeps its decimal digits at hand: a run of numbers is printed without converting each of
// them.

#pragma once

#include <cstdint>
#include <cstring>

class DecimalCounter {
  public:
    // Starts at a value. Numbers of fewer than width digits (20 at most) are filled up on the left with fill.
    DecimalCounter(uint64_t value, int width, char fill) : width_(width), fill_(fill) { set(value); }

    // It points into itself.
    DecimalCounter(const DecimalCounter&) = delete;
    DecimalCounter& operator=(const DecimalCounter&) = delete;

    [[nodiscard]] uint64_t value() const { return value_; }

    // The length of the present number, filled up.
    [[nodiscard]] size_t size() const { return static_cast<size_t>(end() - first_); }

    // Copies the present number, filled up, and returns the end of the copy. A fixed number of bytes is
    // moved, because that is faster: the destination must have room for copy_room bytes.
    static constexpr size_t copy_room = 32;
    char* copy(char* destination) const {
        memcpy(destination, first_, copy_room);
        return destination + size();
    }

    // Adds an increment; wraps modulo 2^64.
    void add(uint64_t increment) {
        if (__builtin_add_overflow(value_, increment, &value_)) return set(value_);
        for (char* digit = end(); increment != 0;) {
            if (*--digit < '0') return set(value_);  // the number gets longer
            uint64_t sum = increment + static_cast<uint64_t>(*digit - '0');
            *digit = static_cast<char>('0' + sum % 10);
            increment = sum / 10;
        }
    }

  private:
    static constexpr int most_digits = 20;

    [[nodiscard]] const char* end() const { return text_ + 1 + most_digits; }
    [[nodiscard]] char* end() { return text_ + 1 + most_digits; }

    void set(uint64_t value) {
        value_ = value;
        char* first = end();
        do {
            *--first = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value != 0);
        while (end() - first < width_) *--first = fill_;
        first[-1] = 0;  // a carry must not find a digit there that a longer number left behind
        first_ = first;
    }

    uint64_t value_ = 0;
    int width_;
    char fill_;
    const char* first_ = nullptr;
    char text_[1 + most_digits + copy_room] =
        {};  // one byte that is no digit, the digits, what copy() reads too
};
