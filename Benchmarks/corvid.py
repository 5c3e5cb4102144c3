#!/usr/bin/env python3
"""Measures corvid against recast and cp, and prints one table.

    corvid.py --corvid PROGRAM --recast PROGRAM --make-mesh PROGRAM [--runs N] [--small-files N] [--folder-mb N]
              [--folder FOLDER] [PART...]

The parts are start, large, small and mixed; all of them where none is named.

Makes its own files in a temporary folder, in memory where /dev/shm is there. CPU times are user plus system; every
ratio is the median over pairs of runs made in turn.
"""
import argparse
import os
import random
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time


def usage_of(commands, folder):
    """(CPU seconds, wall seconds) of the commands, one process after the other."""
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    for command in commands:
        process = os.posix_spawn(command[0], command, os.environ, file_actions=[
            (os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0), (os.POSIX_SPAWN_OPEN, 2, os.devnull, os.O_WRONLY, 0)])
        if os.waitstatus_to_exitcode(os.waitpid(process, 0)[1]) not in (0, 1):
            sys.exit("failed: " + " ".join(command))
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, time.monotonic() - start)


class Bench:
    def __init__(self, options, folder):
        self.options, self.folder = options, folder

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def mesh(self, name, columns, rows, form="txt"):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        subprocess.run([self.options.make_mesh, self.path(name), form, str(columns), str(rows), "own"], check=True)
        return os.path.getsize(self.path(name))

    def corvid(self, *arguments):
        return [[self.options.corvid, *arguments]]

    def recast(self, source, destination, form):
        return [[self.options.recast, "mesh", self.path(source), self.path(destination), form]]

    def convert(self, source, destination, form, *more):
        return self.corvid("convert", "--to", form, "-o", self.path(destination), "-j", "1", self.path(source), *more)

    def measure(self, commands, which):
        shutil.rmtree(self.path("out"), ignore_errors=True)
        for name in os.listdir(self.folder):
            if name.startswith("out."):
                os.unlink(self.path(name))
        time.sleep(0.05)  # what was deleted is freed a moment later, by a processor that should be idle
        return usage_of(commands, self.folder)[which]

    def row(self, what, ours, theirs, limit, which=0, runs=None):
        ratio = statistics.median(self.measure(ours, which) / self.measure(theirs, which)
                                  for _ in range(runs or self.options.runs))
        print("| %-70s | %8.2f | %8s |" % (what, ratio, limit), flush=True)

    def large(self):
        size = self.mesh("large.mesh", 360, 250)
        usage_of(self.recast("large.mesh", "binary.mesh", "bin"), self.folder)
        name = "%d MB mesh: " % (size // 1000000)
        to_binary = self.recast("large.mesh", "out.mesh", "bin")
        to_text = self.recast("binary.mesh", "out.mesh", "txt")
        self.row(name + "text to binary, CPU against recast", self.convert("large.mesh", "out.mesh", "bin"), to_binary, 1.15)
        self.row(name + "binary to text, six decimals, CPU against recast",
                 self.convert("binary.mesh", "out.mesh", "txt", "--floats", "six"), to_text, 1.15)
        self.row(name + "binary to text, exact, CPU against recast", self.convert("binary.mesh", "out.mesh", "txt"), to_text,
                 1.5)
        usage_of(self.convert("binary.mesh", "exact.mesh", "txt"), self.folder)
        self.row(name + "exact text to binary, CPU against recast", self.convert("exact.mesh", "out.mesh", "bin"), to_binary,
                 1.5)
        self.row(name + "check, CPU against recast", self.corvid("check", self.path("large.mesh")), to_binary, 1.0)

    def small(self):
        count = self.options.small_files
        self.mesh("small/f.mesh", 4, 2)
        for i in range(count):
            shutil.copy(self.path("small/f.mesh"), self.path("small", "f%05d.mesh" % i))
        os.makedirs(self.path("single"))
        one_each = [[self.options.recast, "mesh", self.path("small", "f%05d.mesh" % i), self.path("single", "%d" % i)]
                    for i in range(count)]
        self.row("%d small files, one run, CPU against as many runs of recast" % count,
                 self.convert("small", "out", "bin"), one_each, 0.33, runs=3)
        self.row("... wall time of -j 1 against -j 2", self.convert("small", "out", "bin"),
                 self.corvid("convert", "--to", "bin", "-o", self.path("out"), "-j", "2", self.path("small")), ">= 1.7", which=1)

    def mixed(self):
        """Sizes over four decades, together as much as was asked for."""
        dice = random.Random(7)
        left, i = self.options.folder_mb * 1000000, 0
        while left > 0:
            side = int(10 ** dice.uniform(0.3, 2.4))
            left -= self.mesh("mixed/%d/m%05d.mesh" % (i % 10, i), side, max(side * 2 // 3, 1))
            i += 1
        both = self.corvid("convert", "--to", "bin", "-o", self.path("out"), "-j", "2", self.path("mixed"))
        name = "%d files, %d MB: " % (i, self.options.folder_mb)
        self.row(name + "wall time against cp -r", both, [["/bin/cp", "-r", self.path("mixed"), self.path("out")]], 1.5, which=1)
        self.row(name + "wall time of -j 1 against -j 2", self.convert("mixed", "out", "bin"), both, ">= 1.7", which=1)

    def start(self):
        runs = 200
        corvid = usage_of(self.corvid("--version") * runs, self.folder)[0]
        nothing = usage_of([["/bin/true"]] * runs, self.folder)[0]
        print("| %-70s | %8.2f | %8s |" % ("start, milliseconds of CPU above /bin/true", (corvid - nothing) / runs * 1e3, 3))


def main():
    parser = argparse.ArgumentParser()
    for program in ("corvid", "recast", "make-mesh"):
        parser.add_argument("--" + program, required=True, type=os.path.abspath)
    parser.add_argument("--runs", type=int, default=7)
    parser.add_argument("--small-files", type=int, default=5000)
    parser.add_argument("--folder-mb", type=int, default=300)
    parser.add_argument("--folder", default="/dev/shm" if os.path.isdir("/dev/shm") else None)
    parser.add_argument("parts", nargs="*", metavar="PART", default=["start", "large", "small", "mixed"])
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="corvid-", dir=options.folder) as folder:
        bench = Bench(options, folder)
        print("| %-70s | %8s | %8s |\n|%s|%s|%s|" % ("what", "measured", "limit", "-" * 72, "-" * 10, "-" * 10))
        for part in options.parts:
            getattr(bench, part)()


if __name__ == "__main__":
    main()
