  $ alias hd='garnel hd'
  $ printf 'Lines of sixteen bytes, with \t\n\0\177\377\200 shown as dots.~' >text && : >empty
  $ hd text
  00000000  4c 69 6e 65 73 20 6f 66  20 73 69 78 74 65 65 6e  |Lines of sixteen|
  00000010  20 62 79 74 65 73 2c 20  77 69 74 68 20 09 0a 00  | bytes, with ...|
  00000020  7f ff 80 20 73 68 6f 77  6e 20 61 73 20 64 6f 74  |... shown as dot|
  00000030  73 2e 7e                                          |s.~|
  00000033

From an offset, and not more than a length, both with units; the offset that is shown is that of the file. A
negative skip counts as none.

  $ hd -n 0 text; hd -n -1 -s 5 text; hd -s 100 text
  00000000
  00000005
  00000064
  $ hd -s -16 -n 1 text
  00000000  4c                                                |L|
  00000001
  $ hd -n 1K text | tail -n 1; hd -s 1kB text
  00000033
  000003e8
  $ hd -n 4 text empty text
  00000000  4c 69 6e 65                                       |Line|
  00000004
  00000000
  00000000  4c 69 6e 65                                       |Line|
  00000004
  $ truncate -s 5G sparse && printf end >>sparse && hd -s 5368709119 sparse
  13fffffff  00 65 6e 64                                       |.end|
  140000003
  $ truncate -s 8796093022208 sparse && hd -s 0x7ffffffffff sparse
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
  $ (printf 'abc'; sleep 0.2; printf 'defghijkl') | hd -n 5
  00000000  61 62 63                                          |abc|
  00000003  64 65                                             |de|
  00000005

  $ streams garnel hd none empty . empty
  00000000
  00000000
  2> hd: none: No such file or directory
  2> hd: .: Is a directory
  [3]
  $ true | streams garnel hd -s 1; echo "status $?"
  2> hd: stdin: Illegal seek
  status 3
  $ streams garnel hd <.; echo "status $?"
  2> hd: stdin: Is a directory
  status 3
  $ streams garnel hd text -n; echo "status $?"
  2> hd: -n: missing or invalid operand
  status 1
  $ streams garnel hd -s 2x text; echo "status $?"
  2> hd: -s: missing or invalid operand
  status 1
  $ streams garnel hd -C text; echo "status $?"
  2> hd: unknown switch: -C
  status 100
  $ garnel hd -n 3 text none text 2>&1
  00000000  4c 69 6e                                          |Lin|
  00000003
  hd: none: No such file or directory
  00000000  4c 69 6e                                          |Lin|
  00000003
  [3]
  $ hd /dev/zero >/dev/full; echo "status $?"
  hd: write error: No space left on device
  status 1
  $ hd text none >/dev/full; echo "status $?"
  hd: none: No such file or directory
  hd: write error: No space left on device
  status 3

Against a model, with random files.

  $ python3 "$TESTS/models/text.py" hd 1 25
  hd, seed 1: 25 rounds agree
