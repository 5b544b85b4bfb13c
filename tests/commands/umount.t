What cannot be found or is not mounted does not stop the others:

  $ mkdir dir && touch dir/file
  $ streams garnel umount none dir -v dir/file/ '' | sed "s:$PWD:PWD:"
  umount: PWD/dir: stat filesystem
  2> umount: none: No such file or directory
  2> umount: PWD/dir: not mounted
  2> umount: dir/file/: Not a directory
  2> umount: : No such file or directory
