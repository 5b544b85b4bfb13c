// The command table: the one place that names the commands and their entry routines. A new command is one row
// here and one file in commands/.

#pragma once

// The order is the one that "help", "--list", "--install" and "--uninstall" show; scripts see it. READY rows
// have their command; a PENDING row says so when it is called.
#define GARNEL_TOOLS(READY, PENDING) \
    READY("cat", gn_cat)             \
    READY("chmod", gn_chmod)         \
    READY("chown", gn_chown)         \
    READY("chgrp", gn_chgrp)         \
    READY("chroot", gn_chroot)       \
    READY("cmp", gn_cmp)             \
    READY("cp", gn_cp)               \
    READY("cpio2", gn_cpio2)         \
    READY("dd", gn_dd)               \
    READY("df", gn_df)               \
    READY("echo", gn_echo)           \
    READY("env", gn_env)             \
    READY("false", gn_false)         \
    READY("format", gn_format)       \
    READY("hd", gn_hd)               \
    READY("head", gn_head)           \
    READY("hostname", gn_hostname)   \
    READY("ln", gn_ln)               \
    READY("ls", gn_ls)               \
    READY("mkdir", gn_mkdir)         \
    READY("mknod", gn_mknod)         \
    READY("mktemp", gn_mktemp)       \
    READY("mv", gn_mv)               \
    READY("nslookup", gn_nslookup)   \
    READY("pwd", gn_pwd)             \
    READY("readlink", gn_readlink)   \
    READY("realpath", gn_realpath)   \
    READY("rm", gn_rm)               \
    READY("rmdir", gn_rmdir)         \
    READY("seq", gn_seq)             \
    READY("sleep", gn_sleep)         \
    READY("sort", gn_sort)           \
    READY("stat", gn_stat)           \
    READY("stty", gn_stty)           \
    READY("su", gn_su)               \
    READY("sync", gn_sync)           \
    READY("tail", gn_tail)           \
    READY("test", gn_test)           \
    READY("[", gn_brace)             \
    READY("time", gn_time)           \
    READY("touch", gn_touch)         \
    READY("tree", gn_tree)           \
    READY("true", gn_true)           \
    READY("truncate", gn_truncate)   \
    READY("tee", gn_tee)             \
    READY("tty", gn_tty)             \
    READY("umount", gn_umount)       \
    READY("watch", gn_watch)         \
    READY("wc", gn_wc)               \
    READY("which", gn_which)         \
    READY("yes", gn_yes)             \
    READY("uname", gn_uname)         \
    READY("arch", gn_arch)

// An entry routine takes the arguments behind the command's name (argv[0] is the first of them) and returns
// the exit status.
#define GARNEL_DECLARE(name, entry) int entry(int argc, char** argv);
GARNEL_TOOLS(GARNEL_DECLARE, GARNEL_DECLARE)
#undef GARNEL_DECLARE

struct u_tool {
    const char* name;
    int (*entry)(int argc, char** argv);
};

// The rows in order, closed by one whose name is null.
extern const u_tool u_tools[];
