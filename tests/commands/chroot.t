A command in a root of its own, where nothing is but the toolbox. Only a static executable runs there, which is that of
the release build. The search for leaks wants /proc.

Needs: [ "$(id -u)" = 0 ] && chroot / true && f=$(mktemp) && chown 65534:65534 $f && rm $f

  $ export ASAN_OPTIONS=detect_leaks=0; static=$TESTS/../build/release/garnel; [ -x "$static" ] || exit 80
  $ mkdir -p -m 755 root/bin root/etc && cp "$static" root/bin/garnel && for name in ls pwd; do ln -s garnel root/bin/$name; done
  $ printf 'echo run by a shell\n' >root/script && chmod 755 root/script && touch root/plain; chmod 711 .
  $ printf '#!/bin/garnel echo\n' >root/bin/sh && chmod 755 root/bin/sh
  $ export PATH="/bin:$PATH"; garnel chroot root pwd; garnel chroot root ls /; garnel chroot root ls .. | head -n 1
  /
  bin
  etc
  plain
  script
  bin
  $ for arguments in root 'root /script a b' 'root false' 'root /plain' 'root garnel env -C /none true' 'none true' \
  >     'root/plain true' -u '-u 70001 root ls' '-u daemon:none root ls' '-u 4294967295:1 root ls' '-u : root ls'; do
  >   told garnel chroot $arguments
  > done
  0 /bin/sh -i
  0 /bin/sh /script a b
  127 2> chroot: false: No such file or directory
  126 2> chroot: /plain: Permission denied
  125 2> env: /none: No such file or directory
  125 2> chroot: none: No such file or directory
  125 2> chroot: root/plain: Not a directory
  125 2> chroot: missing -u operand
  125 2> chroot: 70001: unknown user
  125 2> chroot: daemon: unknown group
  125 2> chroot: 4294967295: unknown user
  125 2> chroot: : unknown user

Users are those outside, their rights go before the command is started, and come with all groups.

  $ ids() { who=$1; shift; garnel chroot -u "$who" / sed -nE 's/^(Uid|Gid|Groups|CapEff):[[:space:]]*//p' /proc/self/status | tr '\t\n' ' :'; echo; }
  $ ids daemon; ids daemon:bin; ids 70001:70002; ids 1; garnel chroot --user=4000000000:bin / id -u
  1 1 1 1:1 1 1 1:1 :0000000000000000:
  1 1 1 1:2 2 2 2:2 :0000000000000000:
  70001 70001 70001 70001:70002 70002 70002 70002:70002 :0000000000000000:
  1 1 1 1:1 1 1 1:1 :0000000000000000:
  4000000000
  $ streams unprivileged chroot root /bin/ls; streams unprivileged chroot none true
  2> chroot: root: Operation not permitted
  2> chroot: none: No such file or directory
  [125]
