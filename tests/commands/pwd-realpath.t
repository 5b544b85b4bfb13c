  $ mkdir -p real/dir && ln -s real link && ln -s loop loop && touch file && root=$(pwd -P)
  $ show() { streams "$@" | sed "s|$root|ROOT|g" | tr -s 0; }

pwd prints where it is, whatever the operands say. The path may have 2046 bytes:

  $ cd link/dir && show garnel pwd && show garnel pwd -P some thing; cd "$root"
  ROOT/real/dir
  ROOT/real/dir
  $ while [ $((${#root} + ${#path})) -lt 1900 ]; do path=$path/$(printf '%0100d' 0); done
  $ path=$path/$(printf "%0$((2045 - ${#root} - ${#path}))d" 0) && mkdir -p ".$path" && cd ".$path"
  $ show garnel pwd -P | tr -d /0; mv "$root$path" "$root${path}1"; streams garnel pwd; cd "$root"
  ROOT
  pwd: failed to get current working directory
  $ (cd real/dir && rmdir ../dir && garnel pwd -P)
  pwd: failed to get current working directory
  [1]

realpath resolves everything but the last component, which need not exist and stays as it is:

  $ show garnel realpath '' none link link/../none real/./none link//x . real/.. ./ file/ none/ loop/x "$(printf '%05000d/' 0)" ./y | paste -sd,
  ROOT/none,ROOT/link,ROOT/none,ROOT/real/none,ROOT/real/x,ROOT/.,ROOT/real/..,ROOT/,ROOT/file/,ROOT/y,2> realpath: '': No such file or directory,2> realpath: none/: No such file or directory,2> realpath: loop/x: Too many levels of symbolic links,2> realpath: 0/: File name too long
  $ garnel realpath -z --quiet / // /none none/x '' '/\none' '\etc/..\x' | tr '\0' ,; echo
  /,/,/none,/none,/x,

With -e all of it must exist, and a backslash is part of a name:

  $ touch 'b\s' && ln -s //usr/.. two
  $ show garnel realpath --canonicalize-existing link/../link/ 'b\s' //etc/.. two none 'link\..' file/.
  ROOT/real
  ROOT/b\s
  /
  /
  2> realpath: none: No such file or directory
  2> realpath: link\..: No such file or directory
  2> realpath: file/.: Not a directory
  $ garnel realpath -e "$(printf '%2500s' | sed 's| |./|g')" 2>&1 | tail -c 21
  : File name too long

  $ garnel realpath -q
  realpath: missing operand
  [1]
