// Reading a descriptor from its present place to its end in large stretches, for commands that look at every
// byte.

#pragma once

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string_view>

// A large regular file can be looked at where the system keeps it, which spares the copy: the greatest cost
// of a command that does little with each byte. It is read where that turns out to be faster, as is
// everything else.
//
//     Input in(fd, buffer, Input::Access::map);
//     for (;;) {
//         std::string_view stretch = in.look();
//         if (stretch.empty()) break;
//         ...                            // learn something from the stretch
//         if (!in.confirm()) continue;   // what was learnt is void
//         in.take(stretch.size());
//     }
class Input {
  public:
    enum class Access { read, map };
    static constexpr size_t buffer_size = size_t{1} << 17;

    // Neither the descriptor nor the buffer, of buffer_size bytes, is owned; nobody else may use them
    // meanwhile.
    Input(int fd, char* buffer, Access access);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    // The bytes from the present place on, as many as are at hand, waiting for the first; they stay valid
    // until the next call. Empty at the end, and at a read error, from then on without reading again.
    [[nodiscard]] std::string_view look();

    // True when the stretch that look() showed is what the file holds. Otherwise the file became shorter, or
    // its disk failed, while it was looked at; the place has not changed, and look() shows what can be read
    // there. Bytes that were read are always confirmed.
    [[nodiscard]] bool confirm();

    // Moves on by size bytes of those just looked at.
    void take(size_t size) { taken_ += size; }

    // The error number of the read that failed; 0 when none did.
    [[nodiscard]] int error() const { return error_; }

  private:
    // A mapping, known to the handler of the signal that comes when a page of it cannot be had.
    struct Window {
        char* begin = nullptr;
        char* end = nullptr;
        volatile bool broken = false;
        Window* next = nullptr;
    };
    static Window* windows;
    static void mend_window(int signal, siginfo_t* details, void* context);

    enum class Way { mapping_on_trial, reading_on_trial, mapping, reading };

    void pass_stretch();
    void start(Way way);
    void read_from_here(Way way);
    void end_trial();
    bool map_next();
    void unmap();

    int fd_;
    char* buffer_;
    std::string_view stretch_;
    size_t taken_ = 0;    // of stretch_
    uint64_t place_ = 0;  // of stretch_ in the file, where that counts
    uint64_t file_end_ = 0;
    bool ended_ = false;
    int error_ = 0;

    Way way_ = Way::reading;
    uint64_t trial_end_ = UINT64_MAX;
    clock_t trial_start_ = 0;
    clock_t mapping_cost_ = 0;
    Window window_;
};
