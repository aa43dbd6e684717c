# Extended graphics states: what the device's own operators say of them when a page's content ends, and what they do.
"""Procedures are asked for their results, which have to be within EVALUATED of the PDF's functions; the device's
values within a step of 255 (ROUNDED) of what a transfer function makes of the tint.
"""
import pathlib
import unittest

import color_model
import patches
import pdf_values
from pdf_values import Reference

FOLDER = pathlib.Path(__file__).parent
EVALUATED = 0.0005
ROUNDED = 1
TINTS = (0, 0.125, 0.25, 0.3, 0.5, 0.625, 0.75, 0.9, 1)
SPOT_PLACES = ((-1, -1), (-0.5, 0.25), (0, 0), (0.3, -0.7), (0.75, 0.5), (1, 1))

COLORS = ((0, 0, 0), (0.5, 0.25, 0), (1, 1, 1), (0.2, 0.2, 0.2), (0.75, 0.6, 0.9), (1, 0, 0))

# What the device has before the document comes.
BLACK_OF_DEVICE = "{0.3 mul} setblackgeneration {0.2 mul} setundercolorremoval"
DEVICE = BLACK_OF_DEVICE + " {dup mul} settransfer 50 22 {add 2 div} setscreen"


def own_transfer(tint):
    return tint * tint


# The four colours' functions in the order of currentcolortransfer; a number is a function's object.
DIRECT = {"FunctionType": 2, "Domain": [0, 1], "N": 0.5}
CUBE = {"FunctionType": 2, "Domain": [0, 1], "N": 3}
TRANSFERS = {
    "Nothing": [own_transfer] * 4, "TrPower": [50] * 4, "TrDirect": [DIRECT] * 4, "TrStitched": [51] * 4,
    "TrSampled": [52] * 4, "TrCalculated": [53] * 4, "TrFour": [50, 51, 52, 53],
    "TrFourMixed": [lambda tint: tint, 50, own_transfer, CUBE], "TrIdentity": [lambda tint: tint] * 4,
    "TrDefault": [own_transfer] * 4, "TrBoth": [53] * 4, "TrBothDefault": [own_transfer] * 4,
}
BLACKS = {  # black generation and undercolour removal
    "Nothing": [lambda tint: 0.3 * tint, lambda tint: 0.2 * tint], "BgPower": [54, 55], "BgSampled": [52, 53],
    "BgBoth": [53, 52], "BgDefault": [lambda tint: 0.3 * tint, lambda tint: 0.2 * tint],
}


def line_spot(x, y):
    return -abs(y)


def round_spot(x, y):
    """The predefined spot function Round."""
    if abs(x) + abs(y) <= 1:
        return 1 - (x * x + y * y)
    return (abs(x) - 1) ** 2 + (abs(y) - 1) ** 2 - 1


SCREENS = {  # name, component: frequency, angle, spot function, transfer function
    ("Screen", ""): (45.5, 12.25, line_spot, None), ("ScreenFunction", ""): (60, 30, 72, 53),
    ("ScreenStitched", ""): (75, 15, 75, 51),
    ("ScreenSet", "Default"): (60, 30, 72, 53), ("ScreenSet", "Black"): (85, 45, round_spot, None),
    ("ScreenSet", "Spot One"): (75, 15, 75, 51),
    ("ScreenDefault", ""): (50, 22, lambda x, y: (x + y) / 2, None),
    ("Nothing", ""): (50, 22, lambda x, y: (x + y) / 2, None),
}
LINES = {  # stroke adjustment, smoothness, miter limit, dash array and phase, cap, join, width, flatness
    "Lines": [True, 0.25, 3.5, "[", 3, 1.5, 2, "]", 0.75, 1, 2, 2.5, 0.5],
    "LinesOther": [False, 0.0625, 12, "[", "]", 0, 2, 1, 0, 20],
}
LINE_QUERY = ("currentstrokeadjust = currentsmoothness = currentmiterlimit = currentdash exch ([) = {=} forall (]) = = "
              "currentlinecap = currentlinejoin = currentlinewidth = currentflat =")
STATES = list(dict.fromkeys([*TRANSFERS, *BLACKS, *(name for name, _ in SCREENS), *LINES]))


def page_text(number, name):
    return (f"{{{{object {number} 0}}}}\n<< /Type /Page /Parent 2 0 R /Contents {number + 1} 0 R >>\nendobj\n"
            f"{{{{object {number + 1} 0}}}}\n{{{{stream}}}}\n{name}\n{{{{endstream}}}}\nendobj\n")


def write_pages(contents, target, width=640):
    pages = "".join(page_text(100 + 2 * at, content) for at, content in enumerate(contents))
    kids = " ".join(f"{100 + 2 * at} 0 R" for at in range(len(contents)))
    text, objects = pdf_values.expand(FOLDER / "graphics_states.in", pages=pages, kids=kids, count=len(contents),
                                      width=width)
    pdf_values.write_file(text, target)
    return color_model.Model(objects)


