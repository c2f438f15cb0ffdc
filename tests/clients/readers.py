# SPDX-License-Identifier: MIT
"""Formats without a program of their own here, read by a few lines that know nothing of the library."""
import json
import math
import xml.etree.ElementTree as ElementTree

import shapes
from program import convert

REGIONS = ("rectangle", "ellipse", "circle", "polygon")


def regions(seed):
    return [shape for shape in shapes.random_shapes(seed, 60) if shape["kind"] in REGIONS]


def bounds(shape):
    if "points" not in shape:
        return shapes.box_of(shape)
    xs, ys = zip(*shape["points"])
    return min(xs), min(ys), max(xs), max(ys)


def test_pascal_voc(folder):
    ours = regions(7)
    shapes.save(folder / "ours.vantor.json", ours)
    convert(folder / "ours.vantor.json", folder / "ours.xml", "Pascal VOC")
    root = ElementTree.parse(folder / "ours.xml").getroot()
    assert root.tag == "annotation" and root.find("filename").text == "photo.png"
    assert [int(root.find("size/" + side).text) for side in ("width", "height")] == [shapes.WIDTH, shapes.HEIGHT]
    found = root.findall("object")
    assert len(found) == len(ours) > 20
    for shape, element in zip(reversed(ours), found):
        box = [int(element.find("bndbox/" + side).text) for side in ("xmin", "ymin", "xmax", "ymax")]
        left, top, right, bottom = bounds(shape)
        assert element.find("name").text == shape["name"]
        assert box == [math.floor(left) + 1, math.floor(top) + 1, math.ceil(right), math.ceil(bottom)], (box, shape)


def test_cvat(folder):
    ours = regions(8)
    shapes.save(folder / "ours.vantor.json", ours)
    convert(folder / "ours.vantor.json", folder / "ours.xml", "CVAT")
    root = ElementTree.parse(folder / "ours.xml").getroot()
    labels = {label.find("name").text for label in root.findall("meta/task/labels/label")}
    image = root.find("image")
    assert root.find("version").text == "1.1" and image.get("name") == "photo.png"
    elements = [element for element in image if not element.tag.startswith("_")]
    assert len(elements) == len(ours) > 20
    for shape, element in zip(reversed(ours), elements):
        assert element.get("label") == shape["name"] and element.get("label") in labels
        number = lambda name: float(element.get(name))
        if element.tag == "box":
            found = number("xtl"), number("ytl"), number("xbr"), number("ybr")
        elif element.tag == "ellipse":
            found = (number("cx") - number("rx"), number("cy") - number("ry"),
                     number("cx") + number("rx"), number("cy") + number("ry"))
        else:
            points = [[float(part) for part in point.split(",")] for point in element.get("points").split(";")]
            assert points == shape["points"]
            continue
        assert found == bounds(shape), (found, shape)


def test_yolo(folder):
    ours = [shape for shape in regions(9) if shape["kind"] == "rectangle"]
    shapes.save(folder / "ours.vantor.json", ours)
    convert(folder / "ours.vantor.json", folder / "ours.txt", "YOLO")
    names = (folder / "classes.txt").read_text(encoding="utf-8").splitlines()
    rows = [line.split() for line in (folder / "ours.txt").read_text().splitlines()]
    assert len(rows) == len(ours) > 5
    for shape, row in zip(reversed(ours), rows):
        x, y, w, h = (float(number) for number in row[1:])
        found = ((x - w / 2) * shapes.WIDTH, (y - h / 2) * shapes.HEIGHT,
                 (x + w / 2) * shapes.WIDTH, (y + h / 2) * shapes.HEIGHT)
        assert names[int(row[0])] == shape["name"]
        assert max(abs(a - b) for a, b in zip(found, bounds(shape))) < 1e-6, (found, shape)


def test_coco(folder):
    ours = regions(10)
    shapes.save(folder / "ours.vantor.json", ours)
    convert(folder / "ours.vantor.json", folder / "ours.json", "COCO")
    with open(folder / "ours.json", encoding="utf-8") as file:
        coco = json.load(file)
    image, = coco["images"]
    assert (image["file_name"], image["width"], image["height"]) == ("photo.png", shapes.WIDTH, shapes.HEIGHT)
    names = {category["id"]: category["name"] for category in coco["categories"]}
    ids = [annotation["id"] for annotation in coco["annotations"]]
    assert len(ids) == len(ours) > 20 and len(set(ids)) == len(ids) and min(ids) >= 1
    for shape, annotation in zip(reversed(ours), coco["annotations"]):
        left, top, right, bottom = bounds(shape)
        assert names[annotation["category_id"]] == shape["name"] and annotation["image_id"] == image["id"]
        assert annotation["iscrowd"] == 0 and annotation["bbox"] == [left, top, right - left, bottom - top]
        ring, = annotation["segmentation"]
        corners = list(zip(ring[::2], ring[1::2]))
        assert len(ring) >= 6 and bounds({"points": corners}) == (left, top, right, bottom)
        if shape["kind"] == "polygon":
            assert [list(corner) for corner in corners] == shape["points"]
        area = abs(sum(a * d - b * c for (a, b), (c, d) in zip(corners, corners[1:] + corners[:1]))) / 2
        assert abs(annotation["area"] - area) <= 0.05 * (2 * (right - left) + 2 * (bottom - top)), (shape, annotation)
