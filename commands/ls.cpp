// ls: lists files and the contents of directories, one entry a line.
// Scripts rely on: what cannot be examined is reported and leaves the status 0; group names are looked up
// among the users; a FIFO has the letter f; -R takes the subdirectories of a directory in reverse order, each
// one's own right behind it; several operands are listed files first, a single directory without a heading;
// without -l a link to a directory is that directory; --color takes the next argument as its value when there
// is one, and "auto" does not ask the terminal; -1 changes nothing, as there is one entry a line anyway.

#include <cerrno>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "colprint/colprint.h"
#include "commands/ls_row.h"
#include "common/cli.h"
#include "common/directory.h"
#include "common/output.h"
#include "common/paths.h"
#include "common/text.h"
#include "lib/containers/container_deque.h"
#include "lib/option/option.h"

namespace {

using ls::Switches;

constexpr const char* usage[] = {
    "Usage: ls [OPTIONS]... [FILES]...\n",
    "List information about the FILEs (the current directory by default).\n",
    "\n",
    "    -1    list one file per line\n",
    "    -a    do not ignore entries starting with .\n",
    "    -A    almost all (do not list implied . and ..)\n",
    "    -c    colorize the output\n",
    "    -C    remove previous -c option\n",
    "    -d    sort by date (and name)\n",
    "    -e    print filesystem entry IDs (inode numbers)\n",
    "    -F    append indicator (one of */=>@|) to entries\n",
    "    -h    print sizes in human readable format\n",
    "    -i    inverse sort order\n",
    "    -l    use a long listing format\n",
    "    -L    show symlink target\n",
    "    -m    show mode bits\n",
    "    -M    hide mode bits\n",
    "    -n    sort by name (this is the default sort order)\n",
    "    -Q    enclose entry names in double quotes\n",
    "    -R    list subdirectories recursively\n",
    "    -s    sort by size (and name)\n",
    "    -t    show date\n",
    "    -T    hide date\n",
    "    -u    display UTC time instead of local time\n",
    "    -U    list entries unsorted\n",
};

constexpr int exit_table = 5;

// The directories still to be listed, by path.
//
// The path that is shown is not always one that leads to the directory, because a backslash in a name
// separates where paths are joined. An element is one block: the path shown, and behind its NUL the real one,
// or nothing where they are the same.
class DirectoryQueue {
  public:
    DirectoryQueue() = default;
    DirectoryQueue(DirectoryQueue&& other) = delete;
    ~DirectoryQueue() {
        while (!empty()) (void)pop();
    }

    static const char* shown(const CString& path) { return path.get(); }
    static const char* real(const CString& path) {
        const char* behind = path.get() + strlen(path.get()) + 1;
        return *behind != '\0' ? behind : path.get();
    }

    // These are false when memory is short.
    [[nodiscard]] bool create() { return paths_.create(); }
    [[nodiscard]] bool add_operand(const char* path) {
        CString element(concatenate({path, end_of_shown}));
        if (!element || !paths_.push_back(element.get())) return false;
        (void)element.release();
        return true;
    }
    [[nodiscard]] bool add_subdirectory(const char* shown_parent, const char* real_parent, const char* name) {
        const CString shown(gn_joinpath(shown_parent, name));
        const CString real(concatenate({real_parent, is_slashed(real_parent) ? "" : "/", name}));
        if (!shown || !real) return false;
        const bool same = strcmp(shown.get(), real.get()) == 0;
        CString element(concatenate({shown.get(), end_of_shown, same ? "" : real.get()}));
        if (!element || !paths_.push_front(element.get())) return false;
        (void)element.release();
        return true;
    }

    [[nodiscard]] bool empty() const { return paths_.empty(); }
    [[nodiscard]] CString pop() {
        CString path(*paths_.front());
        paths_.pop_front();
        return path;
    }

  private:
    static constexpr std::string_view end_of_shown = std::string_view("\0", 1);

    static bool is_slashed(const char* path) { return path[0] != '\0' && path[strlen(path) - 1] == '/'; }

