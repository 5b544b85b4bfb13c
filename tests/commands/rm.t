Names are bytes, and a link goes itself, whatever it leads to:

  $ mkdir d && echo kept >d/kept && ln -s d link && ln -s none dangling && mkfifo pipe && touch 'a b' 'new
  > line' '\x' "$(printf '\377')"
  $ streams garnel rm -v link pipe 'new
  > line' && garnel rm dangling 'a b' '\x' "$(printf '\377')" && echo *
  'link' removed
  'pipe' removed
  'new
  line' removed
  d

What is missing is passed over in silence on request; every operand is tried:

  $ streams garnel rm none d d/kept/x '' pipe; streams garnel rm -f none d d/kept/x
  2> rm: cannot stat 'none': No such file or directory
  2> rm: cannot remove 'd': Is a directory
  2> rm: cannot stat 'd/kept/x': Not a directory
  2> rm: cannot stat '': No such file or directory
  2> rm: cannot stat 'pipe': No such file or directory
  2> rm: cannot remove 'd': Is a directory
  [1]
  $ garnel rm -f; garnel rm -f none; garnel rm -r none; garnel rm --help -r d | head -n 1
  rm: cannot stat 'none': No such file or directory
  Usage: rm [OPTION]... FILE...

Trees are reported bottom up. What a tree holds stays within it: links are not followed, and an entry whose
name looks like a path is taken in its own directory:

  $ mkdir -p tree/a/b out && echo kept >out/kept && echo kept >'\x' && echo gone >'tree/a/b/\x'
  $ streams garnel rm -rv tree/a
  '\x' removed
  'tree/a/b' directory removed
  'tree/a' directory removed
  $ mkdir tree/.hidden && touch tree/.hidden/f 'tree/x
  > y' && ln -s ../out ../out/kept tree && ln -s . tree/loop && garnel rm -r tree/ && cat out/kept '\x'; ls | paste -sd' '
  kept
  kept
  \x d out

A link with a separator behind it is the directory that it leads to, and stays:

  $ mkdir target target/sub && ln -s target link && streams garnel rm -r link/; ls target
  2> rm: cannot remove directory 'link/': Not a directory
  $ mkdir sub && touch sub/f && streams garnel rm -rf sub/.; ls sub
  2> rm: cannot remove directory 'sub/.': Invalid argument
