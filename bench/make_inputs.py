#!/usr/bin/env python3
# Makes the PDFs that script/bench times: one large vector page, documents of many small pages, a book, pictures and
# large composite fonts.
"""make_inputs.py FOLDER     writes vector_20m.pdf, pages_1000.pdf, pages_20000.pdf, text_5000.pdf, images_200m.pdf,
font_20m.pdf and fonts_1000.pdf into FOLDER; the same bytes each time"""
import io
import pathlib
import random
import struct
import sys
import zlib

from PIL import Image

VECTOR_BYTES = 20_000_000
PICTURES = 50
PICTURE_SIDE = 1180  # pixels: 4.2 MB of three colours
PHOTO_SIDE = 2500  # noise of this size is 3.8 MB of JPEG
GLYPHS = 65_000
POINTS = 98  # of a glyph: together with the other tables 20 MB


class Writer:
    """A PDF, object by object, with its cross-reference section."""

    def __init__(self, path):
        self.file = open(path, "wb")
        self.offsets = {}
        self.file.write(b"%PDF-1.4\n")

    def add(self, number, body):
        self.offsets[number] = self.file.tell()
        self.file.write(b"%d 0 obj\n" % number + body + b"\nendobj\n")

    def stream(self, number, data):
        self.packed(number, b"/Filter /FlateDecode", zlib.compress(data, 6))

    def packed(self, number, entries, data):
        self.add(number, b"<< %b /Length %d >>\nstream\n" % (entries, len(data)) + data + b"\nendstream")

    def finish(self):
        at, size = self.file.tell(), max(self.offsets) + 1
        entries = b"".join(b"%010d 00000 n \n" % self.offsets[number] for number in range(1, size))
        self.file.write(b"xref\n0 %d\n0000000000 65535 f \n" % size + entries)
        self.file.write(b"trailer\n<< /Size %d /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (size, at))
        self.file.close()


def drawing(chance, size):
    """At least `size` bytes of what maps and plans are made of: polylines, curves, rectangles, clips and colours."""

    def numbers(count):
        return " ".join(f"{chance.uniform(0, 800):.{chance.choice((0, 1, 2, 3))}f}" for _ in range(count))

    pieces, length = [], 0
    while length < size:
        lines = "\n".join(numbers(2) + " l" for _ in range(chance.randint(5, 60)))
        curves = "\n".join(numbers(6) + " c" for _ in range(chance.randint(1, 15)))
        colour = " ".join(f"{chance.random():.3f}" for _ in range(3))
        piece = (f"q\n{numbers(4)} re W n\n{colour} RG {colour} rg {chance.uniform(0.1, 3):.2f} w\n"
                 f"{numbers(2)} m\n{lines}\nS\n{numbers(2)} m\n{curves}\nf\nQ\n")
        pieces.append(piece)
        length += len(piece)
    return "".join(pieces).encode()


def text_page(chance):
    """A page of a book: forty lines of words, kerned as typesetters do, some in bold."""

    def word():
        letters = "".join(chance.choice("etaoinshrdlucmfwypvbgk") for _ in range(chance.randint(2, 9)))
        place = chance.randint(1, len(letters))
        return f"({letters[:place]}){chance.randint(-30, 30)}({letters[place:]} )"

    lines = ["BT", "/F0 10 Tf", "50 740 Td", "13 TL"]
    for _ in range(40):
        words = "".join(word() for _ in range(chance.randint(8, 13)))
        lines.append(f"[{words}]TJ T*")
        if chance.random() < 0.1:
            lines.append(f"/F1 10 Tf [{word()}]TJ /F0 10 Tf T*")
    return "\n".join(lines + ["ET"]).encode()


BOOK_FONTS = (b"/Resources << /Font << "
              b"/F0 << /Type /Font /Subtype /Type1 /BaseFont /Times-Roman /Encoding /WinAnsiEncoding >> "
              b"/F1 << /Type /Font /Subtype /Type1 /BaseFont /Times-Bold /Encoding /WinAnsiEncoding >> >> >>")


def document(path, contents, entries=b""):
    """A document of one page for each of `contents`, its page tree in nodes of a hundred pages. `entries` stand in the
    tree's root, from which the pages inherit them."""
    writer = Writer(path)
    nodes = -(-len(contents) // 100)
    first_page = 3 + nodes
    writer.add(1, b"<< /Type /Catalog /Pages 2 0 R >>")
    kids = b" ".join(b"%d 0 R" % (3 + node) for node in range(nodes))
    writer.add(2, b"<< /Type /Pages /Kids [%b] /Count %d /MediaBox [0 0 800 800] %b >>" % (kids, len(contents), entries))
    for node in range(nodes):
        pages = range(100 * node, min(100 * node + 100, len(contents)))
        kids = b" ".join(b"%d 0 R" % (first_page + 2 * page) for page in pages)
        writer.add(3 + node, b"<< /Type /Pages /Parent 2 0 R /Kids [%b] /Count %d >>" % (kids, len(pages)))
    for page, content in enumerate(contents):
        number = first_page + 2 * page
        writer.add(number, b"<< /Type /Page /Parent %d 0 R /Contents %d 0 R >>" % (3 + page // 100, number + 1))
        writer.stream(number + 1, content)
    writer.finish()


def image_entries(side, decoder):
    entries = b"/Subtype /Image /Width %d /Height %d /BitsPerComponent 8 /ColorSpace /DeviceRGB /Filter /%b"
    return entries % (side, side, decoder)


def photo(chance):
    """A JPEG that does not compress well, as those of a good camera do not."""
    noise = Image.frombytes("RGB", (PHOTO_SIDE, PHOTO_SIDE), chance.randbytes(3 * PHOTO_SIDE * PHOTO_SIDE))
    out = io.BytesIO()
    noise.save(out, "JPEG", quality=75)
    return out.getvalue()


def pictures(path, chance):
    """A picture on each page: noise in Flate, and the same photo as an object of its own each time, in turn."""
    writer = Writer(path)
    jpeg = photo(chance)
    writer.add(1, b"<< /Type /Catalog /Pages 2 0 R >>")
    kids = b" ".join(b"%d 0 R" % (4 + 2 * page) for page in range(PICTURES))
    writer.add(2, b"<< /Type /Pages /Kids [%b] /Count %d /MediaBox [0 0 600 600] >>" % (kids, PICTURES))
    writer.stream(3, b"q 600 0 0 600 0 0 cm /I Do Q")
    for page in range(PICTURES):
        number = 4 + 2 * page
        resources = b"<< /XObject << /I %d 0 R >> >>" % (number + 1)
        writer.add(number, b"<< /Type /Page /Parent 2 0 R /Contents 3 0 R /Resources %b >>" % resources)
        if page % 2:
            writer.packed(number + 1, image_entries(PHOTO_SIDE, b"DCTDecode"), jpeg)
        else:
            noise = zlib.compress(chance.randbytes(3 * PICTURE_SIDE * PICTURE_SIDE), 1)
            writer.packed(number + 1, image_entries(PICTURE_SIDE, b"FlateDecode"), noise)
    writer.finish()


def glyph(chance):
    """A closed line through points whose distances are a byte each way, with a flag for its sign."""
    signs = bytes(0x07 | (byte & 0x30) for byte in range(256))
    flags = chance.randbytes(POINTS).translate(signs)
    steps = chance.randbytes(2 * POINTS).translate(bytes(byte & 0x3F for byte in range(256)))
    return struct.pack(">h4hHH", 1, 0, 0, 1000, 1000, POINTS - 1, 0) + flags + steps


def true_type(chance):
    """A font of many glyphs, each its own drawing, 1,000 units wide."""
    glyphs = [glyph(chance) for _ in range(GLYPHS)]
    glyphs = [data + b"\0" * (len(data) % 2) for data in glyphs]
    places = [0]
    for data in glyphs:
        places.append(places[-1] + len(data))
    tables = {
        b"glyf": b"".join(glyphs),
        b"head": struct.pack(">IIIIHH16x4hHHhhh", 0x10000, 0, 0, 0x5F0F3CF5, 0, 1000, 0, 0, 1000, 1000, 0, 8, 2, 1, 0),
        b"hhea": struct.pack(">IhhhH22xH", 0x10000, 900, -100, 0, 1000, 1),
        b"hmtx": struct.pack(">HH", 1000, 0) + bytes(2 * (GLYPHS - 1)),
        b"loca": struct.pack(f">{GLYPHS + 1}I", *places),
        b"maxp": struct.pack(">IHHH22x", 0x10000, GLYPHS, POINTS, 1),
    }
    directory, data = struct.pack(">IHHHH", 0x10000, len(tables), 64, 2, 32), b""
    start = len(directory) + 16 * len(tables)
    for tag, table in tables.items():
        directory += tag + struct.pack(">III", 0, start + len(data), len(table))
        data += table + bytes(-len(table) % 4)
    return directory + data


def add_composite_font(writer, number, name, program):
    """Four objects: the font, its CID-keyed font, the descriptor and the program."""
    writer.add(number, b"<< /Type /Font /Subtype /Type0 /BaseFont /%b /Encoding /Identity-H "
               b"/DescendantFonts [%d 0 R] >>" % (name, number + 1))
    writer.add(number + 1, b"<< /Type /Font /Subtype /CIDFontType2 /BaseFont /%b /FontDescriptor %d 0 R /DW 1000 "
               b"/CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) /Supplement 0 >> >>" % (name, number + 2))
    writer.add(number + 2, b"<< /Type /FontDescriptor /FontName /%b /Flags 4 /FontBBox [0 0 1000 1000] /ItalicAngle 0 "
               b"/Ascent 900 /Descent -100 /CapHeight 900 /StemV 80 /FontFile2 %d 0 R >>" % (name, number + 3))
    writer.packed(number + 3, b"/Filter /FlateDecode", program)


def fonts(path, pages, count, program):
    """A document of that many pages, each of which shows two glyphs in each of that many fonts."""
    writer = Writer(path)
    first_font, first_page = 5, 5 + 4 * count
    writer.add(1, b"<< /Type /Catalog /Pages 2 0 R >>")
    kids = b" ".join(b"%d 0 R" % (first_page + page) for page in range(pages))
    writer.add(2, b"<< /Type /Pages /Kids [%b] /Count %d /MediaBox [0 0 600 600] /Resources 3 0 R >>" % (kids, pages))
    names = b" ".join(b"/F%d %d 0 R" % (font, first_font + 4 * font) for font in range(count))
    writer.add(3, b"<< /Font << %b >> >>" % names)
    shown = b" ".join(b"/F%d 20 Tf 0 50 Td <%04x%04x> Tj" % (font, 1 + font, GLYPHS - 1) for font in range(count))
    writer.stream(4, b"BT 50 50 Td %b ET" % shown)
    for font in range(count):
        add_composite_font(writer, first_font + 4 * font, b"Large%d" % font, program)
    for page in range(pages):
        writer.add(first_page + page, b"<< /Type /Page /Parent 2 0 R /Contents 4 0 R >>")
    writer.finish()


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    chance = random.Random(1)
    document(folder / "vector_20m.pdf", [drawing(chance, VECTOR_BYTES)])
    small = [drawing(chance, 600) for _ in range(100)]
    for count in (1000, 20000):
        document(folder / f"pages_{count}.pdf", [small[page % 100] for page in range(count)])
    book = [text_page(chance) for _ in range(200)]
    document(folder / "text_5000.pdf", [book[page % 200] for page in range(5000)], BOOK_FONTS)
    pictures(folder / "images_200m.pdf", chance)
    program = zlib.compress(true_type(chance), 6)
    fonts(folder / "font_20m.pdf", 1, 1, program)
    fonts(folder / "fonts_1000.pdf", 1000, 5, program)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
