Options end at the first operand, and complaints go to standard output:

  $ garnel echo a -n --help -x; garnel echo; garnel echo '' ''; garnel echo -n; garnel echo -n -e a b
  a -n --help -x
  
   
  a b (no-eol)
  $ for word in -nz -- --foo -5 -; do garnel echo "$word" a 2>&- || echo $?; done | tr '\0\n' '0,'
  Unknown switch: -z,100,Unknown switch: --,100,Unknown switch: --,100,Unknown switch: -5,100,Unknown switch: -0,100, (no-eol)

Escapes are read with -e only, and the last of -e and -E decides:

  $ garnel echo '\n'; garnel echo -eE '\n'; garnel echo -E -ne '\x0a'
  \n
  \n
  
  $ garnel echo -ne '\\\a\b\e\n\r\t\v' '\x41\x7E\xfF\x00' '\x4\xg0\x\' 'x\c\f\0101\' '\' b | od -An -c -w12
     \  \a  \b 033  \n  \r  \t  \v       A   ~ 377
    \0       \   x   4   \   x   g   0   \   x    
     x   \   c   \   f   \   0   1   0   1        
     b
  $ garnel echo -ne "$(perl -e 'print "\\x00\\\\" x 15000')" | od -An -c
    \0   \  \0   \  \0   \  \0   \  \0   \  \0   \  \0   \  \0   \
  *

Failing output is ignored:

  $ garnel echo hi > /dev/full; garnel echo -e 'h\x69' >&-
