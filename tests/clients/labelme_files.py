# SPDX-License-Identifier: MIT
"""LabelMe's own loader opens what we write, and we read what it writes."""
import json
import subprocess

import shapes
from program import convert, run

# Debian's interpreter is the one that LabelMe is installed for.
PYTHON = "/usr/bin/python3"
LOAD = """
import json, sys
from labelme.label_file import LabelFile
file = LabelFile(sys.argv[1])
print(json.dumps({"shapes": file.shapes, "image": file.imagePath, "bytes": len(file.imageData)}))
"""
WRITE = """
import json, sys
from labelme.label_file import LabelFile
shapes = json.loads(sys.argv[2])
LabelFile().save(filename=sys.argv[1], shapes=shapes, imagePath="photo.png", imageHeight=300, imageWidth=400,
                 imageData=None, flags={})
"""
TYPES = {"rectangle": "rectangle", "ellipse": "polygon", "circle": "circle", "polygon": "polygon", "ruler": "line",
         "line": "line", "arrow": "line", "point": "point"}


def picture(folder):
    run("convert", "-size", "%dx%d" % (shapes.WIDTH, shapes.HEIGHT), "xc:white", folder / "photo.png")


def loaded(path):
    """what LabelMe makes of a file; it must not complain"""
    result = subprocess.run([PYTHON, "-c", LOAD, str(path)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            timeout=60, check=True)
    assert result.stderr == b"", result.stderr
    return json.loads(result.stdout)


def test_labelme_opens_our_file(folder):
    ours = shapes.random_shapes(11, 80)
    shapes.save(folder / "ours.vantor.json", ours)
    convert(folder / "ours.vantor.json", folder / "photo.json", "LabelMe")
    picture(folder)
    its = loaded(folder / "photo.json")
    assert its["image"] == "photo.png" and its["bytes"] > 0 and len(its["shapes"]) == len(ours)
    for shape, found in zip(reversed(ours), its["shapes"]):
        points = found["points"]
        assert found["label"] == shape["name"] and found["shape_type"] == TYPES[shape["kind"]], (found, shape)
        if shape["kind"] == "circle":
            (x, y), (i, j) = points
            assert [x, y] == shape["centre"] and (i - x) ** 2 + (j - y) ** 2 == shape["radius"] ** 2
        elif shape["kind"] in ("rectangle", "ellipse"):
            xs, ys = zip(*points)
            assert (min(xs), min(ys), max(xs), max(ys)) == shapes.box_of(shape), (found, shape)
        else:
            assert points == shape["points"], (found, shape)


def test_we_open_what_labelme_writes(folder):
    its = [{"label": "box", "points": [[60, 70.25], [10.5, 20]], "shape_type": "rectangle"},
           {"label": "round", "points": [[50, 60], [53, 64]], "shape_type": "circle"},
           {"label": "area \u00e9", "points": [[1, 2], [30.5, 4], [5, 60.125]], "shape_type": "polygon"},
           {"label": "way", "points": [[1, 2], [30.5, 4]], "shape_type": "line"},
           {"label": "place", "points": [[7.5, 8]], "shape_type": "point"}]
    for shape in its:
        shape.update(group_id=None, flags={})
    picture(folder)
    run(PYTHON, "-c", WRITE, folder / "photo.json", json.dumps(its))
    remarks = convert(folder / "photo.json", folder / "ours.vantor.json", "Vantor")
    assert remarks == [], remarks
    box, circle, area, way, place = reversed(shapes.load(folder / "ours.vantor.json"))
    assert shapes.box_of(box) == (10.5, 20, 60, 70.25) and box["name"] == "box"
    assert circle["centre"] == [50, 60] and circle["radius"] == 5
    assert area["points"] == its[2]["points"] and area["name"] == its[2]["label"]
    assert way["points"] == its[3]["points"] and place["points"] == its[4]["points"]
