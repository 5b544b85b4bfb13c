  $ alias cmp='garnel cmp'; try() { told garnel cmp "$@"; }
  $ printf 'abc' >abc && printf 'abd' >abd && printf 'xbz' >xbz && printf 'xabc' >xabc

The second file may be standard input, the first may not.

  $ cmp abc <abd
  abc - differ: byte 3, line 1
  [1]
  $ cat abc | cmp abc -
  $ printf 'ab' | cmp abc
  cmp: EOF on -
  [1]
  $ cp abc ./- && cmp - abd </dev/null; cmp abc - </dev/null
  - abd differ: byte 3, line 1
  cmp: EOF on -
  [1]
  $ (dd bs=1 skip=1 count=0 2>/dev/null; garnel cmp abc) <xabc

Skips are sizes; what is behind the end of a file is its end.

  $ cmp xabc abc 1; cmp xabc abc 1k; cmp abc abc -1
  cmp: EOF on xabc
  Unknown switch: -1
  [100]
  $ for words in '-n 2x abc xbz' 'abc xbz -n'; do garnel cmp $words >usage; echo "$? $(head -n 1 usage)"; done
  0 Usage: cmp [OPTION]... FILE1 [FILE2 [SKIP1 [SKIP2]]]
  0 Usage: cmp [OPTION]... FILE1 [FILE2 [SKIP1 [SKIP2]]]

  $ try -l -s none; try abc abd 1x 1x 1; try abc abd 1 2kx 1; try abc abd 1 1c; try abc abd 1 2 3
  2 2> cmp: options -l and -s are incompatible
  2 2> cmp: failed to parse SKIP1
  2 2> cmp: failed to parse SKIP2
  2 2> cmp: failed to parse SKIP2
  2 2> cmp: extra operand found
  $ try none abc; try abc none
  2 2> cmp: Could not open 'none' for read: No such file or directory
  2 2> cmp: Could not open 'none' for read: No such file or directory

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
