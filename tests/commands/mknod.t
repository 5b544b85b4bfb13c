A mode is decimal unless it says otherwise, and the umask is taken from it:

  $ garnel mknod plain p && garnel mknod octal p -m 0624 && garnel mknod -m 0x1ff hex p && garnel mknod -m 256x dec p
  $ stat -c '%A %n' *
  pr-------- dec
  prwxr-xr-x hex
  prw----r-- octal
  prwxr-xr-x plain
  $ for mode in 644 -1 99999999999999999999 ''; do garnel mknod f p -m $mode; done
  mknod: invalid mode
  mknod: invalid mode
  mknod: invalid mode
  mknod: missing or invalid operand of -m
  [2]

Operands are counted before they are looked at, and a FIFO's numbers never are. A number that no device can
have does not make another device:

  $ garnel mknod numbered p many few && stat -c %F numbered
  fifo
  $ for operands in 'f pp 1' 'f pp 1 2 3' 'f pp 1 2' 'f u' 'f x' 'plain p' 'none/f p' 'f c 4097 3'; do
  >   streams garnel mknod $operands
  > done
  2> mknod: missing operand after '1'
  2> mknod: extra operand '3'
  2> mknod: type specifier too long
  2> mknod: missing operand
  2> mknod: invalid type
  2> mknod: plain: File exists
  2> mknod: none/f: No such file or directory
  2> mknod: f: Invalid argument
  [1]
