// Standard output. Everything that a command prints goes through the C stream stdout, to which this module
// gives a buffer worth having: small writes are the greatest cost of a text tool.

#pragma once

#include <cstdio>
#include <string_view>

#include "common/bytes.h"

namespace output {

// Called once, before anything is printed: a large buffer for pipes and files, line buffering on a terminal.
void prepare();

// Adds bytes, NUL included, to standard output. A failure is kept for finish().
void write(std::string_view text);

// Sends what is buffered on its way. A failure is kept for finish().
void flush();

// True when something could not be written.
[[nodiscard]] bool failed();

// A staging area in front of standard output for commands that print many small pieces: they are put together
// here without a call each, and handed on when it is full, on flush() and at the end of its life.
class Block {
  public:
    static constexpr size_t capacity = size_t{1} << 15;

    Block() = default;
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    ~Block() { flush(); }

    // Room for size bytes (at most capacity); what is written there counts from advance(end) on.
    [[nodiscard]] char* room(size_t size) {
        if (capacity - used_ < size) flush();
        return data_ + used_;
    }
    void advance(const char* end) { used_ = static_cast<size_t>(end - data_); }

    void put(char byte) {
        *room(1) = byte;
        used_++;
    }

    void write(std::string_view text) {
        if (text.size() > capacity / 2) {
            flush();
            output::write(text);
            return;
        }
        bytes::copy(room(text.size()), text.data(), text.size());
        used_ += text.size();
    }

    void flush() {
        output::write({data_, used_});
        used_ = 0;
    }

  private:
    size_t used_ = 0;
    char data_[capacity];
};

// Flushes standard output for a command that answers for it. Returns status when everything was written since
// the start; otherwise prints "NAME: write error: REASON" on standard error and returns 1, or status when
// that tells of a failure already.
[[nodiscard]] int finish(const char* name, int status);

}  // namespace output
