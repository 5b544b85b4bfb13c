  $ unset TEMP TMP; export TEMP=/tmp
  $ for words in '-S 1x' -S -o '-cC'; do told garnel sort $words | head -1; done
  0 Usage: sort [OPTION]... [FILE]...
  0 Usage: sort [OPTION]... [FILE]...
  0 Usage: sort [OPTION]... [FILE]...
  2 2> sort: options '-cC' are incompatible

The output file is removed first:

  $ echo a | tee f >g; streams garnel sort -o g g; test -s g || echo empty
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
  $ for files in 'ace none-in-it' 'ace d' 'none ace'; do told garnel sort -m $files; done
  2 2> sort: none-in-it: failed to read file
  2 2> sort: d: failed to read file
  2 2> sort: none: no such file or directory
  $ mkdir many && for i in $(seq 100 160); do echo $i >many/$i; done
  $ (ulimit -Sn 20; garnel sort -m many/*) >merged; (ulimit -n 20; garnel sort -m many/*) | cmp - merged; seq 100 160 | cmp - merged

An order is checked up to the first line that breaks it:

  $ garnel sort -c ace && garnel sort -C <none-in-it && printf 'a\na\n' | garnel sort -c
  $ streams garnel sort -c zy; garnel sort -Cm zy; echo $?; printf 'a\nB\n' | garnel sort -cf; streams garnel sort -c ace bd
  2> sort: zy:2: disorder: y
  1
  2> sort: extra operand not allowed with -c
  [2]
  $ told garnel sort -c -S 10 ace; told garnel sort -c none
  2 2> sort: ace: out of memory
  2 2> sort: none: No such file or directory

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

  $ TEMP=nowhere garnel sort ace 2>/dev/null >/dev/full
  [2]

Nothing is left behind, however it ends, and everything comes in order whatever the number of runs:

  $ seq 200000 | awk '{ print $1 * 7919 % 200003, $1 }' >numbers; sort numbers >sorted
  $ for size in 64K 1M 64M; do TEMP=d garnel sort -S $size numbers | cmp - sorted; TEMP=d garnel sort -S $size sorted | cmp - sorted; done; ls d
  $ python3 - <<'END' | uniq -c
  > import os, signal, subprocess
  > for name in "SIGINT", "SIGTERM", "SIGHUP", "SIGPIPE":
  >     number = getattr(signal, name)
  >     sort = subprocess.Popen(["garnel", "sort", "-S", "64K"], stdin=subprocess.PIPE, env={**os.environ, "TEMP": "d"},
  >                             preexec_fn=lambda: signal.signal(number, signal.SIG_DFL))
  >     sort.stdin.write(open("numbers", "rb").read())
  >     sort.send_signal(number)
  >     print(sort.wait() == -number, os.listdir("d"))
  > END
        4 True []
  $ (trap '' XFSZ; ulimit -f 100; streams env TEMP=d garnel sort numbers; echo $?; ls d) | sed 's/sort\.[0-9]*\.[A-Za-z0-9]*:/NAME:/'
  2> sort: d/NAME: I/O error
  2> sort: d/NAME: could not create temporary file
  1

The model, which does all this step by step:

  $ python3 -B "$TESTS/models/sort.py" 150
  150 comparisons with seed 1 agree
