# SPDX-License-Identifier: MIT
"""scikit-image finds the same components in the same order as the library."""
import os
import pathlib
import random

from program import run

# Debian's interpreter is the one that scikit-image is installed for.
PYTHON = "/usr/bin/python3"
TOOL = pathlib.Path(__file__).with_name("label_components.py")
PHOTOGRAPH = pathlib.Path(__file__).resolve().parents[1] / "data" / "png" / "bricks-gray.png"
SIZE = (160, 120)
COUNT = 500


def search(chance):
    """whole numbers: values, neighbours, areas, whether to fill holes, and the box of the region"""
    low = chance.randrange(256)
    least = chance.randrange(1, 6)
    width, height = (chance.randrange(1, side + 1) for side in SIZE)
    return [low, chance.randrange(low, 256), chance.choice((4, 8)), least, least + 10 ** chance.randrange(6),
            chance.randrange(2), chance.randrange(SIZE[0] - width + 1), chance.randrange(SIZE[1] - height + 1), width,
            height]


def found(*command):
    """a list of numbers for each component"""
    return [[float(number) for number in line.split("\t")] for line in run(*command).decode("utf-8").splitlines()]


def test_scikit_image_finds_the_components_that_we_find(folder):
    chance = random.Random(16)
    searches = folder / "searches.txt"
    searches.write_text("".join(" ".join(map(str, search(chance))) + "\n" for _ in range(COUNT)))
    tool = pathlib.Path(os.environ["ANNOTATION_FILES"]).with_name("measure_regions")
    ours = found(tool, "find", PHOTOGRAPH, searches)
    its = found(PYTHON, TOOL, PHOTOGRAPH, searches)
    assert len(ours) == len(its) > 6 * COUNT, (len(ours), len(its))
    for own, other in zip(ours, its):
        assert all(abs(a - b) <= 1e-12 * max(1.0, abs(b)) for a, b in zip(own, other)), (own, other)
