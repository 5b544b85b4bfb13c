  $ garnel hostname --help; garnel hostname | diff - /proc/sys/kernel/hostname
  Usage: hostname [NAME]
  Show or set the system's host name.
  $ streams garnel hostname -f; echo $?; streams garnel hostname one two three; echo $?
  2> hostname: unknown switch: -f
  1
  2> hostname: extra operand "two"
  2
  $ streams sh -c 'garnel hostname > /dev/full'
  2> hostname: write error: No space left on device
  [1]
