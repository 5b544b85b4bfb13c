The header comes first, whatever happens then, and operands that cannot be examined do not stop the others:

  $ streams garnel df none /proc '' -L -T -i
  Filesystem     Type          1K-blocks         Used        Avail Use%    B-First    B-Count   Inodes    IUsed    IFree IUse% Mounted on
  -proc/0        proc                  0            0            0    -          -          -        0        0        0     - /proc
  2> df: 'none': No such file or directory
  2> df: '': No such file or directory
  [1]
  $ garnel df -ihT /proc/self
  Filesystem     Type        Size  Used Avail Use%   Inodes    IUsed    IFree IUse% Mounted on
  -proc/0        proc          0k    0k    0k    -        0        0        0     - /proc
