Rights that the executable's owner and group would lend are given up at once. Another program shows that they would
count; where they do not, or without the right to prepare this, there is nothing to see.

Needs: [ "$(id -u)" = 0 ]

  $ shared=$(mktemp -d /tmp/garnel.XXXXXX) && chmod 755 "$shared" && cd "$shared"
  $ cp "$(command -v garnel)" garnel && cp "$(command -v cat)" other && echo user > user && echo group > group
  $ chown 65533 user && chgrp 65532 group && chmod 400 user && chmod 040 group
  $ chown 65533:65532 garnel other && chmod 6755 garnel other
  $ stranger() { ASAN_OPTIONS=detect_leaks=0 setpriv --reuid 65534 --regid 65534 --clear-groups "$@"; }
  $ stranger ./other user group > read || { rm -rf "$shared"; exit 80; }
  $ stranger ./garnel cat user group
  cat: user: Permission denied
  cat: group: Permission denied
  [1]
  $ chmod 755 garnel && setpriv --reuid 65533 --regid 65532 --clear-groups ./garnel cat user group
  user
  group
  $ rm -rf "$shared"
