# The predefined spot functions: their values, and the dots that they grow into.
"""The values must be those of the published formulas (PDF Reference, predefined spot functions), but for EVALUATED of
rounding. The dots must be those that Ghostscript itself prints of the PDF, pixel for pixel; its reader does not know
UNKNOWN and keeps the device's own screen. The share of ink is that of the tint, but for LEVELS: a cell of 30 x 30
pixels has 900 places for 256 levels.
"""
import math
import pathlib
import unittest

import numpy
from PIL import Image

import patches
import pdf_values

import measure  # from ../tools, to which pdf_values has shown the way

FOLDER = pathlib.Path(__file__).parent
EVALUATED = 0.0001
TINTS = (0.25, 0.5, 0.75)
PATCH = 43.2  # points: three cells of 30 pixels
RESOLUTION, FREQUENCY = 150, 5
PLACES = [(x / 8, y / 8) for x in range(-8, 9) for y in range(-8, 9)]
UNKNOWN = "DoubleDot"
LEVELS = 0.005


def sine(turns):
    return math.sin(2 * math.pi * turns)


def cosine(turns):
    return math.cos(2 * math.pi * turns)


def rounded_corner(x, y):
    return (abs(x) - 1) ** 2 + (abs(y) - 1) ** 2 - 1


def ellipse(x, y):
    x, y = abs(x), abs(y)
    edge = 3 * x + 4 * y - 3
    if edge < 0:
        return 1 - (x**2 + (y / 0.75) ** 2) / 4
    return ((1 - x) ** 2 + ((1 - y) / 0.75) ** 2) / 4 - 1 if edge > 1 else 0.5 - edge


def diamond(x, y):
    both = abs(x) + abs(y)
    if both <= 0.75:
        return 1 - (x**2 + y**2)
    return 1 - (0.85 * abs(x) + abs(y)) if both <= 1.23 else rounded_corner(x, y)


FORMULAS = {
    "CosineDot": lambda x, y: (cosine(x / 2) + cosine(y / 2)) / 2,
    "Cross": lambda x, y: -min(abs(x), abs(y)),
    "Diamond": diamond,
    "Double": lambda x, y: (sine(x / 2) + sine(y)) / 2,
    "DoubleDot": lambda x, y: (sine(x) + sine(y)) / 2,
    "Ellipse": ellipse,
    "EllipseA": lambda x, y: 1 - (x**2 + 0.9 * y**2),
    "EllipseB": lambda x, y: 1 - math.sqrt(x**2 + 0.625 * y**2),
    "EllipseC": lambda x, y: 1 - (0.9 * x**2 + y**2),
    "InvertedDouble": lambda x, y: -(sine(x / 2) + sine(y)) / 2,
    "InvertedDoubleDot": lambda x, y: -(sine(x) + sine(y)) / 2,
    "InvertedEllipseA": lambda x, y: x**2 + 0.9 * y**2 - 1,
    "InvertedEllipseC": lambda x, y: 0.9 * x**2 + y**2 - 1,
    "InvertedSimpleDot": lambda x, y: x**2 + y**2 - 1,
    "Line": lambda x, y: -abs(y),
    "LineX": lambda x, y: x,
    "LineY": lambda x, y: y,
    "Rhomboid": lambda x, y: (0.9 * abs(x) + abs(y)) / 2,
    "Round": lambda x, y: 1 - (x**2 + y**2) if abs(x) + abs(y) <= 1 else rounded_corner(x, y),
    "SimpleDot": lambda x, y: 1 - (x**2 + y**2),
    "Square": lambda x, y: -max(abs(x), abs(y)),
}


def state(number, name):
    return (f"{{{{object {number} 0}}}}\n<< /Type /ExtGState /HT << /Type /Halftone /HalftoneType 1 "
            f"/Frequency {FREQUENCY} /Angle 0 /SpotFunction /{name} >> >>\nendobj\n")


def page(number, name):
    return (f"{{{{object {number} 0}}}}\n<< /Type /Page /Parent 2 0 R /Contents {number + 1} 0 R >>\nendobj\n"
            f"{{{{object {number + 1} 0}}}}\n{{{{stream}}}}\n/{name} gs\n{{{{endstream}}}}\nendobj\n")


def painted():
    return "\n".join(f"q /{name} gs {tint} g {PATCH * column:.1f} {PATCH * row:.1f} {PATCH} {PATCH} re f Q"
                     for column, name in enumerate(FORMULAS) for row, tint in enumerate(TINTS))


def write(target, with_pages):
    states = {name: 100 + at for at, name in enumerate(FORMULAS)}
    pages = {name: 200 + 2 * at for at, name in enumerate(FORMULAS)} if with_pages else {}
    objects = "".join([*(state(number, name) for name, number in states.items()),
                       *(page(number, name) for name, number in pages.items())])
    text, _ = pdf_values.expand(FOLDER / "spot_functions.in", objects=objects, count=1 + len(pages),
                                kids=" ".join(f"{number} 0 R" for number in pages.values()), content=painted(),
                                states=" ".join(f"/{name} {number} 0 R" for name, number in states.items()),
                                box=f"0 0 {PATCH * len(FORMULAS):.1f} {PATCH * len(TINTS):.1f}")
    pdf_values.write_file(text, target)
    return target


def bitmap(source):
    """The page in black (True) and white."""
    output = source.with_name(source.name + ".pbm")
    said = measure.check([*patches.GHOSTSCRIPT, f"-r{RESOLUTION}", "-sDEVICE=pbmraw", "-o", output, "-c",
                          "{} settransfer", "-f", source])
    if said:
        raise RuntimeError(f"Ghostscript says: {said[:2000]}")
    return ~numpy.asarray(Image.open(output))


def patch(picture, column, row):
    side = round(PATCH * RESOLUTION / 72)
    bottom = picture.shape[0] - row * side
    return picture[bottom - side:bottom, column * side:(column + 1) * side]


class SpotFunctions(unittest.TestCase):
    def test_have_the_published_values(self):
        pdf = write(self.folder / "values.pdf", with_pages=True)
        query = "currenthalftone /SpotFunction get " + " ".join(f"{x} {y} 2 index exec =" for x, y in PLACES) + " pop"
        words = patches.answers_of_pages(patches.convert(self.zorvan, pdf), [query] * len(FORMULAS))
        self.assertEqual(len(words), len(FORMULAS) * len(PLACES))
        for at, word in enumerate(words):
            name, place = list(FORMULAS)[at // len(PLACES)], PLACES[at % len(PLACES)]
            expected = FORMULAS[name](*place)
            self.assertLess(abs(float(word) - expected), EVALUATED, f"{name} at {place}: {word}, not {expected}")

    def test_grow_the_dots_that_the_pdf_has(self):
        pdf = write(self.folder / "dots.pdf", with_pages=False)
        ours, theirs = bitmap(patches.convert(self.zorvan, pdf)), bitmap(pdf)
        self.assertEqual(ours.shape, theirs.shape)
        found = {}
        for column, name in enumerate(FORMULAS):
            for row, tint in enumerate(TINTS):
                one, other = (patch(picture, column, row) for picture in (ours, theirs))
                ink = one.mean()
                self.assertLess(abs(ink - (1 - tint)), LEVELS, f"{name} of {tint} has ink of {ink:.3f}")
                differing = int((one != other).sum())
                if differing and name != UNKNOWN:
                    found[name, tint] = differing
        self.assertFalse(found)
