Modes, applied to 4750, with what -M shows:

  $ touch f && for mode in 0000755 0 1755 40000000000000000000755 77778 - -w,u+x gouug+rrwr a+x,ug=,a-r u+rw-x -wR; do
  >   chmod 4750 f; printf '%s: ' "$mode"; garnel chmod -M "$mode" f 2>&1 | sed 's/chmod: //' | tr '\n' ' '; stat -c %04a f
  > done
  0000755: attr=0755 mask=0777 0755
  0: attr=00 mask=0777 0000
  1755: invalid mode: 1755 4750
  40000000000000000000755: invalid mode: 40000000000000000000755 4750
  77778: non-octal digit found in MODE 4750
  -: attr=00 mask=00 0750
  -w,u+x: attr=0100 mask=0322 0550
  gouug+rrwr: attr=0666 mask=0666 0776
  a+x,ug=,a-r: attr=01 mask=0775 0001
  u+rw-x: MODE sytax error 4750
  -wR: MODE sytax error 4750

Files may stand in front of the mode, and everything behind it is a file:

  $ touch h 8 ./-- ./-R && chmod 600 h 8 ./-- ./-R && garnel chmod h -c 644 -- -R 8 && garnel chmod h 0 --help
  mode of 'h' changed from 0600 (rw-------) to 0644 (rw-r--r--)
  mode of '--' changed from 0600 (rw-------) to 0644 (rw-r--r--)
  mode of '-R' changed from 0600 (rw-------) to 0644 (rw-r--r--)
  mode of '8' changed from 0600 (rw-------) to 0644 (rw-r--r--)
  chmod: cannot access '--help': No such file or directory
  [1]
  $ for arguments in -R -- '-Rz 644 f' '--help 8' '-vRw f' '-u+r f' 644 '8 f' 'g 644 f'; do
  >   told garnel chmod $arguments | head -n 1
  > done; told garnel chmod '' f
  1 2> chmod: missing operand
  1 2> chmod: unknown argument: '--'
  1 2> chmod: unknown argument: '-Rz'
  0 Usage: chmod [OPTION]... MODE[,MODE]... FILE...
  2 2> chmod: MODE sytax error
  1 2> chmod: unknown argument: '-u+r'
  1 2> chmod: missing operand
  2 2> chmod: invalid mode: 8
  2 2> chmod: MODE sytax error
  2 2> chmod: invalid mode: 

Reports:

  $ report() { chmod 600 f; streams garnel chmod "$@" u=rw,g+r f f none; }
  $ report -v; [ "$(report -c)" = "$(report -v | grep -v retained)" ] || echo -c; report -vf; report --silent
  mode of 'f' changed from 0600 (rw-------) to 0640 (rw-r-----)
  mode of 'f' retained as 0640 (rw-r-----)
  2> chmod: cannot access 'none': No such file or directory
  mode of 'f' changed from 0600 (rw-------) to 0640 (rw-r-----)
  mode of 'f' retained as 0640 (rw-r-----)
  [1]
  $ for pair in '--changes -c' '--verbose -v' '--verbose -cv' '--quiet -f'; do
  >   [ "$(report ${pair% *})" = "$(report ${pair#* })" ] || echo "$pair"
  > done

A tree is changed from the top down, through links, entries in their own directory:

  $ mkdir -p t/d out/sub && touch out/sub/f 't/\g' t/d/f '\g' 't/d/new
  > line' && ln -s ../out t/link && ln -s ../f t/to-f && ln -s none t/dangling && chmod -R 700 t out '\g' f
  $ streams garnel chmod -Rc go=x t/d | sort; streams garnel chmod --recursive -f 750 t; find t out '\g' f -perm 700
  line' changed from 0700 (rwx------) to 0711 (rwx--x--x)
  mode of 't/d' changed from 0700 (rwx------) to 0711 (rwx--x--x)
  mode of 't/d/f' changed from 0700 (rwx------) to 0711 (rwx--x--x)
  mode of 't/d/new
  \g
  $ ln -s . t/loop && garnel chmod -R 755 t 2>&1 | grep -c loop/loop; find t out f -not -type l -not -perm 755
  42
