// df: shows size, use and free space of file systems.
// Scripts rely on: the header comes first, and alone with status 0 where the system has no mount table; sizes
// and percentages are cut off, not rounded, and free is what root may use; the device is cut after 13
// characters, while longer texts elsewhere push the columns to the right.

#include <cerrno>
#include <climits>
#include <cstdio>
#include <span>

#include "app/tools.h"
#include "common/cli.h"
#include "common/mounts.h"
#include "common/output.h"
#include "common/sizes.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"
#include "platform/mounts.h"

namespace {

constexpr const char* usage[] = {
    "Usage: df [OPTION]... [FILE]...\n",
    "Report file system disk space usage.\n",
    "\n",
    "    -a    display all mount points\n",
    "    -h    human readable (print sizes in powers of 1024)\n",
    "    -i    display i-node stats\n",
    "    -L    display physical location of the file system\n",
    "    -T    display file system type\n",
};

struct Options {
    bool all = false;
    bool human = false;
    bool inodes = false;
    bool location = false;
    bool type = false;
};

constexpr int device_width = 14;
constexpr int type_width = 10;
constexpr int location_width = 10;
constexpr int inode_width = 8;

constexpr struct {
    uint32_t number;
    const char* name;
} types[] = {
    {0x137D, "ext"},        {0x1373, "devfs"},      {0x1CD1, "devpts"},   {0x517B, "SMB"},
    {0x9FA0, "proc"},       {0xEF51, "ext2-old"},   {0xEF53, "ext2"},     {0x1021994, "tmpfs"},
    {0xF320F32, "FAT32"},   {0x15013346, "UDF"},    {0x5346544E, "NTFS"}, {0xABBA1974, "xenfs"},
    {0xC0E701CF, "xsiipc"}, {0xC0E70BF5, "bootfs"}, {0xC0E70FF5, "ffs"},
};

const char* type_name(uint32_t number) {
    for (const auto& type : types) {
        if (type.number == number) return type.name;
    }
    return "???";
}

int size_width(const Options& opt) {
    return opt.human ? 5 : 12;
}

// The used part of a whole that is not 0, in percent.
unsigned percentage(uint64_t whole, uint64_t unused) {
    if (unused > whole) return 100;
    const uint64_t used = whole - unused;
    uint64_t scaled;
    if (__builtin_mul_overflow(used, uint64_t{100}, &scaled))
        return static_cast<unsigned>(used / (whole / 100));
    return static_cast<unsigned>(scaled / whole);
}

void print_number(int width, uint64_t number) {
    printf(" %*llu", width, static_cast<unsigned long long>(number));
}

void print_size(uint64_t size, const Options& opt) {
    if (opt.human) {
        putchar(' ');
        gn_printsize(size_width(opt) - 1, size);
    } else {
        print_number(size_width(opt), size / 1024);
    }
}

void print_header(const Options& opt) {
    const int width = size_width(opt);
    printf("%-*s ", device_width, "Filesystem");
    if (opt.type) printf("%-*s ", type_width, "Type");
    printf("%*s %*s %*s %4s ", width, opt.human ? "Size" : "1K-blocks", width, "Used", width, "Avail",
           "Use%");
    if (opt.location) printf("%*s %*s ", location_width, "B-First", location_width, "B-Count");
    if (opt.inodes)
        printf("%*s %*s %*s %5s ", inode_width, "Inodes", inode_width, "IUsed", inode_width, "IFree",
               "IUse%");
    fputs("Mounted on\n", stdout);
}

void gn_df_show(const FileSystem& fs, const char* mount_path, const Options& opt) {
    const bool hosted = fs.host_name[0] != '\0';
    char device[sizeof fs.device_name + 16];
    snprintf(device, sizeof device, "%c%s/%i", hosted ? '+' : '-', hosted ? fs.host_name : fs.device_name,
             hosted ? fs.host_unit : fs.device_unit);
    printf("%-*.*s", device_width, device_width - 1, device);
    if (opt.type) printf(" %-*s", type_width, type_name(fs.type));

    print_size(fs.blocks * fs.block_size, opt);
    print_size((fs.blocks - fs.free_blocks) * fs.block_size, opt);
    print_size(fs.free_blocks * fs.block_size, opt);
    if (fs.blocks == 0) {
        fputs("    -", stdout);
    } else {
        printf(" %3u%%", percentage(fs.blocks, fs.free_blocks));
    }

    if (opt.location) {
        if (fs.first_block == 0 && fs.block_count == 0) {
            printf(" %*s %*s", location_width, "-", location_width, "-");
        } else {
            print_number(location_width, fs.first_block);
            print_number(location_width, fs.block_count);
        }
    }
    if (opt.inodes) {
        print_number(inode_width, fs.inodes);
        print_number(inode_width, fs.inodes - fs.free_inodes);
        print_number(inode_width, fs.free_inodes);
        if (fs.inodes == 0) {
            fputs("     -", stdout);
        } else {
            printf("  %3u%%", percentage(fs.inodes, fs.free_inodes));
        }
    }
    printf(" %s\n", mount_path);
}

void report(const char* path, int error) {
    cli::error("df: '%s': %s\n", path, gn_strerror(error));
}

bool contains(const Vector<uint64_t>& ids, uint64_t id) {
    for (const uint64_t known : ids) {
        if (known == id) return true;
    }
    return false;
}

int show_mount_points(const Options& opt) {
    Vector<uint64_t> shown;
    if (!shown.create(32)) return cli::fail("df: could not allocate memory\n");
    MountPoints mount_points;
    if (!mount_points.opened()) return 0;
    int status = 0;
    while (const char* path = mount_points.next()) {
        FileSystem fs;
        if (platform::statfs(path, &fs) != 0) {
            report(path, errno);
            status = 1;
            continue;
        }
        if (!opt.all) {
            if (contains(shown, fs.id)) continue;
            if (!shown.push_back(fs.id)) status = cli::fail("df: could not allocate memory\n");
        }
        gn_df_show(fs, path, opt);
    }
    if (errno != 0) return cli::fail("df: could not allocate memory\n");
    return status;
}

int show_operands(std::span<char* const> operands, const Options& opt) {
    int status = 0;
    for (const char* operand : operands) {
        FileSystem fs;
        char mount_path[PATH_MAX];
        if (statfsmnt(operand, &fs, mount_path, sizeof mount_path) == nullptr) {
            report(operand, errno);
            status = 1;
            continue;
        }
        gn_df_show(fs, mount_path, opt);
    }
    return status;
}

}  // namespace

int gn_df(int argc, char** argv) {
    Options opt;
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'a': opt.all = true; break;
        case 'h': opt.human = true; break;
        case 'i': opt.inodes = true; break;
        case 'L': opt.location = true; break;
        case 'T': opt.type = true; break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "df: unknown switch: -%c\n", c);
        }
    }
    print_header(opt);
    const int status =
        argc == 0 ? show_mount_points(opt) : show_operands({argv, static_cast<size_t>(argc)}, opt);
    return output::finish("df", status);
}
