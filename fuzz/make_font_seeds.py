#!/usr/bin/env python3
"""Writes the seeds of the font parsers' fuzz targets: small files with one trait each, beside this script.

Run it again after a change here; the files are checked in, since the test run replays them.
"""

import pathlib
import struct

SEEDS = pathlib.Path(__file__).resolve().parent / "seeds"


def write(target, seeds):
    folder = SEEDS / target
    folder.mkdir(parents=True, exist_ok=True)
    for name, data in seeds.items():
        (folder / name).write_bytes(data)


def words(*numbers):
    return b"".join(struct.pack(">H", number & 0xFFFF) for number in numbers)


# --- TrueType (Apple, "TrueType Reference Manual", chapter 6). The first byte: 0 by cmap, 1 by numbers.


def true_type(tables, by_numbers=False):
    """`tables`: tag -> data, put one behind the other after the directory."""
    offset = 12 + 16 * len(tables)
    directory = words(0x0001, 0x0000, len(tables), 0, 0, 0)
    for tag, data in tables.items():
        directory += tag.encode() + struct.pack(">III", 0, offset, len(data))
        offset += len(data)
    return bytes([by_numbers]) + directory + b"".join(tables.values())


def head(long_offsets=0):
    return bytes(36) + words(-10, -20, 1000, 900) + bytes(6) + words(long_offsets) + bytes(4)


def maxp(glyphs):
    return words(1, 0, glyphs) + bytes(26)


def cmap(*subtables):
    """`subtables`: (platform, encoding, data)."""
    offset = 4 + 8 * len(subtables)
    records = words(0, len(subtables))
    for platform, encoding, data in subtables:
        records += words(platform, encoding) + struct.pack(">I", offset)
        offset += len(data)
    return records + b"".join(data for _, _, data in subtables)


def subtable(number, data):
    return words(number, 6 + len(data), 0) + data


def byte_encoding():
    return subtable(0, bytes(range(256)))


def high_bytes():
    """Sub-header 0 is for one-byte codes, sub-header 1 for those that begin with 0x81."""
    keys = words(*(8 if high == 0x81 else 0 for high in range(256)))
    one_byte = words(0x20, 2, 0, 2 + 8)  # from the place of this number to the first glyph
    two_byte = words(0x40, 3, 5, 2 + 4)
    return subtable(2, keys + one_byte + two_byte + words(1, 2, 3, 0, 4))


def segments(*rows, glyphs=()):
    """`rows`: (first, last, delta, range offset)."""
    firsts, lasts, deltas, ranges = zip(*rows)
    search = words(2 * len(rows), 0, 0, 0)
    return subtable(4, search + words(*lasts, 0, *firsts, *deltas, *ranges, *glyphs))


def trimmed(first, *glyphs):
    return subtable(6, words(first, len(glyphs), *glyphs))


def mapped(*subtables):
    return true_type({"head": head(), "maxp": maxp(4), "cmap": cmap(*subtables)})


def numbered(glyphs, places, long_offsets):
    loca = bytes(places * (4 if long_offsets else 2))
    return true_type({"head": head(long_offsets), "maxp": maxp(glyphs), "loca": loca}, by_numbers=True)


LAST = (0xFFFF, 0xFFFF, 1, 0)
SYMBOL = segments((0xF020, 0xF07E, 1 - 0xF020, 0), LAST)
THROUGH_RANGE = segments((65, 67, 10, 4), LAST, glyphs=(7, 0, 9))

