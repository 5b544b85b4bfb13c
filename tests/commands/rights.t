What an ordinary user cannot do to what belongs to another, which takes two users to see:

Needs: [ "$(id -u)" = 0 ]

  $ chmod 711 .

What cannot be removed shows in its directories up to the operand; the rest is gone:

  $ mkdir -p locked/deep/inner && touch locked/deep/inner/file locked/deep/gone && chmod -R a+rwX locked
  $ mkdir -m 711 locked/other && chmod 755 locked/deep/inner
  $ streams unprivileged rm -rf locked | sort; echo $(find locked | sort)
  2> rm: 'locked/other': failed to open directory
  2> rm: cannot remove 'locked/deep/inner/file': Permission denied
  2> rm: cannot remove directory 'locked': Permission denied
  2> rm: cannot remove directory 'locked/deep': Directory not empty
  2> rm: cannot remove directory 'locked/deep/inner': Directory not empty
  locked locked/deep locked/deep/inner locked/deep/inner/file locked/other

Files that cannot be read or written are not copied:

  $ echo r >readable && mkdir kept && touch secret && chmod 600 secret && mkdir -m 777 open && echo o >open/owned
  $ for operands in 'secret open/new' 'open/owned owned' 'readable open/owned' '-r kept open/s'; do
  >   streams unprivileged cp $operands; done; echo $(find open | sort); cat open/owned
  2> cp: secret: Permission denied
  2> cp: owned: Permission denied
  2> cp: open/owned: Permission denied
  open open/owned open/s
  o

Without the right to rename, it is tried the other way, and the source stays:

  $ rm -r kept open && mkdir -p kept/d open && echo k >kept/f && chmod 777 open && chmod 555 kept
  $ for operands in 'kept/f open' 'kept/f open/f' 'kept open/new'; do streams unprivileged mv $operands; done | sort; echo $(find kept open | sort)
  2> mv: kept/f: destination exists.
  2> mv: kept/f: failed to open destination file.
  2> mv: kept/f: failed.
  2> mv: kept: failed.
  2> mv: open/new/d: failed to make directory: Permission denied
  kept kept/d kept/f open open/f open/new

What others own cannot be changed, and what cannot be read is not entered:

  $ mkdir own other && touch own/f && chmod -R 600 own && chown -R 65534 own
  $ streams unprivileged chmod -Rv 700 other; streams unprivileged chmod -Rf 700 other
  failed to change mode of 'other' changes from 0755 (rwxr-xr-x) to 0700 (rwx------)
  2> chmod: changing permissions of 'other': Operation not permitted
  [1]
  $ streams unprivileged chmod -Rv 300 own; streams unprivileged chmod -R 444 own; stat -c '%a %n' own own/f
  mode of 'own' changed from 0600 (rw-------) to 0300 (-wx------)
  2> chmod: out of memory
  444 own
  600 own/f
