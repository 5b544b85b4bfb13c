  $ garnel uname | diff - /proc/sys/kernel/ostype

The order of the fields is fixed:

  $ uname -m > machine; uname -n | paste -d ' ' - machine > node_machine
  $ cd /proc/sys/kernel; cat ostype hostname osrelease version | paste -sd ' ' | paste -d ' ' - $OLDPWD/machine > $OLDPWD/all
  $ cd - > /dev/null; garnel uname -a | cmp - all; garnel uname -vmr -ns | cmp - all; garnel uname -m -n | cmp - node_machine

Options end at the first operand, which is an error; a lone "-" is an option without a letter:

  $ streams garnel uname -n extra -z; echo $?; streams garnel uname - | tr '\0' @
  2> uname: excess argument: "extra"
  1
  2> uname: unknown switch: -@

The machine alone, whatever is asked:

  $ garnel arch | cmp - machine; garnel arch --help -z x | cmp - machine
