"""A network for each of several programs, with a way to this machine's own."""
import os
import subprocess

HERE = "10.98.76.1"


def run(*command, check=True):
    subprocess.run(["ip", *command], check=check, stderr=None if check else subprocess.DEVNULL)


class Networks:
    def __init__(self, prefix, names):
        self.prefix, self.names = prefix, names

    def address(self, name):
        return f"10.98.76.{2 + self.names.index(name)}"

    def link(self, name):
        return f"fl{os.getpid() % 10000}-{self.names.index(name)}"

    def network(self, name):
        return f"{self.prefix}-{name}"

    def command(self, name):
        """What runs a program in one."""
        return ["ip", "netns", "exec", self.network(name)]

    def make(self):
        for name in self.names:
            run("netns", "add", self.network(name))
            run("link", "add", self.link(name), "type", "veth", "peer", "name", "out", "netns", self.network(name))
            run("addr", "add", HERE, "peer", self.address(name), "dev", self.link(name))
            self.set_up(name, True)
            for line in (f"addr add {self.address(name)} peer {HERE} dev out", "link set out up", "link set lo up"):
                run("-n", self.network(name), *line.split())

    def set_up(self, name, is_up):
        run("link", "set", self.link(name), "up" if is_up else "down")

    def remove(self):
        for name in self.names:
            run("netns", "del", self.network(name), check=False)
            run("link", "del", self.link(name), check=False)
