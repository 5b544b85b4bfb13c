Owner and group depend on who runs this: OWNER stands for both. Groups are looked up among the users.

  $ me=$(id -un) group=$(getent passwd "$(id -g)" | cut -d: -f1)
  $ long() { garnel ls -l "$@" | sed -E "s/ +$me +${group:-$(id -g)} / OWNER /"; }
  $ row() { "$@" | tr '\n' ' '; echo; }
  $ at() { touch -h -d "$1" "$2"; }
  $ bind() { python3 -c 'import socket, sys; socket.socket(socket.AF_UNIX).bind(sys.argv[1])' "$1"; }
  $ unprivileged() {
  >     [ "$(id -u)" != 0 ] || set -- setpriv --bounding-set=-all --inh-caps=-all "$@"
  >     "$@"
  > }

Orders, each also turned round, with names within equal sizes; hidden names only when asked for.

  $ mkdir orders && cd orders
  $ printf 22 >two; printf 1 >one; printf 1 >also; printf 4444 >.four
  $ at '2024-03-01 10:00:00.000000001' one; at '2024-03-01 10:00:00.000000002' also
  $ at '1969-12-31 23:59:59' two; at '2024-02-29 9:05:07' .four
  $ row garnel ls; row garnel ls -1A .; row garnel ls -a ./; row garnel ls -i
  also one two 
  .four also one two 
  . .. .four also one two 
  two one also 
  $ row garnel ls -d; row garnel ls -dAi; row garnel ls -s; row garnel ls -si; row garnel ls -dsn
  two one also 
  also one .four two 
  also one two 
  two one also 
  also one two 

Long listings. Options act in the order in which they are given.

  $ chmod 4751 two; chmod 0 one; ln two hard; mkfifo -m 622 fifo; ln -s two link; bind sock; chmod 775 sock
  $ at '2001-02-03 4:05:06' link; at '2001-02-03 14:05:06' fifo; at '1999-12-31 0:00' sock
  $ long -A
  -rw-r--r-- 1 OWNER 4 2024-02-29  9:05:07 .four
  -rw-r--r-- 1 OWNER 1 2024-03-01 10:00:00 also
  frw--w--w- 1 OWNER 0 2001-02-03 14:05:06 fifo
  -rwxr-x--x 2 OWNER 2 1969-12-31 23:59:59 hard
  lrwxrwxrwx 1 OWNER 3 2001-02-03  4:05:06 link -> two
  ---------- 1 OWNER 1 2024-03-01 10:00:00 one
  srwxrwxr-x 1 OWNER 0 1999-12-31  0:00:00 sock
  -rwxr-x--x 2 OWNER 2 1969-12-31 23:59:59 two
  $ long -M -T one two; garnel ls -M -T -lT two | wc -w; garnel ls -tmeh two
  1 OWNER 1 one
  2 OWNER 2 two
  6
  two
  $ garnel ls -leMT two | sed "s/^$(stat -c %i two) 2 /INODE 2 /; s/ $me .* 2 / OWNER 2 /"; cd ..
  INODE 2 OWNER 2 two

Dates on both sides of a change of the clocks, and in a zone off the full hour.

  $ mkdir dates && cd dates
  $ for t in 2024-03-31T00:59:59 2024-03-31T01:00:00 2024-10-27T00:59:59 2024-10-27T01:00:00 1904-02-29T12:00:00 \
  >     2100-03-01T00:00:00; do : >$t; at ${t}Z $t; done
  $ TZ=CET-1CEST,M3.5.0,M10.5.0/3 garnel ls -lM | cut -d' ' -f5-
  1904-02-29 13:00:00 1904-02-29T12:00:00
  2024-03-31  1:59:59 2024-03-31T00:59:59
  2024-03-31  3:00:00 2024-03-31T01:00:00
  2024-10-27  2:59:59 2024-10-27T00:59:59
  2024-10-27  2:00:00 2024-10-27T01:00:00
  2100-03-01  1:00:00 2100-03-01T00:00:00
  $ TZ=XYZ5:30 garnel ls -lMi | sed 's/.* 0 //;q'; TZ=XYZ5:30 garnel ls -lMiu | sed 's/.* 0 //;q'; cd ..
  2100-02-28 18:30:00 2100-03-01T00:00:00
  2100-03-01  0:00:00 2100-03-01T00:00:00

Sizes change their unit above 256 of the next one, and are cut off, not rounded.

  $ mkdir sizes && cd sizes
  $ for s in 262144 262145 263167 268435456 268435457 274877906945; do truncate -s $s $s; done
  $ garnel ls -lMTsh | sed -E "s/^1 $me +[^ ]+ +//" | xargs -n 6; cd ..
  262144 262144 256k 262145 256k 263167
  262144k 268435456 256M 268435457 256G 274877906945

