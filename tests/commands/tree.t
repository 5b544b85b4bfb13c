  $ unprivileged() {
  >     [ "$(id -u)" != 0 ] || set -- setpriv --bounding-set=-all --inh-caps=-all "$@"
  >     "$@"
  > }

Connectors, hidden names, empty directories, and how deep it goes. A negative depth is none; the depth wants an operand
of its own; what follows the number, or is none, does not matter.

  $ mkdir -p t/a/b/c t/a/b/d t/empty t/z/only/child && cd t && : >a/b/c/leaf; : >a/b/file; : >a/last; : >.hidden; : >z/x
  $ garnel tree
  .
  |-- .hidden
  |-- a
  |   |-- b
  |   |   |-- c
  |   |   |   `-- leaf
  |   |   |-- d
  |   |   `-- file
  |   `-- last
  |-- empty
  `-- z
      |-- only
      |   `-- child
      `-- x
  $ garnel tree -L 1 ./z/ -L 02x; garnel tree -L none z; garnel tree z -L -2 | wc -l
  ./z/
  |-- only
  |   `-- child
  `-- x
  z
  4
  $ cd ..; rm -r t

Orders, colours and marks.

  $ mkdir s && cd s && printf 333 >three; : >none; printf 22 >two; chmod u+x two;  mkfifo fifo
  $ ln -s two link; for f in two fifo none three; do touch -d "2000-01-0$((i += 1))" $f; done
  $ touch -h -d 2000-02-01 link; row() { garnel tree "$@" | sed -n 's/.*-- //p' | tr '\n' ,; echo; }
  $ row; row -i; row -d; row -s; row -sid; row -dn
  fifo,link -> two,none,three,two,
  two,three,none,link -> two,fifo,
  two,fifo,none,three,link -> two,
  fifo,none,two,link -> two,three,
  link -> two,three,none,fifo,two,
  fifo,link -> two,none,three,two,
  $ garnel tree -F -L 0 two; garnel tree -C -L 0 . | cat -v; cd ..
  two*
  ^[[01;34m.^[[0m

Links: the target is seen from the link's directory, or is a path of its own where it begins with a separator, be it a
backslash. What is wrong with it is said in the link's line.

  $ mkdir -p l/dir/sub 'l/\back' && : >l/dir/f; : >'l/\back/f'; : >'\own'; cd l
  $ ln -s ../f dir/sub/file; ln -s nowhere dangling; ln -s f/x 'dir/through'; ln -s self self; ln -s dir to-dir
  $ ln -s '\own' dir/own; ln -s / root; ln -s to-dir chain; ln -s gone '\back/lost'; ln -s f '\back/found'; cd ..
  $ garnel tree -F l; garnel tree l/to-dir -L 1 | tail -n 3
  l/
  |-- \back/
  |   |-- f
  |   |-- found@ -> f
  |   `-- lost@   tree: \back/gone: No such file or directory
  |-- chain@ -> to-dir/
  |-- dangling@   tree: l/nowhere: No such file or directory
  |-- dir/
  |   |-- f
  |   |-- own@ -> \own
  |   |-- sub/
  |   |   `-- file@ -> ../f
  |   `-- through@   tree: l/dir/f/x: Not a directory
  |-- root@ -> //
  |-- self@   tree: l/self: Too many levels of symbolic links
  `-- to-dir@ -> dir/
  |-- own -> \own
  |-- sub
  `-- through   tree: l/to-dir/f/x: Not a directory
  $ cd l; rm -r root dir/through dir/own dangling self '\back'; garnel tree -l -L 2; cd ..
  .
  |-- chain -> to-dir
  |   |-- f
  |   `-- sub
  |-- dir
  |   |-- f
  |   `-- sub
  `-- to-dir -> dir
      |-- f
      `-- sub

Links that lead back end where the system follows no more of them.

  $ mkdir -p loop/d && for up in $(printf '%0250d' 0) up; do
  >   rm -f loop/d/*; ln -s .. loop/d/$up; streams garnel tree -l loop >out; echo $?; grep -c -- '-> ..$' out
  >   grep '^2>' out | sed 's|d/[up0]*/||g; s/00*/0/'
  > done
  1
  41
  2> tree: loop/d/0: failed to read directory
  1
  41
  2> tree: loop/d/up: failed to read directory

What cannot be read or examined is reported behind what was drawn before it, and the drawing goes on. Entries of a
directory that may only be read cannot be examined; one that may only be entered cannot be read.

  $ mkdir -p bad/listed/in bad/locked bad/searched && : >bad/listed/f; : >bad/searched/f; : >bad/z; chmod 0 bad/locked
  $ chmod 400 bad/listed; chmod 100 bad/searched; unprivileged garnel tree bad 2>&1
  bad
  |-- listed
  |-- locked
  tree: bad/locked: failed to read directory
  |-- searched
  tree: bad/searched: failed to read directory
  `-- z
  [1]
  $ chmod 700 bad/*ed; streams garnel tree missing bad/z '' loop/d
  bad/z
  loop/d
  `-- up -> ..
  2> tree: missing: No such file or directory
  2> tree: bad/z: failed to read directory
  2> tree: : No such file or directory
  [1]

  $ garnel tree -L | head -n 1
  Usage: tree [OPTION]... [-L level] [DIRECTORY]...
