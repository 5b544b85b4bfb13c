What differs from "sane", and everything, in lines that fit the window:

  $ on-pty 'garnel stty; garnel stty rows 24 columns 80; garnel stty -a'
  speed 38400 baud; line = 0;
  -brkint -imaxbel
  speed 38400 baud; rows 24; columns 80; line = 0;
  intr = ^C; quit = ^\; erase = ^?; kill = ^U; eof = ^D; eol = <undef>;
  eol2 = <undef>; swtch = <undef>; start = ^Q; stop = ^S; susp = ^Z; rprnt = ^R;
  werase = ^W; lnext = ^V; discard = ^O; min = 1; time = 0;
  -parenb -parodd -cmspar cs8 -hupcl -cstopb cread -clocal -crtscts
  -ignbrk -brkint -ignpar -parmrk -inpck -istrip -inlcr -igncr icrnl ixon -ixoff
  -iuclc -ixany -imaxbel -iutf8
  opost -olcuc -ocrnl onlcr -onocr -onlret -ofill -ofdel nl0 cr0 tab0 bs0 vt0 ff0
  isig icanon iexten echo echoe echok -echonl -noflsh -xcase -tostop -echoprt
  echoctl echoke -flusho -extproc

The host's stty sees what changes, flag by flag and in combinations:

  $ on-pty 'state() { stty -a | tail -n +2 | tr "\n" " " | sed "s/; /;/g; s/ = /=/g; s/[; ]/\n/g" | sort; }
  > see() { state > before; garnel stty "$@"; state > after; comm -13 before after | xargs echo "$*:"; }
  > see sane; see -echo -icanon istrip tab3 min 5 time 3; see sane -istrip; see nl; see -nl raw; see -raw -echoe; see cooked crterase cbreak ek
  > see dec lcase; see -lcase; see cstopb clocal crtscts -hup tandem'
  sane: brkint imaxbel
  -echo -icanon istrip tab3 min 5 time 3: -echo -icanon istrip min=5 tab3 time=3
  sane -istrip: -istrip echo icanon min=1 tab0 time=0
  nl: -icrnl -onlcr
  -nl raw: -brkint -icanon -imaxbel -isig -ixon -opost onlcr
  -raw -echoe: -echoe brkint icanon icrnl ignpar isig ixon opost
  cooked crterase cbreak ek: -icanon echoe
  dec lcase: iuclc olcuc xcase
  -lcase: -iuclc -olcuc -xcase
  cstopb clocal crtscts -hup tandem: clocal crtscts cstopb ixoff

Characters, speeds and the window, and back again with what -g printed; the host's form is taken as well:

  $ on-pty 'saved=$(garnel stty -g); host=$(stty -g); garnel stty intr ^a quit undef erase x kill 0xfe eof ^- eol ^? start 17 swtch 0101; garnel stty
  > garnel stty speed 115200 size rows 5 cols 0x10 ospeed 4000000 speed; garnel stty | head -1; garnel stty ispeed 4000000; stty -a | head -1; garnel stty "$saved"; garnel stty
  > garnel stty raw -echo; garnel stty "$host"; [ "$saved" = "$(garnel stty -g)" ]; echo $?; garnel stty "$saved:"; garnel stty "${saved%:*}:100"; garnel stty 500:5'
  speed 38400 baud; line = 0;
  intr = ^A; quit = <undef>; erase = x; kill = 0xfe; eof = <undef>; eol = ^?;
  swtch = A;
  -brkint -imaxbel
  115200 4000000
  5 16
  115200 4000000
  ispeed 115200 baud; ospeed 4000000 baud; line = 0;
  speed 4000000 baud; rows 5; columns 16; line = 0;
  speed 38400 baud; line = 0;
  -brkint -imaxbel
  0
  stty: 500:5:bf:8a3b:3:1c:7f:15:4:0:1:0:11:13:1a:0:12:f:17:16:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:: invalid argument
  stty: 500:5:bf:8a3b:3:1c:7f:15:4:0:1:0:11:13:1a:0:12:f:17:16:0:0:0:0:0:0:0:0:0:0:0:0:0:0:0:100: invalid argument
  stty: 500:5: invalid argument
  [1]

Nothing is changed unless all is understood:

  $ on-pty 'try() { told garnel stty -echo rows 9 "$@"; }; try -ecoh; try -cs8; try -sane; try intr; try intr ab; try intr 256; try intr ""; try min 256
  > try rows 65536; try 12345; try ospeed 1; try line; try -; try -a; try 1:2; garnel stty size; garnel stty' | sed 's/^1 2> stty: //; s/: invalid argument$//' | paste -sd,
  -ecoh,-cs8,-sane,intr: missing argument,ab,256,,256,65536,12345,1,line: missing argument,-,-a,1:2,0 0,speed 38400 baud; line = 0;,-brkint -imaxbel

What a terminal does not take is told, and what it does take stays:

  $ on-pty 'streams garnel stty evenp -echo; echo $?; garnel stty | tail -1'
  2> stty: standard input: not all settings were accepted
  1
  -echo

Another terminal, and what is none:

  $ on-pty 'tty=$(tty); streams garnel stty -F "$tty" -echo size </dev/null; stty | tail -1; garnel stty -aF "$tty" | head -1; garnel stty -F'
  0 0
  -echo
  speed 38400 baud; rows 0; columns 0; line = 0;
  stty: -F: missing argument
  [1]
  $ streams garnel stty; mkfifo pipe; streams garnel stty -F pipe echo; streams garnel stty -F none -a
  2> stty: standard input: Inappropriate ioctl for device
  2> stty: pipe: Inappropriate ioctl for device
  2> stty: none: No such file or directory
  [1]

  $ streams garnel stty -ag; streams garnel stty -g echo
  2> stty: -g: not together with -a
  2> stty: echo: not together with -g
  [1]