    Deque<char*> paths_;
};

struct Listing {
    const Switches& switches;
    EntryOrder order;
    colp_table* table;
    ls::RowWriter rows{
        .switches = switches, .table = table, .name = {}, .users = {}, .dates = ls::DateWriter(switches.utc)};
    DirectoryQueue queue{};
    DirectoryListing entries{};
    int write_error = 0;
};

int table_error(unsigned status) {
    cli::error("%s: colprint error: %s\n", "ls", colp_strerror(status));
    return exit_table;
}

[[nodiscard]] unsigned declare_columns(colp_table* table, const Switches& switches) {
    const struct {
        bool shown;
        unsigned type;
        unsigned justification;
    } columns[] = {
        {switches.long_format && switches.entry_id, COLP_UINT, COLP_JUST_RIGHT},
        {switches.long_format && switches.mode, COLP_STRING, COLP_JUST_RIGHT},
        {switches.long_format, COLP_UINT, COLP_JUST_RIGHT},    // links
        {switches.long_format, COLP_STRING, COLP_JUST_RIGHT},  // owner
        {switches.long_format, COLP_STRING, COLP_JUST_RIGHT},  // group
        {switches.long_format, COLP_STRING, COLP_JUST_RIGHT},  // size
        {switches.long_format && switches.date, COLP_STRING, COLP_JUST_RIGHT},
        {true, COLP_STRING, COLP_JUST_LEFT},  // name
    };
    if (unsigned status = colp_setstyle(table, COLP_STYLE_SIMPLE); status != COLP_OK) return status;
    for (const auto& column : columns) {
        if (!column.shown) continue;
        if (unsigned status = colp_begincolumn(table, column.type); status != COLP_OK) return status;
        if (unsigned status = colp_setcolumn_celljust(table, column.justification); status != COLP_OK)
            return status;
        if (unsigned status = colp_endcolumn(table); status != COLP_OK) return status;
    }
    return colp_endheader(table);
}

void report_inaccessible(const char* path) {
    const int error = errno;
    cli::error("ls: cannot access %s: %s\n", path, gn_strerror(error));
}

void report_no_memory() {
    cli::error("ls: ran out of memory\n");
}

bool examine(const char* path, platform::Links links, struct stat* status) {
    UniqueFd start;
    const char* rest = shorten_path(path, &start);
    return rest != nullptr &&
           platform::file_status(start.valid() ? start.get() : AT_FDCWD, rest, links, status, nullptr);
}

bool is_dots(const char* name) {
    return strcmp(name, ".") == 0 || strcmp(name, "..") == 0;
}

// Adds the rows of a directory's entries, and queues its subdirectories with -R.
[[nodiscard]] unsigned list_directory(Listing& listing, const UniqueFd& directory, const char* shown,
                                      const char* real) {
    const Switches& switches = listing.switches;
    if (!directory.valid() ||
        !listing.entries.read(directory.get(), listing.order, switches.inverse, switches.dots)) {
        report_inaccessible(shown);
        return COLP_OK;
    }
    const ls::EntryDirectory place{shown, directory.get()};
    for (const DirectoryEntry& entry : listing.entries) {
        if (entry.name[0] == '.' && !switches.hidden) continue;
        const unsigned status = ls::render_item(listing.rows, place, entry, ls::NameForm::entry);
        if (status != COLP_OK) return status;
        if (switches.recursive && S_ISDIR(entry.mode) && !is_dots(entry.name) &&
            !listing.queue.add_subdirectory(shown, real, entry.name)) {
            report_no_memory();
            break;
        }
    }
    return COLP_OK;
}

enum class Role { only_operand, one_of_operands, queued };

// Adds the rows of a path, or queues it when it is a directory among several operands. What cannot be
// examined is only reported. Returns the table's error code.
[[nodiscard]] unsigned gn_ls_print_content(Listing& listing, const char* shown, const char* real, Role role) {
    const auto links = listing.switches.long_format ? platform::Links::keep : platform::Links::follow;
    if (role == Role::queued) {
        // It was a directory when it was queued, and mostly still is.
        const UniqueFd directory = open_directory(real, links);
        if (directory.valid()) return list_directory(listing, directory, shown, real);
    }
    struct stat status;
    if (!examine(real, links, &status)) {
        report_inaccessible(shown);
        return COLP_OK;
    }
    if (!S_ISDIR(status.st_mode)) {
        gn_dirent record;
        gn_stat_to_gn_dirent(&status, "", &record);
        const auto form = role == Role::one_of_operands ? ls::NameForm::operand : ls::NameForm::entry;
        return ls::render_item(listing.rows, {real, -1}, {record, base_name(real)}, form);
    }
    if (role != Role::one_of_operands) return list_directory(listing, open_directory(real), shown, real);
    if (!listing.queue.add_operand(real)) report_no_memory();
    return COLP_OK;
}

// The table flushes standard output itself and leaves a failure to its caller.
[[nodiscard]] unsigned print_rows(Listing& listing) {
    const bool failed_before = output::failed();
    const unsigned status = colp_print(listing.table, COLP_PRINT_ROWS, stdout);
    if (output::failed() && !failed_before) listing.write_error = errno;
    colp_removerows(listing.table);
    return status;
}

[[nodiscard]] unsigned list(Listing& listing, std::span<char*> operands) {
    const Role role = operands.size() > 1 ? Role::one_of_operands : Role::only_operand;
    unsigned status = COLP_OK;
    if (operands.empty()) status = gn_ls_print_content(listing, ".", ".", role);
    for (const char* operand : operands) {
        if (status == COLP_OK) status = gn_ls_print_content(listing, operand, operand, role);
    }
    if (status == COLP_OK && colp_getrowcount(listing.table) != 0) status = print_rows(listing);

    while (status == COLP_OK && !listing.queue.empty()) {
        output::write("\n");
        const CString path = listing.queue.pop();
        const char* shown = DirectoryQueue::shown(path);
        status = gn_ls_print_content(listing, shown, DirectoryQueue::real(path), Role::queued);
        if (status != COLP_OK) break;
        output::write(shown);
        output::write(":\n");
        status = print_rows(listing);
    }
    return status;
}

}  // namespace

