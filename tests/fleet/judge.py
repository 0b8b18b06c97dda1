"""Holds the archives and the index of a fleet against what the cameras sent."""
import collections
import glob
import os

from cameras import RATE, runs

LONGEST_GAP = 15 * RATE
LONGEST_TWICE = 2  # seconds
MOST_OFF = 2.5  # seconds from when a picture was sent to when its recording says


def camera_of(path):
    with open(os.path.dirname(os.path.dirname(path)) + "/camera.txt", encoding="utf8") as name:
        return int(name.read().split()[1])


class Judge:
    def __init__(self, work, cameras, check):
        self.work, self.cameras, self.check = work, cameras, check
        self.events = []  # what happened when
        self.recorded = collections.defaultdict(dict)  # pictures of each file, by cameras
        self.longest, self.doubled = {}, {}  # by events

    def files(self, name, ending=".mkv*"):
        return glob.glob(f"{self.work}/{name}/*/*/*{ending}")

    def collect(self, name, ending=".mkv*"):
        """Notes which pictures an archive has."""
        for path in self.files(name, ending):
            whole = path.removesuffix(".part")
            # A part may become whole in between.
            found = self.cameras.clip.numbers_in(path) or self.cameras.clip.numbers_in(whole)
            if None in found:
                self.check(False, f"{path} holds what was never sent")
            self.recorded[camera_of(path)][whole] = {one for one in found if one is not None}

    def check_index(self, name, sql):
        """After collect()."""
        rows = sql("SELECT path, start_ms FROM segment JOIN recorder ON recorder.id = segment.recorder WHERE "
                   f"recorder.name = '{name}'")
        known = {f"{self.work}/{name}/{path}": int(start) / 1000 for path, start in rows or []}
        files = set(self.files(name))
        self.check(set(known) == files, f"the index holds the {len(files)} recordings of {name}, "
                                        f"{len(known.keys() - files)} too many, {len(files - known.keys())} missing")
        pictures = {path: numbers for one in self.recorded.values() for path, numbers in one.items() if numbers}
        off = max((abs(self.cameras.time_of(min(pictures[path])) - start) for path, start in known.items()
                   if path in pictures), default=0)
        self.check(off <= MOST_OFF, f"the recordings of {name} begin when they say, but for {off:.1f} s")

    def last_event(self, number):
        moment = self.cameras.time_of(number) + 1
        return [what for at, what in self.events if at <= moment][-1]

    def shows(self, camera, first, last, sql):
        """How much of a stretch the index says is recorded, seconds."""
        begin, end = (int(self.cameras.time_of(number) * 1000) for number in (first, last + 1))
        rows = sql(f"SELECT coalesce(sum(least(end_ms, {end}) - greatest(start_ms, {begin})), 0) FROM segment WHERE "
                   f"camera = 'Camera {camera}' AND start_ms < {end} AND end_ms > {begin}")
        return float(rows[0][0]) / 1000

    def check_camera(self, camera, first, last, sql):
        count = collections.Counter(number for numbers in self.recorded[camera].values() for number in numbers)
        gaps = runs(set(range(first, last + 1)) - set(count))
        for begin, end in gaps:
            what = self.last_event(begin)
            length = end - begin + 1
            self.longest[what] = max(self.longest.get(what, 0), length)
            shown = self.shows(camera, begin, end, sql)
            if shown > 1 + length / RATE / 10:
                self.check(False, f"camera {camera}: the index shows {shown:.1f} s of a gap of {length / RATE:.1f} s "
                                  f"at {begin / RATE:.0f} s, after: {what}")
        for begin, end in runs(number for number, times in count.items() if times > 1):
            what = self.last_event(begin)
            lasted = self.cameras.time_of(end) - self.cameras.time_of(begin) + 1 / RATE
            self.doubled[what] = max(self.doubled.get(what, 0), lasted)
        return sum(end - begin + 1 for begin, end in gaps), len(count)

    def check_pictures(self, count, first, last, sql):
        lost, found = map(sum, zip(*(self.check_camera(camera, first, last, sql) for camera in range(count))))
        late = max((at - self.cameras.start - number / RATE for number, at in self.cameras.sent.items()), default=0)
        print(f"     pictures were sent up to {late:.1f} s late")
        print(f"     of {found + lost} pictures {lost} are in gaps", flush=True)
        for what, length in self.longest.items():
            self.check(length <= LONGEST_GAP, f"the longest gap is {length / RATE:.1f} s, after: {what}")
        for what, length in self.doubled.items():
            self.check(length <= LONGEST_TWICE, f"at most {length:.1f} s are recorded twice, after: {what}")
