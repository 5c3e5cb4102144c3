#!/usr/bin/env python3
"""Measures `corvid diff` and `check --references` and prints one table.

    comparisons.py --corvid PROGRAM --make-mesh PROGRAM [--runs N]

Comparing two meshes of 90,000 vertices is held against `check` of both, one after the other, by CPU and by the clock (a
comparison works on both files at once). Medians of runs made in turn.
"""
import argparse
import os
import resource
import shutil
import statistics
import struct
import subprocess
import tempfile
import time


def times_of(command, statuses):
    """(CPU seconds, wall seconds)"""
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    status = subprocess.call(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    if status not in statuses:
        raise SystemExit("status %d: %s" % (status, " ".join(command)))
    after, end = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, end - start


def compare_meshes(options, folder):
    for encoding in ("bin", "txt"):
        first, second = (os.path.join(folder, "%s-%s.mesh" % (name, encoding)) for name in ("first", "second"))
        subprocess.check_call([options.make_mesh, first, encoding, "300", "300"])
        subprocess.check_call([options.make_mesh, second, encoding, "300", "300", "equal"])
        pairs = [(times_of([options.corvid, "diff", first, second], (1,)),
                  times_of([options.corvid, "check", "-q", "-j", "1", first, second], (0, 1)))
                 for _ in range(options.runs)]
        cpu, wall = (statistics.median(diff[which] / check[which] for diff, check in pairs) for which in (0, 1))
        print("90,000 vertices, %s: diff takes %.2f times the CPU and %.2f times the time of loading both (at most 3)" % (
            encoding, cpu, wall))


def mesh_of_triangles(path, first):
    """No vertices, and triangles that no other mesh has: binary, spelled out."""
    count = 100000 + first % 2
    data = b"BIN\n" + struct.pack("<iB7f", 0, 0, *[1.0] * 7) + struct.pack("<iii", 0, 0, 0) + struct.pack("<i", count)
    data += b"".join(struct.pack("<iiii", first + i, i, 2 * i, 0) for i in range(count)) + struct.pack("<6i", *[0] * 6)
    with open(path, "wb") as file:
        file.write(data)


def compare_triangles(options, folder):
    paths = [os.path.join(folder, name + ".mesh") for name in ("one", "two")]
    mesh_of_triangles(paths[0], 0)
    mesh_of_triangles(paths[1], 1000001)
    for extra in ([], ["--full"]):
        print("100,000 different triangles %s: %.2f s" % (
            " ".join(extra), times_of([options.corvid, "diff"] + extra + paths, (1,))[1]))


def look_up(options, folder):
    assets = os.path.join(folder, "assets")
    for i in range(100):
        os.makedirs(os.path.join(assets, str(i)))
        for j in range(1000):
            open(os.path.join(assets, str(i), "Texture%d-%d.dds" % (i, j)), "w").close()
    path = os.path.join(folder, "a.entity")
    with open(path, "w") as file:
        file.write('TXT\nentityType "Fleet"\ndefaultCohesionRange "Near"\n')
    times = []
    for _ in range(options.runs):
        begin = time.monotonic()
        subprocess.check_call([options.corvid, "check", "-q", "--references", assets, path])
        times.append(time.monotonic() - begin)
    print("an index of 100,000 files: %.2f s (at most 1)" % statistics.median(times))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--corvid", required=True)
    parser.add_argument("--make-mesh", required=True)
    parser.add_argument("--runs", type=int, default=5)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="comparisons-") as folder:
        compare_meshes(options, folder)
        compare_triangles(options, folder)
        look_up(options, folder)


if __name__ == "__main__":
    main()
