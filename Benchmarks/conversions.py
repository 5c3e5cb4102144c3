#!/usr/bin/env python3
"""Measures whole conversions against what the machine can do, and prints one table.

    conversions.py --recast PROGRAM --make-mesh PROGRAM [--runs N] [--instructions-only] [--also NAME=PROGRAM ...]

Makes its own meshes in a temporary folder. CPU times are user plus system of the finished process; every ratio is the
median over pairs of runs made in turn, so that a machine that is busy or changes its speed does not tilt it. Other
programs with recast's command line get rows of their own with --also.
"""
import argparse
import itertools
import os
import re
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile

HELLO = 'int main() { return __builtin_printf("hello\\n") < 0; }\n'

# Runs a command and prints its peak memory in KiB. A child of this script would be charged with the script's own.
PEAK = """#include <stdio.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
int main(int count, char** arguments) {
    struct rusage usage;
    if (fork() == 0) { execv(arguments[1], arguments + 1); _exit(127); }
    wait(&count);
    getrusage(RUSAGE_CHILDREN, &usage);
    printf("%ld\\n", usage.ru_maxrss);
    return count;
}
"""
SMALL_FILES = 1000


def cpu_of(command, folder):
    """CPU seconds of one run."""
    process = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit("failed: %s" % " ".join(command))
    return usage.ru_utime + usage.ru_stime


