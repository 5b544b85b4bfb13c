// tree: draws the contents of directories.
// Scripts rely on: names that begin with a dot are shown like any other; what goes wrong with a link's target
// is said on standard output, in the link's line; a target that begins with a backslash is a path of its own;
// -L 0 draws the root line only, and a negative level sets no limit; a -L without its level shows the usage
// with status 0.

#include <cerrno>
#include <cstdint>
#include <span>
#include <string_view>

#include <sys/stat.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/colors.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "common/tree_walk.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: tree [OPTION]... [-L level] [DIRECTORY]...\n",
    "List contents of directories in a tree-like format.\n",
    "\n",
    "    -C    colorize the output\n",
    "    -d    sort by date (and name)\n",
    "    -F    append indicator (one of */=>@|) to entries\n",
    "    -i    inverse sort order\n",
    "    -l    follows symbolic links if they point to directories, as if they were directories\n",
    "    -L    max display depth of the directory tree\n",
    "    -n    sort by name (this is the default sort order)\n",
    "    -s    sort by size (and name)\n",
};

enum Flag : unsigned { flag_follow = 1, flag_marks = 2, flag_color = 4, flag_reverse = 8 };

// One marker for every level that is being drawn: whether further entries of it come below.
enum Marker : unsigned char { marker_last = 0, marker_more = 1 };
using Prefix = Vector<unsigned char>;

struct Drawing {
    Drawing(Prefix& prefix_stack, unsigned display_flags, int64_t most_levels, EntryOrder order)
        : prefix(prefix_stack),
          flags(display_flags),
          depth(static_cast<uint64_t>(most_levels)),
          walk(order, (flags & flag_reverse) != 0, detail(order)) {}

    Prefix& prefix;
    unsigned flags;
    uint64_t depth;  // how many levels are drawn; too large to be reached where there is no limit
    TreeWalk walk;
    Vector<char> indent;  // what stands in front of the connectors of the innermost level
    output::Block out;
    bool ok = true;

  private:
    // Colours and marks depend on the permission to execute a file.
    [[nodiscard]] EntryDetail detail(EntryOrder order) const {
        bool types_do = order == EntryOrder::name && (flags & (flag_color | flag_marks)) == 0;
        return types_do ? EntryDetail::type : EntryDetail::status;
    }
};

void gn_tree_printname(output::Block& out, unsigned flags, mode_t mode, const char* name) {
    if ((flags & flag_color) != 0) out.write(gn_begin_color(mode));
    out.write(name);
    if ((flags & flag_color) != 0) out.write(gn_end_color());
    if ((flags & flag_marks) != 0) out.write(gn_getprintfiletype(mode));
}

void fail_for_memory(Drawing& drawing) {
    drawing.out.flush();
    cli::error("tree: out of memory\n");
    drawing.ok = false;
}

// Adds to a link's line what it leads to, or what is wrong with that. True when it leads to a directory that
// is drawn as one.
bool draw_target(Drawing& drawing, const WalkEntry& link) {
    output::Block& out = drawing.out;
    CString target(read_link(link.dir, link.name, static_cast<size_t>(link.status->size) + 1));
    int error = errno;
    if (!target && error != ENOMEM) return false;

    CString resolved;
    if (target) {
        struct stat status;
        bool is_own_path = target.get()[0] == '\\';
        if (is_own_path ? stat(target.get(), &status) == 0 : drawing.walk.examine(target.get(), &status)) {
            out.write(" -> ");
            gn_tree_printname(out, drawing.flags, status.st_mode, target.get());
            return (drawing.flags & flag_follow) != 0 && S_ISDIR(status.st_mode);
        }
        error = errno;
        resolved = CString(gn_joinpath(drawing.walk.path(), target.get()));
    }
    drawing.ok = false;
    out.write("   tree: ");
    if (resolved) {
        out.write(resolved.get());
        out.write(": ");
        out.write(gn_strerror(error));
    } else {
        out.write("out of memory");
    }
    return false;
}

constexpr std::string_view indent_more = "|   ";
constexpr std::string_view indent_last = "    ";

