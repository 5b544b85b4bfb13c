Archives by the usual tool, in the formats that it makes.

  $ alias cpio2='garnel cpio2'
  $ mkdir tree tree/dir && printf 'hello\n' >tree/dir/file && printf 'a\0b\377' >tree/odd
  $ : >tree/empty && ln -s dir/file tree/link && mkfifo tree/pipe
  $ chmod 4751 tree/odd && chmod 1777 tree/dir
  $ touch -h -d '2024-02-29 12:34:56 UTC' tree/dir/file tree/odd tree/empty tree/link tree/pipe tree/dir
  $ pack() { (cd tree && printf '%s\n' dir dir/file odd empty link pipe | cpio -o --quiet -H "$1"); }
  $ for format in newc odc bin; do pack $format >$format.cpio; done

  $ cpio2 list -lv newc.cpio | tee long
  drwxrwxrwx          0 2024-02-29 12:34:56 dir
  -rw-r--r--          6 2024-02-29 12:34:56 dir/file
  -rwxr-x--x          4 2024-02-29 12:34:56 odd
  -rw-r--r--          0 2024-02-29 12:34:56 empty
  lrwxrwxrwx          8 2024-02-29 12:34:56 link
  ?rw-r--r--          0 2024-02-29 12:34:56 pipe
  $ for format in odc bin; do cpio2 list $format.cpio -l | cmp - long; done
  $ TZ=XYZ-5:30 garnel cpio2 list -l newc.cpio | head -n 1
  drwxrwxrwx          0 2024-02-29 18:04:56 dir
  $ for format in newc odc bin; do
  >     cpio2 cat $format.cpio odd | cmp - tree/odd; cpio2 cat $format.cpio link && echo; cpio2 cat $format.cpio empty
  > done | uniq -c
        3 dir/file

Export goes to the entry's own name or to another; directories are not made, and an old file is replaced.

  $ mkdir out && cd out
  $ cpio2 export ../odc.cpio odd && cmp odd ../tree/odd && stat -c '%a %s' odd
  644 4
  $ printf 'longer than the entry' >other && cpio2 export -v ../bin.cpio dir/file other && cat other
  hello
  $ streams garnel cpio2 export ../newc.cpio dir/file
  2> cpio2: ../newc.cpio: failed to create file 'dir/file': No such file or directory
  [1]
  $ mkdir dir && cpio2 export ../newc.cpio dir/file && cat dir/file
  hello

Nothing written is a failed write: an empty entry leaves no file, not even an old one.

  $ ln -s /dev/full full; for what in empty 'empty other' 'odd full'; do streams garnel cpio2 export ../newc.cpio $what; done
  2> cpio2: ../newc.cpio: failed to write file 'empty': Success
  2> cpio2: ../newc.cpio: failed to write file 'other': Success
  2> cpio2: ../newc.cpio: failed to write file 'full': No space left on device
  [1]
  $ echo *; cd ..
  dir odd

The output may be the archive.

  $ cp newc.cpio self.cpio && cpio2 export self.cpio odd self.cpio && cmp self.cpio tree/odd

  $ misuse() { told garnel cpio2 "$@"; }
  $ misuse extract x; misuse list; misuse cat newc.cpio; misuse export newc.cpio; misuse cat newc.cpio odd c
  1 2> cpio2: extract: unknown command
  1 2> cpio2: list: missing operand
  1 2> cpio2: cat: missing operand
  1 2> cpio2: export: missing operand
  1 2> cpio2: cat: c: extra operand

What is no archive, and what cannot be read. A FIFO must not be waited for.

  $ : >nothing; mkfifo fifo; printf 'no archive at all' >text; printf 070702 >checksums; printf 0 >short
  $ for image in missing nothing fifo tree /dev/null text checksums short; do misuse list $image; done
  2 2> cpio2: could not open 'missing' for reading: No such file or directory
  2 2> cpio2: nothing: failed to read file: Success
  2 2> cpio2: fifo: failed to read file: Not a file
  2 2> cpio2: tree: failed to read file: Is a directory
  2 2> cpio2: /dev/null: failed to read file: Not a file
  2 2> cpio2: text: failed to initialize cpio reader (maybe not a cpio?)
  2 2> cpio2: checksums: failed to initialize cpio reader (maybe not a cpio?)
  2 2> cpio2: short: failed to initialize cpio reader (maybe not a cpio?)

Damaged archives: the walk ends where nothing more is found, but nothing is shown of one that a header leads out of.

  $ printf '' | cpio -o --quiet -H newc >none.cpio && misuse list -l none.cpio
  0
  $ bend() { python3 -c 'import sys; b = sys.stdin.buffer.read(); sys.stdout.buffer.write('"$1"')'; }
  $ bend 'b[:300]' <newc.cpio >cut && misuse list cut
  2 2> cpio2: cut: failed to initialize cpio reader (maybe not a cpio?)

Large archives are mapped. This one has holes for data, and its last entry begins behind 4 GiB.

  $ cat >large.py <<'EOF'
  > import sys
  > out = open(sys.argv[1], 'wb')
  > def entry(name, size, data=b''):
  >     fields = 1, 0o100644, 0, 0, 1, 0, size, 0, 0, 0, 0, len(name) + 1, 0
  >     header = b'070701' + b''.join(b'%08X' % field for field in fields) + name.encode() + b'\0'
  >     out.write(header + bytes(-len(header) % 4))
  >     out.write(data)
  >     out.seek((size + 3 & ~3) - len(data), 1)
  > exec(sys.argv[2])
  > out.truncate()
  > EOF
  $ python3 large.py large 'entry("a", 3 << 30, b"start"); entry("b", 3 << 30); entry("c", 4, b"end\n"); entry("TRAILER!!!", 0)'
  $ cpio2 list -l large
  -rw-r--r-- 3221225472 1970-01-01 00:00:00 a
  -rw-r--r-- 3221225472 1970-01-01 00:00:00 b
  -rw-r--r--          4 1970-01-01 00:00:00 c
  $ cpio2 cat large c && cpio2 export large c part && cat part
  end
  end
  $ cpio2 export large c large && cat large
  end

A mapped archive may change while it is listed: the list is longer than a pipe, and its reader waits for the
change.

  $ many='[entry("%08d" % i + 96 * "x", 0) for i in range(40000)]; entry("TRAILER!!!", 0)'
  $ listed() { (garnel cpio2 list many 2>errors; echo "status $?" >>errors) | (head -n 1 | cut -b 1-12; "$@"; cat >rest); cat errors; }
  $ python3 large.py many "$many"
  $ listed truncate -s 4096 many
  00000000xxxx
  cpio2: many: failed to read file: Input/output error
  status 2
  $ python3 large.py many "$many" && bend 'b.replace(b"0" * 40 + b"00000069", b"F" * 8 + b"0" * 32 + b"00000069")' <many >bent
  $ listed dd if=bent of=many conv=notrunc status=none
  00000000xxxx
  cpio2: many: failed to read file: Input/output error
  status 2
  $ python3 large.py many 'entry("data", 5 << 20)'
  $ (garnel cpio2 cat many data; echo "status $?" >&2) | (head -c 1 >first; truncate -s 4096 many; wc -c >count)
  cpio2: many: failed to read file: Input/output error
  status 2