def cpu_of_many(commands, folder):
    """CPU seconds of all the commands, one process each; started by a shell, whose own time does not count."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    for command in commands:
        os.waitpid(os.posix_spawn(command[0], command, os.environ, file_actions=[
            (os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0)]), 0)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def median_ratio(measure_a, measure_b, runs):
    measure_a(), measure_b()
    return statistics.median(a / b for a, b in ((measure_a(), measure_b()) for _ in range(runs)))


def instructions(command, folder):
    out = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null"] + command, cwd=folder,
                         capture_output=True, text=True)
    return int(re.search(r"Collected : (\d+)", out.stderr).group(1))


def other_text(text, kind):
    """The same mesh, legal but written otherwise."""
    number = re.compile(r"-?\d+\.\d{6}")
    if kind == "LF ends":
        return text.replace("\r\n", "\n")
    if kind == "extra blanks":
        return re.sub(r"(?m)^(\t*)(\w+) ", r" \1\2  ", text)
    if kind == "3 decimals":
        return number.sub(lambda m: m.group()[:-3], text)
    if kind == "9 decimals":
        return number.sub(lambda m: m.group() + "000", text)
    return number.sub(lambda m: "%.7e" % float(m.group()), text)


class Bench:
    def __init__(self, options, folder):
        self.recast, self.make_mesh, self.runs = options.recast, options.make_mesh, options.runs
        self.folder = folder
        self.rows = []

    def path(self, name):
        return os.path.join(self.folder, name)

    def mesh(self, name, columns, rows, shape="own", form="txt"):
        subprocess.run([self.make_mesh, name, form, str(columns), str(rows), shape], cwd=self.folder, check=True)
        return os.path.getsize(self.path(name))

    def compile(self, name, source):
        subprocess.run(["cc", "-O2", "-static", "-x", "c", "-", "-o", name], input=source, text=True, cwd=self.folder,
                       check=True)
        return self.path(name)

    def convert(self, source, destination, form):
        return [self.recast, "mesh", source, destination, form]

    def cpu(self, command):
        return lambda: cpu_of(command, self.folder)

    def row(self, what, value, limit):
        self.rows.append((what, value, limit))
        print("| %-66s | %8.2f | %8s |" % (what, value, limit), flush=True)

    def count_instructions(self):
        size = self.mesh("counted.txt", 72, 70)
        both = (("text to binary", "counted.txt", "counted.bin", "bin", 10),
                ("binary to text", "counted.bin", "counted2.txt", "txt", 7.5))
        for what, source, destination, form, limit in both:
            count = instructions(self.convert(source, destination, form), self.folder)
            self.row("%s, instructions per byte of text" % what, count / size, limit)

    def time_large(self):
        self.mesh("large.txt", 360, 250)
        to_binary = self.convert("large.txt", "large.bin", "bin")
        to_text = self.convert("large.bin", "large2.txt", "txt")
        copy = ["cp", "large.txt", "copy.txt"]
        self.row("text to binary, CPU against cp", median_ratio(self.cpu(to_binary), self.cpu(copy), self.runs), 3)
        self.row("binary to text, CPU against cp", median_ratio(self.cpu(to_text), self.cpu(copy), self.runs), 3)
        peak = int(subprocess.check_output([self.compile("peak", PEAK)] + to_binary, cwd=self.folder)) * 1024
        self.row("text to binary, peak memory over binary size", peak / os.path.getsize(self.path("large.bin")), 1.5)
        self.mesh("tenfold.txt", 1200, 750)
        tenfold = self.cpu(self.convert("tenfold.txt", "tenfold.bin", "bin"))
        self.row("a mesh ten times the size, CPU", median_ratio(tenfold, self.cpu(to_binary), max(self.runs // 3, 3)),
                 10.5)
        for shape in ("within", "equal"):
            self.mesh(shape + ".bin", 360, 250, shape, "bin")
            worst = self.cpu(self.convert(shape + ".bin", "out.bin", "bin"))
            own = self.cpu(self.convert("large.bin", "out.bin", "bin"))
            self.row("lists with all vertices %s, CPU against the own radius" % shape,
                     median_ratio(worst, own, self.runs), 1.3)

    def time_other_texts(self):
        with open(self.path("large.txt"), encoding="utf-8-sig", newline="") as file:
            text = file.read()
        canonical = self.cpu(self.convert("large.txt", "large.bin", "bin"))
        for kind in ("LF ends", "extra blanks", "3 decimals", "9 decimals", "exponents"):
            with open(self.path("other.txt"), "w", encoding="utf-8", newline="") as file:
                file.write(other_text(text, kind))
            other = self.cpu(self.convert("other.txt", "other.bin", "bin"))
            self.row("legal but different text (%s), CPU" % kind, median_ratio(other, canonical, self.runs), 2)

    def time_small(self):
        size = self.mesh("small.txt", 4, 2)
        # Always new names: some file systems look long for a new file's number while old ones were given up lately.
        names = ("small%d.bin" % number for number in itertools.count())
        small = lambda: [[self.recast, "mesh", self.path("small.txt"), self.path(next(names))]
                         for _ in range(SMALL_FILES)]
        hello = [[self.compile("hello", HELLO)]] * SMALL_FILES
        self.row("%d small files (%d bytes), CPU against a static hello" % (SMALL_FILES, size),
                 median_ratio(lambda: cpu_of_many(small(), self.folder), lambda: cpu_of_many(hello, self.folder),
                              max(self.runs // 3, 3)), 1.6)

    def time_others(self, others):
        for name, program in others:
            for what, source, destination, form in (("text to binary", "large.txt", "o.bin", "bin"),
                                                    ("binary to text", "large.bin", "o.txt", "txt")):
                other = self.cpu([program, "mesh", source, destination, form])
                ours = self.cpu(self.convert(source, destination, form))
                self.row("%s: %s, CPU against recast" % (name, what), median_ratio(other, ours, self.runs), "-")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--recast", required=True, type=os.path.abspath)
    parser.add_argument("--make-mesh", required=True, type=os.path.abspath)
    parser.add_argument("--runs", type=int, default=15)
    parser.add_argument("--instructions-only", action="store_true")
    parser.add_argument("--small-only", action="store_true")
    parser.add_argument("--check", action="store_true", help="fail when instructions exceed their limit by 10 %%")
    parser.add_argument("--also", action="append", default=[], metavar="NAME=PROGRAM")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="conversions-") as folder:
        bench = Bench(options, folder)
        print("| %-66s | %8s | %8s |\n|%s|%s|%s|" % ("what", "measured", "at most", "-" * 68, "-" * 10, "-" * 10))
        if options.small_only:
            return bench.time_small()
        if shutil.which("valgrind"):
            bench.count_instructions()
        elif options.check:
            sys.exit("valgrind is missing")
        if not options.instructions_only:
            bench.time_large()
            bench.time_other_texts()
            bench.time_small()
            bench.time_others([other.split("=", 1) for other in options.also])
    if options.check and any("instructions" in what and value > 1.1 * limit for what, value, limit in bench.rows):
        sys.exit("instructions per byte rose above the limit by more than 10 %")


if __name__ == "__main__":
    main()
