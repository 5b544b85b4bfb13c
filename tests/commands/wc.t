Newlines, words and bytes, or what the options want, in this order and then the longest line, whatever order the
options are given in. A last line without a newline is not counted, but may be the longest.

  $ alias wc='garnel wc'
  $ printf 'one two\n three\nlast one' >text && : >empty && printf '\n\n' >blank
  $ wc text
   2  5 23 text
  $ wc -Lcwl text
   2  5 23  8 text
  $ wc -c text -w
   5 23 text
  $ wc -L text
  8 text
  $ wc -l <text
  2
  $ cat text | wc -lc
   2 23
  $ wc empty; wc <empty; wc -L blank
  0 0 0 empty
  0 0 0
  0 blank
  $ printf 'text' | wc -L - 
  4 -

Blanks are space, \t, \n, \v, \f and \r. Every other byte, a NUL as well, is one of a word and one of a line.

  $ printf 'a\tb\vc\fd\re f\n\0 \001\302\240\377\n\010' | wc -lwcL
   2  9 20 11

One row for each operand, and a total, whose longest line is the longest of all. One width for all columns. The
name of standard input is shown where it was given.

  $ wc text empty blank
   2  5 23 text
   0  0  0 empty
   2  0  2 blank
   4  5 25 total
  $ wc -Ll text blank text
  2 8 text
  2 0 blank
  2 8 text
  6 8 total
  $ wc - blank <text
   2  5 23 -
   2  0  2 blank
   4  5 25 total
  $ wc - - <text
   2  5 23 -
   0  0  0 -
   2  5 23 total
  $ wc - <text
   2  5 23 -
  $ seq 100000 >many && wc many text && cat many | wc && wc -l many
  100000 100000 588895 many
       2      5     23 text
  100002 100005 588918 total
  100000 100000 588895
  100000 many

What fails has a message and no row. The others go on.

  $ streams garnel wc text none . text; echo "status $?"
   2  5 23 text
   2  5 23 text
   4 10 46 total
  2> wc: none: No such file or directory
  2> wc: .: Is a directory
  status 1
  $ streams garnel wc -c none text; echo "status $?"
  23 text
  23 total
  2> wc: none: No such file or directory
  status 1
  $ streams garnel wc none; echo "status $?"
  2> wc: none: No such file or directory
  status 1
  $ streams garnel wc -c . ; echo "status $?"
  2> wc: .: Is a directory
  status 1
  $ streams garnel wc <.; echo "status $?"
  2> wc: -: Is a directory
  status 1
  $ streams setsid -w garnel wc /dev/tty; echo "status $?"
  2> wc: /dev/tty: No such device or address
  status 1
  $ streams garnel wc -m text; echo "status $?"
  2> wc: unknown switch: -m
  status 100
  $ streams garnel wc --lines text; echo "status $?"
  2> wc: unknown switch: --
  status 100
  $ wc --help
  Usage: wc [OPTION]... [FILE]...
  Print newline, word and byte counts of FILE(s), or of standard input, and a total.
  
      -c    print the number of bytes
      -l    print the number of newlines
      -L    print the length of the longest line
      -w    print the number of words
  $ wc text >/dev/full; echo "status $?"
  wc: write error: No space left on device
  status 1

The size of a regular file is known without reading it; from its present place on, for standard input. Files that
the system makes up are read.

  $ truncate -s 1T sparse && wc -c sparse && wc -c text sparse
  1099511627776 sparse
             23 text
  1099511627776 sparse
  1099511627799 total
  $ (read line; wc -c) <text; (cat >/dev/null; wc -c) <text
  15
  0
  $ (dd bs=1 skip=100 count=0 2>/dev/null; wc -c) <text
  0
  $ test "$(wc -c </proc/version)" -eq "$(cat /proc/version | wc -c)"
  $ made_up=/sys/kernel/uevent_seqnum; test ! -e $made_up || test "$(cat $made_up | wc -c) $made_up" = "$(wc -c $made_up)"

Input comes in pieces. Large files are looked at where they lie.

  $ (printf 'a'; sleep 0.1; printf 'b c'; sleep 0.1; printf ' \nd') | wc -lwcL
  1 3 7 5
  $ seq 1000000 >large && wc -lwcL large && (dd bs=1 skip=3000001 count=0 2>/dev/null; wc) <large && cat large | wc -lwcL
  1000000 1000000 6888896       7 large
   555557  555557 3888895
  1000000 1000000 6888896       7
  $ (wc -l; cat) <large
  1000000
  $ cat large large large large large large large large large large >larger && wc -lwcL larger
  10000000 10000000 68888960        7 larger

Against a model, with random files.

  $ python3 "$TESTS/models/text.py" wc 1 25
  wc, seed 1: 25 rounds agree
