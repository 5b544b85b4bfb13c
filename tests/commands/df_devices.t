What is told of block devices, from a made-up description of them: a partition and a whole disk.
Needs: unshare -m true

  $ mkdir a b
  $ cat >script <<'END'
  > mount -t tmpfs -o size=1m /dev/part a
  > mount -t tmpfs -o size=1m /dev/disk b
  > device() { sed -n "s:^[0-9]* [0-9]* \([0-9]*\:[0-9]*\) / $PWD/$1 .*:\1:p" /proc/self/mountinfo; }
  > part=$(device a) disk=$(device b)
  > mount -t tmpfs none /sys
  > mkdir -p /sys/dev/block /sys/devices/disk/part
  > cd /sys/devices/disk
  > printf 'MAJOR=8\nMINOR=17\nDEVNAME=array/c0d1\nDEVTYPE=disk\n' >uevent; echo 4000000 >size
  > printf 'MAJOR=8\nMINOR=18\nDEVNAME=array/c0d1p3\nDEVTYPE=partition\nPARTN=3\n' >part/uevent
  > echo 2048 >part/start; echo 3000000 >part/size
  > ln -s ../../devices/disk "/sys/dev/block/$disk"
  > ln -s ../../devices/disk/part "/sys/dev/block/$part"
  > cd "$OLDPWD"
  > garnel df -L a b
  > garnel umount -v a | grep unit
  > END
  $ unshare -m sh script | sed "s:$PWD:PWD:"
  Filesystem        1K-blocks         Used        Avail Use%    B-First    B-Count Mounted on
  +array/c0d1/1          1024            0         1024   0%       2048    3000000 PWD/a
  -array/c0d1/1          1024            0         1024   0%          0    4000000 PWD/b
  umount: PWD/a: filesystem=array/c0d1p3, unit=18