class GraphicsStates(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        pdf = cls.folder / "graphics_states.pdf"
        cls.model = write_pages([f"/{name} gs" for name in STATES], pdf)
        cls.postscript = patches.convert(cls.zorvan, pdf)

    def ask(self, queries):
        """The words that the query of each state prints."""
        lines = patches.answers_of_pages(self.postscript, [queries.get(name, "") + " (/end) =" for name in STATES],
                                         f"{DEVICE}\n")
        texts = " ".join(lines).split("/end")
        return {name: text.split() for name, text in zip(STATES, texts)}

    def evaluate(self, function, *inputs):
        if callable(function):
            return function(*inputs)
        return self.model.evaluate(Reference(function) if isinstance(function, int) else function, inputs)[0]

    def compare(self, found, functions, places, label):
        expected = [self.evaluate(function, *place) for function in functions for place in places]
        self.assertEqual(len(found), len(expected), f"{label}: {found}")
        for at, (one, other) in enumerate(zip(map(float, found), expected)):
            self.assertLess(abs(one - other), EVALUATED, f"{label}, {at // len(places)} at {places[at % len(places)]}")

    def test_have_their_transfer_functions(self):
        sample = " ".join(f"{tint} 1 index exec =" for tint in TINTS)
        query = f"[currentcolortransfer] {{ {sample} pop }} forall"
        for name, words in self.ask(dict.fromkeys(TRANSFERS, query)).items():
            if name in TRANSFERS:
                self.compare(words, TRANSFERS[name], [(tint,) for tint in TINTS], name)

    def test_have_their_black_generation_and_undercolor_removal(self):
        sample = " ".join(f"{tint} 1 index exec =" for tint in TINTS)
        query = f"[currentblackgeneration currentundercolorremoval] {{ {sample} pop }} forall"
        for name, words in self.ask(dict.fromkeys(BLACKS, query)).items():
            if name in BLACKS:
                self.compare(words, BLACKS[name], [(tint,) for tint in TINTS], name)

    def test_have_their_screens(self):
        places = " ".join(f"{x} {y} 2 index exec =" for x, y in SPOT_PLACES)
        sample = " ".join(f"{tint} 1 index exec =" for tint in TINTS)
        for (name, component), (frequency, angle, spot, transfer) in SCREENS.items():
            part = f"({component}) cvn get" if component else ""
            query = (f"currenthalftone {part} dup /Frequency get = dup /Angle get = dup /SpotFunction get {places} pop "
                     f"/TransferFunction 2 copy known {{get {sample} pop}} {{pop pop}} ifelse")
            words = self.ask({name: query})[name]
            self.assertEqual([float(word) for word in words[:2]], [frequency, angle], (name, component))
            self.compare(words[2:2 + len(SPOT_PLACES)], [spot], SPOT_PLACES, (name, component))
            self.compare(words[2 + len(SPOT_PLACES):], [transfer] if transfer else [], [(tint,) for tint in TINTS],
                         (name, component, "transfer"))

    def test_have_their_line_parameters(self):
        answers = self.ask(dict.fromkeys(LINES, LINE_QUERY))
        for name, expected in LINES.items():
            plain = {"true": True, "false": False, "[": "[", "]": "]"}
            found = [plain[word] if word in plain else float(word) for word in answers[name]]
            self.assertEqual(found, expected, name)

    def test_transfer_what_is_painted(self):
        """On a device of grey levels, the fourth function."""
        pdf = self.folder / "tints.pdf"
        painted = [(name, tint) for name in TRANSFERS for tint in TINTS]
        content = "\n".join(f"q /{name} gs {tint} g {patches.SIDE * at} 0 {patches.SIDE} 20 re f Q"
                            for at, (name, tint) in enumerate(painted))
        model = write_pages([content], pdf, patches.SIDE * len(painted))
        postscript = patches.convert(self.zorvan, pdf)
        picture = patches.render("tiffgray", postscript, before=DEVICE)[0]
        for at, (name, tint) in enumerate(painted):
            expected = 255 * self.evaluate(TRANSFERS[name][3], tint)
            found = patches.sample(picture, patches.SIDE * at, 5)
            self.assertLessEqual(abs(found - expected), ROUNDED, f"{name} of {tint}: {found}, not {expected:.1f}")

    def test_generate_black_of_rgb(self):
        """Only Ghostscript's fast conversion uses these functions; it keeps the first that it meets."""
        for name, (generation, removal) in BLACKS.items():
            pdf = self.folder / f"{name}.pdf"
            content = "\n".join(f"{patches.numbers(color)} rg {patches.SIDE * at} 0 {patches.SIDE} 20 re f"
                                for at, color in enumerate(COLORS))
            write_pages([f"/{name} gs {content}"], pdf)
            picture = patches.render("tiff32nc", patches.convert(self.zorvan, pdf), "-dUseFastColor",
                                     before=BLACK_OF_DEVICE)[0]
            for at, color in enumerate(COLORS):
                inks = [1 - value for value in color]
                expected = [ink - self.evaluate(removal, min(inks)) for ink in inks]
                expected.append(self.evaluate(generation, min(inks)))
                found = patches.sample(picture, patches.SIDE * at, 5)
                away = max(abs(one - 255 * color_model.limit(other, 0, 1)) for one, other in zip(found, expected))
                self.assertLessEqual(away, ROUNDED, f"{name} of {color}: {found}, not {expected}")

    def test_have_their_font(self):
        """Two glyphs, each 12 points wide at its foot and 14 points of advance."""
        pdf = self.folder / "font.pdf"
        write_pages(["/Font gs BT 0 0 Td (AA) Tj ET"], pdf)
        picture = patches.render("tiffgray", patches.convert(self.zorvan, pdf))[0]
        foot = [bool(value < 128) for value in picture[-1, :30]]
        self.assertEqual(foot, [column % 14 < 12 and column < 28 for column in range(30)])
