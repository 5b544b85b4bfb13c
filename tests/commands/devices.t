Devices and owners, which only the superuser can make, and not in every container.

Needs: [ "$(id -u)" = 0 ] && d=$(mktemp -d) && mknod $d/c c 1 3 && rm -r $d

Numbers of devices are taken in any base and narrowed to 32 bits:

  $ garnel mknod null c 1 3 -m 0600 && garnel mknod block b 0x7 0400001 && garnel mknod u u 4294967297 5z
  $ stat -c '%A %Hr,%Lr %n' *; echo gone >null && stat -c %s null
  brwxr-xr-x 7,131073 block
  crw------- 1,3 null
  crwxr-xr-x 1,5 u
  0

With ls, a group is shown as the user who has its number, though it may have another name. Ids without a user are numbers.

  $ : >file; : >ids; : >nobodys; chown 1234567:7654321 file; chown 4294967294:4294967294 ids; chown 0:"$(id -u nobody)" nobodys
  $ chmod 7777 file; chmod 660 block; chmod 601 null; garnel ls -lT; garnel ls -cFL block null file | cat -v
  brw-rw---- 1       root       root 0 block
  -rwxrwxrwx 1    1234567    7654321 0 file
  -rw-r--r-- 1 4294967294 4294967294 0 ids
  -rw-r--r-- 1       root     nobody 0 nobodys
  crw------x 1       root       root 0 null
  crwxr-xr-x 1       root       root 0 u
  ^[[01;33mblock^[[0m
  ^[[01;33mnull^[[0m
  ^[[01;32mfile^[[0m*
  $ chown 1234567:4294967294 block
  $ garnel stat block null | sed -nE -e 's/ Blocks.*  (.*)/ \1/p' -e 's/.*Links/Links/p' -e '/Uid/p'
    Size: 0          block device
  Links: 1     Device type: 7,131073
  Access: (0660/brw-rw----)  Uid: (1234567) Gid: (4294967294)
    Size: 0          character device
  Links: 1     Device type: 1,3
  Access: (0601/crw------x)  Uid: (    0/    root) Gid: (    0/    root)
