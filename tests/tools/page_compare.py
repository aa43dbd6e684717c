# Tells whether two pictures of a page show the same, apart from what anti-aliasing does to edges.
"""The measure: a pixel's distance is how far its colour lies outside the colours of the other picture's
3 x 3 neighbourhood, both ways, in the channel where it is largest. So an edge that another engine smooths
otherwise, or lays one pixel further, costs nothing; a missing, additional or discoloured mark costs each of
its inner pixels. A page differs when more than `share` of its inked pixels are further apart than `level`, or
when a tile of 16 x 16 pixels has more than `tile` of them (a small mark that is missing on a full page).
"""
import dataclasses

import numpy
from PIL import Image

TILE = 16
WHITE = 245


@dataclasses.dataclass(frozen=True)
class Tolerance:
    level: int  # of 255
    share: float  # of the pixels that are inked in one of the pictures
    tile: float  # of one tile's pixels


# Engines turn CMYK into RGB by tables of their own, so between engines only gross differences count.
OTHER_ENGINE = Tolerance(level=96, share=0.01, tile=0.1)
SAME_ENGINE = Tolerance(level=40, share=0.005, tile=0.06)


def load(path):
    return numpy.asarray(Image.open(path).convert("RGB")).astype(numpy.int16)


def neighbourhood(picture):
    """The smallest and the largest value of each channel in each pixel's 3 x 3 neighbourhood."""
    padded = numpy.pad(picture, ((1, 1), (1, 1), (0, 0)), mode="edge")
    rows, columns = picture.shape[:2]
    views = [padded[y : y + rows, x : x + columns] for y in range(3) for x in range(3)]
    return numpy.minimum.reduce(views), numpy.maximum.reduce(views)


def distance(one, other):
    low, high = neighbourhood(other)
    return numpy.maximum(low - one, one - high).clip(0).max(axis=2)


def worst_tile(bad):
    rows, columns = (-(-side // TILE) for side in bad.shape)
    padded = numpy.zeros((rows * TILE, columns * TILE))
    padded[: bad.shape[0], : bad.shape[1]] = bad
    return padded.reshape(rows, TILE, columns, TILE).sum(axis=(1, 3)).max() / TILE**2


def differences(one, other, tolerance):
    """What is wrong between two pictures, as a sentence; an empty text when they show the same."""
    if any(abs(a - b) > 1 for a, b in zip(one.shape, other.shape)):
        return f"{one.shape[1]} x {one.shape[0]} pixels instead of {other.shape[1]} x {other.shape[0]}"
    rows, columns = (min(a, b) for a, b in zip(one.shape[:2], other.shape[:2]))
    one, other = one[:rows, :columns], other[:rows, :columns]
    bad = numpy.maximum(distance(one, other), distance(other, one)) > tolerance.level
    inked = (one.min(axis=2) < WHITE) | (other.min(axis=2) < WHITE)
    share, tile = bad.sum() / max(inked.sum(), 1), worst_tile(bad)
    if share <= tolerance.share and tile <= tolerance.tile:
        return ""
    return f"{share:.2%} of the inked pixels differ, {tile:.1%} in the worst tile"
