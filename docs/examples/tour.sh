#!/bin/sh
# A tour of the toolbox, with nothing in PATH but its links:
#     PATH=/usr/lib/garnel/bin /bin/sh tour.sh
# It works in a directory of its own, which it removes, and stops with a message where something is not as it should be.
set -eu

# A shell has its own echo, test and some more: these are reached by the path of the links.
cat=$(command -v cat) tools=${cat%/*}
say() { "$tools/echo" "$@"; }
same() { "$tools/test" "$1" = "$2" || { say "tour: '$1' is not '$2'" >&2; exit 1; }; }

export TMP="${TMPDIR:-/tmp}"
place=$(realpath -e "$(mktemp -d --tmpdir "$TMP" tour.XXXXXXXX)")
cd "$place"
trap 'cd / && rm -r "$place"' EXIT
same "$("$tools/pwd")" "$place"

say '* Who am I?'
say "$(uname -s) on $(arch), named $(hostname)"
tty -s || say 'nobody looks on: standard input is no terminal'
nslookup 127.0.0.1 | head -n 1

say '* Files and directories'
mkdir -p garden/beds garden/shed
for plant in rose tulip iris; do say "$plant" >"garden/beds/$plant"; done
touch -t 202404011200 garden/beds/rose
cp -r garden copy
mv copy/beds/iris copy/shed
same "$(ls copy/shed)" iris
ln -s ../beds/rose garden/shed/favourite
same "$(readlink garden/shed/favourite)" ../beds/rose
chmod -v u=rw,go= garden/beds/tulip
stat -U garden/beds/rose | tail -n 2
# shellcheck disable=SC2046  # split into words on purpose
set -- $(ls -lT garden/beds/rose)
chown "$3" garden/beds/rose || say "no user $3 in the database here"
chgrp "$4" garden/beds/rose || say "no group $4 in the database here"
tree -F garden
df . | wc -l

say '* Streams'
seq 30 >numbers
same "$(head -n 3 numbers | tail -n 1)" 3
cat garden/beds/rose garden/beds/tulip garden/beds/iris | sort -o sorted
same "$(head -n 1 sorted)" iris
sort -c sorted
say 'one line, three places' | tee first second
cmp first second
yes again | head -n 2 | wc -w
dd if=numbers of=part bs=6 count=1 status=dnd
hd part
truncate -s 1M disk
same "$(wc -c disk)" '1048576 disk'

say '* An archive, made by the shell and read by cpio2'
newc() {    # NAME TEXT: an entry of a cpio archive in the format "newc"
    printf '070701%08x%08x%08x%08x%08x%08x%08x%08x%08x%08x%08x%08x%08x%s' \
        1 $((0100644)) 0 0 1 0 ${#2} 0 0 0 0 $((${#1} + 1)) 0 "$1"
    dd if=/dev/zero bs=1 count=$((4 - (110 + ${#1}) % 4))
    printf %s "$2"
    dd if=/dev/zero bs=1 count=$(((4 - ${#2} % 4) % 4))
}
{ newc motd 'Welcome.'; newc TRAILER!!! ''; } >image </dev/null
cpio2 list -l image
same "$(cpio2 cat image motd)" Welcome.

say '* One command for another'
same "$(env -i PLANT=rose "$tools/env" | head -n 1)" PLANT=rose
same "$(which cat)" "$cat"
time -p ls garden >/dev/null
watch -n 0.1 -g 'ls grown 2>&1; : >grown' | tail -n 1
stty size || say 'as said: no terminal'
if chroot / "$tools/true"; then
    same "$(su -c pwd)" "$place"
else
    say 'another root, and another user, are for the superuser'
fi
format garden || say 'as it should: nothing is mounted there'

say '* For scripts'
"$tools/true" && ! "$tools/false"
# shellcheck disable=SC2288,SC2171  # this one is a program
"$tools/[" 2 -lt 10 ]
sleep -t 1
mknod queue p
"$tools/test" -p queue
sync
umount garden || say 'as it should: nothing is mounted there'

say '* And away again'
rm -r copy queue garden/shed/favourite garden/beds/rose garden/beds/tulip garden/beds/iris
rmdir -p garden/shed || say 'garden still has its beds'
rmdir -v garden/beds garden
say 'That was the tour.'
