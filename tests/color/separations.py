# Plates: which inks a colour goes to, and what overprinting leaves on the others.
"""A device with plates gets the values as they are, so each must be within a step of 255 (ROUNDED)."""
import pathlib
import unittest
import urllib.parse

import numpy
from PIL import Image

import patches
import pdf_values

import measure  # from ../tools, to which pdf_values has shown the way

FOLDER = pathlib.Path(__file__).parent
ROUNDED = 1
PROCESS = ("Cyan", "Magenta", "Yellow", "Black")

# The spaces of the first page, by their names in the template, and their inks.
INKS = {
    "Gold": ["Gold"], "Blank": ["PANTONE 186 C"], "Braces": ["Varnish(dull)("], "Utf": ["Gr\u00fcn"],
    "Slash": ["Back\\slash"], "Cyan": ["Cyan"], "Magenta": ["Magenta"], "Yellow": ["Yellow"], "Black": ["Black"],
    "None": [], "Two": ["Gold", "PANTONE 186 C"], "Mixed": ["Cyan", "Gold", "Black"], "Without": [None, "Gold"],
    "Cmyk": list(PROCESS),
}
SPOTS = ("Gold", "PANTONE 186 C", "Varnish(dull)(", "Gr\u00fcn", "Back\\slash")
TINTS = (0, 0.2, 0.4, 0.6, 0.8, 1)

UNDERNEATH = {"Cyan": 0.2, "Magenta": 0.4, "Yellow": 0.6, "Black": 0.8, "Gold": 0.4}
FILLS = [usage for usage, paint in patches.PAINTS.items() if " CS" not in paint.select]
STROKES = [usage for usage in patches.PAINTS if usage not in FILLS]


def rows_of_inks():
    """Yields usage, the space's name, its values, and the inks that they lay on a blank sheet."""
    for name, inks in INKS.items():
        for usage in patches.PAINTS:
            for at, tint in enumerate(TINTS):
                values = [TINTS[(at + 2 * step) % len(TINTS)] for step in range(max(len(inks), 1))]
                yield usage, name, values, {ink: value for ink, value in zip(inks, values) if ink}
    for usage in patches.PAINTS:
        for tint in TINTS:
            yield usage, "All", [tint], dict.fromkeys(PROCESS + SPOTS, tint)


# What is painted over the two layers: the space, the values, and the inks that the space has.
OVER = {
    "Gold": ([1], {"Gold": 1}), "Cyan": ([0.6], {"Cyan": 0.6}),
    "Mixed": ([0.8, 0.2, 0], {"Cyan": 0.8, "Gold": 0.2, "Black": 0}),
    "Cmyk": ([0, 1, 0, 0.2], {"Cyan": 0, "Magenta": 1, "Yellow": 0, "Black": 0.2}),
    "Gray": ([0.4], {"Cyan": 0, "Magenta": 0, "Yellow": 0, "Black": 0.6}),
}
# Graphics states: are fills and strokes overprinted, and does the mode leave out the zeros of DeviceCMYK?
STATES = {
    "None": (False, False, False), "Neither": (False, False, False), "NeitherOne": (False, False, False),
    "Both": (True, True, False), "BothZero": (True, True, False), "BothOne": (True, True, True),
    "Fills": (True, False, True), "Strokes": (False, True, True),
    "StrokesAlone": (False, True, True), "FillsAlone": (True, False, True),  # what is not there is off
    "Multiply": (True, True, False), "MultiplyOff": (True, True, False), "MultiplyOne": (True, True, True),
    "Normal": (False, False, False),
}


# Images in those spaces, whose zeros are ink in either mode.
IMAGES = {"Gold": ("99", {"Gold": 0.6}), "Cmyk": ("33990000", {"Cyan": 0.2, "Magenta": 0.6, "Yellow": 0, "Black": 0})}


def image(name, samples):
    return patches.Paint("", f"{patches.SIDE} 0 0 {patches.SIDE} 0 0 cm BI /W 1 /H 1 /BPC 8 /CS /{name} /F /AHx ID "
                             f"{samples}> EI")


