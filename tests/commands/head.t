The first ten lines, or as many as asked for. The value is the next word, may have a unit, and counts modulo
2^32; a value that is none shows the usage.

  $ alias head='garnel head'
  $ seq 12 >twelve && printf '1\n2\n3\n' >three && printf 'a\n\nc' >cut && : >empty
  $ head twelve | tr '\n' ' '
  1 2 3 4 5 6 7 8 9 10  (no-eol)
  $ head twelve -n 2
  1
  2
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
  $ head cut; echo; head empty; head </dev/null
  a
  
  c
  $ head -n 0 three empty
  ==> three <==
  
  ==> empty <==
  $ head -n 5m three; echo "status $?"
  Usage: head [OPTION]... [FILE]...
  Print the first 10 lines of each FILE to standard output.
  
      -c    print the first K bytes of each file; with the leading '-', print all but the last K bytes of each file
      -n    print the first K lines instead of the first 10; with the leading '-', print all but the last K lines of each file
      -q    never print headers giving file names
      -v    always print headers giving file names
  status 0
  $ head three -c | head -n 1
  Usage: head [OPTION]... [FILE]...
  $ head -n | head -n 1
  Usage: head [OPTION]... [FILE]...

All but the last lines. What the file does not end with a newline is a line.

  $ head -n -2 three
  1
  $ head -n -1 cut
  a
  
  $ head -n -3 three; head -n -4 three; head -n -2147483648 three; head -n -1 empty
  $ head -n -1 <three
  1
  2
  $ cat three | head -n -1
  1
  2
  $ cat cut | head -n -1
  a
  

Lines are cut, not files: -c K leaves the first K bytes of each, -c -K takes the last K and one more, and leaves
a line alone that is not longer than K.

  $ printf 'abcdef\nabc\n\nabcd' >lines
  $ head -c 3 lines; echo .
  abc
  abc
  
  abc.
  $ head -n 2 -c 5 lines
  abcde
  abc
  $ head -c -3 lines; echo .
  ab
  abc
  
  .
  $ head -c -5 lines; echo .
  
  abc
  
  abcd.
  $ head -c -2147483648 lines; echo .
  abcdef
  abc
  
  abcd.
  $ head -n -1 -c 1 lines
  a
  a
  

A line goes on as another one behind 2046 bytes. Its newline belongs to it: a line of 2046 bytes leaves a line
that is empty.

  $ long() { printf "%0$1d" 0; }
  $ (long 5000; echo; echo end) >long
  $ for n in 1 2 3 4; do head -n $n long | wc -c; done
  2046
  4092
  5001
  5005
  $ for n in 1 2 3; do head -n -$n long | wc -c; done
  5001
  4092
  2046
  $ head -n 3 -c 5 long
  000000000000000
  $ (long 2045; echo; long 2046; echo; echo end) | head -n 3 | wc -c
  4093
  $ (long 2046; echo; echo end) | head -n -2 | wc -c
  2046
  $ head -n 2 -c 1 long; echo .
  00.

Every byte is an ordinary one.

  $ printf 'a\0b\n\0\0\n\377\n' >odd
  $ head -n 2 odd | od -An -c
     a  \0   b  \n  \0  \0  \n
  $ head -n -1 -c 2 odd | od -An -c
     a  \0  \n  \0  \0  \n

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
  $ head -n 1 -v three
  ==> three <==
  1
  $ head -n 1 -v -q three cut
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
  $ streams garnel head -n 1 -q three none; echo "status $?"
  1
  2> head: none: No such file or directory
  status 1
  $ garnel head -n 1 three none cut 2>&1
  ==> three <==
  1
  head: none: No such file or directory
  
  ==> cut <==
  a
  [1]
  $ streams garnel head -; echo "status $?"
  2> head: -: No such file or directory
  status 1
  $ cp three ./-; garnel head -n 1 - three
  ==> - <==
  1
  
  ==> three <==
  1

A file that cannot be opened is passed over without a word, and FIFOs and devices are read.

  $ setsid -w garnel head /dev/tty; echo "status $?"
  status 0
  $ setsid -w garnel head -n 1 three /dev/tty three
  ==> three <==
  1
  
  ==> three <==
  1
  $ mkfifo pipe && (cat three >pipe &) && head -n 2 pipe
  1
  2
  $ head -n 1 -c 1 /dev/null; head -n 2 -c 1 /dev/zero | od -An -c
    \0  \0

Input comes in pieces. What was not printed is left to whoever reads the same file next.

  $ (printf 'a'; sleep 0.1; printf 'b\nc'; sleep 0.1; printf 'd\ne\n') | head -n 2
  ab
  cd
  $ (printf 'ab'; sleep 0.1; printf 'c\nd'; sleep 0.1; printf 'ef') | head -c 2; echo .
  ab
  de.
  $ (printf 'a\nb\n'; sleep 0.1; printf 'c\nd') | head -n -1
  a
  b
  c
  $ (head -n 1; cat) <three
  1
  2
  3
  $ (head -n 1 >/dev/null; head -n -1) <three
  2
  $ yes | head -n 100000 | wc -l
  100000
  $ seq 100000 >many; head -n -99998 many; (read line; garnel head -n -99998) <many; head -n 99999 many | cksum; head -n -1 many | cksum
  1
  2
  2
  2941577287 588888
  2941577287 588888
  $ head -n -1 many >out && cksum out && head -n -1 many >>out && wc -c out
  2941577287 588888 out
  1177776 out

  $ head --help
  Usage: head [OPTION]... [FILE]...
  Print the first 10 lines of each FILE to standard output.
  
      -c    print the first K bytes of each file; with the leading '-', print all but the last K bytes of each file
      -n    print the first K lines instead of the first 10; with the leading '-', print all but the last K lines of each file
      -q    never print headers giving file names
      -v    always print headers giving file names
  $ streams garnel head -x three; echo "status $?"
  2> head: unknown switch: -x
  status 100
  $ streams garnel head --lines=3 three; echo "status $?"
  2> head: unknown switch: --
  status 100
  $ head -n 1 three >/dev/full; echo "status $?"
  head: write error: No space left on device
  status 1
  $ head -n -1 many >/dev/full; echo "status $?"
  head: write error: No space left on device
  status 1
  $ yes | head -n -3 >/dev/full; echo "status $?"
  head: write error: No space left on device
  status 1
  $ head three none >/dev/full; echo "status $?"
  head: none: No such file or directory
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
