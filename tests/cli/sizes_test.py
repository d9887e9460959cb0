#!/usr/bin/env python3
"""Reads files back and measures them: every format that takes a size must have it, in every shape.

Usage: sizes_test.py PROGRAM
"""
import math
import re
import struct
import subprocess
import sys
import tempfile

TOLERANCE = 0.05  # millimetres


def extremes(p):
    """Where a cubic Bezier coordinate lies, ends and turning points."""
    places = [0.0, 1.0]
    a, b, c = -p[0] + 3 * p[1] - 3 * p[2] + p[3], 2 * (p[0] - 2 * p[1] + p[2]), p[1] - p[0]
    if abs(a) > 1e-12:
        root = b * b - 4 * a * c
        places += [(-b + s * math.sqrt(root)) / (2 * a) for s in (1, -1)] if root >= 0 else []
    elif b:
        places.append(-c / b)
    return [(1 - t) ** 3 * p[0] + 3 * (1 - t) ** 2 * t * p[1] + 3 * (1 - t) * t * t * p[2] + t ** 3 * p[3]
            for t in places if 0 <= t <= 1]


def size_of(points):
    return [max(axis) - min(axis) for axis in list(zip(*points))[:2]]


def svg_size(data):
    across, down = [], []
    for path in re.findall(r"<path [^>]*>", data.decode()):
        pen = float((re.findall(r'stroke-width="([^"]*)"', path) or [0])[0]) / 2
        for part in re.findall(r"M[^MZ]*", re.search(r' d="([^"]*)"', path).group(1)):
            values = [float(v) for v in re.findall(r"-?[\d.]+", part)]
            for i in range(0, len(values) - 6, 6):
                across += [x + side for x in extremes(values[i:i + 8:2]) for side in (pen, -pen)]
                down += [y + side for y in extremes(values[i + 1:i + 8:2]) for side in (pen, -pen)]
    return [max(axis) - min(axis) for axis in (across, down)]


def emf_size(data):
    at, pen, points, extents = 0, 0, [], {}
    pixels, millimetres = struct.unpack_from("<2i", data, 72), struct.unpack_from("<2i", data, 80)
    while at < len(data):
        record, length = struct.unpack_from("<II", data, at)
        if record in (9, 11):
            extents[record] = struct.unpack_from("<2i", data, at + 8)
        elif record == 38:
            pen = struct.unpack_from("<i", data, at + 16)[0] / 2
        elif record in (3, 4, 86, 87):
            count = 2 * struct.unpack_from("<I", data, at + 24)[0]
            values = struct.unpack_from(f"<{count}{'h' if record > 80 else 'i'}", data, at + 28)
            points += [(x + s * pen, y + s * pen) for x, y in zip(values[::2], values[1::2]) for s in (1, -1)]
        at += length
    return [s * v / w * m / p for s, v, w, m, p in
            zip(size_of(points), extents[11], extents[9], millimetres, pixels)]


def text_size(pattern):
    def measure(data):
        return size_of([[float(v) for v in found] for found in re.findall(pattern, data.decode(), re.M)])
    return measure


NUMBER = r"(-?[\d.]+)"
READERS = {
    "svg": svg_size, "emf": emf_size,
    "stl": text_size(rf"vertex\s+{NUMBER}\s+{NUMBER}"), "obj": text_size(rf"^v\s+{NUMBER}\s+{NUMBER}"),
    "xyz": text_size(rf"^{NUMBER},\s*{NUMBER},"), "wrl": text_size(rf"^{NUMBER} {NUMBER} -?[\d.]+,"),
    "dxf": text_size(rf"^\s*1[0-3]\s*\n{NUMBER}\s*\n\s*2[0-3]\s*\n{NUMBER}\s*$"),
}


def measured(program, folder, arguments):
    names = [f"{folder}/size.{extension}" for extension in READERS]
    subprocess.run([program, *arguments, "--quiet", "--set", "chkShowGrid=0",
                    *[word for name in names for word in ("-o", name)]], check=True)
    for name, read in zip(names, READERS.values()):
        with open(name, "rb") as file:
            yield name, read(file.read())


def main(program):
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        for shape in range(12):
            knot = ["--shape", str(shape), "--set", "vtXNo=5", "--set", "vtYNo=3", "--set",
                    f"vtSmooth={2 + shape % 5}", "--set", f"vtWidth={4 + shape}", "--set", f"chkClassic={shape % 2}"]
            for width, height in ((100, None), (None, 60), (90, 25), (15, 500)):
                wanted = [w for w in (("--mm", width), ("--height", height)) if w[1]]
                for name, (across, high) in measured(program, folder, knot + [str(x) for w in wanted for x in w]):
                    over = max(across - (width or across), high - (height or high))
                    reached = min(abs(across - (width or 1e9)), abs(high - (height or 1e9)))
                    if over > TOLERANCE or reached > TOLERANCE:
                        print(f"FAULT: {' '.join(knot)} {wanted}: {name} is {across:.3f} x {high:.3f}")
                        faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
