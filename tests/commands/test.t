Without an expression there is help, and the answer is true:

  $ garnel test > help; echo $?; garnel [ ] | cmp - help; garnel [ --help ] | cmp - help
  0
  $ garnel test --help 1 -eq 2 | cmp - help

The bracket needs its partner, and only the last word is that:

  $ ln -s "$(command -v garnel)" [; streams ./[ 1 -eq 1; echo $?; streams ./[; echo $?; ./[ ] = ] ]; ./[ 1 -eq 2 ]
  2> [: missing ']'
  1
  2> [: missing ']'
  1
  [1]

Errors are silent. What the words mean is the model's business; rights are those of the user who asks:

  $ t() { streams garnel test "$@"; printf '%s ' $?; }
  $ t abc; t -q x; t '('; t 1 -eq 1 ')'
  251 252 255 248  (no-eol)
  $ cp -L "$(command -v garnel)" garnel
  $ if [ "$(id -u)" = 0 ]; then plain='setpriv --reuid=65534 --regid=65534 --clear-groups'; else plain=; fi
  $ for mode in 0 111 222 444; do : > $mode; chmod $mode $mode; for letter in e r w x; do
  > $plain ./garnel test -$letter $mode; printf '%s ' $?; done; done
  0 1 1 1 0 1 1 0 0 1 0 1 0 0 1 1  (no-eol)
  $ mkdir closed; : > closed/file; chmod 0 closed; $plain ./garnel test -e closed/file; echo $?; chmod 755 closed
  1

There may be as many words as the system passes on; they cost no stack:

  $ ulimit -Ss 5000; set -- $(yes ! | head -n 100000); t "$@" 1 -eq 1; t "$@" 1 -eq 2; t "$@"
  0 1 253  (no-eol)
  $ ulimit -Ss 16384; set -- $(yes -- '-n x -a' | head -n 100000); t "$@" 1 -eq 1; t "$@" 1 -eq 2; t "$@" x
  0 1 251  (no-eol)
