// format: detaches a file system, creates it anew on its device, and mounts it again.
// Scripts rely on: everything that can be known is looked at before anything is touched, and the status tells how far
// it came; what mkfs did not write to is mounted again. The device is known by its number, whatever its name says.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "common/paths.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"
#include "lib/spawn/spawn.h"
#include "platform/mounts.h"

namespace {

constexpr const char* usage[] = {
    "Usage: format [-t TYPE] [-L LABEL] [-y] [-v] MOUNTPOINT|DEVICE\n",
    "Detach a file system, create it anew with mkfs.TYPE, and mount it again.\n",
    "\n",
    "    -t    create a file system of TYPE (default: the type it has)\n",
    "    -L    give it the name LABEL\n",
    "    -y    do not ask\n",
    "    -v    tell each step\n",
    "\n",
    "The status is 0 when all went well, otherwise\n",
    "    1    wrong usage, or a message that could not be written\n",
    "    2    there is no such mount\n",
    "    3    refused, nothing was touched\n",
    "    4    not confirmed, nothing was touched\n",
    "    5    could not be detached\n",
    "    6    mkfs.TYPE could not be started, mounted again\n",
    "    7    mkfs.TYPE failed; mounted again if it wrote nothing, otherwise detached\n",
    "    8    detached, it could not be mounted again\n",
};

enum Status : int {
    done = 0,
    not_found = 2,
    refused = 3,
    not_confirmed = 4,
    not_detached = 5,
    not_started = 6,
    not_created = 7,
    not_mounted = 8,
};

struct Options {
    const char* type = nullptr;
    const char* label = nullptr;
    bool ask = true;
    bool verbose = false;
};

// The arguments of a mkfs: that which gives a label, and one without which it asks, chatters, or refuses what holds
// a file system already.
struct Maker {
    const char* type;
    const char* label;
    const char* always;
};

constexpr Maker makers[] = {
    {"ext2", "-L", "-q"},   {"ext3", "-L", "-q"},   {"ext4", "-L", "-q"},     {"xfs", "-L", "-f"},
    {"btrfs", "-L", "-f"},  {"vfat", "-n", "-I"},   {"msdos", "-n", "-I"},    {"exfat", "-L", nullptr},
    {"f2fs", "-l", "-f"},   {"ntfs", "-L", "-F"},   {"nilfs2", "-L", "-f"},   {"jfs", "-L", "-q"},
    {"udf", "-l", nullptr}, {"bfs", "-N", nullptr}, {"reiserfs", "-l", "-q"},
};

const Maker* find_maker(const char* type) {
    for (const Maker& maker : makers) {
        if (strcmp(maker.type, type) == 0) return &maker;
    }
    return nullptr;
}

// ---- choosing

// A mount, and the table that it stands in.
class Choice {
  public:
    Choice() = default;
    Choice(const Choice&) = delete;
    Choice& operator=(const Choice&) = delete;
    ~Choice() {
        if (handle_ != 0) e_closemnt(handle_);
    }

    // Finds the mount that a mount point or a device stands for. Returns a status, after a message if it is not done.
    [[nodiscard]] int find(const char* operand);

    // Why the mount must not be formatted, null if it may.
    [[nodiscard]] const char* objection() const;

    // The name of the device that holds it: that by which it was mounted, or else the operand.
    [[nodiscard]] const char* device() const { return device_.get(); }

    [[nodiscard]] const MountRecord& mount() const { return mount_; }

  private:
    bool read();

