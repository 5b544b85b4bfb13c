The first ten lines, or as many as asked for. The value is the next word, may have a unit, and counts modulo
2^32; a value that is none shows the usage.

  $ alias head='garnel head'
  $ seq 12 >twelve && printf '1\n2\n3\n' >three && printf 'a\n\nc' >cut && : >empty
  $ head twelve | tr '\n' ' '
  1 2 3 4 5 6 7 8 9 10  (no-eol)
  $ head -n 0x2 <twelve
  1
  2
  $ head -n 1K twelve | wc -l
  12
  $ head -n 4294967297 three
  1
  $ head -n 2 -n 1 three cut -q
  1
  
  a
  $ head -n 0 three empty
  ==> three <==
  
  ==> empty <==
  $ for words in '-n 5m three' 'three -c' -n; do garnel head $words >usage; echo "$? $(head -n 1 usage)"; done
  0 Usage: head [OPTION]... [FILE]...
  0 Usage: head [OPTION]... [FILE]...
  0 Usage: head [OPTION]... [FILE]...
  $ head -n -2147483648 three; head -n 1 -c -2147483648 three
  1

Headers, for two files or with -v; the last of -q and -v decides. Without them, too, an empty line stands between
two files, also behind a file that failed.

  $ head -n 1 three cut
  ==> three <==
  1
  
  ==> cut <==
  a
  $ head -n 1 -q three cut
  1
  
  a
  $ head -n 1 -qv <three
  ==> - <==
  1
  $ streams garnel head -n 1 none . three; echo "status $?"
  
  ==> three <==
  1
  2> head: none: No such file or directory
  2> head: .: Not a file
  status 1
  $ garnel head -n 1 three none cut 2>&1
  ==> three <==
  1
  head: none: No such file or directory
  
  ==> cut <==
  a
  [1]
  $ cp three ./-; garnel head -n 1 - three
  ==> - <==
  1
  
  ==> three <==
  1

A file that cannot be opened is passed over without a word, and FIFOs and devices are read.

  $ setsid -w garnel head -n 1 three /dev/tty three
  ==> three <==
  1
  
  ==> three <==
  1
  $ mkfifo pipe && (cat three >pipe &) && head -n 2 pipe
  1
  2

Input comes in pieces. What was not printed is left to whoever reads the same file next.

  $ (head -n 1; cat) <three
  1
  2
  3
  $ (head -n 1 >/dev/null; head -n -1) <three
  2
  $ seq 100000 >many; head -n -99998 many; (read line; garnel head -n -99998) <many; head -n 99999 many | cksum; head -n -1 many | cksum
  1
  2
  2
  2941577287 588888
  2941577287 588888
  $ streams garnel head -x three; echo "status $?"
  2> head: unknown switch: -x
  status 100
  $ head -n 1 three >/dev/full; echo "status $?"
  head: write error: No space left on device
  status 1
  $ yes | head -n -3 >/dev/full; echo "status $?"
  head: write error: No space left on device
  status 1
  $ head <.; echo "status $?"
  head: -: Is a directory
  status 1

Lines that must be held need memory. (The sanitizers want more than such a limit leaves.)

  $ limited() { (ulimit -v 100000; garnel "$@"); }
  $ if limited true 2>/dev/null; then
  >     yes 0123456789 | limited head -n -2147483648 three /dev/stdin; echo "status $?"
  > else
  >     printf '==> three <==\n\n==> /dev/stdin <==\nhead: out of memory\nstatus 2\n'
  > fi
  ==> three <==
  
  ==> /dev/stdin <==
  head: out of memory
  status 2

Against a model that follows the rules literally, with random files.

  $ python3 "$TESTS/models/text.py" head 1 25
  head, seed 1: 25 rounds agree
