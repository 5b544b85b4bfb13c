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
  $ python3 - "$garnel" <<'end'
  > import ctypes, sys
  > def run(*arguments):
  >     if libc.fork() == 0:
  >         words = [b"garnel", b"env", *arguments, None]
  >         names = [b"A=1", b"odd", b"=x", b"A=2", b"B=\xff", None]
  >         libc.execve(garnel, (text * len(words))(*words), (text * len(names))(*names))
  >     libc.wait(None)
  > libc, text, garnel = ctypes.CDLL(None), ctypes.c_char_p, sys.argv[1].encode()
  > run()
  > run(b"-u", b"odd", b"A=3", garnel, b"env")
  > end
  A=1
  odd
  =x
  A=2
  B=\xff (esc)
  A=3
  =x
  B=\xff (esc)

The command's own status, or why it could not be run. It is looked for in the PATH that it is given, as seen from the
directory in which it starts.

  $ mkdir -p plain folder/tool bin && echo 'exit 9' >bin/tool && cp bin/tool plain && chmod +x bin/tool
  $ while read -r arguments; do streams garnel env $arguments; echo "$? $arguments"; done <<'end'
  > bin/tool
  > PATH=plain:folder:bin tool
  > PATH=plain:folder tool
  > PATH= tool
  > -C bin PATH=:/none tool
  > --chdir=none true
  > ./folder
  > -u PATH tool
  > -u
  > -u A=B tool
  > =A true
  > -C
  > -C bin
  > -0 true
  > end
  9 bin/tool
  9 PATH=plain:folder:bin tool
  2> env: tool: Permission denied
  126 PATH=plain:folder tool
  2> env: tool: No such file or directory
  127 PATH= tool
  9 -C bin PATH=:/none tool
  2> env: none: No such file or directory
  125 --chdir=none true
  2> env: ./folder: Permission denied
  126 ./folder
  2> env: tool: No such file or directory
  127 -u PATH tool
  2> env: missing -u operand
  125 -u
  2> env: A=B: Invalid argument
  125 -u A=B tool
  2> env: =A: Invalid argument
  125 =A true
  2> env: missing -C operand
  125 -C
  2> env: -C: missing command
  125 -C bin
  2> env: -0: not with a command
  125 -0 true
  $ garnel env sh -c 'kill -TERM $$' || echo $?; garnel env sh -c 'echo "$#,$1,$2"; exit 7' x '' 'a  b'
  Terminated
  143
  2,,a  b
  [7]
  $ (trap '' HUP; garnel env sh -c 'kill -HUP $$; echo alive')
  alive
