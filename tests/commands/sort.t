  $ unset TEMP TMP; export TEMP=/tmp
  $ streams garnel sort --help | sed -n '1,4p;8,$p'
  Usage: sort [OPTION]... [FILE]...
  Sort lines of text files.
  
      -b    ignore leading blanks
      -m    merge already sorted files; do not sort
      -o    FILE -- write result to FILE instead of standard output
      -r    reverse the result of comparisons
      -S    SIZE -- use SIZE for main memory buffer
  $ for words in '-S 1x' -S -o '-z' '-cC'; do streams garnel sort $words </dev/null | head -1; done
  Usage: sort [OPTION]... [FILE]...
  Usage: sort [OPTION]... [FILE]...
  Usage: sort [OPTION]... [FILE]...
  2> sort: unknown switch: -z
  2> sort: options '-cC' are incompatible
  $ garnel sort -z 2>/dev/null; echo $?; garnel sort -cC 2>/dev/null
  100
  [2]

Lines are bytes, compared without regard to a locale; -r changes nothing. What is not ended is ended, and
carriage returns at the end go:

  $ printf 'b\r\na\0z\nB\n\351\na\0\r\r\na\n\n b\nba' >f
  $ garnel sort -r f | od -An -c; garnel sort -r <f | cmp - f | wc -l
    \n       b  \n   B  \n   a  \n   a  \0  \n   a  \0   z  \n   b
    \n   b   a  \n 351  \n
  1
  $ printf '  b\n\t\va\nc\n a\n' | garnel sort -b | tr '\t\v' TV
   a
  TVa
    b
  c

Equal lines: a new one goes in front of the one that it was compared with, and lower slots first in a merge:

  $ printf '%s\n' a A a A b B | garnel sort -f | tr '\n' ' '; printf 'a\nA\n' >1; printf 'A\na\n' >2; garnel sort -mf 1 2 | tr '\n' ' '; echo
  A A a a B b a A A a 
  $ printf '%s\n' a b A B a | garnel sort -f -S 31 | tr '\n' ' '; echo
  A a a B b 
  $ echo a >1; echo b >2; echo B >3; garnel sort -mf 1 2 3 | tr '\n' ' '; garnel sort -mf 2 1 3 | tr '\n' ' '; echo
  a B b a b B 

A long line is several. One that just fills the buffer stays whole on its way through a temporary file:

  $ head -c 3000 /dev/zero | tr '\0' x | garnel sort | awk '{ print length($0) }'
  953
  2047
  $ (head -c 2047 /dev/zero | tr '\0' x; echo; echo y) >long; garnel sort -m <long | garnel sort | awk '{ print length($0) }'
  0
  0
  2047
  1

The output file is removed first:

  $ cp f g && streams garnel sort -o g g; test -s g || echo empty
  2> sort: g: No such file or directory
  empty
  $ garnel sort -o g </dev/null && stat -c '%a %s' g; mkdir d; streams garnel sort -o d f; streams garnel sort -o d </dev/null
  644 0
  2> sort: d: failed to open file for write
  2> sort: d: Is a directory
  [2]

Operands that cannot be read do not stop the others:

  $ mkfifo fifo; printf 'z\ny\n' >zy; streams garnel sort none zy d fifo; streams garnel sort <d
  y
  z
  2> sort: none: No such file or directory
  2> sort: d: not a regular file
  2> sort: fifo: not a regular file
  2> sort: -: Is a directory
  [1]

