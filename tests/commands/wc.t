Newlines, words and bytes, or what the options want, in this order and then the longest line, whatever order the
options are given in. A last line without a newline is not counted, but may be the longest.

  $ alias wc='garnel wc'
  $ printf 'one two\n three\nlast one' >text && : >empty && printf '\n\n' >blank
  $ wc -Lcwl text
   2  5 23  8 text
  $ wc empty; wc <empty
  0 0 0 empty
  0 0 0

Blanks are space, \t, \n, \v, \f and \r. Every other byte, a NUL as well, is one of a word and one of a line.

  $ printf 'a\tb\vc\fd\re f\n\0 \001\302\240\377\n\010' | wc -lwcL
   2  9 20 11

One row for each operand, and a total, whose longest line is the longest of all. One width for all columns. The
name of standard input is shown where it was given.

  $ wc -Ll text blank text
  2 8 text
  2 0 blank
  2 8 text
  6 8 total
  $ wc - - <text
   2  5 23 -
   0  0  0 -
   2  5 23 total

What fails has a message and no row. The others go on.

  $ told garnel wc text none . text; told garnel wc -c .; told garnel wc <.; told setsid -w garnel wc /dev/tty
  1  2  5 23 text
   2  5 23 text
   4 10 46 total
  2> wc: none: No such file or directory
  2> wc: .: Is a directory
  1 2> wc: .: Is a directory
  1 2> wc: -: Is a directory
  1 2> wc: /dev/tty: No such device or address

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

  $ seq 1000000 >large && wc -lwcL large && (dd bs=1 skip=3000001 count=0 2>/dev/null; wc) <large && cat large | wc -lwcL
  1000000 1000000 6888896       7 large
   555557  555557 3888895
  1000000 1000000 6888896       7
  $ (wc -l; cat) <large
  1000000

Against a model, with random files.

  $ python3 "$TESTS/models/text.py" wc 1 25
  wc, seed 1: 25 rounds agree
