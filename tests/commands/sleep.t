Operands add up and share the unit that was given last; what is no number is 0, and less than nothing is no wait:

  $ slept() {
  >   least=$1; shift; from=$(date +%s%N)
  >   timeout 10 garnel sleep "$@" || echo "status $?"
  >   [ $((($(date +%s%N) - from) / 1000000)) -ge "$least" ] || echo "too short: $*"
  > }
  $ slept 500 -m 2 -d ' +3x' -t x; slept 1000 1; slept 0 -d 0; slept 0 ' -5' 4
  $ slept 0 9223372036854775807 9223372036854775807 2 -d

The longest wait; a longer one fails, with a word only when asked for:

  $ timeout 0.2 garnel sleep 2147480
  [124]
  $ for n in 2147481 '-t 21474801' '-d 25' 9223372036854775807; do garnel sleep $n || printf "$? "; done
  1 1 1 1  (no-eol)