Colours, marks and quotes. A link that leads nowhere is one, too; its target counts as a plain file. A chain of links
shows the first link's own target.

  $ mkdir look && cd look
  $ mkdir dir; : >plain; : >prog; chmod +x prog; mkfifo fifo; bind sock; chmod -x sock
  $ ln -s nowhere dangling; ln -s dir to-dir; ln -s to-dir chain; ln -s "$PWD/prog" absolute; ln -s '\plain' back
  $ garnel ls -cFQL | sed "s|$PWD|PWD|" | cat -v
  ^[[01;36m"absolute"^[[0m@ -> ^[[01;32m"PWD/prog"^[[0m*
  ^[[01;36m"back"^[[0m@ -> "\plain"^[[0m
  ^[[01;36m"chain"^[[0m@ -> ^[[01;36m"to-dir"^[[0m@
  ^[[01;36m"dangling"^[[0m@ -> "nowhere"^[[0m
  ^[[01;34m"dir"^[[0m/
  ^[[33m"fifo"^[[0m|
  "plain"^[[0m
  ^[[01;32m"prog"^[[0m*
  ^[[01;35m"sock"^[[0m=
  ^[[01;36m"to-dir"^[[0m@ -> ^[[01;34m"dir"^[[0m/
  $ garnel ls -cF /dev/null | cat -v
  ^[[01;33mnull^[[0m
  $ long -T -F to-dir; garnel ls -FL to-dir; garnel ls -L dangling
  lrwxrwxrwx 1 OWNER 3 to-dir@
  ls: cannot access dangling: No such file or directory
  $ for o in -c --color=always '--color auto' --color=never '--color prog' '-c -C'; do row garnel ls prog $o; done | cat -v | uniq -c
        3 ^[[01;32mprog^[[0m 
        3 prog 
  $ python3 -c 'import pty; pty.spawn(["garnel", "ls", "prog"]); pty.spawn(["garnel", "ls", "-C", "prog"])' | cat -v; cd ..
  ^[[01;32mprog^[[0m^M
  prog^M

Operands: files first, as they were typed and aligned together, then the directories, each under its heading. Without
-l a link to a directory is that directory.

  $ mkdir -p op/dir1 op/dir2 && cd op && printf 1 >dir1/a; ln -s dir1 link; printf 12345678 >file1; : >dir1/b; : >.hid
  $ for f in file1 dir1/a dir1/b .hid link; do at '2024-01-01 1:02:03' $f; done
  $ long file1 dir1 ./dir1/a .hid link
  -rw-r--r-- 1 OWNER 8 2024-01-01  1:02:03 file1
  -rw-r--r-- 1 OWNER 1 2024-01-01  1:02:03 ./dir1/a
  -rw-r--r-- 1 OWNER 0 2024-01-01  1:02:03 .hid
  lrwxrwxrwx 1 OWNER 4 2024-01-01  1:02:03 link
  
  dir1:
  -rw-r--r-- 1 OWNER 1 2024-01-01  1:02:03 a
  -rw-r--r-- 1 OWNER 0 2024-01-01  1:02:03 b
  $ row garnel ls dir2 link
   dir2:  link: a b 

What cannot be examined or read is reported, and that is all.

  $ ln -s loop loop; mkdir -p locked/in listable/in; chmod 0 locked; chmod 400 listable
  $ streams garnel ls missing file1/x loop file1 ''
  file1
  2> ls: cannot access missing: No such file or directory
  2> ls: cannot access file1/x: Not a directory
  2> ls: cannot access loop: Too many levels of symbolic links
  2> ls: cannot access : No such file or directory
  $ streams garnel ls "$(printf '%5000s' x)" | tail -c 21
  : File name too long
  $ unprivileged garnel ls locked/in; unprivileged garnel ls listable; unprivileged garnel ls -l locked listable
  ls: cannot access locked/in: Permission denied
  
  ls: cannot access locked: Permission denied
  locked:
  
  listable:
  $ chmod 755 locked listable
  $ cd ..

-R lists the subdirectories of a directory in reverse order, each one's own right behind it; links are not followed, nor
"." and "..", nor hidden directories that are not shown.

  $ mkdir -p r/a/1 r/a/2 r/b r/c/deep/er r/.h/i && cd r && ln -s .. a/up && : >a/2/f
  $ row garnel ls -R; row garnel ls -iR a c
  a b c  ./c: deep  ./c/deep: er  ./c/deep/er:  ./b:  ./a: 1 2 up  ./a/2: f  ./a/1: 
   a: up 2 1  a/1:  a/2: f  c: deep  c/deep: er  c/deep/er: 
  $ row garnel ls -aR .h; cd ..
  . .. i  .h/i: . .. 

Names are bytes. An entry is looked up where it was found: a backslash, which separates where paths are joined,
leads nowhere else.

  $ mkdir odd && cd odd && long_name=$(printf '%255s' | tr ' ' n)
  $ mkdir "$(printf 'new\nline')" "$(printf 'bad\377\033[0m')" "$long_name" 'e\' 'e\/s'
  $ row garnel ls -R | sed "s/$long_name/LONG/g" | cat -v
  badM-^?^[[0m e\ new line LONG  ./LONG:  ./new line:  ./e\: s  ./e\s:  ./badM-^?^[[0m: 
  $ mkdir d 'd/\sub' 'd/\sub/\deeper' '\sub'; : >'d/\sub/right'; : >'\sub/wrong'; ln -s right 'd/\sub/\link'; : >'\link'
  $ row garnel ls -RFL d
  \sub/  \sub: \deeper/ \link@ -> right right  \deeper: 
  $ row garnel ls -R 'e\'; garnel ls 'd/\sub/right' 'd\sub'
  s  e\s: 
  ls: cannot access d\sub: No such file or directory
  d/\sub/right

Paths longer than the system takes in one piece.

  $ python3 - <<'EOF'
  > import os
  > for i in range(1000):
  >     os.mkdir("12345678"); os.chdir("12345678")
  > os.symlink("x", "bottom")
  > EOF
  $ deep=$(printf '%1000s' | sed 's| |12345678/|g'); garnel ls "$deep"; garnel ls -l "${deep}bottom" | sed 's/.* //'
  bottom
  bottom
  $ garnel ls -l "${deep}bottom" "${deep}bottom" | sed 's/.* //' | wc -c
  18014
  $ rm -r 12345678
