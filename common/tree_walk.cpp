#include "common/tree_walk.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// How many of the innermost directories of a stack hold a descriptor. Two stacks, the standard streams and a
// few files still fit where a process may open 64.
constexpr size_t most_open = 16;

// How many symbolic links the system follows in one path (path_resolution(7)).
constexpr size_t most_links = 40;

bool is_separator(char c) {
    return c == '/' || c == '\\';
}

void release(DirectoryListing* listing) {
    listing->~DirectoryListing();
    free(listing);
}

}  // namespace

DirectoryStack::~DirectoryStack() {
    for (const Level& level : levels_) UniqueFd closing(level.fd);
}

bool DirectoryStack::push(UniqueFd directory, const char* name) {
    if (!levels_.push_back({directory.get(), name, 0, 0})) {
        errno = ENOMEM;
        return false;
    }
    (void)directory.release();
    if (levels_.size() - first_open_ <= most_open) return true;

    Level& level = levels_[first_open_++];
    struct stat status;
    if (&level == levels_.front() || fstat(level.fd, &status) != 0) return true;
    level.dev = status.st_dev;
    level.ino = status.st_ino;
    UniqueFd closing(std::exchange(level.fd, -1));
    return true;
}

bool DirectoryStack::pop() {
    UniqueFd inner(levels_.back()->fd);
    levels_.pop_back();
    if (first_open_ < levels_.size() || levels_.empty()) return true;

    first_open_ = levels_.size() - 1;
    Level& outer = *levels_.back();
    if (outer.fd >= 0) return true;
    auto is_outer = [&](const UniqueFd& directory) {
        struct stat status;
        if (!directory.valid() || fstat(directory.get(), &status) != 0) return false;
        errno = ESTALE;
        return status.st_dev == outer.dev && status.st_ino == outer.ino;
    };
    UniqueFd found;
    if (inner.valid()) found = UniqueFd(platform::open_passage(inner.get(), ".."));
    if (!is_outer(found)) found = find_by_names();
    if (!is_outer(found)) return false;
    outer.fd = found.release();
    return true;
}

// Goes down to the top directory from the outermost one. Links that others put in the way lead to some other
// directory, which is refused.
UniqueFd DirectoryStack::find_by_names() const {
    UniqueFd found;
    int dir = levels_.front()->fd;
    for (size_t depth = 1; depth < levels_.size() && dir >= 0; depth++) {
        found = UniqueFd(platform::open_passage(dir, levels_[depth].name));
        dir = found.get();
    }
    return found;
}

int DirectoryStack::top() const {
    return levels_.empty() ? AT_FDCWD : levels_.back()->fd;
}

const char* PathStack::text() const {
    return parts_.empty() ? "" : text_.data() + parts_.back()->start;
}

bool PathStack::push(const char* name) {
    Part part{0, 0};
    bool starts_anew = parts_.empty() || is_separator(name[0]);
    if (!parts_.empty()) {
        part = *parts_.back();
        // The outer path stays, its NUL too.
        if (starts_anew) part.start = ++part.end;
    }
    bool joins = !starts_anew && part.end != part.start && !is_separator(text_[part.end - 1]);

    size_t length = strlen(name);
    size_t at = part.end + (joins ? 1 : 0);
    size_t size = 0;
    if (__builtin_add_overflow(at, length + 1, &size)) return false;
    if (size > text_.size() && !text_.resize(size)) return false;
    part.end = at + length;
    if (!parts_.push_back(part)) return false;
    if (joins) text_[at - 1] = '/';
    memcpy(text_.data() + at, name, length + 1);
    return true;
}

void PathStack::pop() {
    parts_.pop_back();
    if (!parts_.empty()) text_[parts_.back()->end] = '\0';
}

WalkEntry WalkEntry::operand(const char* path) {
    return {AT_FDCWD, path, path, nullptr};
}

TreeWalk::~TreeWalk() {
    for (const Level& level : levels_) release(level.listing);
    if (spare_ != nullptr) release(spare_);
}

