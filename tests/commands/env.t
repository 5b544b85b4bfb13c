The environment as it is, and as it is changed: what is set again keeps its place, and nothing is lost.

  $ garnel=$(command -v garnel); env() { garnel env "$@"; }
  $ env - A=1 B='two lines
  > here' A=3= "$garnel" env; env -0i A= B=x | tr '\0' '|'
  A=3=
  B=two lines
  here
  A=|B=x| (no-eol)
  $ env -i A=1 B=2 C=3 "$garnel" env -u B -u none --unset=A D=4
  C=3
  D=4
  $ garnel env >ours && command env >theirs && cmp ours theirs
  $ python3 - "$garnel" -u odd A=3 "$garnel" env <<'end'
  > import ctypes, sys
  > strings = lambda *words: (ctypes.c_char_p * (len(words) + 1))(*words, None)
  > words = [word.encode() for word in sys.argv[1:]]
  > ctypes.CDLL(None).execve(words[0], strings(b"garnel", b"env", *words[1:]), strings(b"A=1", b"odd", b"=x", b"A=2", b"B=\xff"))
  > end
  A=3
  =x
  B=\xff (esc)

The command's own status, or why it could not be run. It is looked for in the PATH that it is given, as seen from the
directory in which it starts.

  $ mkdir -p plain folder/tool bin && echo 'exit 9' >bin/tool && cp bin/tool plain && chmod +x bin/tool
  $ for arguments in bin/tool 'PATH=plain:folder:bin tool' 'PATH=plain:folder tool' 'PATH= tool' '-C bin PATH=:/none tool' \
  >     '--chdir=none true' ./folder '-u PATH tool' -u '-u A=B tool' '=A true' -C '-C bin' '-0 true'; do
  >   told garnel env $arguments
  > done
  9
  9
  126 2> env: tool: Permission denied
  127 2> env: tool: No such file or directory
  9
  125 2> env: none: No such file or directory
  126 2> env: ./folder: Permission denied
  127 2> env: tool: No such file or directory
  125 2> env: missing -u operand
  125 2> env: A=B: Invalid argument
  125 2> env: =A: Invalid argument
  125 2> env: missing -C operand
  125 2> env: -C: missing command
  125 2> env: -0: not with a command
  $ garnel env sh -c 'kill -TERM $$' || echo $?; garnel env sh -c 'echo "$#,$1,$2"; exit 7' x '' 'a  b'
  Terminated
  143
  2,,a  b
  [7]
  $ (trap '' HUP; garnel env sh -c 'kill -HUP $$; echo alive')
  alive
