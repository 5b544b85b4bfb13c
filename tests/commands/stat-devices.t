Devices and owners, which only the superuser can make.

Needs: [ "$(id -u)" = 0 ] && d=$(mktemp -d) && mknod $d/c c 1 3 && rm -r $d

  $ mknod block b 259 70000 && mknod character c 1 3
  $ chmod 660 block; chmod 601 character; chown 1234567:4294967294 block; chown 0:0 character
  $ garnel stat block character | sed -nE -e 's/ Blocks.*  (.*)/ \1/p' -e 's/.*Links/Links/p' -e '/Uid/p'
    Size: 0          block device
  Links: 1     Device type: 259,70000
  Access: (0660/brw-rw----)  Uid: (1234567) Gid: (4294967294)
    Size: 0          character device
  Links: 1     Device type: 1,3
  Access: (0601/crw------x)  Uid: (    0/    root) Gid: (    0/    root)
