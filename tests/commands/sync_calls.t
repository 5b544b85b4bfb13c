The system is asked once to write everything back, also by umount whatever its operands are:
Needs: strace -o /dev/null true

  $ export ASAN_OPTIONS=detect_leaks=0
  $ calls() { strace -o trace -e trace=sync "$@" 2>&1; grep -c '^sync() *= 0' trace; }
  $ calls garnel sync
  1
  $ calls garnel sync .
  sync: extra operand '.'
  0
  [1]
  $ calls garnel umount none none
  umount: none: No such file or directory
  umount: none: No such file or directory
  1
