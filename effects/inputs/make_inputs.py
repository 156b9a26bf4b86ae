#!/usr/bin/env python3
"""Draws the demo pictures that the sample effects read. Needs nothing but Python itself.

Run it here to write the PNG files again: the result is the same on every machine.
"""

import math
import struct
import zlib

WIDTH, HEIGHT = 480, 270


def clamp(x, low=0.0, high=1.0):
    return max(low, min(high, x))


def mix(p, q, t):
    return tuple(a + (b - a) * t for a, b in zip(p, q))


def smooth(edge0, edge1, x):
    t = clamp((x - edge0) / (edge1 - edge0))
    return t * t * (3.0 - 2.0 * t)


def noise_1d(x, seed):
    """Smooth noise in 0..1 from an integer hash."""

    def lattice(n):
        n = (n * 374761393 + seed * 668265263) & 0xFFFFFFFF
        n = ((n ^ (n >> 13)) * 1274126177) & 0xFFFFFFFF
        return ((n ^ (n >> 16)) & 0xFFFF) / 65535.0

    cell = math.floor(x)
    t = x - cell
    t = t * t * (3.0 - 2.0 * t)
    return lattice(cell) * (1.0 - t) + lattice(cell + 1) * t


def ridge(x, seed, scale):
    total, weight, frequency = 0.0, 0.5, scale
    for octave in range(5):
        total += weight * noise_1d(x * frequency, seed + octave)
        weight *= 0.5
        frequency *= 2.1
    return total


def landscape(u, v):
    """Mountains at dusk over a lake; v runs from 0 at the top to 1 at the bottom."""
    shore = 0.68
    mirrored = v > shore
    height = v if not mirrored else 2.0 * shore - v + 0.004 * math.sin(v * 260.0)
    sky = mix((0.16, 0.27, 0.55), (0.98, 0.63, 0.38), smooth(0.0, shore, height))
    distance = math.hypot((u - 0.68) * 16.0 / 9.0, height - 0.26)
    sky = mix(sky, (1.0, 0.92, 0.72), 0.9 * math.exp(-distance * distance * 30.0))
    sky = mix(sky, (1.0, 0.97, 0.88), smooth(0.062, 0.056, distance))
    colour = sky
    layers = (
        (0.36, 0.34, 11, 2.4, (0.49, 0.42, 0.56)),
        (0.46, 0.26, 23, 3.4, (0.33, 0.30, 0.47)),
        (0.55, 0.18, 37, 5.2, (0.19, 0.22, 0.36)),
        (0.63, 0.08, 51, 11.0, (0.08, 0.13, 0.20)),
    )
    for top, depth, seed, scale, tint in layers:
        crest = top + depth * (1.0 - ridge(u, seed, scale)) - 0.08
        if height > crest:
            colour = mix(tint, (0.86, 0.56, 0.42), 0.35 * smooth(crest, crest + 0.25, height))
    if mirrored:
        colour = mix(colour, (0.10, 0.18, 0.30), 0.35 + 0.35 * (v - shore) / (1.0 - shore))
        glint = max(0.0, math.sin(v * 330.0 + 5.0 * noise_1d(u * 24.0, 77)))
        colour = mix(colour, (1.0, 0.86, 0.66), 0.22 * glint * math.exp(-((u - 0.68) * 9.0) ** 2))
    return colour


def city(u, v):
    """A skyline at night with lit windows."""
    colour = mix((0.02, 0.03, 0.10), (0.23, 0.12, 0.30), smooth(0.0, 0.8, v))
    star = noise_1d(math.floor(u * 240.0) * 17.0 + math.floor(v * 135.0) * 131.0, 5)
    if star > 0.992 and v < 0.5:
        colour = (0.8, 0.85, 1.0)
    distance = math.hypot((u - 0.22) * 16.0 / 9.0, v - 0.24)
    colour = mix(colour, (0.55, 0.58, 0.75), 0.5 * math.exp(-distance * distance * 40.0))
    colour = mix(colour, (0.95, 0.95, 0.88), smooth(0.075, 0.070, distance))
    rows = ((28, 0.36, 0.42, (0.07, 0.08, 0.17), 3), (17, 0.48, 0.40, (0.04, 0.05, 0.10), 9))
    for towers, top, spread, wall, seed in rows:
        tower = math.floor(u * towers)
        across = u * towers - tower
        roof = top + spread * noise_1d(tower * 3.0, seed)
        if v > roof and 0.04 < across < 0.96:
            colour = wall
            column, floor = math.floor(across * 5.0), math.floor(v * 64.0)
            lit = noise_1d(tower * 71.0 + column * 13.0 + floor * 29.0, seed + 40)
            inside = (across * 5.0) % 1.0 > 0.35 and (v * 64.0) % 1.0 > 0.45
            if inside and lit > 0.62 and v > roof + 0.02:
                colour = mix((1.0, 0.72, 0.32), (0.62, 0.85, 1.0), smooth(0.8, 0.95, lit))
    return colour


def ellipse(u, v, x, y, across, down):
    return math.hypot((u - x) / across, (v - y) / down)


