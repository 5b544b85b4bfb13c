  $ garnel nslookup > help; echo $?; garnel nslookup -z --help; echo $?; garnel nslookup a --help | diff - help; cat help
  0
  Unknown switch: -z
  100
  Usage: nslookup SERVER
  Query Internet name servers.
  $ streams garnel nslookup one two three
  2> nslookup: extra operand 'two'
  [1]

Names that are none are not looked up:

  $ for name in '' ' ' 'localhost 127.0.0.1'; do streams garnel nslookup "$name"; echo $?; done
  2> nslookup: no such host: ''
  1
  2> nslookup: no such host: ' '
  1
  2> nslookup: no such host: 'localhost 127.0.0.1'
  1

An address is a host of its own:

  $ garnel nslookup 127.1
  Name: 127.1
  The host has 1 address.
  \t127.0.0.1 (esc)
  The host has 0 aliases.
  $ streams sh -c 'garnel nslookup 127.0.0.1 > /dev/full'
  2> nslookup: write error: No space left on device
  [1]
