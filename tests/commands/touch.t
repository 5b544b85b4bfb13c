A stamp is UTC, whatever the time zone; without seconds they are 0. It is not checked against the calendar:

  $ show() { stat -c '%x | %y' "$@" | sed 's/\.000000000 +0000//g'; }
  $ for options in 202401021530.45 '202401021530.45 -t 202401021530' 202300000000 \
  >     202302302460.99 '01021530 -Y 1999 -t 200001021530'; do
  >   TZ=Asia/Tokyo garnel touch -t $options file; show file
  > done
  2024-01-02 15:30:45 | 2024-01-02 15:30:45
  2024-01-02 15:30:00 | 2024-01-02 15:30:00
  2022-11-30 00:00:00 | 2022-11-30 00:00:00
  2023-03-03 01:01:39 | 2023-03-03 01:01:39
  2000-01-02 15:30:00 | 2000-01-02 15:30:00

Without a year it is the present one. -Y is the present time without -t:

  $ for year in abc 0 99999999999999999999; do garnel touch -t 01021530 -Y $year file; done
  $ garnel touch -t 01021530 file && [ "$(date -r file +%Y%m%d)" = "$(date +%Y)0102" ]
  $ garnel touch -Y 1999 file && [ $(($(date +%s) - $(date -r file +%s))) -lt 60 ]

Only the form counts:

  $ for stamp in '' 0102153 010215301 20240102153000 0102153O 01021530.1 01021530.123 01021530. 01021530.1.1 +1021530; do
  >   streams garnel touch new -t "$stamp"
  > done | sort | uniq -c
       10 2> touch: bad time stamp format
  $ for options in '-Y -1 f' '-Y' '-t' '-c'; do streams garnel touch $options; done
  2> touch: bad time stamp format
  2> touch: bad time stamp format
  2> touch: missing -t operand
  2> touch: missing file operand
  [1]

Missing files are made, also behind a link, unless that is not wanted; what is there keeps its contents:

  $ echo text >old && ln -s behind link
  $ garnel touch -t 200001010000 old 'a new
  > one' link "$(printf '\377')" && garnel touch now && garnel touch -c none none/x link old
  $ stat --printf '%A %s %.4y %N\n' * | sed "s/$(date +%Y)/now/"
  -rw-r--r-- 0 2000 'a new'$'\n''one'
  -rw-r--r-- 0 now 'behind'
  -rw-r--r-- 0 now 'file'
  lrwxrwxrwx 6 now 'link' -> 'behind'
  -rw-r--r-- 0 now 'now'
  -rw-r--r-- 5 now 'old'
  -rw-r--r-- 0 2000 ''$'\377'
  $ streams garnel touch '' none/x old/x "$(printf '%0300d' 0)" last | tr -s 0; ls last
  2> touch: '': failed to create: No such file or directory
  2> touch: 'none/x': failed to create: No such file or directory
  2> touch: 'old/x': failed to create: Not a directory
  2> touch: '0': failed to create: File name too long
  last
