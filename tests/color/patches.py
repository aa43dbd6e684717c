# Lays flat patches out in rows, converts and renders them, and reads the device values back.
import dataclasses
import itertools
import pathlib

import numpy
from PIL import Image

import pdf_values
from color_model import onto
from pdf_values import Name

import measure  # from ../tools, to which pdf_values has shown the way

SIDE = 5  # of a patch, in points, which are pixels
COLUMNS = 128
MIDDLE = SIDE // 2
GHOSTSCRIPT = ["gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-r72"]
SQUARE = f"0 0 {SIDE} {SIDE} re"
OPERATORS = {"DeviceGray": ("g", "G"), "DeviceRGB": ("rg", "RG"), "DeviceCMYK": ("k", "K")}


def numbers(values):
    return " ".join(f"{value:.5f}" for value in values)


# How a patch is painted: what selects the space, and what paints a colour of it.


@dataclasses.dataclass(frozen=True)
class Paint:
    select: str  # with the space's name
    paint: str  # with the colour's values


TEXT = f"{SQUARE} W n BT /Bars 60 Tf (A) Tj ET"  # the lowest part of a bar of the embedded font's first glyph
PAINTS = {
    "fill": Paint("/{} cs", f"{{}} scn {SQUARE} f"),
    "stroke": Paint("/{} CS", f"{{}} SCN {SIDE} w 0 {SIDE / 2} m {SIDE} {SIDE / 2} l S"),
    "text": Paint("/{} cs", f"{{}} scn {TEXT}"),
    "stroked text": Paint("/{} CS 20 w 1 Tr", f"{{}} SCN {TEXT}"),
    "glyph procedure": Paint("/{} cs", f"{{}} scn BT /Square {SIDE} Tf (A) Tj ET"),
    "stencil": Paint("/{} cs", f"{{}} scn {SIDE} 0 0 {SIDE} 0 0 cm BI /W 1 /H 1 /IM true /BPC 1 /F /AHx ID 00> EI"),
}
# The same by the operators of a device space.
OPERATOR_PAINTS = {
    "fill": Paint("", f"{{}} {{fill}} {SQUARE} f"),
    "stroke": Paint("", f"{{}} {{stroke}} {SIDE} w 0 {SIDE / 2} m {SIDE} {SIDE / 2} l S"),
    "text": Paint("", f"{{}} {{fill}} {TEXT}"),
    "stroked text": Paint("20 w 1 Tr", f"{{}} {{stroke}} {TEXT}"),
}


def fill(name, values):
    return f"/{name} cs {numbers(values)} scn {SQUARE} f"


def operator_fill(name, values):
    """The operator of a device space: g, rg or k."""
    return f"{numbers(values)} {OPERATORS[name][0]} {SQUARE} f"


def reference(asked, spaces):
    """The same colour by the plainest means; a CIE-based space is entered in `spaces`."""
    space, values = asked
    if isinstance(space, Name):
        return operator_fill(space, values)
    name = "X" + str(spaces.index(space) if space in spaces else len(spaces))
    if space not in spaces:
        spaces.append(space)
    return fill(name, values)


