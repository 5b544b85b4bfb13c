#!/bin/sh
# Makes an initial RAM disk that holds the static executable and its links:
#     initramfs.sh build/release/garnel initramfs.cpio
# The host's cpio writes it, for cpio2 only reads. A /init of your own makes it one to boot from.
set -eu

garnel=$(realpath "$1")
image=$(realpath "$2")
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

mkdir -p "$root/bin" "$root/dev" "$root/proc" "$root/sys"
cp "$garnel" "$root/bin/garnel"
(cd "$root/bin" && ./garnel --install)
(cd "$root" && find bin dev proc sys | sort | cpio --quiet -o -H newc -R 0:0 >"$image")

"$garnel" cpio2 list -l "$image"
"$garnel" cpio2 cat "$image" bin/garnel | "$garnel" cmp "$garnel" -
