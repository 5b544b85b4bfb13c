head and tail have the same options and files. A value is the next word, may have a unit, and counts modulo 2^32; one
that is none shows the usage.

  $ seq 12 >twelve && printf '1\n2\n3\n' >three && printf 'a\n\nc' >cut && : >empty
  $ both() { for way in head tail; do streams garnel $way "$@"; echo "[$?]"; done; }
  $ row() { both "$@" | tr '\n' ' '; echo; }
  $ row twelve; row -n 0x2 <twelve; both -n 1K twelve | wc -l; row -n 4294967297 three; row -n 2 -n 1 three cut -q
  1 2 3 4 5 6 7 8 9 10 [0] 3 4 5 6 7 8 9 10 11 12 [0] 
  1 2 [0] 11 12 [0] 
  26
  1 [0] 3 [0] 
  1  a [0] 3  c[0] 
  $ row -n 0 three empty; row -n -2147483648 three; row -n 1 -c -2147483648 three
  ==> three <==  ==> empty <== [0] ==> three <==  ==> empty <== [0] 
  [0] [0] 
  1 [0] 3 [0] 
  $ for words in '-n 5m three' 'three -c' -n; do row $words | grep -o 'Usage: [a-z]* \|\[[0-9]*\]' | xargs; done | uniq -c
        3 Usage: head [0] Usage: tail [0]

Headers, for two files or with -v; the last of -q and -v decides. Without them, too, an empty line stands between
two files, also behind a file that failed. A dash is a file.

  $ row -n 1 -qv <three; cp three ./-; row -n 1 none . - cut
  ==> - <== 1 [0] ==> - <== 3 [0] 
   ==> - <== 1  ==> cut <== a 2> head: none: No such file or directory 2> head: .: Not a file [1]  ==> - <== 3  ==> cut <== c2> tail: none: No such file or directory 2> tail: .: Not a file [1] 
  $ (garnel head -n 1 three none cut 2>&1) | tail -n 4
  head: none: No such file or directory
  
  ==> cut <==
  a

A file that cannot be opened is passed over without a word, and FIFOs and devices are read.

  $ setsid -w garnel head -n 1 three /dev/tty three | tail -n 2
  ==> three <==
  1
  $ mkfifo pipe && for way in head tail; do (cat three >pipe &) && garnel $way -n 2 pipe; done | xargs
  1 2 2 3

A line goes on as another one behind 2046 bytes. Its newline belongs to it: a line of 2046 bytes leaves a line
that is empty. That is so also in long files, of which tail does not read the beginning.

  $ long() { printf "%0$1d" 0; }; tail() { garnel tail "$@"; }
  $ (seq 50000; long 5000; echo; echo end) >large && (seq 50000; long 100000) >larger
  $ for n in 1 2 3 4; do tail -n $n large | wc -c; done | xargs
  4 913 2959 5005
  $ for n in 1 2 48 49 50; do tail -n $n larger | wc -c; tail -n $n <larger | wc -c; cat larger | tail -n $n | wc -c; done | uniq -c
        3 1792
        3 3838
        3 97954
        3 100000
        3 100006
  $ (seq 50000; long 2046; echo; echo end) >exact && tail -n 3 exact | wc -c; tail -n 2 exact
  2051
  
  end
  $ (read line; read line; tail -n 50001) <large | head -n 1; (read line; tail -n 60000) <large | head -n 1
  4
  2

Input comes in pieces, and may be longer than what is held of it. What head did not print is left to whoever reads next.

  $ (garnel head -n 1; cat) <three | xargs; (garnel head -n 1 >/dev/null; garnel head -n -1) <three
  1 2 3
  2
  $ seq 300000 >many; garnel head -n -299998 many; (read line; garnel head -n -299998) <many; garnel head -n -1 many | cmp - many
  1
  2
  2
  cmp: EOF on - after byte 1988888, line 299999
  [1]
  $ for way in many /dev/stdin; do
  >     cat many | tail -n 200000 $way | cksum; cat many | tail -n -100000 $way | cksum
  > done | uniq -c
        4 469596948 1400000
  $ tail -n -1 many | cksum; tail -n 299999 many | cksum
  4283001347 1988893
  4283001347 1988893

  $ for way in head tail; do yes | garnel $way -n -3 >/dev/full; echo $?; garnel $way <.; echo $?; done
  head: write error: No space left on device
  1
  head: -: Is a directory
  1
  tail: write error: No space left on device
  1
  tail: -: Is a directory
  1

Lines that must be held need memory. (The sanitizers want more than such a limit leaves.)

  $ limited() { (ulimit -v 100000; garnel "$@"); }
  $ if limited true 2>/dev/null; then
  >     for words in 'head -n -2147483648 three /dev/stdin' 'tail -n 2147483647'; do yes | limited $words; echo $?; done
  > else
  >     printf '==> three <==\n\n==> /dev/stdin <==\nhead: out of memory\n2\ntail: out of memory\n2\n'
  > fi
  ==> three <==
  
  ==> /dev/stdin <==
  head: out of memory
  2
  tail: out of memory
  2

Against a model that follows the rules literally, with random files.

  $ for way in head tail; do python3 "$TESTS/models/text.py" $way 1 25; done
  head, seed 1: 25 rounds agree
  tail, seed 1: 25 rounds agree
