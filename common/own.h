// The owners of what a command must give back: move-only, and empty after a move.

#pragma once

#include <cstdlib>
#include <utility>

#include <unistd.h>

// A file descriptor; -1 when empty.
class UniqueFd {
  public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        UniqueFd old(std::exchange(fd_, std::exchange(other.fd_, -1)));
        return *this;
    }
    ~UniqueFd() {
        if (fd_ >= 0) ::close(fd_);
    }

    [[nodiscard]] int get() const { return fd_; }
    [[nodiscard]] bool valid() const { return fd_ >= 0; }
    [[nodiscard]] int release() { return std::exchange(fd_, -1); }

    // For files that were written, whose last error may only show here: false with errno.
    [[nodiscard]] bool close() { return ::close(release()) == 0; }

  private:
    int fd_ = -1;
};

// Memory from malloc that holds a NUL-terminated text; null when empty.
class CString {
  public:
    CString() = default;
    explicit CString(char* text) : text_(text) {}
    CString(CString&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    CString& operator=(CString&& other) noexcept {
        CString old(std::exchange(text_, std::exchange(other.text_, nullptr)));
        return *this;
    }
    ~CString() { free(text_); }

    [[nodiscard]] char* get() const { return text_; }
    [[nodiscard]] char* release() { return std::exchange(text_, nullptr); }
    explicit operator bool() const { return text_ != nullptr; }

  private:
    char* text_ = nullptr;
};
