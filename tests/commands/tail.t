The last ten lines, or as many as asked for. The value is the next word, may have a unit, and counts modulo 2^32;
a value that is none shows the usage.

  $ alias tail='garnel tail'
  $ seq 12 >twelve && printf '1\n2\n3\n' >three && printf 'a\n\nc' >cut && : >empty
  $ tail twelve | tr '\n' ' '
  3 4 5 6 7 8 9 10 11 12  (no-eol)
  $ tail -n 0x2 <twelve
  11
  12
  $ tail -n 1K twelve | wc -l
  12
  $ tail -n 4294967297 three
  3
  $ tail -n 2 -n 1 three cut -q
  3
  
  c (no-eol)
  $ for words in '-n 5m three' 'three -c' -n; do garnel tail $words >usage; echo "$? $(garnel head -n 1 usage)"; done
  0 Usage: tail [OPTION]... [FILE]...
  0 Usage: tail [OPTION]... [FILE]...
  0 Usage: tail [OPTION]... [FILE]...
  $ tail -n -2147483648 three; tail -n 1 -c -2147483648 three
  3

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
  $ (read line; read line; tail -n 50001) <large | head -n 1; (read line; tail -n 60000) <large | head -n 1
  4
  2

Files that fail, or need another way. What stands between files is the same as with head.

  $ streams garnel tail -n 1 none . three cut
  
  ==> three <==
  3
  
  ==> cut <==
  c2> tail: none: No such file or directory
  2> tail: .: Not a file
  [1]
  $ mkfifo pipe && (cat three >pipe &) && tail -n 2 pipe
  2
  3

Input comes in pieces, and may be longer than what is held of it.

  $ seq 300000 >many
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
  $ streams garnel tail -f three; echo "status $?"
  2> tail: unknown switch: -f
  status 100
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