def figure(u, v):
    """A person before a green screen that is not lit quite evenly."""
    x = (u - 0.5) * 16.0 / 9.0
    light = 0.86 + 0.14 * math.cos(3.0 * x) * (1.0 - 0.4 * v)
    colour = (0.10 * light, 0.72 * light, 0.22 * light)
    shoulder = 0.60 + 0.9 * x * x + 0.9 * max(0.0, abs(x) - 0.24) * 3.0
    if v > shoulder and abs(x) < 0.43:
        fold = 0.5 + 0.5 * math.sin(38.0 * x + 6.0 * v)
        colour = mix((0.78, 0.20, 0.24), (0.52, 0.08, 0.17), 0.35 * fold + 0.65 * abs(x) / 0.43)
        if abs(x) < 0.075 - 0.5 * (v - 0.62) and v < 0.77:
            colour = (0.93, 0.93, 0.90)
    if ellipse(x, v, 0.0, 0.56, 0.062, 0.13) < 1.0 and v > 0.4:
        colour = (0.78, 0.56, 0.45)
    if ellipse(x, v, 0.0, 0.29, 0.165, 0.185) < 1.0:
        colour = (0.20, 0.12, 0.09)
    face = ellipse(x, v, 0.0, 0.345, 0.128, 0.178)
    if face < 1.0 and v > 0.235 + 0.06 * math.cos(9.0 * x):
        colour = mix((0.95, 0.75, 0.62), (0.76, 0.53, 0.42), smooth(0.2, 1.0, face + 0.5 * x))
        for side in (-1.0, 1.0):
            if ellipse(x, v, side * 0.052, 0.335, 0.024, 0.018) < 1.0:
                colour = (0.97, 0.97, 0.97)
            if ellipse(x, v, side * 0.052, 0.335, 0.012, 0.016) < 1.0:
                colour = (0.13, 0.20, 0.30)
            if ellipse(x, v, side * 0.052, 0.302, 0.030, 0.007) < 1.0:
                colour = (0.20, 0.12, 0.09)
        smile = 0.430 - 4.0 * x * x
        if abs(x) < 0.05 and abs(v - smile) < 0.009:
            colour = (0.72, 0.25, 0.27)
        if abs(x) < 0.010 and 0.35 < v < 0.40:
            colour = (0.80, 0.58, 0.46)
    return colour


def chart(u, v):
    """Coloured tiles with a star, rings and fine lines: shows every kind of distortion."""
    column, row = math.floor(u * 8.0), math.floor(v * 8.0)
    hue = (column * 0.125 + row * 0.055) * 2.0 * math.pi
    colour = tuple(0.55 + 0.40 * math.cos(hue + shift) for shift in (0.0, 2.1, 4.2))
    if (column + row) % 2:
        colour = mix(colour, (1.0, 1.0, 1.0), 0.62)
    across, down = (u * 8.0) % 1.0, (v * 8.0) % 1.0
    if min(across, down, 1.0 - across, 1.0 - down) < 0.03:
        colour = (0.12, 0.13, 0.18)
    x, y = u - 0.5, v - 0.5
    radius, angle = math.hypot(x, y), math.atan2(y, x)
    if radius < 0.23:
        colour = (0.96, 0.95, 0.90) if math.cos(angle * 16.0) > 0.0 else (0.10, 0.12, 0.20)
        colour = mix((0.93, 0.36, 0.20), colour, smooth(0.045, 0.05, radius))
    if 0.225 < radius < 0.24 or 0.44 < radius < 0.455:
        colour = (0.93, 0.36, 0.20)
    if u + v < 0.16:
        colour = (0.93, 0.20, 0.20)
    return colour


def png_chunk(kind, data):
    return (
        struct.pack(">I", len(data))
        + kind
        + data
        + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)
    )


def paeth(left, up, corner):
    guess = left + up - corner
    by_left, by_up, by_corner = abs(guess - left), abs(guess - up), abs(guess - corner)
    if by_left <= by_up and by_left <= by_corner:
        return left
    return up if by_up <= by_corner else corner


def write_png(path, width, height, rows):
    """Writes 8-bit RGB rows, each filtered with the Paeth predictor."""
    packed, above = bytearray(), bytearray(width * 3)
    for row in rows:
        packed.append(4)
        for i, value in enumerate(row):
            left = row[i - 3] if i >= 3 else 0
            corner = above[i - 3] if i >= 3 else 0
            packed.append((value - paeth(left, above[i], corner)) & 0xFF)
        above = row
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n")
        out.write(png_chunk(b"IHDR", header))
        out.write(png_chunk(b"IDAT", zlib.compress(bytes(packed), 9)))
        out.write(png_chunk(b"IEND", b""))


def render(path, draw, width, height, samples=2):
    rows = []
    for y in range(height):
        row = bytearray()
        for x in range(width):
            total = [0.0, 0.0, 0.0]
            for s in range(samples * samples):
                u = (x + (s % samples + 0.5) / samples) / width
                v = (y + (s // samples + 0.5) / samples) / height
                total = [t + c for t, c in zip(total, draw(u, v))]
            row += bytes(int(clamp(t / samples / samples) * 255.0 + 0.5) for t in total)
        rows.append(row)
    write_png(path, width, height, rows)


if __name__ == "__main__":
    render("landscape.png", landscape, WIDTH, HEIGHT)
    render("city.png", city, WIDTH, HEIGHT)
    render("figure.png", figure, WIDTH, HEIGHT)
    render("chart.png", chart, 256, 256)
