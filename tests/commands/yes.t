Short lines and long ones come whole, through pipes and into files:

  $ garnel yes | sed 2q; garnel yes a '' 'b c' | sed 2q; garnel yes '' | sed q
  y
  y
  a  b c
  a  b c
  
  $ x=$(printf %0100000d 0); model() { perl -e 'print "@ARGV\n" while 1' "$@" | head -c 3000000; }
  $ check() { model "$@" > expected; garnel yes "$@" | head -c 3000000 | cmp - expected; }
  $ check abcdefg; check "$x"; check "$x" "$x"; check "$x" "$x" "$x" "$x"
  $ (trap '' XFSZ; ulimit -f 1000; garnel yes abcdefg > file); model abcdefg | head -c 512000 | cmp - file

Output that fails or is closed ends it without a word:

  $ garnel yes > /dev/full; garnel yes >&-; (garnel yes; echo "status $?" >&2) | sed q
  y
  status 0