write("font_true_type", {
    "format_0": mapped((1, 0, byte_encoding())),
    "format_2": mapped((3, 4, high_bytes())),
    "format_4": mapped((3, 0, SYMBOL)),
    "format_4_range": mapped((3, 1, THROUGH_RANGE)),
    "format_4_range_beyond": mapped((3, 1, segments((65, 90, 0, 0x7000), LAST))),
    "format_4_overlapping": mapped((3, 1, segments(*[(0, 0xFFFF, 1, 0)] * 100))),
    "format_6": mapped((1, 0, trimmed(32, 1, 2, 0, 3))),
    "format_6_beyond": mapped((1, 0, trimmed(0xFFFE, 1, 2, 3, 4))),
    "format_12": mapped((3, 10, subtable(12, bytes(10)))),
    "undefined_format": mapped((3, 1, subtable(5, b"")), (1, 0, trimmed(65, 1))),
    "two_subtables": mapped((3, 1, THROUGH_RANGE), (1, 0, trimmed(65, 1, 2)), (0, 3, b"")),
    "no_cmap": true_type({"head": head()}),
    "cmap_cut": mapped((3, 0, SYMBOL))[:-6],
    "directory_cut": mapped((3, 0, SYMBOL))[:40],
    "numbers_short": numbered(glyphs=3, places=4, long_offsets=0),
    "numbers_long": numbered(glyphs=3, places=4, long_offsets=1),
    "numbers_without_end": numbered(glyphs=3, places=3, long_offsets=0),
    "numbers_most": numbered(glyphs=0xFFFF, places=4, long_offsets=0),
})


# --- Compact programs (Adobe TN 5176).


def index(*entries, offset_size=1):
    if not entries:
        return words(0)
    offset = 1
    offsets = [offset]
    for entry in entries:
        offset += len(entry)
        offsets.append(offset)
    packed = b"".join(number.to_bytes(offset_size, "big") for number in offsets)
    return words(len(entries)) + bytes([offset_size]) + packed + b"".join(entries)


def compact(*names, offset_size=1):
    top_dicts = index(*[b"\x8b\x11"] * len(names))
    return bytes([1, 0, 4, 1]) + index(*names, offset_size=offset_size) + top_dicts + index() + index()


HEADER = bytes([1, 0, 4, 1])

write("font_compact", {
    "one_name": compact(b"ABCDEF+Sample"),
    "several_names": compact(b"First", b"Second", b"Third"),
    "offsets_of_four": compact(b"First", b"Second", offset_size=4),
    "longest": compact(b"L" * 126, offset_size=2),
    "too_long": compact(b"Short", b"L" * 127, offset_size=2),
    "unprintable": compact(b"Kept", b"with blank", b"\0removed", b""),
    "no_names": compact(),
    "offsets_in_disorder": HEADER + words(2) + bytes([1, 4, 1, 4]) + b"abc",
    "offsets_beyond": HEADER + words(1) + bytes([4]) + b"\0\0\0\1\xff\xff\xff\xff" + b"abc",
    "offset_size_0": HEADER + words(1) + bytes([0, 1, 4]) + b"abc",
    "offset_size_5": HEADER + words(1) + bytes([5]) + bytes(10) + b"abc",
    "index_cut": HEADER + words(0x0100) + bytes([2, 0, 1]),
    "header_cut": HEADER[:3],
})


# --- Type 1 programs (Adobe Type 1 Font Format). The first eight bytes: Length1 and Length2.

CLEAR = b"%!PS-AdobeFont-1.0: Sample\n/FontName /Sample def\ncurrentfile eexec\n"
ENCRYPTED = bytes(range(0x80, 0xA0)) + b"\0\r\n\xff"
TRAILER = (b"0" * 64 + b"\n") * 8 + b"cleartomark\n"
PLAIN = CLEAR + ENCRYPTED + TRAILER


def declared(length1, length2, program):
    return struct.pack("<II", length1, length2) + program


def segment(kind, data):
    return bytes([0x80, kind]) + struct.pack("<I", len(data)) + data


PFB = segment(1, CLEAR) + segment(2, ENCRYPTED) + segment(1, TRAILER) + b"\x80\x03"
DIGITS = b"\n".join(ENCRYPTED.hex().encode()[i:i + 20] for i in range(0, 2 * len(ENCRYPTED), 20))
C, E = len(CLEAR), len(ENCRYPTED)

