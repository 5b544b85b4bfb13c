A name that is free is taken by renaming, links as they are. Directories are moved into, as often as they are there:

  $ touch a 'new
  > line' && ln -s a link && mkdir -p d n/n && inode=$(stat -c %i a) && streams garnel mv -v a b && ln -s ../b d/c && garnel mv d/c c; ls -F | paste -sd' '
  'a' -> 'b'
  b c@ d/ link@ n/ new line
  $ streams garnel mv -v b d && [ "$(stat -c %i d/b)" = "$inode" ] && garnel mv 'new
  > line' '\x' && ln -s n n0 && garnel mv '\x' d/b n0/n/.. && mkdir d/n && garnel mv d/n . && garnel mv n .; ls n n/n | paste -sd' '
  'b' -> 'd/b'
  mv: n: cannot move a directory into itself
  mv: n: failed.
  n: b n x  n/n: n

What exists is replaced on request only, and then by a copy:

  $ rm -r * && echo a >a && echo b >b && chmod 640 a && streams garnel mv a b; cat b; inode=$(stat -c %i a)
  2> mv: a: destination exists.
  2> mv: a: failed.
  b
  $ streams garnel mv -fv a b && cat b && stat -c %a b && [ "$(stat -c %i b)" != "$inode" ]; mkdir x && mkfifo pipe
  'a' -> 'b'
  a
  640
  $ streams garnel mv -f b pipe; garnel mv -f x b && echo $(ls -F)
  2> mv: b: Not a file
  2> mv: b: failed.
  b/ pipe|

Nothing is lost by moving something to where it is already, under whatever path, or into itself:

  $ mkdir -p s/sub && echo s >s/f && ln -s f s/to-f && ln -s s to-s && ln s/f s/hard
  $ for operands in 's/f s/f' 's/f s/sub/../f' 'to-s/f s' 's/to-f s/f' 's s' 's s/sub' 's s/sub/new' '/ s' 's/. s' 's/sub/.. s' '.. . s'; do
  >   streams garnel mv -f $operands | sed -n '1s/.*: //p'
  > done | uniq -c; echo $(ls s)
        4 source and destination are the same file
        3 cannot move a directory into itself
        4 Invalid argument
  f hard sub to-f
  $ garnel mv -f s/f s/hard && cat s/hard && garnel mv -f s/hard s/f && garnel mv -f s/f s/to-f && stat -c '%F %s' s/to-f; echo $(ls s)
  s
  regular file 2
  sub to-f

The base name is what stands behind the last separator, as long as something does:

  $ mkdir -p in c/d '\q' && touch 'k\' '\m' 'c/n\' 'c/\q' && garnel mv c/d// 'k\' 'c/n\' '\m' in && ls in | paste -sd' '
  d k m n\
  $ streams garnel mv 'c/\q' in; streams garnel mv '' c/.. in in; ls c
  2> mv: c/\q: Invalid argument
  2> mv: c/\q: failed.
  2> mv: : No such file or directory
  2> mv: c/..: Invalid argument
  2> mv: in: cannot move a directory into itself
  2> mv: 3 failed.
  \q

Whatever happens, the status is 0, but for a target that is no directory:

  $ for operands in c 'none new' 'c none/new' 'none nothing c' 'c in none' 'c in s/to-f'; do
  >   streams garnel mv $operands >said; echo $?: $(head -n 3 said)
  > done; touch f
  0: Usage: mv [OPTION]... SOURCE DEST or: mv [OPTION]... SOURCE... DIRECTORY Rename SOURCE to DEST, or move SOURCE(s) to DIRECTORY.
  0: 2> mv: none: No such file or directory 2> mv: none: failed.
  0: 2> mv: none/new: failed to make directory: No such file or directory 2> mv: c: failed.
  0: 2> mv: none: No such file or directory 2> mv: nothing: No such file or directory 2> mv: 2 failed.
  2: 2> mv: target is not a directory
  2: 2> mv: target is not a directory
  $ ln -s none dangling && streams garnel mv dangling b; garnel mv f dangling && stat -c %F dangling
  2> mv: dangling: No such file or directory
  2> mv: dangling: failed.
  regular empty file
