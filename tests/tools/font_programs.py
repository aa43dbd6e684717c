# Makes font programs of any number of glyphs, each of which shows its own number.
"""make(kind, count, name) gives a font program and the entries of its stream dictionary; kind is type1, cff or
truetype.

Glyph n is a row of four bars, as high as the last four decimal digits of n, with a dot above where n is odd, and 700
units wide. The codes from A (65) to z (122) show glyphs 1 to 58 or, in a larger font, glyphs spread evenly from 1 to
the last; their names are those of StandardEncoding, the other glyphs are called g2, g3 and so on. A font of more than
one glyph has a blank of 300 units, too.
"""
import io

from fontTools.agl import UV2AGL
from fontTools.fontBuilder import FontBuilder
from fontTools.misc import eexec
from fontTools.pens.basePen import BasePen
from fontTools.pens.t2CharStringPen import T2CharStringPen
from fontTools.pens.ttGlyphPen import TTGlyphPen

FIRST, LAST = 65, 122
WIDTH, BLANK, BAR = 700, 300, 150
STANDARD_NAMES = {96: "quoteleft"}  # elsewhere the names that go with Unicode are those of StandardEncoding
ROUND = 0.5523  # how far the control points of a quarter circle stand off its ends


def number_of_code(code, count):
    codes = LAST - FIRST
    return code - FIRST + 1 if count <= codes + 1 else 1 + (code - FIRST) * (count - 1) // codes


def names_by_number(count):
    codes = range(FIRST, min(LAST, FIRST + count - 1) + 1)
    shown = {number_of_code(code, count): STANDARD_NAMES.get(code) or UV2AGL[code] for code in codes}
    return {number: shown.get(number, f"g{number}") for number in range(1, count + 1)}


def draw_bars(pen, number):
    heights = [100 + 60 * int(digit) for digit in f"{number % 10000:04}"]
    pen.moveTo((0, 0))
    for at, height in enumerate(heights):
        pen.lineTo((BAR * at, height))
        pen.lineTo((BAR * (at + 1), height))
    pen.lineTo((4 * BAR, 0))
    pen.closePath()


def draw_dot(pen, x, y, radius, quadratic):
    """A dot of cubic curves, or of quadratic ones, which only TrueType has."""
    corner = radius if quadratic else radius * ROUND
    pen.moveTo((x + radius, y))
    for a, b in ((1, 0), (0, 1), (-1, 0), (0, -1)):
        one = (round(x + radius * a - corner * b), round(y + radius * b + corner * a))
        other = (round(x - radius * b + corner * a), round(y + radius * a + corner * b))
        end = (x - radius * b, y + radius * a)
        pen.qCurveTo(one, end) if quadratic else pen.curveTo(one, other, end)
    pen.closePath()


def draw(pen, number, quadratic=False):
    if number:
        draw_bars(pen, number)
        if number % 2:
            draw_dot(pen, 300, 800, 80, quadratic)
    return pen


class Type1Pen(BasePen):
    """Writes the charstring of a glyph (Adobe Type 1 Font Format, chapter 6)."""

    def __init__(self, width):
        super().__init__(None)
        self.code = self.numbers(0, width) + b"\x0d"
        self.point = (0, 0)

    @staticmethod
    def number(value):
        if -107 <= value <= 107:
            return bytes([value + 139])
        first, sign = (247, 1) if value > 0 else (251, -1)
        high, low = divmod(sign * value - 108, 256)
        return bytes([first + high, low])

    def numbers(self, *values):
        return b"".join(map(self.number, values))

    def add(self, operator, *points):
        for x, y in points:
            self.code += self.numbers(x - self.point[0], y - self.point[1])
            self.point = (x, y)
        self.code += bytes([operator])

    def _moveTo(self, point):
        self.add(21, point)

    def _lineTo(self, point):
        self.add(5, point)

    def _curveToOne(self, one, other, end):
        self.add(8, one, other, end)

    def _closePath(self):
        self.code += b"\x09"

    def charstring(self):
        return eexec.encrypt(bytes(4) + self.code + b"\x0e", 4330)[0]


TYPE1_FRONT = """%!PS-AdobeFont-1.0: {name} 001.000
11 dict begin
/FontInfo 2 dict dup begin /version (001.000) readonly def end readonly def
/FontName /{name} def
/PaintType 0 def
/FontType 1 def
/FontMatrix [0.001 0 0 0.001 0 0] readonly def
/Encoding StandardEncoding def
/FontBBox {{0 0 700 900}} readonly def
currentdict end
currentfile eexec
"""

TYPE1_PRIVATE = """dup /Private 8 dict dup begin
/RD {string currentfile exch readstring pop} executeonly def
/ND {noaccess def} executeonly def
/NP {noaccess put} executeonly def
/BlueValues [] def
/MinFeature {16 16} def
/password 5839 def
"""

TYPE1_END = b"end\nend\nreadonly put\nnoaccess put\ndup/FontName get exch definefont pop\nmark currentfile closefile\n"


def type1(numbers, name):
    front = TYPE1_FRONT.format(name=name).encode()
    private = TYPE1_PRIVATE.encode() + b"2 index /CharStrings %d dict dup begin\n" % len(numbers)
    for glyph, number in numbers.items():
        code = draw(Type1Pen(width(glyph)), number).charstring()
        private += b"/%s %d RD " % (glyph.encode(), len(code)) + code + b" ND\n"
    encrypted = eexec.encrypt(b"\0\0\0\0" + private + TYPE1_END, 55665)[0]
    trailer = b"\n" + 8 * (64 * b"0" + b"\n") + b"cleartomark\n"
    entries = f"/Length1 {len(front)} /Length2 {len(encrypted)} /Length3 {len(trailer)}"
    return front + encrypted + trailer, entries


def cff(numbers, name):
    builder = FontBuilder(1000, isTTF=False)
    builder.setupGlyphOrder(list(numbers))
    code = {glyph: draw(T2CharStringPen(width(glyph), None), number).getCharString()
            for glyph, number in numbers.items()}
    builder.setupCFF(name, {"FullName": name}, code, {})
    data = builder.font["CFF "].compile(builder.font)
    return data, "/Subtype /Type1C"


def truetype(numbers, name):
    builder = FontBuilder(1000, isTTF=True)
    builder.font.recalcTimestamp = False
    builder.setupHead(unitsPerEm=1000, created=0, modified=0)
    builder.setupGlyphOrder(list(numbers))
    codes = {STANDARD_NAMES.get(code) or UV2AGL[code]: code for code in [32, *range(FIRST, LAST + 1)]}
    builder.setupCharacterMap({codes[glyph]: glyph for glyph in numbers if glyph in codes})
    builder.setupGlyf({glyph: draw(TTGlyphPen(None), number, True).glyph() for glyph, number in numbers.items()})
    builder.setupHorizontalMetrics({glyph: (width(glyph), 0) for glyph in numbers})
    builder.setupHorizontalHeader(ascent=900, descent=0)
    builder.setupNameTable({"familyName": name, "styleName": "Regular", "psName": name})
    builder.setupPost(keepGlyphNames=False)
    file = io.BytesIO()
    builder.save(file)
    return file.getvalue(), f"/Length1 {len(file.getvalue())}"


def width(glyph):
    return BLANK if glyph == "space" else WIDTH


def make(kind, count, name):
    numbers = {".notdef": 0, **({"space": 0} if count > 1 else {})}
    numbers.update((glyph, number) for number, glyph in names_by_number(count).items())
    return {"type1": type1, "cff": cff, "truetype": truetype}[kind](numbers, name)
