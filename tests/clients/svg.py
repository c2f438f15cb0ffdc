# SPDX-License-Identifier: MIT
"""librsvg paints our drawings as the shapes are."""
import math
import os
import pathlib

import shapes
from program import convert, run

BLACK = {"pen": "#ff000000"}


def painted(drawing, folder):
    """the pixels of which a fifth or more is painted, x and y"""
    run("rsvg-convert", "--background-color", "white", "-o", folder / "drawing.png", drawing)
    return dark(folder / "drawing.png", 205)


def burn(source, picture):
    """the painted pixels of the library's own picture"""
    program = pathlib.Path(os.environ["ANNOTATION_FILES"]).with_name("annotation_picture")
    run(program, source, shapes.WIDTH, shapes.HEIGHT, picture)
    return dark(picture, 205)


def dark(picture, level):
    """the pixels of a picture that are darker than the level, x and y"""
    grey = run("convert", picture, "-depth", "8", "gray:-")
    assert len(grey) == shapes.WIDTH * shapes.HEIGHT, len(grey)
    return {(i % shapes.WIDTH, i // shapes.WIDTH) for i, value in enumerate(grey) if value < level}


def near(x, y, distance):
    """the pixels whose middle is not further from a place"""
    for j in range(math.floor(y - distance), math.ceil(y + distance) + 1):
        for i in range(math.floor(x - distance), math.ceil(x + distance) + 1):
            if math.hypot(i + 0.5 - x, j + 0.5 - y) <= distance:
                yield i, j


def around(pixels):
    """the pixels and their neighbours"""
    return {(x + i, y + j) for x, y in pixels for i in (-1, 0, 1) for j in (-1, 0, 1)}


def beside_frame(shape, pixels):
    """the pixels without those of the handles and of the dashed frame, which pictures have and drawings not"""
    if "points" in shape:
        (left, right), (top, bottom) = ((min(axis), max(axis)) for axis in zip(*shape["points"]))
        handles = shape["points"]
    else:
        left, top, right, bottom = shapes.box_of(shape)
        handles = [(x, y) for x in (left, right) for y in (top, bottom)]
    frame = [(x, y) for x in range(math.floor(left), math.ceil(right) + 1) for y in (top, bottom)]
    frame += [(x, y) for x in (left, right) for y in range(math.floor(top), math.ceil(bottom) + 1)]
    gone = {pixel for x, y in handles for pixel in near(x, y, 4.5)}
    if shape["kind"] in ("polygon", "ellipse", "arrow"):
        gone |= {pixel for x, y in frame for pixel in near(x, y, 1.5)}
    return pixels - gone


def beside_text(shape, pixels):
    """the pixels without those of a ruler's text: right of the middle in drawings, of the end in pictures"""
    if shape["kind"] != "ruler":
        return pixels
    (x1, y1), (x2, y2) = shape["points"]
    for x, y, height in (((x1 + x2) / 2, (y1 + y2) / 2, 14), (x2, y2, 24)):
        pixels = {(i, j) for i, j in pixels if not (x - 1 <= i <= x + 140 and y - height <= j <= y + 6)}
    return pixels


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
    far = beside_text(shape, far)
    assert not far, ("painted beside the shape", sorted(far)[:9], shape)


def test_librsvg_paints_each_shape_within_a_pixel(folder):
    for number, shape in enumerate(shapes.random_shapes(5, 60)):
        shapes.save(folder / "one.vantor.json", [shape], BLACK)
        assert convert(folder / "one.vantor.json", folder / "one.svg", "SVG") == []
        check(shape, painted(folder / "one.svg", folder))


def test_librsvg_paints_each_shape_within_a_pixel_of_the_picture_with_burnt_in_shapes(folder):
    # Pictures, as the screen, show a circle by its frame alone and a point by its handle.
    compared = [s for s in shapes.random_shapes(9, 80) if s["kind"] not in ("circle", "point")]
    assert len(compared) > 40
    for shape in compared:
        shape["show_name"] = False
        shapes.save(folder / "one.vantor.json", [shape], BLACK)
        convert(folder / "one.vantor.json", folder / "one.svg", "SVG")
        burnt = burn(folder / "one.vantor.json", folder / "burnt.png")
        drawn, core = painted(folder / "one.svg", folder), dark(folder / "drawing.png", 128)
        assert core and burnt, shape
        far = beside_text(shape, core - around(burnt))
        far |= beside_text(shape, beside_frame(shape, burnt - around(drawn)))
        assert not far, ("painted by one of them only", sorted(far)[:9], shape)


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
