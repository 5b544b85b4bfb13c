  $ garnel seq --help > usage
  $ for arguments in '1 2 3 4' -f '3 -s' '-f %*d' '-f %n 1 2 3 4'; do garnel seq $arguments | cmp - usage; done

What is no number is 0, a run that begins behind its end is empty, and sums wrap:

  $ garnel seq -s ' ' 3; garnel seq -s ' ' 8 11; garnel seq 0x10 -s , 010 38abc; garnel seq x - -s .; garnel seq 5 1
  1 2 3 8 9 10 11 16,24,32,0. (no-eol)
  $ garnel seq -s ' ' 18446744073709551605 10 18446744073709551614; garnel seq -s ' ' 7 ' 18446744073709551615' 9
  18446744073709551605 7 6 5 4 3 2 1 0  (no-eol)
  $ garnel seq -s ' ' 18446744073709551614 18446744073709551615 | head -c 50; garnel seq -s ' ' 4 0 4 | head -c 10
  18446744073709551614 18446744073709551615 0 1 2 3 4 4 4 4 4  (no-eol)

LAST alone sets the width:

  $ garnel seq -w 8 10 -s ' '; garnel seq -ws ' ' 98 100; garnel seq -w -f %d -s ' ' 9 10
  08 09 10 098 099 100 9 10  (no-eol)

Long runs, with short and long separators:

  $ seq 1234567 > expected; garnel seq 1234567 | cmp - expected
  $ seq -w 7 3 300000 > expected; garnel seq -w 7 3 300000 | cmp - expected
  $ for s in 12345678 123456789 "$(printf %020000d 0)"; do
  >   (seq -s "$s" 985 1015 | tr -d '\n'; printf %s "$s") > expected; garnel seq -s "$s" 985 1015 | cmp - expected
  > done

A format goes to printf when it takes one number at most; any other is refused:

  $ for f in %d %5u. %-5i. %05o %#x %+.3lld %hhu %lX %jd %zu %td "%'d" %%%d%% word %%n; do garnel seq -s ' ' -f "$f" 65 66; done
  65 66    65.    66. 65   . 66   . 00101 00102 0x41 0x42 +065 +066 65 66 41 42 65 66 65 66 65 66 65 66 %65% %66% word word %n %n  (no-eol)
  $ for f in %c %hhc %lc %llc; do garnel seq -s ' ' -f "$f" 65 66; done
  A B A B A B A B  (no-eol)
  $ garnel seq -s ' ' -f %u 4294967295 4294967296; garnel seq -s ' ' -f %lu 4294967295 4294967296
  4294967295 0 4294967295 4294967296  (no-eol)
  $ for f in % '%*d' '%%*' '%.*d' %s %n %f %p %d%d '%d %n' '%1$d' %5% %ll %hhn %ls '% '; do
  >   echo "$f: $(told garnel seq -f "$f" 2 1)"; done | grep -v ': 1 seq: invalid format string[.]$'
  [1]

Failing output is ignored, and ends a run:

  $ garnel seq 1 0 1 > /dev/full; garnel seq -f %d 1 0 1 >&-; (trap '' PIPE; garnel seq 1 0 1) | true
