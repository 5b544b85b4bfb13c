Started under its own name without a command, or with one that nobody knows:

  $ garnel > usage || streams garnel --verbose --install > out
  [1]
  $ tail -n 1 out; sed '$d' out | cmp - usage
  2> Unknown command: "--verbose".

What it says about itself:

  $ garnel --version
  garnel v0.2.3
  $ garnel --list > list; tr '\n' ' ' < list
  cat chmod chown chgrp chroot cmp cp cpio2 dd df echo env false format hd head hostname ln ls mkdir mknod mktemp mv nslookup pwd readlink realpath rm rmdir seq sleep sort stat stty su sync tail test [ time touch tree true truncate tee tty umount watch wc which yes uname arch  (no-eol)
  $ (echo Utility toolbox commands:; sed 's/^/    /' list; echo 53 commands.) > help; garnel help | cmp - help
  $ garnel --version >&-
  garnel: write error: Bad file descriptor
  [1]

Links are made and removed without a word; what bears a command's name is not replaced, but it is removed:

  $ mkdir links && cd links && echo mine > cat && garnel --install x --verbose
  $ for name in $(garnel --list); do test "$(readlink "./$name")" = garnel || cat "./$name"; done
  mine
  $ garnel --install --verbose | sed "s/^Create symlink '\(.*\)'$/\1/" | cmp - ../list
  $ garnel --uninstall --verbose | sed "s/^Remove symlink '\(.*\)'$/\1/" | cmp - ../list
  $ ls -A; garnel --install; garnel --uninstall; ls -A; cd ..

The name under which it is started: the text behind the last '/', or without one behind the last '\'.

  $ as() { perl -e 'my $file = shift; exec { $file } @ARGV' "$(command -v garnel)" "$@"; }
  $ for name in /bin/echo '\bin\echo' 'a\b/echo' echo; do as "$name" -n "$name "; done
  /bin/echo \bin\echo a\b/echo echo  (no-eol)
  $ for name in garnel.elf /bin/my-garnel-2 '\garnel\garnel'; do as "$name" echo -n "$name "; done
  garnel.elf /bin/my-garnel-2 \garnel\garnel  (no-eol)
  $ for name in 'a/b\echo' garnel/ Garnel ''; do as "$name" echo hi 2>&1 >out; cmp out usage; done
  Unknown command: "b\echo".
  Unknown command: "".
  Unknown command: "Garnel".
  Unknown command: "".
  $ as '[' x ']' 2>&1 | grep 'Unknown command'
  [1]
  $ as echo help --version; as echo --list
  help --version
  Unknown switch: --
  [100]

true and false ignore everything but a request for help:

  $ garnel true -x --foo=1 a --; garnel true a -x --help | head -n 1; garnel false -x --foo=1 a --
  Usage: true [--help] [ignored command line argument]...
  [1]