write("font_type1", {
    "exact": declared(C, E, PLAIN),
    "undeclared": declared(0, 0, PLAIN),
    "length1_short": declared(C - 9, E + 9, PLAIN),
    "length1_long": declared(C + 5, E - 5, PLAIN),
    "length1_far": declared(C + 40, E, PLAIN),
    "length2_beyond": declared(C, 0xFFFFFFFF, PLAIN),
    "length1_beyond": declared(0xFFFFFFFF, E, PLAIN),
    "both_beyond": declared(0xFFFFFFFF, 0xFFFFFFFF, PLAIN),
    "no_trailer": declared(C, 0, CLEAR + ENCRYPTED),
    "no_eexec": declared(0, 0, b"%!PS-AdobeFont-1.0: Sample\n"),
    "nothing": declared(0, 0, b""),
    "digits": declared(C, len(DIGITS), CLEAR + DIGITS + b"\n" + TRAILER),
    "digits_undeclared": declared(0, 0, CLEAR + DIGITS + b"\n" + TRAILER),
    "pfb": declared(C, E, PFB),
    "pfb_undeclared": declared(0, 0, PFB),
    "pfb_digits": declared(0, 0, segment(1, CLEAR) + segment(2, DIGITS)),
    "pfb_many_segments": declared(0, 0, segment(1, CLEAR[:20]) + segment(1, CLEAR[20:]) +
                                  segment(2, ENCRYPTED[:1]) + segment(2, ENCRYPTED[1:])),
    "pfb_cut": declared(0, 0, PFB[:C + 20]),
    "pfb_length_of_four_billion": declared(0, 0, b"\x80\x01\xff\xff\xff\xff" + CLEAR),
    "pfb_empty": declared(0, 0, segment(1, b"")),
})


# --- Composite fonts: a CMap behind flags and its name; a CID-keyed font behind flags and the lengths of its parts.

DOWNWARDS, OF_ITSELF, NAMELESS = 1, 2, 4
CMAP = b"""/CIDInit /ProcSet findresource begin 12 dict begin begincmap
/CMapName /Own def 1 begincodespacerange <0000> <ffff> endcodespacerange
1 begincidrange <0020> <007e> 1 endcidrange endcmap
CMapName currentdict /CMap defineresource pop end end"""


def named(flags, name, program=CMAP):
    return bytes([flags, len(name)]) + name + program


write("font_cmap", {
    "named": named(0, b"Own"),
    "downwards": named(DOWNWARDS, b"Own-V"),
    "of_itself": named(OF_ITSELF, b"Own"),
    "nameless": named(NAMELESS, b""),
    "odd_name": named(0, b"a (b) /c\n%%EndResource\0"),
    "empty_name": named(0, b""),
    "within_comments": named(0, b"Own", b"%!PS\n%%BeginResource: CMap (Own)\n" + CMAP + b"\n%%EndResource\n%%EOF\n"),
    "no_cmap": named(0, b"Own", b"quit"),
    "nothing": b"",
})

MAPPED, DOWN, BY_UNICODE, REPEATED = 1, 2, 4, 8


def keyed(flags, places=b"", widths=b"", program=numbered(glyphs=3, places=4, long_offsets=0)[1:]):
    return bytes([flags]) + words(len(places)) + bytes([len(widths)]) + places + widths + program


write("font_cid", {
    "numbered": keyed(0, widths=b"1 [500 600] 3 4 1000"),
    "downwards": keyed(DOWN),
    "by_unicode": keyed(BY_UNICODE),
    "mapped": keyed(MAPPED, places=words(0, 2, 1)),
    "mapped_to_nothing": keyed(MAPPED),
    "mapped_by_half": keyed(MAPPED, places=b"\0\1\2"),
    "mapped_beyond": keyed(MAPPED | DOWN, places=words(0, 0xFFFF, 9, 9)),
    "two_strings": keyed(MAPPED | REPEATED, places=words(*range(600))),
    "most_entries": keyed(MAPPED | REPEATED, places=words(*range(1200))),
    "many_glyphs": keyed(0, program=numbered(glyphs=900, places=901, long_offsets=0)[1:]),
    "no_program": keyed(0, program=b""),
    "no_locations": keyed(0, program=true_type({"head": head(), "maxp": maxp(3)})[1:]),
    "open_widths": keyed(0, widths=b"<< /A [ 1 ("),
})