def rows_of_overprint():
    """Yields the graphics state, the paint, the space's name and values, and the inks that are there then."""
    for state, (fills, strokes, leaves_zeros) in STATES.items():
        for usage, paint in patches.PAINTS.items():
            kept = UNDERNEATH if (fills if usage in FILLS else strokes) else {}
            for name, (values, inks) in OVER.items():
                laid = {ink: value for ink, value in inks.items() if value or not (leaves_zeros and name == "Cmyk")}
                yield state, paint, name, values, {**kept, **laid}
            yield state, paint, "None", [1], UNDERNEATH
        for name, (samples, inks) in IMAGES.items():
            yield state, image(name, samples), name, [], {**(UNDERNEATH if fills else {}), **inks}


class Page:
    """Patches one after the other, and the inks that each of them must show."""

    def __init__(self):
        self.content = []
        self.expected = []

    def add(self, label, select, paint, inks):
        row, column = divmod(len(self.content), patches.COLUMNS)
        at = (patches.SIDE * column, patches.SIDE * row)
        self.content.append(f"q 1 0 0 1 {at[0]} {at[1]} cm {select} {paint} Q")
        self.expected.append((label, at, inks))

    def box(self):
        rows = -(-len(self.content) // patches.COLUMNS)
        return f"0 0 {patches.SIDE * patches.COLUMNS} {patches.SIDE * rows}"


def page_of_inks():
    page = Page()
    for usage, name, values, inks in rows_of_inks():
        paint = patches.PAINTS[usage]
        page.add(f"{usage} in {name} {values}", paint.select.format(name),
                 paint.paint.format(patches.numbers(values)), inks)
    return page


def page_of_overprint():
    page = Page()
    for state, paint, name, values, inks in rows_of_overprint():
        label = f"{state}: {paint.select} {paint.paint} of {name} {values}"
        page.add(label, f"/{state} gs {paint.select.format(name)}", paint.paint.format(patches.numbers(values)), inks)
    return page


class Separations(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = [page_of_inks(), page_of_overprint()]
        box = max((page.box() for page in cls.pages), key=lambda text: int(text.split()[-1]))
        inks, overprint = ("\n".join(page.content) for page in cls.pages)
        text, _ = pdf_values.expand(FOLDER / "separations.in", inks=inks, overprint=overprint, box=box, images="",
                                    xobjects="")
        pdf_values.write_file(text, cls.folder / "separations.pdf")
        postscript = patches.convert(cls.zorvan, cls.folder / "separations.pdf")
        said = measure.check([*patches.GHOSTSCRIPT, "-sDEVICE=tiffsep", f"-sOutputFile={cls.folder}/%d.tif",
                              postscript])
        if said:
            raise RuntimeError(f"Ghostscript says: {said[:2000]}")

    def plates(self, page):
        """The plates of a page by their inks' names, 255 where there is all the ink."""
        return {urllib.parse.unquote(path.name[2:-5]): 255 - numpy.asarray(Image.open(path)).astype(int)
                for path in self.folder.glob(f"{page}(*).tif")}

    def expect(self, number):
        plates, page, found = self.plates(number), self.pages[number - 1], []
        for label, at, inks in page.expected:
            ours = {ink: int(patches.sample(plate, *at)) for ink, plate in plates.items()}
            for ink in {*ours, *inks}:
                if abs(ours.get(ink, -99) - 255 * inks.get(ink, 0)) > ROUNDED:
                    found.append(f"{label}: {ink} is {ours.get(ink)}, not {255 * inks.get(ink, 0):.0f}")
        self.assertFalse(found, f"{len(found)} of {len(page.expected)} patches:\n" + "\n".join(found[:20]))

    def test_have_a_plate_for_every_ink_by_its_name(self):
        self.assertEqual(set(self.plates(1)), {*PROCESS, *SPOTS})

    def test_show_each_ink_on_its_plate_and_on_no_other(self):
        self.expect(1)

    def test_keep_what_overprinting_leaves(self):
        self.expect(2)
