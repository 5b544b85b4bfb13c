Mounts are made in namespaces of their own:
Needs: unshare -m true

  $ private() { unshare -m sh -c 'mounts() { echo $? mounted: $(sed -n "s:^[^/]*[^ ]* $PWD/\([^ ]*\) .* - [^ ]* \([^ ]*\) .*:\1 \2:p" /proc/self/mountinfo); }
  > mkdir -p top; mount -t tmpfs none top; mkdir top/m top/mm top/s
  > '"$1" 2>errors | sed "s:$PWD:PWD:g"; sed "s:$PWD:PWD:g; s/^/2> /" errors; }

Without options it is quiet, and the directory stays:

  $ private 'mount -t tmpfs one top/m; mount -t tmpfs two top/mm
  > touch top/m/x; garnel umount top/m top/m; mounts; ls -d top/m'
  1 mounted: top none top/mm two
  top/m
  2> umount: PWD/top/m: not mounted

With -v it tells its steps; -D removes the directory, if it can:

  $ private 'mount -t tmpfs "t wo" top/mm; mount -t tmpfs three top/s; mount -t tmpfs four top/s
  > garnel umount -D -v top/mm/../mm; garnel umount -D top/s; echo $?; garnel umount -vD top/s; echo $(ls top); mounts'
  umount: PWD/top/mm: stat filesystem
  umount: PWD/top/mm: filesystem=t wo, unit=0
  umount: PWD/top/mm: umount from vfs
  umount: PWD/top/mm: umounted from vfs, removing mount directory
  0
  umount: PWD/top/s: stat filesystem
  umount: PWD/top/s: filesystem=three, unit=0
  umount: PWD/top/s: umount from vfs
  umount: PWD/top/s: umounted from vfs, removing mount directory
  m
  0 mounted: top none

Its first three steps are not shown again:

  $ brief() { private "$1" | grep -v ': stat filesystem$\|: filesystem=.*, unit=0$\|: umount from vfs$'; }

What is mounted below keeps it from being detached. "top/mm" is not below "top/m", but everything is below "/":

  $ brief 'mount -t tmpfs one top/m; mkdir -p top/m/a/b; mount -t tmpfs two top/m/a; mkdir -p top/m/a/b; mount -t tmpfs three top/m/a/b
  > mkdir top/m/a-b; mount -t tmpfs four top/m/a-b; mount -t tmpfs five top/mm
  > garnel umount -v top/m; garnel umount -f /; mounts; garnel umount -R top/m; mounts
  > garnel umount -R -D -v top; mounts; ls -d top'
  umount: PWD/top/m: this mountpoint contains mountpoints.
  umount: /: this mountpoint contains mountpoints.
  1 mounted: top none top/m one top/m/a two top/m/a/b three top/m/a-b four top/mm five
  0 mounted: top none top/mm five
  umount: PWD/top/mm: umounted from vfs, removing mount directory
  umount: PWD/top: umounted from vfs, removing mount directory
  0 mounted:
  2> ls: cannot access 'top': No such file or directory

The deepest go first; the first that is busy ends it:

  $ brief 'mount -t tmpfs one top/m; mkdir top/m/a top/m/b top/m/c; for i in a b c; do mount -t tmpfs $i top/m/$i; done
  > exec 9>top/m/b/open; garnel umount -vR top/m top/m/a; mounts; garnel umount -f top/m/b; exec 9>&-; garnel umount -R -D top/m; mounts; echo $(ls top)'
  umount: PWD/top/m/c: umounted from vfs
  umount: PWD/top/m/b: failed to umount from vfs
  umount: PWD/top/m/a: umounted from vfs
  1 mounted: top none top/m one top/m/b b
  umount: PWD/top/m/b: failed to umount from vfs
  0 mounted: top none
  mm s

Mounts stacked on one another go one by one, and all of them below what is detached; a hidden one is not in the way:

  $ brief 'mount -t tmpfs one top/m; mkdir top/m/in; mount -t tmpfs in top/m/in; mount -t tmpfs two "$PWD/top/m"
  > mounts; garnel umount top/m; mounts; garnel umount top/m
  > mount -t tmpfs two "$PWD/top/m"; mkdir top/m/in; mount -t tmpfs in2 top/m/in; mount -t tmpfs in3 "$PWD/top/m/in"; mounts; garnel umount -R -v top; mounts'
  0 mounted: top none top/m one top/m/in in top/m two
  0 mounted: top none top/m one top/m/in in
  umount: PWD/top/m: this mountpoint contains mountpoints.
  0 mounted: top none top/m one top/m/in in top/m two top/m/in in2 top/m/in in3
  umount: PWD/top/m/in: umounted from vfs
  umount: PWD/top/m/in: umounted from vfs
  umount: PWD/top/m: umounted from vfs
  umount: PWD/top/m/in: umounted from vfs
  umount: PWD/top/m: umounted from vfs
  umount: PWD/top: umounted from vfs
  0 mounted:

A bind mount goes without what it shows; one that goes together with another, as mounts are shared, is not missed:

  $ private 'touch top/m/file top/mm/file; mkdir top/m/d; mount --bind top/m top/s; mount --bind top/m/file top/mm/file; garnel umount top/m; garnel umount top/s top/mm/file; mounts; cat top/m/file
  > mount --make-shared top; mount --bind top/m top/s; mount -t tmpfs both top/m/d; mounts; garnel umount -R top; mounts'
  0 mounted: top none
  0 mounted: top none top/s none top/m/d both top/s/d both
  0 mounted:
  2> umount: PWD/top/m: not mounted

-D removes no file that was mounted on:

  $ brief 'touch top/m/a top/m/b; mount --bind top/m/a top/m/b; garnel umount -vD top/m/b; echo $(ls top/m)'
  umount: PWD/top/m/b: umounted from vfs, removing mount directory
  umount: PWD/top/m/b: failed to remove mount directory
  a b

Who has not the right to is refused:

  $ brief 'mount -t tmpfs one top/m; mounts; setpriv --bounding-set=-sys_admin garnel umount -f top/m; mounts'
  0 mounted: top none top/m one
  umount: PWD/top/m: failed to umount from vfs
  1 mounted: top none top/m one

Without a mount table nothing is detached:

  $ mknod none c 0 0; private 'mount -t tmpfs one top/m; sh -c "mount --bind none /proc/\$\$/mountinfo; exec garnel umount top/m"; mounts'
  1 mounted: top none top/m one
  2> umount: PWD/top/m: failed to get mount list
