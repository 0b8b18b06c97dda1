"""Cameras of a test: each sends the same clip over RTSP, a picture at its time by the clock, to whoever asks; and ways
to them that can be slow."""
import asyncio
import base64
import hashlib
import re
import socket
import struct
import subprocess
import threading
import time

RATE = 10
KEY_EVERY = 10
MOST_WAITING = 256 << 10
PAYLOAD = 1400


def free_ports(count):
    """Of this machine alone; another run of the same test has others."""
    taken = [socket.socket() for _ in range(count)]
    for one in taken:
        one.bind(("127.0.0.1", 0))
    ports = [one.getsockname()[1] for one in taken]
    for one in taken:
        one.close()
    return ports


class Clip:
    """H.264, one unit a picture, no two of them alike."""

    def __init__(self, path, seconds):
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=s=128x96:r={RATE}:d={seconds},noise="
                        "alls=12:allf=t", "-c:v", "libx264", "-preset", "ultrafast", "-threads", "1", "-bf", "0", "-g",
                        str(KEY_EVERY), "-x264-params", "scenecut=0:slices=1", "-f", "h264", path], check=True)
        with open(path, "rb") as file:
            units = [unit.rstrip(b"\0") for unit in re.split(b"\0\0\1", file.read())[1:]]
        self.pictures = [unit for unit in units if unit[0] & 31 in (1, 5)]
        self.sets = [next(unit for unit in units if unit[0] & 31 == kind) for kind in (7, 8)]
        # As a recording has it.
        self.number = {hashlib.md5(struct.pack(">I", len(unit)) + unit).hexdigest(): number
                       for number, unit in enumerate(self.pictures)}
        assert len(self.number) == len(self.pictures)

    def numbers_in(self, path):
        """Of the pictures in a recording; none for what is no picture of this."""
        done = subprocess.run(["ffprobe", "-v", "quiet", "-show_entries", "packet=data_hash", "-show_data_hash", "md5",
                               "-of", "csv=p=0", path], capture_output=True, text=True, check=False)
        return [self.number.get(line.split(":")[1]) for line in done.stdout.splitlines()]


def runs(numbers):
    """Numbers that follow each other, as first and last ones."""
    found = []
    for number in sorted(numbers):
        if found and number == found[-1][1] + 1:
            found[-1][1] = number
        else:
            found.append([number, number])
    return found


def packets(unit, number, sequence):
    """RTP, whole or in pieces."""
    pieces = [unit] if len(unit) <= PAYLOAD else [unit[i:i + PAYLOAD] for i in range(1, len(unit), PAYLOAD)]
    for place, piece in enumerate(pieces):
        is_last = place == len(pieces) - 1
        if len(pieces) > 1:
            ends = (0x80 if place == 0 else 0) | (0x40 if is_last else 0)
            piece = bytes([unit[0] & 0xe0 | 28, ends | unit[0] & 31]) + piece
        header = struct.pack(">BBHII", 0x80, 96 | (0x80 if is_last else 0), (sequence + place) & 0xffff,
                             (number * 90000 // RATE) & 0xffffffff, 7)
        yield b"$\0" + struct.pack(">H", len(header) + len(piece)) + header + piece


class Cameras:
    """Runs in a thread of its own."""

    def __init__(self, clip, port):
        self.clip, self.port = clip, port
        self.start = time.time()
        self.sent = {}  # when pictures that were late were sent
        self.viewers = {}  # writers and the number of their next packet
        self.ways = {}
        self.slow = set()  # addresses from which the ways are slow
        self.deaf = set()  # and those that hear nothing of a camera
        self.loop = asyncio.new_event_loop()
        self.loop.run_until_complete(asyncio.start_server(self.answer, "0.0.0.0", port))
        self.loop.create_task(self.play())
        threading.Thread(target=self.loop.run_forever, daemon=True).start()

    def number_at(self, moment):
        return int((moment - self.start) * RATE)

    def time_of(self, number):
        """When it was sent, which on a machine that stands still for a while is later than it should."""
        return self.sent.get(number, self.start + number / RATE)

    async def play(self):
        for number, unit in enumerate(self.clip.pictures):
            await asyncio.sleep(max(0, self.time_of(number) - time.time()))
            if time.time() - self.time_of(number) > 1 / RATE:
                self.sent[number] = time.time()
            for writer, sequence in list(self.viewers.items()):
                # A camera waits for nobody.
                if writer.transport.get_write_buffer_size() > MOST_WAITING:
                    writer.transport.abort()
                    continue
                sent = list(packets(unit, number, sequence))
                writer.write(b"".join(sent))
                self.viewers[writer] = sequence + len(sent)

    async def answer(self, reader, writer):
        try:
            while True:
                request = (await reader.readuntil(b"\r\n\r\n"))
                # Reports of the receiver come in between.
                while request[:1] == b"$":
                    request = request[4 + struct.unpack(">H", request[2:4])[0]:]
                self.reply(writer, request.decode("latin1"))
        except (OSError, asyncio.IncompleteReadError, asyncio.LimitOverrunError):
            pass
        self.viewers.pop(writer, None)
        writer.transport.abort()

    def reply(self, writer, request):
        method, url = request.split()[:2]
        number = re.search(r"(?i)cseq: *(\d+)", request).group(1)
        head, body = "", ""
        if method == "OPTIONS":
            head = "Public: DESCRIBE, SETUP, PLAY, GET_PARAMETER, TEARDOWN\r\n"
        if method == "DESCRIBE":
            sets = ",".join(base64.b64encode(one).decode() for one in self.clip.sets)
            body = ("v=0\r\no=- 0 0 IN IP4 0.0.0.0\r\ns=camera\r\nt=0 0\r\nm=video 0 RTP/AVP 96\r\n"
                    f"a=rtpmap:96 H264/90000\r\na=fmtp:96 packetization-mode=1;sprop-parameter-sets={sets}\r\n"
                    "a=control:track\r\n")
            head = f"Content-Base: {url}/\r\nContent-Type: application/sdp\r\nContent-Length: {len(body)}\r\n"
        if method == "SETUP":
            head = "Transport: RTP/AVP/TCP;unicast;interleaved=0-1\r\n"
        writer.write(f"RTSP/1.0 200 OK\r\nCSeq: {number}\r\nSession: 1\r\n{head}\r\n{body}".encode())
        if method == "PLAY":
            self.viewers[writer] = 0

    def add_way(self, port, target):
        """A way that leads to a port; it can be slow in both directions, for some."""
        async def open_way(reader, writer):
            try:
                there = await asyncio.open_connection("127.0.0.1", target)
            except OSError:
                writer.transport.abort()
                return
            who = writer.get_extra_info("peername")[0]
            await asyncio.gather(self.pass_on(who, reader, there[1], False),
                                 self.pass_on(who, there[0], writer, target == self.port))
        listening = asyncio.start_server(open_way, "0.0.0.0", port)
        self.ways[port] = asyncio.run_coroutine_threadsafe(listening, self.loop).result()

    def close_way(self, port):
        """Nobody new gets in."""
        self.loop.call_soon_threadsafe(self.ways.pop(port).close)

    async def pass_on(self, who, reader, writer, is_picture):
        try:
            while data := await reader.read(16 << 10):
                if who in self.slow:
                    await asyncio.sleep(0.15)
                if is_picture and who in self.deaf:
                    continue
                writer.write(data)
                await writer.drain()
        except OSError:
            pass
        writer.transport.abort()
