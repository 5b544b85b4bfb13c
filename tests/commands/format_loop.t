Real file systems, on files: each loop device goes with its mount, and that with its namespace.
Needs: PATH=$PATH:/sbin:/usr/sbin; d=$(mktemp -d); truncate -s 1M $d/i && mkfs.ext2 -qF $d/i && unshare -m mount -o loop $d/i $d; r=$?; rm -r $d; exit $r

  $ PATH=$PWD/mkfs:$PATH:/sbin:/usr/sbin
  $ mkdir m n mkfs
  $ private() { truncate -s 0 image; truncate -s 4M image; mkfs.ext4 -qF -L old image; unshare -m sh -c '
  > mount -o loop,noatime,nodev,nodelalloc image m; touch m/kept; device=$(sed -n "s:.* $PWD/m .* - ext[0-9] \([^ ]*\) .*:\1:p" /proc/self/mountinfo)
  > state() { echo $? $(ls m) $(sed -n "s:^[^/]*/ $PWD/m \([^ ]*\) [^-]*- \(ext.\) $device \(.*\):mounted \1 \2 \3:p" /proc/self/mountinfo); }
  > { '"$1"'
  > } 2>&1' | sed "s:$PWD/:PWD/:g; s:/dev/loop[0-9]*:DEVICE:g; s:^-loop\([0-9]*\)/\1 :-loopN/N :"; }

It asks, and only "yes" will do; the mount point and the options stay, whatever the device is called:

  $ private 'state; for answer in "" y Yes yess "yes " "yes and no"; do echo "$answer" | garnel format m >/dev/null; echo $?; done 2>&1 | sort | uniq -c; garnel format m < /dev/null; state
  > echo yes | garnel format m; echo " $?"; state
  > touch m/kept; mknod other b 7 ${device#/dev/loop}; ln -s other link; garnel format -L "the label" -vty ext2 link; echo $?; garnel format -t ext2 -L "the label" -vy link; state; garnel df m | tail -n 1 | cut -c 1-9; dd if=image bs=1 skip=1144 count=9 status=none; rm other'
  0 kept lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc
        6 4
        6 format: m: not confirmed
  format: PWD/m: everything on DEVICE (ext4) will be lost, it becomes ext4
  Type yes to continue: format: m: not confirmed
  4 kept lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc
  format: PWD/m: everything on DEVICE (ext4) will be lost, it becomes ext4
  Type yes to continue:  0
  0 lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc
  format: PWD/m: everything on DEVICE (ext4) will be lost, it becomes ext2
  Type yes to continue: format: link: not confirmed
  4
  format: PWD/m: detach
  format: PWD/m: mkfs.ext2
  format: PWD/m: mount
  0 lost+found mounted rw,nodev,noatime ext2 rw
  -loopN/N 
  the label (no-eol)
  $ private 'echo yes | garnel format -v $PWD/m/. | tail -n 4; exec 3>m/open; touch m/kept; garnel format -y m; state; cd m; garnel format -y .; echo $?'
  format: PWD/m: everything on DEVICE (ext4) will be lost, it becomes ext4
  Type yes to continue: format: PWD/m: detach
  format: PWD/m: mkfs.ext4
  format: PWD/m: mount
  format: PWD/m: Device or resource busy
  5 kept lost+found open mounted rw,nodev,noatime ext4 rw,nodelalloc
  format: PWD/m: Device or resource busy
  5

What cannot be done is known before:

  $ private 'garnel format -yt none m; echo $?; garnel format -yt "" m; garnel format -yt ../x m; garnel format -yt 0123456789012345678901234567890123456789012345678901234567890123456789 m
  > echo exit 0 > mkfs/mkfs.odd; garnel format -yt odd m; chmod +x mkfs/mkfs.odd; garnel format -yt odd -L x m; echo $?
  > setpriv --bounding-set=-sys_admin garnel format -y m; echo $?; mount --bind m n; garnel format -y n; umount n; mkdir m/in; mount -t tmpfs none m/in; garnel format -y m; umount m/in; mount -t tmpfs none m; garnel format -y $device; garnel format -y m; umount m; state'
  format: mkfs.none: No such file or directory
  3
  format: : invalid type
  format: ../x: invalid type
  format: 0123456789012345678901234567890123456789012345678901234567890123456789: invalid type
  format: mkfs.odd: Permission denied
  format: mkfs.odd: not known how to give a label
  3
  format: PWD/m: Operation not permitted
  3
  format: n: mounted elsewhere too
  format: m: this mountpoint contains mountpoints
  format: DEVICE: this mountpoint contains mountpoints
  format: m: not on a block device
  0 in kept lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc

A mkfs that cannot be started, or fails without having written, leaves all as it was; so does a device that is in use where it cannot be seen:

  $ printf '#!/none\n' > mkfs/mkfs.unstartable; printf '#!/bin/sh\necho "$@" | sed "s:/dev/.*:DEVICE:"; exit 3\n' > mkfs/mkfs.refusing; printf '#!/bin/sh\necho x > $1; exit 4' > mkfs/mkfs.half; printf '#!/bin/sh\ntrap - TERM; kill $PPID; kill $$' > mkfs/mkfs.killed
  $ chmod +x mkfs/*; private 'garnel format -vyt refusing m; echo $?; for t in unstartable killed odd; do garnel format -yt $t m; state; done'
  format: PWD/m: detach
  format: PWD/m: mkfs.refusing
  DEVICE
  format: mkfs.refusing: failed with status 3
  format: PWD/m: mount again
  7
  format: mkfs.unstartable: No such file or directory
  6 kept lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc
  format: mkfs.killed: failed with status 143
  7 kept lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc
  format: PWD/m: No such device
  8
  $ private 'mkfifo pipe; unshare -m sh -c "echo > pipe; read x < pipe" & read x < pipe; garnel format -yt ext2 m; state; echo > pipe; wait'
  format: DEVICE: Device or resource busy
  6 kept lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc
  $ private 'garnel format -yt half m; state; ls m'
  format: mkfs.half: failed with status 4
  format: PWD/m: detached, as its device was written to
  7
  $ printf '#!/bin/sh\nblkdiscard -f $1; exit 5' > mkfs/mkfs.wiping; chmod +x mkfs/*; private 'garnel format -yt wiping m 2>&1 | tail -n 1; ls m'
  format: PWD/m: detached, as its device was written to
  $ printf '#!/bin/sh\nsleep 0.1; echo 2>/dev/null; touch finished' > mkfs/mkfs.talking; chmod +x mkfs/*; private 'garnel format -yvt talking m 2>/dev/null | true; ls finished'
  finished
  $ private 'garnel format -yv $device | true; state'
  format: write error: Broken pipe
  0 lost+found mounted rw,nodev,noatime ext4 rw,nodelalloc

Every kind of mkfs is told in its own way to give a name and not to hesitate:

  $ for t in xfs vfat exfat; do cp mkfs/mkfs.refusing mkfs/mkfs.$t; done; private 'for t in xfs vfat exfat; do garnel format -vyt $t -L "a name" m | grep name; done'
  format: mkfs.xfs: failed with status 3
  -f -L a name DEVICE
  format: mkfs.vfat: failed with status 3
  -I -n a name DEVICE
  format: mkfs.exfat: failed with status 3
  -L a name DEVICE

Killed at any moment before mkfs writes, it leaves the file system as it was, at worst detached:

  $ printf '#!/bin/sh\nexec sleep 0.1' > mkfs/mkfs.late; chmod +x mkfs/*; private 'for delay in 0.001 0.002 0.004 0.008 0.016 0.03 0.06; do
  > garnel format -yt late m & sleep $delay; kill -9 $!; wait $!; mountpoint -q m || mount -o loop,nodelalloc image m; ls -x m; umount m; e2fsck -fn image; echo $?; mount -o loop,nodelalloc image m
  > done 2>/dev/null' | grep -v : | sort | uniq -c | sed 's/^ *//'
  7 0
  7 kept  lost+found
