A shell for another user. The users are made up, in a name space of their own.

Needs: [ "$(id -u)" = 0 ] && unshare -m true && f=$(mktemp) && chown 70001:70002 $f && rm $f

  $ export ASAN_OPTIONS=detect_leaks=0; home=$(mktemp -d /tmp/garnel.XXXXXX) && chmod 755 "$home" && cd "$home" && mkdir -m 700 dora && chown 70001:70002 dora
  $ cat >users <<end
  > root:x:0:0::/root:/bin/sh
  > dora:x:70001:70002::$home/dora:/bin/sh
  > max:x:4000000000:3000000000::/nowhere:
  > echo:x:70003:70003::/:/bin/echo
  > gone:x:70004:70004::/:/no/shell
  > 12:x:70012:70012::/:/bin/sh
  > end
  $ (echo wheel:x:70010:max,dora; for i in $(seq 70100 70199); do echo "g$i:x:$i:max"; done) >groups
  $ cat >as <<'end' && chmod 755 as
  > #!/bin/sh
  > mount --bind users /etc/passwd && mount --bind groups /etc/group && exec garnel su "$@"
  > end
  $ su() { streams unshare -m ./as "$@"; }

Ids and groups, with no way back; a clean environment, or the old one; a login.

  $ ids='sed -nE "s/^(Uid|Gid|CapPrm|CapEff|CapInh):[[:space:]]*//p" /proc/self/status'
  $ export TERM=dumb SECRET=1; su -c "$ids; exec env" dora | sed "s/\t/ /g; s|$home|HOME|; /^PWD=/d; /^_=/d" | uniq
  70001 70001 70001 70001
  70002 70002 70002 70002
  0000000000000000
  USER=dora
  HOME=HOME/dora
  LOGNAME=dora
  TERM=dumb
  PATH=/usr/local/bin:/usr/bin:/bin
  SHELL=/bin/sh
  $ su -m -c 'echo "$SECRET $HOME"' dora | sed "s|$HOME|HOME|"
  1 HOME
  $ su - -c 'echo "$0"; pwd' dora | sed "s|$home|HOME|"; su -l -c pwd max
  -sh
  HOME/dora
  /
  2> su: /nowhere: No such file or directory
  $ su -c 'id -G' max | wc -w; su -c 'id -G' dora; su -c 'id -u; echo $PATH'; su -c 'echo $HOME $SHELL $0' max; su -c 'id -u' 12; su -c 'id -u' 70001
  102
  70002 70010
  0
  /usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin
  /nowhere /bin/sh sh
  70012
  70001

The shell's arguments and its status.

  $ su -c 'echo "$0,$1"; exit 5' dora 'a  b' c; su --shell=/bin/echo --command='x  y' dora -z; su echo - -c "1  2"; su - echo
  a  b,c
  -c x  y -z
  - -c 1  2
  
  $ su -s sh -c 'kill -9 $$' dora; for who in gone nemo 70009 '' -; do told unshare -m ./as "$who"; done
  2> Killed
  127 2> su: /no/shell: No such file or directory
  1 2> su: nemo: unknown user
  1 2> su: 70009: unknown user
  1 2> su: : unknown user
  0
  $ su -c; su -s
  2> su: missing -c operand
  2> su: missing -s operand
  [1]

Where the system would leave rights behind, or withholds some that the change needs, there is no shell.

  $ for limit in --securebits=+no_setuid_fixup --bounding-set=-setgid; do setpriv $limit garnel su -s /bin/id daemon; done
  su: daemon: Operation not permitted
  su: daemon: Operation not permitted
  [1]

Everybody else is refused, whoever they ask for, even with an executable that would lend the right.

  $ streams unprivileged su; streams unprivileged su -c id nobody; streams unprivileged su none
  2> su: permission denied
  2> su: permission denied
  2> su: permission denied
  [1]
  $ chown 0:0 .garnel/garnel && chmod 6755 .garnel/garnel && streams unprivileged su -c id; cd / && rm -r "$home"
  2> su: permission denied
