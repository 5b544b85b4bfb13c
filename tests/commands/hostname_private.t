Needs: unshare --uts true

A name is set without a word; one that the system refuses, or that is too long to be shown, fails without a word:

  $ cat > names <<'END'
  > name63=123456789012345678901234567890123456789012345678901234567890abc
  > for name in box some.where.test $name63 ${name63}d ${name63}de; do
  >     told garnel hostname "$name"; told garnel hostname
  > done
  > END
  $ unshare --uts sh names
  0
  0 box
  0
  0 some.where.test
  0
  0 123456789012345678901234567890123456789012345678901234567890abc
  0
  1
  1
  1
