The last ten lines, or as many as asked for. The value is the next word, may have a unit, and counts modulo 2^32;
a value that is none shows the usage.

  $ alias tail='garnel tail'
  $ seq 12 >twelve && printf '1\n2\n3\n' >three && printf 'a\n\nc' >cut && : >empty
  $ tail twelve | tr '\n' ' '
  3 4 5 6 7 8 9 10 11 12  (no-eol)
  $ tail twelve -n 2
  11
  12
  $ tail -n 0x2 <twelve
  11
  12
  $ cat twelve | tail -n 2
  11
  12
  $ tail -n 1K twelve | wc -l
  12
  $ tail -n 4294967297 three
  3
  $ tail -n 2 -n 1 three cut -q
  3
  
  c (no-eol)
  $ tail cut; echo; tail -n 2 <cut; echo; cat cut | tail -n 1; echo; tail empty; tail </dev/null
  a
  
  c
  
  c
  c
  $ tail -n 0 three empty
  ==> three <==
  
  ==> empty <==
  $ tail -n 5m three; echo "status $?"
  Usage: tail [OPTION]... [FILE]...
  Print the last 10 lines of each FILE to standard output.
  
      -c    output the last K bytes; with the leading '-', print from the Kth bytes of each file
      -n    output the last K lines instead of the last 10; with the leading '-', print from the Kth lines of each file
      -q    never print tailers giving file names
      -v    always print tailers giving file names
  status 0
  $ tail three -c | tail -n 1
      -v    always print tailers giving file names
  $ tail -n | tail -n 1
      -v    always print tailers giving file names

With -n -K, what follows the first K lines.

  $ tail -n -1 three
  2
  3
  $ tail -n -2 cut; echo
  c
  $ tail -n -3 three; tail -n -4 three; tail -n -2147483648 three; tail -n -1 empty
  $ cat three | tail -n -2
  3

Lines are cut, not files: -c K leaves the last K bytes of each and one more, -c -K takes the first K; a line
that is not longer than K is left alone.

  $ printf 'abcdef\nabc\n\nabcd' >lines
  $ tail -c 3 lines; echo .
  cdef
  abc
  
  abcd.
  $ tail -n 3 -c 1 lines; echo .
  bc
  
  cd.
  $ tail -c 5 lines; echo .
  abcdef
  abc
  
  abcd.
  $ tail -c -3 lines; echo .
  def
  abc
  
  d.
  $ tail -c -5 lines; echo .
  f
  abc
  
  abcd.
  $ tail -c -2147483648 lines; echo .
  abcdef
  abc
  
  abcd.
  $ tail -n -1 -c 1 lines; echo .
  bc
  
  cd.

A line goes on as another one behind 2046 bytes. Its newline belongs to it: a line of 2046 bytes leaves a line
that is empty. That is so also in long files, which are not read from the beginning.

  $ long() { printf "%0$1d" 0; }
  $ (echo begin; long 5000; echo; echo end) >short
  $ (seq 50000; long 5000; echo; echo end) >large && (seq 50000; long 100000) >larger
  $ for n in 1 2 3 4; do tail -n $n short | wc -c; tail -n $n large | wc -c; done | xargs
  4 4 913 913 2959 2959 5005 5005
  $ for n in 1 2 48 49 50; do tail -n $n larger | wc -c; tail -n $n <larger | wc -c; cat larger | tail -n $n | wc -c; done | xargs
  1792 1792 1792 3838 3838 3838 97954 97954 97954 100000 100000 100000 100006 100006 100006
  $ (seq 50000; long 2046; echo; echo end) >exact && tail -n 3 exact | wc -c; tail -n 2 exact
  2051
  
  end
  $ for n in 1 2 3 4; do tail -n -$n short | wc -c; done
  5005
  2959
  913
  4
  $ tail -n 4 -c 1 large; tail -n -50001 -c 1 larger | wc -c
  000000
  nd
  96
  $ (read line; read line; tail -n 50001) <large | head -n 1; (read line; tail -n 60000) <large | head -n 1
  4
  2

Every byte is an ordinary one.

  $ printf '\377\na\0b\n\0\0\n' >odd
  $ tail -n 2 odd | od -An -c
     a  \0   b  \n  \0  \0  \n
  $ tail -n -1 -c 1 odd | od -An -c
    \0   b  \n  \0  \0  \n

