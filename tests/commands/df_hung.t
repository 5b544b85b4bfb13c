A mount whose server does not answer, and one whose server has gone, keep nobody from seeing the others:
Needs: unshare -m sh -c 'exec 9<>/dev/fuse && mount -i -t fuse -o fd=9,rootmode=40000,user_id=0,group_id=0 none /mnt'

  $ mkdir hung dead fine
  $ cat >script <<'END'
  > exec 8<>/dev/fuse 9<>/dev/fuse
  > mount -i -t fuse -o fd=8,rootmode=40000,user_id=0,group_id=0 none hung
  > mount -i -t fuse.kind -o fd=9,rootmode=40000,user_id=0,group_id=0 none dead
  > exec 9<&-
  > mount -t tmpfs -o size=1m none fine
  > garnel df 2>errors | tail -n 1
  > garnel df hung/file fine dead 2>>errors; echo $?
  > cat errors
  > garnel umount hung dead; garnel df >/dev/null; echo $?
  > END
  $ unshare -m sh script | sed "s:$PWD:PWD:"
  -none/0                1024            0         1024   0% PWD/fine
  Filesystem        1K-blocks         Used        Avail Use% Mounted on
  -none/0                1024            0         1024   0% PWD/fine
  1
  df: 'PWD/hung': Connection timed out
  df: 'PWD/dead': Transport endpoint is not connected
  df: 'hung/file': Connection timed out
  df: 'dead': Transport endpoint is not connected
  0
