A link is hard unless it is to be symbolic. Its name is the second operand, or the target's base name:

  $ mkdir -p a/b dir && echo text > a/b/c && touch 'x\y'
  $ garnel ln a/b/c && garnel ln a/b/c hard && garnel ln 'x\y' && garnel ln -s nowhere/at/all && garnel ln all also
  $ stat -c '%h %F' c hard y && readlink all also
  3 regular file
  3 regular file
  2 regular empty file
  nowhere/at/all
  nowhere/at/all

A directory is neither looked into nor linked to:

  $ for operands in 'c dir' '-s a/b/' 'dir other' 'a b c'; do streams garnel ln $operands | head -n 1; done
  2> ln: failed to create hard link: File exists
  2> ln: failed to create symbolic link: No such file or directory
  2> ln: failed to create hard link: Operation not permitted
  Usage: ln TARGET [LINKNAME]

readlink prints targets, whatever bytes they hold, up to 2047 of them:

  $ garnel readlink -n all && ln -s "$(printf '\377 %%s\n\\')" odd && garnel readlink odd
  nowhere/at/all\xff %s (esc)
  \
  $ ln -s "$(printf '%02047d' 1)" fits && ln -s "$(printf '%02047dx' 2)" over
  $ for link in fits over; do garnel readlink $link | wc -c; garnel readlink $link | tr -s 0; done
  2048
  01
  2048
  02

What is no link fails, or is shown behind the current directory as it is:

  $ for file in c none '' "$(printf '%05000d' 0)"; do streams garnel readlink "$file" || garnel readlink -q "$file"; done | tr -s 0
  2> readlink: c: Invalid argument
  2> readlink: none: No such file or directory
  2> readlink: : No such file or directory
  2> readlink: 0: File name too long
  $ (cd a && garnel readlink -f ./none/../x && garnel readlink -f /etc/./passwd && garnel readlink -fn '\x')
  */a/./none/../x (glob)
  /etc/./passwd
  \x (no-eol)

A current directory that has been removed, or whose path is too long:

  $ (mkdir gone && cd gone && rmdir ../gone && garnel readlink -f x)
  readlink: x: No such file or directory
  [2]
  $ (name=$(printf '%0200d' 0)
  >  for level in $(seq 25); do mkdir $name && cd -P $name || break; done 2>/dev/null
  >  streams garnel readlink -f x || garnel readlink -fq x)
  2> readlink: x: Numerical result out of range
  [2]
  $ for options in 'a b c' '-q a b'; do told garnel readlink $options; done
  1 2> readlink: extra operand 'b'
  1
