A file is cut or extended, without taking up space. New ones belong to their user alone:

  $ echo 0123456789 >file && garnel truncate -s 4 file new && cat file && stat -c ' %a %s' new
  0123 600 4
  $ garnel truncate file -s 1kB && wc -c <file && tail -c +5 file | tr -d '\0'
  1000
  $ garnel truncate -s 1G big && garnel truncate -r big other && ln -s other link && garnel truncate -s 1M link
  $ stat -c '%s %b' big other
  1073741824 0
  1048576 0

What cannot be opened does not stop the rest. A missing directory is no reason to complain, and under -c
nothing is:

  $ mkdir dir && streams garnel truncate -s 3 none/x dir '' "$(printf '%0300d' 0)" big | tr -s 0
  2> truncate: 'dir': Is a directory
  2> truncate: '0': File name too long
  $ streams garnel truncate -c -s 5 none none/x dir big && stat -c %s big && ls none
  5
  ls: cannot access 'none': No such file or directory
  [2]

What has no size gets the zeros written behind its end. Not so a file that the user may not have that large:

  $ mkfifo fifo && { cmp -n 200000 fifo /dev/zero & garnel truncate -s 200000 fifo; wait; }
  $ garnel truncate -s 0 /dev/full && streams garnel truncate -s 100000 /dev/null /dev/full
  2> truncate: '/dev/full': No space left on device
  [1]
  $ (ulimit -f 8; streams garnel truncate -s 1M big file); stat -c %s big
  2> truncate: 'big': File too large
  2> truncate: 'file': File too large
  5

A message for a stream that is closed goes nowhere, least of all into the file that takes its place:

  $ (ulimit -f 8; garnel truncate -s 1M big 2>&-); stat -c %s big
  5

There must be exactly one measure:

  $ for options in '-r big -s 5' '-s 5 -s 5' '-r big -r big' '-r none' '-s 1x' '-s -1' '-s 8E' '-r'; do
  >   streams garnel truncate big $options
  > done; streams garnel truncate -s 5
  2> truncate: only 1 relative must be specified
  2> truncate: only 1 relative must be specified
  2> truncate: only 1 relative must be specified
  2> truncate: 'none': no such file or directory
  2> truncate: missing -s operand
  2> truncate: invalid -s operand
  2> truncate: invalid -s operand
  2> truncate: missing -r operand
  2> truncate: missing file operand
  [1]
