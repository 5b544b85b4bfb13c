Between file systems, a copy takes the place of the source. Permissions and holes go with it; links go as what
they lead to, and what a link's directory holds goes out of there:

Needs: unshare -m true

  $ cat >two <<'end'
  > umask 022; mount -t tmpfs none a && mount -t tmpfs -o size="$1" none b || exit
  > eval "$2"
  > end
  $ mkdir a b; unshare -m sh two 64m '
  >   mkdir -p a/d/sub/deep a/out; echo f >a/d/f; echo o >a/out/o; echo in >"a/d/\\x"; chmod 4750 a/d/f; chmod 711 a/d/sub
  >   truncate -s 9M a/d/sub/holes; echo end >>a/d/sub/holes; cp a/d/sub/holes .; ln -s ../../out a/d/sub/link; ln -s d/f a/to-f
  >   streams garnel mv -v a/to-f a/d b | sort | paste -sd,; cmp holes b/d/sub/holes; [ "$(stat -c %b b/d/sub/holes)" -lt 20 ]
  >   find b -printf "%M %p\n" | sort -k 2 | paste -sd,; mkfifo a/pipe; cat holes >a/pipe & garnel mv a/pipe b && cmp holes b/pipe; wait; echo $(ls -F a)'
  '\x' -> '\x','a/d' -> 'b/d','a/d/f' -> 'b/d/f','a/d/sub' -> 'b/d/sub','a/d/sub/deep' -> 'b/d/sub/deep','a/d/sub/holes' -> 'b/d/sub/holes','a/d/sub/link' -> 'b/d/sub/link','a/d/sub/link/o' -> 'b/d/sub/link/o','a/to-f' -> 'b/to-f'
  drwxrwxrwt b,drwxr-xr-x b/d,-rw-r--r-- b/d/\x,-rwsr-x--- b/d/f,drwx--x--x b/d/sub,drwxr-xr-x b/d/sub/deep,-rw-r--r-- b/d/sub/holes,drwxr-xr-x b/d/sub/link,-rw-r--r-- b/d/sub/link/o,-rwsr-x--- b/to-f
  d/ out/

What exists stands in the way of its own part only, and the source keeps what could not be moved:

  $ unshare -m sh two 64m '
  >   mkdir -p a/d/e a/d/z b/d/d; echo f >a/d/e/f; echo g >a/d/e/g; touch a/d/z/z; mount --bind a/d/z a/d/z
  >   ln -s none a/d/e/dangling; streams garnel mv -f a/d b; find a b | sort | xargs; cat b/d/d/d/e/*
  >   mkdir a/d/into; mount -t tmpfs none a/d/into; streams garnel mv a/d a/d/into/new | sort; find a/d | sort | xargs'
  2> mv: a/d/e/dangling: No such file or directory
  2> mv: a/d: failed.
  a a/d a/d/e a/d/e/dangling a/d/z b b/d b/d/d b/d/d/d b/d/d/d/e b/d/d/d/e/f b/d/d/d/e/g b/d/d/d/z b/d/d/d/z/z
  f
  g
  2> mv: a/d/e/dangling: No such file or directory
  2> mv: a/d/into/new: cannot move a directory into itself
  2> mv: a/d: failed.
  a/d a/d/e a/d/e/dangling a/d/into a/d/into/new a/d/into/new/e a/d/into/new/into a/d/into/new/z a/d/z

A file may have a second name without a second link, and is not removed under the one to be copied from the other:

  $ unshare -m sh two 64m 'echo f >a/f; touch a/g; mount --bind a/f a/g; streams garnel mv -f a/g a/f; cat a/f'
  2> mv: a/g: source and destination are the same file
  2> mv: a/g: failed.
  f

What finds no room is removed from there, and the source stays whole:

  $ head -c 3000000 /dev/urandom >big; head -c 70000 big >small; unshare -m sh two 1m '
  >   mkdir a/d; cp big small a; cp big a/d; for command in "cp big b" "cp small b/x" "mv a/big b/y" "mv -f a/big b/x" "cp -r a/d b/z" "mv a/d b"; do
  >     streams garnel $command; echo $(ls b); done; cmp big a/big; cmp big a/d/big
  >   garnel cp small small big b; echo $(ls b); garnel mv a/d/big a/small b; echo $(find a b -type f | sort); cmp small b/small'
  2> cp: big: Input/output error
  
  x
  2> mv: a/big: Input/output error
  2> mv: a/big: failed.
  x
  2> mv: a/big: Input/output error
  2> mv: a/big: failed.
  
  2> cp: a/d/big: Input/output error
  z
  2> mv: a/d/big: Input/output error
  2> mv: a/d: failed.
  d z
  cp: big: Input/output error
  d small z
  mv: a/d/big: Input/output error
  mv: a/small: destination exists.
  mv: 2 failed.
  a/big a/d/big a/small b/small
