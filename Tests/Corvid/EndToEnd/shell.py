#!/usr/bin/env python3
"""Runs the program as people do: on a terminal, in pipes, on a full disk, killed in the middle.

    shell.py --corvid PROGRAM --examples FOLDER
"""
import argparse
import os
import pty
import random
import re
import resource
import select
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time

FAILED = []


def expect(holds, what, got=""):
    if not holds:
        FAILED.append(what)
        print("FAIL %s: %r" % (what, got))


class Shell:
    def __init__(self, corvid, examples, folder):
        self.corvid, self.examples, self.folder = corvid, examples, folder
        with open(os.path.join(examples, "Particle", "ReactorBlast.particle"), "rb") as file:
            self.effect = file.read()

    def fill(self, name, count):
        os.makedirs(os.path.join(self.folder, name))
        for i in range(count):
            with open(os.path.join(self.folder, name, "f%05d.particle" % i), "wb") as file:
                file.write(self.effect)

    def run(self, *arguments, **more):
        return subprocess.run([self.corvid, *arguments], cwd=self.folder, capture_output=True, timeout=120, **more)

    def on_terminal(self, *arguments, term="xterm"):
        """Standard output and error of a run on a pseudo-terminal."""
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(self.folder)
            os.environ.pop("NO_COLOR", None)
            os.environ["TERM"] = term
            os.execv(self.corvid, [self.corvid, *arguments])
        seen = b""
        while select.select([terminal], [], [], 60)[0]:
            try:
                piece = os.read(terminal, 65536)
            except OSError:
                break
            if not piece:
                break
            seen += piece
        status = os.waitstatus_to_exitcode(os.waitpid(process, 0)[1])
        os.close(terminal)
        return status, seen

    def look(self):
        with open(os.path.join(self.folder, "bad.mesh"), "wb") as file:
            file.write(b"TXT\r\nMeshData\r\n")
        status, seen = self.on_terminal("check", "bad.mesh")
        expect(status == 1 and b"\x1b[1;31merror:" in seen, "a terminal shows colours", seen)
        expect(b"\x1b" not in self.on_terminal("check", "bad.mesh", term="dumb")[1], "a dumb one does not")
        expect(b"\x1b" not in self.run("check", "bad.mesh").stdout, "nor does a pipe")
        status, seen = self.on_terminal("check", "--progress=always", "many", "-j", "1")
        lines = re.findall(rb"(\d+) of (\d+) files, [\d.]+ [KMG]?B/s", seen)
        if lines:  # a fast machine may be done before the first half second
            expect(seen.rfind(b"\r\x1b[K") > seen.rfind(lines[-1][0] + b" of"), "progress is gone at the end", seen[-300:])
        else:
            print("no progress was shown within half a second")
        expect(b" files, 0 with errors" in seen, "the closing line comes", seen[-200:])

    def pipes(self):
        process = subprocess.Popen([self.corvid, "check", "--list", "many"], cwd=self.folder, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE)
        process.stdout.close()
        errors = process.stderr.read()
        expect(process.wait() in (0, 1) and errors == b"", "a closed pipe ends the run quietly", errors)
        if os.path.exists("/dev/full"):
            with open("/dev/full", "wb") as full:
                run = subprocess.run([self.corvid, "check", "--list", "many"], cwd=self.folder, stdout=full,
                                     stderr=subprocess.PIPE, timeout=120)
            expect(run.returncode == 2 and b"No space left" in run.stderr, "full standard output is status 2", run.stderr)
        run = self.run("convert", "--to", "bin", "-o", "-", "-", input=self.effect)
        again = self.run("convert", "--to", "txt", "-o", "-", "-", input=run.stdout)
        expect(run.stdout[:4] == b"BIN\n" and again.stdout == self.effect, "there and back through pipes", again.stderr)
        for arguments in (["check", "-"], ["check", "--files-from", "-"]):
            run = self.run(*arguments, preexec_fn=lambda: os.close(0))
            expect(run.returncode == 2, "closed input cannot be read", (arguments, run.stdout, run.stderr))
        os.mkfifo(os.path.join(self.folder, "pipe.particle"))
        run = self.run("convert", "--to", "bin", "-i", "pipe.particle")
        expect(run.returncode == 2 and b"use -o" in run.stderr, "a pipe is not converted in place", run.stderr)
        for arguments in (["check", "pipe.particle", "many/f00000.particle"], ["check", "-", "many/f00000.particle"],
                          ["diff", "pipe.particle", "-"]):
            process = subprocess.Popen([self.corvid, *arguments], cwd=self.folder, stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            time.sleep(0.3)
            process.send_signal(signal.SIGTERM)
            try:
                expect(process.wait(timeout=30) == -signal.SIGTERM, "a pipe that is silent is no reason to stay", arguments)
            except subprocess.TimeoutExpired:
                process.kill()
                expect(False, "a pipe that is silent is no reason to stay", arguments)
            process.communicate()
        os.remove(os.path.join(self.folder, "pipe.particle"))

    def names_of_one_file(self):
        """Hard links to a large file are rewritten one after the other: nobody reads a half."""
        with open(os.path.join(self.examples, "Mesh", "cube.mesh"), "rb") as file:
            cube = file.read()
        begin, end = cube.index(b"\tVertex\r\n"), cube.index(b"\tNumTriangles")
        mesh = cube[:begin].replace(b"NumVertices 24", b"NumVertices 9600") + cube[begin:end] * 400 + cube[end:]
        for _ in range(10):
            folder = os.path.join(self.folder, "names")
            os.makedirs(folder)
            with open(os.path.join(folder, "a.mesh"), "wb") as file:
                file.write(mesh)
            for name in "bcd":
                os.link(os.path.join(folder, "a.mesh"), os.path.join(folder, name + ".mesh"))
            run = self.run("convert", "-j", "4", "--to", "bin", "-i", "names")
            expect(run.stderr == b"1 converted, 3 unchanged, 0 refused, 0 failed\n", "one file of four names", run.stderr)
            shutil.rmtree(folder)

    def turned_into_pipe(self):
        """What was a file when the folder was searched, and is a pipe by the time it is read, is not waited for."""
        going = os.path.join(self.folder, "turning")
        shutil.copytree(os.path.join(self.folder, "many"), going)
        process = subprocess.Popen([self.corvid, "convert", "--to", "bin", "-o", "turned", "-j", "1", "turning"],
                                   cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        while process.poll() is None and not os.path.exists(os.path.join(self.folder, "turned", "f00100.particle")):
            time.sleep(0.001)
        for name in ("f01400.particle", "f01499.particle"):
            os.remove(os.path.join(going, name))
            os.mkfifo(os.path.join(going, name))
        try:
            errors = process.communicate(timeout=60)[1]
            expect(process.returncode in (0, 2) and (process.returncode == 0 or b"not a file [cannot-read]" in errors),
                   "a pipe in place of a file", errors[-300:])
        except subprocess.TimeoutExpired:
            process.kill()
            expect(False, "a pipe in place of a file is not waited for")

    def kills(self):
        """Each destination is old or whole, and no temporary stays, whenever the run is killed."""
        for signal_number in (signal.SIGKILL, signal.SIGINT, signal.SIGTERM):
            for _ in range(4):
                shutil.rmtree(os.path.join(self.folder, "out"), ignore_errors=True)
                process = subprocess.Popen([self.corvid, "convert", "--to", "bin", "-o", "out", "many"],
                                           cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                time.sleep(random.uniform(0.0, 0.3))
                process.send_signal(signal_number)
                errors = process.communicate(timeout=60)[1]
                sizes = set()
                for root, _folders, names in os.walk(os.path.join(self.folder, "out")):
                    for name in names:
                        sizes.add(os.path.getsize(os.path.join(root, name)))
                        expect(name.endswith(".particle"), "no temporary stays", name)
                expect(len(sizes) <= 1 and 0 not in sizes, "every destination is whole", sizes)
                if process.returncode not in (0, 2) and signal_number != signal.SIGKILL:
                    expect(process.returncode == -signal_number, "the run ends by the signal", process.returncode)
                    expect(not errors or b"interrupted, " in errors, "the closing line tells of it", errors)

    def many(self):
        """A hundred thousand files, by way of a folder and of a list; most are links, which are quick to make."""
        os.makedirs(os.path.join(self.folder, "huge"))
        for i in range(100000):
            path = os.path.join(self.folder, "huge", "f%05d.entity" % i)
            if i % 10000 == 0:  # a file has only so many links
                source = shutil.copy(os.path.join(self.examples, "Entity", "HullFragments.entity"), path)
            else:
                os.link(source, path)
        run = self.run("check", "huge")
        expect(run.returncode == 0 and run.stdout == b"", "a hundred thousand files are checked", run.stdout[:300])
        expect(run.stderr == b"100000 files, 0 with errors, 0 with warnings\n", "and counted", run.stderr)
        names = "".join("huge/f%05d.entity\n" % i for i in reversed(range(100000))).encode()
        run = self.run("check", "--list", "--files-from", "-", "--shard", "7/50", input=names)
        lines = run.stdout.splitlines()
        expect(1700 < len(lines) < 2300 and lines == sorted(lines), "a list of them, sharded, in order", len(lines))
        shutil.rmtree(os.path.join(self.folder, "huge"))

    def vanishing(self):
        """Folders and files that vanish while the run goes on are told of; the others are done."""
        going = os.path.join(self.folder, "going")
        shutil.copytree(os.path.join(self.folder, "many"), going)
        process = subprocess.Popen([self.corvid, "convert", "--to", "bin", "-o", "kept", "-j", "1", "going", "nothing"],
                                   cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        while process.poll() is None and not os.path.exists(os.path.join(self.folder, "kept", "f00100.particle")):
            time.sleep(0.001)
        os.rename(going, os.path.join(self.folder, "elsewhere"))
        errors = process.communicate(timeout=120)[1].decode().splitlines()
        expect(process.returncode == 2, "what is not there is status 2", process.returncode)
        expect("nothing: error: No such file or directory [cannot-read]" in errors, "and is told of", errors[-3:])
        lost = [line for line in errors if line.startswith("going/f")]
        kept = len(os.listdir(os.path.join(self.folder, "kept")))
        expect(len(lost) + kept == 1500 and all("[cannot-read]" in line for line in lost), "each file has one fate",
               (len(lost), kept))
        expect(errors[-1] == "%d converted, 0 unchanged, 0 refused, %d failed" % (kept, len(lost) + 1), "and is counted",
               errors[-1])

    def long_paths(self):
        """Paths of 300 columns and more: progress keeps to its line, diagnostics and results are whole."""
        deep = os.path.join("deep", *["x" * 70] * 5)
        os.makedirs(os.path.join(self.folder, deep))
        with open(os.path.join(self.folder, deep, "bad.mesh"), "wb") as file:
            file.write(b"TXT\r\nMeshData\r\n")
        shutil.copy(os.path.join(self.examples, "Mesh", "cube.mesh"), os.path.join(self.folder, deep, "cube.mesh"))
        status, seen = self.on_terminal("convert", "--to", "bin", "-o", "far", "--progress=always", "deep")
        expect(status == 1 and (deep + "/bad.mesh:3:1:").encode() in seen, "a long path is printed whole", seen[-600:])
        expect(os.path.exists(os.path.join(self.folder, "far", *["x" * 70] * 5, "cube.mesh")), "and converted")

    def forbidden(self):
        """What may not be read or written, as a user who is bound by permissions."""
        folder = os.path.join(self.folder, "forbidden")
        program = shutil.copy(self.corvid, os.path.join(self.folder, "corvid-for-anyone"))
        for name in ("d", "d/shut", "whole", "closed"):
            os.makedirs(os.path.join(folder, name))
        for name in ("d/a.particle", "d/b.particle", "d/shut/c.particle", "whole/c.particle"):
            with open(os.path.join(folder, name), "wb") as file:
                file.write(self.effect)
        os.chmod(self.folder, 0o755)
        os.chmod(os.path.join(folder, "d/b.particle"), 0)
        os.chmod(os.path.join(folder, "d/shut"), 0)
        os.chmod(os.path.join(folder, "closed"), 0o555)
        more = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}

        def lines(*arguments):
            run = subprocess.run([program, *arguments], cwd=folder, capture_output=True, text=True, timeout=120, **more)
            expect(run.returncode == 2, "what is forbidden is status 2", (arguments, run.returncode, run.stderr))
            return (run.stdout + run.stderr).splitlines()

        denied = ": error: Permission denied [cannot-read]"
        told = lines("check", "d")
        expect(told == ["d/b.particle" + denied, "d/shut" + denied, "3 files, 2 with errors, 0 with warnings"],
               "a file and a folder that may not be read", told)
        told = lines("convert", "--to", "bin", "-o", "closed/out", "d")
        expect("d/a.particle: error: closed/out/a.particle: Permission denied [cannot-write]" in told,
               "a folder that may not be made", told)
        told = lines("convert", "--to", "bin", "-o", "closed/out/deep", "d")
        expect("d/a.particle: error: closed/out/deep/a.particle: Permission denied [cannot-write]" in told,
               "nor the one below it", told)
        told = lines("diff", "closed", "d")
        expect("+ a.particle" in told, "what is new is told of", told)
        told = lines("diff", "d/shut", "whole")
        expect(told == ["d/shut" + denied], "no folder is compared unseen", told)
        os.chmod(os.path.join(folder, "d/shut"), 0o755)

    def without_threads(self):
        """A user who may start no further thread: the run goes on with the one that it has."""
        if os.geteuid() != 0:
            print("skipped: limits of another user need root")
            return
        limited = {"user": 65534, "group": 65534, "extra_groups": [],
                   "env": dict(os.environ, ASAN_OPTIONS="detect_leaks=0"),  # the search for leaks is a thread, too
                   "preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_NPROC, (1, 1))}
        program = os.path.join(self.folder, "corvid-for-anyone")
        with open(os.path.join(self.folder, "other.particle"), "wb") as file:
            file.write(self.effect.replace(b"\tNumEmitters", b"\tnone", 1))
        for arguments, status in ((["diff", "-j", "2", "other.particle", "many/f00000.particle"], 1),
                                  (["check", "-j", "2", "many"], 0)):
            run = subprocess.run([program, *arguments], cwd=self.folder, capture_output=True, timeout=120, **limited)
            expect(run.returncode == status, "without further threads", (arguments, run.returncode, run.stderr[-300:]))

    def little_memory(self):
        """However little there is: status 2, and no result is counted that does not stand there."""
        brush = b"".join(struct.pack("<I", len(word)) + word.encode("utf-16-le") for word in ("a", "Simple", "b"))
        with open(os.path.join(self.folder, "large.brushes"), "wb") as file:
            file.write(b"BIN\n\0" + struct.pack("<I", 60000) + (brush + bytes(16)) * 60000)
        for megabytes in (12, 16, 24, 40, 64, 96):
            limit = {"preexec_fn": lambda: resource.setrlimit(resource.RLIMIT_AS, (megabytes << 20, megabytes << 20))}
            if self.run("--version", **limit).returncode != 0:
                continue  # a build with sanitizers needs terabytes
            for arguments in (["convert", "--to", "bin", "-o", "little/", "large.brushes"], ["cat", "large.brushes"],
                              ["cat", "--json", "large.brushes"], ["info", "large.brushes"]):
                run = self.run(*arguments, **limit)
                expect(run.returncode == 0 or (run.returncode == 2 and b"not enough memory" in run.stderr),
                       "little memory is told of", (megabytes, arguments, run.returncode, run.stderr[-300:]))
                is_there = os.path.exists(os.path.join(self.folder, "little", "large.brushes"))
                expect((b"1 failed" in run.stderr) != is_there or arguments[0] != "convert",
                       "what did not fit has failed", (megabytes, run.stderr[-300:]))
            shutil.rmtree(os.path.join(self.folder, "little"), ignore_errors=True)

    def full_disk(self):
        """A file system that fills in the middle of a batch: in a mount namespace of its own, where that may be had."""
        script = ("mount -t tmpfs -o size=256k none small && cd . && \"$0\" convert --to bin -o small many; "
                  "echo $?; find small -type f -name '.*'; find small -type f | wc -l")
        os.makedirs(os.path.join(self.folder, "small"))
        try:
            run = subprocess.run(["unshare", "-m", "sh", "-c", script, self.corvid], cwd=self.folder,
                                 capture_output=True, text=True, timeout=120)
        except FileNotFoundError:
            run = None
        if run is None or "only root" in run.stderr or "permission" in run.stderr.lower() or "unshare" in run.stderr:
            print("skipped: no mount namespace for a small file system here")
            return
        lines = run.stdout.split()
        expect(lines[:1] == ["2"] and len(lines) == 2 and int(lines[-1]) > 0, "a full disk is status 2, nothing half-written",
               run.stdout[-300:])
        expect("No space left on device [cannot-write]" in run.stderr, "and says so", run.stderr[-300:])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--corvid", required=True, type=os.path.abspath)
    parser.add_argument("--examples", required=True, type=os.path.abspath)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="shell-") as folder:
        shell = Shell(options.corvid, options.examples, folder)
        shell.fill("many", 1500)
        for step in (shell.look, shell.pipes, shell.names_of_one_file, shell.turned_into_pipe, shell.kills, shell.many,
                     shell.vanishing, shell.long_paths, shell.forbidden, shell.without_threads, shell.little_memory,
                     shell.full_disk):
            step()
    sys.exit(1 if FAILED else 0)


if __name__ == "__main__":
    main()
