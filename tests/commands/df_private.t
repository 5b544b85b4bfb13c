Mounts are made in namespaces of their own:
Needs: unshare -m true

  $ private() { unshare -m sh -ec "$1" 2>&1 | sed "s:$PWD:PWD:g"; }
  $ mkdir a b c

Sizes are in units of 1024 bytes or, cut off, in larger ones; the numbers are those of statvfs:

  $ private '
  > mount -t tmpfs -o size=40m,nr_inodes=2000 a-rather-long-source a
  > head -c 3000000 /dev/zero >a/file; mkdir a/d
  > garnel df -T -i a; garnel df -hL a/d/..; garnel df -h a/file
  > stat -f -c "%S %b %f %c %d" a/file; garnel df | tail -n 1'
  Filesystem     Type          1K-blocks         Used        Avail Use%   Inodes    IUsed    IFree IUse% Mounted on
  -a-rather-lon  tmpfs             40960         2932        38028   7%     2000        3     1997    0% PWD/a
  Filesystem      Size  Used Avail Use%    B-First    B-Count Mounted on
  -a-rather-lon    40M 2932k   37M   7%          -          - PWD/a
  Filesystem      Size  Used Avail Use% Mounted on
  -a-rather-lon    40M 2932k   37M   7% PWD/a
  4096 10240 9507 2000 1997
  -a-rather-lon         40960         2932        38028   7% PWD/a

Names and sources may hold anything, or nothing:

  $ private '
  > nl="
  > "
  > odd="$PWD/a/tab	blank\\040 back\\slash${nl}line#end"
  > mount -t tmpfs -o size=1m "" a; mkdir "$odd" "$odd/in"
  > mount -t tmpfs -o size=2m "s p\\c${nl}e" "$odd"; mkdir "$odd/in"
  > mount -t tmpfs -o size=3m 12345678901 "$odd/in"
  > garnel df "$odd/in/." "$odd" a
  > garnel umount -R -v a | grep -c " from vfs$"; cat /proc/self/mountinfo | grep -c "$PWD" || true'
  Filesystem        1K-blocks         Used        Avail Use% Mounted on
  -12345678901/          3072            0         3072   0% PWD/a/tab\tblank\\040 back\\slash (esc)
  line#end/in
  -s p\c
  e/0             2048            0         2048   0% PWD/a/tab\tblank\\040 back\\slash (esc)
  line#end
  -/0                    1024            0         1024   0% PWD/a
  6
  0

Paths may be longer than any buffer:

  $ private '
  > start=$PWD; mount -t tmpfs -o size=1m x a; cd -P a; name=$(printf %0250d 0); exec 2>/dev/null
  > down() { for i in $(seq $1); do mkdir $name; cd -P $name || :; done; }
  > down 15; long=$(pwd -P); mount -t tmpfs -o size=2m long .; cd -P "$long"; down 20; mount -c -t tmpfs -o size=4m longer .; cd -P /
  > garnel df | tail -n 2 >"$start/paths"; garnel df "$long/." "$long/$name"; exec 2>&1; garnel umount -R "$long" || :; umount -l "$long"; garnel umount -v "$long"' |
  >   sed 's:/00*:/0:g'
  Filesystem        1K-blocks         Used        Avail Use% Mounted on
  -long/0                2048            0         2048   0% PWD/a/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0
  -long/0                2048            0         2048   0% PWD/a/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0
  umount: PWD/a/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0: failed to stat filesystem
  umount: PWD/a/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0: stat filesystem
  umount: PWD/a/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0: not mounted
  $ cut -c 1-54 paths; test $(wc -c <paths) -gt 8000
  -long/0                2048            0         2048 
  -longer/0              4096            0         4096 

A file system is shown once, at its first mount point, unless -a is given; what another mount hides is not shown at all:

  $ private '
  > row() { garnel df "$@" | tail -n $n | awk "{ print \$1, \$NF }" | xargs; }
  > mount -t tmpfs -o size=1m one a; mkdir a/sub a/mnt; mount --bind a/sub b; mount -t tmpfs -o size=1m two a/mnt
  > mount -t tmpfs -o size=1m three c
  > n=3; row; row b a/mnt a/sub; n=4; row -a; cd a; mount -t tmpfs -o size=9m top "$PWD"; row -a; n=5; row . "$PWD" sub/.. mnt ../b'
  -one/0 PWD/a -two/0 PWD/a/mnt -three/0 PWD/c
  -one/0 PWD/b -two/0 PWD/a/mnt -one/0 PWD/a
  -one/0 PWD/a -one/0 PWD/b -two/0 PWD/a/mnt -three/0 PWD/c
  -top/0 PWD/a -one/0 PWD/b -three/0 PWD/c -top/0 PWD/a
  -one/0 PWD/a -top/0 PWD/a -top/0 PWD/a -two/0 PWD/a/mnt -one/0 PWD/b

What is mounted on the root directory itself hides nothing, since paths begin below it:

  $ private 'mount -t tmpfs -o size=1m one a; mount -t tmpfs top /; garnel df | tail -n 1; garnel umount /'
  -one/0                 1024            0         1024   0% PWD/a
  umount: /: this mountpoint contains mountpoints.

Without a mount table there is nothing to show but the header; an empty one is no failure either:

  $ mknod none c 0 0
  $ for table in none /dev/null; do unshare -m sh -c 'mount --bind $1 /proc/$$/mountinfo; exec garnel df' sh $table; done
  Filesystem        1K-blocks         Used        Avail Use% Mounted on
  Filesystem        1K-blocks         Used        Avail Use% Mounted on

One that was torn, as mounts moved while it was read, is no trap:

  $ printf '%s - tmpfs x rw\n' '1 2 0:5 / /x/a rw' '2 1 0:6 / /x/b rw' >torn
  $ timeout 5 unshare -m sh -c 'mount --bind torn /proc/$$/mountinfo; exec garnel df' 2>&1
  Filesystem        1K-blocks         Used        Avail Use% Mounted on
  df: '/x/a': No such file or directory
  df: '/x/b': No such file or directory
  [1]
