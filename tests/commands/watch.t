Needs: tmux -V

  $ for n in "" . -1 1s 1.2.3 99999999999; do garnel watch -n "$n" true; done 2>&1 | paste -sd,; garnel watch -n
  watch: : invalid interval,watch: .: invalid interval,watch: -1: invalid interval,watch: 1s: invalid interval,watch: 1.2.3: invalid interval,watch: 99999999999: invalid interval
  watch: -n: invalid interval
  [1]

Without a terminal, each round as it is, from both streams; -e and -g tell when it is over:

  $ next='echo x >> rounds; wc -l < rounds;'
  $ streams garnel watch -n 0 -e "$next" printf '"%s\033\n"' 'a   "$((1 + 1))"' '>&2; [ $(wc -l < rounds) != 2 ] || exit 7'; echo $?
  1
  a\x1b (esc)
  2\x1b (esc)
  2
  a\x1b (esc)
  2\x1b (esc)
  7
  $ garnel watch -n .1 -g 'echo x >> rounds; echo $(($(wc -l < rounds) / 6)); false'; echo $?
  0
  0
  0
  1
  0
  $ garnel watch -e 'kill -9 $$'; echo $?; garnel watch -xge echo '$HOME  *' -g & sleep 0.5; kill $!
  137
  $HOME  * -g
  $ told garnel watch -x ./none; told garnel watch -x .; garnel watch -e none 2>&1 | sed 's/.*: none/none/'
  127 2> watch: ./none: No such file or directory
  126 2> watch: .: Permission denied
  none: not found
  $ garnel watch -n 0.1 'sh -c "exec >&- 2>&-; sleep 0.3"; echo $?; exit 5' -e > /dev/full; echo $?
  watch: write error: No space left on device
  1

The interval lies between the rounds:

  $ garnel watch -n 0.4 -e 'date +%s%N >> times; [ $(wc -l < times) -lt 3 ]'; awk '{ if (NR > 1) print ($1 - last >= 4e8 && $1 - last < 9e8); last = $1 }' times
  1
  1

On a terminal, lines and rows are cut to the window, nothing is torn, nothing can harm it, and it follows the window. Interrupted, it leaves
the screen as it was:

  $ printf 'a\tb\033[31mred\rx\n\303\251t\303\251 \346\227\245\346\234\254 e\314\201\377\303\n012345678901234567\346\227\245\346\234\254#\n0123456789012345678\346\227\245\346\234\254#\n\202\355\240\200\300\257\342\200\256\t|\n5\n6\n' > text
  $ in-window 20x7 'garnel watch -n 0.3 cat text' 'see "|"' 'tmux resize-window -t $w -x 40 -y 5' 'see "#"' 'tmux send-keys -t $w C-c' 'see "$"'
  |Every 0.3s, TIME
  |
  |a       b?[31mredx
  |\xc3\xa9t\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac e\xcc\x81?? (esc)
  |012345678901234567\xe6\x97\xa5 (esc)
  |0123456789012345678
  |????    |
  |Every 0.3s, TIME: cat text
  |
  |a       b?[31mredx
  |\xc3\xa9t\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac e\xcc\x81?? (esc)
  |012345678901234567\xe6\x97\xa5\xe6\x9c\xac# (esc)
  |
  |$
  |
  |
  |
  $ in-window 20x2 'garnel watch -tn 1 cat text' 'see red'
  |a       b?[31mredx
  |\xc3\xa9t\xc3\xa9 \xe6\x97\xa5\xe6\x9c\xac e\xcc\x81?? (esc)

Differences are marked; stopped and continued, it draws anew; -e and a signal put the terminal back:

  $ cat > count <<'END'
  > echo x >> rounds
  > n=$(wc -l < rounds)
  > [ $n != 3 ] || read wait < pipe
  > echo "count $n of 4"; printf '%0*d\n' $n $n | tr 0 '*'
  > [ $n != 4 ] || exit 9
  > END
  $ mkfifo pipe; chmod +x count; rm -f rounds
  $ in-window 24x5 'garnel watch -dn 0.1 -e sh count; echo status $?' 'see "<2"' 'tmux send-keys -t $w C-z' 'see Stopped' 'tmux send-keys -t $w "clear; fg" Enter' 'sleep 0.3; echo > pipe; see "***4"'
  |Every 0.1s, TIME: sh
  |
  |count <2>>> of 4
  |<*2
  |
  |status 148
  |[1] + Stopped
  |         garnel watch -d
  |n 0.1 -e sh count
  |$
  |garnel watch -dn 0.1 -e
  |sh count
  |count 4 of 4
  |***4
  |$
  $ in-window 24x4 'garnel watch printf 7%s 7; echo status $?' 'see 77' 'kill $(pgrep -P $(tmux list-panes -t $w -F "#{pane_pid}")); see "status 143"'
  |Every 2s, TIME: prin
  |
  |77
  |
  |Terminated
  |status 143
  |$
  |
  $ in-window 30x5 'garnel watch -x ./none; TERM=dumb garnel watch -e "echo plain; false"; echo status $?' 'see "status 1"'
  |watch: ./none: No such file or
  | directory
  |plain
  |status 1
  |$
