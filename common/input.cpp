#include "common/input.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/io.h"

namespace {

// Below this size, a mapping costs more than the copy that it spares.
constexpr uint64_t least_mapped = uint64_t{1} << 20;

// As much is mapped at once: at first, to see what that costs, and later. More would not be faster.
constexpr uint64_t trial_size = uint64_t{1} << 22;
constexpr uint64_t window_size = uint64_t{1} << 26;

// A mapping begins at a multiple of the page size, of which this is a multiple on every system. Large pages
// of a file can be mapped as such where they lie in memory as they do in the file.
constexpr uint64_t page_multiple = uint64_t{1} << 21;

}  // namespace

Input::Window* Input::windows = nullptr;

// When a page cannot be had, zeros take the place of the whole window, and the access is repeated. Everything
// called here is a plain system call.
void Input::mend_window(int, siginfo_t* details, void*) {
    const int error = errno;
    auto* address = static_cast<char*>(details->si_addr);
    Window* window = windows;
    while (window != nullptr && (address < window->begin || address >= window->end)) window = window->next;
    if (window == nullptr || mmap(window->begin, static_cast<size_t>(window->end - window->begin), PROT_READ,
                                  MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == MAP_FAILED) {
        // Not ours: the repeated access ends the process, as it would have done without this handler.
        signal(SIGBUS, SIG_DFL);
    } else {
        window->broken = true;
    }
    errno = error;
}

Input::Input(int fd, char* buffer, Access access) : fd_(fd), buffer_(buffer) {
    struct stat file;
    if (access != Access::map || fstat(fd, &file) != 0 || !S_ISREG(file.st_mode)) return;
    // The system makes up files without blocks as they are read, and may mean something else by a mapping.
    if (file.st_blocks == 0) return;
    const off_t place = lseek(fd, 0, SEEK_CUR);
    if (place < 0 || file.st_size < place) return;
    place_ = static_cast<uint64_t>(place);
    file_end_ = static_cast<uint64_t>(file.st_size);
    if (file_end_ - place_ >= least_mapped) start(Way::mapping_on_trial);
}

Input::~Input() {
    unmap();
}

std::string_view Input::look() {
    if (taken_ < stretch_.size()) return {stretch_.data() + taken_, stretch_.size() - taken_};
    pass_stretch();
    if (place_ >= trial_end_) end_trial();
    if ((way_ == Way::mapping_on_trial || way_ == Way::mapping) && map_next()) return stretch_;
    if (ended_) return stretch_;
    const ptrdiff_t count = read_some(fd_, buffer_, buffer_size);
    if (count <= 0) {
        ended_ = true;
        if (count < 0) error_ = errno;
    } else {
        stretch_ = {buffer_, static_cast<size_t>(count)};
    }
    return stretch_;
}

bool Input::confirm() {
    if (!window_.broken) return true;
    pass_stretch();
    read_from_here(Way::reading);
    return false;
}

// Leaves the stretch with its taken bytes behind.
void Input::pass_stretch() {
    place_ += taken_;
    taken_ = 0;
    stretch_ = {};
    unmap();
}

void Input::start(Way way) {
    way_ = way;
    trial_end_ = way == Way::mapping || way == Way::reading ? UINT64_MAX : place_ + trial_size;
    trial_start_ = clock();
}

void Input::read_from_here(Way way) {
    lseek(fd_, static_cast<off_t>(place_), SEEK_SET);
    start(way);
}

// What a mapping costs depends on how the file lies in memory, which nobody tells: between a tenth of what
// reading costs and twice as much. So both are tried.
void Input::end_trial() {
    const clock_t cost = clock() - trial_start_;
    if (way_ == Way::mapping_on_trial) {
        mapping_cost_ = cost;
        read_from_here(Way::reading_on_trial);
    } else {
        start(mapping_cost_ <= cost ? Way::mapping : Way::reading);
    }
}

// Makes the bytes from the present place on the stretch. Goes on reading where that is not worth it, or
// impossible.
bool Input::map_next() {
    if (place_ + least_mapped <= file_end_) {
        const uint64_t begin_place = place_ / page_multiple * page_multiple;
        const uint64_t most = way_ == Way::mapping ? window_size : place_ - begin_place + trial_size;
        const auto size = static_cast<size_t>(std::min(most, file_end_ - begin_place));
        void* memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, fd_, static_cast<off_t>(begin_place));
        if (memory != MAP_FAILED) {
            if (windows == nullptr) {
                struct sigaction action = {};
                action.sa_sigaction = mend_window;
                action.sa_flags = SA_SIGINFO;
                sigaction(SIGBUS, &action, nullptr);
            }
            posix_madvise(memory, size, POSIX_MADV_SEQUENTIAL);
            auto* begin = static_cast<char*>(memory);
            window_ = {.begin = begin, .end = begin + size, .broken = false, .next = windows};
            windows = &window_;
            const auto skipped = static_cast<size_t>(place_ - begin_place);
            stretch_ = {begin + skipped, size - skipped};
            return true;
        }
    }
    read_from_here(Way::reading);
    return false;
}

void Input::unmap() {
    if (window_.begin == nullptr) return;
    Window** link = &windows;
    while (*link != &window_) link = &(*link)->next;
    *link = window_.next;
    munmap(window_.begin, static_cast<size_t>(window_.end - window_.begin));
    window_.begin = nullptr;
    window_.broken = false;
}
