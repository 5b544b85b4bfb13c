  $ alias hd='garnel hd'
  $ printf 'Lines of sixteen bytes, with \t\n\0\177\377\200 shown as dots.~' >text && : >empty

From an offset, and not more than a length, both with units; the offset that is shown is that of the file. A
negative skip counts as none.

  $ hd -n 0 text; hd -n -1 -s 5 text; hd -s 100 text
  00000000
  00000005
  00000064
  $ hd -s -16 -n 1 text
  00000000  4c                                                |L|
  00000001
  $ hd -n 1K text | tail -n 1; hd -s 1kB text; truncate -s 8796093022208 sparse && hd -s 0x7ffffffffff sparse
  00000033
  000003e8
  7ffffffffff  00                                                |.|
  80000000000
  $ (dd bs=1 skip=30 count=0 2>/dev/null; garnel hd -n 2; garnel hd -s 1 -n 2) <text
  00000000  0a 00                                             |..|
  00000002
  00000001  69 6e                                             |in|
  00000003

What one read delivers begins a line of its own.

  $ (printf 'abc'; sleep 0.2; printf 'defghijklmnopqrstuv'; sleep 0.2; printf w) | hd
  00000000  61 62 63                                          |abc|
  00000003  64 65 66 67 68 69 6a 6b  6c 6d 6e 6f 70 71 72 73  |defghijklmnopqrs|
  00000013  74 75 76                                          |tuv|
  00000016  77                                                |w|
  00000017
  $ (dd if=/dev/zero bs=8195 count=1 2>/dev/null; sleep 0.2; printf end) | hd | tail -n 3
  00002000  00 00 00                                          |...|
  00002003  65 6e 64                                          |end|
  00002006

What fails takes nothing away from the others; the status is that of the worst.

  $ streams garnel hd none empty . empty
  00000000
  00000000
  2> hd: none: No such file or directory
  2> hd: .: Is a directory
  [3]
  $ true | told garnel hd -s 1; told garnel hd <.; told garnel hd text -n; told garnel hd -s 2x text
  3 2> hd: stdin: Illegal seek
  3 2> hd: stdin: Is a directory
  1 2> hd: -n: missing or invalid operand
  1 2> hd: -s: missing or invalid operand
  $ hd text none >/dev/full
  hd: none: No such file or directory
  hd: write error: No space left on device
  [3]

Against a model, with random files.

  $ python3 "$TESTS/models/text.py" hd 1 25
  hd, seed 1: 25 rounds agree
