The directory is the first of three variables that is set, even to nothing. The template's last X stays:

  $ unset TMP TEMP TMPDIR && mkdir t && TMP=t TEMP=none TMPDIR=none garnel mktemp
  t/tmp\.[A-Za-z0-9]{9}X (re)
  $ TEMP=t TMPDIR=none garnel mktemp -d
  t/tmp\.[A-Za-z0-9]{9}X (re)
  $ TMP= TMPDIR=none garnel mktemp -u; TMPDIR=none garnel mktemp --tmpdir= -u; garnel mktemp -u
  tmp\.[A-Za-z0-9]{9}X (re)
  none/tmp\.[A-Za-z0-9]{9}X (re)
  /tmp/tmp\.[A-Za-z0-9]{9}X (re)
  $ stat -c '%A %F' t/* | sort && ls
  -rw-r--r-- regular empty file
  drwxr-xr-x directory
  t

The X's in front of that are replaced, however many they are. A suffix wants a template that ends in X, and its
own X's do not count:

  $ for template in XX aXbXXXXX.txt --tmpdir=t\ bXXX bXXX\ --tmpdir --tmpdir=t\ /cXX --suffix=/X%\ nXXX aX aXb aXbX.c; do
  >   TMP=/d streams garnel mktemp -u $template
  > done
  [A-Za-z0-9]X (re)
  aXb[A-Za-z0-9]{4}X\.txt (re)
  t/b[A-Za-z0-9]{2}X (re)
  /d/b[A-Za-z0-9]{2}X (re)
  /c[A-Za-z0-9]X (re)
  n[A-Za-z0-9]{2}X/X% (re)
  2> mktemp: failed to generate temporary name
  2> mktemp: failed to generate temporary name
  2> mktemp: failed to generate temporary name
  [2]

A name that is taken is passed over, whether by a file or by a link to nothing; when all are, that is said:

  $ letters=$(awk 'BEGIN { for (i = 48; i < 123; i++) printf "%c ", i }' | tr -dc 'A-Za-z0-8 ')
  $ mkdir u && for letter in $letters; do ln -s ../victim u/${letter}X; done
  $ garnel mktemp --tmpdir u XX && rm u/9X && ln -s ../victim u/9X; streams garnel mktemp -d u/XX
  u/9X
  2> mktemp: u/?X: failed to create dir (glob)
  [1]
  $ echo kept >victim; streams garnel mktemp u/XX; garnel mktemp -q u/XX; echo $?; cat victim
  2> mktemp: u/?X: file exists (glob)
  2
  kept

The rest is not silenced, and a lost name is a failure:

  $ for operands in none/eXXX 'a bXX c' 'a --suffix'; do told garnel mktemp -q $operands; done; told garnel mktemp ''
  1
  1 2> mktemp: extra operand 'bXX'
  1
  1 2> mktemp: template too short
