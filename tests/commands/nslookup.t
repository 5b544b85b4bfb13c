Names that are none are not looked up:

  $ for name in '' ' ' 'localhost 127.0.0.1'; do streams garnel nslookup "$name"; done
  2> nslookup: no such host: ''
  2> nslookup: no such host: ' '
  2> nslookup: no such host: 'localhost 127.0.0.1'
  [1]

An address is a host of its own:

  $ garnel nslookup 127.1
  Name: 127.1
  The host has 1 address.
  \t127.0.0.1 (esc)
  The host has 0 aliases.
