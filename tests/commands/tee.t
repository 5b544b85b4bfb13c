Every output gets every byte; files are made with the usual permissions and truncated:

  $ printf 'a\0b\n' >ab; echo longer than the input >old; garnel tee new old <ab | cmp - ab; cmp new ab; cmp old ab; stat -c %a new
  644

To append is not to truncate: the file is written over from its first byte:

  $ echo 0123456789 >f; echo ab | garnel tee f2 -a f; sed 1q f; cat f2
  ab
  ab
  ab

An output that cannot be opened, or takes nothing, keeps nothing from the others. Only the first is an error:

  $ echo abc | told garnel tee none/f g; echo abc | garnel tee /dev/full g2 >/dev/full && cat g g2; told garnel tee g3 <. && ls g3
  1 abc
  2> tee: none/f: No such file or directory
  abc
  abc
  1 2> tee: read error: Is a directory
  g3

What arrives is passed on at once, in chunks of at most 8192 bytes:

  $ mkfifo in out; garnel tee h <in >out & (exec 3>in 4<out; printf one >&3; head -c 3 <&4; cat h; echo; printf two >&3; head -c 3 <&4)
  oneone
  two (no-eol)
  $ wait; head -c 20000 /dev/zero | tr '\0' x >x; garnel tee y <x | dd bs=64K count=1 iflag=fullblock status=none | wc -c; cmp x y
  20000
  $ seq 100000 >long; garnel tee l1 <long l2 /dev/null none/l >l3; garnel tee l2 l2 <long | cmp - long
  tee: none/l: No such file or directory
  $ cmp long l1; cmp long l2; cmp long l3; garnel tee -a l3 <l3 | cmp - long; cmp long l3
  $ packets garnel tee <x
  8192 8192 3616  (no-eol)
