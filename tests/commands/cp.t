Bytes and permission bits are copied, less the umask; links are followed, and what exists is cut and rewritten:

  $ umask 027 && printf 'a\0\377\n' >a && chmod 1755 a && ln -s a link && echo long enough >b && chmod 600 b
  $ streams garnel cp -v link new && garnel cp a b && cmp a new && cmp a b && stat -c '%a %F %n' new b
  'link' -> 'new'
  1750 regular file new
  600 regular file b
  $ mkdir d && garnel cp link d/ && streams garnel cp -v b d/link d && stat -c '%a %n' d/*
  'b' -> 'd/b'
  'd/link' -> 'd/link'
  600 d/b
  1750 d/link
  $ ln -s none dangling && garnel cp a dangling && cmp a none && stat -c %F dangling; umask 022
  symbolic link

Files of every size, holes included, arrive as they are; one that is copied to itself is emptied:

  $ for size in 0 1 65535 65536 65537 300000; do
  >   head -c $size /dev/urandom >from && garnel cp from to && cmp from to && garnel cp to to && stat -c %s to
  > done | uniq
  0
  $ truncate -s 40M holes && printf x | dd of=holes bs=1 seek=20M conv=notrunc status=none && garnel cp holes to
  $ cmp holes to && [ "$(stat -c %b to)" -le "$(stat -c %b holes)" ] && garnel cp /proc/self/cmdline to && wc -c to
  32 to

Directories are made, never merged into, which shows in the status alone:

  $ mkdir -p t/sub e && chmod 700 t/sub && echo f >t/sub/f && ln -s sub t/to-sub && ln -s sub/f t/to-f
  $ ln -s none t/dangling && mkfifo t/pipe && streams garnel cp -r t new-t | sort; find new-t -printf '%M %p\n' | sort -k 2 | paste -sd,
  2> cp: t/dangling: No such file or directory
  2> cp: t/pipe: Not a file
  drwxr-xr-x new-t,drwxr-xr-x new-t/sub,-rw-r--r-- new-t/sub/f,-rw-r--r-- new-t/to-f,drwxr-xr-x new-t/to-sub,-rw-r--r-- new-t/to-sub/f
  $ streams garnel cp -rv t/sub e; streams garnel cp -r t/sub e; streams garnel cp -r a t/sub/ new-t e; echo $(ls e)
  't/sub' -> 'e/sub'
  't/sub/f' -> 'e/sub/f'
  a new-t sub

A directory that would be copied into itself ends there:

  $ mkdir -p s/sub && echo s >s/f && ln -s . s/loop && garnel cp -r s s/sub/.. 2>&1 | grep -v loop/loop; echo $(ls s/s)
  cp: s/loop/s: cannot copy a directory into itself
  f loop sub
  $ rm -r s/loop s/s; garnel cp -r s s/sub/new; echo $(find s | sort)
  cp: s/sub/new: cannot copy a directory into itself
  s s/f s/sub s/sub/new s/sub/new/f s/sub/new/sub
  $ mkdir -p k/x/y && ln -s ../../../copy/x k/x/y/link && timeout 20 garnel cp -r k copy; echo $(find copy)
  cp: k/x/y/link: cannot copy a directory into itself
  copy copy/x copy/x/y

Operands keep their own names; what a directory delivers stays in it whatever its name is:

  $ mkdir -p back m && echo in >'back/\x' && echo out >'\x' && mkdir 'back/\d' && echo in >'back/\d/new
  > line' && garnel cp -r back m/back && find m | sort | paste -sd' ' && cat 'm/back/\x' '\x'
  line m m/back m/back/\d m/back/\d/new m/back/\x
  in
  out
  $ mkdir m2 && garnel cp '\x' m2 && garnel cp -r back/ t/sub m2/../m2 && echo $(ls m2)
  back sub x

Misuse and trouble:

  $ for operands in t '--help a b' 'a b nil' 'a b b' 'nil x' 't x' 'a t/pipe/x' 'a nil/x' 't/pipe nil a x e' '/dev/null x' 'a /dev/full'; do
  >   told garnel cp $operands | head -n 1
  > done; [ -c /dev/full ]
  0 Usage: cp [OPTION]... SOURCE DESTINATION
  0 Usage: cp [OPTION]... SOURCE DESTINATION
  2 2> cp: nil: failed to stat
  2 2> cp: b: target is not a directory
  1 2> cp: nil: No such file or directory
  1 2> cp: t: Not a file
  1 2> cp: t/pipe/x: Not a directory
  1 2> cp: nil/x: No such file or directory
  1 2> cp: t/pipe: Not a file
  1 2> cp: /dev/null: Not a file
  1 2> cp: a: Input/output error
