Directories are made with mode 0755 less the umask. The first failure ends the run:

  $ umask 027 && streams garnel mkdir -v a 'b c' a d
  'a': directory created
  'b c': directory created
  2> mkdir: 'a': cannot create directory: File exists
  [1]
  $ stat -c '%a %n' *
  750 a
  750 b c

With parents, each one that is made is reported, and what cannot be made is passed over. A backslash separates
where no slash is left, has become a slash when the next directory is made, and is skipped behind another one:

  $ touch file && streams garnel mkdir -pv x//y file/a x/y '' 'm/n\o' 'p\q/r' 's\\t\u' "$(printf '%05000d' 0)" | sed 's/: directory created$//' | paste -sd' '
  'x' 'x//y' 'm' 'm/n' 'm/n/o' 'p\q' 'p\q/r' 's' 's/\t' 's/\t/u'
  $ garnel mkdir -p "$PWD/x/w/" && rmdir x/w

Removing ends at the first failure as well, unless failures are not to count:

  $ garnel rmdir a x 'b c'; streams garnel rmdir -iv none x 'b c'
  rmdir: failed to remove 'x': Directory not empty
  'b c': directory removed
  2> rmdir: failed to remove 'none': No such file or directory
  2> rmdir: failed to remove 'x': Directory not empty

Ancestors are those that the text names, and the path is cut at a backslash where no slash is left:

  $ streams garnel rmdir -pv m//n/o 'p\q//r' x/y | sed 's/: directory removed$//' | paste -sd,
  'm//n/o','m//n','m','p\q//r','p\q',2> rmdir: failed to remove 'p': No such file or directory
  $ garnel rmdir -p 's/\t/u' && mkdir full full/e && streams garnel rmdir -p full/e/ x/y
  2> rmdir: failed to remove 'full/e': No such file or directory
  [1]
  $ streams garnel rmdir -ipv full//none /none && rmdir x/y x && ls
  'full': directory removed
  2> rmdir: failed to remove 'full//none': No such file or directory
  2> rmdir: failed to remove '/none': No such file or directory
  2> rmdir: failed to remove '': No such file or directory
  file
