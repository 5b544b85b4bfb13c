#!/bin/sh
# A rescue session, on an image of a disk instead of a disk:
#     PATH=/usr/lib/garnel/bin /bin/sh rescue.sh
# Its boot sector loses its signature, which is found, looked at and repaired.
set -eu

place=$(mktemp -d --tmpdir "${TMPDIR:-/tmp}" rescue.XXXXXXXX)
cd "$place"
trap 'cd / && rm -r "$place"' EXIT
echo=$(command -v cat) echo=${echo%/*}/echo

# The disk: 1 MiB, the bytes 55 aa at the end of its first sector, some text behind it.
truncate -s 1M disk
"$echo" -ne '\x55\xaa' | dd of=disk bs=1 seek=510
seq 1000 | dd of=disk seek=1

# Is there room for a copy? "df -hT ." tells; on a real disk, what is mounted from it is detached first, with all that
# is mounted below:
#     umount -R -v /mnt
df -h .
dd if=disk of=backup bs=64K status=dots
cmp disk backup

# The accident.
dd if=/dev/zero of=disk count=1

# Where do the two differ, and what was there? (cmp counts from 1.)
cmp -l disk backup || "$echo" 'the disk has changed'
hd -s 0x1f0 -n 0x10 disk
hd -s 0x1f0 -n 0x10 backup

# One sector is put back. dd never cuts the file that it writes, so the rest of the disk stays.
dd if=backup of=disk count=1
cmp disk backup
"$echo" 'the disk is as it was'
