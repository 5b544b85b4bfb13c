What a page does not show is compared with the host's words. Access, then change, then modification; the first
second of all is none.

  $ time_of() { stat -c "%$1" "$2" | sed 's/ +0000//; s/^1970-01-01 00:00:00.*/-/'; }
  $ expected() {
  >     printf "  File: '%s'\n  Size: %-10s Blocks: %-8s IO Block: %-8s %s\n" "$1" $(stat -c '%s %b %o' "$1") "$2"
  >     printf 'Device: %-10s Inode: %-10s Links: %-5s\n' $(stat -c '%Dh/%dd %i %h' "$1")
  >     printf 'Access: (0%s/%s)  Uid: (%5s/%8s) Gid: (%5s/%8s)\n' $(stat -c '%a %A %u %U %g %G' "$1")
  >     printf 'Access: %s\nChange: %s\n' "$(time_of x "$1")" "$(time_of z "$1")"
  >     printf 'Modify: %s\n Birth: %s\n' "$(time_of y "$1")" "$(time_of w "$1")"
  > }
  $ printf hello >file; chmod 754 file; truncate -s 12345678901 large; ln large hard; mkdir -m 700 dir; touch -d @0.5 dir
  $ touch -a -d '2001-02-03 04:05:06.000000007' file; touch -m -d '1969-12-31 23:59:58.5' file
  $ (expected file 'regular file'; echo; expected large 'regular file'; echo; expected ./dir/ directory) >expected
  $ garnel stat file large ./dir/ | diff expected -
  $ mkfifo -m 622 fifo; python3 -c 'import socket; socket.socket(socket.AF_UNIX).bind("sock")'; chmod 55 sock
  $ garnel stat fifo sock | sed -nE -e 's/ Blocks.*  (.*)/ \1/p' -e 's/.*Links/Links/p' -e 's/ Uid.*//p'
    Size: 0          fifo
  Links: 1    
  Access: (0622/frw--w--w-) 
    Size: 0          socket
  Links: 1     Device type: 0,0
  Access: (0055/s---r-xr-x) 

Local time and -U.

  $ touch -d '2024-07-01 12:00:00 UTC' file; for words in file '-U file'; do TZ=XYZ5:30 garnel stat $words | grep Modify; done
  Modify: 2024-07-01 06:30:00.000000000
  Modify: 2024-07-01 12:00:00.000000000

A link is shown as itself; with -L its file is shown under the link's name. Targets start at the link's directory,
those that begin with a separator, be it a backslash, do not. 15 links are followed, 16 are not.

  $ mkdir dir/sub; printf 12 >dir/two; ln -s ../two dir/sub/rel; ln -s "$PWD/dir/two" absolute; ln -s dir/sub/rel chain
  $ printf 123 >'\three'; ln -s '\three' dir/back; printf 1 >'dir/\three'; ln -s loop loop; ln -s nowhere dangling
  $ last=dir/two; for i in $(seq 16); do ln -s $last l$i; last=l$i; done
  $ garnel stat dir/sub/rel | grep -oE '.*File.*|Size.*Blocks|sym.*|Links.*|.*/l[-rwx]*'
    File: 'dir/sub/rel' -> '../two'
  Size: 6          Blocks
  symbolic link
  Links: 1    
  Access: (0777/lrwxrwxrwx
  $ streams garnel stat -L absolute chain dir/back loop l16 dangling l15 | grep -oE "2>.*|File: .*|Size: [0-9]+|^$"
  File: 'absolute'
  Size: 2
  File: 'chain'
  Size: 2
  File: 'dir/back'
  Size: 3
  File: 'l15'
  Size: 2
  2> stat: loop: too many levels of symbolic links
  2> stat: l16: too many levels of symbolic links
  2> stat: dangling: No such file or directory

Links in /proc have a size of 0, and no more than the byte behind it is read.

  $ garnel stat /proc/self/cwd | sed 1q; garnel stat -L /proc/self/cwd | sed -n '2{s/.* //;p};3s/ Links.*//p' >root
    File: '/proc/self/cwd' -> '/'
  $ printf 'directory\nDevice: %-10s Inode: %-10s\n' $(stat -c '%Dh/%dd %i' /) | diff - root

Operands are separated by an empty line, also where one fails. Names are bytes.

  $ name=$(printf 'a\nb\033\377')
  $ : >"$name"; streams garnel stat missing "$name" file/x '' | grep -aE '2>|File|^b|^$' | cat -v
  
    File: 'a
  b^[M-^?'
  
  
  2> stat: missing: No such file or directory
  2> stat: file/x: Not a directory
  2> stat: : No such file or directory
