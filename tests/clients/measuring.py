# SPDX-License-Identifier: MIT
"""ImageJ and the library measure the same random regions of photographs. What is equal and what differs, and why,
stands in docs/MEASURING.md; each of its figures is a limit here."""
import collections
import math
import os
import pathlib
import random

from imagej import JAR
from program import run

TOOL = pathlib.Path(__file__).with_name("Measure.java")
DATA = pathlib.Path(__file__).resolve().parents[1] / "data"
PHOTOGRAPHS = {"grey": DATA / "png" / "bricks-gray.png", "RGB": DATA / "png" / "hibiscus.regular.png"}
SIZES = {"grey": (160, 120), "RGB": (312, 442)}
COUNT = 500
EQUAL = 1e-12  # by the larger of 1 and the number


def measured(*command):
    """region -> name -> number"""
    regions = collections.defaultdict(dict)
    for line in run(*command).decode("utf-8").splitlines():
        index, name, number = line.split("\t")
        regions[int(index)][name] = float(number)
    return [regions[index] for index in sorted(regions)]


def place(chance, size, whole=False):
    """Odd parts of 1024, so that no side goes through the middle of a pixel, unless they are whole."""
    return [chance.randrange(2, side - 2) + (0 if whole else chance.randrange(1, 1024, 2) / 1024) for side in size]


def box(chance, size):
    width, height = (chance.randrange(1, side // 2) for side in size)
    return [chance.randrange(0, size[0] - width), chance.randrange(0, size[1] - height), width, height]


def polygon(chance, size, crossing=False, whole=False):
    corners = [place(chance, size, whole) for _ in range(chance.randrange(3, 9))]
    if not crossing:
        middle = [side / 2 + 0.1 for side in size]
        corners.sort(key=lambda corner: math.atan2(corner[1] - middle[1], corner[0] - middle[0]))
    return [number for corner in corners for number in corner]


def compare(folder, kind, make, check):
    """Calls check(name, ours, its, all of ours) for each number that ImageJ tells of each region."""
    for photograph, size in SIZES.items():
        chance = random.Random("%s %s" % (kind, photograph))
        regions = [make(chance, size) for _ in range(COUNT)]
        path = folder / "regions.txt"
        path.write_text("".join("%s %s\n" % (kind, " ".join("%r" % float(n) for n in region)) for region in regions))
        tool = pathlib.Path(os.environ["ANNOTATION_FILES"]).with_name("measure_regions")
        its = measured("java", "-Djava.awt.headless=true", "-cp", JAR, TOOL, PHOTOGRAPHS[photograph], path)
        ours = measured(tool, "tell", PHOTOGRAPHS[photograph], path)
        assert len(its) == len(ours) == COUNT
        for region, numbers, own in zip(regions, its, ours):
            for name, number in numbers.items():
                difference = check(name, number, own, region)
                assert difference is None, (kind, photograph, region, name, own.get(name), number, difference)


def is_equal(a, b, tolerance=EQUAL):
    return abs(a - b) <= tolerance * max(1.0, abs(b)) or (math.isnan(a) and math.isnan(b))


def pixels(name, number, own, region):
    """None when a number is as promised, or what is wrong"""
    del region
    plane, _, what = name.partition(".")
    if what == "aspect":  # of ImageJ's the pixels', of ours the outline's
        return None
    if plane not in ("grey", "weighted") or what in ("count", "area", "centroid.x", "centroid.y"):
        return None if is_equal(own[name], number) else "not equal"
    if what.startswith("mass"):  # it weighs colours in single precision
        return None if is_equal(own[name], number, 2e-6) or own["0.count"] < 2 else "centre of mass"
    if what in ("min", "max"):  # it rounds each pixel, downwards or upwards
        limit = 0.334 if plane == "grey" else 0.5
        return None if abs(own[name] - number) <= limit else "extreme"
    if plane == "grey" and what in ("median", "mode"):
        return None if own[name] == number else "not equal"
    if what in ("mean", "deviation"):
        # Of the rounded greys equal, where it does not take a weighted grey of n + 1/2 for less than that.
        ties = EQUAL if plane == "grey" else 0.05
        rounded = own["%s.rounded.%s" % (plane, what)]
        if not (is_equal(rounded, number, ties) or math.isnan(rounded)):
            return "rounded %r" % rounded
        return None if abs(own[name] - number) <= 0.34 else "far"
    return None if what in ("median", "mode", "density") else "unknown"


def exact(name, number, own, region):
    return pixels(name, number, own, region) if "." in name and "profile" not in name else (
        None if is_equal(own[name], number) else "not equal")


def ellipse(name, number, own, region):
    if name != "perimeter":
        return exact(name, number, own, region)
    if not is_equal(own["ramanujan"], number):
        return "not equal to Ramanujan's"
    return None if -EQUAL <= own["perimeter"] / number - 1 <= 5e-3 else "too far from Ramanujan's"


def line(name, number, own, region):
    # It walks along the line by adding steps.
    return None if is_equal(own[name], number, 1e-9 if "profile" in name else EQUAL) else "not equal"


def centres_on_sides(region):
    """the number of centres of pixels through which the sides of a polygon of whole corners go"""
    corners = list(zip(region[::2], region[1::2]))
    count = 0
    for (x1, y1), (x2, y2) in zip(corners, corners[1:] + corners[:1]):
        for row in range(int(min(y1, y2)), int(max(y1, y2))):
            across = (2 * row + 1 - 2 * y1) * (x2 - x1) + 2 * x1 * (y2 - y1)  # 2 x (y2 - y1)
            count += across % (y2 - y1) == 0 and across // (y2 - y1) % 2 == 1
    return count


def through_centres(name, number, own, region):
    if not name.endswith(".count"):
        return None
    return None if abs(own[name] - number) <= centres_on_sides(region) else "more than the centres on its sides"


def test_imagej_measures_rectangles_as_we_do(folder):
    compare(folder, "rectangle", box, exact)


def test_imagej_measures_ellipses_as_we_do(folder):
    compare(folder, "ellipse", box, ellipse)


def test_imagej_measures_polygons_as_we_do(folder):
    compare(folder, "polygon", polygon, exact)


def test_imagej_measures_polygons_that_cross_themselves_as_we_do(folder):
    compare(folder, "polygon", lambda chance, size: polygon(chance, size, crossing=True), exact)


def test_imagej_differs_in_centres_on_the_sides_of_polygons(folder):
    compare(folder, "polygon", lambda chance, size: polygon(chance, size, crossing=True, whole=True), through_centres)


def test_imagej_measures_lines_as_we_do(folder):
    compare(folder, "line", lambda chance, size: place(chance, size) + place(chance, size), line)