class Sheet:
    """Rows of patches, one below the other, at most COLUMNS in each."""

    def __init__(self, model):
        self.model = model
        self.rows = []  # (label, content, what each patch asks for)
        self.images = []  # their objects' text

    def add(self, label, content, asked):
        """A row: its content, and the space and values that each of its patches asks for."""
        at = len(self.rows)
        self.rows.append((label, f"q 1 0 0 1 0 {SIDE * at} cm {content}\nQ", asked))

    def patches(self, label, space, values, paint, name, **operators):
        """Colours of a space that the content calls by `name`."""
        for at in range(0, len(values), COLUMNS):
            part = values[at:at + COLUMNS]
            content = "\n".join(f"q 1 0 0 1 {SIDE * column} 0 cm {paint.paint.format(numbers(each), **operators)} Q"
                                for column, each in enumerate(part))
            self.add(label, f"{paint.select.format(name)}\n{content}", [self.model.ask(space, each) for each in part])

    def values_of(self, space, samples, bits):
        """The colours that the samples of an image stand for when it has no Decode."""
        if self.model.family(space) == "Indexed":
            return [list(each) for each in samples]
        top = (1 << bits) - 1
        return [[onto(value, (0, top), ends) for value, ends in zip(each, self.model.ranges(space), strict=True)]
                for each in samples]

    def image(self, label, space, samples, bits, name, inline=False):
        """An image of one row in a space that its dictionary calls by `name`."""
        samples = samples[:COLUMNS]
        data = pdf_values.pack(bits, *itertools.chain(*samples)).encode("latin-1").hex()
        matrix = f"{SIDE * len(samples)} 0 0 {SIDE} 0 0 cm"
        if inline:
            content = f"{matrix} BI /W {len(samples)} /H 1 /BPC {bits} /CS {name} /F /AHx ID\n{data}>\nEI"
        else:
            number = 900 + len(self.images)
            content = f"{matrix} /I{number} Do"
            self.images.append(f"{{{{object {number} 0}}}}\n{{{{stream << /Type /XObject /Subtype /Image "
                               f"/Width {len(samples)} /Height 1 /BitsPerComponent {bits} /ColorSpace {name} "
                               f"/Filter /ASCIIHexDecode >>}}}}\n{data}>\n{{{{endstream}}}}\nendobj\n")
        self.add(label, content, [self.model.ask(space, each) for each in self.values_of(space, samples, bits)])

    @property
    def box(self):
        return f"0 0 {SIDE * COLUMNS} {SIDE * len(self.rows)}"

    @property
    def content(self):
        return "\n".join(content for _, content, _ in self.rows)

    @property
    def xobjects(self):
        return " ".join(f"/I{900 + at} {900 + at} 0 R" for at in range(len(self.images)))

    def reference(self, target):
        """Writes the PDF that paints every patch by the plainest means."""
        spaces = []
        content = "\n".join(f"q 1 0 0 1 {SIDE * column} {SIDE * at} cm {reference(asked, spaces)} Q"
                            for at, (_, _, row) in enumerate(self.rows) for column, asked in enumerate(row))
        entries = " ".join(f"/X{at} {pdf_values.write(space)}" for at, space in enumerate(spaces))
        template = pathlib.Path(__file__).with_name("reference.in")
        text, _ = pdf_values.expand(template, box=self.box, spaces=entries,
                                    content=content)
        pdf_values.write_file(text, target)

    def cells(self, picture):
        """Yields label, column, what is asked for, and the device's values, of every patch."""
        for at, (label, _, row) in enumerate(self.rows):
            for column, asked in enumerate(row):
                yield label, column, asked, sample(picture, SIDE * column, SIDE * at)


def sample(picture, x, y):
    return picture[picture.shape[0] - 1 - y - MIDDLE, x + MIDDLE]


def convert(zorvan, pdf):
    """Converts a PDF, about which the program has nothing to say; returns the PostScript's path."""
    target = pdf.with_suffix(".ps")
    said = measure.check([zorvan, "--quiet", "--page-size=auto", pdf, target])
    if said:
        raise RuntimeError(f"{zorvan} says: {said}")
    return target


def render(device, source, *options, before=""):
    """The pages of a PDF or PostScript as arrays of device values (rows from the top); `before` is run first."""
    output = source.with_name(f"{source.stem}-{source.suffix[1:]}-{device}-%d.tif")
    said = measure.check([*GHOSTSCRIPT, *options, f"-sDEVICE={device}", f"-sOutputFile={output}", "-c", before, "-f",
                          source])
    if said:
        raise RuntimeError(f"Ghostscript says: {said[:2000]}")
    pages = (pathlib.Path(str(output) % number) for number in itertools.count(1))
    return [numpy.asarray(Image.open(page)).astype(int)
            for page in itertools.takewhile(pathlib.Path.exists, pages)]


END_OF_CONTENT = b"PDFVars/TermAll get exec end end"
PRINT = "/Print {count array astore {20 string cvs print ( ) print} forall (\\n) print} def\n"


def asking(postscript, queries):
    """The document with a query at the end of the content of each of its last pages."""
    pieces = postscript.read_bytes().split(END_OF_CONTENT)
    if len(pieces) <= len(queries):
        raise RuntimeError(f"{postscript} does not end its pages as expected")
    at = len(pieces) - len(queries) - 1
    text = END_OF_CONTENT.join(pieces[:at + 1])
    for query, piece in zip(queries, pieces[at + 1:]):
        text += f"{PRINT}{query}\n".encode("latin-1") + END_OF_CONTENT + piece
    target = postscript.with_name(f"{postscript.stem}-asking.ps")
    target.write_bytes(text)
    return target


def answers_of_pages(postscript, queries, before=""):
    """The lines that queries print at the ends of as many pages; `before` is run before the document."""
    return measure.check([*GHOSTSCRIPT, "-sDEVICE=nullpage", "-c", before, "-f",
                          asking(postscript, queries)]).splitlines()


def answers(postscript, query):
    """Each line of what a query prints where the last page's content ends, as words; Print prints the stack."""
    return [line.split() for line in answers_of_pages(postscript, [query])]
