  $ echo one > a; printf 'two\n\nthree' > b; : > empty

Files one behind the other, standard input as often as it is named; numbers go on from file to file, also within a line:

  $ echo in | garnel cat a - - b -N
  one
  in
  two
  
  three
  $ garnel cat b -n a - < b
       1  two
       2  
       3  threeone
       4  two
       5  
       6  three (no-eol)
  $ garnel cat -n < empty; garnel cat -nN empty empty
  
  $ yes '' | head -n 1000000 | garnel cat -n | tail -n 1
  1000000  

Every way in and out, with every byte, is the same:

  $ perl -e 'print map { chr($_ * $_ / 7 % 256) } 1 .. 2500000' > bytes
  $ garnel cat bytes > out && cmp bytes out && garnel cat bytes a >> out && cat bytes bytes a | cmp - out
  $ garnel cat < bytes | cmp bytes && cat bytes | garnel cat | cmp bytes
  $ cat bytes | garnel cat - a > out && cat bytes a | cmp - out
  $ mkfifo fifo && cat bytes > fifo & garnel cat fifo > out; cmp bytes out
  $ garnel cat -n bytes | perl -pe 's/^ *(\d+)  // and $1 == $. or die "line $."' | cmp - bytes
  $ garnel cat /proc/version > out && cmp /proc/version out && garnel cat /proc/version | cmp - out

What cannot be read is named in its place, and the rest is copied:

  $ mkdir dir; ln -s loop loop
  $ perl -MIO::Socket::UNIX -e 'IO::Socket::UNIX->new(Local => "socket", Listen => 1) or die'
  $ garnel cat -n a missing a dir loop a/x '' socket a 2>&1
       1  one
  cat: missing: No such file or directory
       2  one
  cat: dir: Not a regular file nor a character device
  cat: loop: Too many levels of symbolic links
  cat: a/x: Not a directory
  cat: : No such file or directory
  cat: socket: No such device or address
       3  one
  [1]
  $ garnel cat "$(printf %0300d 0)" 2>&1 | tr -s 0
  cat: 0: File name too long
  $ chmod 000 b; [ "$(id -u)" != 0 ] || unprivileged='setpriv --bounding-set=-dac_override,-dac_read_search'
  $ $unprivileged garnel cat b a
  cat: b: Permission denied
  one
  [1]
  $ garnel cat < dir; garnel cat -n < dir

A file is not copied behind itself:

  $ garnel cat empty >> empty; garnel cat a >> a
  cat: a: input file is output file
  [1]

Failing output is nobody's business but the reader's:

  $ garnel cat -n a bytes > /dev/full; garnel cat -N < bytes > /dev/full
  $ garnel cat a >&-; garnel cat -n a >&-; garnel cat - a <&-
  one
  $ garnel cat missing >&- 2>&-
  [1]
  $ (trap '' PIPE; sleep 0.2; garnel cat bytes; garnel cat -n bytes; echo "status $?" >&2) | true
  status 0

From a terminal, every line is passed on at once, and one end of input is enough:

  $ cat > terminal.py <<END
  > import os, pty, subprocess, sys
  > master, slave = os.openpty()
  > os.write(master, b"one\n")
  > cat = subprocess.Popen(["timeout", "5"] + sys.argv[1:], stdin=slave, stdout=subprocess.PIPE)
  > print(os.read(cat.stdout.fileno(), 100))
  > os.write(master, b"\4two\n\4")
  > print(cat.communicate()[0])
  > END
  $ python3 terminal.py garnel cat; python3 terminal.py garnel cat - -
  b'one\n'
  b''
  b'one\n'
  b'two\n'
