Owners and groups, which only the superuser can give away:

Needs: f=$(mktemp) && chown 65534:65534 $f && rm $f && unshare -m true

  $ show() { find "$@" -printf '%U:%G %p\n' | sort -k 2; }
  $ touch f && for who in daemon:bin nobody:nogroup bin: :bin : '' 12345 bin:none :-1; do
  >   chown 1:1 f; said=$(streams garnel chown "$who" f); stat -c "%u:%g $who $said" f
  > done
  1:2 daemon:bin 
  65534:65534 nobody:nogroup 
  2:1 bin: 
  1:2 :bin 
  1:1 : 
  1:1  2> chown: invalid owner: ''
  1:1 12345 2> chown: invalid owner: '12345'
  1:1 bin:none 2> chown: invalid group: 'none'
  1:1 :-1 2> chown: invalid group: '-1'

  $ for group in 3 '' :bin 18446744073709551616; do streams garnel chgrp "$group" f; done; show f
  2> chown: invalid group: ''
  2> chown: invalid group: ':bin'
  2> chown: invalid group: '18446744073709551616'
  1:3 f

Ids that do not fit are left alone, and never given:

  $ chown 1000000:1000001 f && garnel chown :bin f && show f && chown 65538:65539 f && garnel chgrp -v 3 f; show f
  1000000:2 f
  group of 'f' retained as sys
  65538:3 f
  $ unshare -m sh -c 'echo "big:x:65536:65536::/:" >users && echo "big:x:65536:" >groups && mount --bind users /etc/passwd &&
  >   mount --bind groups /etc/group && streams garnel chown big f; streams garnel chgrp big f'
  2> chown: invalid owner: 'big'
  2> chown: invalid group: 'big'
  [1]
  $ streams garnel chown 65536 f; streams garnel chown :65536 f
  2> chown: invalid owner: '65536'
  2> chown: invalid group: '65536'
  [1]

Reports:

  $ report() { chown 1:1 f; streams garnel chown "$@" bin:daemon f f none; streams garnel chgrp "$@" bin f f; }
  $ report -v; [ "$(report -c)" = "$(report -v | grep -v retained)" ] || echo -c; report -vf | grep -c 2; report --silent
  changed ownership of 'f' from daemon:daemon to bin:daemon
  ownership of 'f' retained as bin:daemon
  2> chmod: cannot access 'none': No such file or directory
  changed group of 'f' from daemon to bin
  group of 'f' retained as bin
  0
  $ for pair in '--changes -c' '--verbose -v' '--verbose -cv' '--quiet -f'; do
  >   [ "$(report ${pair% *})" = "$(report ${pair#* })" ] || echo "$pair"
  > done; chown 70000:60001 f; garnel chown -v 2 f
  changed ownership of 'f' from 4464:60001 to bin:60001

A link is changed itself, or what it leads to; it must lead somewhere:

  $ chown 0:0 f && ln -s f link && ln -s none dangling && garnel chown bin link && garnel chgrp --dereference bin link && show f link
  0:2 f
  2:0 link
  $ garnel chown --dereference -h daemon link && show f link; streams garnel chown -h bin dangling
  0:2 f
  1:0 link
  2> chmod: cannot access 'dangling': No such file or directory
  [1]

Trees: what is not to be followed is not, and only options in front count:

  $ mkdir -p t/d out/sub && touch t/d/f out/sub/f 't/\f' '\f' && ln -s ../out t/link && ln -s t top && ln -s ../f t/to-f
  $ chown -hR 0:0 t out f '\f' top && for options in -P -H -HL -LR '--recursive --dereference' '-L --dereference'; do
  >   for operand in t top; do
  >     garnel chown $options 1 $operand >/dev/null
  >     printf '%s:%s\n' "$options" "$(show t out f '\f' top | sed -n 's/^[1-9][0-9]*:0//p' | tr -d '\n')"; chown -hR 0:0 t out f '\f' top
  >   done
  > done
  -P: t t/\f t/d t/d/f t/link t/to-f
  -P: top
  -H: t t/\f t/d t/d/f t/link t/to-f
  -H: t/\f t/d t/d/f t/link t/to-f top
  -HL: out/sub out/sub/f t t/\f t/d t/d/f t/link t/to-f
  -HL: out/sub out/sub/f t/\f t/d t/d/f t/link t/to-f top
  -LR: t t/\f t/d t/d/f t/link t/to-f
  -LR: top
  --recursive --dereference: f out t t/\f t/d t/d/f
  --recursive --dereference: t
  -L --dereference: f out out/sub out/sub/f t t/\f t/d t/d/f
  -L --dereference: f out out/sub out/sub/f t t/\f t/d t/d/f

  $ streams garnel chgrp bin f -R; ln -s . t/loop && garnel chown -L bin t 2>&1 | grep -c loop/loop
  2> chmod: cannot access '-R': No such file or directory
  3

Misuse, and what others own:

  $ for command in chown chgrp; do streams garnel $command bin; done
  2> chown: missing operand
  2> chgrp: missing operand
  [1]
  $ chmod 711 . t t/d
  $ streams unprivileged chown -v nobody f; streams unprivileged chgrp -v nogroup f; streams unprivileged chgrp -f bin f
  failed to change ownership of 'f' from root:bin to nobody:bin
  2> chown: changing ownership of 'f': Operation not permitted
  failed to change group of 'f' from bin to nogroup
  2> chown: changing ownership of 'f': Operation not permitted
  [1]
  $ streams unprivileged chown -P nobody t/d
  2> chown: changing ownership of 't/d': Operation not permitted
  [1]
