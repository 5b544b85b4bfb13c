// Walking directory trees.
//
// A command drives the walk and says what happens at every entry; here are the descriptors, the paths and the
// listings. Work is done relative to open directories, so that neither the length of a path nor a directory
// that somebody moves or replaces meanwhile leads astray. Nothing recurses, and few descriptors are open at a
// time however deep the tree is.
//
//     TreeWalk walk;
//     visit(WalkEntry::operand(path));
//     while (walk.depth() != 0) {
//         WalkEntry entry;
//         if (walk.next(&entry)) {
//             visit(entry);  // openat(entry.dir, entry.name), messages show entry.path, walk.enter(entry,
//             ...)
//         } else {
//             WalkEntry left = walk.leave();
//             ... the directory itself again, now without its entries
//         }
//     }

#pragma once

#include <cstddef>

#include <sys/types.h>

#include "common/directory.h"
#include "common/own.h"
#include "lib/containers/container_vector.h"
#include "platform/platform.h"

struct stat;

using platform::Links;

// Directories open one inside the other. Only the outermost and the innermost ones hold a descriptor; the
// others are closed, and opened again when their turn comes: as the parent of the one inside or, where that
// was moved away or reached through a link, by the names from the outermost one on. What is found there must
// be the same directory.
class DirectoryStack {
  public:
    // Adds a directory inside the top one, which holds it, or a link to it, under name. The name must live as
    // long as the level. False with errno when memory ran out.
    [[nodiscard]] bool push(UniqueFd directory, const char* name);

    // Closes the top directory. False with errno when the one outside it cannot be found again: its
    // descriptor is -1 from then on. A descriptor that was opened again can be gone on from, but not read.
    bool pop();

    // The descriptor of the top directory, -1 when it was lost, AT_FDCWD when there is none.
    [[nodiscard]] int top() const;

    [[nodiscard]] size_t depth() const { return levels_.size(); }

    DirectoryStack() = default;
    DirectoryStack(DirectoryStack&& other) = delete;
    ~DirectoryStack();

  private:
    struct Level {
        int fd;
        const char* name;
        dev_t dev;  // these two are known once the descriptor was closed
        ino_t ino;
    };

    [[nodiscard]] UniqueFd find_by_names() const;

    Vector<Level> levels_;
    size_t first_open_ = 0;  // between the outermost level and this one, no level holds a descriptor
};

// A path that grows and shrinks by components, joined as gn_joinpath joins them.
class PathStack {
  public:
    // The whole path; "" when nothing was pushed.
    [[nodiscard]] const char* text() const;

    // Adds a component. False when memory ran out; nothing has changed then.
    [[nodiscard]] bool push(const char* name);
    void pop();

  private:
    struct Part {
        size_t
            start;  // of the whole path in text_: it starts anew at a component that begins with a separator
        size_t end;
    };

    Vector<char> text_;
    Vector<Part> parts_;
};

// Something that a walk meets.
struct WalkEntry {
    int dir;           // the open directory that holds it, AT_FDCWD for an operand, -1 when it was lost
    const char* name;  // its name there, or the operand
    const char* path;  // what messages show; valid until the walk moves on; null: no memory for it
    const DirectoryEntry* status;  // null for an operand; valid while its directory is being walked

    // What the command line names, with which a walk begins. The text must live as long as the walk in it.
    [[nodiscard]] static WalkEntry operand(const char* path);
};

class TreeWalk {
  public:
    // Directories are read in this order and detail (see DirectoryListing::read).
    explicit TreeWalk(EntryOrder order = EntryOrder::unsorted, bool reverse = false,
                      EntryDetail detail = EntryDetail::status)
        : order_(order), reverse_(reverse), detail_(detail) {}

    // Opens and reads a directory and makes it the one that is walked: an operand while nothing is walked,
    // otherwise what next() has given last. With Links::follow, symbolic links to directories are entered
    // too, as far as the system follows the links in the whole path from the operand on (ELOOP): this is what
    // ends a walk through a link that leads back. False with errno, and nothing entered, when that is
    // impossible.
    [[nodiscard]] bool enter(const WalkEntry& entry, Links links);

    // The next entry of the directory that is walked; false at its end. Entries of a directory that was lost
    // (somebody moved what was inside it away) still come, with the descriptor -1.
    [[nodiscard]] bool next(WalkEntry* entry);

    // True when the directory that is walked has no further entry.
    [[nodiscard]] bool at_end() const;

    // Leaves the directory that is walked, also before its end, and gives it back as the entry that it is of
    // its own parent, so that it can be treated after its entries. The parent, if any, is walked on.
    WalkEntry leave();

    // How many directories are entered; 1 while an operand's own entries are walked.
    [[nodiscard]] size_t depth() const { return levels_.size(); }

    // The path of the directory that is walked, as messages show it. The last entry's path is gone with it.
    [[nodiscard]] const char* path();

    // Examines what a path leads to, links followed, as seen from the directory that is walked. Links count
    // as in enter(). False with errno.
    [[nodiscard]] bool examine(const char* path, struct stat* status) const;

    TreeWalk(TreeWalk&& other) = delete;
    ~TreeWalk();

  private:
    struct Level {
        DirectoryListing* listing;
        size_t next;
        const char* name;  // the listing outside owns it; the operand at the outermost level
        Links via;
    };

    [[nodiscard]] bool add_level(UniqueFd directory, const char* name, Links via);
    [[nodiscard]] bool system_follows(const char* path) const;
    [[nodiscard]] DirectoryListing* take_listing();
    void give_back(DirectoryListing* listing);
    void drop_name();

    EntryOrder order_;
    bool reverse_;
    EntryDetail detail_;
    bool name_pushed_ =
        false;             // the name of the last entry, or of what was left, is still at the end of path_
    size_t followed_ = 0;  // how many directories inside the operand were entered through a link
    DirectoryStack directories_;
    PathStack path_;
    Vector<Level> levels_;
    DirectoryListing* spare_ = nullptr;  // one that was left, whose memory serves the next
};