bool open_level(Drawing& drawing) {
    size_t size = drawing.indent.size();
    if (!drawing.prefix.empty()) {
        bool more = *drawing.prefix.back() == marker_more;
        if (!drawing.indent.append(more ? indent_more : indent_last)) return false;
    }
    if (drawing.prefix.push_back(marker_more)) return true;
    (void)drawing.indent.resize(size);
    return false;
}

void close_level(Drawing& drawing) {
    drawing.prefix.pop_back();
    if (!drawing.prefix.empty()) {
        (void)drawing.indent.resize(drawing.indent.size() - indent_more.size());
    }
    drawing.walk.leave();
}

// Goes on with the entries of a directory, if there are any and they are wanted.
void descend(Drawing& drawing, const WalkEntry& directory, Links links) {
    TreeWalk& walk = drawing.walk;
    if (walk.depth() == drawing.depth) return;
    if (!walk.enter(directory, links)) {
        drawing.out.flush();
        cli::error("tree: %s: failed to read directory\n", directory.path);
        drawing.ok = false;
    } else if (walk.at_end()) {
        walk.leave();
    } else if (!open_level(drawing)) {
        fail_for_memory(drawing);
        walk.leave();
    }
}

void draw_entry(Drawing& drawing, const WalkEntry& entry) {
    if (entry.path == nullptr) return fail_for_memory(drawing);
    output::Block& out = drawing.out;
    bool last = drawing.walk.at_end();
    if (last) *drawing.prefix.back() = marker_last;

    out.write({drawing.indent.data(), drawing.indent.size()});
    out.write(last ? "`-- " : "|-- ");
    mode_t mode = entry.status->mode;
    gn_tree_printname(out, drawing.flags, mode, entry.name);
    bool enters = S_ISDIR(mode) || (S_ISLNK(mode) && draw_target(drawing, entry));
    out.put('\n');
    if (enters) descend(drawing, entry, S_ISLNK(mode) ? Links::follow : Links::keep);
}

// Draws the tree of one operand. The prefix stack is empty before and after. Returns 0, or 1 when anything of
// the tree could not be drawn (after a message).
int gn_tree_list(Prefix& prefix, unsigned flags, int64_t depth, EntryOrder sort, const char* path) {
    struct stat root;
    if (stat(path, &root) != 0) return cli::fail("tree: %s: %s\n", path, gn_strerror(errno));

    Drawing drawing(prefix, flags, depth, sort);
    gn_tree_printname(drawing.out, flags, root.st_mode, path);
    drawing.out.put('\n');
    descend(drawing, WalkEntry::operand(path), Links::follow);
    while (drawing.walk.depth() != 0) {
        WalkEntry entry;
        if (drawing.walk.next(&entry)) {
            draw_entry(drawing, entry);
        } else {
            close_level(drawing);
        }
    }
    return drawing.ok ? 0 : 1;
}

}  // namespace

int gn_tree(int argc, char** argv) {
    unsigned flags = 0;
    int64_t depth = -1;
    EntryOrder sort = EntryOrder::name;

    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'C': flags |= flag_color; break;
        case 'd': sort = EntryOrder::date; break;
        case 'F': flags |= flag_marks; break;
        case 'i': flags |= flag_reverse; break;
        case 'l': flags |= flag_follow; break;
        case 'L':
            if (e_opt_getint(&state, &depth) != e_opt_ok) return cli::help(usage);
            break;
        case 'n': sort = EntryOrder::name; break;
        case 's': sort = EntryOrder::size; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "tree: unknown switch: -%c\n", c);
        }
    }

    Prefix prefix;
    if (!prefix.create()) {
        cli::error("tree: out of memory\n");
        return cli::exit_no_memory;
    }
    static char here[] = ".";
    static char* current[] = {here};
    std::span operands = argc == 0 ? std::span(current) : std::span(argv, static_cast<size_t>(argc));
    bool ok = true;
    for (const char* path : operands) ok &= gn_tree_list(prefix, flags, depth, sort, path) == 0;
    return output::finish("tree", ok ? 0 : 1);
}
