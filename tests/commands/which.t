The first match in PATH, or all of them; directories and what cannot be executed are none.

  $ mkdir -p a b c/tool d && touch a/tool b/tool d/tool d/-x && chmod +x b/tool d/tool d/-x
  $ garnel=$(command -v garnel); which() { path=$1; shift; PATH=$path "$garnel" which "$@" 2>&1; }
  $ which c:a:none:b:d -a tool; which b --all nothing tool ./d/tool d/../a/tool
  b/tool
  d/tool
  which: nothing: No such file or directory
  b/tool
  ./d/tool
  which: d/../a/tool: Permission denied
  [1]
  $ which a:c tool; cd d && which :../b: -a tool; which '' tool; cd ..; which a -s tool || echo $?
  which: tool: Permission denied
  ./tool
  ../b/tool
  ./tool
  ./tool
  1
  $ which d/:/bin tool; which d:/bin -s tool sh; which d -as tool none || echo $?
  d/tool
  1
  $ garnel env -u PATH "$garnel" which -s sh && which d ''
  which: : No such file or directory
  [1]
