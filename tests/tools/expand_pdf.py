#!/usr/bin/env python3
# Expands a readable PDF template (*.in) to a PDF with right lengths, offsets and cross-reference entries.
"""expand_pdf.py TEMPLATE.in OUTPUT.pdf

A template is a PDF in plain text. What a person cannot write by hand is left to directives:

  {{# words}}              a remark; leaves nothing
  {{include FILE a=x; b=y}} the text of FILE (beside the template, or one folder up), with {{a}} and {{b}} replaced
  {{for i 0 10}}..{{endfor}} the lines between, for i = 0 to 9; loops may be nested
  {{= 10 + 5 * cos(i)}}    the value of an expression (i of the loops, pi, sin, cos), a
                           number or a string, so that {{= "\\r"}} is a CR
  {{header}}               "%PDF-1.4" and a line of bytes above 127; {{header JTF-1.0}} for another first line
  {{object N G}}           "N G obj"; the offset is noted for the next {{xref}}
  {{stream F1 F2 <<..>>}}..{{endstream}}
                           dictionary with Length and Filter [F1 F2], and the data encoded to match
  {{font KIND COUNT NAME}} the stream of a font program of that many glyphs: KIND is type1, cff or truetype; what
                           its glyphs look like stands in font_programs.py
  {{xref}}                 the section for the objects since the previous one, entries of 20 bytes (the last
                           one takes its line end from the template)
  {{trailer /Root 1 0 R}}  the trailer dictionary, with Size and, from the second section on, Prev
  {{startxref}}            "startxref", the offset of the newest section and "%%EOF"
"""
import base64
import binascii
import itertools
import math
import pathlib
import re
import sys
import zlib

DIRECTIVE = re.compile(r"(\{\{(?:#|include |for |endfor)[^{}]*\}\}\n?|\{\{(?:=[^{}]*|[a-z]+)\}\})")
STREAM = re.compile(r"\{\{stream\s*([A-Za-z0-9 ]*)\s*(?:<<(.*?)>>)?\s*\}\}\n?(.*?)\n?\{\{endstream\}\}", re.DOTALL)
CONSTANT_NAMES = {name: getattr(math, name) for name in ("pi", "sin", "cos")}


def value_text(value):
    """A string as it is; a number as PDF wants it: no exponent, at most four decimals."""
    if isinstance(value, str):
        return value
    return f"{value:.4f}".rstrip("0").rstrip(".") or "0"


class Text:
    """The first pass: remarks, includes, loops and expressions become plain text."""

    def __init__(self, folder):
        self.folder = folder

    def expand(self, text, names):
        tokens = DIRECTIVE.split(text)
        out, rest = self.run(tokens, 0, names)
        if rest != len(tokens):
            raise ValueError("{{endfor}} without {{for}}")
        return out

    def run(self, tokens, at, names):
        """Expands tokens from `at` up to an {{endfor}} or the end; returns the text and where it stopped."""
        out = []
        while at < len(tokens):
            words = tokens[at].strip()[2:-2].split(None, 1) if tokens[at].startswith("{{") else None
            if words is None:
                out.append(tokens[at])
            elif words[0] == "endfor":
                return "".join(out), at
            elif words[0] == "for":
                text, at = self.loop(tokens, at + 1, words[1], names)
                out.append(text)
            else:
                out.append(self.single(tokens[at], words, names))
            at += 1
        return "".join(out), at

    def loop(self, tokens, at, header, names):
        name, first, last = header.split()
        texts, end = [], at
        for value in range(int(first), int(last)):
            text, end = self.run(tokens, at, {**names, name: value})
            texts.append(text)
        return "".join(texts), end

    def single(self, token, words, names):
        if words[0].startswith("#"):
            return ""
        if words[0] == "=":
            return value_text(eval(words[1], {"__builtins__": {}}, {**CONSTANT_NAMES, **names}))
        if words[0] == "include":
            return self.include(words[1], names)
        if token[2:-2] in names:
            return str(names[token[2:-2]])
        return token

    def include(self, header, names):
        file, _, given = header.partition(" ")
        pairs = (part.partition("=") for part in given.split(";") if part.strip())
        own = {key.strip(): value.strip() for key, _, value in pairs}
        path = next(p for p in (self.folder / file, self.folder.parent / file) if p.exists())
        text = path.read_text("latin-1")
        missing = {key: "" for key in re.findall(r"\{\{([a-z]+)\}\}", text) if key not in DIRECTIVES}
        return self.expand(text, {**missing, **names, **own})


def encode_hex(data):
    text = binascii.hexlify(data)
    return b"\n".join(text[at : at + 64] for at in range(0, len(text), 64)) + b">"


def encode_85(data):
    return base64.a85encode(data, wrapcol=72) + b"~>"


