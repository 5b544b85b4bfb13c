Owners and devices, which only the superuser can make.

Needs: [ "$(id -u)" = 0 ] && d=$(mktemp -d) && mknod $d/c c 1 3 && rm -r $d

  $ mknod block b 7 300 && mknod character c 1 3
  $ : >file; : >ids; : >nobodys; chown 1234567:7654321 file; chown 4294967294:4294967294 ids
  $ chown -h 0:"$(id -u nobody)" nobodys; chmod 660 block character; chmod 7777 file

A group is shown as the user who has its number, though it may have another name; ids without a user are numbers.

  $ garnel ls -lT
  brw-rw---- 1       root       root 0 block
  crw-rw---- 1       root       root 0 character
  -rwxrwxrwx 1    1234567    7654321 0 file
  -rw-r--r-- 1 4294967294 4294967294 0 ids
  -rw-r--r-- 1       root     nobody 0 nobodys
  $ garnel ls -cFL | cat -v
  ^[[01;33mblock^[[0m
  ^[[01;33mcharacter^[[0m
  ^[[01;32mfile^[[0m*
  ids^[[0m
  nobodys^[[0m
