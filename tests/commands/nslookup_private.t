Needs: unshare -mn mount -t tmpfs none /etc

Host names come from a hosts file of our own, and behind it from a name server that knows one host by two names:

  $ cat > hosts <<'END'
  > # 10.0.0.1 comment
  > 10.0.0.1 one.test one  uno	# single
  > 10.0.0.2 two.test two uno
  > 10.0.0.3 two.test
  > 10.0.0.4 own own
  > fe80::1 one.test six
  > nonsense wrong
  > END
  $ printf '10.0.0.5 Last.Test End' >> hosts
  $ cat > names.py <<'END'
  > import fcntl, socket, struct, subprocess, sys, threading
  > HOST, WWW = b"\4host\4test\0", b"\3www\4test\0"
  > def record(owner, type, data):
  >     return owner + struct.pack(">HHIH", type, 1, 60, len(data)) + data
  > ADDRESSES = [record(HOST, 1, b"\xc0\0\2\1"), record(HOST, 1, b"\xc0\0\2\2")]
  > ANSWERS = {HOST: ADDRESSES, WWW: [record(WWW, 5, HOST)] + ADDRESSES}
  > def serve():
  >     while True:
  >         query, client = server.recvfrom(512)
  >         end = query.index(b"\0", 12) + 1
  >         answers = ANSWERS.get(query[12:end], [])
  >         head = struct.pack(">HHHHH", 0x8180 if answers else 0x8183, 1, len(answers), 0, 0)
  >         server.sendto(query[:2] + head + query[12:end + 4] + b"".join(answers), client)
  > server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
  > fcntl.ioctl(server, 0x8914, struct.pack("16sh22x", b"lo", 1))  # the interface goes up
  > server.bind(("127.0.0.1", 53))
  > threading.Thread(target=serve, daemon=True).start()
  > sys.exit(subprocess.call(sys.argv[1:]))
  > END
  $ echo 'hosts: files dns' > nsswitch.conf; echo 'multi on' > host.conf; echo 'nameserver 127.0.0.1' > resolv.conf
  $ cat > private <<'END'
  > mount -t tmpfs none /etc && cp hosts nsswitch.conf host.conf resolv.conf /etc || exit
  > python3 names.py sh -c 'for name; do streams garnel nslookup "$name" | tr "\n\t" \;\ ; echo; done' - "$@"
  > END

The names of further lines of the hosts file are aliases, too, and may come again; capitals make no difference, nor does a
last line without end:

  $ unshare -mn sh private one uno two.test own TWO end
  Name: one.test;The host has 1 address.; 10.0.0.1;The host has 2 aliases.; one; uno;
  Name: one.test;The host has 2 addresses.; 10.0.0.1; 10.0.0.2;The host has 5 aliases.; one; uno; two; uno; two.test;
  Name: two.test;The host has 2 addresses.; 10.0.0.2; 10.0.0.3;The host has 2 aliases.; two; uno;
  Name: own;The host has 1 address.; 10.0.0.4;The host has 1 alias.; own;
  Name: two.test;The host has 1 address.; 10.0.0.2;The host has 2 aliases.; two; uno;
  Name: Last.Test;The host has 1 address.; 10.0.0.5;The host has 1 alias.; End;

Lines that give no IPv4 address do not count, and what no line has the name server knows:

  $ unshare -mn sh private six wrong comment nothing.test host.test www.test
  2> nslookup: no such host: 'six';
  2> nslookup: no such host: 'wrong';
  2> nslookup: no such host: 'comment';
  2> nslookup: no such host: 'nothing.test';
  Name: host.test;The host has 2 addresses.; 192.0.2.1; 192.0.2.2;The host has 0 aliases.;
  Name: host.test;The host has 2 addresses.; 192.0.2.1; 192.0.2.2;The host has 1 alias.; www.test;
