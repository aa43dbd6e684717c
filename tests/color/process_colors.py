# Colour spaces on devices that have no inks but their own.
"""The tolerances, in steps of 255, and their reasons:

EXACT   A device colour reaches the device over another way than the plain operator: through a tint transform, whose
        results are rounded, or as samples of an image. Calibrated spaces reach the same colour management from
        Ghostscript's PDF reader and from PostScript, over dictionaries of numbers or procedures.
SHOWN   Ghostscript puts a space with Lab's decoding procedures through a coarse table of three dimensions, so a Lab
        colour is off by what the curve between two places bends. Its PDF reader does not, and it prints Lab spaces of
        the usual range in other colours altogether, so what counts is the formula. Clipping to the device's gamut
        bends the curve most, so colours nearer to its border than BORDER (of the linear range) are not measured.
"""
import itertools
import pathlib
import unittest

import color_model
import patches
import pdf_values
from pdf_values import Name

FOLDER = pathlib.Path(__file__).parent
DEVICES = ("tiff24nc", "tiff32nc")
EXACT = 1
SHOWN = 8
BORDER = 0.02
STEPS = {1: 18, 2: 5, 3: 5, 4: 3}  # of each component of a space with so many components
INK_STEPS = 3  # of three components that are inks: Ghostscript samples their tint transform anew for each patch
NOTHING = {"content": "", "more": "", "images": "", "xobjects": "", "box": "0 0 1 1"}


def steps_of(model, space):
    count = model.components(space)
    return INK_STEPS if model.family(space) == "DeviceN" and count == 3 else STEPS[count]


def grid(model, space):
    if model.family(space) == "Indexed":
        return [[value] for value in range(int(space[2]) + 1)]
    steps = steps_of(model, space)
    return list(itertools.product(*[[low + (high - low) * at / (steps - 1) for at in range(steps)]
                                    for low, high in model.ranges(space)]))


def beyond(model, space):
    """Colours outside the space, which stand for the nearest ones inside; numbers between two places of a table."""
    if model.family(space) == "Indexed":
        return [[-1], [-0.7], [space[2] + 1], [space[2] + 200], [0.8], [1.2]]
    ranges = model.ranges(space)
    return [[end + at * (high - low) for end, low, high in ends] for at, ends in (
        (-0.5, [(low, low, high) for low, high in ranges]), (0.75, [(high, low, high) for low, high in ranges]))]


