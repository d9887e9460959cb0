#!/usr/bin/env python3
"""Draws the figures of docs/tracing.md: one corner of the walk, the order of neighbours, and a wall.

Run it from the project's folder; the files are kept with the project.
"""

import pathlib

CELL, MARGIN = 150, 60
INK, GRID, MARK, STRAND, WALL = "#2a2620", "#b9ab90", "#2a5c9a", "#c8402f", "#d0021b"


class Figure:
    """Grid coordinates: x to the right, y downwards, one unit a cell."""

    def __init__(self, width, height):
        self.size = (width * CELL + 2 * MARGIN, height * CELL + 2 * MARGIN)
        self.parts = []

    def at(self, p):
        return MARGIN + p[0] * CELL, MARGIN + p[1] * CELL

    def line(self, a, b, colour, width=2, dash=""):
        (x1, y1), (x2, y2) = self.at(a), self.at(b)
        dashes = f' stroke-dasharray="{dash}"' if dash else ""
        self.parts.append(
            f'<line x1="{x1:g}" y1="{y1:g}" x2="{x2:g}" y2="{y2:g}" stroke="{colour}" stroke-width="{width}"{dashes}/>')

    def grid(self, columns, rows):
        for y in range(rows + 1):
            self.line((0, y), (columns, y), GRID)
        for x in range(columns + 1):
            self.line((x, 0), (x, rows), GRID)
        for y in range(rows + 1):
            for x in range(columns + 1):
                self.dot((x, y), GRID, 6)

    def dot(self, p, colour, radius=5, text="", shift=(10, -10)):
        x, y = self.at(p)
        self.parts.append(f'<circle cx="{x:g}" cy="{y:g}" r="{radius}" fill="{colour}"/>')
        if text:
            self.label(p, text, colour if colour != GRID else INK, shift)

    def label(self, p, text, colour=INK, shift=(10, -10)):
        x, y = self.at(p)
        self.parts.append(
            f'<text x="{x + shift[0]:g}" y="{y + shift[1]:g}" fill="{colour}" font-family="sans-serif" '
            f'font-size="20">{text}</text>')

    def spline(self, polygon, colour, width):
        """Closed or open quadratic B-spline: from middle to middle of the control polygon's sides."""
        mid = lambda a, b: ((a[0] + b[0]) / 2, (a[1] + b[1]) / 2)
        middles = [mid(a, b) for a, b in zip(polygon, polygon[1:])]
        path = "M{:g},{:g}".format(*self.at(middles[0]))
        for control, end in zip(polygon[1:-1], middles[1:]):
            path += " Q{:g},{:g} {:g},{:g}".format(*self.at(control), *self.at(end))
        self.parts.append(f'<path d="{path}" fill="none" stroke="{colour}" stroke-width="{width}" '
                          'stroke-linecap="round"/>')

    def polygon(self, points, colour):
        for a, b in zip(points, points[1:]):
            self.line(a, b, colour, 2, "3 5")

    def save(self, name):
        w, h = self.size
        body = "\n  ".join(self.parts)
        pathlib.Path("docs/images", name).write_text(
            f'<svg xmlns="http://www.w3.org/2000/svg" width="{w}" height="{h}" viewBox="0 0 {w} {h}">\n'
            f'  <rect width="100%" height="100%" fill="#fdfaf3"/>\n  {body}\n</svg>\n')


def corner():
    """The strand goes round the grid's corner from A to B; the apex X swings out."""
    figure = Figure(2, 2)
    figure.grid(2, 2)
    a, b = (0, 0.5), (0.5, 0)
    c = (0.25, 0.25)
    x = (c[0] - 0.6 * 0.707, c[1] - 0.6 * 0.707)
    before, after = (0.25, 0.75), (0.75, 0.25)
    figure.polygon([(0.5, 1), before, a, x, b, after, (1, 0.5)], MARK)
    figure.spline([(0.5, 1), before, a, x, b, after, (1, 0.5)], STRAND, 5)
    figure.line(a, b, MARK, 1)
    figure.line(c, x, MARK, 1)
    for p, text, shift in ((a, "A", (-26, 6)), (b, "B", (0, -14)), (c, "C", (10, 20)), (x, "X", (-26, -4))):
        figure.dot(p, MARK, 5, text, shift)
    figure.dot((0, 1), GRID, 6, "prev", (-54, 7))
    figure.dot((0, 0), GRID, 6, "cur", (10, 24))
    figure.dot((1, 0), GRID, 6, "next", (-4, -16))
    figure.save("walk.svg")


def order():
    """At a point the neighbours stand in angular order; the walk takes the next one, then the previous one."""
    figure = Figure(2, 2)
    figure.grid(2, 2)
    for p, text, shift in (((2, 1), "0", (14, 6)), ((1, 2), "1", (-5, 30)), ((0, 1), "2", (-28, 6)),
                           ((1, 0), "3", (-5, -16))):
        figure.dot(p, GRID, 6, text, shift)
    path = [(0.5, 0), (0.5, 0.5), (0.5, 1), (0.75, 1.25), (1, 1.5), (1.5, 1.5), (2, 1.5)]
    steps = [(0, 0.5), (0.25, 0.75), (0.5, 1), (0.75, 1.25), (1, 1.5), (1.25, 1.75), (1.5, 2)]
    figure.spline(steps, STRAND, 5)
    for p, sign in (((0.5, 1), "over"), ((1, 1.5), "under")):
        figure.dot(p, MARK, 5, sign, (12, -10))
    figure.save("order.svg")


def wall():
    """Both strands that meet a wall turn back and run along it."""
    figure = Figure(2, 2)
    figure.grid(2, 2)
    figure.line((1, 0), (1, 2), WALL, 5)
    for side in (-1, 1):
        points = [(1 + side * u, v) for u, v in ((0.75, -0.25), (0.5, 0), (0.25, 0.25), (0.12, 0.5), (0.25, 0.75),
                                                 (0.5, 1), (0.25, 1.25), (0.12, 1.5), (0.25, 1.75), (0.5, 2),
                                                 (0.75, 2.25))]
        figure.spline(points, STRAND if side < 0 else MARK, 5)
    figure.save("wall.svg")


if __name__ == "__main__":
    corner()
    order()
    wall()