    uint32_t handle_ = 0;
    Vector<MountRecord> mounts_;
    MountRecord mount_{};
    CString device_;
};

bool Choice::read() {
    handle_ = e_openmnt();
    if (handle_ == 0) return false;
    MountRecord record;
    while (platform::next_mount(handle_, &record)) {
        if (!mounts_.push_back(record)) {
            errno = ENOMEM;
            return false;
        }
    }
    return true;
}

bool is_device(const char* name, uint64_t device) {
    struct stat status;
    return name[0] == '/' && stat(name, &status) == 0 && S_ISBLK(status.st_mode) && status.st_rdev == device;
}

int Choice::find(const char* operand) {
    struct stat status;
    const CString path(realpath_wrap(operand, nullptr));
    if (!path || stat(path.get(), &status) != 0 || !read()) {
        cli::error("format: %s: %s\n", operand, gn_strerror(errno));
        return not_found;
    }
    const bool by_device = S_ISBLK(status.st_mode);
    bool found = false;
    for (const MountRecord& record : mounts_) {
        const bool matches = by_device ? record.device == status.st_rdev && !found
                                       : strcmp(record.point, path.get()) == 0 && (!found || !record.hidden);
        if (!matches) continue;
        // Of mounts stacked on the same place, the last is on top.
        mount_ = record;
        found = true;
    }
    if (!found) {
        cli::error("format: %s: %s\n", operand, by_device ? "not mounted" : "not a mount point");
        return not_found;
    }
    const char* name = is_device(mount_.source, mount_.device) ? mount_.source : path.get();
    if (mount_.device != 0 && is_device(name, mount_.device)) {
        device_ = CString(strdup(name));
        if (!device_) return cli::fail("format: %s: %s\n", operand, gn_strerror(ENOMEM));
    }
    return done;
}

const char* Choice::objection() const {
    if (mount_.device == 0) return "not on a block device";
    struct stat root;
    bool holds_root = stat("/", &root) != 0 || root.st_dev == mount_.device;
    bool elsewhere = false;
    bool below = false;
    for (const MountRecord& other : mounts_) {
        if (other.device == mount_.device) {
            holds_root |= strcmp(other.point, "/") == 0;
            elsewhere |= other.id != mount_.id;
        }
        below |= other.parent_id == mount_.id && other.id != mount_.id;
    }
    if (holds_root) return "holds the root file system";
    if (elsewhere) return "mounted elsewhere too";
    if (strcmp(mount_.root, "/") != 0) return "only a directory of it is mounted";
    if (below) return "this mountpoint contains mountpoints";
    if (mount_.hidden || !platform::leads_to_mount(mount_.point, mount_.id))
        return "hidden under another mount";
    if (device() == nullptr) return "its device has no file that is known";
    return nullptr;
}

// ---- doing

// A mount that may be formatted, and what is needed for it.
class Format {
  public:
    explicit Format(const Options& opt, const Choice& choice)
        : opt_(opt), mount_(choice.mount()), device_(choice.device()) {}

    // Each returns a status, after a message if it is not done.
    [[nodiscard]] int prepare();
    [[nodiscard]] int carry_out();

    [[nodiscard]] const char* type() const { return opt_.type != nullptr ? opt_.type : mount_.type; }

  private:
    [[nodiscard]] int stop(Status status, const char* what, const char* reason) const {
        cli::error("format: %s: %s\n", what, reason);
        return status;
    }
    void tell(const char* what) const {
        if (opt_.verbose) printf("format: %s: %s\n", mount_.point, what);
        output::flush();
    }
    [[nodiscard]] int mount_back(Status status) const;
    [[nodiscard]] int create();

    const Options& opt_;
    const MountRecord& mount_;
    const char* device_;
    char program_[64] = "mkfs.";
    CString path_;
    sigset_t defaults_{};
    UniqueFd nowhere_;
    // Kept open, so that a device which exists only as long as it is used, as a loop device may, outlives this.
    UniqueFd held_;
};

int Format::prepare() {
    const size_t used = strlen(program_);
    const size_t length = strlen(type());
    if (length == 0 || length >= sizeof program_ - used || strchr(type(), '/') != nullptr)
        return stop(refused, type(), "invalid type");
    memcpy(program_ + used, type(), length + 1);
    path_ = CString(e_find(program_, getenv("PATH")));
    if (!path_) return stop(refused, program_, gn_strerror(errno));
    if (opt_.label != nullptr && find_maker(type()) == nullptr)
        return stop(refused, program_, "not known how to give a label");
    if (!platform::may_mount()) return stop(refused, mount_.point, gn_strerror(errno));
    held_ = UniqueFd(open(device_, O_RDONLY | O_CLOEXEC));
    struct stat status;
    if (!held_.valid() || access(device_, W_OK) != 0 || fstat(held_.get(), &status) != 0)
        return stop(refused, device_, gn_strerror(errno));
    if (!S_ISBLK(status.st_mode) || status.st_rdev != mount_.device)
        return stop(refused, device_, "another device by now");
    nowhere_ = UniqueFd(open("/dev/null", O_RDWR | O_CLOEXEC));
    if (!nowhere_.valid()) return stop(refused, "/dev/null", gn_strerror(errno));
    return done;
}

// Returns the status, or another one when that fails, too.
int Format::mount_back(Status status) const {
    tell("mount again");
    if (platform::mount_again(mount_, device_, mount_.type)) return status;
    return stop(not_mounted, mount_.point, gn_strerror(errno));
}

// From here on it must come to an end: interrupting it is left to mkfs.
constexpr int held_off_signals[] = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGTSTP};

