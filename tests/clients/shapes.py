# SPDX-License-Identifier: MIT
"""Annotations for the programs that shall read them: random documents in the project's own format, and what
their numbers mean, computed here anew."""
import json
import math
import random

WIDTH, HEIGHT = 400, 300


def box_of(shape):
    """left, top, right, bottom of a rectangle, ellipse or circle"""
    if "box" in shape:
        x, y, w, h = shape["box"]
        return min(x, x + w), min(y, y + h), max(x, x + w), max(y, y + h)
    (x, y), r = shape["centre"], shape["radius"]
    return x - r, y - r, x + r, y + r


def numbers(chance, whole):
    """a place within the image; broken ones are exact in single precision, too"""
    part = 0 if whole else chance.choice((0, 0.125, 0.25, 0.625))
    return [chance.randrange(5, WIDTH - 120) + part, chance.randrange(5, HEIGHT - 120) + part]


def random_shapes(seed, count, whole=False):
    chance = random.Random(seed)
    shapes = []
    for number in range(count):
        kind = chance.choice(("rectangle", "ellipse", "circle", "polygon", "ruler", "line", "arrow", "point"))
        x, y = numbers(chance, whole)
        w, h = chance.randrange(2, 100), chance.randrange(2, 100)
        shape = {"kind": kind, "name": "%s %d \u00e9" % (kind, number), "named": True}
        if kind in ("rectangle", "ellipse"):
            backwards, upwards = chance.random() < .5, chance.random() < .5
            shape["box"] = [x + w if backwards else x, y + h if upwards else y,
                            -w if backwards else w, -h if upwards else h]
        elif kind == "circle":
            shape["centre"], shape["radius"] = [x + w, y + w], min(w, 50)
        elif kind == "polygon":
            # Odd parts of 1024, so that no side goes through the middle of a pixel, where ImageJ and the library
            # differ in whether that is inside.
            corners = [(x + w, y), (x + w, y + h), (x, y + h // 2)]
            corners += [numbers(chance, True) for _ in range(chance.randrange(0, 4))]
            shape["points"] = [[math.floor(i) + chance.randrange(1, 1024, 2) / 1024 for i in corner]
                               for corner in corners]
        elif kind == "point":
            shape["points"] = [[x, y]]
        else:
            shape["points"] = [[x, y], [x + w, y + chance.choice((-1, 1)) * h]]
        shapes.append(shape)
    return shapes


def save(path, shapes, style=None):
    """writes a file of the project's own format"""
    objects = [dict(shape, id="00000000-0000-4000-8000-%012d" % number, **({"style": style} if style else {}))
               for number, shape in enumerate(shapes)]
    document = {"format": "vantor-annotations", "version": 1, "readable_by": 1,
                "source": {"name": "photo.png"},
                "pages": [{"page": 0, "width": WIDTH, "height": HEIGHT, "objects": objects}]}
    with open(path, "w", encoding="utf-8") as file:
        json.dump(document, file)


def load(path):
    """the objects of the first page of such a file"""
    with open(path, encoding="utf-8") as file:
        return json.load(file)["pages"][0]["objects"]


def chains_of(shape):
    """the lines that show a shape, as lists of places less than half a pixel apart"""
    kind = shape["kind"]
    if kind in ("ellipse", "circle"):
        left, top, right, bottom = box_of(shape)
        count = 8 * int(right - left + bottom - top) + 8
        turns = [2 * math.pi * i / count for i in range(count)]
        return [[((left + right) / 2 + (right - left) / 2 * math.cos(t),
                  (top + bottom) / 2 + (bottom - top) / 2 * math.sin(t)) for t in turns]]
    if kind == "point":
        x, y = shape["points"][0]
        return chains_of({"kind": "circle", "centre": [x, y], "radius": 2})
    if kind == "rectangle":
        left, top, right, bottom = box_of(shape)
        corners = [(left, top), (right, top), (right, bottom), (left, bottom), (left, top)]
    else:
        corners = [tuple(point) for point in shape["points"]]
        if kind == "polygon":
            corners.append(corners[0])
    chain = []
    for (x1, y1), (x2, y2) in zip(corners, corners[1:]):
        steps = max(1, int(3 * math.hypot(x2 - x1, y2 - y1)))
        chain += [(x1 + (x2 - x1) * i / steps, y1 + (y2 - y1) * i / steps) for i in range(steps + 1)]
    return [chain]
