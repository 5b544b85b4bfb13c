  $ for word in bs foo=1 status=all count=1x bs=0 ibs=-1 bs=8E; do told garnel dd $word; done | sed 's/^1 2> dd: invalid argument: //' | paste -sd' '
  'bs' 'foo=1' 'status=all' 'count=1x' 'bs=0' 'ibs=-1' 'bs=8E'
  $ ASAN_OPTIONS=allocator_may_return_null=1:log_path=/dev/null streams garnel dd obs=4E
  2> dd: no memory to allocate buffer
  [1]
  $ streams garnel dd if=none of=new; ls; streams garnel dd of=none/new
  2> dd: none: No such file or directory
  2> dd: none/new: No such file or directory
  [1]

Nothing is truncated, and only what is missing is made, for its owner:

  $ seq -s '' 1000 >in; head -c 10 in >head
  $ garnel dd of=new count=0 status=dnd <in && stat -c '%a %s' new && garnel dd if=in of=new && cmp in new
  600 0

Positions count blocks of their own side; where there is no such place, the copy begins where the stream stands:

  $ garnel dd if=in bs=100 ibs=3 skip=2 obs=4 seek=1 count=2 of=p && od -c p
  0000000  \0  \0  \0  \0   7   8   9   1   0   1
  0000012
  $ seq 3 | garnel dd skip=1 seek=18446744073709551615 count=0x1 | cat; garnel dd if=head skip=36028797018963968 bs=1K
  1
  2
  3
  1234567891 (no-eol)
  $ garnel dd if=in bs=2 ibs=4c skip=1w obs=1b count=1 | od -c
  0000000   9   1   0   1
  0000004

Equal blocks, and several output blocks to an input block, go out in one write; others are put together anew.
Packets show each write, dashes and dots what was read and written:

  $ head -c 1500 /dev/zero >z; stat -c %s in
  2894
  $ for blocks in bs=512 'ibs=1024 obs=512' 'ibs=1000 obs=300' 'ibs=300 obs=1000' 'ibs=70 obs=1500'; do
  >   for count in 9999 2; do echo $(packets garnel dd if=z $blocks count=$count status=dnd 2>&1); done
  > done
  -.-.-. 512 512 476
  -.-. 512 512
  -..-.. 1024 476
  -..-.. 1024 476
  -...-.. 300 300 300 300 300
  -...-.. 300 300 300 300 300
  ----.-. 1000 500
  --. 600
  ----------------------. 1500
  --. 140
  $ garnel dd bs=4 ibs=8 status=dots if=head of=/dev/null; garnel dd bs=5 status=dashes <head >d && cmp head d
  ....
  --

A block is filled from a pipe that delivers in pieces, and no more is read than asked for:

  $ (for i in 1 2 3; do printf $i$i; sleep 0.05; done) | garnel dd bs=4 status=dnd; echo
  -1122.-33.
  
  $ (garnel dd ibs=3 obs=8 count=2 status=none; echo; cat) <head; echo
  123456
  7891

An error ends the copy with a message and status 0; one at the start of a block ends it silently:

  $ streams garnel dd if=in of=/dev/full status=dots; streams garnel dd if=in of=/dev/full ibs=5 obs=7
  2> 
  2> dd: No space left on device
  2> dd: No space left on device
  $ streams garnel dd if=. status=dnd; streams garnel dd if=. ibs=3
  2> 