DirectoryListing* TreeWalk::take_listing() {
    if (spare_ != nullptr) return std::exchange(spare_, nullptr);
    void* memory = malloc(sizeof(DirectoryListing));
    return memory != nullptr ? new (memory) DirectoryListing() : nullptr;
}

void TreeWalk::give_back(DirectoryListing* listing) {
    if (spare_ != nullptr) release(spare_);
    spare_ = listing;
}

bool TreeWalk::enter(const WalkEntry& entry, Links links) {
    Links via = links;
    if (levels_.empty()) {
        drop_name();
    } else if (!S_ISLNK(entry.status->mode)) {
        via = Links::keep;  // not even when a link has taken the directory's place meanwhile
    } else if (via == Links::follow && (followed_ >= most_links || !system_follows(entry.name))) {
        errno = ELOOP;
        return false;
    }
    if (!name_pushed_ && !path_.push(entry.name)) {
        errno = ENOMEM;
        return false;
    }
    name_pushed_ = true;
    if (!add_level(open_directory(entry.dir, entry.name, via), entry.name, via)) return false;
    name_pushed_ = false;  // it is the new level's own now
    return true;
}

bool TreeWalk::add_level(UniqueFd directory, const char* name, Links via) {
    if (!directory.valid()) return false;
    DirectoryListing* listing = take_listing();
    if (listing == nullptr) return false;
    int error = 0;
    if (!listing->read(directory.get(), order_, reverse_, false, detail_)) {
        error = errno;
    } else if (!levels_.push_back({listing, 0, name, via})) {
        error = ENOMEM;
    } else if (!directories_.push(std::move(directory), name)) {
        error = errno;
        levels_.pop_back();
    }
    if (error == 0) {
        if (via == Links::follow && levels_.size() > 1) followed_++;
        return true;
    }
    give_back(listing);
    errno = error;
    return false;
}

void TreeWalk::drop_name() {
    if (std::exchange(name_pushed_, false)) path_.pop();
}

const char* TreeWalk::path() {
    drop_name();
    return path_.text();
}

bool TreeWalk::next(WalkEntry* entry) {
    drop_name();
    if (at_end()) return false;
    Level& level = *levels_.back();
    const DirectoryEntry& status = (*level.listing)[level.next++];
    name_pushed_ = path_.push(status.name);
    *entry = {directories_.top(), status.name, name_pushed_ ? path_.text() : nullptr, &status};
    return true;
}

bool TreeWalk::at_end() const {
    const Level& level = *levels_.back();
    return level.next == level.listing->size();
}

WalkEntry TreeWalk::leave() {
    drop_name();
    Level left = *levels_.back();
    levels_.pop_back();
    give_back(left.listing);

    name_pushed_ = true;
    directories_.pop();
    const DirectoryEntry* status = nullptr;
    if (!levels_.empty()) {
        if (left.via == Links::follow) followed_--;
        const Level& outer = *levels_.back();
        status = &(*outer.listing)[outer.next - 1];
    }
    return {directories_.top(), left.name, path_.text(), status};
}

bool TreeWalk::examine(const char* path, struct stat* status) const {
    if (path[0] != '/' && !system_follows(path)) {
        errno = ELOOP;
        return false;
    }
    return fstatat(directories_.top(), path, status, 0) == 0;
}

// Asks the system what it thinks of a path in the directory that is walked, seen from outside and through all
// links that led here: directory by directory it would never count them together. Paths that are too long for
// that are left to the count of what was entered.
bool TreeWalk::system_follows(const char* path) const {
    if (followed_ == 0) return true;
    char whole[PATH_MAX];
    size_t used = 0;
    auto add = [&](const char* name) {
        size_t length = strlen(name);
        bool joins = used != 0 && whole[used - 1] != '/';
        if (sizeof whole - used < length + 2) return false;
        if (joins) whole[used++] = '/';
        memcpy(whole + used, name, length + 1);
        used += length;
        return true;
    };
    for (const Level& level : levels_) {
        if (!add(level.name)) return true;
    }
    struct stat status;
    return !add(path) || stat(whole, &status) == 0 || errno != ELOOP;
}
