A terminal; operands do not matter:

  $ script -qec 'garnel tty -q x 2>&1; [ "$(garnel tty x)" = "$(tty)" ]; echo $?; garnel tty --silent; echo $?' /dev/null < /dev/null | tr -d '\r'
  tty: unknown switch: -q
  0
  0

No terminal, no input at all, and a terminal whose other end is gone:

  $ streams garnel tty x < /dev/null; echo $?; garnel tty -s < /dev/null; echo $?
  not a tty
  1
  1
  $ streams garnel tty <&-; echo $?; streams garnel tty --quiet <&-; echo $?
  not a tty
  2> tty: standard input: Bad file descriptor
  1
  4
  $ cat > gone <<'END'
  > import os, subprocess, sys
  > master, slave = os.openpty()
  > os.close(master)
  > sys.exit(subprocess.call(sys.argv[1:], stdin=slave))
  > END
  $ streams python3 gone garnel tty; echo $?; python3 gone garnel tty -s
  not a tty
  2> tty: standard input: Input/output error
  1
  [4]
