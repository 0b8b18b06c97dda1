"""A PostgreSQL of a test's own, below its directory."""
import glob
import os
import shutil
import subprocess

PROGRAMS = sorted(glob.glob("/usr/lib/postgresql/*/bin"))[-1]
# The server refuses to run as root.
AS_USER = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups", "--"] if os.geteuid() == 0 else []


class Server:
    def __init__(self, directory, listen="", port=5432):
        self.directory, self.listen, self.port = directory, listen, port
        os.mkdir(directory)
        if AS_USER:
            shutil.chown(directory, "nobody", "nogroup")

    def run(self, program, *arguments, check=True):
        subprocess.run([*AS_USER, f"{PROGRAMS}/{program}", "-D", self.directory + "/data", *arguments], check=check,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def make(self):
        self.run("initdb", "-U", "owner", "-A", "trust", "-E", "UTF8", "-N")
        with open(self.directory + "/data/pg_hba.conf", "a", encoding="utf8") as rules:
            rules.write("host all,replication all samenet trust\nhost all,replication all 10.0.0.0/8 trust\n")

    def copy(self, other):
        """This one follows another one from now on."""
        self.run("pg_basebackup", "-h", other.directory, "-p", str(other.port), "-U", "owner", "-R", "-c", "fast")

    def start(self):
        self.run("pg_ctl", "-w", "-l", self.directory + "/log", "-o", f"-F -p {self.port} -c listen_addresses="
                 f"'{self.listen}' -c unix_socket_directories={self.directory}", "start")

    def stop(self, check=True):
        self.run("pg_ctl", "-w", "-m", "immediate", "stop", check=check)

    def promote(self):
        self.run("pg_ctl", "-w", "promote")

    def sql(self, text):
        """The rows; none at all if the server does not answer."""
        done = subprocess.run([PROGRAMS + "/psql", "-XAtq", "-h", self.directory, "-p", str(self.port), "-U", "owner",
                               "-c", text, "postgres"], capture_output=True, text=True, check=False)
        return [line.split("|") for line in done.stdout.splitlines()] if done.returncode == 0 else None
