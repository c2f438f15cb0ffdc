#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws the texture of the globe: the world in equirectangular projection, 4096 x 2048, north at the top.

Usage: make_earth.py countries-50m.json
The file is part of world-atlas 2.0.2 (ISC licence), which holds the public-domain outlines of Natural Earth 4.1
as TopoJSON. Needs rsvg-convert (librsvg2-bin) and convert
(imagemagick). The result is in the repository; run it after changing the drawing.

Coasts and borders are real. Climate is drawn by hand: bands of latitude, and blurred spots for deserts,
forests and mountains; the relief is noise under a light from the north-west.
"""
import json
import pathlib
import subprocess
import sys
import tempfile

TARGET = (
    pathlib.Path(__file__).resolve().parent.parent
    / "src/VantorCommon/resources/OpenGL/8081_earthmap4k.jpg"
)
WIDTH, HEIGHT = 4096, 2048
QUALITY = 84
ICE_COUNTRIES = {"Antarctica", "Greenland"}

# Colours over latitude, from the north pole (0) to the south pole (1).
LAND_BANDS = [
    (0.00, "#f4f7f8"), (0.07, "#e8ecea"), (0.11, "#9aa287"), (0.17, "#5f7a4c"), (0.25, "#6f8a4f"),
    (0.31, "#93965c"), (0.35, "#a89b66"), (0.41, "#8f9654"), (0.47, "#4f7f3f"), (0.53, "#487b3c"),
    (0.59, "#7f8f4c"), (0.65, "#9c945c"), (0.72, "#7f8f54"), (0.80, "#8a9470"), (0.85, "#eef2f3"),
    (1.00, "#f8fafb"),
]
SEA_BANDS = [
    (0.00, "#dfe9ee"), (0.035, "#b9d0dd"), (0.09, "#4a7a9c"), (0.25, "#24598a"), (0.42, "#1d5b93"),
    (0.50, "#20659c"), (0.58, "#1d5b93"), (0.75, "#1f4f7f"), (0.88, "#4a7a9c"), (1.00, "#b9d0dd"),
]
# How visible the relief is: near the poles the sphere would squeeze it to streaks.
RELIEF_BANDS = [
    (0.00, "#000000"), (0.08, "#303030"), (0.17, "#606060"), (0.28, "#d0d0d0"), (0.40, "#ffffff"),
    (0.75, "#ffffff"), (0.85, "#404040"), (1.00, "#000000"),
]
SAND, FOREST, STEPPE, ROCK = "#d8c08c", "#3f7336", "#b3a36b", "#8d7453"
# Blurred spots on the land: longitude, latitude, half axes in degrees, colour, opacity.
SPOTS = [
    (8, 24, 27, 8, SAND, 0.95), (27, 24, 9, 7, SAND, 0.9), (47, 23, 11, 9, SAND, 0.95),
    (56, 31, 7, 5, SAND, 0.75), (62, 42, 12, 5, STEPPE, 0.9), (84, 39, 9, 3.5, SAND, 0.9),
    (104, 43, 12, 4, SAND, 0.8), (71, 27, 4, 4, SAND, 0.8), (131, -25, 14, 7, "#c98f5c", 0.9),
    (20, -24, 6, 6, STEPPE, 0.9), (15, -23, 2, 7, SAND, 0.9), (-112, 34, 7, 6, SAND, 0.75),
    (-104, 29, 6, 4, STEPPE, 0.8), (-69.5, -23, 2, 6, SAND, 0.9), (-69, -43, 4, 7, STEPPE, 0.9),
    (-62, -4, 13, 9, FOREST, 0.9), (22, 0, 11, 6, FOREST, 0.9), (114, 1, 18, 7, FOREST, 0.9),
    (100, 18, 6, 6, FOREST, 0.6), (-84, 38, 9, 7, FOREST, 0.5), (90, 60, 45, 5, "#4d6b43", 0.7),
    (-100, 55, 28, 5, "#4d6b43", 0.6), (88, 33, 12, 3.5, "#a1977f", 0.9),
]
# Mountain ranges: width in degrees, then points of longitude and latitude.
RANGES = [
    (2.4, [(-150, 63), (-135, 60), (-122, 52), (-114, 46), (-107, 39), (-105, 33)]),
    (1.8, [(-76, 8), (-78, -2), (-75, -12), (-68, -20), (-70, -32), (-72, -45), (-72, -52)]),
    (2.2, [(72, 36), (80, 31), (88, 28), (96, 29)]), (1.6, [(70, 38), (78, 42), (88, 48), (98, 50)]),
    (1.4, [(6, 45), (10, 46.5), (14, 47)]), (1.2, [(40, 43), (48, 41)]), (1.6, [(45, 37), (52, 31)]),
    (1.2, [(60, 67), (59, 60), (58, 53)]), (1.4, [(37, 12), (39, 7)]), (1.2, [(-83, 36), (-76, 41)]),
    (1.4, [(7, 60), (14, 66)]), (1.2, [(146, -36), (150, -30)]), (1.0, [(-6, 32), (2, 35)]),
]


def decode_arcs(topology):
    """The arcs as lists of pixel positions: the file holds quantised differences."""
    (sx, sy), (tx, ty) = topology["transform"]["scale"], topology["transform"]["translate"]
    arcs = []
    for deltas in topology["arcs"]:
        x = y = 0
        points = []
        for dx, dy in deltas:
            x, y = x + dx, y + dy
            points.append(place(x * sx + tx, y * sy + ty))
        arcs.append(points)
    return arcs


def place(longitude, latitude):
    return (longitude + 180) / 360 * WIDTH, (90 - latitude) / 180 * HEIGHT


def unwrap(points):
    """A ring that crosses the date line runs on beyond the picture's edge instead of jumping across it; one
    that goes all the way round (Antarctica) is closed along the south pole."""
    result = points[:1]
    for x, y in points[1:]:
        x += round((result[-1][0] - x) / WIDTH) * WIDTH
        result.append((x, y))
    if abs(result[-1][0] - result[0][0]) > WIDTH / 2:
        result += [(result[-1][0], HEIGHT + 60), (result[0][0], HEIGHT + 60)]
    return result


def ring_path(arcs, ring):
    """A ring is a chain of arcs; ~i stands for arc i backwards, and neighbours share a point."""
    points = []
    for index in ring:
        part = arcs[index] if index >= 0 else arcs[~index][::-1]
        points += part[1:] if points else part
    points = unwrap(points)
    left, right = min(x for x, _ in points), max(x for x, _ in points)
    copies = [0] + ([WIDTH] if left < 0 else []) + ([-WIDTH] if right > WIDTH else [])
    return "".join(
        "M" + "L".join(f"{x + shift:.1f},{y:.1f}" for x, y in points) + "Z" for shift in copies
    )


def country_path(arcs, country):
    polygons = [country["arcs"]] if country["type"] == "Polygon" else country["arcs"]
    return "".join(ring_path(arcs, ring) for polygon in polygons for ring in polygon)


def gradient(name, bands):
    stops = "".join(f'<stop offset="{at}" stop-color="{colour}"/>' for at, colour in bands)
    return (
        f'<linearGradient id="{name}" gradientUnits="userSpaceOnUse" x1="0" y1="0" x2="0" y2="{HEIGHT}">'
        f"{stops}</linearGradient>"
    )


def spots():
    for longitude, latitude, rx, ry, colour, opacity in SPOTS:
        x, y = place(longitude, latitude)
        yield (
            f'<ellipse cx="{x:.0f}" cy="{y:.0f}" rx="{rx * WIDTH / 360:.0f}" ry="{ry * HEIGHT / 180:.0f}" '
            f'fill="{colour}" opacity="{opacity}" filter="url(#soft)"/>'
        )


def ranges():
    for width, points in RANGES:
        line = " ".join("%.0f,%.0f" % place(*point) for point in points)
        for colour, part in ((ROCK, 1.0), ("#c9c3b8", 0.35)):
            yield (
                f'<polyline points="{line}" fill="none" stroke="{colour}" stroke-opacity="0.7" '
                f'stroke-linejoin="round" stroke-linecap="round" '
                f'stroke-width="{width * part * WIDTH / 360:.1f}" filter="url(#edge)"/>'
            )


def drawing(topology):
    arcs = decode_arcs(topology)
    countries = topology["objects"]["countries"]["geometries"]
    paths = {i: country_path(arcs, country) for i, country in enumerate(countries)}
    names = {i: country["properties"]["name"] for i, country in enumerate(countries)}
    land = "".join(paths.values())
    ice = "".join(paths[i] for i in paths if names[i] in ICE_COUNTRIES)
    whole = f'x="0" y="0" width="{WIDTH}" height="{HEIGHT}"'
    region = f'filterUnits="userSpaceOnUse" {whole}'
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}">
<defs>{gradient("landBands", LAND_BANDS)}{gradient("seaBands", SEA_BANDS)}
<clipPath id="land"><path d="{land}"/></clipPath>
<filter id="soft" {region}><feGaussianBlur stdDeviation="45 28"/></filter>
<filter id="edge" {region}><feGaussianBlur stdDeviation="5"/></filter>
<filter id="shore" {region}><feGaussianBlur stdDeviation="14"/></filter>
<filter id="relief" {region} color-interpolation-filters="sRGB">
<feTurbulence type="fractalNoise" baseFrequency="0.012 0.014" numOctaves="6" seed="7"/>
<feColorMatrix values="0 0 0 0 0  0 0 0 0 0  0 0 0 0 0  1 0 0 0 0"/>
<feDiffuseLighting surfaceScale="26" diffuseConstant="1.05" lighting-color="#ffffff">
<feDistantLight azimuth="225" elevation="55"/></feDiffuseLighting></filter>
{gradient("reliefBands", RELIEF_BANDS)}<mask id="temperate"><rect {whole} fill="url(#reliefBands)"/></mask></defs>
<rect {whole} fill="url(#seaBands)"/>
<path d="{land}" fill="none" stroke="#7fb6cf" stroke-width="22" stroke-opacity="0.4" filter="url(#shore)"/>
<path d="{land}" fill="url(#landBands)"/>
<g clip-path="url(#land)">{"".join(spots())}{"".join(ranges())}<path d="{ice}" fill="#f2f6f8"/>
<g style="mix-blend-mode:multiply" opacity="0.55" mask="url(#temperate)"><rect {whole} filter="url(#relief)"/></g></g>
<path d="{land}" fill="none" stroke="#3c3228" stroke-opacity="0.6" stroke-width="1.6"/>
</svg>"""


def main():
    topology = json.loads(pathlib.Path(sys.argv[1]).read_text())
    TARGET.parent.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        svg, png = pathlib.Path(folder, "earth.svg"), pathlib.Path(folder, "earth.png")
        svg.write_text(drawing(topology))
        subprocess.run(["rsvg-convert", "--unlimited", "-o", png, svg], check=True)
        options = ["-strip", "-sampling-factor", "4:2:0", "-quality", str(QUALITY)]
        subprocess.run(["convert", png, *options, TARGET], check=True)
    print(f"{TARGET.name}: {TARGET.stat().st_size} bytes")


if __name__ == "__main__":
    main()