def encode_run_length(data):
    """Runs of one byte as repeats, everything between them as literals, 128 as the end."""
    out = bytearray()
    literals = bytearray()

    def flush():
        for at in range(0, len(literals), 128):
            piece = literals[at : at + 128]
            out.extend(bytes([len(piece) - 1]) + piece)
        literals.clear()

    for byte, group in itertools.groupby(data):
        length = len(list(group))
        while length > 2:
            flush()
            run = min(length, 128)
            out.extend([257 - run, byte])
            length -= run
        literals.extend([byte] * length)
    flush()
    return bytes(out) + b"\x80"


def lzw_codes(data):
    """(code, width) pairs as PDF has them: 9 to 12 bits, each width beginning one code early."""
    table, following, width, word = {bytes([byte]): byte for byte in range(256)}, 258, 9, b""
    yield 256, width
    for byte in data:
        longer = word + bytes([byte])
        if longer in table:
            word = longer
            continue
        yield table[word], width
        table[longer] = following
        following, word = following + 1, bytes([byte])
        width = following.bit_length()
        if following == 4094:
            yield 256, width
            table, following, width = {bytes([single]): single for single in range(256)}, 258, 9
    if word:
        yield table[word], width
        width = (following + 1).bit_length()
    yield 257, width


def encode_lzw(data):
    bits = "".join(f"{code:0{width}b}" for code, width in lzw_codes(data))
    bits += "0" * (-len(bits) % 8)
    return int(bits, 2).to_bytes(len(bits) // 8, "big")


ENCODERS = {
    "ASCIIHexDecode": encode_hex,
    "ASCII85Decode": encode_85,
    "RunLengthDecode": encode_run_length,
    "LZWDecode": encode_lzw,
    "FlateDecode": zlib.compress,
}


class File:
    """The second pass: everything that depends on byte positions."""

    def __init__(self):
        self.out = bytearray()
        self.section = {}
        self.size = 1
        self.sections = []

    def add(self, text):
        at = 0
        for match in re.finditer(STREAM.pattern + r"|\{\{(\w+)\s*(.*?)\}\}", text, re.DOTALL):
            self.out += text[at : match.start()].encode("latin-1")
            if match[4]:
                FILE_DIRECTIVES[match[4]](self, match[5])
            else:
                self.stream(match[1].split(), match[2] or "", match[3].encode("latin-1"))
            at = match.end()
        self.out += text[at:].encode("latin-1")

    def header(self, version):
        self.out += b"%" + (version or "PDF-1.4").encode() + b"\n%\xe2\xe3\xcf\xd3"

    def object(self, words):
        number, generation = map(int, words.split())
        self.section[number] = (len(self.out), generation)
        self.size = max(self.size, number + 1)
        self.out += b"%d %d obj" % (number, generation)

    def stream(self, filters, entries, data):
        for name in reversed(filters):
            data = ENCODERS[name](data)
        names = " ".join("/" + name for name in filters)
        filter_entry = f" /Filter [{names}]" if len(filters) > 1 else f" /Filter {names}" if filters else ""
        self.out += f"<< /Length {len(data)}{filter_entry} {entries.strip()} >>\nstream\n".encode("latin-1")
        self.out += data + b"\nendstream"

    def font(self, words):
        import font_programs  # which takes fontTools, and that no other template needs

        kind, count, name = words.split()
        program, entries = font_programs.make(kind, int(count), name)
        self.stream(["FlateDecode"], entries, program)

    def xref(self, _):
        entries = {number: b"%010d %05d n \n" % place for number, place in self.section.items()}
        if not self.sections:
            entries[0] = b"0000000000 65535 f \n"
        self.sections.append(len(self.out))
        self.section = {}
        self.out += b"xref\n"
        for _, run in itertools.groupby(enumerate(sorted(entries)), lambda pair: pair[1] - pair[0]):
            numbers = [number for _, number in run]
            self.out += b"%d %d\n" % (numbers[0], len(numbers)) + b"".join(entries[n] for n in numbers)
        del self.out[-1:]

    def trailer(self, entries):
        previous = f" /Prev {self.sections[-2]}" if len(self.sections) > 1 else ""
        self.out += f"trailer\n<< /Size {self.size}{previous} {entries} >>".encode("latin-1")

    def startxref(self, _):
        self.out += b"startxref\n%d\n%%%%EOF" % self.sections[-1]


FILE_DIRECTIVES = {name: getattr(File, name) for name in ("header", "object", "font", "xref", "trailer",
                                                                "startxref")}
DIRECTIVES = {*FILE_DIRECTIVES, "stream", "endstream"}


def expand(path):
    file = File()
    file.add(Text(path.resolve().parent).expand(path.read_text("latin-1"), {}))
    return bytes(file.out)


def main(arguments):
    if len(arguments) != 2 or "--help" in arguments:
        print(__doc__)
        return 0 if "--help" in arguments else 64
    pathlib.Path(arguments[1]).write_bytes(expand(pathlib.Path(arguments[0])))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
