# SPDX-License-Identifier: MIT
"""label_components.py IMAGE SEARCHES: what scikit-image finds, in the form of measure_regions find."""
import sys

import numpy
from scipy import ndimage
from skimage import io, measure


def tell(index, pixels, numbers):
    low, high, neighbours, least, most, fill, left, top, width, height = numbers
    part = pixels[top:top + height, left:left + width]
    mask = (part >= low) & (part <= high)
    if fill:  # what is enclosed hangs together by the other neighbours
        mask = ndimage.binary_fill_holes(mask, numpy.ones((3, 3)) if neighbours == 4 else None)
    for region in measure.regionprops(measure.label(mask, connectivity=neighbours // 4), part):
        if least <= region.area <= most:
            y, x = region.centroid
            box = region.bbox
            print(index, int(region.area), repr(x + left + 0.5), repr(y + top + 0.5), box[1] + left, box[0] + top,
                  box[3] + left, box[2] + top, repr(region.mean_intensity), sep="\t")


with open(sys.argv[2], encoding="ascii") as searches:
    for number, line in enumerate(searches):
        tell(number, io.imread(sys.argv[1]), [int(word) for word in line.split()])
