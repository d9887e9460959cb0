#!/usr/bin/env python3
"""Draws the outlines of examples/*.qzc: curves sampled to points, loops closed.

Run it from the project's folder after changing an outline; the files are kept with the project.
"""

import math
import pathlib

WIDTH, HEIGHT, TWIPS_PER_UNIT = 500, 400, 15
MIDDLE = 250


def bezier(start, *segments, steps=10):
    """Points of a chain of cubic curves, without the last one: (control, control, end) for each segment."""
    points, here = [], start
    for c1, c2, end in segments:
        for i in range(steps):
            t = i / steps
            weights = ((1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t**3)
            points.append(tuple(sum(w * p[k] for w, p in zip(weights, (here, c1, c2, end))) for k in (0, 1)))
        here = end
    return points


def polygon(*corners):
    return list(corners)


def ellipse(cx, cy, rx, ry, count=48):
    turns = [2 * math.pi * i / count for i in range(count)]
    return [(cx + rx * math.cos(a), cy + ry * math.sin(a)) for a in turns]


def smooth(*knots, steps=6):
    """A closed curve through all knots (Catmull-Rom)."""
    points, n = [], len(knots)
    for i in range(n):
        p = [knots[(i + k) % n] for k in (-1, 0, 1, 2)]
        for s in range(steps):
            t = s / steps
            points.append(
                tuple(
                    0.5
                    * (
                        2 * p[1][k]
                        + (p[2][k] - p[0][k]) * t
                        + (2 * p[0][k] - 5 * p[1][k] + 4 * p[2][k] - p[3][k]) * t * t
                        + (3 * p[1][k] - p[0][k] - 3 * p[2][k] + p[3][k]) * t**3
                    )
                    for k in (0, 1)
                )
            )
    return points


def mirrored(half):
    """A loop from its right half, top to bottom, mirrored at the middle of the picture."""
    left = [(2 * MIDDLE - x, y) for x, y in reversed(half) if abs(x - MIDDLE) > 0.01]
    return half + left


def heart():
    right = bezier(
        (250, 108),
        ((268, 58), (312, 46), (346, 58)),
        ((398, 76), (412, 142), (384, 190)),
        ((352, 246), (290, 290), (250, 338)),
    )
    return [mirrored(right + [(250, 338)])]


def shield():
    right = [(250, 52), (394, 52)] + bezier(
        (394, 52), ((394, 150), (404, 258), (250, 340)), steps=16
    )[1:] + [(250, 340)]
    return [mirrored(right)]


def ring():
    return [ellipse(250, 200, 148, 148, 60), ellipse(250, 200, 72, 72, 36)]


def letter():
    """The letter R with an open bowl."""
    outer = (
        [(140, 56)]
        + bezier((262, 56), ((352, 56), (380, 96), (380, 142)), ((380, 186), (352, 214), (318, 224)), steps=8)
        + [(318, 224), (392, 340), (312, 340), (248, 234), (210, 234), (210, 340), (140, 340)]
    )
    bowl = [(210, 112)] + bezier((262, 112), ((306, 112), (314, 126), (314, 145)), ((314, 166), (304, 178), (262, 178)), steps=6) + [
        (262, 178),
        (210, 178),
    ]
    return [outer, bowl]


def leaf():
    right = bezier((250, 46), ((266, 96), (350, 132), (348, 210)), ((346, 262), (306, 298), (270, 306)), steps=14) + [
        (270, 306),
        (270, 338),
        (250, 338),
    ]
    return [mirrored(right)]


def beast():
    """A striding hound, seen from its left side."""
    body = [
        (46, 142), (76, 126), (104, 112), (112, 74), (126, 48), (146, 76), (168, 100), (204, 122), (262, 128),
        (318, 120), (352, 118), (374, 98), (382, 68), (408, 46), (432, 52), (424, 80), (418, 112), (404, 142),
        (402, 184), (414, 222), (430, 262), (436, 338), (392, 340), (384, 290), (362, 254), (334, 226),
        (292, 214), (248, 222), (220, 238), (206, 282), (202, 339), (156, 340), (156, 288), (152, 240), (138, 200),
        (112, 182), (82, 182), (50, 174),
    ]
    return [smooth(*body, steps=3)]


def star():
    return [
        [
            (250 + r * math.sin(math.pi * k / 6), 202 - r * math.cos(math.pi * k / 6))
            for k, r in enumerate([158, 92] * 6)
        ]
    ]


def crescent():
    outer = ellipse(283, 200, 146, 146, 60)
    kept = [p for p in outer if math.dist(p, (353, 200)) > 112]
    start = next(i for i in range(len(kept)) if math.dist(kept[i], kept[i - 1]) > 40)
    kept = kept[start:] + kept[:start]
    inner = [p for p in ellipse(353, 200, 112, 112, 48) if math.dist(p, (283, 200)) < 144]
    gap = next(i for i in range(len(inner)) if math.dist(inner[i], inner[i - 1]) > 40)
    inner = inner[gap:] + inner[:gap]
    if math.dist(kept[-1], inner[0]) > math.dist(kept[-1], inner[-1]):
        inner.reverse()
    return [kept + inner]


def number(value):
    text = f"{value:.3f}".rstrip("0").rstrip(".")
    return ("" if text.startswith("-") else " ") + text + " "


def write(path, loops):
    points = [p for loop in loops for p in loop]
    lines, first = [], 1
    for loop in loops:
        numbers = list(range(first, first + len(loop)))
        lines += zip(numbers, numbers[1:] + numbers[:1])
        first += len(loop)
    records = [(WIDTH * TWIPS_PER_UNIT, HEIGHT * TWIPS_PER_UNIT), (len(points),), *points, (len(lines),), *lines]
    path.write_bytes(b"".join("".join(map(number, r)).encode() + b"\r\n" for r in records))


if __name__ == "__main__":
    folder = pathlib.Path(__file__).resolve().parent.parent / "examples"
    for draw in (heart, shield, ring, letter, leaf, beast, star, crescent):
        write(folder / f"{draw.__name__}.qzc", draw())
