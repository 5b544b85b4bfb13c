What all commands have in common when they are used in the wrong way: each message once, and behind it who says it.

  $ note() { printf '%s\n' "$1 $? $said" | sed "s/ $1: / NAME: /; q"; }
  $ group() { awk '{ n = $1; sub(/[^ ]* /, ""); names[$0] = names[$0] " " n } END { for (s in names) print s " --" names[s] }' | sort; }
  $ for name in $(garnel --list | grep -v '\[\|arch'); do said=$(streams garnel $name -% </dev/null); note $name; done | group
  0  -- true
  1  -- false
  1 2> NAME: invalid argument: '-%' -- dd
  1 2> NAME: unknown argument: '-%' -- chmod
  1 2> NAME: unknown switch: -% -- hostname
  100 2> NAME: Unknown switch: -% -- cat chown chgrp truncate
  100 2> NAME: unknown switch: -% -- chroot cpio2 df env format hd head ln ls mkdir mknod readlink rmdir sort stat stty su sync tail time touch tree tee tty umount watch wc which yes uname
  100 2> Unknown switch: -% -- cmp mktemp
  100 Unknown switch: -% -- cp echo mv nslookup pwd realpath rm seq sleep
  255  -- test
  $ for name in chmod chown chgrp chroot cmp cp cpio2 format ln mkdir mknod mv nslookup readlink realpath rm rmdir seq \
  >     sleep stat time touch truncate umount watch which; do said=$(streams garnel $name); note $name; done | group
  0 Usage: cp [OPTION]... SOURCE DESTINATION -- cp
  0 Usage: ln TARGET [LINKNAME] -- ln
  0 Usage: mkdir [OPTION]... DIRECTORY... -- mkdir
  0 Usage: mv [OPTION]... SOURCE DEST -- mv
  0 Usage: nslookup SERVER -- nslookup
  0 Usage: readlink [OPTION]... FILE -- readlink
  0 Usage: seq [OPTION]... [FIRST [INCREMENT]] LAST -- seq
  0 Usage: sleep [OPTION]... NUMBER... -- sleep
  1 2> NAME: missing file operand -- touch
  1 2> NAME: missing operand -- chmod chown chgrp format mknod realpath rm rmdir stat umount watch which
  1 2> NAME: no command specified -- cpio2
  1 2> NAME: only 1 relative must be specified -- truncate
  125 2> NAME: missing operand -- chroot time
  2 2> NAME: missing operand -- cmp

Output that cannot be written is a failure, but for those who do not look:

  $ echo text >f; ln -s f l; echo f | cpio -o --quiet -H newc >image
  $ printf '%s\n' arch 'cat f' 'cat -n f' 'chmod -v 600 f' "chown -v $(id -un) f" "chgrp -v $(id -gn) f" 'cmp f image' \
  >     'cmp -l f image' 'cp -v f g' 'cpio2 cat image f' 'cpio2 list image' df 'echo hi' 'echo -e hi' env 'hd f' 'head f' \
  >     hostname ls 'mkdir -v new' 'mktemp -u' 'mv -v g h' 'nslookup 127.1' pwd 'readlink l' 'realpath /' 'rm -v h' \
  >     'rm -rv new' 'rmdir -v .x' 'seq 1' 'sort f' 'sort -m f l' 'stat f' 'tail f' tree uname 'wc f' 'which sh' yes >lines
  $ mkdir .x; while read -r words; do said=$(garnel $words 2>&1 >/dev/full); note $words; done <lines | group
  0  -- cat cat echo echo seq yes
  1 NAME: write error: No space left on device -- arch chmod chown chgrp cmp cmp cp cpio2 cpio2 df hd head hostname ls mkdir mktemp mv nslookup pwd readlink realpath rm rm rmdir stat tail tree uname wc which
  125 NAME: write error: No space left on device -- env
  2 NAME: write error: No space left on device -- sort sort
