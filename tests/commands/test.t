Without an expression there is help, and the answer is true:

  $ garnel test > help; echo $?; garnel [ ] | cmp - help; garnel [ --help ] | cmp - help
  0
  $ garnel test --help 1 -eq 2 | cmp - help; head -n 3 help; tail -n 2 help; wc -l < help
  Usage: test EXPRESSION
    or   [ EXPRESSION ]
  Exit with the status determined by EXPRESSION.
  
  INTEGER may also be -l STRING, which evaluates to the length of STRING.
  66

The bracket needs its partner, and only the last word is that:

  $ ln -s "$(command -v garnel)" [; streams ./[ 1 -eq 1; echo $?; streams ./[; echo $?; ./[ ] = ] ]; ./[ 1 -eq 2 ]
  2> [: missing ']'
  1
  2> [: missing ']'
  1
  [1]

Errors are silent, and each kind has its status:

  $ t() { streams garnel test "$@"; printf '%s ' $?; }
  $ t abc; t -n; t ''; t !; t -q x; t - x; t -nn x; t x y; t 1 -eq; t 1 -eq -l; t 1 -eq 1 2; t 1 -eq 1 ')'
  251 255 251 253 252 252 254 251 255 255 254 248  (no-eol)
  $ t '('; t '(' 1 -eq 1 ')'; t '(' x; t ')'; t 1 -eq 1 -a; t -n '' -o; t -n '' -a 1 -eq 1 ')'; t -q x -a 1 -eq 1
  255 255 255 251 253 253 249 252  (no-eol)

Everything groups to the right, and "!" negates all of it:

  $ t 3 -gt 2 -a 1 -eq 2; t 1 -eq 2 -o 2 -eq 2; t ! 1 -eq 2 -a 1 -eq 1; t x = x -o x = x -a x = y
  1 0 0 0  (no-eol)
  $ t x = y -a x = x -o x = x; t ! x = y -o x = x; t ! ! x = x
  1 1 0  (no-eol)

Numbers may be lengths, and saturate:

  $ t -l abcd -eq 4; t 4 -eq -l abcd; t -l abc = 3; t 99999999999999999999 -gt 9223372036854775806; t ' 5x' -eq +5
  0 0 0 0 0  (no-eol)

The kind of a file, links followed:

  $ mkdir dir; : > dir/file; mkfifo fifo; ln -s /dev/null null; ln -s dir link; ln -s nothing dangling; echo x > full; : > empty
  $ python3 -c 'import socket; socket.socket(socket.AF_UNIX).bind("socket")'
  $ kinds() { for file; do for letter in b c d e f h L p s S; do
  > garnel test -$letter "$file" && printf '%s' $letter; done; echo " $file"; done; }
  $ kinds dir fifo null link dangling full empty socket nothing ''
  des dir
  ep fifo
  ce null
  des link
   dangling
  efs full
  ef empty
  eS socket
   nothing
   
  $ python3 -c 'import os, subprocess
  > link = os.open("link", os.O_PATH | os.O_NOFOLLOW)
  > print(subprocess.call(["garnel", "test", "-h", f"/proc/self/fd/{link}"], pass_fds=[link]))'
  0

Files of one age, as all missing ones, are newer and older than each other; -ef knows which comes first:

  $ touch -d '2001-02-03 04:05:06.000000001' old; touch -r old same; touch -d '2001-02-03 04:05:06.000000002' new
  $ t new -nt old; t old -nt new; t old -ot new; t new -ot old; t old -nt same; t old -ot same; t no -ot no2; t old -nt no
  0 1 0 1 0 0 0 0  (no-eol)
  $ ln full full2; t full -ef full2; t full -ef no; t no -ef full; t no -ef no2; t ! no -ef full; t no -ef full -a x = y
  0 1 2 0 0 3  (no-eol)

Rights are those of the user who asks:

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
