What changes a file system says on one that is read-only:

Needs: unshare -m true

  $ mkdir fs && unshare -m sh -c '
  > mount -t tmpfs none fs && mkdir fs/dir && touch fs/file && mount -o remount,ro fs
  > for command in "mkdir fs/new" "mkdir -p fs/new" "rmdir fs/dir" "ln fs/file fs/new" "ln -s x fs/new" "mknod fs/new p" \
  >     "mktemp fs/XXX" "mktemp -d fs/XXX" "touch fs/file fs/new" "touch -c fs/file fs/new" "truncate -s 5 fs/file fs/new"; do
  >   streams garnel $command
  > done; garnel truncate -c -s 5 fs/file'
  2> mkdir: 'fs/new': cannot create directory: Read-only file system
  2> rmdir: failed to remove 'fs/dir': Read-only file system
  2> ln: failed to create hard link: Read-only file system
  2> ln: failed to create symbolic link: Read-only file system
  2> mknod: fs/new: Read-only file system
  2> mktemp: fs/??X: failed to create file (glob)
  2> mktemp: fs/??X: failed to create dir (glob)
  2> touch: 'fs/file': failed to change timestamp: Read-only file system
  2> touch: 'fs/new': failed to create: Read-only file system
  2> touch: 'fs/file': failed to change timestamp: Read-only file system
  2> truncate: 'fs/file': Read-only file system
  2> truncate: 'fs/new': Read-only file system
