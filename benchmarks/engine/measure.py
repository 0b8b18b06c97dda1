#!/usr/bin/python3
"""Measures the client beside other programs on the same streams, one after the other in one run, and prints a table.

measure.py CLIENT [--seconds S] [--rows NAME,NAME...] [--csv FILE]

It serves the streams itself and makes the clips for them, in a directory of its own. Processor time is that of the
programs alone, without the server and the screen; delays are read from the screen's memory."""
import argparse
import csv
import glob
import mmap
import os
import pathlib
import signal
import statistics
import struct
import subprocess
import tempfile
import time

HERE = pathlib.Path(__file__).parent
PORT = 8560
BLOCK, BITS, WIDTH = 16, 36, 1920
WARM_UP = 6
PAUSE = 0.5


class Process:
    """One of the programs; ends with its block."""

    def __init__(self, *command, **options):
        options.setdefault("stdout", subprocess.DEVNULL)
        self.process = subprocess.Popen(command, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL, **options)

    def __enter__(self):
        return self

    def __exit__(self, *_error):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait()
        # A server that is about to end a stream for lack of clients refuses new ones.
        time.sleep(PAUSE)

    def seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def megabytes(self):
        pages = int(pathlib.Path(f"/proc/{self.process.pid}/statm").read_text().split()[1])
        return pages * os.sysconf("SC_PAGE_SIZE") / 1e6


class Screen(Process):
    """A screen whose memory can be read."""

    def __init__(self, directory):
        read, write = os.pipe()
        super().__init__("Xvfb", "-displayfd", str(write), "-screen", "0", "1400x900x24", "-fbdir", directory,
                         pass_fds=[write])
        os.close(write)
        self.display = ":" + os.read(read, 16).decode().strip()
        with open(directory + "/Xvfb_screen0", "rb") as file:
            self.memory = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        header = struct.unpack(">25I", self.memory[:100])
        self.start, self.stride = header[0] + header[19] * 12, header[12]

    def is_white(self, x, y):
        return self.memory[self.start + y * self.stride + x * 4 + 1] > 128

    def age(self, left, top, width):
        """How old the picture is whose left upper corner lies near that, milliseconds; None without one."""
        now = int(time.time() * 1000) % (1 << BITS)
        for shift in range(5):
            block = (width - 2 * shift) * BLOCK / WIDTH
            bits = [self.is_white(round(left + shift + (i + 0.5) * block), round(top + shift + block / 2))
                    for i in range(BITS + 4)]
            value = sum(bit << (BITS - 1 - i) for i, bit in enumerate(bits[4:]))
            if bits[:4] == [0, 0, 1, 1] and -200 < now - value < 600000:
                return now - value
        return None


def url(name):
    return f"rtsp://127.0.0.1:{PORT}/{name}"


def make_clip(path, size, rate):
    subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", f"testsrc2=s={size}:r=25:d=10", "-c:v", "libx264",
                    "-preset", "veryfast", "-bf", "0", "-g", "50", "-b:v", rate, "-x264-params", "sliced-threads=0",
                    path + ".mp4"], check=True)
    subprocess.run(["ffmpeg", "-v", "error", "-stream_loop", "180", "-i", path + ".mp4", "-c", "copy", path],
                   check=True)


def pictures(path):
    """A name for each of a file's packets, which another copy of the same stream has too."""
    lines = subprocess.run(["ffprobe", "-v", "error", "-select_streams", "v", "-show_packets", "-show_data_hash", "md5",
                            "-show_entries", "packet=data_hash", "-of", "csv=p=0", path], capture_output=True, text=True,
                           check=True).stdout
    return [line.strip(",") for line in lines.split()]