def sample_grid(model, space, bits):
    if model.family(space) == "Indexed":
        return [[value] for value in range(min(1 << bits, int(space[2]) + 1))]
    top = (1 << min(bits, 8)) - 1
    steps = min(steps_of(model, space), top + 1)
    scale = 257 if bits == 16 else 1  # of sixteen bits only eight reach the device
    return list(itertools.product(*[[scale * (top * at // (steps - 1)) for at in range(steps)]]
                                  * model.components(space)))


def image_forms(model, space):
    """Bits per component and whether inline, of the images that can be measured in a space."""
    if model.family(space) == "Lab":  # fewer bits than 8 come out wrong of Ghostscript itself
        usual = "Range" not in model.objects.resolve(space[1])  # the only one that inline images are written for
        return [(bits, inline) for bits in (8, 16) for inline in (False, True) if usual or not inline]
    depths = (1, 4, 8) if model.family(space) == "Indexed" else (1, 2, 4, 8, 16)
    return itertools.product(depths, (False, True))


def sheet_of_spaces(objects, lab_tables):
    """The patches of the tables of Lab colours, or of all other spaces."""
    model = color_model.Model(objects)
    sheet = patches.Sheet(model)
    for name, value in objects.page(5)["ColorSpace"].items():
        space = objects.resolve(value)
        if (name == "IndexedLab") != lab_tables:
            continue
        colors = grid(model, space)
        for usage, paint in patches.PAINTS.items():
            sheet.patches(f"{name}, {usage}", space, colors if usage == "fill" else colors[::-5], paint, name)
        sheet.patches(f"{name}, beyond", space, beyond(model, space), patches.PAINTS["fill"], name)
        for bits, inline in image_forms(model, space):
            label = f"{name}, {'inline ' * inline}image of {bits} bits"
            written = "/" + name if inline else pdf_values.write(value)
            sheet.image(label, space, sample_grid(model, space, bits), bits, written, inline)
    return sheet


def paired(sheet, picture, reference, device):
    """Label, what is asked for, what a picture shows, and what the reference shows, of each patch of a sheet."""
    plain = sheet.cells(patches.render(device, reference)[0])
    return [(label, asked, found, other)
            for (label, _, asked, found), (_, _, _, other) in zip(sheet.cells(picture), plain, strict=True)]


class Measured(unittest.TestCase):
    """What its subclasses say about the patches of `cells`: label, asked, ours and the reference, by device."""

    cells = {}
    worst = {}  # by the label's first word, for the summary

    def expect(self, device, wanted, distance, tolerance):
        """The distance of each wanted patch is within the tolerance, and there are such patches."""
        found, count = [], 0
        for label, asked, ours, reference in self.cells[device]:
            if not wanted(label, asked):
                continue
            count += 1
            away = distance(asked, ours, reference)
            key = (type(self).__name__, device, label.split(",")[0])
            self.worst[key] = max(self.worst.get(key, 0), away)
            if away > tolerance:
                found.append(f"{label} on {device}: {describe(asked)} is {ours}, not {reference} ({away:.1f} off)")
        self.assertGreater(count, 12)
        self.assertFalse(found, f"{len(found)} of {count} patches:\n" + "\n".join(found[:12]))


def describe(asked):
    space, values = asked
    return f"{space if isinstance(space, Name) else space[0]} {patches.numbers(values)}"


def from_reference(_, ours, reference):
    return abs(ours - reference).max()


def from_formula(asked, ours, _):
    return abs(ours - color_model.display_bytes(*asked)).max()


def is_device(asked):
    return isinstance(asked[0], Name)


def is_calibrated(asked):
    return not is_device(asked) and asked[0][0] in ("CalGray", "CalRGB")


def is_lab(asked):
    return not is_device(asked) and asked[0][0] == "Lab"


class Spaces(Measured):
    lab_tables = False

    @classmethod
    def setUpClass(cls):
        _, objects = pdf_values.expand(FOLDER / "spaces.in", **NOTHING)
        sheet = sheet_of_spaces(objects, cls.lab_tables)
        text, _ = pdf_values.expand(FOLDER / "spaces.in", content=sheet.content, images="".join(sheet.images),
                                    xobjects=sheet.xobjects, box=sheet.box, more="")
        pdf, reference = cls.folder / "spaces.pdf", cls.folder / "plain.pdf"
        pdf_values.write_file(text, pdf)
        sheet.reference(reference)
        postscript = patches.convert(cls.zorvan, pdf)
        for device in DEVICES:
            cls.cells[device] = paired(sheet, patches.render(device, postscript)[0], reference, device)


class AllSpaces(Spaces):
    def test_device_colors_are_what_the_plain_operators_make(self):
        for device in DEVICES:
            self.expect(device, lambda _, asked: is_device(asked), from_reference, EXACT)

    def test_calibrated_colors_are_what_the_device_shows_of_the_pdf(self):
        for device in DEVICES:
            self.expect(device, lambda _, asked: is_calibrated(asked), from_reference, EXACT)

    def test_lab_colors_follow_the_formula(self):
        self.expect("tiff24nc", lambda _, asked: is_lab(asked) and color_model.in_gamut(*asked, BORDER),
                    from_formula, SHOWN)


class LabTables(Spaces):
    """An Indexed space's bytes are spread over the ranges of its Lab space."""

    lab_tables = True

    def test_follow_the_formula(self):
        self.expect("tiff24nc", lambda _, asked: color_model.in_gamut(*asked, BORDER), from_formula, SHOWN)


class TintTransforms(unittest.TestCase):
    """The procedures themselves, asked for their results at the end of the page."""

    def test_make_what_the_functions_make(self):
        numbers_of = [*range(50, 64), *range(70, 81)]
        more = " ".join(f"/More{number} {number} 0 R" for number in (78, 79, 80))
        content = "/More78 cs /More79 cs /More80 cs"
        text, objects = pdf_values.expand(FOLDER / "spaces.in", **{**NOTHING, "more": more, "content": content})
        model = color_model.Model(objects)
        pdf_values.write_file(text, self.folder / "tints.pdf")
        postscript = patches.convert(self.zorvan, self.folder / "tints.pdf")
        asked = [(number, values) for number in numbers_of for values in tint_grid(model, objects.page(number))]
        query = "".join(f"{patches.numbers(values)} /N{number} /ColorSpace findRes 3 get exec Print\n"
                        for number, values in asked)
        answers = patches.answers(postscript, query)
        for (number, values), answer in zip(asked, answers, strict=True):
            expected = model.evaluate(objects.page(number)[3], values)
            self.assertEqual(len(answer), len(expected), number)
            away = max(abs(float(one) - other) for one, other in zip(answer, expected))
            self.assertLess(away, 0.0005, f"{number}: {values} becomes {answer}, not {expected}")


def tint_grid(model, space):
    steps = {1: 41, 2: 9, 3: 5, 4: 4}[model.components(space)]
    return itertools.product([at / (steps - 1) for at in range(steps)], repeat=model.components(space))


class DefaultSpaces(Measured):
    """A page's and a form's own spaces for the device spaces, for as long as they run."""

    @classmethod
    def setUpClass(cls):
        _, objects = pdf_values.expand(FOLDER / "default_spaces.in", **dict.fromkeys(PAGES, ""), box="0 0 1 1",
                                       images="", xobjects="")
        sheets = {page: patches.Sheet(color_model.Model(objects)) for page in PAGES}
        for page, sheet in sheets.items():
            fill_page(sheet, *PAGES[page])
        texts = {page: sheet.content for page, sheet in sheets.items()}
        box = max((sheet.box for sheet in sheets.values()), key=lambda text: int(text.split()[-1]))
        pdf = cls.folder / "default_spaces.pdf"
        images = sheets["replaced"].images
        text, _ = pdf_values.expand(FOLDER / "default_spaces.in", **texts, box=box, images="".join(images),
                                    xobjects=sheets["replaced"].xobjects)
        pdf_values.write_file(text, pdf)
        postscript = patches.convert(cls.zorvan, pdf)
        references = []
        for page, sheet in sheets.items():
            references.append(cls.folder / f"{page}.pdf")
            sheet.reference(references[-1])
        for device in DEVICES:
            pictures = patches.render(device, postscript)
            cls.cells[device] = [patch for sheet, picture, reference in zip(sheets.values(), pictures, references,
                                                                            strict=True)
                                 for patch in paired(sheet, picture, reference, device)]

    def test_stand_for_the_device_spaces_and_go_with_their_content(self):
        for device in DEVICES:
            self.expect(device, lambda *_: True, from_reference, EXACT)


# Each page's rows: the space that stands for DeviceGray, DeviceRGB and DeviceCMYK, and what runs around them.
REPLACED = (pdf_values.Reference(20), pdf_values.Reference(21), pdf_values.Reference(22))
PLAIN = (Name("DeviceGray"), Name("DeviceRGB"), Name("DeviceCMYK"))
PAGES = {"replaced": (REPLACED, True), "plain": (PLAIN, False), "around": (REPLACED, False),
         "within": ((pdf_values.Reference(23), pdf_values.Reference(24), pdf_values.Reference(25)), False)}


def fill_page(sheet, spaces, with_images):
    for name, space in zip(("DeviceGray", "DeviceRGB", "DeviceCMYK"), spaces):
        device, model = Name(name), sheet.model
        colors = grid(model, device)[::-2]
        for usage, paint in patches.OPERATOR_PAINTS.items():
            fill, stroke = patches.OPERATORS[name]
            sheet.patches(f"{name}, {usage}", space, colors, paint, name, fill=fill, stroke=stroke)
        for usage, paint in patches.PAINTS.items():
            if usage in ("fill", "stroke"):
                sheet.patches(f"{name} by name, {usage}", space, colors, paint, name)
        if with_images:
            for bits in (1, 8):
                samples = sample_grid(model, device, bits)
                sheet.image(f"{name}, image of {bits} bits", space, samples, bits, "/" + name)
                sheet.image(f"{name}, inline image of {bits} bits", space, samples, bits, "/" + name, inline=True)