int Format::create() {
    const Maker* maker = find_maker(type());
    const char* arguments[6];
    size_t count = 0;
    arguments[count++] = path_.get();
    if (maker != nullptr && maker->always != nullptr) arguments[count++] = maker->always;
    if (maker != nullptr && opt_.label != nullptr) {
        arguments[count++] = maker->label;
        arguments[count++] = opt_.label;
    }
    arguments[count++] = device_;
    arguments[count] = nullptr;

    // Without a terminal to read from, none of them asks.
    const e_descriptor descriptors[] = {{nowhere_.get(), STDIN_FILENO},
                                        {opt_.verbose ? STDOUT_FILENO : nowhere_.get(), STDOUT_FILENO}};
    const e_program program{.arguments = const_cast<char* const*>(arguments),
                            .environment = environ,
                            .descriptors = descriptors,
                            .defaults = &defaults_};
    uint64_t before = 0;
    uint64_t after = 0;
    const bool counted = fsync(held_.get()) == 0 && platform::sectors_written(mount_.device, &before);
    tell(program_);
    e_failure failure;
    const pid_t child = e_spawn(program, &failure);
    if (child < 0) {
        (void)stop(not_started, program_, gn_strerror(failure.error));
        return mount_back(not_started);
    }
    e_result result{};
    if (e_wait(child, &result) && result.status == 0) return done;
    cli::error("format: %s: failed with status %d\n", program_, result.status);
    if (counted && fsync(held_.get()) == 0 && platform::sectors_written(mount_.device, &after) &&
        after == before)
        return mount_back(not_created);
    return stop(not_created, mount_.point, "detached, as its device was written to");
}

int Format::carry_out() {
    // While a question stood, its name may have come to stand for another one.
    if (!is_device(device_, mount_.device)) return stop(refused, device_, "another device by now");
    sigemptyset(&defaults_);
    for (const int number : held_off_signals) {
        if (signal(number, SIG_IGN) != SIG_IGN) sigaddset(&defaults_, number);
    }
    // Whoever stops reading what mkfs tells does not want half a file system.
    sigdelset(&defaults_, SIGPIPE);
    tell("detach");
    if (platform::umount(mount_.point, false) != 0)
        return stop(not_detached, mount_.point, gn_strerror(errno));
    // Someone out of sight may still use it: a mount in another namespace, or another layer of devices.
    if (!UniqueFd(open(device_, O_RDWR | O_EXCL | O_CLOEXEC)).valid()) {
        (void)stop(not_started, device_, gn_strerror(errno));
        return mount_back(not_started);
    }
    const int status = create();
    if (status != done) return status;
    tell("mount");
    if (platform::mount_again(mount_, device_, type())) return done;
    return stop(not_mounted, mount_.point, gn_strerror(errno));
}

bool confirmed(const Choice& choice, const char* type) {
    printf("format: %s: everything on %s (%s) will be lost, it becomes %s\nType yes to continue: ",
           choice.mount().point, choice.device(), choice.mount().type, type);
    output::flush();
    char line[8];
    return fgets(line, sizeof line, stdin) != nullptr &&
           (strcmp(line, "yes\n") == 0 || strcmp(line, "yes") == 0);
}

int choose(const char* operand, Choice* choice) {
    const int status = choice->find(operand);
    if (status != done) return status;
    const char* objection = choice->objection();
    if (objection == nullptr) return done;
    cli::error("format: %s: %s\n", operand, objection);
    return refused;
}

int format(const char* operand, const Options& opt) {
    Choice choice;
    int status = choose(operand, &choice);
    if (status != done) return status;
    Format formatting(opt, choice);
    status = formatting.prepare();
    if (status != done) return status;
    if (opt.ask) {
        if (!confirmed(choice, formatting.type())) {
            cli::error("format: %s: not confirmed\n", operand);
            return not_confirmed;
        }
        // Much can have happened while the question stood.
        Choice now;
        status = choose(operand, &now);
        if (status != done) return status;
        if (now.mount().id != choice.mount().id || now.mount().device != choice.mount().device) {
            cli::error("format: %s: another mount by now\n", operand);
            return refused;
        }
    }
    return formatting.carry_out();
}

}  // namespace

int gn_format(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 't':
        case 'L': {
            const char* text = e_opt_getstr(&state);
            if (text == nullptr) return cli::fail("format: -%c: missing argument\n", c);
            (c == 't' ? opt.type : opt.label) = text;
            break;
        }
        case 'y': opt.ask = false; break;
        case 'v': opt.verbose = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "format: unknown switch: -%c\n", c);
        }
    }
    if (argc == 0) return cli::fail("format: missing operand\n");
    if (argc > 1) return cli::fail("format: extra operand '%s'\n", argv[1]);
    return output::finish("format", format(argv[0], opt));
}
