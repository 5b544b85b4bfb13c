What depends on the file system and on who runs this is hidden here, and compared with the host's words below.

  $ known() {
  >     sed -E -e 's/(Blocks: ).{8} (IO Block: ).{8} /\1B \2B /' -e 's/^Device: .* Inode: .* (Links: .{5})/D I \1/' \
  >         -e 's/Uid: .*/OWNER/' -e 's/^(Change| Birth): .*/\1/'
  > }
  $ bind() { python3 -c 'import socket, sys; socket.socket(socket.AF_UNIX).bind(sys.argv[1])' "$1"; }

Access, then change, then modification. Set-id and sticky bits are not shown.

  $ printf hello >file; chmod 7754 file
  $ touch -a -d '2001-02-03 04:05:06.000000007' file; touch -m -d '1969-12-31 23:59:58.5' file
  $ mkdir -m 700 dir; mkfifo -m 622 fifo; bind sock; chmod 55 sock; touch -d @0.5 dir fifo sock
  $ garnel stat file | known; garnel stat fifo sock ./dir/ | known | grep -vE '^(Access: -|Change| Birth|)$'
    File: 'file'
    Size: 5          Blocks: B IO Block: B regular file
  D I Links: 1    
  Access: (0754/-rwxr-xr--)  OWNER
  Access: 2001-02-03 04:05:06.000000007
  Change
  Modify: 1969-12-31 23:59:58.500000000
   Birth
    File: 'fifo'
    Size: 0          Blocks: B IO Block: B fifo
  D I Links: 1    
  Access: (0622/frw--w--w-)  OWNER
  Modify: -
    File: 'sock'
    Size: 0          Blocks: B IO Block: B socket
  D I Links: 1     Device type: 0,0
  Access: (0055/s---r-xr-x)  OWNER
  Modify: -
    File: './dir/'
    Size: 4096       Blocks: B IO Block: B directory
  D I Links: 2    
  Access: (0700/drwx------)  OWNER
  Modify: -

Figures, owners and times that cannot be chosen.

  $ time_of() { stat -c "%$1" "$2" | sed 's/ +0000//'; }
  $ expected() {
  >     printf '  Size: %-10s Blocks: %-8s IO Block: %-8s %s\n' $(stat -c '%s %b %o' "$1") "$2"
  >     printf 'Device: %-10s Inode: %-10s Links: %-5s\n' $(stat -c '%Dh/%dd %i %h' "$1")
  >     printf 'Uid: (%5s/%8s) Gid: (%5s/%8s)\n' $(stat -c '%u %U %g %G' "$1")
  >     printf 'Access: %s\nChange: %s\n' "$(time_of x "$1")" "$(time_of z "$1")"
  >     printf 'Modify: %s\n Birth: %s\n' "$(time_of y "$1")" "$(time_of w "$1")"
  > }
  $ shown() { garnel stat "$1" | sed -e 1d -e 's/^Access: .*  Uid/Uid/'; }
  $ truncate -s 12345678901 large; head -c 100000 /dev/zero >>file; ln file hard
  $ for f in file large .; do
  >     name='regular file'; [ $f != . ] || name=directory
  >     expected $f "$name" >expected; shown $f | diff expected - || echo $f
  > done

Local time and -U.

  $ touch -d '2024-07-01 12:00:00 UTC' file
  $ for words in file '-U file'; do TZ=XYZ5:30 garnel stat $words | grep Modify; done
  Modify: 2024-07-01 06:30:00.000000000
  Modify: 2024-07-01 12:00:00.000000000

A link is shown as itself; with -L its file is shown under the link's name. Targets start at the link's directory,
those that begin with a separator, be it a backslash, do not.

  $ mkdir dir/sub; printf 12 >dir/two; ln -s ../two dir/sub/rel; ln -s "$PWD/dir/two" absolute; ln -s dir/sub/rel chain
  $ printf 123 >'\three'; ln -s '\three' dir/back; printf 1 >'dir/\three'
  $ touch -h -d '2020-01-01' dir/sub/rel; garnel stat dir/sub/rel | known | sed '/Access: [^(]/d'
    File: 'dir/sub/rel' -> '../two'
    Size: 6          Blocks: B IO Block: B symbolic link
  D I Links: 1    
  Access: (0777/lrwxrwxrwx)  OWNER
  Change
  Modify: 2020-01-01 00:00:00.000000000
   Birth
  $ garnel stat -L dir/sub/rel absolute chain dir/back | grep -oE 'Size: [0-9]+' | xargs
  Size: 2 Size: 2 Size: 2 Size: 3

15 links are followed, 16 are not.

  $ last=dir/two; for i in $(seq 16); do ln -s $last l$i; last=l$i; done; ln -s loop loop; ln -s nowhere dangling
  $ streams garnel stat -L loop l16 dangling l15 | grep -E '2>|File|Size|^$' | known
  
  
  
    File: 'l15'
    Size: 2          Blocks: B IO Block: B regular file
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
