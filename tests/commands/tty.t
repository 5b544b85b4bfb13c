A terminal; operands do not matter:

  $ script -qec 'garnel tty -q x 2>&1; [ "$(garnel tty x)" = "$(tty)" ]; echo $?; garnel tty --silent; echo $?' /dev/null < /dev/null | tr -d '\r'
  tty: unknown switch: -q
  0
  0

No terminal, no input at all, and a terminal whose other end is gone:

  $ told garnel tty x < /dev/null; told garnel tty -s < /dev/null; told garnel tty <&-; told garnel tty --quiet <&-
  1 not a tty
  1
  1 not a tty
  2> tty: standard input: Bad file descriptor
  4
  $ cat > gone <<'END'
  > import os, subprocess, sys
  > master, slave = os.openpty()
  > os.close(master)
  > sys.exit(subprocess.call(sys.argv[1:], stdin=slave))
  > END
  $ told python3 gone garnel tty; told python3 gone garnel tty -s
  1 not a tty
  2> tty: standard input: Input/output error
  4
