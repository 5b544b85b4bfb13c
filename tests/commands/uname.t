  $ garnel uname --help | tail -n 3; garnel uname | diff - /proc/sys/kernel/ostype
      -r    print the kernel release
      -v    print the kernel version
      -m    print the machine hardware name

The order of the fields is fixed:

  $ uname -m > machine; uname -n | paste -d ' ' - machine > node_machine
  $ cd /proc/sys/kernel; cat ostype hostname osrelease version | paste -sd ' ' | paste -d ' ' - $OLDPWD/machine > $OLDPWD/all
  $ cd - > /dev/null; garnel uname -a | cmp - all; garnel uname -vmr -ns | cmp - all; garnel uname -m -n | cmp - node_machine

Options end at the first operand, which is an error; a lone "-" is an option without a letter:

  $ streams garnel uname -n extra -z; echo $?; streams garnel uname -sz; echo $?; streams garnel uname - | tr '\0' @
  2> uname: excess argument: "extra"
  1
  2> uname: unknown switch: -z
  100
  2> uname: unknown switch: -@

The machine alone, whatever is asked:

  $ garnel arch | cmp - machine; garnel arch --help -z x | cmp - machine
  $ streams sh -c 'garnel uname > /dev/full'; streams sh -c 'garnel arch > /dev/full'
  2> uname: write error: No space left on device
  2> arch: write error: No space left on device
  [1]