Headers, for two files or with -v; the last of -q and -v decides. Without them, too, an empty line stands between
two files, also behind a file that failed.

  $ tail -n 1 three cut; echo
  ==> three <==
  3
  
  ==> cut <==
  c
  $ tail -n 1 -q three three
  3
  
  3
  $ tail -n 1 -v three
  ==> three <==
  3
  $ tail -n 1 -v -q three three
  3
  
  3
  $ tail -n 1 -qv <three
  ==> - <==
  3
  $ streams garnel tail -n 1 none . three; echo "status $?"
  
  ==> three <==
  3
  2> tail: none: No such file or directory
  2> tail: .: Not a file
  status 1
  $ tail -n 1 three none three 2>&1
  ==> three <==
  3
  tail: none: No such file or directory
  
  ==> three <==
  3
  [1]
  $ streams garnel tail -; echo "status $?"
  2> tail: -: No such file or directory
  status 1
  $ cp three ./-; tail -n 1 - three
  ==> - <==
  3
  
  ==> three <==
  3

A file that cannot be opened is passed over without a word, and FIFOs and devices are read.

  $ setsid -w garnel tail /dev/tty; echo "status $?"
  status 0
  $ mkfifo pipe && (cat three >pipe &) && tail -n 2 pipe
  2
  3
  $ tail -n 1 -c 1 /dev/null

Input comes in pieces, and may be longer than what is held of it.

  $ (printf 'a'; sleep 0.1; printf 'b\nc'; sleep 0.1; printf 'd\ne\n') | tail -n 2
  cd
  e
  $ (printf 'ab'; sleep 0.1; printf 'c\nd'; sleep 0.1; printf 'ef') | tail -c 1; echo .
  bc
  ef.
  $ (printf 'a\nb\n'; sleep 0.1; printf 'c\nd') | tail -n -1; echo
  b
  c
  d
  $ seq 300000 >many
  $ cat many | tail -n 3; tail -n 3 many; (sleep 0.1; cat) <many | tail -n -299997
  299998
  299999
  300000
  299998
  299999
  300000
  299998
  299999
  300000
  $ for way in many /dev/stdin; do cat many | tail -n 200000 $way | cksum; cat many | tail -n -100000 $way | cksum; done
  469596948 1400000
  469596948 1400000
  469596948 1400000
  469596948 1400000
  $ tail -n -1 many >out && cksum <out && tail -n 299999 many | cksum && tail -n 2 many >>out && garnel tail -n 3 out
  4283001347 1988893
  4283001347 1988893
  300000
  299999
  300000
  $ yes | head -n 100000 | tail -n 0

  $ tail --help
  Usage: tail [OPTION]... [FILE]...
  Print the last 10 lines of each FILE to standard output.
  
      -c    output the last K bytes; with the leading '-', print from the Kth bytes of each file
      -n    output the last K lines instead of the last 10; with the leading '-', print from the Kth lines of each file
      -q    never print tailers giving file names
      -v    always print tailers giving file names
  $ streams garnel tail -f three; echo "status $?"
  2> tail: unknown switch: -f
  status 100
  $ tail -n 1 three >/dev/full; echo "status $?"
  tail: write error: No space left on device
  status 1
  $ tail -n 200000 many >/dev/full; echo "status $?"
  tail: write error: No space left on device
  status 1
  $ yes | tail -n -3 >/dev/full; echo "status $?"
  tail: write error: No space left on device
  status 1
  $ tail <.; echo "status $?"
  tail: -: Is a directory
  status 1

Lines that must be held need memory. (The sanitizers want more than such a limit leaves.)

  $ limited() { (ulimit -v 100000; garnel "$@"); }
  $ if limited true 2>/dev/null; then
  >     yes 0123456789 | limited tail -n 2147483647; echo "status $?"
  > else
  >     printf 'tail: out of memory\nstatus 2\n'
  > fi
  tail: out of memory
  status 2

Against a model that follows the rules literally, with random files.

  $ python3 "$TESTS/models/text.py" tail 1 25
  tail, seed 1: 25 rounds agree
