// The command table: the one place that names the commands and their entry routines. A new command is one row
// here and one file in commands/.

#pragma once

// The order is the one that "help", "--list", "--install" and "--uninstall" show; scripts see it.
#define GARNEL_TOOLS(TOOL)        \
    TOOL("cat", gn_cat)           \
    TOOL("chmod", gn_chmod)       \
    TOOL("chown", gn_chown)       \
    TOOL("chgrp", gn_chgrp)       \
    TOOL("chroot", gn_chroot)     \
    TOOL("cmp", gn_cmp)           \
    TOOL("cp", gn_cp)             \
    TOOL("cpio2", gn_cpio2)       \
    TOOL("dd", gn_dd)             \
    TOOL("df", gn_df)             \
    TOOL("echo", gn_echo)         \
    TOOL("env", gn_env)           \
    TOOL("false", gn_false)       \
    TOOL("format", gn_format)     \
    TOOL("hd", gn_hd)             \
    TOOL("head", gn_head)         \
    TOOL("hostname", gn_hostname) \
    TOOL("ln", gn_ln)             \
    TOOL("ls", gn_ls)             \
    TOOL("mkdir", gn_mkdir)       \
    TOOL("mknod", gn_mknod)       \
    TOOL("mktemp", gn_mktemp)     \
    TOOL("mv", gn_mv)             \
    TOOL("nslookup", gn_nslookup) \
    TOOL("pwd", gn_pwd)           \
    TOOL("readlink", gn_readlink) \
    TOOL("realpath", gn_realpath) \
    TOOL("rm", gn_rm)             \
    TOOL("rmdir", gn_rmdir)       \
    TOOL("seq", gn_seq)           \
    TOOL("sleep", gn_sleep)       \
    TOOL("sort", gn_sort)         \
    TOOL("stat", gn_stat)         \
    TOOL("stty", gn_stty)         \
    TOOL("su", gn_su)             \
    TOOL("sync", gn_sync)         \
    TOOL("tail", gn_tail)         \
    TOOL("test", gn_test)         \
    TOOL("[", gn_brace)           \
    TOOL("time", gn_time)         \
    TOOL("touch", gn_touch)       \
    TOOL("tree", gn_tree)         \
    TOOL("true", gn_true)         \
    TOOL("truncate", gn_truncate) \
    TOOL("tee", gn_tee)           \
    TOOL("tty", gn_tty)           \
    TOOL("umount", gn_umount)     \
    TOOL("watch", gn_watch)       \
    TOOL("wc", gn_wc)             \
    TOOL("which", gn_which)       \
    TOOL("yes", gn_yes)           \
    TOOL("uname", gn_uname)       \
    TOOL("arch", gn_arch)

// An entry routine takes the arguments behind the command's name (argv[0] is the first of them) and returns
// the exit status.
#define GARNEL_DECLARE(name, entry) int entry(int argc, char** argv);
GARNEL_TOOLS(GARNEL_DECLARE)
#undef GARNEL_DECLARE

struct u_tool {
    const char* name;
    int (*entry)(int argc, char** argv);
};

// The rows in order, closed by one whose name is null.
extern const u_tool u_tools[];