Files that are merged are opened one by one before anything is written:

  $ printf '%s\n' a c e >ace; printf '%s\n' b d >bd; : >none-in-it; garnel sort -m ace bd ace | tr '\n' ' '; garnel sort -m bd - <ace
  a a b c c d e e sort: -: no such file or directory
  [2]
  $ for files in 'ace none-in-it' 'ace d' 'none ace'; do streams garnel sort -m $files; echo $?; done
  2> sort: none-in-it: failed to read file
  2
  2> sort: d: failed to read file
  2
  2> sort: none: no such file or directory
  2
  $ mkdir many && for i in $(seq 100 160); do echo $i >many/$i; done
  $ (ulimit -Sn 20; garnel sort -m many/*) >merged; (ulimit -n 20; garnel sort -m many/*) | cmp - merged; seq 100 160 | cmp - merged

An order is checked up to the first line that breaks it:

  $ garnel sort -c ace && garnel sort -C <none-in-it && printf 'a\na\n' | garnel sort -c
  $ streams garnel sort -c zy; garnel sort -Cm zy; echo $?; printf 'a\nB\n' | garnel sort -cf; streams garnel sort -c ace bd
  2> sort: zy:2: disorder: y
  1
  2> sort: extra operand not allowed with -c
  [2]
  $ streams garnel sort -c -S 10 ace; streams garnel sort -c none; echo $?
  2> sort: ace: out of memory
  2> sort: none: No such file or directory
  2

A budget of nothing holds no line; one of 1 holds a line in each run, but not two of them in the merge:

  $ streams garnel sort -S 0 ace | sed 's/sort\.[^:]*/NAME/'; streams garnel sort -S 1 zy | sed 's/sort\.[^:]*/NAME/'; echo a | garnel sort -S 1
  2> sort: ace: out of memory
  2> sort: /tmp/NAME: failed to read file
  2> sort: /tmp/NAME: failed to read file
  a
  $ echo | garnel sort -mS 0
  sort: -: out of memory
  sort: failed to redirect stdin
  [1]

Without a place for temporary files the lines are still written; TEMP goes before TMP:

  $ TEMP=$PWD/nowhere TMP=d streams garnel sort zy | sed 's/sort\.[0-9]*\.[A-Za-z0-9]*:/sort.PID.RANDOM:/; s|/.*/||'
  y
  z
  2> sort: sort.PID.RANDOM: No such file or directory
  2> sort: sort.PID.RANDOM: could not create temporary file
  2> sort: failed to store temp
  $ (unset TEMP; TMP=$(printf '%0250d' 0) streams garnel sort zy); TEMP=nowhere garnel sort -m <zy
  y
  z
  2> sort: failed to make temp filename
  2> sort: failed to store temp
  sort: -: failed to open temporary file
  sort: failed to redirect stdin
  [1]

An output that takes nothing is a failure:

  $ garnel sort ace >/dev/full; echo $?; garnel sort -m ace bd >/dev/full; echo $?; TEMP=nowhere garnel sort ace 2>/dev/null >/dev/full
  sort: write error: No space left on device
  2
  sort: write error: No space left on device
  2
  [2]

Nothing is left behind, however it ends, and everything comes in order whatever the number of runs:

  $ seq 200000 | awk '{ print $1 * 7919 % 200003, $1 }' >numbers; sort numbers >sorted
  $ for size in 64K 1M 64M; do TEMP=d garnel sort -S $size numbers | cmp - sorted; TEMP=d garnel sort -S $size sorted | cmp - sorted; done; ls d
  $ python3 - <<'END'
  > import os, signal, subprocess
  > for name in "SIGINT", "SIGTERM", "SIGHUP", "SIGPIPE":
  >     number = getattr(signal, name)
  >     sort = subprocess.Popen(["garnel", "sort", "-S", "64K"], stdin=subprocess.PIPE, env={**os.environ, "TEMP": "d"},
  >                             preexec_fn=lambda: signal.signal(number, signal.SIG_DFL))
  >     sort.stdin.write(open("numbers", "rb").read())
  >     sort.send_signal(number)
  >     print(sort.wait() == -number, os.listdir("d"))
  > END
  True []
  True []
  True []
  True []
  $ (trap '' XFSZ; ulimit -f 100; streams env TEMP=d garnel sort numbers; echo $?; ls d) | sed 's/sort\.[0-9]*\.[A-Za-z0-9]*:/NAME:/'
  2> sort: d/NAME: I/O error
  2> sort: d/NAME: could not create temporary file
  1

The model, which does all this step by step:

  $ python3 -B "$TESTS/models/sort_differential.py" 150
  150 comparisons with seed 1 agree
