The command's status goes on; the report is on standard error.

  $ digits() { streams garnel time "$@" | sed -E '/^2>/s/[0-9]+\./N./; /N/!s/( *)[0-9]+/\1N/g; s/[0-9]/9/g'; }
  $ digits -p true; digits -v sh -c 'echo out; exit 3'; streams garnel time --verbose -p true | wc -l
  9> real N.99
  9> user N.99
  9> sys N.99
  out
  9> real     N.999
  9> user     N.999
  9> sys      N.999
  N> memory   N KiB at most
  N> faults   N minor, N major
  N> switches N voluntary, N involuntary
  6
  $ for words in false none /; do told garnel time $words | sed '1s/real.*//; /^2>/d'; done
  1 2> 
  127 2> time: none: No such file or directory
  126 2> time: /: Permission denied
  $ garnel time sh -c 'exec 2>&-; kill -9 $$' 2>/dev/null || echo $?
  137

Real time is waiting, user time is work of the command and its children. Where the ends of children are ignored, a
status is had nevertheless.

  $ garnel time sleep 0.3 2>&1 | grep -c 'real *\(0.[3-9]\|[1-9]\)'; (trap '' CHLD; garnel time sh -c 'exit 4' 2>/dev/null; echo $?)
  1
  4
  $ garnel time sh -c '(i=0; while [ $i -lt 200000 ]; do i=$((i + 1)); done); true' 2>&1 | grep -c 'user *[0-9.]*[1-9]'
  1

An interrupt from the terminal stops the command, not the report, unless it was ignored before.

  $ cat >interrupt.py <<'end'
  > import signal, subprocess
  > def at_default():
  >     signal.signal(signal.SIGINT, signal.SIG_DFL)
  >     signal.signal(signal.SIGQUIT, signal.SIG_DFL)
  > for name in ("INT", "QUIT"):
  >     run = ["garnel", "time", "sh", "-c", f"ulimit -c 0; kill -{name} 0; sleep 9"]
  >     ended = subprocess.run(run, start_new_session=True, preexec_fn=at_default, stderr=subprocess.PIPE)
  >     print(ended.returncode, ended.stderr.count(b"\n"))
  > end
  $ python3 interrupt.py; (trap '' INT; garnel time sh -c 'kill -INT $$; echo alive' 2>/dev/null)
  130 3
  131 3
  alive

Stopped from the terminal at any moment, also while the command is being started, it stops.

  $ cat >stop.py <<'end'
  > import os, signal, subprocess, time
  > for i in range(60):
  >     job = subprocess.Popen(["garnel", "time", "true"], preexec_fn=os.setpgrp, stderr=subprocess.DEVNULL)
  >     time.sleep(0.0008 + 0.0004 * (i % 12))
  >     os.killpg(job.pid, signal.SIGTSTP)
  >     for tries in range(1000):
  >         if os.waitid(os.P_PID, job.pid, os.WEXITED | os.WSTOPPED | os.WNOHANG | os.WNOWAIT):
  >             break
  >         time.sleep(0.01)
  >     else:
  >         print("held")
  >     os.killpg(job.pid, signal.SIGKILL)
  >     job.wait()
  > end
  $ python3 stop.py
