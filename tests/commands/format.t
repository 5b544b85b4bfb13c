Refusals, with a mount table of our own, in a namespace of our own: whatever went wrong here, no device would be there.
Needs: unshare -m true

  $ streams garnel format a b; streams garnel format -t
  2> format: extra operand 'b'
  2> format: -t: missing argument
  [1]
  $ mkdir -p a b c d/e f
  $ sed "s: /\([a-f][ /]\): $PWD/\1:" > table <<'END'
  > 2 1 245:99 / /a rw - ext4 /dev/none rw
  > 3 1 245:99 / /b rw - ext4 /dev/none rw
  > 4 1 245:98 /sub /c rw - ext4 /dev/none rw
  > 5 1 245:97 / /d rw - ext4 /dev/none rw
  > 6 5 0:95 / /d/e rw - tmpfs none rw
  > 7 1 245:96 / /f rw - ext4 /dev/none rw
  > END
  $ for n in 94 97 99; do mknod block$n b 245 $n; done; mknod character c 245 1
  $ try() { for operand; do told unshare -m sh -c 'mount --bind table /proc/$$/mountinfo; exec garnel format -y "$0"' "$operand" </dev/null; done; }
  $ try none f/. block94 table character a block99 c d block97 d/e f /
  2 2> format: none: No such file or directory
  3 2> format: f/.: hidden under another mount
  2 2> format: block94: not mounted
  2 2> format: table: not a mount point
  2 2> format: character: not a mount point
  3 2> format: a: mounted elsewhere too
  3 2> format: block99: mounted elsewhere too
  3 2> format: c: only a directory of it is mounted
  3 2> format: d: this mountpoint contains mountpoints
  3 2> format: block97: this mountpoint contains mountpoints
  3 2> format: d/e: not on a block device
  3 2> format: f: hidden under another mount
  2 2> format: /: not a mount point
  $ echo "1 1 245:96 / / rw - ext4 /dev/none rw" >> table; try / f; mknod block96 b 245 96; try block96
  3 2> format: /: holds the root file system
  3 2> format: f: holds the root file system
  3 2> format: block96: holds the root file system
  $ mknod none c 0 0; unshare -m sh -c 'mount --bind none /proc/$$/mountinfo; exec garnel format -y a'; echo $?
  format: a: No such device or address
  2
