  $ garnel sync
  $ streams garnel sync . -z
  2> sync: unknown switch: -z
  [100]
  $ streams garnel sync . ..
  2> sync: extra operand '.'
  [1]
