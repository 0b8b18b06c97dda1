#!/usr/bin/python3
"""Serves H.264 streams over RTSP until it is ended: /clock, a camera whose pictures tell when they were taken, and
/large/0 to /large/15 and /small/0 to /small/63, which loop over prepared clips. Each takes any number of clients.

serve.py PORT WIDTH HEIGHT LARGE.mp4 SMALL.mp4

A picture of /clock begins with a row of 40 blocks of 16 pixels: two black, two white, and 36 bits of its time, in
milliseconds since 1970, the highest first."""
import sys
import time

import gi
import numpy

gi.require_version("Gst", "1.0")
gi.require_version("GstRtspServer", "1.0")
from gi.repository import GLib, Gst, GstRtspServer  # noqa: E402

BLOCK = 16
BITS = 36


def draw_time(picture, ms):
    blocks = [0, 0, 1, 1] + [ms >> bit & 1 for bit in range(BITS - 1, -1, -1)]
    for place, block in enumerate(blocks):
        picture[0:BLOCK, place * BLOCK : (place + 1) * BLOCK] = 235 if block else 16


class Clock(GstRtspServer.RTSPMediaFactory):
    """Draws a picture whenever the encoder wants one, 25 a second."""

    def __init__(self, width, height):
        super().__init__()
        self.size = (height * 3 // 2, width)
        self.count = 0
        noise = numpy.random.default_rng(1).integers(60, 200, (height // 8, width // 8), numpy.uint8)
        self.scene = numpy.kron(noise, numpy.ones((8, 8), numpy.uint8))
        caps = f"video/x-raw,format=I420,width={width},height={height},framerate=25/1"
        self.set_launch(
            f"( appsrc name=source is-live=true do-timestamp=true format=time caps={caps} ! queue max-size-buffers=1 "
            "! x264enc tune=zerolatency speed-preset=ultrafast bitrate=4000 key-int-max=50 threads=1 "
            "! h264parse ! rtph264pay name=pay0 pt=96 config-interval=-1 )"
        )
        self.set_shared(True)
        self.connect("media-configure", self.configure)

    def configure(self, _factory, media):
        source = media.get_element().get_child_by_name("source")
        timer = GLib.timeout_add(40, self.push, source)
        media.connect("unprepared", lambda _media: GLib.source_remove(timer))

    def push(self, source):
        self.count += 1
        picture = numpy.full(self.size, 128, numpy.uint8)
        picture[: len(self.scene)] = numpy.roll(self.scene, self.count * 3, 1)
        draw_time(picture, int(time.time() * 1000) % (1 << BITS))
        source.emit("push-buffer", Gst.Buffer.new_wrapped(picture.tobytes()))
        return True


def clip(path):
    factory = GstRtspServer.RTSPMediaFactory()
    factory.set_launch(
        f"( filesrc location={path} ! qtdemux ! h264parse ! rtph264pay name=pay0 pt=96 config-interval=-1 )"
    )
    factory.set_shared(True)
    return factory


def main():
    port, width, height, large, small = sys.argv[1:]
    Gst.init(None)
    server = GstRtspServer.RTSPServer()
    server.set_service(port)
    mounts = server.get_mount_points()
    mounts.add_factory("/clock", Clock(int(width), int(height)))
    for name, path, count in (("large", large, 16), ("small", small, 64)):
        for i in range(count):
            mounts.add_factory(f"/{name}/{i}", clip(path))
    server.attach(None)
    print("ready", flush=True)
    GLib.MainLoop().run()


main()