int gn_ls(int argc, char** argv) {
    constexpr int color_option = 1000;
    static constexpr e_longoption long_options[] = {{"--color", color_option}, {nullptr, 0}};

    Switches switches{.color = isatty(STDOUT_FILENO) != 0};
    EntryOrder order = EntryOrder::name;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    e_setlongoption(&state, long_options);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case '1': break;
        case 'a': switches.hidden = switches.dots = true; break;
        case 'A': switches.hidden = true; break;
        case 'c': switches.color = true; break;
        case 'C': switches.color = false; break;
        case 'd': order = EntryOrder::date; break;
        case 'e': switches.entry_id = true; break;
        case 'F': switches.indicator = true; break;
        case 'h': switches.human = true; break;
        case 'i': switches.inverse = true; break;
        case 'l': switches.long_format = switches.mode = switches.date = switches.link_target = true; break;
        case 'L': switches.link_target = true; break;
        case 'm': switches.mode = true; break;
        case 'M': switches.mode = false; break;
        case 'n': order = EntryOrder::name; break;
        case 'Q': switches.quote = true; break;
        case 'R': switches.recursive = true; break;
        case 's': order = EntryOrder::size; break;
        case 't': switches.date = true; break;
        case 'T': switches.date = false; break;
        case 'u': switches.utc = true; break;
        case 'U': order = EntryOrder::unsorted; break;
        case color_option: {
            const char* when = e_opt_getstr(&state);
            switches.color = when == nullptr || strcmp(when, "auto") == 0 || strcmp(when, "always") == 0;
            break;
        }
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "ls: unknown switch: -%c\n", c);
        }
    }

    const colprint::Table table(colp_new());
    if (!table) {
        cli::error("%s: could not allocate colprint\n", "ls");
        return cli::exit_no_memory;
    }
    if (unsigned status = declare_columns(table.get(), switches); status != COLP_OK)
        return table_error(status);
    Listing listing{.switches = switches, .order = order, .table = table.get()};
    if (!listing.queue.create() || !listing.rows.name.create() || !listing.rows.users.create()) {
        cli::error("ls: out of memory\n");
        return cli::exit_no_memory;
    }
    const unsigned status = list(listing, {argv, static_cast<size_t>(argc)});
    if (status != COLP_OK) return table_error(status);
    if (listing.write_error != 0) return cli::fail("ls: write error: %s\n", gn_strerror(listing.write_error));
    return output::finish("ls", 0);
}
