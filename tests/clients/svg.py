# SPDX-License-Identifier: MIT
"""librsvg paints our drawings as the shapes are."""
import math

import shapes
from program import convert, run

BLACK = {"pen": "#ff000000"}


def painted(drawing, folder):
    """the pixels of which a fifth or more is painted, x and y"""
    run("rsvg-convert", "--background-color", "white", "-o", folder / "drawing.png", drawing)
    grey = run("convert", folder / "drawing.png", "-depth", "8", "gray:-")
    assert len(grey) == shapes.WIDTH * shapes.HEIGHT, len(grey)
    return {(i % shapes.WIDTH, i // shapes.WIDTH) for i, value in enumerate(grey) if value < 205}


def near(x, y, distance):
    """the pixels whose middle is not further from a place"""
    for j in range(math.floor(y - distance), math.ceil(y + distance) + 1):
        for i in range(math.floor(x - distance), math.ceil(x + distance) + 1):
            if math.hypot(i + 0.5 - x, j + 0.5 - y) <= distance:
                yield i, j


def check(shape, pixels):
    """every painted pixel is near the shape, and the shape is near painted pixels everywhere"""
    allowed = set()
    for chain in shapes.chains_of(shape):
        for x, y in chain:
            if not (0 <= x <= shapes.WIDTH and 0 <= y <= shapes.HEIGHT):
                continue
            about = set(near(x, y, 1.0))
            assert about & pixels, ("nothing is painted at", x, y, shape)
            allowed |= about
    far = pixels - allowed
    if shape["kind"] == "arrow":  # its head, at most 24 pixels long
        x, y = shape["points"][1]
        far = {(i, j) for i, j in far if math.hypot(i - x, j - y) > 24}
    elif shape["kind"] == "ruler":  # its text, right of the middle and above
        (x1, y1), (x2, y2) = shape["points"]
        x, y = (x1 + x2) / 2, (y1 + y2) / 2
        far = {(i, j) for i, j in far if not (x - 1 <= i <= x + 120 and y - 14 <= j <= y + 4)}
    assert not far, ("painted beside the shape", sorted(far)[:9], shape)


def test_librsvg_paints_each_shape_within_a_pixel(folder):
    for number, shape in enumerate(shapes.random_shapes(5, 60)):
        shapes.save(folder / "one.vantor.json", [shape], BLACK)
        assert convert(folder / "one.vantor.json", folder / "one.svg", "SVG") == []
        check(shape, painted(folder / "one.svg", folder))


def test_librsvg_shows_the_embedded_picture(folder):
    run("convert", "-size", "%dx%d" % (shapes.WIDTH, shapes.HEIGHT), "xc:white", "-fill", "black",
        "-draw", "rectangle 10,20 29,49", folder / "photo.png")
    shapes.save(folder / "none.vantor.json", [])
    convert(folder / "none.vantor.json", folder / "none.svg", "SVG", folder / "photo.png")
    (folder / "photo.png").unlink()
    assert painted(folder / "none.svg", folder) == {(x, y) for x in range(10, 30) for y in range(20, 50)}


def test_librsvg_shows_the_linked_picture(folder):
    run("convert", "-size", "%dx%d" % (shapes.WIDTH, shapes.HEIGHT), "xc:white", "-fill", "black",
        "-draw", "rectangle 10,20 29,49", folder / "photo.png")
    shapes.save(folder / "none.vantor.json", [])
    convert(folder / "none.vantor.json", folder / "none.svg", "SVG")
    assert len(painted(folder / "none.svg", folder)) == 600
