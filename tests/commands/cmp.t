  $ alias cmp='garnel cmp'
  $ printf 'abc' >abc && printf 'abd' >abd && printf 'xbz' >xbz && printf 'xabc' >xabc && : >empty
  $ printf 'a\nb' >ab && printf 'a\nc' >ac && printf 'a\nb\nd' >abd2

The first difference, with its byte and line; -b shows the bytes. All of them with -l, whose values are decimal;
none with -s.

  $ cmp abc abd
  abc abd differ: byte 3, line 1
  [1]
  $ cmp ab ac
  ab ac differ: byte 3, line 2
  [1]
  $ cmp -b abc abd
  abc abd differ: byte 3, line 1 is 99 c 100 d
  [1]
  $ printf 'ab\0' >nul && cmp -b abc nul | od -An -c | tail -n 1
     s       9   9       c       0      \0  \n
  $ cmp -l abc xbz
  1 97 120
  3 99 122
  [1]
  $ cmp -l -b abc xbz
  1 97 120
  3 99 122
  [1]
  $ cmp -s abc abd; echo "status $?"
  status 1
  $ cmp -sb abc abd
  [1]
  $ cmp abc abc; cmp -l abc abc; cmp -s abc abc; cmp empty empty

An early end is told on standard output.

  $ cmp abc empty
  cmp: EOF on empty
  [1]
  $ streams garnel cmp empty abc
  cmp: EOF on empty
  [1]
  $ cmp ab abd2
  cmp: EOF on ab
  [1]
  $ cmp abd2 ab
  cmp: EOF on ab
  [1]
  $ cmp -l ab abd2
  cmp: EOF on ab
  [1]
  $ printf 'axcdef' >axc && cmp -l abc axc
  2 98 120
  cmp: EOF on abc
  [1]
  $ cmp -s abc empty; cmp -s ab abd2; echo "status $?"
  status 1

The second file may be standard input, the first may not.

  $ cmp abc <abd
  abc - differ: byte 3, line 1
  [1]
  $ cat abc | cmp abc -
  $ printf 'ab' | cmp abc
  cmp: EOF on -
  [1]
  $ streams garnel cmp - abc; echo "status $?"
  2> cmp: Could not open '-' for read: No such file or directorystatus 2
  $ cp abc ./- && cmp - abd </dev/null; cmp abc - </dev/null
  - abd differ: byte 3, line 1
  cmp: EOF on -
  [1]
  $ (dd bs=1 skip=1 count=0 2>/dev/null; garnel cmp abc) <xabc

Skips are sizes. Bytes and lines are counted from behind them. All of the first skip is done before the second,
and both files have to have a first byte before anything is skipped. A skip to the end of a file, or behind it, is
an early end.

  $ cmp xabc abc 1
  $ cmp abc xabc 0 0x1
  $ cmp ab ac 2; cmp ab ac 2 2
  ab ac differ: byte 1, line 1
  ab ac differ: byte 1, line 1
  [1]
  $ cmp xabc abc 1k; cmp xabc abc 4; cmp abc xabc 0 4; cmp abc xabc 3 9; cmp abc abc 2 3
  cmp: EOF on xabc
  cmp: EOF on xabc
  cmp: EOF on xabc
  cmp: EOF on abc
  cmp: EOF on abc
  [1]
  $ cmp abc empty 9; cmp empty abc 0 9; cmp empty empty 1 1
  cmp: EOF on empty
  cmp: EOF on empty
  $ cmp -s abc abc 3; echo "status $?"
  status 1
  $ cmp abc abc -1
  Unknown switch: -1
  [100]

A limit limits nothing.

  $ printf 'aaaab' >five1 && printf 'aaaac' >five2 && cmp -n 2 five1 five2
  five1 five2 differ: byte 5, line 1
  [1]
  $ cmp -n 2x five1 five2; echo "status $?"
  Usage: cmp [OPTION]... FILE1 [FILE2 [SKIP1 [SKIP2]]]
  Compare two files byte by byte. FILE2 can be -.
  
      -b    print differing bytes
      -l    output byte numbers and values of all differing bytes
      -n    LIMIT -- compare at most LIMIT bytes
      -s    output nothing; yield exit status only
  status 0
  $ cmp five1 five2 -n | head -n 1
  Usage: cmp [OPTION]... FILE1 [FILE2 [SKIP1 [SKIP2]]]

  $ try() { streams garnel cmp "$@"; echo "status $?"; }
  $ try -l -s none
  2> cmp: options -l and -s are incompatible
  status 2
  $ try
  2> cmp: missing operand
  status 2
  $ try abc abd 1x 1x 1
  2> cmp: failed to parse SKIP1
  status 2
  $ try abc abd 1 2kx 1
  2> cmp: failed to parse SKIP2
  status 2
  $ try abc abd 1 1c
  2> cmp: failed to parse SKIP2
  status 2
  $ try abc abd 1 2 3
  2> cmp: extra operand found
  status 2
  $ try none abc
  2> cmp: Could not open 'none' for read: No such file or directorystatus 2
  $ try abc none
  2> cmp: Could not open 'none' for read: No such file or directorystatus 2
  $ try --print-bytes abc abd
  2> Unknown switch: --
  status 100
  $ try -i abc abd
  2> Unknown switch: -i
  status 100
  $ cmp abc abd >/dev/full; echo "status $?"
  cmp: write error: No space left on device
  status 1
  $ cmp -l abc xbz >/dev/full; echo "status $?"
  cmp: write error: No space left on device
  status 1
  $ cmp -l /dev/zero /dev/urandom >/dev/full; echo "status $?"
  cmp: write error: No space left on device
  status 1

A read error is the end of the file.

  $ cmp . abc; cmp abc .; cmp . .; cmp abc <.
  cmp: EOF on .
  cmp: EOF on .
  cmp: EOF on -
  [1]

A difference is seen as soon as the bytes are there.

  $ (printf 'ab'; sleep 0.1; printf 'd') | cmp abc
  abc - differ: byte 3, line 1
  [1]
  $ mkfifo fifo
  $ (printf 'abx'; exec sleep 10) >fifo 2>/dev/null & timeout 8 garnel cmp abc fifo
  abc fifo differ: byte 3, line 1
  [1]
  $ (yes | tr y z) 2>/dev/null >fifo & yes 2>/dev/null | garnel cmp -b /dev/stdin fifo
  /dev/stdin fifo differ: byte 1, line 1 is 121 y 122 z
  [1]

Large files are looked at where they lie.

  $ seq 1000000 >one && cp one two && cmp one two && cmp -l one two && cat two | cmp one
  $ printf x >>two && cmp one two; cat one | cmp two
  cmp: EOF on one
  cmp: EOF on -
  [1]
  $ printf x | dd of=two bs=1 seek=5000000 conv=notrunc 2>/dev/null; cmp -b one two; cmp -l one two; cat one | cmp two - 4000000 4000000
  one two differ: byte 5000001, line 730158 is 10 
   120 x
  5000001 10 120
  cmp: EOF on one
  two - differ: byte 1000001, line 142858
  [1]

Against a model that goes byte by byte, with random files.

  $ python3 "$TESTS/models/text.py" cmp 1 25
  cmp, seed 1: 25 rounds agree