class Bench:
    def __init__(self, options, directory):
        self.client_path, self.span = options.client, options.seconds
        self.directory = directory
        self.rows = []

    def environment(self, screen):
        home = tempfile.mkdtemp(dir=self.directory)
        os.makedirs(home + "/run", 0o700)
        return dict(os.environ, HOME=home, XDG_CONFIG_HOME=home, XDG_DATA_HOME=home, XDG_RUNTIME_DIR=home + "/run",
                    DISPLAY=screen.display if screen else "", QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR="1")

    def client(self, screen, cameras, layout):
        environment = self.environment(screen)
        settings = pathlib.Path(environment["HOME"]) / "PaneDeck" / "panedeck-client.conf"
        settings.parent.mkdir()
        names = [f"Cam{i:02}" for i in range(len(cameras))]
        settings.write_text(f"[view]\nlayout={layout}\ncameras={', '.join(names)}\n")
        sources = [word for name, stream in zip(names, cameras) for word in ("--source", f"{name}={url(stream)}")]
        self.home = environment["HOME"]
        return Process(self.client_path, *sources, "--archive", self.home + "/archive", "--places",
                       self.home + "/places", "--log", self.home + "/log", env=environment)

    def busy(self, processes):
        """Shares of a core that they take together."""
        time.sleep(WARM_UP)
        before = sum(process.seconds() for process in processes)
        time.sleep(self.span)
        return (sum(process.seconds() for process in processes) - before) / self.span

    def all(self, commands, environment=None):
        processes = [Process(*command, env=environment) for command in commands]
        try:
            spent = self.busy(processes)
            ended = [process for process in processes if process.process.poll() is not None]
            if ended:
                raise RuntimeError(f"{len(ended)} of {len(processes)} have ended: {ended[0].process.args}")
            return spent
        finally:
            for process in processes:
                process.process.terminate()
            for process in processes:
                process.process.wait()
            time.sleep(PAUSE)

    def decoding(self, streams):
        return self.all([["ffmpeg", "-nostdin", "-threads", "1", "-rtsp_transport", "tcp", "-i", url(stream), "-f",
                          "null", "-"] for stream in streams])

    def showing(self, screen, streams, layout):
        with self.client(screen, streams, layout) as client:
            return self.busy([client])

    def add(self, name, value, unit, against="", reach=""):
        self.rows.append([name, f"{value:.3g}", unit, against, reach])
        print("| " + " | ".join(self.rows[-1]) + " |", flush=True)

    def playing(self, screen, streams):
        return self.all([["mpv", "--profile=low-latency", "--no-config", "--vo=x11", "--ao=null", "--geometry=350x190",
                          url(stream)] for stream in streams], self.environment(screen))

    def six(self, screen):
        streams = [f"large/{i}" for i in range(6)]
        shown, decoded = self.showing(screen, streams, 9), self.decoding(streams)
        played = self.playing(screen, streams)
        self.add("6 x 1080p25 in 9 panes", shown, "cores")
        self.add("the same", shown / decoded, "times", "ffmpeg -threads 1, decoding alone", "1.15")
        self.add("the same", shown / played, "times", "mpv --profile=low-latency", "0.8")

    def many(self, screen):
        streams = [f"small/{i}" for i in range(64)]
        shown, decoded = self.showing(screen, streams, 64), self.decoding(streams)
        self.add("64 x 360p25 in 64 panes", shown / decoded, "times", "ffmpeg -threads 1, decoding alone", "1.25")

    def recorded(self, screen):
        streams = [f"small/{i}" for i in range(64)]
        few = self.showing(screen, streams[:9], 9)
        self.add("64 recorded, 9 shown", self.showing(screen, streams, 9) / few, "times", "9 shown", "1.3")

    def memory(self, screen):
        with self.client(screen, ["large/0"], 9) as client:
            time.sleep(WARM_UP)
            one = client.megabytes()
        with self.client(screen, [f"large/{i}" for i in range(9)], 9) as client:
            time.sleep(WARM_UP)
            self.add("memory for one more 1080p camera", (client.megabytes() - one) / 8, "MB")

    def until(self, look, seconds=30):
        """What `look` gives at last, and how long that took, milliseconds."""
        began = time.time()
        while time.time() < began + seconds:
            if found := look():
                return found, 1000 * (time.time() - began)
            time.sleep(0.002)
        raise RuntimeError("it never came")

    def clicked(self, screen, pane):
        """How long it takes until a click is answered by a line of the log."""
        log = pathlib.Path(self.home + "/log")
        before = log.stat().st_size
        x, y, width = pane
        subprocess.run(["xdotool", "mousemove", str(x + width // 2), str(y + width // 3)], check=True,
                       env=dict(os.environ, DISPLAY=screen.display))
        time.sleep(PAUSE)
        click = Process("xdotool", "click", "1", env=dict(os.environ, DISPLAY=screen.display))
        _, spent = self.until(lambda: "activeWnd" in log.read_text()[before:])
        click.process.wait()
        return spent

    def answers(self, screen):
        """How quickly the client stands, shows, answers and goes, with more cameras than can be decoded."""
        with self.client(screen, ["clock"] * 16, 16) as client:
            panes, stands = self.until(self.panes)
            age, _ = self.until(lambda: screen.age(*panes[0]))
            time.sleep(WARM_UP)
            clicks = [self.clicked(screen, pane) for pane in self.panes()[1:13]]
            client.process.send_signal(signal.SIGTERM)
            _, closes = self.until(lambda: client.process.poll() is not None)
        self.add("panes stand after the start", stands, "ms", "16 x 1080p25", "400")
        self.add("age of the first picture", age, "ms", "", "300")
        self.add("click answered, median", statistics.median(clicks), "ms", "with the pointer tool's own start")
        self.add("click answered, longest", max(clicks), "ms", f"of {len(clicks)}", "100")
        self.add("closed after being told", closes, "ms", "", "500")

    def panes(self):
        if not os.path.exists(self.home + "/places"):
            return []
        places = {}
        for line in pathlib.Path(self.home + "/places").read_text().splitlines():
            name, x, y, width, _height = line.split("\t")
            places[name] = (int(x), int(y), int(width))
        return [place for name, place in places.items() if name.split("#")[0] == "CVideoWidget"]

    def ages(self, screen, panes):
        """What is read from the screen, many times a second."""
        ages = []
        end = time.time() + self.span
        while time.time() < end:
            ages += [age for age in (screen.age(*pane) for pane in panes()) if age is not None]
            time.sleep(0.02)
        return ages

    def delay(self, screen):
        with self.client(screen, ["clock"], 9):
            time.sleep(WARM_UP)
            own = statistics.median(self.ages(screen, lambda: self.panes()[:1]))
        with Process("mpv", "--profile=low-latency", "--no-config", "--vo=x11", "--ao=null", "--no-border",
                     "--geometry=350x197+0+0", url("clock"), env=self.environment(screen)):
            time.sleep(WARM_UP)
            other = statistics.median(self.ages(screen, lambda: [(0, 0, 350)]))
        self.add("delay of one camera, median", own, "ms", f"mpv --profile=low-latency: {other:.3g} ms", "120")

    def overload(self, screen):
        sent = self.directory + "/sent.mkv"
        with Process("ffmpeg", "-nostdin", "-rtsp_transport", "tcp", "-i", url("clock"), "-c", "copy", sent):
            time.sleep(WARM_UP)
            with self.client(screen, ["clock"] * 16, 16):
                time.sleep(WARM_UP)
                ages = self.ages(screen, self.panes)
        self.add("delay of 16 x 1080p25, longest", max(ages), "ms", f"of {len(ages)} looks", "1000")
        self.add("delay of 16 x 1080p25, median", statistics.median(ages), "ms")
        self.add("packets of them recorded", self.kept(sent), "%", "those sent", "99.9")

    def growth(self, screen):
        """What tools/make_plots draws."""
        for count in (1, 4, 9, 16):
            streams = [f"small/{i}" for i in range(count)]
            self.add(f"cores for 360p25: client, {count}", self.showing(screen, streams, 16), "cores")
            self.add(f"cores for 360p25: mpv, {count}", self.playing(screen, streams), "cores")
            self.add(f"cores for 360p25: decoding alone, {count}", self.decoding(streams), "cores")
        for count in (1, 4, 9, 16):
            with self.client(screen, ["clock"] * count, 16):
                time.sleep(WARM_UP)
                ages = sorted(self.ages(screen, self.panes))
            self.add(f"delay of 1080p25: median, {count}", statistics.median(ages), "ms")
            self.add(f"delay of 1080p25: longest, {count}", ages[-1], "ms")

    def kept(self, sent):
        """The share of the pictures sent, from each file's first to its last, that stand in it, in percent."""
        place = {picture: i for i, picture in enumerate(pictures(sent))}
        found = expected = 0
        for path in glob.glob(self.home + "/archive/**/*.mkv", recursive=True):
            places = [place[picture] for picture in pictures(path) if picture in place]
            found += len(places)
            expected += places[-1] - places[0] + 1
        return 100 * found / expected


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("client")
    parser.add_argument("--seconds", type=int, default=20)
    parser.add_argument("--rows", default="six,many,recorded,memory,delay,overload,answers,growth")
    parser.add_argument("--csv")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        large, small = directory + "/large.mp4", directory + "/small.mp4"
        make_clip(large, "1920x1080", "4M")
        make_clip(small, "640x360", "600k")
        bench = Bench(options, directory)
        with Process("/usr/bin/python3", HERE / "serve.py", str(PORT), "1920", "1080", large, small), Screen(
            directory
        ) as screen:
            time.sleep(2)
            print("| What | Figure | Unit | Against | Reach |\n|---|---|---|---|---|", flush=True)
            for row in options.rows.split(","):
                getattr(bench, row)(screen)
    if options.csv:
        with open(options.csv, "w", newline="") as file:
            csv.writer(file).writerows([["what", "figure", "unit", "against", "reach"], *bench.rows])


main()
